#pragma once
// The form "History" as data: what the analysis was after each command that has changed it, to go back to and
// to compare.
//
// Two fits of the same points, marked, give their F ratio. Of fits with different numbers of parameters it is
//
//     F = ((S1 - S2) / (m2 - m1)) / (S2 / (n - m2))
//
// with n points, m parameters and sums of squares S, and its probability holds where the smaller model is
// contained in the larger one (N. R. Draper and H. Smith, Applied Regression Analysis (1966), section 2.7).
// Of fits with as many parameters it is the ratio of their sums, the larger one above, which has no such
// probability: both are of the same data.

#include "commands/history/History.h"
#include "platform/Controls.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr const char* HistoryFormName = "HistoryForm"; // of the form, for the seam

struct HistoryFormRecord {
    FormState State;
    Control Head;
    std::vector<std::string> Columns;           // place, time, command, model, rms, degrees of freedom
    std::vector<std::vector<std::string>> Rows; // of History.Steps, in their order; the present one has ">"
    std::vector<std::size_t> Marked;            // rows, from 0, rising
    Control Ratio;                              // of the two that are marked, or why there is none
    Control GoButton, CloseButton;              // the first takes one marked row
};

// The one form of the process.
extern HistoryFormRecord HistoryForm;

// The menu command: fills the form and shows it.
void ShowHistory();

void HistoryFormMark(std::vector<std::size_t> rows); // the rows that are marked from now on
void HistoryFormGo(std::size_t row);                 // a double click: the analysis becomes that of the row
void HistoryFormGoButton();                          // the same with the marked row
void HistoryFormCloseButton();

// The F ratio of two steps in a sentence; of what cannot be compared, why.
std::string FRatioText(const HistoryStep& one, const HistoryStep& other);

} // namespace Quillon
