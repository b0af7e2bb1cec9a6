#pragma once
// Four doubles that are worked on at once: one wide register, or two narrow ones (platform/VectorWidth.h).
// Each operation is that of four doubles by themselves, with the same bits.

#include <cstdint>
#include <cstring>

namespace Quillon {

inline constexpr long VectorLength = 4;

// The numbers, and their bits: sign in bit 63, exponent in 62..52, fraction below (IEEE 754).
using Four [[gnu::vector_size(VectorLength * sizeof(double))]] = double;
using FourBits [[gnu::vector_size(VectorLength * sizeof(double))]] = std::uint64_t;

// Four numbers in a row from a place on, wherever that lies, and back: no place needs to be aligned. All four
// must be there.
[[gnu::always_inline]] inline void Load(Four& four, const double* from) {
    std::memcpy(&four, from, sizeof four);
}
[[gnu::always_inline]] inline void Store(double* to, const Four& four) {
    std::memcpy(to, &four, sizeof four);
}

// Makes each number its absolute value; one that is none stays none.
[[gnu::always_inline]] inline void TakeSign(Four& four) {
    four = (Four)((FourBits)four & ~(std::uint64_t{1} << 63));
}

// Raises the first bit of those places in marks where a number without a sign is infinite or none.
[[gnu::always_inline]] inline void MarkInfinite(FourBits& marks, const Four& four) {
    marks |= (FourBits)four + (std::uint64_t{1} << 52); // carries out of an exponent of nothing but ones
}
// True when the first bit of any of the four places is raised. One question for a whole column of points.
[[gnu::always_inline]] inline bool AnyMark(const FourBits& marks) {
    return ((marks[0] | marks[1] | marks[2] | marks[3]) >> 63) != 0;
}

} // namespace Quillon
