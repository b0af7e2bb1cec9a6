// Any bytes at all as a fit save file, of which everything is then shown: results, correlations, report,
// graphs. A file that is accepted may hold any numbers; what cannot be worked out is told as a run-time
// error.
#include "graphs/kinds/FitGraphs.h"
#include "graphs/kinds/ResidualGraphs.h"
#include "persistence/FitFile.h"
#include "platform/Platform.h"
#include "platform/QuietPlatform.h"
#include "reporting/Report.h"
#include "reporting/Results.h"
#include "reporting/values/Correlation.h"
#include "workspace/records/Workspace.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace Quillon;

void InstallQuiet() {
    InstallPlatform(QuietPlatform(BoxAnswer::No));
}

template <class Command> void Run(const Command& command) {
    try {
        command();
    } catch (const RuntimeError& error) {
        if (!error.Text.empty()) return;
        std::fputs("a failure without a word\n", stderr);
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (!Host.MessageBoxAnswer) InstallQuiet();
    Work = FreshWorkspace();
    try {
        AdoptFit(std::string(reinterpret_cast<const char*>(data), size), "fuzz.quil");
    } catch (const RuntimeError&) {
        return 0;
    }
    if (Work.FitDone && Work.NumFree > 0) {
        Run([] { ReportText(); });
        Run([] { FillResults(); });
        Run([] { FillCorrelation(); });
    }
    if (Work.DataChosen) Run([] { GraphData(); });
    if (!Work.FitValid || !Work.DataChosen) return 0;
    for (void (*const graph)() : {GraphFunc, GraphOverlay, GraphResiduals, GraphResidualsY, GraphResidualsR})
        Run(graph);
    return 0;
}
