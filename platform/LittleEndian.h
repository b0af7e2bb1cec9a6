#pragma once
// Numbers as files keep them: little-endian, in the width of their type, singles and doubles in the formats
// of IEEE 754. The same on a machine of any order, since bits are shifted and never read from memory.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace Quillon {

// The whole number without a sign that has the bits of a number of so many bytes.
namespace Detail {
template <std::size_t Size> struct FileBitsOfSize;
template <> struct FileBitsOfSize<2> { using Type = std::uint16_t; };
template <> struct FileBitsOfSize<4> { using Type = std::uint32_t; };
template <> struct FileBitsOfSize<8> { using Type = std::uint64_t; };
template <class T> using FileBits = typename FileBitsOfSize<sizeof(T)>::Type;
} // namespace Detail

// Puts a number of 2, 4 or 8 bytes behind what bytes holds. Every pattern of bits comes through, those of
// singles that are no number too.
template <class T>
requires std::is_arithmetic_v<T>
void AppendNumber(std::string& bytes, T value) {
    const auto bits = std::bit_cast<Detail::FileBits<T>>(value);
    for (std::size_t i = 0; i < sizeof(T); ++i)
        bytes += static_cast<char>(static_cast<std::uint64_t>(bits) >> (8U * i) & 0xFFU);
}

// The number whose first byte stands at `at`, from 0. Its sizeof(T) bytes must be there, which whoever reads
// a file that may end early has made sure of.
template <class T>
requires std::is_arithmetic_v<T> T NumberAt(std::string_view bytes, std::size_t at) {
    std::uint64_t bits = 0;
    for (std::size_t i = sizeof(T); i-- > 0;)
        bits = bits << 8U | static_cast<unsigned char>(bytes[at + i]);
    return std::bit_cast<T>(static_cast<Detail::FileBits<T>>(bits));
}

} // namespace Quillon
