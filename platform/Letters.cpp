#include "platform/Letters.h"

#include <algorithm>

namespace Quillon {

std::string SmallLetters(std::string_view text) {
    std::string small(text);
    std::transform(small.begin(), small.end(), small.begin(), SmallLetter);
    return small;
}

std::string CapitalLetters(std::string_view text) {
    std::string capitals(text);
    std::transform(capitals.begin(), capitals.end(), capitals.begin(), CapitalLetter);
    return capitals;
}

bool SameLetters(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return SmallLetter(x) == SmallLetter(y); });
}

bool EndsWithLetters(std::string_view text, std::string_view ending) {
    return text.size() >= ending.size() && SameLetters(text.substr(text.size() - ending.size()), ending);
}

std::string_view Trimmed(std::string_view text, std::string_view blanks) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string_view> PartsBetween(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

} // namespace Quillon
