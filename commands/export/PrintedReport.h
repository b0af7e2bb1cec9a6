#pragma once
// The report of the fit that stands on paper and in files: pages of text, and the graph behind them where it
// is wanted. Printer, PDF file and preview show the same pages.

#include "platform/Printer.h"
#include "reporting/ReportPage.h"
#include "studies/methods/StudyResults.h"

#include <string>
#include <vector>

namespace Quillon {

struct PrintedReport {
    PrinterState Printer;
    ReportPaper Paper;
    std::vector<PageLines> Pages;
    bool WithGraph = false; // on a page behind the text
    bool Overlay = false;   // that graph is data and fit, not the residuals
};

// The report for that printer's paper, with the graph that OverlayPlot chooses; studies of the fit have lines
// behind the rest. Without a fit that stands it
// is a RuntimeError.
PrintedReport MakePrintedReport(const PrinterState& printer, bool withGraph,
                                const StudyResults& studies = {});

int PageCount(const PrintedReport& report);

// Draws a page, counted from 1, on a surface as large as the printable area of the paper. The graph of the
// chart window is afterwards what it was, on every way out.
void DrawPage(const PrintedReport& report, int page, const DrawingSurface& surface);

// Prints all pages. False when the user gave it up, in the dialog or in the window that stands meanwhile; a
// failure is told. Either way nothing else has changed.
bool PrintPages(const PrintedReport& report);

// The same pages as the bytes of a PDF file. What fails is a RuntimeError.
std::string ReportPdf(const PrintedReport& report);

} // namespace Quillon
