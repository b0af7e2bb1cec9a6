// What is looked up in the table of models against the rules of names, titles, flags, scales and bounds as
// ladders of conditions, for every model, option and unit.
#include "models/SEDEQ3.h"

#include "SlotLadders.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace Quillon {
namespace {

// --- all situations ----------------------------------------------------------------------------------------

void Start(int model, bool nonIdeal, bool separateK, int massUnits, int concUnits) {
    Work = UnitWorkspace(model);
    Work.NonIdeal = Flag(nonIdeal);
    Work.SeparateK = Flag(separateK);
    Work.MassUnits = ToInt16(massUnits);
    Work.ConcUnits = ToInt16(concUnits);
    Work.CellPath[1] = 0.3F;
    Work.ExtinctionRatio[0][1] = 1.25F;
    Work.ExtinctionRatio[1][1] = 0.8F;
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
    Work.Parms[7] = 0.25F;
}

void ForEachSituation(const std::function<void()>& check) {
    for (int model = 1; model <= LastReservedModel; ++model)
        for (const bool nonIdeal : {false, true})
            for (const bool separateK : {false, true})
                for (int units = 0; units <= 5; ++units) {
                    if (nonIdeal && !ModelAllowsNonIdeal(model)) continue;
                    if (separateK && !ModelAllowsSeparateK(model)) continue;
                    SCOPED_TRACE("model " + std::to_string(model) + (nonIdeal ? " non-ideal" : "") +
                                 (separateK ? " separate" : "") + " units " + std::to_string(units));
                    Start(model, nonIdeal, separateK, units % 3, units);
                    check();
                }
}

TEST(ModelTable, NamesAndTitles) {
    ForEachSituation([] {
        LadderNames();
        const auto names = Work.ParmName;
        const auto titles = Work.ParmTitle;
        BuildParmNames();
        EXPECT_TRUE(names == Work.ParmName);
        EXPECT_TRUE(titles == Work.ParmTitle);
        EXPECT_EQ(Work.ParmName.Hi(), 61);
    });
}

// The factors and addends of the workspace of Start: path 0.3, ratios 1.25 and 0.8, N = 3, M = 5.
LadderAddends AddendsByHand() {
    const auto ln = [](double v) { return std::log(v); };
    const double a[] = {1, 1.5 * 1.25 * 0.3, 40000 * 1.25 * 0.3, 1, 2.7 * 0.3, 20000 * 0.3};
    const double b[] = {1, 0.5 * 0.8 * 0.3, 9000 * 0.8 * 0.3, 1, 2.9 * 0.3, 50000 * 0.3};
    const auto units = static_cast<std::size_t>(Work.ConcUnits);
    const bool molar = units == 2 || units == 5;
    const double uA = a[units];
    const double uB = b[units];
    const double w = 20000 * 3.14159265358979 / 30;
    const double buoyant = 83144710.0 * 293.15 / (w * w * 1000);
    const double density = static_cast<double>(Work.SolventDensity);
    const auto mass = [&](float vbar) {
        return static_cast<float>(Work.MassUnits == 2   ? buoyant / (1 - density * static_cast<double>(vbar))
                                  : Work.MassUnits == 1 ? buoyant
                                                        : 1.0);
    };
    return {mass(Work.VbarA),
            mass(Work.VbarB),
            static_cast<float>(2 * ln(uA) - (molar ? ln(3) : 0)),
            static_cast<float>(4 * ln(units == 4 ? uB : uA) - (molar ? ln(5) : 0)),
            static_cast<float>(units == 0 || units == 3 ? -ln(40000 * 1.25 * 9000 * 0.8 * 0.3 * 0.3) : 0),
            static_cast<float>(-ln(uA)),
            static_cast<float>(-ln(uB))};
}

TEST(ModelTable, Scales) {
    ForEachSituation([] {
        LadderScale(AddendsByHand());
        const auto expected = Work.ParmScale;
        BuildParmScale();
        for (long slot = 0; slot < Work.MaxParms; ++slot)
            // The optics are singles, the numbers by hand are not.
            EXPECT_NEAR(Work.ParmScale[slot], expected[slot],
                        1e-6F * std::max(1.0F, std::fabs(expected[slot])))
                << slot;
    });
}

TEST(ModelTable, SignsAndSteps) {
    ForEachSituation([] {
        for (const float virial : {0.0F, 0.25F}) {
            Work.Parms[7] = virial;
            for (long slot = 0; slot < Work.MaxParms; ++slot) {
                EXPECT_EQ(IsAdditiveSlot(SlotNo(slot)), LadderIsAdditive(slot)) << slot;
                EXPECT_EQ(DerivStep(SlotNo(slot)), LadderDerivStep(slot)) << slot;
            }
        }
    });
}

TEST(ModelTable, FlagsAndForcedValues) {
    ForEachSituation([] {
        for (const std::int16_t map : {std::int16_t{0}, std::int16_t{5}, SlotHeld, SlotUnused}) {
            Work.Parms[5] = 3.0F;
            Work.Parms[7] = 0.25F;
            for (auto& flag : Work.FreeMap)
                flag = map;
            const Workspace before = Work;
            LadderFlags();
            const Workspace expected = Work;
            Work = before;
            ApplyModelFlags();
            EXPECT_TRUE(Work.FreeMap == expected.FreeMap);
            EXPECT_TRUE(Work.Parms == expected.Parms);
        }
    });
}

TEST(ModelTable, DefaultBounds) {
    ForEachSituation([] {
        LadderBounds();
        const auto expected = Work.Bounds;
        SetDefaultBounds();
        EXPECT_TRUE(Work.Bounds == expected);
    });
}

TEST(ModelTable, StandardValues) {
    const float standard[] = {1.5F, 2.0F, 0.0F, 2.0F, 0.0F, 3.0F, 0.0F, 0.0F};
    for (int model = 1; model <= LastReservedModel; ++model)
        for (long slot = 0; slot < 8; ++slot)
            EXPECT_EQ(RuleOfSlot(model, false, SlotNo(slot)).Standard, standard[slot])
                << model << " " << slot;
}

TEST(ModelTable, OptionsAndKindsOfModels) {
    for (int model = -1; model <= LastReservedModel; ++model) {
        const ModelTraits& traits = TraitsOfModel(model);
        EXPECT_EQ(traits.NonIdeal, ModelAllowsNonIdeal(model)) << model;
        EXPECT_EQ(traits.SeparateK, ModelAllowsSeparateK(model)) << model;
        EXPECT_EQ(traits.OffsetGoes, OffsetSlotHoldsConstant(model, true)) << model;
        EXPECT_EQ(traits.TwoSpecies, model > 6) << model;
        EXPECT_EQ(traits.Hetero, model >= 8) << model;
        EXPECT_EQ(traits.LoadingsNeedMolar, model == 7 || model == 9) << model;
        EXPECT_EQ(traits.CooperativityNote, model == 11) << model;
        EXPECT_EQ(traits.GivesBaseline, model == 1) << model;
        EXPECT_EQ(traits.General, model == 2 ? 3 : model == 4 ? 5 : 0) << model;
        EXPECT_EQ(traits.SharedTo.Number, model == 18 ? 2 : model == 21 ? 7 : -1) << model;
        EXPECT_EQ(traits.SharedFrom.Number, model == 18 ? 4 : model == 21 ? 6 : -1) << model;
    }
}

// The guess is linear in the constants: a step of one of them by 1 moves ln c(A) by its share.
TEST(ModelTable, SharesOfConstantsInTheGuess) {
    for (int model = 1; model <= LastModelNumber; ++model) {
        Start(model, false, false, 0, 0);
        Work.SetSignalScale[1] = 1.0F;
        InitialGuesses(false);
        const float at = Work.Parms[SlotA(1)];
        const ModelTraits& traits = TraitsOfModel(model);
        const double parts = traits.Guess == FirstGuess::AllInAB     ? 2.0
                             : traits.Guess == FirstGuess::AllInABBA ? 4.0
                                                                     : 3.0;
        const long slots[] = {6, 7, 4, 2};
        for (std::size_t i = 0; i < 4; ++i) {
            const Workspace before = Work;
            Work.Parms[slots[i]] += 1.0F;
            InitialGuesses(false);
            EXPECT_NEAR(Work.Parms[SlotA(1)] - at, traits.GuessK[i] / parts, 2e-6) << model << " " << i;
            Work = before;
        }
    }
}

// A set's own constant goes by its global slot, whichever way the option is switched.
TEST(ModelTable, SlotsOfSetsThatChangeHands) {
    for (int model = 1; model <= LastReservedModel; ++model) {
        EXPECT_EQ(RuleOfSlot(model, true, SlotA(SetNo(2))).Common, NoSlot) << model;
        EXPECT_EQ(RuleOfSlot(model, true, SlotB(SetNo(2))).Common, model <= 6 ? SlotNo(2) : NoSlot) << model;
        EXPECT_EQ(RuleOfSlot(model, true, SlotOffset(SetNo(2))).Common.Number, model == 4 || model == 5 ? 4
                                                                               : model > 6              ? 6
                                                                                                        : -1)
            << model;
        for (long slot = 0; slot < 11; ++slot)
            EXPECT_EQ(RuleOfSlot(model, false, SlotNo(slot)).Common, NoSlot) << model;
    }
}

} // namespace
} // namespace Quillon
