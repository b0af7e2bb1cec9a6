#pragma once
// The rules of the data set table that need no window: channels, radii, ranges, constraints of a row.
//
// Rows count from 1 over both pages. A channel is 0 for none, 1..4 for A..D. The centerpiece code is 1 for
// one sample, 3 for a long column cell with three samples, 4 for a short column cell with four.

#include "workspace/records/Counts.h"

#include <string>

namespace Quillon {

// How messages name a row: "Set 3 (00012.RA1)", by the number that the table shows.
std::string RowName(RowNo row);

// Linear search in values(first..last). Reverse runs from last to first. Mode 1 stops at an element at or
// above target, -1 at or below it, 0 at an equal one. result is the subscript; a miss gives -1 in the modes
// 1 and -1, and 0 in mode 0.
void SearchArray(const OneBased<float>& values, long first, long last, float target, long& result,
                 bool reverse, int mode);

// The radii of a channel (1..4) of a row with a multi-sample centerpiece, at the row's rotor speed; cm. The
// cell moves outward by RotorExpansion cm per rpm squared. A row whose centerpiece has no channels, a channel
// outside 1..4 and a speed at which the cell has no place are run-time errors in words.
void ChannelRadiiOf(RowNo row, int channel, float& inner, float& outer);

// The same for any speed in rpm and a centerpiece code. False, and both 0, for a code, a channel or a speed
// that has no radii.
bool ChannelRadiiAt(int code, int channel, float rpm, float& inner, float& outer);

// True when the scan of a row has a point between the radii of a channel (1..4); first and last are then the
// outermost two.
bool PointsOfChannel(RowNo row, int channel, long& first, long& last);

// "the scan has no points in channel A, 5.851 to 6.151 cm", with the radii of the row's centerpiece.
std::string NoPointsInChannel(RowNo row, int channel);

// Narrows the fit range of a row to the points between two radii, which come back as those of the points
// chosen. With channel above 0 the range starts one point inside the first point at or above the inner
// radius; with channel 0 its start and the inner radius are left. It ends at the last point at or below the
// outer radius, and with channel 0 at the scan's last point where all lie above. A range never holds less
// than one point.
//
// False when the scan has no point between the two radii: with a channel nothing is then changed, since the
// whole scan in place of a column would be fitted with meniscus and ribs. On an empty row nothing happens.
bool SetChannelRange(RowNo row, float& inner, float& outer, int channel);

// Gives a row a channel (0 for none, which takes the whole scan) and the range that goes with it; forgets
// the row's fitted parameters. False, and nothing changed, when the scan does not reach the channel; errors
// are those of ChannelRadiiOf, and the row is then unchanged too.
bool SetChannel(RowNo row, int channel);

// What became of the range of a row that got another centerpiece.
enum class ChannelRange { None, Set, NotReached };

// Gives a row a centerpiece code (1, 3, 4; others are stored too). With 3 and 4 the range is set afresh when
// a channel is chosen, and that channel is the one of the same line on page 1, on both pages. Set: inner and
// outer are the radii of the new range. NotReached: the scan has no points there, the range stays.
ChannelRange SetCenterpiece(RowNo row, int code, float& inner, float& outer);

// The channel that decides on the range with another centerpiece.
int ChannelOfCenterpiece(RowNo row);

// Chooses the points from the first at or above inner to the last at or below outer. False, and nothing
// changed, when no point lies between them.
bool SetRadialRange(RowNo row, float inner, float outer);

// Forgets the last fitted parameters of a row: its scan or its channel is another now.
void ForgetSetParms(RowNo row);

// Asks, after a row's scan or baseline was replaced, whether the constraints that rested on it go: ties of
// zero offsets and shared concentrations from or to the row, and its concentration constraints.
void RemoveSetConstraints(RowNo row);

} // namespace Quillon
