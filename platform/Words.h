#pragma once
// Small parts of sentences.

#include <string>
#include <vector>

namespace Quillon {

// "1 scan", "3 scans", and with a plural of its own "2 minima".
inline std::string Counted(long count, const std::string& one, const std::string& several) {
    return std::to_string(count) + " " + (count == 1 ? one : several);
}
inline std::string Counted(long count, const std::string& what) {
    return Counted(count, what, what + "s");
}

// Sentences one behind the other.
inline std::string Joined(const std::vector<std::string>& sentences) {
    std::string text;
    for (const std::string& sentence : sentences)
        text += (text.empty() ? "" : " ") + sentence;
    return text;
}

// A part of a date or a time: "07".
inline std::string ClockDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

} // namespace Quillon
