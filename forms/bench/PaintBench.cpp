// How long a window takes to paint the largest overlay: 18 sets of 1500 points and their fitted functions.
//
//     paint-bench [WIDTH HEIGHT [DOTS-PER-INCH [FILE]]]      (QT_QPA_PLATFORM=offscreen without a display)
//
// Processor time, since a window shares its machine; the best of ten, and of laying out again without
// painting. FILE takes the picture, to hold one build against another.
#include "Painted.h"
#include "chart/CHART.h"
#include "platform/Narrow.h"
#include "platform/QuietPlatform.h"

#include <QGuiApplication>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

using namespace Quillon;

namespace {

constexpr long Sets = 18, Points = 1500;

void Wire() {
    InstallPlatform(QuietPlatform());
}

// Exponentials with a saw of noise, each set above the other.
void Fill(SetTable& x, SetTable& y) {
    for (long set = 1; set <= Sets; ++set)
        for (long point = 1; point <= Points; ++point) {
            const double r = 2.0 * static_cast<double>(point) / Points - 1.0;
            const double k = static_cast<double>(set - 1);
            const double fit = 0.3 * std::exp(r * (1.0 + 0.1 * k)) + 0.05 * k;
            const double noise = 0.01 * (static_cast<double>(point * 7919 % 1000) / 500.0 - 1.0);
            x(point, 2 * set - 1) = x(point, 2 * set) = static_cast<float>(r);
            y(point, 2 * set - 1) = static_cast<float>(fit + noise);
            y(point, 2 * set) = static_cast<float>(fit);
        }
}

void Plot() {
    GraphSpec spec;
    GraphInit(spec, GraphTypes::XYPlot, PlotStyles::Alternating);
    spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    spec.Legend.Show = 1;
    SetTable x(Points, 2 * Sets);
    SetTable y(Points, 2 * Sets);
    Fill(x, y);
    std::vector<std::string> names;
    for (long set = 1; set <= 2 * Sets; ++set)
        names.push_back("set " + std::to_string(set));
    Chart.GraphHeld = FlagTrue;
    PlotSets(spec, x, y, Points, 1, 2 * Sets, names, {}, {});
}

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    Wire();
    const int width = argc > 2 ? std::atoi(argv[1]) : 1000;
    const int height = argc > 2 ? std::atoi(argv[2]) : 700;
    const int dots = argc > 3 ? std::atoi(argv[3]) : 96;
    PaintedImage picture(width, height, dots);
    SetScreenSurface(picture.Surface);
    Plot();
    std::printf("%d x %d at %d dpi: %ld points painted in %.1f ms, laid out in %.2f ms\n", width, height,
                dots, 2 * Sets * Points, Best(ShowGraph), Best(Replot));
    picture.Painter.end();
    if (argc > 4 && !picture.Image.save(argv[4])) return 1;
    return Chart.GraphStatus < GraphStatuses::Stop ? 0 : 1;
}
