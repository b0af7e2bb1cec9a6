#include "graphs/kinds/Latin1.h"

#include "platform/Letters.h"

#include <array>
#include <cstddef>
#include <string_view>

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

// Letters that Latin-1 does not have, by what is read for them.

// U+0100 to U+017F, Latin letters of Central and Eastern Europe: the letter without its mark.
constexpr std::string_view WithoutMarks = "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIi"
                                          "IiIiJjKkkLlLlLlLlLlNnNnNnnNnOoOoOoOoRrRrRrSsSsSs"
                                          "SsTtTtTtUuUuUuUuUuUuWwYyYZzZzZzs";
static_assert(WithoutMarks.size() == 0x80);

// U+03B1 to U+03C9, and the capitals 0x20 before them.
constexpr std::array<std::string_view, 25> Greek{
    "alpha", "beta",   "gamma",   "delta", "epsilon", "zeta",    "eta",  "theta", "iota",
    "kappa", "lambda", "mu",      "nu",    "xi",      "omicron", "pi",   "rho",   "sigma",
    "sigma", "tau",    "upsilon", "phi",   "chi",     "psi",     "omega"};

std::string GreekName(unsigned letter) {
    const bool capital = letter < 0x3B1U;
    std::string name(Greek[letter - (capital ? 0x391U : 0x3B1U)]);
    if (capital) name[0] = CapitalLetter(name[0]);
    return name;
}

bool IsGreek(unsigned letter) {
    return (letter >= 0x391U && letter <= 0x3A9U && letter != 0x3A2U) ||
           (letter >= 0x3B1U && letter <= 0x3C9U);
}

// Hyphens, dashes and quotation marks of text programs.
std::string SignOf(unsigned letter) {
    if (letter >= 0x2010U && letter <= 0x2015U) return "-";
    if (letter == 0x2018U || letter == 0x2019U) return "'";
    if (letter == 0x201CU || letter == 0x201DU) return "\"";
    return "?";
}

std::string ReadFor(unsigned letter) {
    if (letter <= 0xFFU) return {static_cast<char>(letter)};
    if (letter <= 0x17FU) return {WithoutMarks[letter - 0x100U]};
    if (letter >= 0x300U && letter <= 0x36FU) return ""; // a mark that stands behind its letter
    return IsGreek(letter) ? GreekName(letter) : SignOf(letter);
}

} // namespace

std::string Latin1Text(const std::string& text) {
    std::string latin;
    unsigned letter = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (!TakeLetter(text, at, letter)) return text;
        latin += ReadFor(letter);
    }
    return latin;
}

} // namespace Quillon
