#pragma once
// Fonts: the family table, font codes, and fonts taken into force on the target.

#include "platform/Surface.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr std::int16_t BoldFont = 16; // the bit of a font code
inline constexpr std::int16_t SymbolFamily = 5;

// The face of an entry of the family table: "Roman", "Modern", "Times New Roman", ...
const char* FontFace(int entry);

// The names in a font list box: entry i of the list is the code whose (code and 15) + 6 * (code \ 16) is i.
std::vector<std::string> FontListNames();
int FontListIndex(std::int16_t code);
std::int16_t FontCode(int listIndex);

// A text size, a fraction of the diagonal, limited to what may be read on the target.
float ClampFontSize(float size);

// Takes a font into force on the target's surface and gives the height of a line in it and its descent.
// Direction: 0 horizontal, 1 upward, 2 upside down, 3 downward. The size is clamped.
TextSize SelectFont(std::int16_t code, float size, int direction);

// The width of a text in the font that SelectFont took into force, as PaintText draws it.
int TextWidth(const std::string& text);

// Draws a text in that font and its direction, exponents raised (chart/pens/RaisedText.h); (x, y) is the left
// end of the baseline as the text is read. The Symbol family has other letters at these codes: its texts are
// drawn as they stand.
void PaintText(int x, int y, const std::string& text);

} // namespace Quillon
