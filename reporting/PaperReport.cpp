#include "reporting/PaperReport.h"

#include "platform/RuntimeError.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Quillon {

namespace {

// Courier and the faces of its widths: letters from the tallest to the lowest are so high.
constexpr double LetterHeightInEms = 1.1328;

constexpr const char* StandardFace = "Courier New";

int HeightOfSize(double points, double dotsPerInch) {
    return std::max(1, static_cast<int>(std::lround(points * LetterHeightInEms * dotsPerInch / 72.0)));
}

// The characters of a line that has to fit. Very small paper holds longer ones than it has columns.
std::size_t LongestLine(const ReportPaper& paper, const PageLines& lines) {
    std::size_t longest = static_cast<std::size_t>(std::max(paper.Columns, 1));
    for (const std::string& line : lines)
        longest = std::max(longest, line.size());
    return longest;
}

// The font that a line of so many characters has room in.
void SelectReportFont(const DrawingSurface& surface, const PrinterState& printer, std::size_t columns,
                      double room) {
    SurfaceFont font;
    font.Face = ReportFace(printer.FixedFonts);
    if (font.Face.empty()) font.Face = StandardFace;
    font.Height = HeightOfSize(static_cast<double>(Work.ReportFontSize), surface.DotsPerInchY());
    surface.SetFont(font);
    const std::string line(columns, '0');
    while (font.Height > 1 && surface.Measure(line).Width > room + 1.0) {
        --font.Height;
        surface.SetFont(font);
    }
}

} // namespace

ReportPaper PaperOf(const PrinterPage& page, float fontSize) {
    const double width = page.Width - page.Margin.Left - page.Margin.Right;
    const double height = page.Height - page.Margin.Top - page.Margin.Bottom;
    ReportPaper paper = TextPaper(width * PointsPerInch, height * PointsPerInch, fontSize);
    paper.Lines = std::max(paper.Lines, 1); // none would be a page without an end
    return paper;
}

ReportPaper PaperOf(const PrinterPage& page) {
    return PaperOf(page, Work.ReportFontSize);
}

void DrawReportPage(const DrawingSurface& surface, const PrinterState& printer, const ReportPaper& paper,
                    const PageLines& lines) {
    const PrinterPage& page = printer.Page;
    const double dotsX = surface.DotsPerInchX(), dotsY = surface.DotsPerInchY();
    surface.ClearClip();
    surface.SetTextColor(0);
    SelectReportFont(surface, printer, LongestLine(paper, lines),
                     (page.Width - page.Margin.Left - page.Margin.Right) * dotsX);
    const TextSize letter = surface.Measure("0");
    const double left = (page.Margin.Left - page.Border.Left) * dotsX;
    const double top = (page.Margin.Top - page.Border.Top) * dotsY + letter.Height - letter.Descent;
    const double feed = LineFeed(Work.ReportFontSize) * dotsY / PointsPerInch;
    double down = top;
    for (const std::string& line : lines) {
        if (!line.empty())
            surface.Text(static_cast<int>(std::lround(left)), static_cast<int>(std::lround(down)), line);
        down += feed;
    }
}

PrinterPage NamedPaper(const std::string& name) {
    std::string small = name;
    for (char& letter : small)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    constexpr const char* Across = "-landscape";
    const bool across = small.ends_with(Across);
    if (across) small.resize(small.size() - std::string(Across).size());
    PrinterPage page; // A4
    if (small == "letter") {
        page.Width = 8.5;
        page.Height = 11.0;
    } else if (small != "a4") {
        RaiseError("the paper is a4, letter, a4-landscape or letter-landscape, not '" + name + "'");
    }
    if (across) std::swap(page.Width, page.Height);
    return page;
}

} // namespace Quillon
