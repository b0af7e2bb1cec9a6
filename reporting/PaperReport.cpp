#include "reporting/PaperReport.h"

#include "platform/Letters.h"
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

// What the margins leave of the sheet, in inches from its upper left corner; margins that leave nothing are
// those that the printer needs.
struct TextArea {
    double Left, Top, Width, Height;
};
TextArea AreaOf(const PrinterPage& page) {
    const auto within = [&page](const PageEdges& e) {
        return TextArea{e.Left, e.Top, page.Width - e.Left - e.Right, page.Height - e.Top - e.Bottom};
    };
    const TextArea area = within(page.Margin);
    return area.Width > 0.0 && area.Height > 0.0 ? area : within(page.Border);
}

// The characters of a line that has to fit. Very small paper holds longer ones than it has columns.
std::size_t LongestLine(const ReportPaper& paper, const PageLines& lines) {
    std::size_t longest = static_cast<std::size_t>(std::max(paper.Columns, 1));
    for (const std::string& line : lines)
        longest = std::max(longest, line.size());
    return longest;
}

// From line to line in points; closer than the font asks where very small paper holds more lines than fit.
double FeedFor(const TextArea& area, std::size_t lines) {
    const double room = area.Height * PointsPerInch / static_cast<double>(std::max<std::size_t>(lines, 1));
    return std::min(LineFeed(Work.ReportFontSize), room);
}

// The font of that feed that a line of so many characters has room in.
void SelectReportFont(const DrawingSurface& surface, const PrinterState& printer, std::size_t columns,
                      const TextArea& area, double feed) {
    SurfaceFont font;
    font.Face = ReportFace(printer.FixedFonts);
    if (font.Face.empty()) font.Face = StandardFace;
    const double size = static_cast<double>(Work.ReportFontSize) * (feed / LineFeed(Work.ReportFontSize));
    font.Height = HeightOfSize(size, surface.DotsPerInchY());
    surface.SetFont(font);
    const std::string line(columns, '0');
    while (font.Height > 1 && surface.Measure(line).Width > area.Width * surface.DotsPerInchX() + 1.0) {
        --font.Height;
        surface.SetFont(font);
    }
}

} // namespace

ReportPaper PaperOf(const PrinterPage& page, float fontSize) {
    const TextArea area = AreaOf(page);
    ReportPaper paper = TextPaper(area.Width * PointsPerInch, area.Height * PointsPerInch, fontSize);
    paper.Lines = std::max(paper.Lines, 1); // none would be a page without an end
    return paper;
}

ReportPaper PaperOf(const PrinterPage& page) {
    return PaperOf(page, Work.ReportFontSize);
}

void DrawReportPage(const DrawingSurface& surface, const PrinterState& printer, const ReportPaper& paper,
                    const PageLines& lines) {
    const PageEdges& border = printer.Page.Border;
    const TextArea area = AreaOf(printer.Page);
    const double dotsX = surface.DotsPerInchX(), dotsY = surface.DotsPerInchY();
    const double points = FeedFor(area, lines.size());
    surface.ClearClip();
    surface.SetTextColor(0);
    SelectReportFont(surface, printer, LongestLine(paper, lines), area, points);
    const TextSize letter = surface.Measure("0");
    const int left = static_cast<int>(std::lround((area.Left - border.Left) * dotsX));
    const double feed = points * dotsY / PointsPerInch;
    double down = (area.Top - border.Top) * dotsY + letter.Height - letter.Descent;
    for (const std::string& line : lines) {
        if (!line.empty()) surface.Text(left, static_cast<int>(std::lround(down)), line);
        down += feed;
    }
}

PrinterPage NamedPaper(const std::string& name) {
    std::string small = SmallLetters(name);
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
