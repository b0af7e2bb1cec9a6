// Names, units and number pictures of the parameter slots.
#include "models/Catalogue.h"
#include "models/ParmScale.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

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

} // namespace

void BuildParmNames() {
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

void BuildParmFormats() {
    auto& format = Work.ParmFormat;
    format.Recreate(Work.MaxParms - 1, "#0.0000"); // logarithms
    format[0] = format[5] = MassInKiloDalton() ? "#0.0000" : "#0.00000";
    format[1] = format[3] = "#0.0000";
    if (!IsAdditiveSlot(7)) format[7] = "0.0000E+00"; // a virial coefficient may have any size
    for (long s = 1; s <= Work.MaxSets; ++s)
        if (!IsAdditiveSlot(SlotOffset(s))) format[SlotOffset(s)] = "#0.00000";
}

} // namespace Quillon
