#pragma once
// The cross-correlations of the fitted parameters: the form's table as data, and the report's list.

#include "platform/Controls.h"

#include <string>
#include <vector>

namespace Quillon {

enum class CorrelationClass { Plain, High, VeryHigh };

struct CorrelationCell {
    std::string Text; // "+0.9712"
    CorrelationClass Class = CorrelationClass::Plain;
};

inline constexpr const char* CorrelationName = "Correlation"; // of the form, for the seam

struct CorrelationForm {
    std::string Caption;
    // Grid1: the same names head rows and columns; Cells[row][column] is the whole symmetric table.
    std::vector<std::string> Names;
    std::vector<std::vector<CorrelationCell>> Cells;
    // The legend under the grid; the back colour is that of the cells it explains.
    Control HighLegend, VeryHighLegend;
    Control OkButton;
};

// The one table of the process.
extern CorrelationForm Correlation;

// What a column of the grid has to hold.
inline constexpr const char* WidestCorrelationText = "  +0.0000  ";

// The back colour of a cell, 0x00BBGGRR; the two warning colours stay apart for eyes that do not tell red
// from green.
std::uint32_t CorrelationColor(CorrelationClass kind);

// "+0.9712"
std::string CoefficientText(double coefficient);

// Fills the form with the correlations of any quantities: their names, and a lower triangle with a row for
// each, which ends with the one of the quantity with itself.
void FillCorrelation(const std::string& caption, const std::vector<std::string>& names,
                     const std::vector<std::vector<double>>& triangle);

// Runs ComputeCorrelations, which leaves the counts in the workspace, and fills the form.
void FillCorrelation();
void CorrelationOkButton();

// The lower triangle of Work.CorrMatrix with a row for each parameter, the columns in groups that fit the
// width of the paper in characters. Empty with fewer than two fitted parameters.
std::vector<std::string> CorrelationLines(int columns);

// The same of any quantities and their lower triangle. Empty with fewer than two of them.
std::vector<std::string> TriangleLines(const std::vector<std::string>& names,
                                       const std::vector<std::vector<double>>& triangle, int columns);

} // namespace Quillon
