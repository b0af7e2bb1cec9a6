#pragma once
// What sets are drawn with: colours, line widths, pens and brushes for the target.

#include "chart/records/Colors.h"
#include "chart/records/Records.h"
#include "chart/records/SetLooks.h"

namespace Quillon {

// True where odd-numbered sets are symbols and even-numbered ones lines.
bool Alternating();

// A colour on the picture box while Kept.DarkCanvas is on: the tint of a safe one; of others lightness is
// turned round, from 255 down to the 30 of the ground, and raised to a line of contrast 3 : 1 on that.
Rgb OnDarkCanvas(Rgb color);

// The ground of the picture box, where the graph has no box of its own.
Rgb CanvasColor();

// A colour on the target: without colours white stays white and everything else is black.
Rgb TargetColor(ChartColor color);

// The colour of a cycle index; any index, taken round the cycle.
Rgb CycleColor(int index);

// The background of a box. Paper is left white on a target without colours.
Rgb BoxColor(const GraphBox& box);

// A place in the cycle arrays for any index.
std::size_t CyclePlace(int index);

// The cycle index of a set, counted from 1: that of its number in SetFlags, or its own.
int SetIndex(int set);

// The number of a set in SetFlags; 0 where it goes by its own.
int NumberOfSet(int set);

// The look that the caller gave a set, or an entry of the legend behind the last set; nullptr where sets go
// by their numbers.
const SetLook* LookOf(int set);

// True when looks ask for more dash styles than there are: then a few symbols along each line, one kind for
// each place in the cycle of dashes, tell those apart whose dashes are alike.
bool DashesRunOut();

// The colour of a set: of the cycle, or of the gradient while UseRainbowColors is on.
Rgb SetColor(int set);

// A width in twips as device units: at least the least width that shows on the target, 0 on a plotter.
int PenWidth(float twips);

// The width of the data lines of a cycle index, in device units: LineWidth of the GraphSpec, or varied by
// fives.
int SetLineWidth(int index);

// Takes the pen of a set into force, with its dash style. Its pattern begins anew.
void SelectSetPen(int set);

// Takes a solid pen into force.
void SelectPen(Rgb color, int width);

// Takes a pen into force by a cycle index, with width in twips and the dash style of that index. exclusive:
// what it draws is combined with what is there by exclusive or.
void SelectCyclePen(int index, float twips, bool exclusive = false);

// Takes a brush into force: pattern 0 solid, 1 to 6 the hatches.
void SelectPattern(std::int16_t pattern, Rgb color);

// No pen, so that what follows is filled without an outline; and no brush.
void SelectNoPen();
void SelectNoBrush();

} // namespace Quillon
