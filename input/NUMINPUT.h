#pragma once
// Numbers as text and back: the rules of numeric entry that all forms share, the number pictures that all
// displays use, and the reading of numbers from files. Every number that a user types or sees passes here, so
// that a field refuses the same keys and a value looks the same wherever it stands.
//
//     Numeric entry   NumGotFocus, NumKeyPress, NumLostFocus, IntKeyPress, TextKeyPress work on a text box
//                     (a Control) and answer for each key what becomes of it; NumValue reads what stands.
//     Number pictures FormatNumber(value, "#.######E+##"); SingleText and DoubleText without a picture.
//     Files           NumericPrefix: the longest part of a text that is a number.
//
// The decimal mark is "." in files and in everything that is written here. Only numeric entry asks for the
// system's mark: the key of the other one is refused, and a text with either is understood.

#include "platform/Controls.h"
#include "platform/Narrow.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Quillon {

// --- files ---------------------------------------------------------------------------------------------

// The value of the longest numeric prefix: leading blanks and tabs skipped, an optional sign, digits with at
// most one point, an optional exponent of "E" or "D" in either case with an optional sign ("1E" is 1). 0
// where there is no number. Rounded correctly to double, whatever the locale; below its range 0, beyond it
// the run-time error "Overflow". used, when given, receives the number of characters that belong to the
// prefix, blanks in front included, 0 where there is no number; it is set before the error too.
double NumericPrefix(std::string_view text, std::size_t* used = nullptr);

// --- number pictures -----------------------------------------------------------------------------------

// A number as text after a picture: see docs/number-pictures.md. The decimal mark is always ".". An empty
// picture gives DoubleText. A value that is not finite is the run-time error "Overflow".
std::string FormatNumber(double value, std::string_view picture);

// A number without a picture: up to seven significant digits for a single ("0.05", "16777220"), up to fifteen
// for a double, trailing zeros dropped. Written plainly while the whole part has at most one digit more than
// that and no more decimals are needed than that; otherwise as mantissa and exponent of two digits or more
// ("1.5E+10", "1E-11", "1.234567E-03"). A value that is not finite is the run-time error "Overflow".
std::string SingleText(float value);
std::string DoubleText(double value);

// --- numeric entry -------------------------------------------------------------------------------------

// Keys that pass every field, by character code.
inline constexpr int KeyBackspace = 8;
inline constexpr int KeyTab = 9;
inline constexpr int KeyReturn = 13;
inline constexpr int KeyEscape = 27;

// The colour of the text in the field that is being edited.
inline std::uint32_t EditBackColor = StandardEditColor;

// Flag: a first key has been taken in the field that has the focus. A first key replaces the whole text, a
// later one edits it. There is one focus, so there is one flag.
inline std::int16_t FreshField = FlagFalse;

// The character code of the system's decimal mark: that of "," or ".".
std::int16_t DecimalMark();

// The field gets the focus: its text is selected and marked, and the next key is a first key.
void NumGotFocus(Control& field);

// The field loses the focus: the marking goes, the text has the colour of its form again.
void NumLostFocus(Control& field);

// A character is about to be typed into the field. Answers the character that is taken (exponent letters as
// capitals), 0 for none; the text box then puts it in itself. A first key that is taken empties a field whose
// whole text is selected; one that is not leaves all as it was. Where the rules put text in front of the key
// ("1.0" before an exponent letter, "0" before a decimal mark), the field's text and insertion point are
// changed as well. Beeps for a digit before a sign.
int NumKeyPress(Control& field, int key);

// The same for fields that take a whole number without a sign.
int IntKeyPress(Control& field, int key);

// The same for free text of limited length: with maxLength characters standing beside the selection, any
// further one is refused with a beep and a message under the title programName.
int TextKeyPress(Control& field, int key, long maxLength, const std::string& programName);

// The value of a text as a single; 0 if the text is not a number. Both "." and the system's decimal mark
// are understood. Never fails: a number beyond the range of a single is the largest single of its sign, so
// that a form's own test of the range refuses it.
float NumValue(std::string_view text);

// True when the whole text, blanks at both ends aside, is a number, with "." or the system's decimal mark.
bool IsNumeric(std::string_view text);

// The text without ",", blanks and "%", for fields that are shown in groups of three or in percent
// ("60,000"). Not for fields without them: a decimal comma would go too.
std::string StripSeparators(std::string_view text);

} // namespace Quillon
