#include "commands/fitting/SimulateCommand.h"

#include "chart/CHART.h"
#include "chart/Charts.h"
#include "commands/export/MeasuredData.h"
#include "fit/Fault.h"
#include "fit/Sums.h"
#include "fit/forms/GuessesDialog.h"
#include "graphs/kinds/FitGraphs.h"
#include "input/NUMINPUT.h"
#include "models/SEDEQ3.h"
#include "models/function/Simulation.h"
#include "platform/Platform.h"
#include "scandata/table/FitData.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <cmath>
#include <optional>

namespace Quillon {

namespace {

// The noise level that the user wants; nothing without noise.
std::optional<double> AskNoise() {
    if (!AskYesNo("Do you want to add random noise to the simulation?", Work.ProgramName))
        return std::nullopt;
    const InputAnswer answer =
        Host.AskText({"Input the rms noise level (in signal units)", "Set added noise level", "0.005"});
    if (answer.Cancelled) return std::nullopt;
    const double level = static_cast<double>(NumValue(answer.Text));
    if (!(level > 0.0)) Host.Beep();
    return level;
}

void TellFault() {
    Tell(ModelFaultText(), Work.ProgramName, BoxIcon::Stop);
}

// The curve at the values that the user enters; nothing when he cancels or the model meets a fault.
std::optional<OneBased<float>> EnteredCurve() {
    Host.HideForm(ChartsName);
    Work.NumParms = ToInt16(NumSlots(Work.NumSets));
    ApplyModelFlags();
    if (GuessesDialog(true) == DialogAnswer::Cancel) return std::nullopt;
    ApplyOffsetLinks();
    ApplyConcentrationLinks();
    BuildParmScale();
    Host.SetPointer(Pointer::Hourglass);
    OneBased<float> curve;
    const bool complete = SimulateSignals(curve);
    Host.SetPointer(Pointer::Standard);
    if (complete) return curve;
    TellFault();
    return std::nullopt;
}

// A curve that is no fit: residuals, and what is said of them, are its own.
void TakeCurve(OneBased<float> curve) {
    Work.PtFit = std::move(curve);
    Work.FitValid = FlagTrue;
    CalcResiduals();
}

void TakeRms() {
    double sum = 0.0;
    for (const float r : Work.PtResid)
        sum += static_cast<double>(r) * static_cast<double>(r);
    const int freedom = Work.NumPts - Work.NumFree;
    Work.RmsResidual = freedom > 0 ? ToSingle(std::sqrt(sum / freedom)) : 0.0F;
}

// A finished fit does not stand for other parameters than its own, nor beside a curve with noise.
void LetFitGo() {
    Work.FitDone = Work.LimitsDone = FlagFalse;
    TakeRms();
}

bool ParmsChanged() {
    for (const SlotNo slot : EachSlot())
        if (Work.Parms[slot] != Work.ParmsSave[slot]) return true;
    return false;
}

// The data of a set in its scan, over its range.
void OverwriteScan(SetNo set, const OneBased<float>& values) {
    const RowNo row = RowOf(set);
    long point = FirstPointOf(set);
    for (long p = Work.FitRange[0][row]; p <= Work.FitRange[1][row]; ++p)
        Work.ScanValue[row][p] = values[point++];
}

// True when the row had a baseline.
bool DropBaseline(RowNo row) {
    const bool had = HasBaseline(row);
    Work.BaselineFile[row] = NoBaseline;
    Work.BaselinePoints[row] = 0;
    Work.BaselineShifted[row] = FlagFalse;
    return had;
}

// Pseudo-points have a value that hangs on the new data.
void TakePseudoPoints(OneBased<float>& values) {
    OneBased<float> again;
    if (!SimulateSignals(again)) return TellFault();
    for (long p = 1; p <= Work.NumPts; ++p)
        if (IsPseudoPoint(p)) values[p] = again[p];
}

void Overwrite(OneBased<float> values, const Workspace& before) {
    bool baselines = false;
    for (const SetNo set : EachSet()) {
        OverwriteScan(set, values);
        baselines = DropBaseline(RowOf(set)) || baselines;
    }
    BuildFitData();
    KeepMeasuredData(before);
    TakePseudoPoints(values);
    TakeCurve(std::move(values));
    LetFitGo();
    if (baselines)
        Tell(
            "The simulated data hold no baseline.  The baselines of the data sets that were overwritten have "
            "been removed, since they would be subtracted from the simulated data.",
            Work.ProgramName, BoxIcon::Information);
}

void ShowSimulated() {
    if (Work.FitValid)
        GraphOverlay();
    else
        GraphData(); // there is no curve that could stand beside the data
}

void AskAndSimulate(const Workspace& before) {
    const bool overwrite = AskYesNo("Do you want the simulated data to overwrite the experimental data?",
                                    Work.ProgramName, BoxAnswer::No);
    SelectModel(false);
    const std::optional<double> noise = AskNoise();
    std::optional<OneBased<float>> curve = EnteredCurve();
    ClearCancel();
    if (curve) {
        const bool changed = ParmsChanged();
        AddNoise(*curve, noise.value_or(0.0));
        if (overwrite) {
            Overwrite(std::move(*curve), before);
        } else {
            TakeCurve(std::move(*curve));
            if (changed || noise.value_or(0.0) != 0.0) LetFitGo();
        }
    } else { // names, flags and values were brought up to a curve that there is not
        Work = before;
        ResetFitFunction();
    }
    Work.NewData = Changed::Nothing;
}

} // namespace

void SimulateCommand() {
    const Workspace before = Work;
    try {
        AskAndSimulate(before);
    } catch (const RuntimeError&) { // half of a simulation is neither the experiment nor the model
        Work = before;
        ResetFitFunction();
        throw;
    }
    ShowSimulated();
}

} // namespace Quillon
