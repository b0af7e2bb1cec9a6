#pragma once
// The form of line widths as data, and the small commands on the style of the graph at hand.

#include "platform/Controls.h"

#include <array>

namespace Quillon {

inline constexpr const char* LineWidthFormName = "LineWidthForm"; // of the form, for the seam

// The widths, in the order of the form.
enum WidthPlace : std::size_t { DataWidth, AxesWidth, TicsWidth, SymbolsWidth, WidthCount };

struct LineWidthFormRecord {
    FormState State;
    Control Explanation;                          // the unit, and what a pixel is in it
    std::array<Control, WidthCount> Label, Width; // in twips
    Control OkButton, CancelButton;
};
extern LineWidthFormRecord LineWidthForm;

// The command: shows the form; what it gives holds for the graph at hand, all axes of it, and those that
// follow in this run.
void DoLineWidth();

void LoadLineWidthForm();
void LineWidthGotFocus(WidthPlace place);
int LineWidthKeyPress(WidthPlace place, int key); // Enter presses OK, Escape Cancel
void LineWidthLostFocus(WidthPlace place);        // refuses what is not from 0 to an inch
void LineWidthOkButton();                         // closes, unless a width is refused
void LineWidthCancelButton();

// The command: asks for the size of symbols, a fraction of the diagonal from 0 to LargestSymbolSize.
void ChangeSymbolSize();

// The command: draws the graph again.
void DoRefresh();

} // namespace Quillon
