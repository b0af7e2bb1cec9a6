#pragma once
// A text box of a form that holds a number: what its keys do, and what its leaving means.

#include "platform/Controls.h"

#include <string>

namespace Quillon {

// A key typed into the box: answers the one that is taken, 0 for none. Esc takes the entry back, which the
// leaving of the box carries out.
int NumberBoxKey(Control& box, int key);

// The same for a box that takes a whole number.
int WholeNumberBoxKey(Control& box, int key);

enum class BoxLeft {
    Undone,    // Esc was pressed: the text is that of the stored value again, the event is at its end
    Unaltered, // the text is still that of the stored value, which may have more digits than are shown
    Altered    // the text holds a new value
};

// The box is left. storedText is the stored value as the box shows it.
BoxLeft LeaveNumberBox(Control& box, const std::string& storedText);

// True from Esc in the box that has the focus until it is left. There is one focus, so there is one such
// state.
bool EntryIsTakenBack();

// Ends that state and answers what it was: for a button that comes before the box is left, and for a form
// that begins or ends.
bool ForgetTakenBack();

} // namespace Quillon
