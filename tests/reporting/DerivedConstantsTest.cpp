// Kd, log10 K and Delta G against mass action: concentrations that fulfil it, put in by hand.
#include "reporting/values/DerivedConstants.h"
#include "fit/Undetermined.h"

#include "HandBuiltFit.h"
#include "models/table/ConstantConvention.h"
#include "models/table/ModelTable.h"
#include "reporting/MethodsTable.h"
#include "reporting/values/ParmLines.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

// Signals of the first set from moles per litre.
constexpr double Coefficient = 52000.0;
constexpr double Path = 1.2;
constexpr double Ratio = 1.5;

Workspace Fit() {
    Workspace w = HandBuiltFit();
    w.ExtA = static_cast<float>(Coefficient);
    w.ExtinctionRatio[0][1] = static_cast<float>(Ratio);
    w.CellPath[1] = static_cast<float>(Path);
    return w;
}

// ln K of the program for a monomer and an N-mer of these concentrations in mol/L: both as signals, of which
// an N-mer shows N times that of a monomer.
float LnSignalK(double monomer, double oligomer, double n) {
    const double u = Coefficient * Ratio * Path;
    return static_cast<float>(std::log(n * u * oligomer) - n * std::log(u * monomer));
}

TEST(DerivedConstants, DimerIsThatOfMassAction) {
    Script script;
    Work = Fit();
    Work.Parms[2] = LnSignalK(2e-6, 3e-6, 2.0); // K = 3e-6 / (2e-6)^2 = 7.5e5 L/mol
    Work.ScanTemperature[1] = 18.0F;
    Work.ScanTemperature[2] = 22.0F; // 293.15 K on average
    const std::vector<DerivedConstant> all = DerivedConstants();
    ASSERT_EQ(all.size(), 1U);
    const DerivedConstant& k = all.front();
    ASSERT_TRUE(k.Value) << k.Reason;
    EXPECT_NEAR(k.Value->LnK, std::log(7.5e5), 2e-6);
    EXPECT_NEAR(k.Value->Log10K, 5.8750612633917, 1e-6); // of a table
    EXPECT_NEAR(k.Value->Kd, 4.0 / 3.0 * 1e-6, 1e-11);
    EXPECT_NEAR(*k.Value->KdRoot, k.Value->Kd, 1e-15);
    EXPECT_NEAR(k.Value->DeltaG, -8.31446262 * 293.15 * std::log(7.5e5) / 1000.0, 1e-4);
    EXPECT_EQ(k.Unit, "mol/L");
    EXPECT_EQ(k.Convention, "macroscopic, 2 A = A2");
    EXPECT_EQ(k.Slot, 2);
}

TEST(DerivedConstants, NMerHasARootInMolesPerLitre) {
    Script script;
    Work = Fit();
    Work.Model = 3;
    Work.Parms[1] = 4.0F;
    Work.Parms[2] = LnSignalK(2e-6, 3e-6, 4.0); // K = 3e-6 / 1.6e-23
    const DerivedConstant k = DerivedConstants().front();
    ASSERT_TRUE(k.Value) << k.Reason;
    EXPECT_NEAR(k.Value->Kd / (1.6e-23 / 3e-6), 1.0, 1e-5);
    EXPECT_NEAR(*k.Value->KdRoot / std::cbrt(1.6e-23 / 3e-6), 1.0, 1e-5);
    EXPECT_EQ(k.Unit, "(mol/L)^3");
    EXPECT_EQ(k.Bonds, 3.0);
}

TEST(DerivedConstants, LimitsAreThoseOfEachNumberByItself) {
    Script script;
    Work = Fit();
    const DerivedConstant k = DerivedConstants().front(); // the error of ln K is 0.25
    ASSERT_TRUE(k.Lower && k.Upper);
    EXPECT_NEAR(k.Lower->LnK, k.Value->LnK - 0.25, 1e-6);
    EXPECT_NEAR(k.Upper->LnK, k.Value->LnK + 0.25, 1e-6);
    EXPECT_NEAR(k.Lower->Kd, k.Value->Kd * std::exp(-0.25), 1e-6 * k.Value->Kd);
    EXPECT_NEAR(k.Upper->Kd, k.Value->Kd * std::exp(0.25), 1e-6 * k.Value->Kd);
    EXPECT_NEAR(*k.Lower->KdRoot, k.Lower->Kd, 1e-6 * k.Lower->Kd);
    EXPECT_LT(k.Lower->DeltaG, k.Value->DeltaG);
    EXPECT_NEAR(k.Upper->DeltaG - k.Value->DeltaG, 8.31446262e-3 * 293.15 * 0.25, 1e-6);
}

TEST(DerivedConstants, SearchedLimitsTakeTheirPlace) {
    Script script;
    Work = Fit();
    Work.LimitsDone = FlagTrue;
    Work.ParmLimits[0].Recreate(3, 1.0F); // ln K is 1.25
    Work.ParmLimits[1].Recreate(3, 2.25F);
    const DerivedConstant k = DerivedConstants().front();
    ASSERT_TRUE(k.Lower && k.Upper);
    EXPECT_NEAR(k.Lower->LnK, k.Value->LnK - 0.25, 1e-9);
    EXPECT_NEAR(k.Upper->LnK, k.Value->LnK + 1.0, 1e-9);
    EXPECT_NEAR(k.Lower->Kd / k.Value->Kd, std::exp(-1.0), 1e-9);
    EXPECT_NEAR(*k.Upper->KdRoot / *k.Value->KdRoot, std::exp(0.25), 1e-9);
}

// The variance of a sum of correlated numbers, with the covariances set down by hand.
TEST(DerivedConstants, AFittedStoichiometryBringsItsErrorAlong) {
    Script script;
    Work = Fit();
    Work.Model = 3;
    Work.Parms[1] = 3.0F;
    Work.FreeIndex[0] = 1; // N in place of the mass
    Work.FreeMap[1] = 0;
    Work.FreeMap[0] = SlotHeld;
    Work.NormMatrix(0, 0) = 0.04;
    Work.NormMatrix(0, 1) = Work.NormMatrix(1, 0) = -0.09;
    const DerivedConstant k = DerivedConstants().front();
    const double byN = std::log(Coefficient * Ratio * Path) - 1.0 / 3.0;
    const double variance = 0.25 * (0.25 + byN * byN * 0.04 - 2.0 * byN * 0.09);
    EXPECT_NEAR(k.Upper->LnK - k.Value->LnK, std::sqrt(variance), 1e-6);
    // ln Kd^(1/2) = -(ln K + (N - 1) ln U - ln N) / (N - 1): its slope in N by a difference.
    const auto root = [&](double n) {
        return -(1.25 + (n - 1.0) * std::log(Coefficient * Ratio * Path) - std::log(n)) / (n - 1.0);
    };
    const double slope = (root(3.0001) - root(2.9999)) / 0.0002;
    const double rootVariance = 0.25 * (0.25 / 4.0 + slope * slope * 0.04 - 2.0 * 0.5 * slope * -0.09);
    EXPECT_NEAR(std::log(*k.Upper->KdRoot / *k.Value->KdRoot), std::sqrt(rootVariance), 1e-5);
}

TEST(DerivedConstants, WithoutAMolarCoefficientThereIsNone) {
    Script script;
    Work = HandBuiltFit(); // its coefficient is the one that the program starts with
    const DerivedConstant k = DerivedConstants().front();
    EXPECT_FALSE(k.Value);
    EXPECT_EQ(k.Reason, "no molar extinction coefficient is given");
    EXPECT_TRUE(DerivedLines().empty());
}

TEST(DerivedConstants, HeldOnesHaveNoLimits) {
    Script script;
    Work = Fit();
    Work.FreeMap[2] = SlotHeld;
    const DerivedConstant k = DerivedConstants().front();
    EXPECT_TRUE(k.Value);
    EXPECT_FALSE(k.Lower || k.Upper);
}

// A fit that came without its inverse was asked for errors all the same.
TEST(DerivedConstants, WithoutTheInverseThereAreNoErrors) {
    Script script;
    Work = Fit();
    const std::string whole = MethodsText(MethodsFormat::Csv);
    EXPECT_TRUE(HasError(SlotNo(2)));
    EXPECT_TRUE(DerivedConstants().front().Lower);
    Work.NormMatrix = {};
    EXPECT_FALSE(HasError(SlotNo(2)));
    const DerivedConstant k = DerivedConstants().front();
    EXPECT_TRUE(k.Value);
    EXPECT_FALSE(k.Lower || k.Upper);
    EXPECT_NE(MethodsText(MethodsFormat::Csv), whole);
    EXPECT_EQ(AccuracyText(FreePos(1)), "");
}

// Each constant that a model shows says what it counts.
TEST(DerivedConstants, EveryModelSaysWhatItsConstantsCount) {
    for (int model = 2; model <= 22; ++model)
        for (const long slot : {2L, 4L, 6L, 7L}) {
            const SlotRule& rule = RuleOfSlot(model, false, SlotNo(slot));
            const bool shown = rule.Use != SlotUse::Hidden && rule.Use != SlotUse::HiddenZero;
            if (rule.Holds != Quantity::Constant || !shown) continue;
            const std::string words = ConstantConvention(model, SlotNo(slot));
            const bool known = words.starts_with("macroscopic") || words.starts_with("intrinsic") ||
                               words.starts_with("cooperativity");
            EXPECT_TRUE(known) << model << " slot " << slot << ": " << words;
        }
}

} // namespace
} // namespace Quillon
