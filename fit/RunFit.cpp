// The loop of the fit.
#include "fit/FitMon.h"
#include "fit/GNLLSQ.h"
#include "fit/MatInv.h"
#include "input/NUMINPUT.h"
#include "models/BlockFunction.h"
#include "models/FitFunction.h"
#include "models/ParmScale.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <cmath>

namespace Quillon {

namespace {

void Conclude(FitEnd end, const std::string& sentence = "") {
    Work.Outcome = {end, sentence};
}

void OpenMonitor() {
    UnloadFitMon();
    LoadFitMon();
    if (Work.MonitorMode == 0) {
        UnloadFitMon();
        return;
    }
    if (Work.PauseBeforeFit) {
        Work.MonitorMode = 2;
        MonitorStatus("waiting for input");
    } else {
        Work.MonitorMode = 1;
        FitMon.FitButton.Visible = FitMon.NextIter.Visible = false;
    }
    Host.ShowForm("FitMon");
    Host.HideForm("Analmenu");
    MonitorAlpha();
    while (Work.MonitorMode != 1 && Work.MonitorMode != 3 && !Work.AbortFit)
        Host.WaitEvent();
    if (Work.MonitorMode == 3) Work.MonitorMode = 2;
}

void CloseMonitor() {
    if (!FitMon.Loaded) return;
    UnloadFitMon();
    Host.HideForm("FitMon");
    Host.ShowForm("Analmenu");
}

bool ToldSingular() {
    if (!Work.Singular) return false;
    const std::string text = "Singular Matrix - Fit Aborted";
    Conclude(FitEnd::Singular, text);
    Tell(text, Work.ProgramName, BoxIcon::Stop);
    return true;
}

// One round of the loop. True while the fit has to go on; otherwise Outcome tells the end.
bool IterateOnce() {
    Work.FitDone = Work.LimitsDone = FlagFalse;
    OneIteration();
    if (Work.AbortFit) return false;
    if (ToldSingular()) return false;
    // [decision: last-iteration-fails]
    // This test stands before the one for convergence: the last permitted iteration fails in any case.
    if (Work.Iteration >= Work.MaxIterations) {
        const std::string text =
            "Convergence failed after " + std::to_string(Work.MaxIterations) + " iterations";
        Conclude(FitEnd::TooManyIterations, text);
        Tell(text, Work.ProgramName, BoxIcon::Warning);
        return false;
    }
    if (!FitConverged()) return true;
    Conclude(FitEnd::Converged);
    return false;
}

void Iterate() {
    while (!Work.AbortFit && IterateOnce()) {
    }
}

// The inverse of the normal matrix at the solution, for the statistics. False when that was broken off.
bool LastSums() {
    if (FitMon.Loaded) {
        FitMon.StatusText.ForeColor = BlueColor;
        FitMon.StatusText.Text = "Converged, last sum";
        FitMon.StatusText.Tag = "1";
    }
    AccumulateSums();
    if (!Work.AbortFit) InvertNormalMatrix();
    FitMon.StatusText.Tag.clear();
    if (Work.AbortFit) {
        Conclude(FitEnd::NotRun);
        return false;
    }
    if (ToldSingular()) return false; // without the inverse there is no error estimate to show
    const std::int16_t freedom = ToInt16(Work.NumPts - Work.NumFree);
    Work.RmsResidual = ToSingle(Sqrt(Divide(Work.SumSq, static_cast<double>(freedom))));
    return true;
}

bool RunToTheEnd() {
    Iterate();
    return Work.Outcome.End == FitEnd::Converged && LastSums();
}

// A run-time error outside the passes, such as a division overflow in the inversion or no degree of freedom.
void TellFailure(const RuntimeError& error) {
    const std::string text = "Error '" + error.Text + "' occurred during the fit, aborting fit";
    Conclude(FitEnd::MathError, text);
    Tell(text, Work.ProgramName, BoxIcon::Stop);
    Work.AbortFit = Work.FunctionFailed = FlagTrue;
}

// Runs work; false when it failed, which has then been told.
template <class Step> bool Guarded(Step&& work) {
    try {
        return work();
    } catch (const RuntimeError& error) {
        TellFailure(error);
        return false;
    }
}

void NoteBreakOff() {
    if (Work.Outcome.End != FitEnd::NotRun) return;
    // A math error has been told by whoever met it; a pass that was cancelled has said nothing.
    if (Work.AbortFit && Work.FunctionFailed)
        Conclude(FitEnd::MathError, "Math error, fit aborted");
    else
        Conclude(FitEnd::Cancelled, "The fit was cancelled");
}

} // namespace

void OneIteration() {
    if (Work.AbortFit) return;
    ++Work.Iteration;
    if (FitMon.Loaded) FitMon.IterNum.Text = std::to_string(Work.Iteration);
    AccumulateSums();
    if (Work.AbortFit) return;
    InvertNormalMatrix();
    if (Work.Singular) return;
    AdjustIncrement();
    if (Work.AbortFit || Work.MonitorMode == 0 || !FitMon.Loaded) return;
    UpdateMonitor();
    FitMon.CurValue.back().Text = FormatNumber(Work.SumSq, "#.######E-##");
    Host.ServeEvents();
    if (Work.MonitorMode != 2) return;
    MonitorStatus("waiting for input");
    while (Work.MonitorMode == 2 && !Work.AbortFit)
        Host.WaitEvent();
    if (Work.MonitorMode == 3) Work.MonitorMode = 2;
}

void InvertNormalMatrix() {
    if (FitMon.Loaded && FitMon.StatusText.Tag.empty()) {
        MonitorStatus("Inverting Matrix");
        Host.ServeEvents();
    }
    if (Invert(Work.NormMatrix) != 0) {
        Work.Singular = 1;
        return;
    }
    Work.Singular = 0;
    Work.Increment.Recreate(Work.NumFree - 1);
    for (long a = 0; a < Work.NumFree; ++a) {
        double sum = 0.0;
        for (long b = 0; b < Work.NumFree; ++b)
            sum += Work.NormMatrix(a, b) * Work.NormVector[b];
        Work.Increment[a] = sum;
    }
}

bool FitConverged() {
    if (Work.SumSq <= 0.0) return false;
    const auto rel = static_cast<float>(std::fabs(Work.LastSumSq - Work.SumSq) / Work.SumSq);
    const auto freedom = static_cast<float>(ToInt16(Work.NumPts - Work.NumFree));
    if (freedom == 0.0F) RaiseError(ErrorText::DivisionByZero);
    const float lim = Work.ConvergenceLimit / freedom;
    return lim > rel && Work.Iteration >= 2 && Work.BoundHit == 0;
}

bool RunFit() {
    Work.LastSumSq = 1e308;
    Work.Iteration = 0;
    Work.Alpha = 1.0;
    Work.Outcome = FitOutcome{};
    Work.FunctionFailed = FlagFalse;
    Work.AtBound.Recreate(Work.NumFree);
    ResetFitFunction();
    StoreSignals(true);
    const bool finished = Guarded([] {
        OpenMonitor();
        return RunToTheEnd();
    });
    StoreSignals(false);
    CloseMonitor();
    const bool scaled = Guarded([] {
        BuildParmScale(); // follows the fitted stoichiometries
        return true;
    });
    Work.FitDone = Flag(finished && scaled);
    if (!Work.FitDone) NoteBreakOff();
    return Work.FitDone != 0;
}

} // namespace Quillon
