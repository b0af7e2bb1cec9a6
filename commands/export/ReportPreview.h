#pragma once
// The form "Report" as data: the pages of the report as they will be printed, and what can be done with them.

#include "commands/export/PrintedReport.h"
#include "platform/Controls.h"

namespace Quillon {

inline constexpr const char* ReportPreviewName = "ReportPreview"; // of the form, for the seam

struct ReportPreviewRecord {
    FormState State;
    Control PrinterNote; // what the pages go to, and the paper
    Control PageLabel;   // "Page 2 of 3"
    Control PreviousButton, NextButton;
    Control WithGraph;  // check box
    Control PaperSetup; // the dialog for the paper
    Control PrintButton, SavePdf, SaveText, SaveHtml, CloseButton;
    Control SavedNote; // the file that was written last; not visible before

    PrintedReport Report;
    int Page = 1;    // that is shown
    int Edition = 0; // counts up when the pages are made anew
};
extern ReportPreviewRecord ReportPreview;

// Shows the report of the fit that stands: the buttons "Report Only" and "Report and ... Plot" of the
// results. Without such a fit it is a RuntimeError.
void PreviewReport(bool withGraph);

void LoadReportPreview(bool withGraph);

// Draws the page that is shown on a surface as large as the printable area of the paper, in colours where the
// printer has them. Why a page cannot be
// drawn stands on its sheet.
void DrawPreviewPage(const DrawingSurface& surface);

void ReportPreviewTurn(int pages); // forth or back; stays within the report
void ReportPreviewGraphClick();    // after the box has changed
void ReportPreviewPaperSetup();
void ReportPreviewPrint();   // the printer dialog first; closes when all has been printed
void ReportPreviewSavePdf(); // ask for a file; a failure is told, and the file is then what it was
void ReportPreviewSaveText();
void ReportPreviewSaveHtml(); // figure, tables and notes in one document (commands/export/HtmlReport.h)
void ReportPreviewClose();

} // namespace Quillon
