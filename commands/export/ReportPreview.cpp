#include "commands/export/ReportPreview.h"

#include "chart/dialogs/PrintEsc.h"
#include "chart/dialogs/PrintGraph.h"
#include "chart/draw/CancelScope.h"
#include "chart/targets/PaperNote.h"
#include "commands/export/HtmlReport.h"
#include "platform/FormControls.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "reporting/PaperReport.h"
#include "reporting/Report.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <functional>

namespace Quillon {

ReportPreviewRecord ReportPreview;

namespace {

void ShowPage() {
    ReportPreviewRecord& form = ReportPreview;
    const int last = PageCount(form.Report);
    form.Page = std::clamp(form.Page, 1, last);
    form.PageLabel.Text = "Page " + std::to_string(form.Page) + " of " + std::to_string(last);
    form.PreviousButton.Enabled = form.Page > 1;
    form.NextButton.Enabled = form.Page < last;
}

// The pages for the paper that lies in the printer now.
void MakePages() {
    ReportPreviewRecord& form = ReportPreview;
    form.Report = MakePrintedReport(Host.Printer.Current(), form.WithGraph.Value != 0, KeptStudies());
    ++form.Edition;
    form.PrinterNote.Text = PaperNote(form.Report.Printer, InMillimetres);
    ShowPage();
}

void FillCaptions() {
    ReportPreviewRecord& form = ReportPreview;
    form.State.Caption = Work.ProgramName + " - Report";
    form.SavedNote.Visible = false;
    form.PreviousButton.Text = "P&revious";
    form.NextButton.Text = "&Next";
    form.WithGraph.Text = Work.OverlayPlot != 0 ? "With the &data and fit plot" : "With the resi&dual plot";
    form.PaperSetup.Text = "Pap&er...";
    form.PrintButton.Text = "&Print...";
    form.SavePdf.Text = "Save as PD&F...";
    form.SaveText.Text = "Save as &Text...";
    form.SaveHtml.Text = "Save as &HTML...";
    form.CloseButton.Text = "&Close";
}

// "run7.quil" with another ending; "report" where the fit has no file.
std::string NameWith(const std::string& ending) {
    const std::string title = Work.FitFile.empty() ? "report" : FileTitle(Work.FitFile);
    return title.substr(0, title.rfind('.')) + "." + ending;
}

void SaveAs(const std::string& filter, const std::string& ending, const std::function<std::string()>& bytes) {
    FileRequest request;
    request.Title = Work.ProgramName + " - Save Report";
    request.Filter = filter + "|all files (*.*)|*.*";
    request.Directory = Work.FitFile.empty() ? Work.DataDirectory : DirectoryOf(Work.FitFile);
    request.Name = NameWith(ending);
    request.DefaultType = ending;
    request.Save = true;
    const FileAnswer answer = Host.AskFile(request);
    if (answer.Cancelled) return;
    try {
        Host.WriteFile(answer.Path, bytes());
        ReportPreview.SavedNote = Captioned("Written to " + answer.Path);
    } catch (const RuntimeError& error) {
        ReportPreview.SavedNote.Visible = false;
        Tell("Error '" + error.Text + "' occurred while writing " + answer.Path, Work.ProgramName,
             BoxIcon::Warning);
    }
}

// A dialog of the printer; false when it was cancelled or has failed, which is told.
bool Ask(const std::function<bool()>& dialog) {
    EndHeldPage(); // its printer is not to be changed below it
    try {
        return dialog();
    } catch (const RuntimeError& error) {
        TellPrinterSetupFailure(error.Text);
        return false;
    }
}

} // namespace

void LoadReportPreview(bool withGraph) {
    ReportPreview = ReportPreviewRecord{};
    FillCaptions();
    ReportPreview.WithGraph.Value = withGraph ? 1 : 0;
    MakePages();
    ReportPreview.State.FocusOn = &ReportPreview.PrintButton;
    ReportPreview.State.Shown = true;
}

void PreviewReport(bool withGraph) {
    LoadReportPreview(withGraph);
    Host.ShowModal(ReportPreviewName);
}

void DrawPreviewPage(const DrawingSurface& surface) {
    const PrintedReport& report = ReportPreview.Report;
    const CancelScope whole;
    DrawingSurface sheet = surface;
    sheet.HasColor = [color = report.Printer.HasColor] { return color; };
    try {
        DrawPage(report, ReportPreview.Page, sheet);
    } catch (const RuntimeError& error) {
        const std::string told = "This page cannot be drawn: " + error.Text;
        DrawReportPage(sheet, report.Printer, report.Paper, WrapLine(told, report.Paper.Columns));
    }
}

void ReportPreviewTurn(int pages) {
    ReportPreview.Page += pages;
    ShowPage();
}

void ReportPreviewGraphClick() {
    MakePages();
    if (ReportPreview.WithGraph.Value == 0) return;
    ReportPreview.Page = PageCount(ReportPreview.Report); // what was asked for is seen
    ShowPage();
}

void ReportPreviewPaperSetup() {
    if (Ask(Host.Printer.SetUpPage)) MakePages();
}

void ReportPreviewPrint() {
    if (!Ask(Host.Printer.Choose)) return;
    MakePages();
    if (PrintPages(ReportPreview.Report)) ReportPreview.State.Shown = false;
}

void ReportPreviewSavePdf() {
    SaveAs("PDF files (*.pdf)|*.pdf", "pdf", [] { return ReportPdf(ReportPreview.Report); });
}

void ReportPreviewSaveText() {
    SaveAs("text files (*.txt)|*.txt", "txt", [] { return TextOfPages(ReportPreview.Report.Pages); });
}

void ReportPreviewSaveHtml() {
    SaveAs("HTML files (*.html)|*.html", "html", HtmlReportWithFigure);
}

void ReportPreviewClose() {
    ReportPreview.State.Shown = false;
}

} // namespace Quillon
