// The fitted function and its derivatives against the reference model, for all models and options, and the
// rules of the road through the points.
#include "models/SEDEQ3.h"
#include "tests/support/HandValues.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ReferenceCheck.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

namespace Quillon {
namespace {

// A value off by its rounding: exponents up to 10 in size, powers up to the sixth, sums of seven terms.
constexpr double ValueAccuracy = 1e-13;
// The non-ideal solver stops when a pass moves nothing by 1e-7 (1e-8 for model 1); the passes then close in
// by a factor of ten and more.
constexpr double NonIdealAccuracy = 3e-8;

double AccuracyOf(const Workspace& w) {
    return w.NonIdeal != 0 ? NonIdealAccuracy : ValueAccuracy;
}

double PointByPoint(long point) {
    if (point == 1) ResetConstraintSums(); // as at the start of each pass
    return FitFunction(point);
}

const double* DerivsOf(long point) {
    if (point == 1) ResetConstraintSums();
    CalcDerivs(point, FitFunction(point));
    return Work.Deriv.Data();
}

// Moves every used parameter off the truth, so that nothing depends on round numbers.
void Disturb(Workspace& w, std::uint64_t seed) {
    NoiseSource source(seed);
    for (long slot = 0; slot < w.NumParms; ++slot) {
        if (slot == 7 && w.Model < 10)
            w.Parms[slot] *= static_cast<float>(1 + 0.1 * source.Uniform());
        else if (slot < 8)
            w.Parms[slot] *= static_cast<float>(1 + 0.02 * (source.Uniform() - 0.5));
        else
            w.Parms[slot] += static_cast<float>(0.02 * (source.Uniform() - 0.7));
    }
    for (long s = 1; s <= w.NumSets; ++s)
        if (const long link = w.OffsetLink[w.SetRow[s]]; link != 0)
            w.Parms[SlotOffset(s)] = w.Parms[SlotOffset(w.SetOfRow[link])];
}

std::vector<std::string> FunctionCaseNames() {
    std::vector<std::string> names;
    for (const ModelCase& c : ModelCases())
        names.push_back(c.Name);
    return names;
}

class FunctionCase : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        Work = SimulatedWorkspace(ModelCaseNamed(GetParam()));
        ResetFitFunction();
    }
    Script script; // any message fails the test
};
INSTANTIATE_TEST_SUITE_P(All, FunctionCase, testing::ValuesIn(FunctionCaseNames()),
                         [](const auto& each) { return each.param; });

TEST_P(FunctionCase, ValuesAreThoseOfTheEquations) {
    const WorstDeviation atTruth = CheckValues(Work, PointByPoint, AccuracyOf(Work));
    EXPECT_LT(atTruth.Excess, 1) << atTruth.Where;
    Disturb(Work, 3);
    const WorstDeviation beside = CheckValues(Work, PointByPoint, AccuracyOf(Work));
    EXPECT_LT(beside.Excess, 1) << beside.Where;
    EXPECT_EQ(Work.AbortFit, 0);
}

TEST_P(FunctionCase, DerivativesAreForwardDifferencesOfTheEquations) {
    Disturb(Work, 4);
    const Workspace before = Work;
    const WorstDeviation worst = CheckDerivs(before, DerivsOf, AccuracyOf(Work));
    EXPECT_LT(worst.Excess, 1) << worst.Where;
    EXPECT_EQ(Work.Parms, before.Parms) << "a stepped parameter was not restored";
    // A second pass finds the sums of the constraints cleared.
    const WorstDeviation again = CheckDerivs(before, DerivsOf, AccuracyOf(Work));
    EXPECT_LT(again.Excess, 1) << again.Where;
}

// Points asked for in another order than that of the pass, and parameters changed between two of them: what
// is kept for a set may never show. Pseudo-points are left out: their sums need the order of the pass.
TEST_P(FunctionCase, NothingKeptForASetHidesAChange) {
    const Workspace base = Work;
    NoiseSource source(5);
    const RealVector parms = ReferenceParms(base);
    for (int i = 0; i < 150; ++i) {
        const long point = 1 + static_cast<long>(source.Uniform() * base.NumPts);
        const long slot = static_cast<long>(source.Uniform() * base.NumParms);
        if (base.PtX[point] == PointMarker || base.FreeMap[slot] == SlotTied)
            continue; // a tie writes over it
        Work.Parms[slot] *= 1.015625F;
        ApplyOffsetLinks();
        const double changed = FitFunction(point);
        RealVector there = parms;
        there[static_cast<std::size_t>(slot)] = Work.Parms[slot];
        const Real expected = ReferenceValueAt(base, there, point);
        Work.Parms = base.Parms;
        const Real allowed = Real(AccuracyOf(base)) * SizeOfPoint(base, there, point, expected);
        EXPECT_LE(std::abs(changed - expected), allowed) << "slot " << slot << " point " << point;
    }
}

TEST(FitFunction, MeetsTheNumbersWorkedOutOnPaper) {
    Script script;
    for (const HandValue& hand : HandValues) {
        Work = HandWorkspace(hand.Model);
        ResetFitFunction();
        EXPECT_NEAR(FitFunction(2), hand.Signal, 3e-6 * hand.Signal) << "model " << hand.Model;
    }
}

TEST(FitFunction, ReservedNumbersShowMonomerAAlone) {
    Script script;
    for (const int model : {23, 24}) {
        Work = HandWorkspace(model);
        Work.Parms[SlotOffset(1)] = 0.25F;
        ResetFitFunction();
        EXPECT_NEAR(FitFunction(2), 0.75, 1e-7) << model;
    }
}

TEST(FitFunction, SetOneIsNotScaled) {
    Script script;
    Work = UnitWorkspace(1);
    Work.CellPath[1] = 0.3F;
    Work.ExtinctionRatio[0][1] = 2.5F;
    Work.Parms[SlotA(1)] = std::log(0.4F);
    ResetFitFunction();
    EXPECT_NEAR(FitFunction(2), 0.4, 1e-7);
    EXPECT_NEAR(FitFunction(3), 0.4 * std::exp(0.75), 1e-7);
}

TEST(FitFunction, TwiceTheSpeedIsFourTimesSigma) {
    Script script;
    Work = SimulatedWorkspace(ModelCaseNamed("Model01"));
    Work.ScanRPM[2] = 2 * Work.ScanRPM[1];
    FlattenTable(Work);
    ResetFitFunction();
    const long first = Work.SetPts[1] + 1, last = Work.SetPts[1] + Work.SetPts[2];
    const double offset = Work.Parms[SlotOffset(2)];
    const double low = FitFunction(first) - offset, high = FitFunction(last) - offset;
    const double x = static_cast<double>(Work.PtX[last]) - Work.PtX[first];
    EXPECT_NEAR(std::log(high / low) / x, 4 * Work.Parms[0], 1e-6);
}

TEST(FitFunction, TemperaturesEnterInCelsius) {
    Script script;
    Work = SimulatedWorkspace(ModelCaseNamed("Model01"));
    Work.ScanRPM[2] = Work.ScanRPM[1];
    Work.ScanTemperature[2] = 10.0F;
    FlattenTable(Work);
    ResetFitFunction();
    const long first = Work.SetPts[1] + 1, last = Work.SetPts[1] + Work.SetPts[2];
    const double offset = Work.Parms[SlotOffset(2)];
    const double x = static_cast<double>(Work.PtX[last]) - Work.PtX[first];
    EXPECT_NEAR(std::log((FitFunction(last) - offset) / (FitFunction(first) - offset)) / x, 2 * Work.Parms[0],
                1e-6);
}

TEST(FitFunction, OffsetOfASlotThatHoldsAConstantIsZero) {
    Script script;
    for (const int model : {4, 5, 8, 9}) {
        Work = HandWorkspace(model);
        Work.SeparateK = FlagTrue;
        Work.Parms[SlotOffset(1)] = -50.0F; // ln of a constant that is next to nothing
        if (model <= 5) Work.Parms[SlotB(1)] = -50.0F;
        ResetFitFunction();
        EXPECT_NEAR(FitFunction(2), model <= 5 ? 0.5 : 0.7, 1e-7) << model;
    }
}

TEST(FitFunction, SlotFiveHasNoEffectInModelSix) {
    Script script;
    Work = HandWorkspace(6);
    ResetFitFunction();
    const double before = FitFunction(3);
    Work.Parms[5] = 17.0F;
    EXPECT_EQ(FitFunction(3), before);
}

TEST(FitFunction, NonIdealWithoutB2IsIdeal) {
    Script script;
    for (int model = 1; model <= 5; ++model) {
        Work = HandWorkspace(model);
        ResetFitFunction();
        double ideal[3];
        for (long p = 1; p <= 3; ++p)
            ideal[p - 1] = FitFunction(p);
        Work.NonIdeal = FlagTrue;
        Work.Parms[7] = 0.0F;
        ResetFitFunction();
        for (long p = 1; p <= 3; ++p)
            EXPECT_NEAR(FitFunction(p), ideal[p - 1], 1e-14) << "model " << model;
    }
}

// The solver starts at the measured signal; far-off data must not lead it to another root.
TEST(FitFunction, NonIdealSolutionDoesNotHangOnTheData) {
    Script script;
    for (int model = 1; model <= 5; ++model)
        for (const double b2 : {-0.08, 0.01}) {
            Work = HandWorkspace(model);
            Work.NonIdeal = FlagTrue;
            Work.Parms[2] = 0.5F;
            Work.Parms[4] = 0.2F;
            Work.Parms[7] = static_cast<float>(b2);
            const RealVector expected = ReferenceValues(Work, ReferenceParms(Work));
            for (const float measured : {0.0F, 0.2F, 3.0F}) {
                for (long p = 1; p <= 3; ++p)
                    Work.PtY[p] = measured;
                ResetFitFunction();
                for (long p = 1; p <= 3; ++p)
                    EXPECT_NEAR(FitFunction(p),
                                static_cast<double>(expected[static_cast<std::size_t>(p - 1)]), 1e-7)
                        << "model " << model << " B2 " << b2 << " data " << measured << " point " << p;
            }
        }
}

// Where no solution exists the last values stand; that is no error.
// The sums with derivatives and those without went through other solutions where the equation has none.
TEST(FitFunction, SumsWithoutAPhysicalRootHungOnWhatWasEvaluatedBefore) {
    Script script;
    for (const int model : {1, 2, 3, 4, 5}) {
        Work = HandWorkspace(model);
        Work.NonIdeal = FlagTrue;
        Work.Parms[7] = 3.0F; // no root at any of the points
        for (auto& flag : Work.FreeMap)
            flag = SlotUnused;
        Work.FreeMap[0] = Work.FreeMap[7] = Work.FreeMap[SlotA(1)] = 0;
        NumberFreeSlots(Work);
        std::vector<double> plain, between;
        ResetFitFunction();
        for (long p = 1; p <= 3; ++p)
            plain.push_back(FitFunction(p));
        for (const bool disturbed : {false, true}) {
            between.clear();
            if (disturbed) { // another place first
                Work.Parms[7] = 0.01F;
                FitFunction(1);
                Work.Parms[7] = 3.0F;
            }
            for (long p = 1; p <= 3; ++p) {
                between.push_back(FitFunction(p));
                CalcDerivs(p, between.back());
                EXPECT_TRUE(std::isfinite(Work.Deriv[1]));
            }
            EXPECT_EQ(between, plain) << model;
        }
        EXPECT_EQ(Work.AbortFit, 0) << model;
    }
}

// c1 = a exp(e c1) has its last root at a e = 1/e; beyond it the closest approach is c1 = 1/e.
TEST(FitFunction, WithoutAPhysicalRootTheSignalGoesOnWithoutAJump) {
    Script script;
    for (const double excess : {1e-6, 0.5}) {
        Work = HandWorkspace(1);
        Work.NonIdeal = FlagTrue;
        Work.Parms[0] = 1.0F;
        Work.Parms[7] = 2.0F;
        Work.Parms[SlotA(1)] = static_cast<float>(std::log(std::exp(-1.0) / 2.0 * (1.0 + excess)));
        Work.Parms[SlotOffset(1)] = 0.0F;
        ResetFitFunction();
        FitFunction(1);
        EXPECT_NEAR(FitFunction(2), 0.5, 2e-3); // at x = 0
    }
}

TEST(FitFunction, NonIdealWithoutSolutionIsNoError) {
    Script script;
    Work = HandWorkspace(1);
    Work.NonIdeal = FlagTrue;
    Work.Parms[0] = 1.0F;
    Work.Parms[7] = 1.0F; // c exp(-c) is 0.37 at most
    Work.Parms[SlotA(1)] = std::log(0.6F);
    ResetFitFunction();
    for (long p = 1; p <= 3; ++p)
        EXPECT_TRUE(std::isfinite(FitFunction(p)));
}

TEST(FitFunction, OverflowStopsTheFitWithItsSentence) {
    for (const int model : {1, 2, 8}) {
        Script script;
        Work = HandWorkspace(model);
        Work.Parms[SlotA(1)] = 800.0F;
        ResetFitFunction();
        EXPECT_EQ(FitFunction(2), 0.0) << model;
        EXPECT_NE(Work.AbortFit, 0) << model;
        EXPECT_EQ(Work.Outcome,
                  (FitOutcome{FitEnd::MathError, "Math error during function evaluation, aborting fit",
                              "Overflow."}));
        EXPECT_EQ(DerivParm(), NoSlot);
    }
}

TEST(FitFunction, PutsTheSteppedSlotBack) {
    Script script;
    Work = HandWorkspace(1);
    ResetFitFunction();
    SetDerivParm(SlotNo(3));
    FitFunction(1);
    EXPECT_EQ(DerivParm(), NoSlot);
}

// --- derivatives ------------------------------------------------------------------------------------------

// All listed slots fitted, the others held.
void FitSlots(std::initializer_list<long> slots) {
    for (long i = 0; i <= Work.FreeMap.Hi(); ++i)
        Work.FreeMap[i] = SlotHeld;
    for (const long slot : slots)
        Work.FreeMap[slot] = 0;
    NumberFreeSlots(Work);
    ResetFitFunction();
}

TEST(CalcDerivs, StepsAreThoseOfTheSlots) {
    Work = FreshWorkspace();
    Work.Parms[0] = 2.0F;
    Work.Parms[1] = 3.0F;
    Work.Parms[3] = 4.0F;
    Work.Parms[5] = 5.0F;
    EXPECT_DOUBLE_EQ(DerivStep(SlotNo(0)), 0.02);
    EXPECT_DOUBLE_EQ(DerivStep(SlotNo(5)), 0.05);
    EXPECT_DOUBLE_EQ(DerivStep(SlotNo(1)), 0.06);
    EXPECT_DOUBLE_EQ(DerivStep(SlotNo(3)), 0.08);
    for (const long slot : {2L, 4L, 6L})
        EXPECT_EQ(DerivStep(SlotNo(slot)), 0.06);
    for (const long slot : {8L, 9L, 13L, 61L})
        EXPECT_EQ(DerivStep(SlotNo(slot)), 0.02);
    for (const int model : {1, 5, 9}) {
        Work.Model = ToInt16(model);
        Work.Parms[7] = 0.0F;
        EXPECT_EQ(DerivStep(SlotNo(7)), 0.0004) << model;
        Work.Parms[7] = -0.5F;
        EXPECT_DOUBLE_EQ(DerivStep(SlotNo(7)), -0.01) << model;
    }
    for (const int model : {10, 22}) {
        Work.Model = ToInt16(model);
        Work.Parms[7] = 0.0F;
        EXPECT_EQ(DerivStep(SlotNo(7)), 0.02) << model;
        Work.Parms[7] = 5.0F;
        EXPECT_EQ(DerivStep(SlotNo(7)), 0.02) << model;
    }
}

TEST(CalcDerivs, AdditionIsSingleAndTheDivisorIsNot) {
    Script script;
    // At ln cA = -2 a step of 0.02 lands on the single next to -1.98, 1.2e-8 away from it: the quotient is
    // off by 6e-7 of itself from that of an exact step.
    Work = HandWorkspace(1);
    Work.Parms[SlotA(1)] = -2.0F;
    FitSlots({SlotA(1)});
    const double y = FitFunction(2);
    CalcDerivs(2, y);
    const float stepped = -2.0F + 0.02F;
    const double expected = (std::exp(static_cast<double>(stepped)) - std::exp(-2.0)) / 0.02;
    EXPECT_NEAR(Work.Deriv[0], expected, 1e-13);
    EXPECT_GT(std::abs(Work.Deriv[0] - std::exp(-2.0) * std::expm1(0.02) / 0.02), 2e-9);
}

TEST(CalcDerivs, B2LeavesZero) {
    Script script;
    Work = HandWorkspace(1);
    Work.NonIdeal = FlagTrue;
    Work.Parms[7] = 0.0F;
    FitSlots({7});
    CalcDerivs(2, FitFunction(2));
    // d c / d B2 at B2 = 0 is sigma c^2.
    EXPECT_NEAR(Work.Deriv[0], 1.5 * 0.25, 1e-3);
}

TEST(CalcDerivs, ZeroOffsetIsExact) {
    Script script;
    Work = HandWorkspace(2);
    Work.Parms[SlotOffset(1)] = 0.01F;
    FitSlots({SlotA(1), SlotOffset(1)});
    CalcDerivs(2, FitFunction(2));
    EXPECT_EQ(Work.Deriv[1], 1.0);
}

TEST(CalcDerivs, TiedOffsetFitsThePointsOfBothSets) {
    Script script;
    Work = SimulatedWorkspace(ModelCaseNamed("Model08ConstrainedLinked"));
    ResetFitFunction();
    // Set 2 is tied to set 1, the last one to set 4.
    const long one = Work.FreeMap[SlotOffset(1)], four = Work.FreeMap[SlotOffset(4)];
    ASSERT_GE(one, 0);
    ASSERT_GE(four, 0);
    for (long p = 1; p <= Work.NumPts; ++p) {
        CalcDerivs(p, FitFunction(p));
        const int set = Work.PtSet[p];
        const bool pseudo = Work.PtX[p] == PointMarker;
        EXPECT_EQ(Work.Deriv[one], !pseudo && (set == 1 || set == 2) ? 1.0 : 0.0) << p;
        EXPECT_EQ(Work.Deriv[four], !pseudo && (set == 4 || set == 6) ? 1.0 : 0.0) << p;
    }
}

TEST(CalcDerivs, SlotsOfOtherSetsAreZero) {
    Script script;
    Work = SimulatedWorkspace(ModelCaseNamed("Model09SeparateK"));
    ResetFitFunction();
    for (long p = 1; p <= Work.NumPts; ++p) {
        CalcDerivs(p, FitFunction(p));
        for (long k = 0; k < Work.NumFree; ++k) {
            const long slot = Work.FreeIndex[k];
            if (slot < 8) continue;
            const bool own = (slot - 8) / 3 + 1 == Work.PtSet[p];
            EXPECT_EQ(Work.Deriv[k] != 0.0, own) << "point " << p << " slot " << slot;
        }
    }
}

TEST(CalcDerivs, SeparateConstantsMakeTheThirdSlotNumeric) {
    Script script;
    // Model 2 keeps its offset in the third slot; stepped numerically it is 1 but for the rounding of the
    // sum.
    Work = HandWorkspace(2);
    Work.SeparateK = FlagTrue;
    Work.Parms[SlotOffset(1)] = 0.013F;
    FitSlots({SlotOffset(1)});
    CalcDerivs(2, FitFunction(2));
    const float stepped = 0.013F + 0.02F;
    EXPECT_NEAR(Work.Deriv[0], (static_cast<double>(stepped) - static_cast<double>(0.013F)) / 0.02, 1e-13);
    EXPECT_NE(Work.Deriv[0], 1.0);
    // In model 8 it is the constant: AB = K a b grows with it.
    Work = HandWorkspace(8);
    Work.SeparateK = FlagTrue;
    Work.Parms[SlotOffset(1)] = std::log(2.0F);
    FitSlots({SlotOffset(1)});
    CalcDerivs(2, FitFunction(2));
    EXPECT_NEAR(Work.Deriv[0], 0.4 * std::expm1(0.02) / 0.02, 1e-5);
}

TEST(CalcDerivs, DoubledSlotOfModelSixMovesBothOfItsMeanings) {
    Script script;
    Work = HandWorkspace(6);
    Work.SeparateK = FlagTrue; // slot 9 is ln K and ln c of the inactive monomer, 0.2 each
    FitSlots({SlotB(1)});
    CalcDerivs(2, FitFunction(2));
    EXPECT_NEAR(Work.Deriv[0], (0.2 * 0.25 + 0.2) * std::expm1(0.02) / 0.02, 1e-6);
}

// --- blocks of points
// ---------------------------------------------------------------------------------------

bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST_P(FunctionCase, BlocksGiveTheSameBitsAsPoints) {
    Disturb(Work, 6);
    std::vector<double> value(static_cast<std::size_t>(Work.NumPts + 1));
    std::vector<std::vector<double>> deriv(value.size());
    for (long p = 1; p <= Work.NumPts; ++p) {
        const auto at = static_cast<std::size_t>(p);
        value[at] = FitFunction(p);
        CalcDerivs(p, value[at]);
        deriv[at].assign(Work.Deriv.Data(), Work.Deriv.Data() + Work.NumFree);
    }
    ResetFitFunction();
    SetPlan plan;
    PointBlock block;
    long first = 1;
    for (long set = 1; set <= Work.NumSets; ++set) {
        PlanSet(plan, SetNo(set), true);
        const long beyond = first + Work.SetPts[set];
        while (first < beyond) {
            long count = 1;
            while (Work.PtX[first] != PointMarker && first + count < beyond && count < 37 &&
                   Work.PtX[first + count] != PointMarker)
                ++count;
            EvaluateBlock(block, plan, first, count);
            for (long i = 0; i < count; ++i) {
                const auto at = static_cast<std::size_t>(first + i);
                EXPECT_TRUE(SameBits(block.Value[static_cast<std::size_t>(i)], value[at])) << "point " << at;
                std::vector<double> columns(static_cast<std::size_t>(Work.NumFree), 0.0);
                for (int k = 0; k < plan.Count; ++k) {
                    const auto column = static_cast<std::size_t>(k);
                    columns[static_cast<std::size_t>(plan.FreePosition[column].Number)] =
                        block.Column[column][static_cast<std::size_t>(i)];
                }
                for (std::size_t k = 0; k < columns.size(); ++k)
                    EXPECT_TRUE(SameBits(columns[k], deriv[at][k]))
                        << "point " << at << " slot " << Work.FreeIndex[static_cast<long>(k)] << " "
                        << columns[k] << " " << deriv[at][k];
            }
            first += count;
        }
    }
}

} // namespace
} // namespace Quillon
