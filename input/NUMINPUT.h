#pragma once
// Numbers as text and back: the rules of numeric entry that all forms share, the number pictures that all
// displays use, and the reading of numbers from files.
//
//     Numeric entry   NumGotFocus, NumKeyPress, NumLostFocus, IntKeyPress, TextKeyPress work on a text box
//                     (a Control) and answer for each key what becomes of it; NumValue reads what stands.
//     Number pictures FormatNumber(value, "#.######E+##") and SingleText for a single without a picture.
//     Files           NumericPrefix: the longest part of a text that is a number.

#include "platform/Controls.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Quillon {

// --- files ---------------------------------------------------------------------------------------------

// The value of the longest numeric prefix: leading blanks skipped, an optional sign, digits with at most one
// point, an optional exponent of "E" or "D" in either case with an optional sign. 0 where there is no number.
// used, when given, receives the number of characters that belong to the prefix, blanks included. A number
// beyond the range of a double is the run-time error "Overflow".
double NumericPrefix(std::string_view text, std::size_t* used = nullptr);

// --- number pictures -----------------------------------------------------------------------------------

// A number as text after a picture: see docs/number-pictures.md. The decimal mark is always ".".
std::string FormatNumber(double value, std::string_view picture);

// A single without a picture: up to seven significant digits, "0.05", "1E-11".
std::string SingleText(float value);

// --- numeric entry -------------------------------------------------------------------------------------

// Keys that pass every field, by character code.
inline constexpr int KeyBackspace = 8;
inline constexpr int KeyTab = 9;
inline constexpr int KeyReturn = 13;
inline constexpr int KeyEscape = 27;

// The field gets the focus: its text is selected and marked.
void NumGotFocus(Control& field);

// The field loses the focus: the marking goes.
void NumLostFocus(Control& field);

// A character is about to be typed into the field. Answers the character that is taken, 0 for none. Where
// the rules put text in front of it ("1.0" before an exponent letter, "0" before a decimal mark), the
// field's text and insertion point are changed first.
int NumKeyPress(Control& field, int key);

// The same for fields that take a whole number, and for free text of limited length.
int IntKeyPress(Control& field, int key);
int TextKeyPress(Control& field, int key, long maxLength, const std::string& programName);

// The value of a text as a single; 0 if the text is not a number. Both "." and the system's decimal mark
// are understood.
float NumValue(std::string_view text);

// True when the whole text, blanks at both ends aside, is a number.
bool IsNumeric(std::string_view text);

// The text without ",", blanks and "%".
std::string StripSeparators(std::string_view text);

} // namespace Quillon
