#pragma once
// The form "Before the Fit" as data: what the data cannot determine, in one list, before anything is fitted.
// Parameters that no point depends on stand in front, marked to be held; where there are no more points than
// fitted parameters, all others stand behind them.

#include "platform/Controls.h"
#include "workspace/records/Counts.h"

#include <vector>

namespace Quillon {

inline constexpr const char* HoldFormName = "HoldForm"; // of the form, for the seam

enum class HoldAnswer {
    FitAsChosen, // goes on with what was chosen in the guesses
    HoldAndFit,  // the marked ones have been held at the values that they have
    Cancel       // no fit
};

struct HoldFormRecord {
    FormState State;
    Control Note; // "40 points, 42 fitted parameters: hold at least 3.", and what no point depends on
    std::vector<Control> HoldCheck; // one for each parameter of the list, Value 1 to hold it
    std::vector<SlotNo> Slots;      // of these
    Control HoldButton, FitButton, CancelButton;
    HoldAnswer Answer = HoldAnswer::FitAsChosen; // until a button says another thing
};
extern HoldFormRecord HoldForm;

// What stands before a fit: with nothing to be said FitAsChosen at once, otherwise the form, shown modally.
// Parms, scales, FreeMap and FreeIndex are those of the fit, and with HoldAndFit the last two are without
// what is held.
HoldAnswer HoldDialog();

// Fills the form for the fit that is about to run; false where there is nothing to be said.
bool LoadHoldForm();

void HoldFormCheck(int row); // a box has been clicked: the button says what would be done
void HoldFormHoldButton();   // holds the marked ones and closes; holding all of them is told, and stays
void HoldFormFitButton();
void HoldFormCancelButton();

} // namespace Quillon
