#pragma once
// The report on sheets of paper: how much of its fixed-pitch text a sheet takes, and a page of it drawn on
// any surface, so that printer, PDF file and preview show the same.

#include "platform/Printer.h"
#include "reporting/ReportPage.h"

#include <string>
#include <vector>

namespace Quillon {

// What fits between the margins of a sheet at a font size in points. It depends on the sheet alone, not on
// the fonts of the machine, so that pages turn at the same lines everywhere.
ReportPaper PaperOf(const PrinterPage& page, float fontSize);
ReportPaper PaperOf(const PrinterPage& page); // at Work.ReportFontSize

// Draws a page on the printable area of its sheet, in the face that ReportFace finds among those of the
// printer, or whatever stands for Courier New. Text that is too wide for the margins, or that has more lines
// than fit between them, is drawn smaller and closer: no line is lost on very small paper. Margins that leave
// nothing of the sheet count as those that the printer needs. The paper is the one that the page was made
// for.
void DrawReportPage(const DrawingSurface& surface, const PrinterState& printer, const ReportPaper& paper,
                    const PageLines& lines);

// A sheet by its name, in either case: "a4", "letter", "a4-landscape" or "letter-landscape", with the
// standard margins. Another name is a RuntimeError that lists them.
PrinterPage NamedPaper(const std::string& name);

} // namespace Quillon
