#pragma once
// The kinds of font families, and the kind of a family by its name.

#include "platform/Letters.h"

#include <string>

namespace Quillon {

enum class FontClass { Sans, Serif, Mono, Symbol };

// Without regard to case; what is unknown is Sans. "Roman" and "Modern" are the stroked letters of plotters
// and have the look of Serif and Sans.
inline FontClass ClassOfFace(const std::string& face) {
    const std::string name = SmallLetters(face);
    const auto holds = [&name](const char* part) { return name.find(part) != std::string::npos; };
    if (holds("symbol")) return FontClass::Symbol;
    if (holds("courier") || holds("mono") || holds("consol")) return FontClass::Mono;
    if (holds("sans")) return FontClass::Sans;
    return holds("times") || holds("roman") || holds("serif") ? FontClass::Serif : FontClass::Sans;
}

} // namespace Quillon
