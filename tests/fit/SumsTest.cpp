// The sums of a pass against the plain loop over all points and all pairs of parameters: the same bits, for
// every model and option, with constraints, links and any grouping into blocks.
#include "fit/GNLLSQ.h"
#include "models/SEDEQ3.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <random>

namespace Quillon {
namespace {

// Sets of different speed, path and extinction with a signal near the model's, in plain rows of the table.
void MakeSets(long sets, long points, unsigned seed) {
    std::mt19937 random(seed);
    std::normal_distribution<float> noise(0.0F, 0.005F);
    Work.NumSets = ToInt16(sets);
    Work.NumParms = ToInt16(3 * sets + 8);
    Work.SetPts.Recreate(sets);
    std::vector<float> x;
    std::vector<float> y;
    std::vector<std::int16_t> set;
    for (long s = 1; s <= sets; ++s) {
        Work.SetRow[s] = Work.SetOfRow[s] = ToInt16(s);
        Work.ScanRPM[s] = 10000.0F + 4000.0F * static_cast<float>(s % 3);
        Work.ScanTemperature[s] = 20.0F;
        Work.CellPath[s] = s % 2 ? 1.2F : 0.3F;
        Work.ExtinctionRatio[0][s] = 1.0F + 0.1F * static_cast<float>(s - 1);
        Work.ExtinctionRatio[1][s] = 1.0F + 0.05F * static_cast<float>(s - 1);
        const float speed = Work.ScanRPM[s] / Work.ScanRPM[1];
        Work.SetSigmaScale[s] = speed * speed;
        Work.SetSignalScale[s] = Work.CellPath[s] / Work.CellPath[1];
        Work.ScanPoints[s] = ToInt16(points);
        Work.FitRange[0][s] = 1;
        Work.FitRange[1][s] = ToInt16(points);
        Work.ScanValue[s].Recreate(points);
        for (long p = 1; p <= points; ++p) {
            const float at = -0.8F + 1.6F * static_cast<float>(p - 1) / static_cast<float>(points);
            x.push_back(at);
            y.push_back(0.2F * std::exp(1.1F * at) + noise(random));
            set.push_back(ToInt16(s));
            Work.ScanValue[s][p] = y.back();
        }
        long count = points;
        for (const float loading : {Work.ConcConstraintA[s], Work.ConcConstraintB[s]})
            if (loading > 0.0F && (Work.ConstraintFlags & ConcentrationBit)) {
                x.push_back(PointMarker);
                y.push_back(loading * Work.ScanValue[s][points] / 0.1F);
                set.push_back(ToInt16(s));
                ++count;
            }
        Work.SetPts[s] = ToInt16(count);
    }
    const auto all = static_cast<long>(x.size());
    Work.NumPts = ToInt16(all);
    Work.PtX.Recreate(all);
    Work.PtY.Recreate(all);
    Work.PtSet.Recreate(all);
    std::copy(x.begin(), x.end(), Work.PtX.Data());
    std::copy(y.begin(), y.end(), Work.PtY.Data());
    std::copy(set.begin(), set.end(), Work.PtSet.Data());
}

// A model with every slot that it uses fitted, at parameters that give all species some share.
void ChooseModel(int model, bool nonIdeal, bool separateK) {
    Work.Model = ToInt16(model);
    Work.NonIdeal = Flag(nonIdeal);
    Work.SeparateK = Flag(separateK);
    Work.DataChosen = FlagTrue;
    AdoptModel(1, 0, StandardMaxParms, true);
    Work.Parms[0] = 0.9F;
    Work.Parms[1] = model == 3 || model == 5 ? 2.6F : 2.0F;
    Work.Parms[2] = model >= 12 ? 8.0F : 0.7F;
    Work.Parms[3] = model == 5 ? 5.0F : 4.0F;
    Work.Parms[4] = model >= 15 ? 9.0F : 0.4F;
    Work.Parms[5] = 1.3F;
    Work.Parms[6] = 9.0F;
    Work.Parms[7] = model >= 10 ? 8.5F : nonIdeal ? 0.05F : 0.0F;
    for (long s = 1; s <= Work.NumSets; ++s) {
        Work.Parms[SlotA(s)] = -2.0F - 0.1F * static_cast<float>(s);
        Work.Parms[SlotB(s)] = separateK && model <= 6 ? 0.5F : -2.2F + 0.1F * static_cast<float>(s);
        Work.Parms[SlotOffset(s)] = OffsetSlotHoldsConstant(model, separateK) ? 0.3F : 0.002F;
    }
    ApplyModelFlags();
    Work.NumFree = 0;
    for (long k = 0; k < Work.NumParms; ++k) {
        if (Work.FreeMap[k] < SlotHeld) continue;
        Work.FreeIndex[Work.NumFree] = ToInt16(k);
        Work.FreeMap[k] = Work.NumFree++;
    }
    ResetFitFunction();
}

void ExpectSameBits(double a, double b, const char* what) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(a), std::bit_cast<std::uint64_t>(b))
        << what << ": " << a << " " << b;
}

void ExpectSumsOfPlainLoop() {
    AccumulateSumsPlainly();
    ASSERT_FALSE(Work.AbortFit);
    const auto matrix = Work.NormMatrix;
    const auto vector = Work.NormVector;
    const auto fit = Work.PtFit;
    const double sum = Work.SumSq;
    AccumulateSums();
    ASSERT_FALSE(Work.AbortFit);
    ExpectSameBits(Work.SumSq, sum, "SumSq");
    EXPECT_TRUE(fit == Work.PtFit);
    for (long a = 0; a < Work.NumFree; ++a) {
        ExpectSameBits(Work.NormVector[a], vector[a], "NormVector");
        for (long b = 0; b < Work.NumFree; ++b)
            ExpectSameBits(Work.NormMatrix(a, b), matrix(a, b), "NormMatrix");
    }
    CalcSumSq();
    // Without the stepped calls between, the fixed-point steps of model 1 start elsewhere and end within
    // their tolerance of 1e-8 elsewhere.
    if (Work.Model == 1 && Work.NonIdeal)
        EXPECT_NEAR(Work.SumSq, sum, 1e-6 * sum);
    else
        ExpectSameBits(Work.SumSq, sum, "CalcSumSq");
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

} // namespace
} // namespace Quillon
