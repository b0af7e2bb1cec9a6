#pragma once
// Whether arrays are still those that something was calculated from, without a copy of them.
//
// Words of 64 bits go in turn into four numbers, each by h := rotl(h xor word, 29) * m with an odd m. Both
// steps can be undone, so that two runs of words that differ in one of them always end apart; of others one
// pair in 2^64 ends alike by chance. No defence against anybody who looks for such a pair.

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
        const auto* const bytes = reinterpret_cast<const char*>(array.Data());
        const std::size_t size = sizeof(*array.Data()) * array.Size();
        Words lanes = Lanes; // in registers: a step takes as long as its multiplications
        std::size_t place = 0;
        for (; place + sizeof lanes <= size; place += sizeof lanes) {
            Words words;
            std::memcpy(&words, bytes + place, sizeof words);
            AddWords(lanes, words);
        }
        if (place < size) {
            Words words{};
            std::memcpy(&words, bytes + place, size - place);
            AddWords(lanes, words);
        }
        AddWords(lanes, {size, 0, 0, 0});
        Lanes = lanes;
    }
    void Add(long number) { AddWords(Lanes, {static_cast<std::uint64_t>(number), 0, 0, 0}); }

    bool operator==(const Fingerprint&) const = default;

private:
    using Words = std::array<std::uint64_t, 4>;

    static void AddWords(Words& lanes, const Words& words) {
        constexpr std::uint64_t Multiplier = 0x9E3779B97F4A7C15; // 2^64 over the golden ratio, which is odd
        for (std::size_t lane = 0; lane < lanes.size(); ++lane)
            lanes[lane] = std::rotl(lanes[lane] ^ words[lane], 29) * Multiplier;
    }

    Words Lanes{1, 2, 3, 4};
};

} // namespace Quillon
