// What the species of a fit cost: 18 sets of 1500 points, every model.
//
//     species-bench            (QT_QPA_PLATFORM=offscreen without a display)
//
// Prints the time of a pass over the species beside that of a pass of sums without derivatives, and how long
// the graph of the largest model takes from the command to the last line on the window. Processor time, the
// best of ten.
#include "Painted.h"
#include "chart/CHART.h"
#include "fit/GNLLSQ.h"
#include "graphs/kinds/SpeciesGraphs.h"
#include "models/SEDEQ3.h"
#include "models/species/SpeciesAtPoint.h"
#include "platform/QuietPlatform.h"
#include "tests/support/ModelCases.h"
#include "workspace/records/Roads.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstdio>

using namespace Quillon;

namespace {

constexpr std::size_t Sets = 18;
constexpr int Points = 1500;

void Wire() {
    InstallPlatform(QuietPlatform());
}

void Load(ModelCase theCase) {
    const std::vector<SimulatedSet> few = theCase.Sets;
    for (std::size_t i = 0; theCase.Sets.size() < Sets; ++i)
        theCase.Sets.push_back(few[i % few.size()]);
    for (SimulatedSet& set : theCase.Sets)
        set.Points = Points;
    Work = SimulatedWorkspace(theCase);
    Work.MonitorMode = 0;
    Work.PtFit.Recreate(Work.NumPts);
    BuildParmNames();
    BuildParmScale();
    SetDefaultBounds();
}

void PassOfSpecies() {
    for (const SetNo set : EachSet())
        SpeciesOfSet(set, SpeciesUnit::Signal);
}

// The two passes by turns, so that another speed of the processor meets both.
double ComparePasses(const ModelCase& theCase) {
    Load(theCase);
    double sums = 1e300;
    double species = 1e300;
    for (int run = 0; run < 20; ++run) {
        sums = std::min(sums, Milliseconds(CalcSumSq));
        species = std::min(species, Milliseconds(PassOfSpecies));
    }
    std::printf("  %-24s sums %7.3f ms, species %7.3f ms, ratio %.2f\n", theCase.Name.c_str(), sums, species,
                species / sums);
    return species / sums;
}

void PaintGraph() {
    Load(ModelCaseNamed("Model22"));
    const PaintedImage picture(1000, 700);
    SetScreenSurface(picture.Surface);
    const double made = Best([] { MakeSpeciesGraph(SpeciesGraph::Concentration, AllSets); });
    const double painted = Best(ShowGraph);
    std::printf("  %ld series of %d points: made in %.1f ms, painted in %.1f ms\n", Chart.DataY.Sets(),
                Points, made, painted);
}

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    Wire();
    std::printf("A pass over 18 sets of 1500 points\n");
    double worst = 0.0;
    for (const ModelCase& each : ModelCases())
        if (each.Name.size() == 7 || each.Name.find("NonIdeal") == 7)
            worst = std::max(worst, ComparePasses(each));
    std::printf("  the largest ratio: %.2f\n", worst);
    std::printf("The graph of species of model 22\n");
    PaintGraph();
    return 0;
}
