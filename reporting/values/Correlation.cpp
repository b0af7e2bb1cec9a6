#include "reporting/values/Correlation.h"

#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "reporting/values/ParmLines.h"
#include "reporting/values/Statistics.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

CorrelationForm Correlation;

namespace {

using Triangle = std::vector<std::vector<double>>;

// The table is symmetric, the lower triangle alone is kept.
double Coefficient(const Triangle& triangle, std::size_t a, std::size_t b) {
    return a >= b ? triangle[a][b] : triangle[b][a];
}

CorrelationCell CellOf(const Triangle& triangle, std::size_t a, std::size_t b) {
    const double r = Coefficient(triangle, a, b);
    CorrelationCell cell{CoefficientText(r)};
    if (a == b) return cell; // a parameter with itself says nothing
    if (std::abs(r) > static_cast<double>(Work.VeryHighCorrelation))
        cell.Class = CorrelationClass::VeryHigh;
    else if (std::abs(r) > static_cast<double>(Work.HighCorrelation))
        cell.Class = CorrelationClass::High;
    return cell;
}

Control Legend(float threshold, CorrelationClass kind) {
    Control legend;
    legend.Text = "= Correlation > " + CoefficientText(static_cast<double>(threshold));
    legend.BackColor = CorrelationColor(kind);
    return legend;
}

std::vector<std::string> FittedNames() {
    std::vector<std::string> names;
    for (long a = 0; a < Work.NumFree; ++a)
        names.push_back(Work.ParmName[Work.FreeIndex[a]]);
    return names;
}

Triangle FittedTriangle() {
    Triangle triangle;
    for (long a = 0; a < Work.NumFree; ++a) {
        triangle.emplace_back();
        for (long b = 0; b <= a; ++b)
            triangle.back().push_back(static_cast<double>(Work.CorrMatrix(a, b)));
    }
    return triangle;
}

std::string RightAligned(const std::string& text, std::size_t width) {
    return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

const std::string ListHead = " Correlation with # ";
constexpr std::size_t NumberWidth = 3;
constexpr std::size_t CellWidth = 8;

std::string RowLabel(const std::vector<std::string>& names, std::size_t a) {
    return RightAligned(std::to_string(a + 1), NumberWidth) + " " + names[a] + " ";
}

std::string Padded(const std::string& text, std::size_t width) {
    return PadToWidth(text, static_cast<double>(width), CountCharacters);
}

// The columns from first to last of all rows that reach them, behind labels.
void AppendGroup(std::vector<std::string>& lines, const std::vector<std::string>& labels,
                 const Triangle& triangle, std::size_t first, std::size_t last) {
    std::string head = labels.back();
    for (std::size_t b = first; b <= last; ++b)
        head += RightAligned(std::to_string(b + 1), CellWidth);
    lines.push_back(head);
    for (std::size_t a = first; a < triangle.size(); ++a) {
        std::string line = labels[a];
        for (std::size_t b = first; b <= std::min(a, last); ++b)
            line += RightAligned(CoefficientText(triangle[a][b]), CellWidth);
        lines.push_back(line);
    }
}

// Of the rows, and of the head behind them: all of one width.
std::vector<std::string> LabelsOf(const std::vector<std::string>& names) {
    std::vector<std::string> labels;
    std::size_t width = ListHead.size();
    for (std::size_t a = 0; a < names.size(); ++a)
        width = std::max(width, RowLabel(names, a).size());
    for (std::size_t a = 0; a < names.size(); ++a)
        labels.push_back(Padded(RowLabel(names, a), width));
    labels.push_back(Padded(ListHead, width));
    return labels;
}

} // namespace

std::uint32_t CorrelationColor(CorrelationClass kind) {
    switch (kind) {
    case CorrelationClass::High:
        return 0x0042E4F0; // yellow
    case CorrelationClass::VeryHigh:
        return 0x00009FE6; // orange
    default:
        return DefaultColor;
    }
}

// A report of the largest fit has fifteen hundred of them, which are below 1. Where the fifth decimal is not
// next to a half the nearest whole number of ten-thousandths is what the picture rounds to.
std::string CoefficientText(double coefficient) {
    const double parts = std::fabs(coefficient) * 10000.0;
    const double below = std::floor(parts);
    if (!(parts < 9999.0) || std::fabs(parts - below - 0.5) < 1e-6)
        return FormatNumber(coefficient, "+0.0000;-0.0000");
    int digits = static_cast<int>(parts - below < 0.5 ? below : below + 1.0);
    std::string text = coefficient < 0.0 ? "-0.0000" : "+0.0000";
    for (std::size_t place = text.size() - 1; digits > 0; --place, digits /= 10)
        text[place] = static_cast<char>('0' + digits % 10);
    return text;
}

void FillCorrelation(const std::string& caption, const std::vector<std::string>& names,
                     const std::vector<std::vector<double>>& triangle) {
    Correlation = CorrelationForm{};
    Correlation.Caption = Work.ProgramName + " - " + caption;
    Correlation.Names = names;
    for (std::size_t a = 0; a < names.size(); ++a) {
        std::vector<CorrelationCell> row;
        for (std::size_t b = 0; b < names.size(); ++b)
            row.push_back(CellOf(triangle, a, b));
        Correlation.Cells.push_back(row);
    }
    Correlation.HighLegend = Legend(Work.HighCorrelation, CorrelationClass::High);
    Correlation.VeryHighLegend = Legend(Work.VeryHighCorrelation, CorrelationClass::VeryHigh);
    Correlation.OkButton.Text = "OK";
}

void FillCorrelation() {
    ComputeCorrelations(Work.HighCount, Work.VeryHighCount);
    FillCorrelation("Parameter Cross-Correlations", FittedNames(), FittedTriangle());
}

void CorrelationOkButton() {
    Host.HideForm(CorrelationName);
}

std::vector<std::string> TriangleLines(const std::vector<std::string>& names,
                                       const std::vector<std::vector<double>>& triangle, int columns) {
    std::vector<std::string> lines;
    if (triangle.size() < 2) return lines;
    const std::vector<std::string> labels = LabelsOf(names);
    const long room = columns - static_cast<long>(labels.back().size());
    const auto perGroup = static_cast<std::size_t>(std::max(1L, room / static_cast<long>(CellWidth)));
    for (std::size_t first = 0; first < triangle.size(); first += perGroup)
        AppendGroup(lines, labels, triangle, first, std::min(first + perGroup, triangle.size()) - 1);
    return lines;
}

std::vector<std::string> CorrelationLines(int columns) {
    return TriangleLines(FittedNames(), FittedTriangle(), columns);
}

} // namespace Quillon
