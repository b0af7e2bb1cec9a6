#pragma once
// The form that separates data sets, as data: an amount for each set, the same step from each set to the
// next, or a part of the scale as that step.

#include "chart/records/Records.h"
#include "platform/Arrays.h"
#include "platform/Controls.h"

#include <string>

namespace Quillon {

inline constexpr const char* ShiftDataName = "ShiftData"; // of the form, for the seam

// How the amounts come about.
enum class ShiftBy { Variable, Constant, Percent };

// What a form was left with by OK: the next one of the run begins so.
struct ShiftDataChoice {
    ShiftBy By = ShiftBy::Percent;
    std::string Value = "0.00", Percent = "3.00";
};
inline ShiftDataChoice FormerShift;

struct ShiftDataRecord {
    FormState State;
    Control ByVariable, ByConstant, ByPercent;
    Control SetFrame;
    Control SetLabel;
    Control SetNum;     // one row for each set or pair, "1 - 0.00"; Value: the row chosen, from 0
    Control SetName;    // the name of that set in the legend
    Control ValueLabel; // of ValueBox
    Control ValueBox;   // the amount of that set, in the units of the scale
    Control ValueInput, PercentInput;
    Control Note;
    Control TakeBackButton; // open while sets stand shifted
    Control OkButton, CancelButton;
    OneBased<float> Amounts; // the copy of SetShift that ValueBox edits
};
extern ShiftDataRecord ShiftData;

// The commands: show the form for the axes; what it gives is added to what stands.
void SeparateX();
void SeparateY();
void SeparateBoth();

// Fills the form for the axes of Chart.SeparateMode.
void LoadShiftData();

void ShiftDataClick(ShiftBy by);
void ShiftDataSetClick(int row); // what was typed for the former row stays

// The three fields, of which those of the way chosen are open.
void ShiftDataGotFocus(Control& field);
int ShiftDataKeyPress(Control& field, int key); // Enter presses OK, Escape Cancel
void ShiftDataValueLostFocus();                 // the row of the list follows

void ShiftDataOkButton(); // shifts and closes
void ShiftDataCancelButton();
void ShiftDataTakeBackButton(); // all that was added along these axes goes; closes

} // namespace Quillon
