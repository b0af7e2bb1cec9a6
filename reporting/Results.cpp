#include "reporting/Results.h"

#include "fit/equations/NoiseWeights.h"
#include "fit/forms/WaitForm.h"
#include "input/NUMINPUT.h"
#include "models/function/SharedConcentrations.h"
#include "platform/Platform.h"
#include "reporting/ReportPage.h"
#include "reporting/values/Correlation.h"
#include "reporting/values/DerivedConstants.h"
#include "reporting/values/FitNotes.h"
#include "reporting/values/Statistics.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

ResultsForm Results;

namespace {

std::string JoinLines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += text.empty() ? line : "\n" + line;
    return text;
}

// The texts that do not hang on the fit.
void FillCaptions() {
    Results.Caption = Work.ProgramName + " - Results";
    Results.Frame1.Text = "Results";
    Results.Frame2.Text = "Fit Statistics";
    Results.SumSqLabel.Text = "Sum of Squared Residuals:";
    Results.DegFreedomLabel.Text = "Degrees of Freedom:";
    Results.RmsLabel.Text = "RMS Residual:";
    Results.ZScoreLabel.Text = "Runs test Z:";
    Results.Label1.Text = "Fitted Parameters:";
    Results.Label2.Text = "Value +/- Estimated Standard Error";
    Results.Label3.Text = "Parameters Held Constant:";
    Results.ComputeConfidence.Text = "&Compute Confidence Intervals";
    Results.ViewCorr.Text = "&View Parameter Cross-Correlations";
    Results.ShowConstraintButton.Text = "&Show Constraints";
    Results.Command1.Text = "&Report Only";
    Results.Command2.Text = Work.OverlayPlot ? "Report and Data+Fit &Plot" : "Report and Residual &Plot";
    Results.OkButton.Text = "OK";
}

void FillStatistics() {
    Results.SumSqValue.Text = FormatNumber(Work.SumSq, "#.######E+##");
    Results.DegFreedom.Text = FormatNumber(Work.NumPts - Work.NumFree, "####");
    Results.RmsValue.Text = FormatNumber(static_cast<double>(Work.RmsResidual), "#.######E+##");
    RunsTest();
    Results.ZScore.Text = RunsZText();
}

// Limits of another level than the one wanted are shown as what they are, and can be searched again.
bool LimitsStand() {
    return Work.LimitsDone && Work.LimitsLevel == Work.ConfidenceLevel;
}

// Behind the parameters, in lines of a length that the list shows without scrolling.
void AddToTheList(const std::vector<std::string>& block) {
    constexpr int ColumnsOfTheList = 56;
    std::vector<std::string> lines;
    for (const std::string& line : block)
        for (std::string& piece : WrapLine(line, ColumnsOfTheList))
            lines.push_back(std::move(piece));
    if (!lines.empty()) Results.ParmsFit.Text += "\n\n" + JoinLines(lines);
}

void FillParameters(const TextMeasure& measure) {
    Results.Label2.Text = Work.LimitsDone
                              ? "Value and " + FormatNumber(static_cast<double>(Work.LimitsLevel), "#0.0%") +
                                    " Confidence Interval:"
                              : "Value and Estimated Standard Error";
    Results.ParmsFit.Text = JoinLines(FittedLines(measure));
    AddToTheList(DerivedLines());
    AddToTheList(NoteLines());
    Results.ParmsConst.Text = JoinLines(HeldLines(measure));
    if (Results.ParmsConst.Text.empty()) Results.ParmsConst.Text = "No parameters held constant.";
    Results.ComputeConfidence.Enabled = !LimitsStand();
}

void FillConstraints() {
    std::vector<std::string> ties = OffsetLinkLines();
    for (const std::string& line : ConcentrationLinkLines())
        ties.push_back(line);
    if (SetsHaveNoise()) ties.push_back("Data sets are weighted by their noise; sums are in units of set 1.");
    Results.ConstraintText.Text = JoinLines(ties);
    Results.ConstraintText.Visible = !Results.ConstraintText.Text.empty();
    Results.ShowConstraintButton.Visible = Work.ConstraintFlags != 0;
    if (Work.ConstraintFlags & ConcentrationBit)
        Results.ShowConstraintButton.Text = "&Show Concentration Constraints";
}

void FillWarning() {
    Results.Warning.Text = JoinLines(FitWarningLines());
    Results.Warning.Visible = !Results.Warning.Text.empty();
    Results.Warning.ForeColor = RedColor;
    ComputeCorrelations(Work.HighCount, Work.VeryHighCount);
    Results.Message.Visible = Work.HighCount != 0;
    Results.Message.ForeColor = RedColor;
    Results.Message.Text = Work.HighCount == 0 ? ""
                                               : "WARNING---there" + HighCorrelationText(Work.HighCount) +
                                                     VeryHighCorrelationText(Work.VeryHighCount);
}

} // namespace

void FillResults(const TextMeasure& measure) {
    Results = ResultsForm{};
    FillCaptions();
    FillStatistics();
    FillParameters(measure);
    FillConstraints();
    FillWarning();
}

void ResultsComputeConfidence(const TextMeasure& measure) {
    if (!LimitsStand()) {
        LoadWaitForm();
        Host.ShowModal(WaitFormName);
    }
    FillResults(measure);
}

void ResultsViewCorr() {
    FillCorrelation();
    Host.ShowModal(CorrelationName);
}

void ResultsOkButton() {
    Host.HideForm(ResultsName);
}

} // namespace Quillon
