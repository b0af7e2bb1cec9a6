#include "fit/forms/FitMon.h"

#include "input/NUMINPUT.h"
#include "models/table/ParmScale.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "workspace/records/AnalmenuName.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

namespace Quillon {

FitMonForm FitMon;

namespace {

constexpr int RowsOfAPage = 32;

// A fitted parameter's row of the monitor.
std::size_t RowOf(FreePos freePosition) {
    return static_cast<std::size_t>(freePosition.Number);
}

void LayOut() {
    const int n = Work.NumFree;
    FitMon.Columns = n < 17 ? 1 : 2;
    FitMon.RowsPerColumn = n < 17 ? n : n <= 32 ? (n + 1) / 2 : 16;
    FitMon.Paged = n >= 33;
    FitMon.ShowingPage2 = false;
    FitMon.Page2.Visible = FitMon.Paged;
    const auto heads = [&](const char* text) {
        return std::vector<Control>(static_cast<std::size_t>(FitMon.Columns), Captioned(text));
    };
    FitMon.Label1 = heads("Parameter");
    FitMon.Label2 = heads("Current Value");
    FitMon.Label3 = heads("Previous Value");
    FitMon.Label4 = heads("Outside Bounds");
}

// The rows of the page that shows. The row of the sum of squares comes behind the last parameter, so that
// with two pages it stands on the second.
void ShowRows() {
    for (int row = 0; row <= Work.NumFree; ++row) {
        const bool shown = !FitMon.Paged || (row >= RowsOfAPage) == FitMon.ShowingPage2;
        const auto i = static_cast<std::size_t>(row);
        FitMon.ParameterName[i].Visible = shown;
        FitMon.CurValue[i].Visible = shown;
        FitMon.PrevValue[i].Visible = shown;
        FitMon.BoundWarning[i].Visible = shown && FitMon.BoundWarning[i].Value != 0;
    }
}

// --- the engine's progress in the record ---------------------------------------------------------------

bool LabelsAreFree() {
    return FitMon.StatusText.Tag.empty();
}

std::string SumText() {
    return FormatNumber(Work.SumSq, "#.######E-##");
}

void StartLabels() {
    FitMon.StatusText.Tag.clear();
    FitMon.StatusText.ForeColor = Control{}.ForeColor;
    MonitorAlpha();
}

// The row of the sum: the one that the step starts from becomes the previous one.
void AnnounceSearch() {
    MonitorStatus("Adjusting Increment");
    Control& current = FitMon.CurValue.back();
    if (Work.Iteration == 1) current.Text = SumText();
    FitMon.PrevValue.back().Text = current.Text;
    current.Text.clear();
}

// The sum of the best place so far stands until a damped step has found a lower one.
void AnnounceDamped() {
    FitMon.IterNum.Text = std::to_string(Work.Iteration);
    MonitorStatus("Searching with damped steps");
}

void HoldLabels() {
    FitMon.StatusText.ForeColor = BlueColor;
    FitMon.StatusText.Text = "Converged, last sum";
    FitMon.StatusText.Tag = "1";
}

void ShowSums() {
    if (Work.Iteration > 0) FitMon.IterNum.Text = std::to_string(Work.Iteration);
    MonitorStatus("Accumulating Sums");
}

void ShowPhase(FitPhase phase) {
    switch (phase) {
    case FitPhase::Started:
        return StartLabels();
    case FitPhase::Sums:
        return ShowSums();
    case FitPhase::LastSums:
        return HoldLabels();
    case FitPhase::Ended:
        return FitMon.StatusText.Tag.clear();
    case FitPhase::Damped:
        return StartLabels();
    case FitPhase::DampedStep:
        AnnounceDamped();
        break;
    case FitPhase::Inversion:
        MonitorStatus("Inverting Matrix");
        break;
    case FitPhase::Search:
        if (LabelsAreFree()) AnnounceSearch();
        break;
    }
    if (LabelsAreFree()) Host.ServeEvents();
}

void ShowStep() {
    for (const FreePos a : EachFree())
        ShowBoundWarning(a, Work.AtBound[a] != 0);
    MonitorAlpha();
}

void ShowIteration() {
    UpdateMonitor();
    Control& current = FitMon.CurValue.back();
    if (!current.Text.empty()) FitMon.PrevValue.back().Text = current.Text; // that of a damped step before
    current.Text = SumText();
    Host.ServeEvents();
}

void WaitForButton() {
    if (Work.MonitorMode != Monitor::Stepping) return;
    MonitorStatus("waiting for input");
    while (Work.MonitorMode == Monitor::Stepping && !Work.AbortFit)
        Host.WaitEvent();
    if (Work.MonitorMode == Monitor::OneIteration) Work.MonitorMode = Monitor::Stepping;
}

void TellRemark(const std::string& sentence) {
    Tell(sentence, Work.ProgramName, BoxIcon::Warning);
}

} // namespace

void OpenFitMonitor() {
    UnloadFitMon();
    if (Work.MonitorMode == Monitor::None) return;
    LoadFitMon();
    Work.MonitorMode = Work.PauseBeforeFit ? Monitor::Stepping : Monitor::FreeRun;
    if (!Work.PauseBeforeFit) FitMon.FitButton.Visible = FitMon.NextIter.Visible = false;
    if (Work.PauseBeforeFit) MonitorStatus("waiting for input");
    Host.ShowForm(FitMonName);
}

void CloseFitMonitor() {
    if (!FitMon.Loaded) return;
    UnloadFitMon();
    Host.HideForm(FitMonName);
    Host.ShowForm(AnalmenuName);
}

FitProgress MonitorProgress() {
    if (!FitMon.Loaded) return {{}, {}, {}, {}, TellRemark};
    return {ShowPhase, ShowStep, ShowIteration, WaitForButton, TellRemark};
}

void LoadFitMon() {
    FitMon = FitMonForm{};
    FitMon.Loaded = true;
    FitMon.Caption = Work.ProgramName + " - Fit Monitor";
    FitMon.FitButton = Captioned("Do &Fit");
    FitMon.NextIter = Captioned("1 &Iteration");
    FitMon.CancelButton = Captioned("&Cancel");
    FitMon.Page2 = Captioned("Page &2");
    FitMon.StatusText = Captioned("Accumulating Sums");
    FitMon.IterNum = Captioned("1");
    FitMon.AlphaText = Captioned("1.0000");
    LayOut();

    const auto rows = static_cast<std::size_t>(Work.NumFree) + 1;
    FitMon.ParameterName.assign(rows, Control{});
    FitMon.CurValue.assign(rows, Control{});
    FitMon.PrevValue.assign(rows, Control{});
    Control warning;
    warning.Visible = false;
    FitMon.BoundWarning.assign(rows, warning);
    for (const FreePos a : EachFree()) {
        FitMon.ParameterName[RowOf(a)].Text = Work.ParmName[SlotOf(a)];
        FitMon.CurValue[RowOf(a)].Text = ParmText(SlotOf(a));
    }
    FitMon.ParameterName.back().Text = "Sum (Errors)^2";
    ShowRows();
}

void UnloadFitMon() {
    FitMon = FitMonForm{};
}

void UpdateMonitor() {
    if (!FitMon.Loaded) return;
    for (const FreePos a : EachFree()) {
        const std::size_t i = RowOf(a);
        FitMon.PrevValue[i].Text = FitMon.CurValue[i].Text;
        FitMon.CurValue[i].Text = ParmText(SlotOf(a));
    }
}

void ShowBoundWarning(FreePos freePosition, bool outside) {
    if (!FitMon.Loaded) return;
    const std::size_t i = RowOf(freePosition);
    FitMon.BoundWarning[i].Value = outside ? 1 : 0;
    FitMon.BoundWarning[i].Visible = outside && FitMon.ParameterName[i].Visible;
}

void MonitorStatus(const std::string& text) {
    if (FitMon.Loaded && FitMon.StatusText.Tag.empty()) FitMon.StatusText.Text = text;
}

void MonitorAlpha() {
    if (FitMon.Loaded && FitMon.StatusText.Tag.empty())
        FitMon.AlphaText.Text = FormatNumber(Work.Alpha, "0.0000");
}

void FitMonFitButton() {
    Work.MonitorMode = Monitor::FreeRun;
    FitMon.FitButton.Visible = FitMon.NextIter.Visible = false;
}

void FitMonNextIter() {
    Work.MonitorMode = Monitor::OneIteration;
}

void FitMonCancelButton() {
    AskToStop();
}

void FitMonPage2() {
    FitMon.ShowingPage2 = !FitMon.ShowingPage2;
    FitMon.Page2.Text = FitMon.ShowingPage2 ? "Page &1" : "Page &2";
    ShowRows();
}

} // namespace Quillon
