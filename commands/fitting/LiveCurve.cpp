#include "commands/fitting/LiveCurve.h"

#include "commands/fitting/FitCommand.h"
#include "fit/GNLLSQ.h"
#include "fit/forms/GetGuess.h"
#include "input/NUMINPUT.h"
#include "models/SEDEQ3.h"
#include "models/table/ParmScale.h"
#include "platform/Platform.h"
#include "reporting/values/LogMeaning.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <cmath>
#include <utility>

namespace Quillon {

LiveCurveRecord LiveCurve;

namespace {

// While it lives the analysis may be changed at will and nothing interrupts; then it is what it was.
class OnCopy {
public:
    OnCopy() : Kept(Work), Events(std::exchange(Host.ServeEvents, [] {})) { ResetFitFunction(); }
    ~OnCopy() {
        Work = std::move(Kept);
        Host.ServeEvents = std::move(Events);
        ResetFitFunction(); // what it keeps belongs to the values that were tried
    }
    OnCopy(const OnCopy&) = delete;
    OnCopy& operator=(const OnCopy&) = delete;

private:
    Workspace Kept;
    std::function<void()> Events;
};

bool IsNumber(const std::string& text) {
    return text.find_first_of("0123456789") != std::string::npos;
}

// The value of a row as its field shows it; that of the analysis where the field shows that, or no number.
float TypedValue(std::size_t row) {
    const SlotNo slot = GetGuess.GuessRows[row];
    const std::string& text = GetGuess.Guess[row].Text;
    if (!IsNumber(text) || text == ParmText(slot)) return Work.Parms[slot];
    const float value = NumValue(text);
    return value > -1e38F && value < 1e38F ? ToInternal(slot, value) : Work.Parms[slot];
}

PerSlot<float> TypedValues() {
    PerSlot<float> values = Work.Parms;
    for (std::size_t row = 0; row < GetGuess.GuessRows.size(); ++row)
        values[GetGuess.GuessRows[row]] = TypedValue(row);
    return values;
}

void FillTips() {
    for (std::size_t row = 0; row < GetGuess.GuessRows.size(); ++row) {
        const std::string tip = LogMeaning(GetGuess.GuessRows[row]);
        GetGuess.ParameterName[row].ToolTip = GetGuess.Guess[row].ToolTip = tip;
    }
}

// As the fit command takes the values up.
void Evaluate() {
    Work.FitDone = Work.LimitsDone = Work.FitValid = FlagFalse;
    ForgetStop();
    Work.NewData = Changed::Nothing;
    RefineModel();
    if (Work.ConstraintFlags & OffsetBit) ApplyOffsetLinks();
    ApplyConcentrationLinks();
    CalcSumSq();
    if (Work.AbortFit) Work.FitValid = FlagFalse;
}

// The rms; without a curve the tip tells what stood against it.
void FillRms(const std::string& reason) {
    const double rms = std::sqrt(Work.SumSq / std::max<double>(1.0, Work.NumPts));
    LiveCurve.Rms.Text = Work.FitValid ? "rms " + FormatNumber(rms, "0.000E-0") + " over " +
                                             std::to_string(Work.NumPts) + " points"
                                       : "The function has no value at these guesses";
    LiveCurve.Rms.ToolTip = Work.FitValid ? "" : reason.empty() ? Work.Outcome.Reason : reason + ".";
}

// The pair of the workbench is put aside meanwhile.
template <class Piece> void WithOwnPair(const Piece& work) {
    std::swap(GraphPair, LiveCurve.Pair);
    work();
    std::swap(GraphPair, LiveCurve.Pair);
}

void TryValues(const PerSlot<float>& values) {
    const OnCopy copy;
    Work.Parms = values;
    std::string reason;
    try {
        FillTips();
        Evaluate();
    } catch (const RuntimeError& error) { // a value that means nothing: the data are shown without a curve
        Work.FitValid = FlagFalse;
        reason = error.Text;
    }
    FillRms(reason);
    LiveCurve.Pair.LeftOut = GraphPair.LeftOut;
    WithOwnPair([] { FollowAnalysis(); });
}

} // namespace

void StartLiveCurve() {
    LiveCurve = LiveCurveRecord{};
}

bool FollowGuesses() {
    if (!GetGuess.State.Shown || Work.NumPts < 1) return false;
    PerSlot<float> values = TypedValues();
    if (LiveCurve.Builds > 0 && values == LiveCurve.Values) return false;
    LiveCurve.Values = values;
    ++LiveCurve.Builds;
    TryValues(values);
    return true;
}

void PaintLiveCurve(const DrawingSurface& surface, int letters) {
    WithOwnPair([&] { PaintGraphPair(surface, letters); });
}

} // namespace Quillon
