#pragma once
// The widths of the base fonts, so that text can be laid out where there is no toolkit to ask.
//
// The tables are the published advance widths of the Helvetica, Times, Courier and Symbol families, and with
// them of every family made to stand in their place (Arial, Times New Roman, Courier New, Liberation,
// Nimbus). There is no kerning.

#include "chart/pens/FontClass.h"
#include "platform/Surface.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace Quillon {

// Advance widths in thousandths of the em of the codes 0x20 to 0x7E and 0xA0 to 0xFF (PrintablePlace in
// chart/SymbolText.h).
using WidthTable = std::array<std::int16_t, 191>;

struct BaseFont {
    FontClass Class;
    bool Bold;
    const char* Face;         // the family's name in files
    const WidthTable* Widths; // null: all letters are 600 wide
    int Ascent, Descent;      // of the tallest and the lowest letter, thousandths of the em
};

// The font of that name. The Symbol family has no bold.
const BaseFont& BaseFontFor(const std::string& face, bool bold);

// The em of a font whose letters take a height, from the top of the tallest to the bottom of the lowest:
// whole device units, as the fonts of toolkits and metafiles are, and at least 1.
int EmOfHeight(const BaseFont& font, int height);

// The width of a text in ems. A control code is as wide as a blank.
double TextEms(const BaseFont& font, const std::string& text);

// How far each letter of a text begins from the begin of the text, in ems.
std::vector<double> LetterPlaces(const BaseFont& font, const std::string& text);

// True for two letters that fonts of the family pull together by tables of pairs of their own ("To", "AV",
// "r,") where a program sets a text by these. The drawing knows of none.
bool IsKernedPair(const BaseFont& font, char left, char right);

// The size of a text at an em and a height, rounded to device units.
TextSize MeasureBaseText(const BaseFont& font, int em, int height, const std::string& text);

} // namespace Quillon
