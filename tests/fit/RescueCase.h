#pragma once
// What tests of fits that do not end at the minimum by themselves share: a case far off, and a linear fit.

#include "Robustness.h"
#include "SyntheticFit.h"
#include "fit/GNLLSQ.h"
#include "models/SEDEQ3.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

namespace Quillon {

// The sum of squares at parameters; Work is as before.
inline double SumAt(const PerSlot<float>& parms) {
    Workspace kept = Work;
    Work.Parms = parms;
    Work.AbortFit = FlagFalse;
    ResetFitFunction();
    CalcSumSq();
    const double sum = Work.AbortFit ? std::numeric_limits<double>::infinity() : Work.SumSq;
    Work = std::move(kept);
    return sum;
}

class RescueCase : public testing::Test {
protected:
    // A case far off, fitted plainly; gives the start.
    PerSlot<float> Fail(const std::string& name, double reach, std::uint64_t seed) {
        LoadRobustnessCase(ModelCaseNamed(name), seed);
        Least = static_cast<double>(FitReference(Work).End.SumSq);
        StartFarOff(reach, seed * 1000 + static_cast<std::uint64_t>(reach));
        PerSlot<float> start = Work.Parms;
        RunFit();
        return start;
    }
    // Levels of two sets: a linear fit with two offsets, and a start at 0.
    static PerSlot<float> Levels() {
        Work = FreshWorkspace();
        MakeLevels({{1.0F, 2.0F, 3.0F}, {-1.0F, -1.5F, -2.0F}});
        return Work.Parms;
    }
    Script Outside;
    double Least = 0.0; // the lowest sum of squares there is
};

} // namespace Quillon
