#pragma once
// The fit without questions, for a first look: with the model that stands, guesses that are read off the
// data, and whatever the model fits.

namespace Quillon {

// The fit command as FitDataCommand, with the answers that a first look gives: new guesses wherever they are
// offered, the guesses dialog accepted as it opens, no pause before the iteration. Where no model was chosen
// yet, the one of the settings is. What is told is told, and what the dialog would refuse is shown in it.
void FitAtOnce();

} // namespace Quillon
