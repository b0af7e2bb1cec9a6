#pragma once
// Texts from outside made fit to stand in one line of a message.

#include <string>
#include <string_view>

namespace Quillon {

// text with each run of control characters as one blank.
std::string OneLine(std::string_view text);

// The same in single quotes, cut with "..." behind 60 characters.
std::string Quoted(std::string_view text);

} // namespace Quillon
