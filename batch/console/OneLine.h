#pragma once
// Texts from outside made fit to stand in one line of a message.

#include <string>
#include <string_view>

namespace Quillon {

// text with each run of control characters as one blank.
std::string OneLine(std::string_view text);

// The text of a message box as one line: what stands in a paragraph of its own follows behind a colon, in
// place of the full stop before it.
std::string MessageLine(std::string_view text);

// One line in single quotes, cut with "..." behind 60 characters.
std::string Quoted(std::string_view text);

// "PATH: REASON" as one line of a RuntimeError.
[[noreturn]] void FailFile(const std::string& path, const std::string& reason);

} // namespace Quillon
