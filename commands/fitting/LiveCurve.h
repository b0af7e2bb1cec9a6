#pragma once
// While the guesses dialog stands: the model at the values in its fields over the data, at every edit that is
// a number, with the rms; and what each logarithm means, in the tips of its row.
//
// All of it is worked out on a copy: the analysis is what it was after each call, whatever happens in it.

#include "graphs/GraphPair.h"
#include "platform/Controls.h"
#include "platform/Surface.h"

namespace Quillon {

struct LiveCurveRecord {
    GraphPairRecord Pair;  // data with curves, and residuals
    PerSlot<float> Values; // that they belong to, internal
    Control Rms;           // "rms 0.0123 over 420 points", or that there is no curve, and in its tip why
    int Builds = 0;        // how often the graphs were built
};
extern LiveCurveRecord LiveCurve;

// The dialog opens.
void StartLiveCurve();

// Brings curve, rms and tips up to the fields of the guesses dialog. False when no value is another than
// before.
bool FollowGuesses();

// Paints the graphs on a surface, with letters so many units high.
void PaintLiveCurve(const DrawingSurface& surface, int letters);

} // namespace Quillon
