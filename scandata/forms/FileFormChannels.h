#pragma once
// Centerpieces and channels in the table of data sets, by click, by key and by the menu of a line. A channel
// that the scan does not reach is told and not taken: the range stays.

namespace Quillon {

// Applies a centerpiece code to a line and shows it.
void ApplyCenterpiece(int line, int code);

// Applies a channel (0 for none) to a line and shows it. False when the scan does not reach it: nothing has
// changed then, and nothing is told.
bool ApplyChannel(int line, int channel);

void FileFormChannelClick(int line); // steps to the next channel that the scan reaches

// A to D on the keyboard, 1 to 4; beeps where the line has no such channel.
void FileFormChannelKey(int line, int channel);

// "2", "6" or "8" on the keyboard, as codes.
void FileFormCenterpieceKey(int line, int code);

// A line that has been copied from the one above takes the next channel. False when there is none to take:
// told where the scan does not reach it.
bool StepCopiedChannel(int line);

} // namespace Quillon
