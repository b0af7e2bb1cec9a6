#include "input/Utf8Text.h"

namespace Quillon {

namespace {

bool Continues(unsigned char c) {
    return (c & 0xC0) == 0x80;
}

} // namespace

std::size_t Utf8SequenceLength(const std::string& bytes, std::size_t at) {
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

std::string Utf8Text(const std::string& bytes) {
    std::string text;
    for (std::size_t i = 0; i < bytes.size();) {
        const auto code = static_cast<unsigned char>(bytes[i]);
        const std::size_t length = code < 0x80 ? 1 : Utf8SequenceLength(bytes, i);
        if (length > 0) {
            text.append(bytes, i, length);
            i += length;
            continue;
        }
        text += {static_cast<char>(0xC0 | (code >> 6)), static_cast<char>(0x80 | (code & 0x3F))};
        ++i;
    }
    return text;
}

} // namespace Quillon
