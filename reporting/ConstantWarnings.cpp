#include "reporting/ConstantWarnings.h"

#include "models/table/ModelTable.h"
#include "scandata/table/Temperatures.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

// A constant of the units in use, of A and of B.
struct SampleConstant {
    const char* Name;
    float Workspace::*A;
    float Workspace::*B;
};

constexpr SampleConstant Vbar{"vbar", &Workspace::VbarA, &Workspace::VbarB};
constexpr SampleConstant Absorptivity{"absorptivity", &Workspace::AbsorpA, &Workspace::AbsorpB};
constexpr SampleConstant Extinction{"extinction coefficient", &Workspace::ExtA, &Workspace::ExtB};
constexpr SampleConstant Refractivity{"dn/dc", &Workspace::FringeMassA, &Workspace::FringeMassB};
constexpr SampleConstant MolarRefractivity{"molar dn/dc", &Workspace::RefrA, &Workspace::RefrB};

const SampleConstant* ConcentrationConstant() {
    switch (Work.ConcUnits) {
    case ConcUnit::Weight:
        return &Absorptivity;
    case ConcUnit::Mole:
        return &Extinction;
    case ConcUnit::FringeWeight:
        return &Refractivity;
    case ConcUnit::FringeMole:
        return &MolarRefractivity;
    default:
        return nullptr;
    }
}

// "vbar", "vbar of A and B", "vbar of B"; "" when all that the model has were set.
std::string NameIfStandard(const SampleConstant& constant) {
    const Workspace standard;
    const bool two = TraitsOfModel().TwoSpecies;
    const bool a = Work.*constant.A == standard.*constant.A;
    const bool b = two && Work.*constant.B == standard.*constant.B;
    if (!a && !b) return "";
    const std::string name = constant.Name;
    return !two ? name : name + (a && b ? " of A and B" : a ? " of A" : " of B");
}

std::vector<std::string> StandardConstants() {
    std::vector<std::string> names;
    if (Work.MassUnits == MassUnit::Molar) {
        names.push_back(NameIfStandard(Vbar));
        if (Work.SolventDensity == Workspace{}.SolventDensity) names.push_back("solvent density");
    }
    if (const SampleConstant* constant = ConcentrationConstant()) names.push_back(NameIfStandard(*constant));
    std::erase(names, "");
    return names;
}

std::vector<RowNo> RowsOfSets() {
    std::vector<RowNo> rows;
    for (const SetNo set : EachSet())
        rows.push_back(RowOf(set));
    return rows;
}

} // namespace

std::vector<std::string> ConstantWarnings() {
    std::vector<std::string> lines;
    std::string list;
    for (const std::string& name : StandardConstants())
        list += (list.empty() ? "" : ", ") + name;
    if (!list.empty()) lines.push_back("at the program's defaults: " + list);
    for (const TemperatureDoubt& doubt : TemperatureDoubts(RowsOfSets()))
        lines.push_back("set " + std::to_string(SetOf(doubt.Row).Number) + ": " + doubt.Text);
    return lines;
}

} // namespace Quillon
