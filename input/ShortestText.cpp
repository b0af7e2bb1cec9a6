#include "input/ShortestText.h"

#include <charconv>
#include <cmath>

namespace Quillon {

namespace {

template <class T> std::string Shortest(T value) {
    char text[40];
    const auto [end, failure] = std::to_chars(text, text + sizeof text, value);
    return failure == std::errc{} ? std::string(text, end) : std::string();
}

} // namespace

std::string ShortestText(double value) {
    return std::isfinite(value) ? Shortest(value) : "";
}

std::string ShortestText(float value) {
    if (!std::isfinite(value)) return "";
    const std::string text = Shortest(value);
    double read = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), read);
    // Two roundings, to double and then to single, may end beside the value; its own digits never do.
    return static_cast<float>(read) == value ? text : Shortest(static_cast<double>(value));
}

} // namespace Quillon
