#include "reporting/ReportPage.h"

#include "platform/Narrow.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr double PrintableWidth = 523.0;  // points: A4 less two margins of 36
constexpr double PrintableHeight = 720.0; // points: letter less the same
constexpr double CharacterWidth = 0.6;    // of the font size
constexpr double LineHeight = 1.2;

constexpr int SmallestColumns = 24;
constexpr int SmallestBody = 4;
constexpr std::size_t ContinuationIndent = 6;

std::string RightPart(int page) {
    return "Page " + std::to_string(page);
}

// The footer's lines for a page. Reserving with the highest number makes all footers equally tall.
PageLines FooterLines(const ReportPages& report, int page) {
    constexpr int HighestPage = 32767;
    PageLines lines = WrapLine(report.Footer, report.Paper.Columns);
    const std::size_t columns = static_cast<std::size_t>(report.Paper.Columns);
    if (lines.back().size() + 2 + RightPart(HighestPage).size() > columns) lines.emplace_back();
    const std::string right = RightPart(page);
    lines.back().resize(columns - right.size(), ' ');
    lines.back() += right;
    return lines;
}

bool HasEnd(const ReportPages& report) {
    return report.Paper.Lines > 0;
}

// The footer at the foot of the paper, with an empty line above it.
void EndPage(ReportPages& report) {
    std::size_t body = report.Page.size();
    if (HasEnd(report)) body = std::max(body, static_cast<std::size_t>(report.ReportPageLimit));
    report.Page.resize(body + 1);
    for (const std::string& line : FooterLines(report, report.ReportPage))
        report.Page.push_back(line);
    report.Pages.push_back(std::move(report.Page));
    report.Page.clear();
}

void TurnPage(ReportPages& report) {
    EndPage(report);
    report.ReportPage = ToInt16(report.ReportPage + 1);
    report.Page.push_back("  " + Work.ProgramName + "    " + RightPart(report.ReportPage));
    report.Page.emplace_back();
}

bool Fits(const ReportPages& report, std::size_t lines) {
    return !HasEnd(report) || static_cast<float>(report.Page.size() + lines) <= report.ReportPageLimit;
}

std::string Printable(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 32 || c == 127) c = ' ';
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    return text;
}

// How well a line may be broken at a blank: after a comma or semicolon and before an interval best, beside
// "=" and within an interval only at need.
enum class BreakQuality { None, Poor, Fair, Good };

// True between the brackets of an interval, "[ 1.2, 3.4 ]" or "[1.2, 3.4]".
bool WithinInterval(const std::string& text, std::size_t blank) {
    const std::size_t open = text.rfind('[', blank);
    const std::size_t close = open == std::string::npos ? open : text.find(']', open);
    return close != std::string::npos && close > blank;
}

BreakQuality QualityOfBreak(const std::string& text, std::size_t blank) {
    const std::size_t last = text.find_last_not_of(' ', blank);
    const std::size_t next = text.find_first_not_of(' ', blank);
    if (WithinInterval(text, blank)) return BreakQuality::Poor;
    if (next != std::string::npos && text[next] == '[') return BreakQuality::Good;
    if (text[last] == ',' || text[last] == ';') return BreakQuality::Good;
    if (text[last] == '=' || (next != std::string::npos && text[next] == '=')) return BreakQuality::Poor;
    return BreakQuality::Fair;
}

// Where to end a piece that starts at `start` and may be `room` long: at the best blank of its last third, of
// its latter half where the last third has poor ones alone, or at the last blank of all, or at the edge of
// the paper inside a word that is too long.
std::size_t EndOfPiece(const std::string& text, std::size_t start, std::size_t room) {
    const std::size_t edge = start + room;
    if (edge >= text.size()) return text.size();
    const std::size_t firstWord = text.find_first_not_of(' ', start);
    std::size_t best = edge;
    BreakQuality found = BreakQuality::None;
    for (std::size_t blank = edge; blank > firstWord; --blank) {
        const std::size_t back = found == BreakQuality::Poor ? room / 2 : room / 3;
        if (found != BreakQuality::None && blank < edge - back) break;
        if (text[blank] != ' ') continue;
        const BreakQuality quality = QualityOfBreak(text, blank);
        if (quality <= found) continue;
        found = quality;
        best = text.find_last_not_of(' ', blank) + 1;
    }
    return best;
}

} // namespace

double LineFeed(float fontSize) {
    return LineHeight * std::max(1.0, static_cast<double>(fontSize));
}

ReportPaper TextPaper(double width, double height, float fontSize) {
    const double size = std::max(1.0, static_cast<double>(fontSize));
    return {static_cast<int>(width / (CharacterWidth * size)), static_cast<int>(height / LineFeed(fontSize))};
}

ReportPaper StandardPaper(float fontSize) {
    return TextPaper(PrintableWidth, PrintableHeight, fontSize);
}

ReportPaper StandardPaper() {
    return StandardPaper(Work.ReportFontSize);
}

std::string ReportFace(const std::vector<std::string>& printerFonts) {
    const std::string wanted[] = {"COURIER", "Courier", "COURIER (", "COURIER NEW", "Courier New"};
    for (const std::string& name : wanted)
        for (const std::string& font : printerFonts) {
            const bool opensBracket = name.back() == '('; // what stands in the brackets differs by printer
            if (opensBracket ? font.starts_with(name) : font == name) return font;
        }
    return "";
}

std::vector<std::string> WrapLine(const std::string& line, int columns) {
    const std::string text = Printable(line);
    const std::size_t width = static_cast<std::size_t>(std::max(1, columns));
    const std::size_t ownIndent = std::min(text.find_first_not_of(' '), text.size());
    std::size_t indent = ownIndent + ContinuationIndent;
    if (indent > width / 2) indent = 0;

    std::vector<std::string> pieces;
    std::size_t start = 0;
    do {
        const std::size_t room = pieces.empty() ? width : width - indent;
        const std::size_t end = EndOfPiece(text, start, room);
        pieces.push_back(std::string(pieces.empty() ? 0 : indent, ' ') + text.substr(start, end - start));
        start = std::min(text.find_first_not_of(' ', end), text.size());
    } while (start < text.size());
    return pieces;
}

ReportPages StartReport(const ReportPaper& paper, const std::string& footer) {
    ReportPages report;
    report.Paper = paper;
    report.Footer = footer;
    report.Paper.Columns = std::max(paper.Columns, SmallestColumns);
    const int foot = static_cast<int>(FooterLines(report, 1).size()) + 1;
    if (!HasEnd(report)) return report;
    report.Paper.Lines = std::max(paper.Lines, foot + SmallestBody);
    report.ReportPageLimit = static_cast<float>(report.Paper.Lines - foot);
    return report;
}

void ReportLineFeed(ReportPages& report, const std::string& line) {
    ReportLineFeed(report, std::vector<std::string>{line});
}

void ReportLineFeed(ReportPages& report, const std::vector<std::string>& together) {
    PageLines lines;
    for (const std::string& line : together)
        for (std::string& piece : WrapLine(line, report.Paper.Columns))
            lines.push_back(std::move(piece));
    constexpr std::size_t HeadLines = 2;
    const bool fitsOnOne = static_cast<float>(HeadLines + lines.size()) <= report.ReportPageLimit;
    if (fitsOnOne && !Fits(report, lines.size())) TurnPage(report);
    for (std::string& line : lines) {
        if (!Fits(report, 1)) TurnPage(report);
        report.Page.push_back(std::move(line));
    }
}

void FinishReport(ReportPages& report) {
    EndPage(report);
}

} // namespace Quillon
