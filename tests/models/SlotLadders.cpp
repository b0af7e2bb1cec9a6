#include "SlotLadders.h"

#include "models/table/Catalogue.h"
#include "models/table/ParmScale.h"
#include "workspace/records/Workspace.h"

#include <initializer_list>

namespace Quillon {

namespace {

// --- names and titles ------------------------------------------------------------------------------------

bool IsOneOf(int model, std::initializer_list<int> models) {
    for (const int m : models)
        if (m == model) return true;
    return false;
}

std::string MassName(char species) {
    const char* quantity = Work.MassUnits == 2 ? "MW " : Work.MassUnits == 1 ? "Mb " : "Sigma ";
    return std::string(quantity) + species;
}

std::string NameOfSlot2(int model) {
    if (model >= 15) return "ln K(2B>B2)";
    if (model == 14) return "Ln K(coop)";
    if (model == 12 || model == 13) return "Ln Kdimer";
    return "Ln K(1>N)";
}

std::string NameOfSlot4(int model) {
    if (model >= 17) return "ln K(AB+B>ABB)";
    if (model >= 15) return "ln K(2AB>ABBA)";
    return "Ln K(1>M)";
}

std::string NameOfSlot6(int model) {
    if (model == 9 || model == 12) return "Ln K(A+B,AB+B)";
    if (model == 10 || model >= 21) return "Ln K1(A+B)";
    return "Ln K(A+B)";
}

std::string NameOfSlot7(int model) {
    if (IsOneOf(model, {10, 13, 14}) || model >= 21) return "Ln K2(A+B)";
    if (model == 9 || model == 12) return "Ln K(AB>AB2)";
    if (model >= 15) return "Ln K(2AB>ABBA)";
    if (model == 11) return "Ln K(coop)";
    return "B2 vir. coef.";
}

// With separate constants the slots of a set take over the names of the global ones.
void NameSeparateConstants(int model) {
    auto& name = Work.ParmName;
    if (model >= 2 && model <= 5) name[2] = "(see each set)";
    if (model == 4 || model == 5) name[4] = "(see each set)";
    for (long s = 1; s <= Work.MaxSets; ++s) {
        const std::string number = std::to_string(s);
        if (model >= 2 && model <= 6) name[SlotB(s)] = "Ln K(1>N), set " + number;
        if (model == 4 || model == 5) name[SlotOffset(s)] = "Ln K(1>M), set " + number;
        if (model == 8 || model == 9) name[SlotOffset(s)] = "Ln K(AB), set " + number;
    }
}

struct UnitTitles {
    const char *Slot2, *Slot4, *Slots67, *Concentration, *Offset;
};
constexpr UnitTitles Titles[] = {
    {"AU^1-N", "AU^1-M", "per AU", "AU", "AU"},
    {"(mL/mg)^N-1", "(mL/mg)^M-1", "mL/mg", "mg/mL", "mg/mL"},
    {"(l/mol)^N-1", "(l/mol)^M-1", "l/mol", "mol/l", "AU"},
    {"fringes^1-N", "fringes^1-M", "per fringe", "fringes", "fringes"},
    {"(mL/mg)^N-1", "(mL/mg)^M-1", "mL/mg", "mg/mL", "fringes"},
    {"(l/mol)^N-1", "(l/mol)^M-1", "l/mol", "mol/l", "fringes"},
};

void TitleSeparateConstants(int model) {
    auto& title = Work.ParmTitle;
    for (long s = 1; s <= Work.MaxSets; ++s) {
        if (model >= 2 && model <= 6) title[SlotB(s)] = title[2];
        if (model == 4 || model == 5) title[SlotOffset(s)] = title[4];
        if (model == 8 || model == 9) title[SlotOffset(s)] = title[6];
    }
    if (model >= 2 && model <= 6) title[2].clear();
    if (model == 4 || model == 5) title[4].clear();
    if (model == 8 || model == 9) title[6].clear();
}

void BuildParmTitles(int model) {
    auto& title = Work.ParmTitle;
    title.Recreate(Work.MaxParms - 1);
    const long units = Work.ConcUnits >= 0 && Work.ConcUnits <= 5 ? Work.ConcUnits : 0;
    const UnitTitles& t = Titles[units];
    title[0] = title[5] = MassInKiloDalton() ? "kDa" : "";
    title[2] = t.Slot2;
    title[4] = t.Slot4;
    title[6] = title[7] = t.Slots67;
    for (long s = 1; s <= Work.MaxSets; ++s) {
        title[SlotA(s)] = title[SlotB(s)] = t.Concentration;
        title[SlotOffset(s)] = t.Offset;
    }
    if (model > 9) title[7] = title[6];
    if (model > 11) title[2] = title[6];
    if (model > 14) title[4] = title[6];
    if (model == 11) title[7].clear(); // a cooperativity constant has no unit
    if (model == 14) title[2].clear();
    if (Work.SeparateK) TitleSeparateConstants(model);
}

// --- scales ----------------------------------------------------------------------------------------------

// The addends that the first set and the coefficients give; a test computes them.
using Addends = LadderAddends;

void ScaleSets(const Addends& u) {
    auto& scale = Work.ParmScale;
    const int model = Work.Model;
    const bool separateK = Work.SeparateK != 0;
    for (long s = 1; s <= Work.MaxSets; ++s) {
        scale[SlotA(s)] = u.A;
        scale[SlotB(s)] = model == 6 ? u.A : u.B; // the inactive monomer is A
        if (!separateK) continue;
        if (model >= 2 && model <= 6) scale[SlotB(s)] = scale[2];
        if (model == 4 || model == 5) scale[SlotOffset(s)] = scale[4];
        if (model == 8 || model == 9) scale[SlotOffset(s)] = scale[6];
    }
}

void ScaleByModel() {
    auto& scale = Work.ParmScale;
    const int model = Work.Model;
    if (model > 9) scale[7] = scale[6];
    if (model > 13) scale[2] = scale[6];
    if (model == 11 || model == 21) scale[7] = 0.0F;
    if (model == 14) scale[2] = 0.0F; // a cooperativity constant has no unit
}

// --- flags -----------------------------------------------------------------------------------------------

void Hide(std::initializer_list<long> slots) {
    for (const long i : slots)
        Work.FreeMap[i] = SlotUnused;
}

// A slot that was hidden returns as fitted; any other state stands.
void Reveal(std::initializer_list<long> slots) {
    for (const long i : slots)
        if (Work.FreeMap[i] == SlotUnused) Work.FreeMap[i] = 0;
}

void Fix(long slot, float value) {
    Work.FreeMap[slot] = SlotHeld;
    Work.Parms[slot] = value;
}

void HideSecondSpecies() {
    for (long s = 1; s <= Work.MaxSets; ++s)
        Work.FreeMap[SlotB(s)] = SlotUnused;
}

void HoldMasses() {
    Work.FreeMap[0] = Work.FreeMap[5] = SlotHeld;
}

// Models 1 to 6: one kind of monomer.
void FlagSelfAssociation(int model, bool separateK) {
    switch (model) {
    case 1:
        Hide({1, 2, 3, 4, 5, 6});
        break;
    case 2:
        Fix(1, 2.0F);
        if (separateK) Hide({2});
        Hide({3, 4, 5, 6});
        break;
    case 3:
        if (separateK) Hide({2});
        Hide({3, 4, 5, 6});
        break;
    case 4:
        Fix(1, 2.0F);
        if (separateK) Hide({2, 4});
        Fix(3, 4.0F);
        Hide({5, 6});
        break;
    case 5:
        if (separateK) Hide({2, 4});
        Hide({5, 6});
        break;
    default: // 6: the second slot of each set is the inactive monomer
        Hide({3, 4, 5, 6});
        Work.Parms[5] = Work.Parms[1];
        return;
    }
    if (model == 1 || !separateK) HideSecondSpecies();
}

// Models 7 and above: two kinds of monomer, both masses held until the user releases them.
void FlagTwoSpecies(int model, bool separateK) {
    HoldMasses();
    switch (model) {
    case 7:
        Hide({1, 2, 3, 4, 6});
        break;
    case 8:
    case 9:
        Hide({1, 2, 3, 4});
        Reveal({6});
        if (separateK) Hide({6});
        break;
    case 10:
    case 11:
        Hide({1, 2, 3, 4});
        Reveal({6, 7});
        break;
    case 15:
    case 16:
        Hide({1, 2, 3});
        Reveal({4, 6});
        Hide({7});
        break;
    case 17:
    case 18:
        Hide({1, 2, 3});
        Reveal({4, 6, 7});
        break;
    case 19:
        Hide({1, 3, 7});
        Reveal({2, 4, 6});
        break;
    case 20:
        Hide({1, 3});
        Reveal({2, 4, 6, 7});
        break;
    default: // 12, 13, 14, 21 to 24
        Hide({1, 3, 4});
        Reveal({2, 6, 7});
        break;
    }
}

void FlagSlot7(int model) {
    const bool own = model == 10 || model == 11 || (model >= 13 && model <= 18) || model == 20 ||
                     model == 22 || model == 24;
    if (own) return;
    if (model == 9 || model == 12 || model == 21 || model == 23) {
        Hide({7});
    } else if (!Work.NonIdeal) {
        Hide({7});
        Work.Parms[7] = 0.0F;
    }
}

// --- bounds ----------------------------------------------------------------------------------------------

struct Range {
    float Lower, Upper;
};

void Put(long slot, Range r) {
    Work.Bounds[0][slot] = r.Lower;
    Work.Bounds[1][slot] = r.Upper;
}

// Association constants: natural logarithms, in signal, weight or molar terms.
Range ConstantRange() {
    switch (Work.ConcUnits) {
    case 0:
        return {-30.0F, 100.0F};
    case 2:
    case 5:
        return {-3.0F, 150.0F};
    default:
        return {-20.0F, 120.0F};
    }
}

Range ConcentrationRange() {
    switch (Work.ConcUnits) {
    case 0:
        return {-70.0F, 4.0F};
    case 2:
    case 5:
        return {-120.0F, -3.0F};
    case 3:
        return {-60.0F, 10.0F};
    default:
        return {-90.0F, 4.0F};
    }
}

// True when the slot holds an association constant; the slots of a set may change over to one, and that of
// the virial coefficient.
bool HoldsConstant(long slot) {
    const int model = Work.Model;
    if (slot == 2 || slot == 4 || slot == 6) return true;
    if (slot == 7) return model >= 10;
    if (slot < 7 || !Work.SeparateK) return false;
    if (slot % 3 == 0) return model >= 2 && model <= 6; // that of species B
    return slot % 3 == 1 && (model == 4 || model == 5 || model == 8 || model == 9);
}

Range VirialRange() {
    const int units = Work.ConcUnits;
    const double w = units == 3 ? 30.0 : units == 2 || units == 5 ? 0.0001 : 10.0;
    return {static_cast<float>(-1.0 / w), static_cast<float>(1.0 / w)};
}

} // namespace

void LadderNames() {
    auto& name = Work.ParmName;
    const int model = Work.Model;
    name.Recreate(Work.MaxParms - 1);
    name[0] = MassName('A') + (model < 8 ? " mon" : "");
    name[1] = "N";
    name[2] = NameOfSlot2(model);
    name[3] = "M";
    name[4] = NameOfSlot4(model);
    name[5] = MassName('B');
    name[6] = NameOfSlot6(model);
    name[7] = NameOfSlot7(model);
    for (long s = 1; s <= Work.MaxSets; ++s) {
        const std::string number = std::to_string(s);
        name[SlotA(s)] = "Ln c(A,mon), set " + number;
        name[SlotB(s)] = "Ln c(B,mon), set " + number;
        name[SlotOffset(s)] = "Zero Offset, set " + number;
    }
    if (Work.SeparateK) NameSeparateConstants(model);
    BuildParmTitles(model);
}

void LadderScale(const LadderAddends& u) {
    auto& scale = Work.ParmScale;
    scale.Recreate(Work.MaxParms - 1, 1.0F);
    scale[0] = u.MassA;
    scale[5] = u.MassB;
    scale[2] = u.OneToN;
    scale[4] = u.OneToM;
    scale[6] = u.Mixed;
    ScaleSets(u);
    ScaleByModel();
}

bool LadderIsAdditive(long slot) {
    if (slot == 2 || slot == 4 || slot == 6) return true;
    if (slot == 7) return Work.Model > 9;
    if (slot < 7) return false;
    if ((slot - 7) % 3 != 0) return true;
    const int model = Work.Model;
    return Work.SeparateK && (model == 4 || model == 5 || model > 6);
}

double LadderDerivStep(long slot) {
    const double p = static_cast<double>(Work.Parms[slot]);
    if (slot == 0 || slot == 5) return p * 0.01;
    if (slot == 1 || slot == 3) return p * 0.02;
    if (slot == 2 || slot == 4 || slot == 6) return 0.06;
    if (slot != 7 || Work.Model > 9) return 0.02;
    return p == 0.0 ? 0.0004 : p * 0.02;
}

void LadderFlags() {
    const int model = Work.Model;
    const bool separateK = Work.SeparateK != 0;
    if (model <= 6)
        FlagSelfAssociation(model, separateK);
    else
        FlagTwoSpecies(model, separateK);
    FlagSlot7(model);
}

void LadderBounds() {
    const int model = Work.Model;
    const Range constant = ConstantRange();
    const Range mass = MassInKiloDalton() ? Range{0.1F, 1e9F} : Range{0.02F, 30.0F};
    for (auto& row : Work.Bounds)
        row.Recreate(Work.MaxParms - 1);
    Put(0, mass);
    Put(5, mass);
    Put(1, {0.5F, 100.0F});
    Put(3, {0.5F, 100.0F});
    for (const long slot : {2, 4, 6})
        Put(slot, constant);
    Put(7, HoldsConstant(7) ? constant : VirialRange());

    const Range offset = Work.ConcUnits == 3 ? Range{-20.0F, 20.0F} : Range{-4.0F, 4.0F};
    for (long s = 1; s <= Work.MaxSets; ++s) {
        Put(SlotA(s), ConcentrationRange());
        Put(SlotB(s), HoldsConstant(SlotB(s)) ? constant : ConcentrationRange());
        Put(SlotOffset(s), HoldsConstant(SlotOffset(s)) ? constant : offset);
    }
    if (model == 7) Work.Bounds[0][7] = -constant.Upper;
    if (model == 13 || model == 14) Put(2, {-10.0F, 30.0F});
    if (model == 21)
        for (const long slot : {2, 4})
            Put(slot, {-4.0F, 28.0F});
}

} // namespace Quillon
