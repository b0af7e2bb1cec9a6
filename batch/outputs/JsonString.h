#pragma once
// Texts of the program as JSON.

#include <string>

namespace Quillon {

// A JSON string with its quotes: bytes that are no UTF-8 are taken as Latin-1.
std::string JsonString(const std::string& bytes);

} // namespace Quillon
