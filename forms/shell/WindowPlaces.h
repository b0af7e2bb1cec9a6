#pragma once
// Windows open again where the user has put them, as large as he has made them. What the user has not moved
// opens as it always did; a place that is no longer on a screen is brought back to one.

class QWidget;

namespace Quillon {

// The start of the program: the places that the latest run has left.
void LoadPlaces();

// A window of a form, by its object name, has just been shown with a place and size of its own choice.
void PlaceWindow(QWidget& window);

// It is about to be hidden.
void NotePlace(QWidget& window);

// The end of the program: the places are written.
void WritePlaces();

} // namespace Quillon
