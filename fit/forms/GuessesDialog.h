#pragma once
// The road into the form "Parameter Guesses and Fit Control" and back.

#include "fit/equations/FreeMap.h"
#include "models/forms/DialogAnswer.h"

#include <vector>

namespace Quillon {

// Keeps Parms in ParmsSave, shows the form "GetGuess" modally and, when it was cancelled, brings Parms and
// ConvergenceLimit back (ParmsAccuracy stays). With valuesOnly the form edits values and
// nothing else.
DialogAnswer GuessesDialog(bool valuesOnly);

// AssignFreePositions as a command takes it: where nothing is to be fitted, a beep and a message say so.
// False then.
bool TakeFitChoices(const std::vector<FitChoice>& choices);

// True while GuessesDialog(true) shows the form; the form reads it while it is loaded.
bool GuessesValuesOnly();

} // namespace Quillon
