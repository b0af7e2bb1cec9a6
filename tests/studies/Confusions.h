#pragma once
// How often a comparison gives the model that has made the data the largest weight: experiments simulated
// from each of six models, compared among all six. Shared by the test, which draws a few, and by the program
// that makes the whole table.

#include <array>
#include <cstddef>
#include <cstdint>

namespace Quillon {

// The models, each the truth in turn.
inline constexpr std::array<std::int16_t, 6> ModelsToTell{1, 2, 4, 7, 8, 9};

struct Confusions {
    // [truth][chosen], places of ModelsToTell.
    std::array<std::array<int, ModelsToTell.size()>, ModelsToTell.size()> Chosen{};
    std::array<int, ModelsToTell.size()> None{}; // draws in which no model reached a minimum, by truth
    // Of each truth: draws in which another model was chosen, and the truth lies within two units of its
    // AICc, so that the weights leave the question open; draws in which BIC is lowest for the truth.
    std::array<int, ModelsToTell.size()> Open{}, RightByBic{};

    int Draws(std::size_t truth) const;
    int Right() const;
    int All() const;
};

// So many draws of each truth, with noise of 0.005 on six scans at three speeds. Masses are held, as they are
// for a protein whose sequence is known; constants, concentrations and zero offsets are fitted. Work is left
// as the last one; Host.RunPieces has to be filled.
Confusions TellModelsApart(int draws, std::uint64_t seed);

} // namespace Quillon
