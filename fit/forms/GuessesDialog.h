#pragma once
// The road into the form "Parameter Guesses and Fit Control" and back.

#include "models/forms/DialogAnswer.h"

namespace Quillon {

// Keeps Parms in ParmsSave, shows the form "GetGuess" modally and, when it was cancelled, brings Parms and
// ConvergenceLimit back (ParmsAccuracy stays). With valuesOnly the form edits values and
// nothing else.
DialogAnswer GuessesDialog(bool valuesOnly);

// True while GuessesDialog(true) shows the form; the form reads it while it is loaded.
bool GuessesValuesOnly();

} // namespace Quillon
