#pragma once
// By what a graph knows that the analysis which it shows has changed.

#include <cstdint>
#include <cstring>
#include <string>

namespace Quillon {

// A number that changes with everything that goes in (FNV-1a, by words of 32 bits).
class Digest {
public:
    void Add(std::uint32_t word) { Value = (Value ^ word) * 1099511628211U; }
    void Add(std::int16_t word) { Add(static_cast<std::uint32_t>(word)); }
    void Add(float value) {
        std::uint32_t word = 0;
        std::memcpy(&word, &value, sizeof word);
        Add(word);
    }
    void Add(const std::string& text) {
        for (const char c : text)
            Add(static_cast<std::uint32_t>(static_cast<unsigned char>(c)));
        Add(static_cast<std::uint32_t>(text.size()));
    }
    template <class List> void AddAll(const List& list) {
        for (const auto& one : list)
            Add(one);
    }
    std::uint64_t Value = 14695981039346656037U;
};

// Of what graphs show: the sets by name, channel and speed, their points, and of a fit that stands its
// curves, model and parameters.
std::uint64_t DigestOfAnalysis();

} // namespace Quillon
