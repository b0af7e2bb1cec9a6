#pragma once
// Whether arrays are still those that something was calculated from, without a copy of them.
//
// Words of 64 bits go in turn into four numbers, each by h := rotl(h xor word, 29) * m with an odd m. Both
// steps can be undone, so that two runs of words that differ in one of them always end apart; of others one
// pair in 2^64 ends alike by chance. No defence against anybody who looks for such a pair.

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Quillon {

class Fingerprint {
public:
    // Adds the elements of an array of plain numbers (Data(), Size()), and how many there are.
    template <class Array> void Add(const Array& array) {
        const std::size_t bytes = sizeof(*array.Data()) * array.Size();
        AddWord(0, bytes);
        for (std::size_t place = 0; place < bytes; place += sizeof(Words)) {
            Words words{};
            std::memcpy(words.data(), reinterpret_cast<const char*>(array.Data()) + place,
                        std::min(sizeof words, bytes - place));
            for (std::size_t lane = 0; lane < words.size(); ++lane)
                AddWord(lane, words[lane]);
        }
    }
    void Add(long number) { AddWord(0, static_cast<std::uint64_t>(number)); }

    bool operator==(const Fingerprint&) const = default;

private:
    using Words = std::array<std::uint64_t, 4>;

    void AddWord(std::size_t lane, std::uint64_t word) {
        constexpr std::uint64_t Multiplier = 0x9E3779B97F4A7C15; // 2^64 over the golden ratio, which is odd
        Lanes[lane] = std::rotl(Lanes[lane] ^ word, 29) * Multiplier;
    }

    Words Lanes{1, 2, 3, 4};
};

} // namespace Quillon
