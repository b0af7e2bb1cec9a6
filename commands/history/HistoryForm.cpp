#include "commands/history/HistoryForm.h"

#include "fit/equations/FDistribution.h"
#include "input/NUMINPUT.h"
#include "models/table/Catalogue.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "platform/Words.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <utility>

namespace Quillon {

HistoryFormRecord HistoryForm;

namespace {

constexpr const char* NoRatioYet = "Two rows that are marked give the F ratio of their fits.";

std::string TimeText(const ClockTime& at) {
    return ClockDigits(at.Hour) + ":" + ClockDigits(at.Minute) + ":" + ClockDigits(at.Second);
}

std::vector<std::string> RowOfStep(std::size_t place) {
    const HistoryStep& step = History.Steps[place];
    const Workspace& w = step.Analysis.Small;
    const bool fitted = w.FitDone != 0;
    return {place == History.Place ? ">" : "",
            TimeText(step.Time),
            step.Command,
            w.ModelChosen ? ModelDialogName(w.Model) : "",
            fitted ? FormatNumber(static_cast<double>(w.RmsResidual), "0.000E-##") : "",
            fitted ? std::to_string(w.NumPts - w.NumFree) : ""};
}

void FillRows() {
    HistoryForm.Rows.clear();
    for (std::size_t place = 0; place < History.Steps.size(); ++place)
        HistoryForm.Rows.push_back(RowOfStep(place));
}

void ShowRatio() {
    const std::vector<std::size_t>& marked = HistoryForm.Marked;
    HistoryForm.Ratio.Text =
        marked.size() == 2 ? FRatioText(History.Steps[marked[0]], History.Steps[marked[1]]) : NoRatioYet;
    HistoryForm.GoButton.Enabled = marked.size() == 1 && marked[0] != History.Place;
}

// The points and the weights that their sums of squares are made of.
bool FitSamePoints(const HistoryStep& one, const HistoryStep& other) {
    const Workspace a = WholeAnalysis(one.Analysis), b = WholeAnalysis(other.Analysis);
    return a.NumPts == b.NumPts && a.PtX == b.PtX && a.PtY == b.PtY && a.PtSet == b.PtSet &&
           a.SetNoise == b.SetNoise;
}

std::string NumberText(double number) {
    return FormatNumber(number, number >= 0.01 && number < 1e6 ? "0.0##" : "0.0##E-##");
}

std::string NestedText(const Workspace& small, const Workspace& large) {
    const long more = large.NumFree - small.NumFree, freedom = large.NumPts - large.NumFree;
    const std::string words =
        " with " + std::to_string(more) + " and " + std::to_string(freedom) + " degrees of freedom";
    if (!(large.SumSq > 0.0) || freedom < 1) return "There is no F ratio: nothing is left of the residuals.";
    const double f = (small.SumSq - large.SumSq) / static_cast<double>(more) /
                     (large.SumSq / static_cast<double>(freedom));
    if (f < 0.0) return "The fit with more parameters has the larger sum of squares: there is no F ratio.";
    const float p =
        FProbability(static_cast<float>(f), static_cast<float>(more), static_cast<float>(freedom));
    return "F = " + NumberText(f) + words +
           ". By chance, where the model with fewer parameters is a case of the " +
           "other one and true, it is as large in " + NumberText(static_cast<double>(p) * 100.0) +
           "% of experiments.";
}

std::string SameSizeText(const Workspace& one, const Workspace& other) {
    const double least = std::min(one.SumSq, other.SumSq), most = std::max(one.SumSq, other.SumSq);
    if (!(least > 0.0)) return "There is no F ratio: nothing is left of the residuals.";
    return "F = " + NumberText(most / least) + ", the ratio of the sums of squares of two fits with " +
           std::to_string(one.NumPts - one.NumFree) + " degrees of freedom each.";
}

} // namespace

std::string FRatioText(const HistoryStep& one, const HistoryStep& other) {
    const Workspace& a = one.Analysis.Small;
    const Workspace& b = other.Analysis.Small;
    if (!a.FitDone || !b.FitDone) return "There is no F ratio: not both of them are fits.";
    if (!FitSamePoints(one, other)) return "There is no F ratio: they are fits of other points.";
    if (a.NumFree == b.NumFree) return SameSizeText(a, b);
    return a.NumFree < b.NumFree ? NestedText(a, b) : NestedText(b, a);
}

void ShowHistory() {
    NoteHistory("");
    HistoryForm = HistoryFormRecord{};
    HistoryForm.State.Caption = "History";
    HistoryForm.Head =
        Captioned("The analysis after each command that has changed it. A double click makes it what it "
                  "was then; nothing behind that row is lost before the next change.");
    HistoryForm.Columns = {"", "Time", "Command", "Model", "Rms", "Degrees of Freedom"};
    HistoryForm.GoButton =
        Captioned("&Go There", "The analysis becomes what it was after the marked command");
    HistoryForm.CloseButton = Captioned("Close");
    FillRows();
    HistoryFormMark({History.Place});
    HistoryForm.State.Shown = true;
    Host.ShowModal(HistoryFormName);
}

void HistoryFormMark(std::vector<std::size_t> rows) {
    std::erase_if(rows, [](std::size_t row) { return row >= HistoryForm.Rows.size(); });
    std::sort(rows.begin(), rows.end());
    HistoryForm.Marked = std::move(rows);
    ShowRatio();
}

void HistoryFormGo(std::size_t row) {
    if (row >= HistoryForm.Rows.size() || row == History.Place) return;
    GoToStep(row);
    FillRows();
    ShowRatio();
}

void HistoryFormGoButton() {
    if (HistoryForm.GoButton.Enabled) HistoryFormGo(HistoryForm.Marked[0]);
}

void HistoryFormCloseButton() {
    HistoryForm.State.Shown = false;
}

} // namespace Quillon
