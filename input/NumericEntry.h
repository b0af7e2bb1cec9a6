#pragma once
// Numeric entry: which keys the field of a form takes, and what stands in it when it is left.

#include "platform/Controls.h"
#include "platform/Narrow.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Quillon {

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
