#pragma once
// Saving the settings: questions in a fixed order, each of which stands alone.

namespace Quillon {

// Writes whether a fit that is no minimum is always searched on with damped steps (Work.RescueMode): the user
// has just said so, in a box or in the menu. A failure to write is told.
void SaveAlwaysRescue();

// Writes the scale of temperatures that sigma follows (Work.TemperatureScale), which the user has just chosen
// in the menu. A failure to write is told.
void SaveTemperatureScale();

// The questions about the settings of the fit. Each answer is written at once; a failure to write is told
// and ends the questions. False when the user has had enough of questions: none is to follow.
bool SaveFitDefaults();

// The questions about the settings of the program, in the same way.
bool SaveProgramDefaults();

} // namespace Quillon
