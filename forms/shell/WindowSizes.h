#pragma once
// How large windows are: by the font of the desktop, by the user's scaling of all forms, and never larger
// than the screen.

#include <QFont>
#include <QSize>

namespace Quillon {

// Scales the fonts of all windows that are made from now on, and with them the windows: percent of the
// desktop's font, 100 for the font itself.
void ScaleForms(int percent);

// The desktop's font of fixed pitch, scaled likewise.
QFont FixedPitchFont();

// A size that was chosen with a font of usual size, in pixels, for the desktop's font where that is larger,
// and for the scaling of forms.
QSize ForFont(int width, int height);

// From now on every window opens within the screen that it comes up on. In one that needs more width than
// there is, long texts wrap and the buttons at its foot stand in several rows; what is too large even so gets
// scroll bars, and its ways out stay in sight below them.
void KeepWindowsOnScreen();

} // namespace Quillon
