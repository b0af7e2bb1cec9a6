// How long the workbench takes to show an analysis that has changed, and to paint it again in another size: 9
// sets of 100 points, and 18 of 1800.
//
//     pair-bench [WIDTH HEIGHT [FILE]]      (QT_QPA_PLATFORM=offscreen without a display)
//
// Processor time, since a window shares its machine; the best of ten. FILE takes the larger picture.
#include "Painted.h"
#include "graphs/GraphPair.h"
#include "platform/Narrow.h"
#include "platform/QuietPlatform.h"
#include "workspace/records/Workspace.h"

#include <QGuiApplication>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>

using namespace Quillon;

namespace {

void Wire() {
    InstallPlatform(QuietPlatform());
}

// Exponentials with a saw of noise, each set above the other, and the fit of all of them.
void Fill(long sets, long points) {
    Work = FreshWorkspace();
    Work.NumSets = ToInt16(sets);
    Work.NumPts = ToInt16(static_cast<double>(sets * points));
    Work.DataChosen = Work.FitDone = Work.FitValid = FlagTrue;
    Work.SetPts.Recreate(sets);
    for (OneBased<float>* values : {&Work.PtX, &Work.PtY, &Work.PtFit})
        values->Recreate(sets * points);
    Work.PtSet.Recreate(sets * points);
    for (long set = 1; set <= sets; ++set) {
        Work.SetRow[set] = Work.SetOfRow[set] = ToInt16(static_cast<double>(set));
        Work.SetPts[set] = ToInt16(static_cast<double>(points));
        Work.SetLabel[set] = "/data/run/000" + std::to_string(10 + set) + ".RA1";
        Work.ScanRPM[set] = 10000.0F + 1000.0F * static_cast<float>(set);
        for (long i = 1; i <= points; ++i) {
            const long p = (set - 1) * points + i;
            const double r = 2.0 * static_cast<double>(i) / static_cast<double>(points) - 1.0;
            const double fit =
                0.3 * std::exp(r * (1.0 + 0.1 * static_cast<double>(set))) + 0.05 * static_cast<double>(set);
            const double noise = 0.01 * (static_cast<double>(p * 7919 % 1000) / 500.0 - 1.0);
            Work.PtX[p] = static_cast<float>(r);
            Work.PtY[p] = static_cast<float>(fit + noise);
            Work.PtFit[p] = static_cast<float>(fit);
            Work.PtSet[p] = ToInt16(static_cast<double>(set));
        }
    }
    Work.RmsResidual = 0.006F;
}

void Measure(const DrawingSurface& surface, long sets, long points) {
    Fill(sets, points);
    const double look = Best([] { FollowAnalysis(); });
    const double build = Best([] {
        Work.PtFit[1] += 1e-5F;
        FollowAnalysis();
    });
    const double paint = Best([&] { PaintGraphPair(surface, 16); });
    std::printf("%2ld sets of %4ld points: %.2f ms to see that nothing has changed, %.1f ms to build, %.1f "
                "ms to paint\n",
                sets, points, look, build, paint);
}

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    Wire();
    PaintedImage picture(argc > 2 ? std::atoi(argv[1]) : 800, argc > 2 ? std::atoi(argv[2]) : 520);
    picture.Painter.setRenderHint(QPainter::Antialiasing);
    Measure(picture.Surface, 9, 100);
    Measure(picture.Surface, 18, 1800);
    picture.Painter.end();
    return argc > 3 && !picture.Image.save(argv[3]) ? 1 : 0;
}
