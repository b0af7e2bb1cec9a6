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

std::string CoefficientText(float c) {
    return FormatNumber(static_cast<double>(c), "+0.0000;-0.0000");
}

// The table is symmetric, the lower triangle alone is kept.
float Coefficient(long a, long b) {
    return a >= b ? Work.CorrMatrix(a, b) : Work.CorrMatrix(b, a);
}

CorrelationClass ClassOf(long a, long b) {
    const float c = std::abs(Coefficient(a, b));
    if (a == b) return CorrelationClass::Plain; // a parameter with itself says nothing
    if (c > Work.VeryHighCorrelation) return CorrelationClass::VeryHigh;
    return c > Work.HighCorrelation ? CorrelationClass::High : CorrelationClass::Plain;
}

Control Legend(float threshold, CorrelationClass kind) {
    Control legend;
    legend.Text = "= Correlation > " + CoefficientText(threshold);
    legend.BackColor = CorrelationColor(kind);
    return legend;
}

std::string RightAligned(const std::string& text, std::size_t width) {
    return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

const std::string ListHead = " Correlation with # ";
constexpr std::size_t NumberWidth = 3;
constexpr std::size_t CellWidth = 8;

std::string RowLabel(long a) {
    return RightAligned(std::to_string(a + 1), NumberWidth) + " " + Work.ParmName[Work.FreeIndex[a]] + " ";
}

// The columns from first to last of all rows that reach them.
void AppendGroup(std::vector<std::string>& lines, long first, long last, std::size_t labelWidth) {
    std::string head = PadToWidth(ListHead, static_cast<double>(labelWidth), CountCharacters);
    for (long b = first; b <= last; ++b)
        head += RightAligned(std::to_string(b + 1), CellWidth);
    lines.push_back(head);
    for (long a = first; a < Work.NumFree; ++a) {
        std::string line = PadToWidth(RowLabel(a), static_cast<double>(labelWidth), CountCharacters);
        for (long b = first; b <= std::min(a, last); ++b)
            line += RightAligned(CoefficientText(Work.CorrMatrix(a, b)), CellWidth);
        lines.push_back(line);
    }
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

void FillCorrelation() {
    ComputeCorrelations(Work.HighCount, Work.VeryHighCount);
    Correlation = CorrelationForm{};
    Correlation.Caption = Work.ProgramName + " - Parameter Cross-Correlations";
    for (long a = 0; a < Work.NumFree; ++a) {
        Correlation.Names.push_back(Work.ParmName[Work.FreeIndex[a]]);
        std::vector<CorrelationCell> row;
        for (long b = 0; b < Work.NumFree; ++b)
            row.push_back({CoefficientText(Coefficient(a, b)), ClassOf(a, b)});
        Correlation.Cells.push_back(row);
    }
    Correlation.HighLegend = Legend(Work.HighCorrelation, CorrelationClass::High);
    Correlation.VeryHighLegend = Legend(Work.VeryHighCorrelation, CorrelationClass::VeryHigh);
    Correlation.OkButton.Text = "OK";
}

void CorrelationOkButton() {
    Host.HideForm(CorrelationName);
}

std::vector<std::string> CorrelationLines(int columns) {
    std::vector<std::string> lines;
    if (Work.NumFree < 2) return lines;
    std::size_t labelWidth = ListHead.size();
    for (long a = 0; a < Work.NumFree; ++a)
        labelWidth = std::max(labelWidth, RowLabel(a).size());
    const long room = columns - static_cast<long>(labelWidth);
    const long perGroup = std::max(1L, room / static_cast<long>(CellWidth));
    for (long first = 0; first < Work.NumFree; first += perGroup)
        AppendGroup(lines, first, std::min<long>(first + perGroup, Work.NumFree) - 1, labelWidth);
    return lines;
}

} // namespace Quillon
