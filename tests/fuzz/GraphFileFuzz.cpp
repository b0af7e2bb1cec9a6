// Any bytes at all as a graph file: they are refused with a RuntimeError and the graph at hand stands as it
// did, or they make a graph that is drawn, saved and read again. An entry for libFuzzer; tests/chart drives
// it with mutations of valid files.
#include "chart/CHART.h"
#include "chart/files/GraphFile.h"
#include "platform/Platform.h"
#include "platform/QuietPlatform.h"
#include "tests/support/BlankSurface.h"

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

void InstallQuietChart() {
    InstallPlatform(QuietPlatform(BoxAnswer::Ok));
}

} // namespace
} // namespace Quillon

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Quillon;
    if (!Host.MessageBoxAnswer) InstallQuietChart();
    if (!Seams.HasPicBox) SetScreenSurface(BlankSurface(640, 480));
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
