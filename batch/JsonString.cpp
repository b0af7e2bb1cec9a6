#include "batch/JsonString.h"

#include <cstdint>

namespace Quillon {

namespace {

bool Continues(unsigned char c) {
    return (c & 0xC0) == 0x80;
}

// The length of the well-formed UTF-8 sequence of two to four bytes at a place, 0 if there is none.
std::size_t SequenceLength(const std::string& bytes, std::size_t at) {
    const auto byte = [&](std::size_t i) {
        return static_cast<unsigned char>(at + i < bytes.size() ? bytes[at + i] : 0);
    };
    const unsigned char first = byte(0);
    const unsigned char second = byte(1);
    if (!Continues(second)) return 0;
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) {
        const bool overlong = first == 0xE0 && second < 0xA0;
        const bool surrogate = first == 0xED && second > 0x9F;
        return !overlong && !surrogate && Continues(byte(2)) ? 3 : 0;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        const bool overlong = first == 0xF0 && second < 0x90;
        const bool beyond = first == 0xF4 && second > 0x8F;
        return !overlong && !beyond && Continues(byte(2)) && Continues(byte(3)) ? 4 : 0;
    }
    return 0;
}

std::string Escaped(unsigned char code) {
    const char* const digits = "0123456789abcdef";
    return {'\\', 'u', '0', '0', digits[code >> 4], digits[code & 15]};
}

} // namespace

std::string JsonString(const std::string& bytes) {
    std::string text = "\"";
    for (std::size_t i = 0; i < bytes.size();) {
        const auto code = static_cast<unsigned char>(bytes[i]);
        const std::size_t length = code < 0x80 ? 1 : SequenceLength(bytes, i);
        if (code == '"' || code == '\\')
            text += {'\\', bytes[i]};
        else if (length == 0 || code < 0x20 || code == 0x7F)
            text += Escaped(code);
        else
            text.append(bytes, i, length);
        i += length == 0 ? 1 : length;
    }
    return text + "\"";
}

} // namespace Quillon
