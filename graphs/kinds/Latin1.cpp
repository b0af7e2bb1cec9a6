#include "graphs/kinds/Latin1.h"

#include <cstddef>

namespace Quillon {

namespace {

// The letter at a place, which moves behind it; false when the bytes there are none.
bool TakeLetter(const std::string& text, std::size_t& at, unsigned& letter) {
    const auto byte = [&text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned>(static_cast<unsigned char>(text[i])) : 0U;
    };
    letter = byte(at);
    const std::size_t more = letter < 0x80U ? 0 : letter >= 0xF0U ? 3 : letter >= 0xE0U ? 2 : 1;
    if (more > 0 && (letter < 0xC2U || letter > 0xF4U)) return false;
    if (more > 0) letter &= 0x3FU >> more;
    for (std::size_t i = 1; i <= more; ++i) {
        if ((byte(at + i) & 0xC0U) != 0x80U) return false;
        letter = letter << 6U | (byte(at + i) & 0x3FU);
    }
    at += more + 1;
    return true;
}

} // namespace

std::string Latin1Text(const std::string& text) {
    std::string latin;
    unsigned letter = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (!TakeLetter(text, at, letter)) return text;
        latin += letter <= 0xFFU ? static_cast<char>(letter) : '?';
    }
    return latin;
}

} // namespace Quillon
