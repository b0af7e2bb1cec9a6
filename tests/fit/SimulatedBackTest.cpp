// The program's own simulation, fitted back: the parameters scatter about the truth by their stated errors.
#include "SyntheticFit.h"
#include "fit/GNLLSQ.h"
#include "models/Random.h"
#include "models/SEDEQ3.h"
#include "models/Simulation.h"
#include "platform/Platform.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace Quillon {
namespace {

// A uniform generator of good quality behind the seam.
void UseGenerator(NoiseSource& source) {
    Host.Uniform = [&source] { return static_cast<float>(source.Bits() >> 40) * 0x1p-24F; };
}

TEST(SimulatedBack, WithoutNoiseGivesTheParameters) {
    Script script;
    for (const char* name : {"Model01", "Model02", "Model08"}) {
        const Workspace truth = SimulatedWorkspace(ModelCaseNamed(name));
        Work = truth;
        BuildParmScale();
        SetDefaultBounds();
        ASSERT_TRUE(SimulateSignals(Work.PtY));
        MoveAwayFromTruth();
        ASSERT_TRUE(RunFit()) << name;
        for (long a = 0; a < Work.NumFree; ++a) {
            const long slot = Work.FreeIndex[a];
            EXPECT_NEAR(Work.Parms[slot], truth.Parms[slot], 2e-3 + 2e-3 * std::fabs(truth.Parms[slot]))
                << name << " slot " << slot;
        }
    }
}

TEST(SimulatedBack, ScattersByTheStatedErrors) {
    Script script;
    NoiseSource source(20);
    UseGenerator(source);
    const Workspace truth = SimulatedWorkspace(ModelCaseNamed("Model01"));
    Work = truth;
    OneBased<float> signals;
    ASSERT_TRUE(SimulateSignals(signals));
    constexpr int draws = 200;
    std::vector<double> squares(static_cast<std::size_t>(truth.NumFree));
    for (int draw = 0; draw < draws; ++draw) {
        Work = truth;
        Work.PtY = signals;
        BuildParmScale();
        SetDefaultBounds();
        AddNoise(Work.PtY, 0.004);
        MoveAwayFromTruth();
        ASSERT_TRUE(RunFit());
        for (long a = 0; a < Work.NumFree; ++a) {
            const long slot = Work.FreeIndex[a];
            const double error = std::sqrt(std::fabs(Work.NormMatrix(a, a))) * Work.RmsResidual;
            const double z = (static_cast<double>(Work.Parms[slot]) - truth.Parms[slot]) / error;
            squares[static_cast<std::size_t>(a)] += z * z;
        }
    }
    // chi-square with 200 degrees of freedom: all of them within four standard deviations of 20
    for (const double square : squares)
        EXPECT_NEAR(square, draws, 4 * std::sqrt(2.0 * draws));
}

} // namespace
} // namespace Quillon
