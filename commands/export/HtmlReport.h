#pragma once
// The report as one document for a browser: figure, tables, constants, what was measured, notes, and the
// whole text report behind them. The file stands by itself: no scripts, nothing that is fetched.

#include "studies/methods/StudyResults.h"

#include <string>

namespace Quillon {

// The whole document (HTML 5, UTF-8) of the fit that stands, with a figure as the bytes of an SVG file; an
// empty one leaves the figure out. studies of that fit have a section each, and their lines in the report.
// Without a fit it is a RuntimeError.
std::string HtmlReport(const std::string& figure, const StudyResults& studies = {});

// The same with the figure of the data, the fit and the residuals, two columns wide, and with the studies
// that are kept of the fit.
std::string HtmlReportWithFigure();

// The menu command's part: asks for a file and writes what was measured and found as tables, in the format of
// its ending. A failure is told, and no file is left half written.
void ExportMethodsTable();

} // namespace Quillon
