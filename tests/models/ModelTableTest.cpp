// The table of models against the rules of names, titles, flags, scales and bounds as they are written in
// words, for every model, option and unit.
#include "models/ModelTable.h"
#include "models/SEDEQ3.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <functional>

namespace Quillon {
namespace {

// --- what the table says, for the workspace's model, options and units ------------------------------------

std::string NameByTable(long slot) {
    const SlotRule& rule = RuleOfSlot(slot);
    const char* masses[] = {"Sigma ", "Mb ", "MW "};
    if (rule.Holds == Quantity::Mass) return std::string(masses[Work.MassUnits]) + rule.Name;
    return slot < 8 ? rule.Name : rule.Name + std::to_string((slot - 5) / 3);
}

std::string TitleByTable(long slot) {
    const char* toN[] = {"AU^1-N", "(mL/mg)^N-1", "(l/mol)^N-1", "fringes^1-N", "(mL/mg)^N-1", "(l/mol)^N-1"};
    const char* toM[] = {"AU^1-M", "(mL/mg)^M-1", "(l/mol)^M-1", "fringes^1-M", "(mL/mg)^M-1", "(l/mol)^M-1"};
    const char* mixed[] = {"per AU", "mL/mg", "l/mol", "per fringe", "mL/mg", "l/mol"};
    const char* concentration[] = {"AU", "mg/mL", "mol/l", "fringes", "mg/mL", "mol/l"};
    const char* signal[] = {"AU", "mg/mL", "AU", "fringes", "fringes", "fringes"};
    switch (RuleOfSlot(slot).Unit) {
    case SlotUnit::Nothing:
        return "";
    case SlotUnit::Mass:
        return Work.MassUnits == 0 ? "" : "kDa";
    case SlotUnit::OneToN:
        return toN[Work.ConcUnits];
    case SlotUnit::OneToM:
        return toM[Work.ConcUnits];
    case SlotUnit::Mixed:
        return mixed[Work.ConcUnits];
    case SlotUnit::Concentration:
        return concentration[Work.ConcUnits];
    case SlotUnit::Signal:
        return signal[Work.ConcUnits];
    }
    return "?";
}

// Slots that have the scale of another one without doubt, for each rule.
float ScaleByTable(long slot) {
    const auto& s = Work.ParmScale;
    switch (RuleOfSlot(slot).Scale) {
    case SlotScale::One:
        return 1.0F;
    case SlotScale::MassA:
        return s[0];
    case SlotScale::MassB:
        return s[5];
    case SlotScale::Zero:
        return 0.0F;
    case SlotScale::Mixed:
        return s[6];
    case SlotScale::SignalA:
        return s[SlotA(1)];
    case SlotScale::OneToN: // slots 2 and 4 of a model that has both
    case SlotScale::OneToM:
    case SlotScale::SignalB:
        break;
    }
    const Workspace before = Work;
    Work.Model = 5;
    Work.SeparateK = 0;
    BuildParmScale();
    const long of = RuleOfSlot(before.Model, before.SeparateK != 0, slot).Scale == SlotScale::OneToN ? 2
                    : RuleOfSlot(before.Model, before.SeparateK != 0, slot).Scale == SlotScale::OneToM
                        ? 4
                        : SlotB(1);
    const float scale = Work.ParmScale[of];
    Work = before;
    return scale;
}

struct Flagged {
    std::int16_t Map;
    float Value;
};
Flagged FlagByTable(long slot, std::int16_t map, float value, float n) {
    const SlotRule& rule = RuleOfSlot(slot);
    switch (rule.Use) {
    case SlotUse::AsIs:
        break;
    case SlotUse::Shown:
        return {map == SlotUnused ? std::int16_t{0} : map, value};
    case SlotUse::Held:
        return {SlotHeld, value};
    case SlotUse::Fixed:
        return {SlotHeld, rule.Fixed};
    case SlotUse::Hidden:
        return {SlotUnused, value};
    case SlotUse::HiddenZero:
        return {SlotUnused, 0.0F};
    case SlotUse::HiddenAsN:
        return {SlotUnused, n};
    case SlotUse::WhenNonIdeal:
        return Work.NonIdeal ? Flagged{map, value} : Flagged{SlotUnused, 0.0F};
    }
    return {map, value};
}

struct Range {
    float Lower, Upper;
    bool operator==(const Range&) const = default;
};
Range BoundsByTable(long slot) {
    const SlotRule& rule = RuleOfSlot(slot);
    const auto of = [](const Workspace& w, long i) { return Range{w.Bounds[0][i], w.Bounds[1][i]}; };
    const Range constant = of(Work, 6); // in every model
    if (rule.Bounds == SlotBounds::Own) return {rule.Lower, rule.Upper};
    Workspace single = Work;
    std::swap(Work, single);
    Work.Model = 1;
    Work.SeparateK = 0;
    SetDefaultBounds();
    std::swap(Work, single);
    switch (rule.Holds) {
    case Quantity::Mass:
        return of(single, 0);
    case Quantity::Stoichiometry:
        return of(single, 1);
    case Quantity::Constant:
        return constant;
    case Quantity::Virial:
        return rule.Bounds == SlotBounds::WideBelow ? Range{-constant.Upper, of(single, 7).Upper}
                                                    : of(single, 7);
    case Quantity::LnSignal:
        return of(single, SlotA(1));
    case Quantity::Offset:
    case Quantity::Unread:
        return of(single, SlotOffset(1));
    }
    return {};
}

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
        BuildParmNames();
        for (long slot = 0; slot < Work.MaxParms; ++slot) {
            EXPECT_EQ(NameByTable(slot), Work.ParmName[slot]) << slot;
            EXPECT_EQ(TitleByTable(slot), Work.ParmTitle[slot]) << slot;
        }
    });
}

TEST(ModelTable, ScalesAndTheirSign) {
    ForEachSituation([] {
        BuildParmScale();
        for (long slot = 0; slot < Work.MaxParms; ++slot) {
            EXPECT_EQ(ScaleByTable(slot), Work.ParmScale[slot]) << slot;
            EXPECT_EQ(IsAdditive(RuleOfSlot(slot).Holds), IsAdditiveSlot(slot)) << slot;
        }
    });
}

TEST(ModelTable, FlagsAndForcedValues) {
    ForEachSituation([] {
        for (const std::int16_t map : {std::int16_t{0}, std::int16_t{5}, SlotHeld, SlotUnused}) {
            for (auto& flag : Work.FreeMap)
                flag = map;
            Work.Parms[5] = 3.0F;
            Work.Parms[7] = 0.25F;
            const auto before = Work.Parms;
            ApplyModelFlags();
            for (long slot = 0; slot < Work.MaxParms; ++slot) {
                const Flagged expected = FlagByTable(slot, map, before[slot], before[1]);
                EXPECT_EQ(expected.Map, Work.FreeMap[slot]) << slot;
                EXPECT_EQ(expected.Value, Work.Parms[slot]) << slot;
            }
        }
    });
}

TEST(ModelTable, DefaultBounds) {
    ForEachSituation([] {
        SetDefaultBounds();
        for (long slot = 0; slot < Work.MaxParms; ++slot)
            EXPECT_EQ(BoundsByTable(slot), (Range{Work.Bounds[0][slot], Work.Bounds[1][slot]})) << slot;
    });
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
        EXPECT_EQ(traits.SharedTo, model == 18 ? 2 : model == 21 ? 7 : -1) << model;
        EXPECT_EQ(traits.SharedFrom, model == 18 ? 4 : model == 21 ? 6 : -1) << model;
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
        EXPECT_EQ(RuleOfSlot(model, true, SlotA(2)).Common, -1) << model;
        EXPECT_EQ(RuleOfSlot(model, true, SlotB(2)).Common, model <= 6 ? 2 : -1) << model;
        EXPECT_EQ(RuleOfSlot(model, true, SlotOffset(2)).Common, model == 4 || model == 5 ? 4
                                                                 : model > 6              ? 6
                                                                                          : -1)
            << model;
        for (long slot = 0; slot < 11; ++slot)
            EXPECT_EQ(RuleOfSlot(model, false, slot).Common, -1) << model;
    }
}

} // namespace
} // namespace Quillon
