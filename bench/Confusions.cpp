// The table of docs/studies.md: which model a comparison gives the largest weight, by the model that has made
// the data.
//
//     confusions [--draws N] [--seed N]
#include "tests/studies/Confusions.h"

#include "files/RunPieces.h"
#include "platform/QuietPlatform.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace Quillon {
namespace {

void PrintTable(const Confusions& confusions) {
    std::printf("| truth |");
    for (const std::int16_t model : ModelsToTell)
        std::printf(" %d |", model);
    std::printf(" none | right | open | by BIC |\n|---|");
    for (std::size_t i = 0; i < ModelsToTell.size() + 4; ++i)
        std::printf("---|");
    std::printf("\n");
    for (std::size_t truth = 0; truth < ModelsToTell.size(); ++truth) {
        std::printf("| %d |", ModelsToTell[truth]);
        for (const int count : confusions.Chosen[truth])
            std::printf(" %d |", count);
        const double all = confusions.Draws(truth);
        std::printf(" %d | %.0f%% | %.0f%% | %.0f%% |\n", confusions.None[truth],
                    100.0 * confusions.Chosen[truth][truth] / all, 100.0 * confusions.Open[truth] / all,
                    100.0 * confusions.RightByBic[truth] / all);
    }
    std::printf("\n%d of %d\n", confusions.Right(), confusions.All());
}

// Nobody is asked or told, and there are no files.
void FillQuietPlatform() {
    Platform quiet = QuietPlatform();
    quiet.RunPieces = [](long count, const auto& piece, const auto& watch) {
        RunPieces(CoresOfMachine(), count, piece, watch);
    };
    InstallPlatform(quiet);
}

} // namespace
} // namespace Quillon

int main(int count, char** words) {
    int draws = 100;
    std::uint64_t seed = 1;
    for (int i = 1; i + 1 < count; i += 2) {
        if (std::strcmp(words[i], "--draws") == 0) draws = std::atoi(words[i + 1]);
        if (std::strcmp(words[i], "--seed") == 0) seed = std::strtoull(words[i + 1], nullptr, 10);
    }
    Quillon::FillQuietPlatform();
    Quillon::PrintTable(Quillon::TellModelsApart(draws, seed));
    return 0;
}
