// Names, titles and fit flags of the parameter slots, and what a choice of model brings with it.
#include "models/ModelChoice.h"
#include "models/SEDEQ3.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

struct ModelText {
    int Model;
    const char* Dialog;
    const char* Report;
};
constexpr ModelText ModelTexts[] = {
    {1, "single species", "single species"},
    {2, "monomer <-> dimer", "monomer - dimer"},
    {3, "monomer <-> N-mer", "monomer - N-mer"},
    {4, "monomer <-> dimer <-> tetramer", "monomer - dimer - tetramer"},
    {5, "monomer <-> N-mer <-> M-mer", "monomer - N-mer - M-mer"},
    {6, "monomer <-> N-mer + inactive monomer", "monomer - N-mer + inactive monomer"},
    {7, "two non-interacting monomeric species", "two non-interacting monomeric species"},
    {8, "mixed association A + B <-> AB", "mixed association A + B <-> AB"},
    {9, "A+2B<->AB+B<->AB2, one type of site", "A+2B <-> AB+B <-> AB2, one type of site"},
    {10, "A+2B<->AB+B<->AB2, two independent sites", "A+2B <-> AB+B <-> AB2, two independent sites"},
    {11, "A+2B<->AB+B<->AB2, two equivalent, cooperative sites",
     "A+2B <-> AB+B <-> AB2, one type of cooperative site"},
    {12, "A+2B<->AB+B<->AB2; 2B<->B2; one type of site", "A+2B <-> AB+B <-> AB2; 2B<->B2; 1 type of site"},
    {13, "A+2B<->AB+B<->AB2; 2B<->B2; two independent sites",
     "A+2B <-> AB+B <-> AB2; 2B<->B2; 2 types of site"},
    {14, "A+2B<->AB+B<->AB2, two inequivalent, cooperative sites",
     "A+2B <-> AB+B <-> AB2, 2 types of cooperative site"},
    {15, "2A+2B<->2AB<->ABBA", "2A+2B <-> 2AB <-> ABBA"},
    {16, "2A+2B<->...<->ABBA, no 2B<->B2, Kdim(1)=Kdim(2)",
     "2A+2B <->...<-> ABBA, no 2B<->B2, Kdim(1)=Kdim(2)"},
    {17, "2A+2B<->...<->ABBA, no 2B<->B2, Kdim(1)<>Kdim(2)",
     "2A+2B <->...<-> ABBA, no 2B<->B2, Kdim(1)<>Kdim(2)"},
    {18, "2A+2B<->...<->ABBA, Kdim(0)=Kdim(1), Kdim(1)<>Kdim(2)",
     "2A+2B <->...<-> ABBA, Kdim(0)=Kdim(1)<>Kdim(2)"},
    {19, "2A+2B<->...<->ABBA, Kdim(0)<>Kdim(1), Kdim(1)=Kdim(2)",
     "2A+2B <->...<-> ABBA, Kdim(0)<>Kdim(1)=Kdim(2)"},
    {20, "2A+2B<->...<->ABBA, Kdim(0)<>Kdim(1)<>Kdim(2)", "2A+2B <->...<-> ABBA, Kdim(0)<>Kdim(1)<>Kdim(2)"},
    {21, "2A+2B<->...<->ABBA, two B binding sites K1=K2, 2B<->B2",
     "2A+2B <->...<-> ABBA, 2 B sites, K1=K2, 2B<->B2"},
    {22, "2A+2B<->...<->ABBA, two B binding sites K1<>K2, 2B<->B2",
     "2A+2B <->...<-> ABBA, 2 B sites, K1<>K2, 2B<->B2"},
};

TEST(Catalogue, NamesOfAllModels) {
    for (const ModelText& text : ModelTexts) {
        EXPECT_EQ(ModelDialogName(text.Model), text.Dialog);
        EXPECT_EQ(ModelReportName(text.Model), text.Report);
    }
    for (const int none : {-1, 0, 23, 24, 25}) {
        EXPECT_EQ(ModelDialogName(none), "");
        EXPECT_EQ(ModelReportName(none), "");
    }
}

TEST(Catalogue, ListOfARestoredFitHasTwoEmptyRows) {
    Work = FreshWorkspace();
    FillModelNames();
    EXPECT_EQ(Work.ModelName.Hi(), 22);
    EXPECT_EQ(Work.ModelName[22], ModelTexts[21].Dialog);
    Work.ModelCount = 24;
    FillModelNames();
    ASSERT_EQ(Work.ModelName.Hi(), 24);
    EXPECT_EQ(Work.ModelName[22], ModelTexts[21].Dialog);
    EXPECT_EQ(Work.ModelName[23], "");
    EXPECT_EQ(Work.ModelName[24], "");
}

TEST(Catalogue, OptionsAllowed) {
    for (int model = 1; model <= 24; ++model) {
        EXPECT_EQ(ModelAllowsNonIdeal(model), model <= 5) << model;
        EXPECT_EQ(ModelAllowsSeparateK(model), (model >= 2 && model <= 6) || model == 8 || model == 9)
            << model;
        EXPECT_EQ(OffsetSlotHoldsConstant(model, true), model == 4 || model == 5 || model > 6) << model;
        EXPECT_FALSE(OffsetSlotHoldsConstant(model, false)) << model;
    }
}

// --- fit flags
// -----------------------------------------------------------------------------------------------

// Flags of slots 0..7 from a table where all were fitted: f fitted, h held, - not used.
struct FlagRow {
    int Model;
    const char* Global;
    bool UsesB; // the second slot of each set
};
constexpr FlagRow PlainFlags[] = {
    {1, "f-------", false}, {2, "fhf-----", false}, {3, "fff-----", false}, {4, "fhfhf---", false},
    {5, "fffff---", false}, {6, "fff-----", true},  {7, "h----h--", true},  {8, "h----hf-", true},
    {9, "h----hf-", true},  {10, "h----hff", true}, {11, "h----hff", true}, {12, "h-f--hf-", true},
    {13, "h-f--hff", true}, {14, "h-f--hff", true}, {15, "h---fhf-", true}, {16, "h---fhf-", true},
    {17, "h---fhff", true}, {18, "h---fhff", true}, {19, "h-f-fhf-", true}, {20, "h-f-fhff", true},
    {21, "h-f--hf-", true}, {22, "h-f--hff", true}, {23, "h-f--hf-", true}, {24, "h-f--hff", true},
};
constexpr FlagRow SeparateFlags[] = {
    {2, "fh------", true}, {3, "ff------", true}, {4, "fh-h----", true}, {5, "ff-f----", true},
    {6, "fff-----", true}, {8, "h----h--", true}, {9, "h----h--", true},
};
constexpr FlagRow NonIdealFlags[] = {
    {1, "f------f", false}, {2, "fhf----f", false}, {3, "fff----f", false},
    {4, "fhfhf--f", false}, {5, "fffff--f", false},
};

std::string GlobalFlags() {
    std::string flags;
    for (long i = 0; i < 8; ++i)
        flags += Work.FreeMap[i] >= 0 ? 'f' : Work.FreeMap[i] == SlotHeld ? 'h' : '-';
    return flags;
}

void StartTwoSets(int model) {
    Work = FreshWorkspace();
    Work.Model = ToInt16(model);
    Work.NumSets = 2;
    Work.NumParms = 14;
    Work.SetRow[1] = Work.SetOfRow[1] = 1;
    Work.SetRow[2] = 3;
    Work.SetOfRow[3] = 2;
    Work.Parms[1] = 2.5F;
    Work.Parms[3] = 5.5F;
    Work.Parms[5] = 3.0F;
    Work.Parms[7] = 0.5F;
}

void ExpectFlags(const FlagRow& row) {
    ApplyModelFlags();
    EXPECT_EQ(GlobalFlags(), row.Global) << "model " << row.Model;
    for (long s = 1; s <= 2; ++s) {
        EXPECT_EQ(Work.FreeMap[SlotA(s)], 0) << "model " << row.Model;
        EXPECT_EQ(Work.FreeMap[SlotB(s)], row.UsesB ? 0 : SlotUnused) << "model " << row.Model;
        EXPECT_EQ(Work.FreeMap[SlotOffset(s)], 0) << "model " << row.Model;
    }
}

TEST(ModelFlags, OfAllModels) {
    for (const FlagRow& row : PlainFlags) {
        StartTwoSets(row.Model);
        ExpectFlags(row);
        if (row.Model <= 8) {
            EXPECT_EQ(Work.Parms[7], 0.0F) << "model " << row.Model;
        }
    }
}

TEST(ModelFlags, WithSeparateConstants) {
    for (const FlagRow& row : SeparateFlags) {
        StartTwoSets(row.Model);
        Work.SeparateK = FlagTrue;
        ExpectFlags(row);
    }
}

TEST(ModelFlags, NonIdealKeepsB2) {
    for (const FlagRow& row : NonIdealFlags) {
        StartTwoSets(row.Model);
        Work.NonIdeal = FlagTrue;
        ExpectFlags(row);
        EXPECT_EQ(Work.Parms[7], 0.5F);
        Work.FreeMap[7] = SlotHeld;
        ApplyModelFlags();
        EXPECT_EQ(Work.FreeMap[7], SlotHeld);
    }
}

TEST(ModelFlags, ForcedValues) {
    StartTwoSets(2);
    ApplyModelFlags();
    EXPECT_EQ(Work.Parms[1], 2.0F);
    EXPECT_EQ(Work.Parms[3], 5.5F);
    StartTwoSets(4);
    ApplyModelFlags();
    EXPECT_EQ(Work.Parms[1], 2.0F);
    EXPECT_EQ(Work.Parms[3], 4.0F);
    StartTwoSets(3);
    ApplyModelFlags();
    EXPECT_EQ(Work.Parms[1], 2.5F);
    StartTwoSets(6);
    ApplyModelFlags();
    EXPECT_EQ(Work.Parms[5], 2.5F); // takes the stoichiometry, by rule
}

TEST(ModelFlags, HeldSlotsStayHeldAndHiddenOnesReturnFitted) {
    StartTwoSets(8);
    Work.FreeMap[6] = SlotHeld;
    ApplyModelFlags();
    EXPECT_EQ(Work.FreeMap[6], SlotHeld); // shown already: left alone
    StartTwoSets(1);
    ApplyModelFlags();
    ASSERT_EQ(Work.FreeMap[6], SlotUnused);
    Work.Model = 8;
    ApplyModelFlags();
    EXPECT_EQ(Work.FreeMap[6], 0);
}

TEST(ModelFlags, UnknownModelOnlySettlesVirialAndLinks) {
    StartTwoSets(25);
    Work.OffsetLink[3] = 1;
    ApplyModelFlags();
    EXPECT_EQ(GlobalFlags(), "fffffff-");
    EXPECT_EQ(Work.FreeMap[SlotOffset(2)], SlotTied);
}

TEST(ModelFlags, LinksTieAndRelease) {
    StartTwoSets(1);
    Work.FreeMap[SlotOffset(1)] = SlotHeld;
    Work.OffsetLink[3] = 1; // set 2 follows set 1
    ApplyModelFlags();
    EXPECT_EQ(Work.FreeMap[SlotOffset(2)], SlotTied);
    EXPECT_EQ(Work.FreeMap[SlotOffset(1)], 0); // the one that is copied is fitted
    Work.OffsetLink[3] = 0;
    ApplyModelFlags();
    EXPECT_EQ(Work.FreeMap[SlotOffset(2)], SlotHeld); // held, not fitted
    EXPECT_EQ(Work.FreeMap[SlotOffset(1)], 0);
}

TEST(ModelFlags, SetTiedToItselfStaysFitted) {
    StartTwoSets(1);
    Work.OffsetLink[3] = 3;
    ApplyModelFlags();
    EXPECT_EQ(Work.FreeMap[SlotOffset(2)], 0);
}

TEST(ModelFlags, EighteenSetsReachTheLastParameter) {
    Work = FreshWorkspace();
    Work.NumSets = 18;
    for (long s = 1; s <= 18; ++s)
        Work.SetRow[s] = Work.SetOfRow[s] = ToInt16(s);
    Work.OffsetLink[18] = 1;
    ApplyModelFlags();
    EXPECT_EQ(Work.FreeMap[61], SlotTied);
    EXPECT_EQ(Work.FreeMap[60], SlotUnused);
}

// --- names and titles
// -----------------------------------------------------------------------------------------

void Rename(int model, int massUnits, int concUnits, bool separate) {
    Work = FreshWorkspace();
    Work.Model = ToInt16(model);
    Work.MassUnits = ToInt16(massUnits);
    Work.ConcUnits = ToInt16(concUnits);
    Work.SeparateK = Flag(separate);
    Work.NumSets = 2;
    BuildParmNames();
}

TEST(ParmNames, MassesByUnits) {
    const char* a[] = {"Sigma A", "Mb A", "MW A"};
    const char* b[] = {"Sigma B", "Mb B", "MW B"};
    for (int units = 0; units <= 2; ++units) {
        Rename(7, units, 0, false);
        EXPECT_EQ(Work.ParmName[0], std::string(a[units]) + " mon");
        Rename(8, units, 0, false);
        EXPECT_EQ(Work.ParmName[0], a[units]);
        EXPECT_EQ(Work.ParmName[5], b[units]);
        EXPECT_EQ(Work.ParmTitle[0], units == 0 ? "" : "kDa");
        EXPECT_EQ(Work.ParmTitle[5], units == 0 ? "" : "kDa");
        EXPECT_EQ(Work.ParmTitle[1], "");
        EXPECT_EQ(Work.ParmTitle[3], "");
    }
}

TEST(ParmNames, OfEachSet) {
    Rename(2, 0, 0, false);
    EXPECT_EQ(Work.ParmName[SlotA(1)], "Ln c(A,mon), set 1");
    EXPECT_EQ(Work.ParmName[SlotB(2)], "Ln c(B,mon), set 2");
    EXPECT_EQ(Work.ParmName[SlotOffset(3)], "Zero Offset, set 3"); // for all sets that there can be
    EXPECT_EQ(Work.ParmName[61], "Zero Offset, set 18");
    EXPECT_EQ(Work.ParmName[1], "N");
    EXPECT_EQ(Work.ParmName[3], "M");
}

TEST(ParmNames, ConstantsByModel) {
    for (int model = 1; model <= 24; ++model) {
        Rename(model, 0, 0, false);
        const bool twoSites = model >= 21;
        EXPECT_EQ(Work.ParmName[6], model == 9 || model == 12 ? "Ln K(A+B,AB+B)"
                                    : model == 10 || twoSites ? "Ln K1(A+B)"
                                                              : "Ln K(A+B)")
            << model;
        EXPECT_EQ(Work.ParmName[7], model == 10 || model == 13 || model == 14 || twoSites ? "Ln K2(A+B)"
                                    : model == 9 || model == 12                           ? "Ln K(AB>AB2)"
                                    : model >= 15 && model <= 20                          ? "Ln K(2AB>ABBA)"
                                    : model == 11                                         ? "Ln K(coop)"
                                                                                          : "B2 vir. coef.")
            << model;
        EXPECT_EQ(Work.ParmName[2], model == 12 || model == 13 ? "Ln Kdimer"
                                    : model == 14              ? "Ln K(coop)"
                                    : model >= 15              ? "ln K(2B>B2)"
                                                               : "Ln K(1>N)")
            << model;
        EXPECT_EQ(Work.ParmName[4], model == 15 || model == 16 ? "ln K(2AB>ABBA)"
                                    : model >= 17              ? "ln K(AB+B>ABB)"
                                                               : "Ln K(1>M)")
            << model;
    }
}

TEST(ParmNames, SeparateConstants) {
    for (const int model : {2, 3, 6}) {
        Rename(model, 0, 0, true);
        EXPECT_EQ(Work.ParmName[2], model == 6 ? "Ln K(1>N)" : "(see each set)") << model;
        EXPECT_EQ(Work.ParmName[SlotB(4)], "Ln K(1>N), set 4");
        EXPECT_EQ(Work.ParmName[SlotOffset(4)], "Zero Offset, set 4");
    }
    for (const int model : {4, 5}) {
        Rename(model, 0, 0, true);
        EXPECT_EQ(Work.ParmName[2], "(see each set)");
        EXPECT_EQ(Work.ParmName[4], "(see each set)");
        EXPECT_EQ(Work.ParmName[SlotB(4)], "Ln K(1>N), set 4");
        EXPECT_EQ(Work.ParmName[SlotOffset(18)], "Ln K(1>M), set 18");
    }
    for (const int model : {8, 9}) {
        Rename(model, 0, 0, true);
        EXPECT_EQ(Work.ParmName[2], "Ln K(1>N)");
        EXPECT_EQ(Work.ParmName[SlotB(4)], "Ln c(B,mon), set 4");
        EXPECT_EQ(Work.ParmName[SlotOffset(4)], "Ln K(AB), set 4");
    }
}

struct TitleRow {
    const char *Slot2, *Slot4, *Slot6, *Conc, *Offset;
};
constexpr TitleRow TitleRows[] = {
    {"AU^1-N", "AU^1-M", "per AU", "AU", "AU"},
    {"(mL/mg)^N-1", "(mL/mg)^M-1", "mL/mg", "mg/mL", "mg/mL"},
    {"(l/mol)^N-1", "(l/mol)^M-1", "l/mol", "mol/l", "AU"},
    {"fringes^1-N", "fringes^1-M", "per fringe", "fringes", "fringes"},
    {"(mL/mg)^N-1", "(mL/mg)^M-1", "mL/mg", "mg/mL", "fringes"},
    {"(l/mol)^N-1", "(l/mol)^M-1", "l/mol", "mol/l", "fringes"},
};

TEST(ParmTitles, ByUnitsAndModel) {
    for (int units = 0; units <= 5; ++units) {
        const TitleRow& row = TitleRows[units];
        for (int model = 1; model <= 22; ++model) {
            Rename(model, 0, units, false);
            EXPECT_EQ(Work.ParmTitle[2], model == 14 ? "" : model > 11 ? row.Slot6 : row.Slot2) << model;
            EXPECT_EQ(Work.ParmTitle[4], model > 14 ? row.Slot6 : row.Slot4) << model;
            EXPECT_EQ(Work.ParmTitle[6], row.Slot6);
            EXPECT_EQ(Work.ParmTitle[7], model == 11 ? "" : row.Slot6) << model;
            EXPECT_EQ(Work.ParmTitle[SlotA(1)], row.Conc);
            EXPECT_EQ(Work.ParmTitle[SlotB(18)], row.Conc);
            EXPECT_EQ(Work.ParmTitle[SlotOffset(2)], row.Offset);
        }
    }
}

TEST(ParmTitles, MoveWithSeparateConstants) {
    for (int units = 0; units <= 5; ++units) {
        const TitleRow& row = TitleRows[units];
        for (const int model : {2, 3, 6}) {
            Rename(model, 0, units, true);
            EXPECT_EQ(Work.ParmTitle[2], "");
            EXPECT_EQ(Work.ParmTitle[SlotB(1)], row.Slot2);
            EXPECT_EQ(Work.ParmTitle[SlotOffset(1)], row.Offset);
        }
        for (const int model : {4, 5}) {
            Rename(model, 0, units, true);
            EXPECT_EQ(Work.ParmTitle[2], "");
            EXPECT_EQ(Work.ParmTitle[4], "");
            EXPECT_EQ(Work.ParmTitle[SlotB(2)], row.Slot2);
            EXPECT_EQ(Work.ParmTitle[SlotOffset(2)], row.Slot4);
        }
        for (const int model : {8, 9}) {
            Rename(model, 0, units, true);
            EXPECT_EQ(Work.ParmTitle[6], "");
            EXPECT_EQ(Work.ParmTitle[SlotB(2)], row.Conc);
            EXPECT_EQ(Work.ParmTitle[SlotOffset(2)], row.Slot6);
        }
    }
}

// --- the choice of a model
// --------------------------------------------------------------------------------------

constexpr const char* NoNonIdeal =
    "Sorry, non-ideality is not allowed for models involving two types of monomers";
constexpr const char* NoSeparateK = "Separate binding constants are not allowed for your model choice";
constexpr const char* NoBaselines =
    "You cannot have baseline constraints with a model that doesn't use zero offsets!  Do you want me to "
    "remove "
    "the baseline constraints (YES) or return to a common association constant for all data sets (NO)?";

TEST(ModelChoice, RefusesNonIdealMixtures) {
    for (const int model : {6, 7, 8, 22}) {
        Script script;
        StartTwoSets(model);
        Work.NonIdeal = FlagTrue;
        script.ExpectMessage(NoNonIdeal);
        CheckModelChoice();
        EXPECT_EQ(Work.NonIdeal, 0) << model;
        EXPECT_EQ(script.Beeps, 1);
    }
    for (int model = 1; model <= 5; ++model) {
        Script script;
        StartTwoSets(model);
        Work.NonIdeal = FlagTrue;
        EXPECT_TRUE(CheckModelChoice());
        EXPECT_NE(Work.NonIdeal, 0) << model;
    }
}

TEST(ModelChoice, RefusesSeparateConstantsWhereThereIsNoRoom) {
    for (const int model : {1, 7, 10, 15, 22}) {
        Script script;
        StartTwoSets(model);
        Work.SeparateK = FlagTrue;
        script.ExpectMessage(NoSeparateK);
        EXPECT_FALSE(CheckModelChoice()) << model;
        EXPECT_EQ(Work.SeparateK, 0) << model;
        EXPECT_EQ(script.Beeps, 1);
    }
    for (const int model : {2, 3, 4, 5, 6, 8, 9}) {
        Script script;
        StartTwoSets(model);
        Work.SeparateK = FlagTrue;
        EXPECT_TRUE(CheckModelChoice()) << model;
        EXPECT_NE(Work.SeparateK, 0) << model;
    }
}

TEST(ModelChoice, SeparateConstantsOverwroteConcentrationsAndOffsetsThatStayWhatTheyAre) {
    for (const int model : {6, 8, 9}) {
        Script script;
        StartTwoSets(model);
        Work.SeparateK = FlagTrue;
        Work.Parms[2] = 1.25F;
        Work.Parms[4] = 2.25F;
        Work.Parms[SlotB(2)] = -4.5F;
        Work.Parms[SlotOffset(2)] = 0.0125F;
        AdoptModel(FlagFalse, true);
        if (model == 6)
            EXPECT_EQ(Work.Parms[SlotOffset(2)], 0.0125F);
        else
            EXPECT_EQ(Work.Parms[SlotB(2)], -4.5F) << model;
    }
}

TEST(ModelChoice, AModelChosenBeforeItsDataHidTheSecondSpeciesForGood) {
    Script script;
    StartTwoSets(1);
    Work.NumSets = 0;
    Work.NumParms = 8;
    AdoptModel(FlagFalse, true);
    ASSERT_EQ(Work.FreeMap[SlotB(3)], SlotUnused);
    Work.Model = 8;
    AdoptModel(FlagFalse, true); // still without data
    for (long s = 1; s <= 18; ++s) {
        EXPECT_EQ(Work.FreeMap[SlotB(s)], 0) << s;
        EXPECT_EQ(Work.FreeMap[SlotOffset(s)], SlotHeld) << s;
    }
}

TEST(ModelChoice, ASetThatComesLaterHasItsSecondSpecies) {
    Script script;
    StartTwoSets(2);
    AdoptModel(FlagFalse, true);
    Work.Model = 8;
    AdoptModel(FlagFalse, true);
    Work.NumSets = 3; // one more scan
    EXPECT_EQ(Work.FreeMap[SlotB(3)], 0);
}

TEST(ModelChoice, BaselineConstraintsOrSeparateConstants) {
    for (const int model : {4, 5, 8, 9}) { // model 8 dropped the constraints in silence
        Script yes;
        StartTwoSets(model);
        Work.SeparateK = FlagTrue;
        Work.ConstraintFlags = 3;
        yes.ExpectMessage(NoBaselines, BoxAnswer::Yes);
        EXPECT_TRUE(CheckModelChoice());
        EXPECT_EQ(Work.ConstraintFlags, 1);
        EXPECT_NE(Work.SeparateK, 0);
        EXPECT_EQ(yes.Beeps, 1);
    }
    Script no;
    StartTwoSets(4);
    Work.SeparateK = FlagTrue;
    Work.ConstraintFlags = 2;
    no.ExpectMessage(NoBaselines, BoxAnswer::No);
    EXPECT_TRUE(CheckModelChoice());
    EXPECT_EQ(Work.ConstraintFlags, 2);
    EXPECT_EQ(Work.SeparateK, 0);
}

TEST(ModelChoice, ModelsThatKeepTheirOffsetPassWithBaselineConstraints) {
    for (const int model : {2, 3, 6}) {
        Script script;
        StartTwoSets(model);
        Work.SeparateK = FlagTrue;
        Work.ConstraintFlags = 2;
        EXPECT_TRUE(CheckModelChoice());
        EXPECT_EQ(Work.ConstraintFlags, 2);
        EXPECT_NE(Work.SeparateK, 0);
    }
}

TEST(ModelChoice, AnnouncesMixtures) {
    {
        Script script;
        StartTwoSets(8);
        script.ExpectMessage(
            "Please note that for this model you MUST enter the correct molar extinction or refractivity "
            "coefficients for species A and B on the Units form.  Once this is done, you may use Molar or "
            "Absorbance/Fringe units (but Molar are recommended since in Absorbance units equal intrinsic "
            "binding "
            "constants do not imply equal binding energies.");
        AnnounceHeteroModel(1);
    }
    for (const int units : {1, 4}) {
        Script script;
        StartTwoSets(9);
        Work.ConcUnits = ToInt16(units);
        script.ExpectMessage("Please note that for this model you CANNOT use mg/mL units");
        AnnounceHeteroModel(8);
        EXPECT_EQ(Work.ConcUnits, units - 1); // back to signal units of the same optics
    }
    Script silent;
    StartTwoSets(8);
    AnnounceHeteroModel(8); // nothing new
    StartTwoSets(7);
    AnnounceHeteroModel(1);
}

TEST(ModelChoice, StartsOffsetsHeldAndTheRestFree) {
    Script script;
    StartTwoSets(3);
    for (long i = 0; i <= Work.FreeMap.Hi(); ++i)
        Work.FreeMap[i] = SlotHeld;
    AdoptModel(FlagFalse, true);
    EXPECT_EQ(Work.NumParms, 14);
    EXPECT_EQ(GlobalFlags(), "fff-----");
    for (long s = 1; s <= 18; ++s)
        EXPECT_EQ(Work.FreeMap[SlotOffset(s)], SlotHeld);
    EXPECT_EQ(Work.FreeMap[SlotA(2)], 0);
}

TEST(ModelChoice, TitleTellsOptions) {
    Script script;
    StartTwoSets(2);
    AdoptModel(FlagFalse, true);
    EXPECT_EQ(Work.FitTitle, "monomer <-> dimer fit, ideal");
    Work.NonIdeal = FlagTrue;
    EXPECT_EQ(ModelFitTitle(), "monomer <-> dimer fit, non-ideal");
    Work.SeparateK = FlagTrue;
    EXPECT_EQ(ModelFitTitle(), "monomer <-> dimer fit, non-ideal, separate K's");
}

TEST(ModelChoice, SwitchedOnConstantsStartFromTheCommonOnes) {
    Script script;
    for (const int model : {2, 3, 4, 5, 6, 8, 9}) {
        StartTwoSets(model);
        Work.SeparateK = FlagTrue;
        Work.Parms[2] = 1.25F;
        Work.Parms[4] = 2.25F;
        Work.Parms[6] = 3.25F;
        for (const long s : {1L, 2L}) {
            Work.Parms[SlotB(s)] = -1.0F;
            Work.Parms[SlotOffset(s)] = 0.5F;
        }
        AdoptModel(FlagFalse, true);
        for (const long s : {1L, 2L}) {
            EXPECT_EQ(Work.Parms[SlotB(s)], model <= 6 ? 1.25F : -1.0F) << model;
            EXPECT_EQ(Work.Parms[SlotOffset(s)], model == 4 || model == 5 ? 2.25F
                                                 : model >= 8             ? 3.25F
                                                                          : 0.5F)
                << model;
        }
        // Nothing is written a second time.
        Work.Parms[SlotB(1)] = 7.0F;
        AdoptModel(FlagTrue, true);
        EXPECT_EQ(Work.Parms[SlotB(1)], 7.0F) << model;
    }
}

} // namespace
} // namespace Quillon
