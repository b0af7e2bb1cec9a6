#pragma once
// A simulated experiment that has been fitted, and others that tests of studies begin from.

#include "SimulatedCase.h"
#include "files/RunPieces.h"
#include "fit/GNLLSQ.h"
#include "fit/equations/FreeMap.h"
#include "platform/Platform.h"

#include <gtest/gtest.h>

namespace Quillon {

// The case that has been loaded, fitted from its truth.
inline void FitLoaded() {
    RunFit();
    ASSERT_EQ(Work.Outcome.End, FitEnd::Converged) << Work.Outcome.Sentence;
}

inline void FitCase(const char* name) {
    LoadCase(ModelCaseNamed(name));
    FitLoaded();
}

// A linear problem: everything but the zero offsets is held at the truth, and the sum of squares is a
// parabola in each of them.
inline void LoadOffsetsAlone() {
    LoadCase(ModelCaseNamed("Model01"));
    std::vector<FitChoice> choices = FitChoices();
    for (FitChoice& choice : choices)
        choice.Check = PartOfSlot(choice.Slot) == SlotPart::Offset ? FitCheckYes : FitCheckNo;
    AssignFreePositions(choices);
}

// The pieces of a study run side by side on so many threads.
inline void UseThreads(int threads) {
    Host.RunPieces = [threads](long count, const auto& piece, const auto& watch) {
        RunPieces(threads, count, piece, watch);
    };
}

} // namespace Quillon
