// The sums of a pass against the plain loop over all points and all pairs of parameters: the same bits, for
// every model and option, with constraints, links and any grouping into blocks.
#include "SyntheticFit.h"
#include "fit/Confidence.h"
#include "fit/GNLLSQ.h"
#include "models/SEDEQ3.h"
#include "platform/VectorWidth.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <thread>

namespace Quillon {
namespace {

void ExpectSameBits(double a, double b, const char* what) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(a), std::bit_cast<std::uint64_t>(b))
        << what << ": " << a << " " << b;
}

// The sums of the blocks on the vectors in use against those that the plain loop has left.
void ExpectSums(const Workspace& plain) {
    AccumulateSums();
    ASSERT_FALSE(Work.AbortFit);
    ExpectSameBits(Work.SumSq, plain.SumSq, "SumSq");
    EXPECT_TRUE(plain.PtFit == Work.PtFit);
    for (long a = 0; a < Work.NumFree; ++a) {
        ExpectSameBits(Work.NormVector[a], plain.NormVector[a], "NormVector");
        for (long b = 0; b < Work.NumFree; ++b)
            ExpectSameBits(Work.NormMatrix(a, b), plain.NormMatrix(a, b), "NormMatrix");
    }
}

// On the narrowest road and on the widest one that the processor has.
void ExpectSumsOfPlainLoop() {
    AccumulateSumsPlainly();
    ASSERT_FALSE(Work.AbortFit);
    const Workspace plain = Work;
    const VectorWidth before = VectorsInUse;
    for (const VectorWidth width : {VectorWidth::Narrow, WidestVectors()}) {
        VectorsInUse = width;
        ExpectSums(plain);
    }
    CalcSumSq();
    VectorsInUse = before;
    // Without the stepped calls between, the fixed-point steps of model 1 start elsewhere and end within
    // their tolerance of 1e-8 elsewhere.
    if (Work.Model == 1 && Work.NonIdeal)
        EXPECT_NEAR(Work.SumSq, plain.SumSq, 1e-6 * plain.SumSq);
    else
        ExpectSameBits(Work.SumSq, plain.SumSq, "CalcSumSq");
}

struct SumsCase {
    int Model;
    bool NonIdeal, SeparateK;
};

class SumsOfModel : public testing::TestWithParam<SumsCase> {
protected:
    void SetUp() override { Work = FreshWorkspace(); }
    Script Outside;
};

TEST_P(SumsOfModel, AreThoseOfThePlainLoop) {
    MakeSets(4, 60, 7);
    ChooseModel(GetParam().Model, GetParam().NonIdeal, GetParam().SeparateK);
    ExpectSumsOfPlainLoop();
}

TEST_P(SumsOfModel, AreThoseOfThePlainLoopInSmallBlocks) {
    MakeSets(3, 700, 8);
    ChooseModel(GetParam().Model, GetParam().NonIdeal, GetParam().SeparateK);
    Work.YieldInterval = 37;
    ExpectSumsOfPlainLoop();
}

TEST_P(SumsOfModel, AreThoseOfThePlainLoopWithConstraints) {
    Work.ConstraintFlags = ConcentrationBit | OffsetBit;
    Work.ConcConstraintA[1] = Work.ConcConstraintA[2] = 0.3F;
    Work.ConcConstraintB[2] = Work.ConcConstraintB[3] = 0.2F;
    Work.OffsetLink[4] = 2;
    MakeSets(4, 50, 9);
    ChooseModel(GetParam().Model, GetParam().NonIdeal, GetParam().SeparateK);
    ExpectSumsOfPlainLoop();
}

// Ranges of their own, so that a follower's concentrations are not those of its leader.
void GiveRadii(double apart) {
    for (long s = 1; s <= Work.NumSets; ++s) {
        const long points = Work.ScanPoints[s];
        Work.ScanRadius[s].Recreate(points);
        for (long p = 1; p <= points; ++p)
            Work.ScanRadius[s][p] =
                static_cast<float>(6.7 + apart * static_cast<double>(s) + 0.004 * static_cast<double>(p));
    }
}

TEST_P(SumsOfModel, AreThoseOfThePlainLoopWithSharedConcentrations) {
    MakeSets(4, 50, 11);
    GiveRadii(0.02);
    Work.ConcLink[2] = 1;
    Work.ConcLink[4] = 3;
    ChooseModel(GetParam().Model, GetParam().NonIdeal, GetParam().SeparateK);
    EXPECT_EQ(Work.FreeMap[SlotA(2)], SlotTied);
    ExpectSumsOfPlainLoop();
    // The points of a follower are points of its leader's concentration.
    const long place = Work.FreeMap[SlotA(1)];
    const double both = Work.NormMatrix(place, place);
    for (long p = 1; p <= Work.NumPts; ++p)
        if (Work.PtSet[p] == 2) Work.PtSet[p] = 3;
    Work.SetPts[3] = ToInt16(Work.SetPts[3] + Work.SetPts[2]);
    AccumulateSums();
    EXPECT_LT(Work.NormMatrix(place, place), both);
}

// Exponentials that the pass before has left serve the next one only while they are those of its parameters.
TEST_P(SumsOfModel, AreThoseOfThePlainLoopWithKeptExponentials) {
    MakeSets(3, 300, 10);
    ChooseModel(GetParam().Model, GetParam().NonIdeal, GetParam().SeparateK);
    StoreSignals(true);
    ExpectSumsOfPlainLoop();
    for (long a = 0; a < Work.NumFree; ++a) {
        Work.YieldInterval = ToInt16(20 + 7 * a);
        Work.Parms[Work.FreeIndex[a]] *= 1.001F;
        CalcSumSq();
        ExpectSumsOfPlainLoop();
    }
    // A pass that is broken off leaves some of them behind, for parameters that are then given up.
    int events = 0;
    Outside.DuringEvents = [&] {
        if (++events == 12) Work.AbortFit = FlagTrue;
    };
    Work.YieldInterval = 50;
    const float kept = Work.Parms[0];
    Work.Parms[0] *= 0.999F;
    CalcSumSq();
    EXPECT_EQ(Work.AbortFit, FlagTrue);
    Work.AbortFit = 0;
    Work.Parms[0] = kept;
    ExpectSumsOfPlainLoop();
    StoreSignals(false);
}

std::vector<SumsCase> AllCases() {
    std::vector<SumsCase> cases;
    for (int m = 1; m <= LastModelNumber; ++m) {
        cases.push_back({m, false, false});
        if (ModelAllowsNonIdeal(m)) cases.push_back({m, true, false});
        if (ModelAllowsSeparateK(m)) cases.push_back({m, false, true});
        if (ModelAllowsNonIdeal(m) && ModelAllowsSeparateK(m)) cases.push_back({m, true, true});
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(AllModels, SumsOfModel, testing::ValuesIn(AllCases()), [](const auto& tested) {
    return "Model" + std::to_string(tested.param.Model) + (tested.param.NonIdeal ? "NonIdeal" : "") +
           (tested.param.SeparateK ? "SeparateK" : "");
});

// A derivative that stays at the base value of an association constant would let no constant be fitted.
TEST(SteppedConstants, ReachEveryPointOfASet) {
    Script outside;
    Work = FreshWorkspace();
    MakeSets(2, 40, 3);
    ChooseModel(2, false, false);
    for (long p = 1; p <= Work.NumPts; ++p) {
        const double y = FitFunction(p);
        CalcDerivs(p, y);
        const double a = std::exp(static_cast<double>(Work.PtX[p] * Work.SetSigmaScale[Work.PtSet[p]]) *
                                      static_cast<double>(Work.Parms[0]) +
                                  static_cast<double>(Work.Parms[SlotA(Work.PtSet[p])]));
        EXPECT_GT(Work.Deriv[Work.FreeMap[2]], 0.1 * a * a) << p;
    }
}

// --- a whole fit

Workspace StartOf(const std::string& name) {
    Work = SimulatedWorkspace(ModelCaseNamed(name));
    Work.MonitorMode = 0;
    BuildParmNames();
    BuildParmScale();
    SetDefaultBounds();
    MoveAwayFromTruth();
    return Work;
}

// Fit, errors and rigorous limits, with blocks of no more than so many points.
Workspace FitInBlocks(const Workspace& start, long most) {
    Work = start;
    Work.YieldInterval = ToInt16(most);
    EXPECT_TRUE(RunFit()) << Work.Outcome.Sentence;
    ConfidenceSearch(nullptr);
    EXPECT_TRUE(Work.LimitsDone);
    Work.YieldInterval = start.YieldInterval;
    return Work;
}

Workspace FitOnAThread(const Workspace& start) {
    Workspace left;
    std::thread([&] {
        const Script outside; // the seam of a thread is its own
        left = FitInBlocks(start, start.YieldInterval);
    }).join();
    return left;
}

// From the narrowest vectors and the smallest blocks to the widest and largest, here and on another thread.
TEST(WholeFit, HasTheSameBitsOnEveryRoadInAnyBlocksAndOnAnyThread) {
    const Script outside;
    const VectorWidth before = VectorsInUse;
    for (const char* name : {"Model03", "Model08"}) {
        const Workspace start = StartOf(name);
        VectorsInUse = VectorWidth::Narrow;
        const Workspace narrow = FitInBlocks(start, 1);
        for (const VectorWidth width : {VectorWidth::Narrow, WidestVectors()}) {
            VectorsInUse = width;
            EXPECT_TRUE(FitInBlocks(start, 37) == narrow) << name;
            EXPECT_TRUE(FitInBlocks(start, start.YieldInterval) == narrow) << name;
            EXPECT_TRUE(FitOnAThread(start) == narrow) << name;
        }
        EXPECT_FALSE(start == narrow);
    }
    VectorsInUse = before;
}

} // namespace
} // namespace Quillon
