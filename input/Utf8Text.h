#pragma once
// 8-bit texts for files that are UTF-8: names come as UTF-8 or as Latin-1, and no byte is lost.

#include <string>
#include <string_view>

namespace Quillon {

// What editors put in front of a text now and then: no part of it.
inline constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

// The length of the well-formed UTF-8 sequence of two to four bytes at a place, 0 if there is none.
std::size_t Utf8SequenceLength(const std::string& bytes, std::size_t at);

// The text as UTF-8: bytes that are none are taken as Latin-1.
std::string Utf8Text(const std::string& bytes);

} // namespace Quillon
