// Any bytes at all as a graph file: they are refused with a RuntimeError and the graph at hand stands as it
// did, or they make a graph that is drawn, saved and read again. An entry for libFuzzer; tests/chart drives
// it with mutations of valid files.
#include "chart/CHART.h"
#include "chart/files/GraphFile.h"
#include "platform/Platform.h"
#include "platform/QuietPlatform.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace Quillon {
namespace {

void RequireGraph(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "a graph file passed and then: %s\n", what);
    std::abort();
}

// A picture box on which nothing is seen. A character is half as wide as it is high.
DrawingSurface BlankSurface() {
    DrawingSurface s;
    s.Width = [] { return 640; };
    s.Height = [] { return 480; };
    s.DotsPerInchX = s.DotsPerInchY = [] { return 96.0; };
    s.HasColor = [] { return true; };
    s.SetPen = [](const SurfacePen&) {};
    s.SetBrush = [](const SurfaceBrush&) {};
    s.SetFont = [](const SurfaceFont&) {};
    s.SetTextColor = [](Rgb) {};
    s.SetClip = [](const DeviceRect&) {};
    s.ClearClip = [] {};
    s.Line = [](int, int, int, int) {};
    s.Polyline = [](const std::vector<DevicePoint>&) {};
    s.Polygon = [](const std::vector<DevicePoint>&) {};
    s.Rectangle = [](const DeviceRect&) {};
    s.Ellipse = [](const DeviceRect&) {};
    s.PieSlice = [](DevicePoint, int, int, double, double) {};
    s.Text = [](int, int, const std::string&) {};
    s.Measure = [](const std::string& text) { return TextSize{static_cast<int>(text.size()) * 6, 12, 3}; };
    s.Refresh = [] {};
    return s;
}

void InstallQuietChart() {
    InstallPlatform(QuietPlatform(BoxAnswer::Ok));
}

} // namespace
} // namespace Quillon

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Quillon;
    if (!Host.MessageBoxAnswer) InstallQuietChart();
    if (!Seams.HasPicBox) SetScreenSurface(BlankSurface());
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string before = GraphFileBytes();
    try {
        AdoptGraph(bytes);
    } catch (const RuntimeError& error) {
        RequireGraph(!error.Text.empty(), "a failure without words");
        RequireGraph(GraphFileBytes() == before, "the graph at hand has changed");
        return 0;
    }
    ShowGraph();
    const std::string saved = GraphFileBytes();
    AdoptGraph(saved);
    RequireGraph(Chart.DataY.Points() == Chart.State.Npts, "its own file gives other data");
    ShowGraph();
    return 0;
}
