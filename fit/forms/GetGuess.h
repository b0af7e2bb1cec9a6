#pragma once
// The form "Parameter Guesses and Fit Control" as data: every parameter of the model in user units, which of
// them are fitted, and the two convergence inputs. Rows count from 0.

#include "fit/forms/RowLayout.h"
#include "models/forms/DialogAnswer.h"
#include "platform/Controls.h"
#include "workspace/records/Counts.h"

#include <vector>

namespace Quillon {

inline constexpr const char* GetGuessName = "GetGuess"; // of the form, for the seam

struct GetGuessForm {
    FormState State;
    std::vector<SlotNo> GuessRows; // slot of each row
    std::vector<Control> ParameterName, Guess, FitCheck;
    std::vector<Control> Estimate; // a button beside each mass, not visible in other rows
    Control Note;                  // what the latest estimate has found, set by set
    Control frmConvControl;        // the frame "Convergence Control"
    Control ConvergenceLabel, ConvergenceInput, AccuracyLabel, AccuracyInput;
    Control ParameterHead, ValueHead, FitHead;
    Control OkButton, CancelButton, Page2;
    DialogAnswer Answer = DialogAnswer::Ok;
    RowLayout Layout;
    int Page = 0; // shown: 0 or 1
};
extern GetGuessForm GetGuess;

// True when a value of a slot, in user units, lies within its bounds or the user wants it nevertheless.
bool AcceptAgainstBounds(SlotNo slot, float v);

// Fills the form for the present parameters; reduced to values under GuessesDialog(true).
void LoadGetGuess();

// The mark "Fit this parameter?" of a row was clicked; its Value is already the new one.
void GetGuessFitCheck(int row);

// The button beside a mass: the apparent mass that the data show (fit/forms/MassEstimate.h) becomes its
// value, asked about where it lies outside the bounds, and those of all sets are told.
void GetGuessEstimate(int row);

// A value field. KeyPress gives the key that is taken, 0 for none; Esc asks for an undo, Enter and Tab lead
// on.
void GetGuessGotFocus(int row);
int GetGuessKeyPress(int row, int key);
void GetGuessLostFocus(int row);

// The convergence inputs.
void GetGuessConvergenceGotFocus();
int GetGuessConvergenceKeyPress(int key);
void GetGuessConvergenceLostFocus();
void GetGuessAccuracyGotFocus();
int GetGuessAccuracyKeyPress(int key);
void GetGuessAccuracyLostFocus();

void GetGuessOkButton(); // refuses when nothing is to be fitted
void GetGuessCancelButton();
void GetGuessPage2();

} // namespace Quillon
