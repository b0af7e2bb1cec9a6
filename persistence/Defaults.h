#pragma once
// The program's defaults: what the ini file holds of the settings that outlive an analysis. They are read at
// the start; they are written only when the user says so, one question for each setting.

namespace Quillon {

// The settings of the fit, section "gnllsq", into Work. A key that is missing gives its standing default. A
// value that cannot be taken (a number beyond its width) is told once, with what was read so far in force.
void ReadFitDefaults();

// The settings of the program, its own section, into Work, in the same way.
void ReadProgramDefaults();

// Says that the settings could not all be taken from the file.
void TellReadFailure();

// Writes whether a fit that is no minimum is always searched on with damped steps (Work.RescueMode): the user
// has just said so, in a box or in the menu. A failure to write is told.
void SaveAlwaysRescue();

// The questions about the settings of the fit. Each answer is written at once; a failure to write is told
// and ends the questions. False when the user has had enough of questions: none is to follow.
bool SaveFitDefaults();

// The questions about the settings of the program, in the same way.
bool SaveProgramDefaults();

} // namespace Quillon
