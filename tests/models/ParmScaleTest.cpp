// The road between internal and displayed parameters.
#include "models/SEDEQ3.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

constexpr double R = 83144710.0;

// Set 1 in row 2: 15,000 rpm, 25 degrees, path 0.3, ratios 1.25 and 0.8.
void StartScale(int model, int concUnits) {
    Work = UnitWorkspace(model);
    Work.SetRow[1] = 2;
    Work.SetOfRow[1] = 0;
    Work.SetOfRow[2] = 1;
    Work.ScanRPM[2] = 15000.0F;
    Work.ScanTemperature[2] = 25.0F;
    Work.CellPath[2] = 0.3F;
    Work.ExtinctionRatio[0][2] = 1.25F;
    Work.ExtinctionRatio[1][2] = 0.8F;
    Work.ConcUnits = ToInt16(concUnits);
    Work.VbarA = 0.735F;
    Work.VbarB = 0.71F;
    Work.SolventDensity = 1.003994F;
    Work.AbsorpA = 1.5F;
    Work.AbsorpB = 0.5F;
    Work.ExtA = 40000.0F;
    Work.ExtB = 9000.0F;
    Work.FringeMassA = 2.7F;
    Work.FringeMassB = 2.9F;
    Work.RefrA = 20000.0F;
    Work.RefrB = 50000.0F;
    Work.Parms[1] = 3.0F;
    Work.Parms[3] = 5.0F;
}

double Ln(double v) {
    return std::log(v);
}

TEST(ParmScale, MassesFromSigma) {
    StartScale(8, 0);
    const double omega = 15000 * 3.14159265358979 / 30;
    const double all = R * 298.15 / (omega * omega * 1000);
    Work.MassUnits = 2;
    BuildParmScale();
    EXPECT_NEAR(Work.ParmScale[0], all / (1 - 1.003994 * 0.735), 1e-5 * Work.ParmScale[0]);
    EXPECT_NEAR(Work.ParmScale[5], all / (1 - 1.003994 * 0.71), 1e-5 * Work.ParmScale[5]);
    Work.MassUnits = 1;
    BuildParmScale();
    EXPECT_NEAR(Work.ParmScale[0], all, 1e-6 * all);
    EXPECT_EQ(Work.ParmScale[0], Work.ParmScale[5]);
    Work.MassUnits = 0;
    BuildParmScale();
    EXPECT_EQ(Work.ParmScale[0], 1.0F);
    EXPECT_EQ(Work.ParmScale[5], 1.0F);
}

TEST(ParmScale, WithoutDataTheReferenceState) {
    StartScale(1, 0);
    Work.DataChosen = FlagFalse;
    Work.MassUnits = 1;
    Work.CellPath[1] = 0.3F;
    BuildParmScale();
    const double omega = 20000 * 3.14159265358979 / 30;
    EXPECT_NEAR(Work.ParmScale[0], R * 293.15 / (omega * omega * 1000), 1e-4);
    EXPECT_EQ(Work.CellPath[1], 1.2F);
}

TEST(ParmScale, FillsEmptyMassesAndStoichiometries) {
    StartScale(8, 0);
    for (const long slot : {0L, 1L, 3L, 5L})
        Work.Parms[slot] = 0.0F;
    BuildParmScale();
    EXPECT_EQ(Work.Parms[0], 1.5F);
    EXPECT_EQ(Work.Parms[1], 2.0F);
    EXPECT_EQ(Work.Parms[3], 2.0F);
    EXPECT_EQ(Work.Parms[5], 3.0F);
    Work.Parms[0] = -1.0F;
    BuildParmScale();
    EXPECT_EQ(Work.Parms[0], -1.0F); // exactly 0 only
}

struct UnitFactors {
    double A, B;
};
UnitFactors FactorsOf(int units) {
    switch (units) {
    case 1:
        return {1.5 * 1.25 * 0.3, 0.5 * 0.8 * 0.3};
    case 2:
        return {40000 * 1.25 * 0.3, 9000 * 0.8 * 0.3};
    case 4:
        return {2.7 * 0.3, 2.9 * 0.3};
    case 5:
        return {20000 * 0.3, 50000 * 0.3};
    default:
        return {1, 1};
    }
}

TEST(ParmScale, SelfAssociationByUnits) {
    for (int units = 0; units <= 5; ++units) {
        StartScale(5, units);
        BuildParmScale();
        const UnitFactors u = FactorsOf(units);
        const bool molar = units == 2 || units == 5;
        const double two = 2 * Ln(u.A) - (molar ? Ln(3) : 0);
        const double four = 4 * Ln(units == 4 ? u.B : u.A) - (molar ? Ln(5) : 0); // B's in row 4, as stated
        EXPECT_NEAR(Work.ParmScale[2], two, 1e-5) << units;
        EXPECT_NEAR(Work.ParmScale[4], four, 1e-5) << units;
        for (const long s : {1L, 18L}) {
            EXPECT_NEAR(Work.ParmScale[SlotA(s)], -Ln(u.A), 1e-5) << units;
            EXPECT_NEAR(Work.ParmScale[SlotB(s)], -Ln(u.B), 1e-5) << units;
            EXPECT_EQ(Work.ParmScale[SlotOffset(s)], 1.0F) << units;
        }
        EXPECT_EQ(Work.ParmScale[1], 1.0F);
        EXPECT_EQ(Work.ParmScale[3], 1.0F);
        EXPECT_EQ(Work.ParmScale[7], 1.0F);
    }
}

TEST(ParmScale, MixturesByUnits) {
    const double signal = -Ln(40000 * 1.25 * 9000 * 0.8 * 0.3 * 0.3);
    for (int units : {0, 2, 3, 5})
        for (int model = 8; model <= 22; ++model) {
            StartScale(model, units);
            BuildParmScale();
            const double six = units == 0 || units == 3 ? signal : 0;
            EXPECT_NEAR(Work.ParmScale[6], six, 1e-5) << model;
            if (model > 9) {
                EXPECT_NEAR(Work.ParmScale[7], model == 11 || model == 21 ? 0 : six, 1e-5) << model;
            }
            if (model > 13) {
                EXPECT_NEAR(Work.ParmScale[2], model == 14 ? 0 : six, 1e-5) << model;
            }
        }
}

TEST(ParmScale, SeparateConstantsTakeTheScaleOfTheGlobalSlot) {
    for (const int units : {1, 2, 4, 5}) {
        for (const int model : {2, 3, 4, 5, 8, 9}) {
            if (model >= 8 && (units == 1 || units == 4)) continue; // no mg/mL for mixtures
            StartScale(model, units);
            Work.SeparateK = FlagTrue;
            BuildParmScale();
            for (const long s : {1L, 7L}) {
                const bool inB = model <= 5, inOffset = model == 4 || model == 5 || model >= 8;
                const float first = model >= 8 ? Work.ParmScale[6] : Work.ParmScale[2];
                const float second = model >= 8 ? first : Work.ParmScale[4];
                EXPECT_NEAR(Work.ParmScale[SlotB(s)], inB ? first : -Ln(FactorsOf(units).B), 1e-5) << model;
                EXPECT_EQ(Work.ParmScale[SlotOffset(s)], inOffset ? second : 1.0F) << model;
            }
        }
        StartScale(6, units);
        BuildParmScale();
        EXPECT_EQ(Work.ParmScale[SlotB(1)], Work.ParmScale[SlotA(1)]);
    }
}

TEST(ParmScale, CoefficientWithoutALogarithmIsARunTimeError) {
    StartScale(8, 2);
    Work.ExtA = 0.0F;
    EXPECT_THROW(BuildParmScale(), RuntimeError);
    StartScale(5, 1);
    Work.AbsorpA = -1.0F;
    EXPECT_THROW(BuildParmScale(), RuntimeError);
}

TEST(UserUnits, AdditiveSlots) {
    for (int model = 1; model <= 22; ++model)
        for (const bool separate : {false, true}) {
            Work = FreshWorkspace();
            Work.Model = ToInt16(model);
            Work.SeparateK = Flag(separate);
            for (const long slot : {0L, 1L, 3L, 5L})
                EXPECT_FALSE(IsAdditiveSlot(SlotNo(slot))) << model;
            for (const long slot : {2L, 4L, 6L, 8L, 9L, 59L, 60L})
                EXPECT_TRUE(IsAdditiveSlot(SlotNo(slot))) << model;
            EXPECT_EQ(IsAdditiveSlot(SlotNo(7)), model > 9) << model;
            const bool constant = separate && (model == 4 || model == 5 || model > 6);
            EXPECT_EQ(IsAdditiveSlot(SlotNo(10)), constant) << model;
            EXPECT_EQ(IsAdditiveSlot(SlotNo(61)), constant) << model;
        }
}

TEST(UserUnits, ThereAndBack) {
    Work = FreshWorkspace();
    Work.ParmScale[0] = 21.2F;
    Work.ParmScale[2] = -3.5F;
    EXPECT_FLOAT_EQ(ToUserUnits(SlotNo(0), 2.0F), 42.4F);
    EXPECT_FLOAT_EQ(ToInternal(SlotNo(0), 42.4F), 2.0F);
    EXPECT_FLOAT_EQ(ToUserUnits(SlotNo(2), 1.0F), -2.5F);
    EXPECT_FLOAT_EQ(ToInternal(SlotNo(2), -2.5F), 1.0F);
}

TEST(UserUnits, AMassOf42kDaIsItsSigma) {
    // 42 kDa, vbar 0.735, density 1.003994, 20,000 rpm, 20 degrees.
    StartScale(1, 0);
    Work.ScanRPM[2] = 20000.0F;
    Work.ScanTemperature[2] = 20.0F;
    Work.MassUnits = 2;
    BuildParmScale();
    const double omega = 20000 * 3.14159265358979 / 30;
    const double sigma = 42000 * (1 - 0.735 * 1.003994) * omega * omega / (R * 293.15);
    EXPECT_NEAR(ToInternal(SlotNo(0), 42.0F), sigma, 2e-5);
    EXPECT_NEAR(ToUserUnits(SlotNo(0), static_cast<float>(sigma)), 42.0, 4e-4);
}

TEST(RefreshUnits, BoundsKeepTheirInternalValue) {
    Script script;
    StartScale(2, 0);
    BuildParmNames();
    BuildParmScale();
    SetDefaultBounds();
    Work.Bounds[0][0] = 0.5F; // sigma
    Work.Bounds[1][0] = 4.0F;
    Work.Bounds[0][SlotA(1)] = -10.0F;
    Work.MassUnits = 2;
    Work.ConcUnits = 2;
    RefreshUnits();
    EXPECT_EQ(Work.ParmName[0], "MW A mon");
    EXPECT_NEAR(Work.Bounds[0][0], 0.5 * Work.ParmScale[0], 1e-5);
    EXPECT_NEAR(Work.Bounds[1][0], 4.0 * Work.ParmScale[0], 1e-4);
    EXPECT_NEAR(Work.Bounds[0][SlotA(1)], -10.0 - Ln(40000 * 1.25 * 0.3), 1e-4);
    // A change of vbar shows the bound in other kDa, its sigma unchanged.
    Work.VbarA = 0.70F;
    RefreshUnits();
    EXPECT_NEAR(ToInternal(SlotNo(0), Work.Bounds[0][0]), 0.5, 1e-6);
}

TEST(RefreshUnits, BoundsOfAMassCrossedWhenASampleBeganToFloat) {
    StartScale(1, 0);
    Work.MassUnits = 2;
    BuildParmNames();
    BuildParmScale();
    SetDefaultBounds();
    Work.VbarA = 1.1F; // 1 - vbar rho below 0
    RefreshUnits();
    ASSERT_LT(Work.ParmScale[0], 0.0F);
    EXPECT_EQ(Work.Bounds[0][0], 0.1F); // a floating sample has a mass, too
    EXPECT_EQ(Work.Bounds[1][0], 1e9F);
    EXPECT_LT(ToInternal(SlotNo(0), Work.Bounds[0][0]), 0.0F);
    // The range of sigma stays when masses are shown without the bracket.
    Work.MassUnits = 1;
    RefreshUnits();
    EXPECT_LT(Work.Bounds[0][0], Work.Bounds[1][0]);
    EXPECT_LT(Work.Bounds[1][0], 0.0F);
    Work.MassUnits = 2;
    RefreshUnits();
    EXPECT_NEAR(Work.Bounds[0][0], 0.1, 1e-6);
    EXPECT_LE(Work.Bounds[0][5], Work.Bounds[1][5]);
}

// --- default bounds
// -----------------------------------------------------------------------------------------------

void ExpectBounds(long slot, double low, double high, const std::string& what) {
    EXPECT_FLOAT_EQ(Work.Bounds[0][slot], static_cast<float>(low)) << what;
    EXPECT_FLOAT_EQ(Work.Bounds[1][slot], static_cast<float>(high)) << what;
}

struct BoundsRow {
    double Low, High;         // constants
    double ConcLow, ConcHigh; // concentrations
    double Offset;
    double Virial;
};
constexpr BoundsRow BoundsRows[] = {
    {-30, 100, -70, 4, 4, 0.1},        {-20, 120, -90, 4, 4, 0.1}, {-3, 150, -120, -3, 4, 1e4},
    {-20, 120, -60, 10, 20, 1.0 / 30}, {-20, 120, -90, 4, 4, 0.1}, {-3, 150, -120, -3, 4, 1e4},
};

TEST(DefaultBounds, ByUnits) {
    for (int units = 0; units <= 5; ++units) {
        const BoundsRow& row = BoundsRows[units];
        for (const int model : {1, 9, 10, 22}) {
            Work = FreshWorkspace();
            Work.Model = ToInt16(model);
            Work.ConcUnits = ToInt16(units);
            SetDefaultBounds();
            const std::string what = "units " + std::to_string(units) + " model " + std::to_string(model);
            for (const long slot : {0L, 5L})
                ExpectBounds(slot, 0.02, 30, what);
            for (const long slot : {1L, 3L})
                ExpectBounds(slot, 0.5, 100, what);
            for (const long slot : {2L, 4L, 6L})
                ExpectBounds(slot, row.Low, row.High, what);
            if (model >= 10)
                ExpectBounds(7, row.Low, row.High, what);
            else
                ExpectBounds(7, -row.Virial, row.Virial, what);
            for (const long s : {1L, 18L}) {
                ExpectBounds(SlotA(s), row.ConcLow, row.ConcHigh, what);
                ExpectBounds(SlotB(s), row.ConcLow, row.ConcHigh, what);
                ExpectBounds(SlotOffset(s), -row.Offset, row.Offset, what);
            }
        }
    }
}

TEST(DefaultBounds, MassesInKiloDalton) {
    for (const int units : {1, 2}) {
        Work = FreshWorkspace();
        Work.MassUnits = ToInt16(units);
        SetDefaultBounds();
        ExpectBounds(0, 0.1, 1e9, "mass");
        ExpectBounds(5, 0.1, 1e9, "mass");
    }
}

TEST(DefaultBounds, SeparateConstants) {
    for (const int model : {2, 3, 4, 5, 6, 8, 9}) {
        Work = FreshWorkspace();
        Work.Model = ToInt16(model);
        Work.SeparateK = FlagTrue;
        SetDefaultBounds();
        const bool inB = model <= 6, inOffset = model == 4 || model == 5 || model >= 8;
        const std::string what = "model " + std::to_string(model);
        ExpectBounds(SlotA(3), -70, 4, what);
        ExpectBounds(SlotB(3), inB ? -30 : -70, inB ? 100 : 4, what);
        ExpectBounds(SlotOffset(3), inOffset ? -30 : -4, inOffset ? 100 : 4, what);
    }
}

TEST(DefaultBounds, ExceptionsByModel) {
    Work = FreshWorkspace();
    Work.Model = 7;
    SetDefaultBounds();
    EXPECT_FLOAT_EQ(Work.Bounds[0][7], -100.0F);
    for (const int model : {13, 14}) {
        Work.Model = ToInt16(model);
        SetDefaultBounds();
        ExpectBounds(2, -10, 30, "model 13, 14");
        ExpectBounds(4, -30, 100, "model 13, 14");
    }
    Work.Model = 21;
    SetDefaultBounds();
    ExpectBounds(2, -4, 28, "model 21");
    ExpectBounds(4, -4, 28, "model 21");
}

} // namespace
} // namespace Quillon
