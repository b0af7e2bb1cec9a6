#pragma once
// The form "Search for Other Minima" as data: how many starts, the minima that they come to, and which of
// them is taken. The user's own fit stays as it is until one is.

#include "platform/Controls.h"

#include <string>
#include <vector>

namespace Quillon {

inline constexpr const char* MinimaFormName = "MinimaForm"; // of the form, for the seam

struct MinimaFormRecord {
    FormState State;
    Control Head; // what a search does
    Control CountLabel, CountInput;
    Control SeedLabel, SeedInput;
    Control SearchButton, StopButton; // one of them is enabled
    double Fraction = 0.0;            // of the fits that have ended
    Control Progress;                 // "3 of 7 fits", then what was found
    std::vector<std::string> Columns; // of the table: sum, rms, times met, a remark, fitted parameters
    std::vector<std::vector<std::string>> Rows; // by rising sum of squares
    int Chosen = -1;                            // the row that is marked
    Control TakeButton, CloseButton;
    bool Taken = false; // the form was left by taking a minimum that is not the user's own
};

// The one form of the process.
extern MinimaFormRecord MinimaForm;

// Fills the form for the analysis that stands, with six starts and the seed 1. CanRestart has to hold.
void LoadMinimaForm();

// The two whole numbers. A count outside 1..LargestRestarts is told and takes the focus back.
enum class MinimaInput { Count, Seed };
Control& MinimaFormBox(MinimaInput input);
void MinimaFormGotFocus(MinimaInput input);
int MinimaFormKeyPress(MinimaInput input, int key);
void MinimaFormLostFocus(MinimaInput input);

// Searches and fills the table, serving events meanwhile; StopButton ends it, and the table then holds what
// there is.
void MinimaFormSearchButton();
void MinimaFormStopButton();

void MinimaFormRow(int row);  // marks a row, from 0
void MinimaFormTakeButton();  // the marked minimum becomes the fit, and the form closes
void MinimaFormCloseButton(); // closes; while a search runs, stops it

} // namespace Quillon
