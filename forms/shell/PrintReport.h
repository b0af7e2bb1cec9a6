#pragma once
// The report to paper or to a file.

namespace Quillon {

// Asks for a printer and prints the report, with the graph of OverlayPlot behind it when asked.
void PrintReportWith(bool withGraph);

} // namespace Quillon
