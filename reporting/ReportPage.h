#pragma once
// Pages of fixed-pitch text: lines are added one after the other, wrapped at the width of the paper, and
// the page turns when its lowest line is reached. Every page ends with the footer, and every page after the
// first begins with a head.

#include <cstdint>
#include <string>
#include <vector>

namespace Quillon {

// Inside the margins, in characters and lines of the report's font. Lines 0: one page without an end.
struct ReportPaper {
    int Columns = 0;
    int Lines = 0;
};

// What fits on both A4 and letter with margins of half an inch, at a font size in points; a character of
// the fixed-pitch faces is 0.6 of the size wide, a line 1.2 of it high.
ReportPaper StandardPaper(float fontSize);
ReportPaper StandardPaper(); // at Work.ReportFontSize

// What fits on an area of so many points.
ReportPaper TextPaper(double width, double height, float fontSize);

// From one line of text to the next at a font size, both in points.
double LineFeed(float fontSize);

// The face to print in: the first of the fixed-pitch faces known by name that the printer has; "" without
// any of them.
std::string ReportFace(const std::vector<std::string>& printerFonts);

using PageLines = std::vector<std::string>;

// A report that is being written.
struct ReportPages {
    ReportPaper Paper;
    std::string Footer;           // its left part, told at the foot of every page
    std::vector<PageLines> Pages; // finished ones
    PageLines Page;               // the one being written
    float ReportPageLimit = 0.0F; // lines that a page holds above its footer
    std::int16_t ReportPage = 1;  // number of the page being written
};

// A first page. Paper too small for a footer and a few lines is taken as large enough for them.
ReportPages StartReport(const ReportPaper& paper, const std::string& footer);

// Ends a line of text: wraps it, and turns the page before a line that would stand below the limit. Lines
// told as one keep together on a page where they fit on one.
void ReportLineFeed(ReportPages& report, const std::string& line);
void ReportLineFeed(ReportPages& report, const std::vector<std::string>& together);

// Ends the last page. The report is then Pages.
void FinishReport(ReportPages& report);

// A line in pieces of at most `columns` characters, broken at blanks where there are any; the pieces after
// the first are indented deeper than the line itself. Nothing is lost but the blanks at the breaks and
// control characters, which become blanks.
std::vector<std::string> WrapLine(const std::string& line, int columns);

} // namespace Quillon
