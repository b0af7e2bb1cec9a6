#pragma once
// The fields of the axis form: from the axis in hand to their texts, and back. A text that was not touched
// leaves its value as it is, to the last bit.

#include "chart/records/Records.h"
#include "platform/Controls.h"

namespace Quillon {

// The title of what the axis form tells and asks.
inline constexpr const char* MessageTitle = "Charts Module";

// Shows EditAxis in all controls.
void ShowAxis();

// The options alone, after a click that was refused.
void ShowAxisOptions();

// Takes a field of a number into EditAxis. False when it was refused: the reason is told, and the focus goes
// back to it.
bool TakeAxisField(Control& field);

// All fields, lists and the title; false when one was refused.
bool TakeAxis();

} // namespace Quillon
