#pragma once
// A generator of uniform numbers for whatever has to come out alike in every run and on every machine:
// SplitMix64 (G. Steele, D. Lea and C. Flood, OOPSLA 2014). Seeds that differ in one bit give numbers that
// have nothing in common.

#include <cstdint>

namespace Quillon {

// The whole state is one number: a copy goes on by itself, with the same numbers as its original.
struct SplitMix {
    std::uint64_t State = 0;

    // The generator of a seed, from 0.
    static constexpr SplitMix FromSeed(std::uint64_t seed) { return {seed * 0xD1342543DE82EF95U}; }

    // The next uniform number on [0, 1): 24 bits, so that it stays below 1 in single precision.
    constexpr float Uniform() {
        State += 0x9E3779B97F4A7C15U;
        std::uint64_t z = State;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
        z ^= z >> 31;
        return static_cast<float>(z >> 40) * 0x1p-24F;
    }
};

} // namespace Quillon
