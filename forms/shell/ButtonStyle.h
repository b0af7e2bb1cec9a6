#pragma once
// How the toolkit's own boxes look beside the forms.

namespace Quillon {

// From now on buttons of message boxes, questions and file dialogs are words alone, as those of the forms
// are, whatever the desktop's style has them do.
void ShowButtonsAsWords();

} // namespace Quillon
