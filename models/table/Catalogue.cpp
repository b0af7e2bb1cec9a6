#include "models/table/Catalogue.h"

#include "models/table/ModelTable.h"
#include "workspace/records/Workspace.h"

#include <array>

namespace Quillon {

namespace {

struct ModelTexts {
    const char* Dialog;
    const char* Report;
};

constexpr std::array<ModelTexts, LastModelNumber> Catalogue{{
    {"single species", "single species"},
    {"monomer <-> dimer", "monomer - dimer"},
    {"monomer <-> N-mer", "monomer - N-mer"},
    {"monomer <-> dimer <-> tetramer", "monomer - dimer - tetramer"},
    {"monomer <-> N-mer <-> M-mer", "monomer - N-mer - M-mer"},
    {"monomer <-> N-mer + inactive monomer", "monomer - N-mer + inactive monomer"},
    {"two non-interacting monomeric species", "two non-interacting monomeric species"},
    {"mixed association A + B <-> AB", "mixed association A + B <-> AB"},
    {"A+2B<->AB+B<->AB2, one type of site", "A+2B <-> AB+B <-> AB2, one type of site"},
    {"A+2B<->AB+B<->AB2, two independent sites", "A+2B <-> AB+B <-> AB2, two independent sites"},
    {"A+2B<->AB+B<->AB2, two equivalent, cooperative sites",
     "A+2B <-> AB+B <-> AB2, one type of cooperative site"},
    {"A+2B<->AB+B<->AB2; 2B<->B2; one type of site", "A+2B <-> AB+B <-> AB2; 2B<->B2; 1 type of site"},
    {"A+2B<->AB+B<->AB2; 2B<->B2; two independent sites", "A+2B <-> AB+B <-> AB2; 2B<->B2; 2 types of site"},
    {"A+2B<->AB+B<->AB2, two inequivalent, cooperative sites",
     "A+2B <-> AB+B <-> AB2, 2 types of cooperative site"},
    {"2A+2B<->2AB<->ABBA", "2A+2B <-> 2AB <-> ABBA"},
    {"2A+2B<->...<->ABBA, no 2B<->B2, Kdim(1)=Kdim(2)", "2A+2B <->...<-> ABBA, no 2B<->B2, Kdim(1)=Kdim(2)"},
    {"2A+2B<->...<->ABBA, no 2B<->B2, Kdim(1)<>Kdim(2)",
     "2A+2B <->...<-> ABBA, no 2B<->B2, Kdim(1)<>Kdim(2)"},
    {"2A+2B<->...<->ABBA, Kdim(0)=Kdim(1), Kdim(1)<>Kdim(2)",
     "2A+2B <->...<-> ABBA, Kdim(0)=Kdim(1)<>Kdim(2)"},
    {"2A+2B<->...<->ABBA, Kdim(0)<>Kdim(1), Kdim(1)=Kdim(2)",
     "2A+2B <->...<-> ABBA, Kdim(0)<>Kdim(1)=Kdim(2)"},
    {"2A+2B<->...<->ABBA, Kdim(0)<>Kdim(1)<>Kdim(2)", "2A+2B <->...<-> ABBA, Kdim(0)<>Kdim(1)<>Kdim(2)"},
    {"2A+2B<->...<->ABBA, two B binding sites K1=K2, 2B<->B2",
     "2A+2B <->...<-> ABBA, 2 B sites, K1=K2, 2B<->B2"},
    {"2A+2B<->...<->ABBA, two B binding sites K1<>K2, 2B<->B2",
     "2A+2B <->...<-> ABBA, 2 B sites, K1<>K2, 2B<->B2"},
}};

bool Known(int model) {
    return model >= 1 && model <= LastModelNumber;
}

} // namespace

std::string ModelDialogName(int model) {
    return Known(model) ? Catalogue[static_cast<std::size_t>(model - 1)].Dialog : "";
}

std::string ModelReportName(int model) {
    return Known(model) ? Catalogue[static_cast<std::size_t>(model - 1)].Report : "";
}

bool ModelAllowsNonIdeal(int model) {
    return TraitsOfModel(model).NonIdeal;
}

bool ModelAllowsSeparateK(int model) {
    return TraitsOfModel(model).SeparateK;
}

bool OffsetSlotHoldsConstant(int model, bool separateK) {
    return separateK && TraitsOfModel(model).OffsetGoes;
}

void FillModelNames() {
    Work.ModelName.Recreate(Work.ModelCount);
    for (long i = 1; i <= Work.ModelName.Hi(); ++i)
        Work.ModelName[i] = ModelDialogName(static_cast<int>(i));
}

std::string ModelFitTitle() {
    std::string title = ModelDialogName(Work.Model) + " fit";
    title += Work.NonIdeal ? ", non-ideal" : ", ideal";
    if (Work.SeparateK) title += ", separate K's";
    return title;
}

} // namespace Quillon
