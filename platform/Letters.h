#pragma once
// Letters and blanks of a text, the same in every locale: the letters of ASCII have two cases, every other
// byte stays as it is.

#include <algorithm>
#include <string>
#include <string_view>

namespace Quillon {

constexpr char SmallLetter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr char CapitalLetter(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

inline std::string SmallLetters(std::string_view text) {
    std::string small(text);
    std::transform(small.begin(), small.end(), small.begin(), SmallLetter);
    return small;
}
inline std::string CapitalLetters(std::string_view text) {
    std::string capitals(text);
    std::transform(capitals.begin(), capitals.end(), capitals.begin(), CapitalLetter);
    return capitals;
}

// True when two texts differ in nothing but the case of letters.
inline bool SameLetters(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return SmallLetter(x) == SmallLetter(y); });
}
inline bool EndsWithLetters(std::string_view text, std::string_view ending) {
    return text.size() >= ending.size() && SameLetters(text.substr(text.size() - ending.size()), ending);
}

// A text without the blanks at its ends; blanks lists what counts as one.
inline std::string_view Trimmed(std::string_view text, std::string_view blanks = " \t") {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace Quillon
