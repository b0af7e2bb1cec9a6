#pragma once
// Letters and blanks of a text, the same in every locale: the letters of ASCII have two cases, every other
// byte stays as it is.

#include <string>
#include <string_view>
#include <vector>

namespace Quillon {

// A letter in the case asked for; any other byte, those of letters beyond ASCII too, as it is.
constexpr char SmallLetter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr char CapitalLetter(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// A text with all its letters in the case asked for, byte by byte: its length stays.
std::string SmallLetters(std::string_view text);
std::string CapitalLetters(std::string_view text);

// True when two texts differ in nothing but the case of letters: names of files and of keys are compared so.
bool SameLetters(std::string_view a, std::string_view b);
// True when a text ends in another one but for the case of letters; every text ends in "".
bool EndsWithLetters(std::string_view text, std::string_view ending);

// A text without the blanks at its ends, as a view into it; blanks lists what counts as one. "" where there
// is nothing else.
std::string_view Trimmed(std::string_view text, std::string_view blanks = " \t");

// The parts of a text between separators, as views into it, blanks and all; a text without a separator is one
// part, "" as well, and one behind the last separator counts.
std::vector<std::string_view> PartsBetween(std::string_view text, char separator);

} // namespace Quillon
