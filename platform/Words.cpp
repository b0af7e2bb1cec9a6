#include "platform/Words.h"

namespace Quillon {

std::string Counted(long count, const std::string& one, const std::string& several) {
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

std::string Counted(long count, const std::string& what) {
    return Counted(count, what, what + "s");
}

std::string Joined(const std::vector<std::string>& sentences) {
    std::string text;
    for (const std::string& sentence : sentences)
        text += (text.empty() ? "" : " ") + sentence;
    return text;
}

std::string ClockDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

} // namespace Quillon
