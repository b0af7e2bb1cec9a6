// Concentration constraints and tied zero offsets.
#include "models/SEDEQ3.h"
#include "tests/support/HandValues.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

// The three points of the unit workspace and behind them the pseudo-points that the loadings ask for.
void Constrain(float loadingA, float toleranceA, float loadingB, float toleranceB) {
    Work.ConstraintFlags = ConcentrationBit;
    Work.ConcConstraintA[1] = loadingA;
    Work.ConcConstraintB[1] = loadingB;
    Work.ConcToleranceA[1] = toleranceA;
    Work.ConcToleranceB[1] = toleranceB;
    for (const bool wanted : {loadingA > 0, loadingB > 0}) {
        if (!wanted) continue;
        Work.NumPts = ToInt16(Work.NumPts + 1);
        Work.SetPts[1] = ToInt16(Work.SetPts[1] + 1);
        Work.PtX.Resize(Work.NumPts, PointMarker);
        Work.PtY.Resize(Work.NumPts, 1.0F);
        Work.PtSet.Resize(Work.NumPts, 1);
        Work.PtFit.Resize(Work.NumPts);
    }
    ResetFitFunction();
}

double TruePoints() {
    double sum = 0;
    for (long p = 1; p <= 3; ++p)
        sum += FitFunction(p);
    return sum;
}

TEST(ConcentrationConstraint, IsTheWeightedMeanOfTheSet) {
    Script script;
    Work = HandWorkspace(1);
    Work.Parms[SlotOffset(1)] = 0.125F; // no part of it
    Work.ScanValue[1][3] = 1.5F;
    Constrain(0.5F, 0.25F, 0, 0.1F);
    const double mean = TruePoints() / 3 - 0.125;
    EXPECT_NEAR(FitFunction(4), 1.5 * mean / 0.25, 1e-14);
    EXPECT_FLOAT_EQ(Work.ConstraintFit[0][1], static_cast<float>(mean));
}

TEST(ConcentrationConstraint, SharesSpeciesByTheirUnits) {
    Script script;
    for (const HandValue& hand : HandValues) {
        Work = HandWorkspace(hand.Model);
        Work.PtX[1] = Work.PtX[2] = Work.PtX[3] = 0.0F; // the numbers on paper at every point
        Constrain(0.5F, 1.0F, 0.5F, 1.0F);
        TruePoints();
        EXPECT_NEAR(FitFunction(4), hand.Signal - hand.OfB, 3e-6 * hand.Signal) << "model " << hand.Model;
        EXPECT_NEAR(FitFunction(5), hand.OfB, 3e-6 * hand.Signal) << "model " << hand.Model;
    }
}

TEST(ConcentrationConstraint, OfBAloneIsTheFirstPseudoPoint) {
    Script script;
    Work = HandWorkspace(7);
    Constrain(0, 0.1F, 0.2F, 0.5F);
    double sum = 0;
    for (long p = 1; p <= 3; ++p) {
        FitFunction(p);
        sum += 0.2 * std::exp(3.0 * Work.PtX[p]);
    }
    EXPECT_NEAR(FitFunction(4), sum / 3 / 0.5, 1e-7);
    EXPECT_NEAR(Work.ConstraintFit[1][1], sum / 3, 1e-7);
    EXPECT_EQ(ConstraintSumA(SlotNo(-1)), 0.0); // both are cleared
    EXPECT_EQ(ConstraintSumB(SlotNo(-1)), 0.0);
}

TEST(ConcentrationConstraint, SecondPseudoPointStillFindsItsSum) {
    Script script;
    Work = HandWorkspace(7);
    Constrain(0.5F, 1.0F, 0.2F, 1.0F);
    TruePoints();
    FitFunction(4);
    EXPECT_GT(FitFunction(5), 0.1);
}

TEST(ConcentrationConstraint, SecondPassIsNotDoubled) {
    Script script;
    for (const int model : {1, 7, 20}) {
        Work = HandWorkspace(model);
        Constrain(0.5F, 1.0F, 0.2F, 1.0F);
        TruePoints();
        const double a = FitFunction(4), b = FitFunction(5);
        for (int pass = 0; pass < 3; ++pass) {
            ResetConstraintSums();
            TruePoints();
            EXPECT_EQ(FitFunction(4), a) << model;
            EXPECT_EQ(FitFunction(5), b) << model;
        }
    }
}

TEST(ConcentrationConstraint, SteppedSlotsHaveTheirOwnSums) {
    Script script;
    Work = HandWorkspace(1);
    Constrain(0.5F, 0.5F, 0, 0.1F);
    for (long i = 0; i <= Work.FreeMap.Hi(); ++i)
        Work.FreeMap[i] = SlotHeld;
    for (const long slot : {0L, SlotA(1), SlotOffset(1)})
        Work.FreeMap[slot] = 0;
    NumberFreeSlots(Work);
    double mean = 0, stepped = 0;
    const double h = 1.5 * 0.01;
    const float sigma = 1.5F + static_cast<float>(h);
    for (long p = 1; p <= 3; ++p) {
        CalcDerivs(p, FitFunction(p));
        const double c = std::exp(static_cast<double>(Work.Parms[SlotA(1)]));
        mean += c * std::exp(1.5 * Work.PtX[p]) / 3;
        stepped += c * std::exp(sigma * static_cast<double>(Work.PtX[p])) / 3;
    }
    CalcDerivs(4, FitFunction(4));
    EXPECT_NEAR(Work.Deriv[0], 2 * (stepped - mean) / h, 1e-12);
    EXPECT_NEAR(Work.Deriv[1], 2 * mean * std::expm1(0.02) / 0.02, 1e-5);
    EXPECT_EQ(Work.Deriv[2], 0.0); // a constraint excludes the offset
}

TEST(ConcentrationConstraint, NeedsItsFlag) {
    Script script;
    Work = HandWorkspace(1);
    Constrain(0.5F, 0.5F, 0, 0.1F);
    Work.ConstraintFlags = 0;
    ResetFitFunction();
    TruePoints();
    EXPECT_EQ(ConstraintSumA(SlotNo(-1)), 0.0); // nothing is summed up while no constraint is in force
}

TEST(ConcentrationConstraint, RawScanGivesTheWeight) {
    Script script;
    Work = HandWorkspace(1);
    Work.ScanValue[1][3] = 2.0F; // before a baseline of 0.5 was subtracted
    Work.PtY[3] = 1.5F;
    Constrain(0.5F, 1.0F, 0, 0.1F);
    const double mean = TruePoints() / 3;
    EXPECT_NEAR(FitFunction(4), 2.0 * mean, 1e-14);
}

TEST(ConcentrationConstraint, ZeroToleranceIsAnArithmeticFault) {
    Script script;
    Work = HandWorkspace(1);
    Constrain(0.5F, 0.0F, 0, 0.1F);
    TruePoints();
    script.AnswerAllMessages(BoxAnswer::Ok);
    bool raised = false;
    double value = 1;
    try {
        value = FitFunction(4);
    } catch (const RuntimeError&) {
        raised = true;
    }
    EXPECT_TRUE(raised || (Work.AbortFit != 0 && value == 0.0));
}

// Sums belong to one set: what stood in the sets before, constrained or not, may not show.
TEST(ConcentrationConstraint, SumsOfOtherSetsStayOut) {
    Script script;
    for (const bool firstConstrained : {false, true}) {
        Work = HandWorkspace(7);
        Work.NumSets = 2;
        Work.NumParms = 14;
        Work.SetRow[2] = Work.SetOfRow[2] = 2;
        Work.CellPath[2] = 1.0F;
        Work.ScanValue[2].Recreate(3, 1.0F);
        Work.FitRange[0][2] = 1;
        Work.FitRange[1][2] = 3;
        Work.ConstraintFlags = ConcentrationBit;
        Work.ConcConstraintA[1] = firstConstrained ? 0.5F : 0.0F;
        Work.ConcConstraintB[2] = 0.5F;
        Work.ConcToleranceA[1] = Work.ConcToleranceB[2] = 1.0F;
        Work.Parms[SlotA(2)] = std::log(0.3F);
        Work.Parms[SlotB(2)] = std::log(0.4F);
        const long n = firstConstrained ? 4 : 3;
        Work.NumPts = ToInt16(n + 4);
        Work.SetPts.Recreate(2, 4);
        Work.SetPts[1] = ToInt16(n);
        Work.PtX.Resize(n + 4, 0.0F);
        Work.PtY.Resize(n + 4, 1.0F);
        Work.PtFit.Resize(n + 4);
        Work.PtSet.Resize(n + 4, 2);
        for (long p = 1; p <= n; ++p)
            Work.PtSet[p] = 1;
        if (firstConstrained) Work.PtX[4] = PointMarker;
        Work.PtX[n + 4] = PointMarker;
        ResetFitFunction();
        for (long p = 1; p < n + 4; ++p)
            FitFunction(p);
        EXPECT_NEAR(FitFunction(n + 4), 0.4, 1e-6) << "first set constrained: " << firstConstrained;
    }
}

// --- tied zero offsets
// --------------------------------------------------------------------------------------------

void StartLinked() {
    Work = FreshWorkspace();
    Work.NumSets = 3;
    Work.NumParms = 17;
    for (long s = 1; s <= 3; ++s) {
        Work.SetRow[s] = ToInt16(2 * s); // rows 2, 4, 6
        Work.SetOfRow[2 * s] = ToInt16(s);
        Work.Parms[SlotOffset(s)] = 0.25F * static_cast<float>(s);
    }
    Work.ConstraintFlags = OffsetBit;
}

TEST(OffsetLinks, CopyTheOffsetOfTheLinkedRow) {
    StartLinked();
    Work.OffsetLink[2] = 6; // set 1 follows set 3
    ApplyOffsetLinks();
    EXPECT_EQ(Work.Parms[SlotOffset(1)], 0.75F);
    EXPECT_EQ(Work.Parms[SlotOffset(2)], 0.5F);
    EXPECT_EQ(Work.Parms[SlotOffset(3)], 0.75F);
}

TEST(OffsetLinks, DoNothingWithoutTheirFlag) {
    StartLinked();
    Work.OffsetLink[2] = 6;
    Work.ConstraintFlags = ConcentrationBit;
    ApplyOffsetLinks();
    EXPECT_EQ(Work.Parms[SlotOffset(1)], 0.25F);
}

TEST(OffsetLinks, SetTiedToItselfKeepsItsValue) {
    StartLinked();
    Work.OffsetLink[4] = 4;
    ApplyOffsetLinks();
    EXPECT_EQ(Work.Parms[SlotOffset(2)], 0.5F);
}

TEST(OffsetLinks, ConcentrationConstraintsMayStandBesideThem) {
    StartLinked();
    Work.OffsetLink[6] = 2;
    Work.ConstraintFlags = OffsetBit | ConcentrationBit;
    ApplyOffsetLinks();
    EXPECT_EQ(Work.Parms[SlotOffset(3)], 0.25F);
}

} // namespace
} // namespace Quillon
