#include "commands/export/MeasuredData.h"

#include "graphs/kinds/FitGraphs.h"
#include "models/function/FitFunction.h"
#include "platform/Platform.h"

#include <memory>
#include <utility>

namespace Quillon {

namespace {

struct KeptData {
    Workspace Measured;
    PerRow<OneBased<float>> Simulated; // ScanValue as the simulation left it
};
std::unique_ptr<KeptData> KeptAside;

bool HoldsSimulation(const Workspace& w) {
    return KeptAside && w.ScanValue == KeptAside->Simulated && w.ScanFile == KeptAside->Measured.ScanFile &&
           w.ScanDirectory == KeptAside->Measured.ScanDirectory;
}

bool MayLoseFit() {
    if (!Work.FitDone) return true;
    return AskYesNo("The analysis will be again what it was before the simulation.  The fit of the simulated "
                    "data will be lost, unless you have saved it.  Do you want the measured data back?",
                    Work.ProgramName, BoxAnswer::No);
}

// What was set since for the program and not for the analysis.
void KeepPreferences(Workspace& analysis) {
    analysis.DataDirectory = Work.DataDirectory;
    analysis.BaselineDirectoryLast = Work.BaselineDirectoryLast;
    analysis.NameConvention = Work.NameConvention;
    analysis.RangeLogPlot = Work.RangeLogPlot;
    analysis.OverlayPlot = Work.OverlayPlot;
    analysis.SpreadResiduals = Work.SpreadResiduals;
    analysis.PauseBeforeFit = Work.PauseBeforeFit;
    analysis.RescueMode = Work.RescueMode;
}

} // namespace

void KeepMeasuredData(const Workspace& before) {
    if (!HoldsSimulation(before)) KeptAside = std::make_unique<KeptData>(KeptData{before, {}});
    KeptAside->Simulated = Work.ScanValue;
}

bool MeasuredDataKept() {
    return HoldsSimulation(Work);
}

void BringBackMeasuredData() {
    if (!MeasuredDataKept() || !MayLoseFit()) return;
    const std::unique_ptr<KeptData> kept = std::move(KeptAside);
    KeepPreferences(kept->Measured);
    Work = std::move(kept->Measured);
    ResetFitFunction(); // what it keeps belongs to the simulated points
    if (Work.FitValid)
        GraphOverlay();
    else
        GraphData();
}

} // namespace Quillon
