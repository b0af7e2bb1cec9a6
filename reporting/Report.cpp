#include "reporting/Report.h"

#include "input/NUMINPUT.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "reporting/ConstantWarnings.h"
#include "reporting/ReportConstraints.h"
#include "reporting/ReportModel.h"
#include "reporting/values/Correlation.h"
#include "reporting/values/DerivedConstants.h"
#include "reporting/values/FitNotes.h"
#include "reporting/values/Measured.h"
#include "reporting/values/ParmLines.h"
#include "reporting/values/Pictured.h"
#include "reporting/values/Statistics.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

void Print(ReportPages& report, const std::vector<std::string>& lines) {
    for (const std::string& line : lines)
        ReportLineFeed(report, line);
}

// Fitted parameters; one that stands at a bound carries its notice over the turn of a page.
void PrintFitted(ReportPages& report) {
    const std::vector<std::string> lines = FittedLines(CountCharacters, WholeAccuracyText);
    for (long a = 0; a < Work.NumFree; ++a) {
        std::vector<std::string> together{lines[static_cast<std::size_t>(a)]};
        const int bound = a <= Work.AtBound.Hi() ? Work.AtBound[a] : 0;
        if (bound != 0)
            together.insert(together.begin(), std::string("** the following parameter was ") +
                                                  (bound > 0 ? "over" : "under") + " the limit");
        ReportLineFeed(report, together);
    }
    if (!Work.LimitsDone) return;
    ReportLineFeed(report,
                   "    confidence intervals are for " + Pictured(Work.LimitsLevel, "#0.0%") + " confidence");
    ReportLineFeed(report,
                   "    1 + (Nparms/Ndf)*F(Nparms,Ndf,1-p) = " + Pictured(Work.ConfidenceRatio, "0.00000"));
}

void PrintStatistics(ReportPages& report) {
    ReportLineFeed(report, "    sum-of-squared residuals = " + FormatNumber(Work.SumSq, "#.######E+##"));
    ReportLineFeed(report, "    rms error = " + Pictured(Work.RmsResidual, "#.######E+##") + " for " +
                               std::to_string(Work.NumPts - Work.NumFree) +
                               " degrees of freedom; runs test Z = " + RunsZText());
    const double percent = static_cast<double>(Work.ParmsAccuracy) * 100.0;
    ReportLineFeed(report, "    convergence limit = " + SingleText(Work.ConvergenceLimit) +
                               "; parameter precision = " + SingleText(ToSingle(percent)) + "%");
}

// What the numbers above have to be read with stands behind them, beyond the lines that every report has.
// [decision: report-says-more]
void PrintWarnings(ReportPages& report) {
    for (const std::string& line : FitWarningLines())
        ReportLineFeed(report, "    Warning -- " + line);
    for (const std::string& line : NoteLines())
        ReportLineFeed(report, "    Note -- " + line);
    if (Work.Outcome.Rescued) ReportLineFeed(report, "    minimum found by a search with damped steps");
}

void PrintCorrelations(ReportPages& report) {
    if (Work.HighCount != 0)
        ReportLineFeed(report, "    Warning -- there" + HighCorrelationText(Work.HighCount));
    if (Work.VeryHighCount != 0)
        ReportLineFeed(report, "      " + VeryHighCorrelationText(Work.VeryHighCount));
    Print(report, CorrelationLines(report.Paper.Columns));
}

} // namespace

std::string ReportFooter() {
    const ClockTime now = Host.Clock();
    const std::string day = FormatNumber(now.Month, "00") + "/" + FormatNumber(now.Day, "00") + "/" +
                            FormatNumber(now.Year, "0000");
    const std::string fit = Work.FitFile.empty() ? "" : " (" + FileTitle(Work.FitFile) + ")";
    return "Results from " + Work.ProgramName + " version " + Work.ProgramVersion + ", " + day + fit;
}

std::vector<PageLines> PrintReport(const ReportPaper& paper, const std::vector<std::string>& further) {
    if (!Work.FitDone) RaiseError(ErrorText::BadArgument);
    RunsTest();
    ComputeCorrelations(Work.HighCount, Work.VeryHighCount);

    ReportPages report = StartReport(paper, ReportFooter());
    Print(report, PrintModelText(report.Paper.Columns));
    Print(report, {"", "Results of fit:"});
    PrintFitted(report);
    Print(report, DerivedLines());
    PrintStatistics(report);
    PrintWarnings(report);
    PrintCorrelations(report);
    for (const std::string& line : ConstantWarnings())
        ReportLineFeed(report, "    Warning -- " + line);
    ReportLineFeed(report, "Parameters held constant:");
    Print(report, HeldLines());
    Print(report, PrintConstraintText());
    Print(report, {"", "What was measured:"});
    Print(report, MeasuredLines());
    Print(report, further);
    FinishReport(report);
    return report.Pages;
}

std::string TextOfPages(const std::vector<PageLines>& pages) {
    std::string text;
    for (const PageLines& page : pages) {
        if (!text.empty()) text += '\f';
        for (const std::string& line : page)
            text += line + '\n';
    }
    return text;
}

std::string ReportText(const ReportPaper& paper, const std::vector<std::string>& further) {
    return TextOfPages(PrintReport(paper, further));
}

} // namespace Quillon
