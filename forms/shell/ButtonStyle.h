#pragma once
// How the toolkit's widgets look, whatever the desktop's style has them do.

namespace Quillon {

// From now on buttons of message boxes, questions and file dialogs are words alone, as those of the forms
// are, and whoever works with the keyboard sees where the focus is: the desktop's own styles leave it out on
// the button that Return presses, on tables and texts.
void TakeOwnStyle();

} // namespace Quillon
