#pragma once
// Names for screen readers.

class QWidget;

namespace Quillon {

// Gives each control of a window that has no text of its own (fields, lists, tables) the name that an eye
// gives it: the label to its left, or else the one above; in a table of fields both. A control that has a
// name or whose label is bound to it keeps that.
void NameForReaders(QWidget& window);

} // namespace Quillon
