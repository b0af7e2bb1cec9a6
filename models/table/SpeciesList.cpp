#include "models/table/SpeciesList.h"

#include "models/table/ModelTable.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

using enum SpeciesKind;

template <class... Each> constexpr SpeciesList List(Each... each) {
    return {static_cast<int>(sizeof...(each)), {each...}};
}

constexpr ListedSpecies Mon{MonomerA, "monomer", "Monomer"};
constexpr ListedSpecies Dimer{OligomerN, "dimer", "Dimer"};
constexpr ListedSpecies NMer{OligomerN, "N - mer", "N-mer"};
constexpr ListedSpecies MMer{OligomerM, "M - mer", "M-mer"};
constexpr ListedSpecies Tetramer{OligomerM, "tetramer", "Tetramer"};
constexpr ListedSpecies Active{MonomerA, "active monomer A", "Active Monomer"};
constexpr ListedSpecies NMerA{OligomerN, "N - mer A", "N-Mer"};
constexpr ListedSpecies Dead{InactiveA, "dead monomer A", "Inactive Mono."};

constexpr ListedSpecies SingleA{MonomerA, "monomer A", "Species A"};
constexpr ListedSpecies SingleB{MonomerB, "monomer B", "Species B"};
constexpr ListedSpecies A{MonomerA, "monomer A", "Monomer A"};
constexpr ListedSpecies B{MonomerB, "monomer B", "Monomer B"};
constexpr ListedSpecies AlikeAB{AB, "AB complex", "AB Complex"};
constexpr ListedSpecies AB1{FirstAB, "AB complex", "AB Complex"};
constexpr ListedSpecies AB2{OtherAB, "AB' complex", "AB' Complex"};
constexpr ListedSpecies OneAB2{ABB, "AB2 complex", "AB2 Complex"};
constexpr ListedSpecies AllAB2{ABB, "AB2 complexes", "AB2 Complexes"};
constexpr ListedSpecies OneABB{ABB, "ABB complex", "ABB Complex"};
constexpr ListedSpecies Four{ABBA, "ABBA complex", "ABBA Complex"};
constexpr ListedSpecies BB{DimerB, "B dimer", "B dimer"};
constexpr ListedSpecies AllAB{AB, "AB complexes", "AB Complex"};
constexpr ListedSpecies AllBAB{ABB, "BAB complexes", "BAB Complex"};
constexpr ListedSpecies OneBAA{AAB, "BAA complex", "BAA Complex"};
constexpr ListedSpecies AllBAAB{ABBA, "BAAB complexes", "BAAB Complex"};

constexpr SpeciesList OneSite = List(A, B, AlikeAB, OneAB2);
constexpr SpeciesList UnlikeSites = List(A, B, AB1, AB2, OneAB2);
constexpr SpeciesList WithABB = List(A, B, AlikeAB, OneABB, Four);
constexpr SpeciesList WithDimer = List(A, B, AlikeAB, OneABB, Four, BB);
constexpr SpeciesList TwoSites = List(A, B, AllAB, AllBAB, OneBAA, AllBAAB, BB);

constexpr std::array<SpeciesList, LastReservedModel + 1> SpeciesTable{{
    {}, // no model
    List(Mon),
    List(Mon, Dimer),
    List(Mon, NMer),
    List(Mon, Dimer, Tetramer),
    List(Mon, NMer, MMer), // 5
    List(Active, NMerA, Dead),
    List(SingleA, SingleB),
    List(A, B, AlikeAB),
    OneSite,
    UnlikeSites, // 10
    OneSite,
    List(A, B, AlikeAB, AllAB2, BB),
    List(A, B, AB1, AB2, AllAB2, BB),
    UnlikeSites,
    List(A, B, AlikeAB, Four), // 15
    WithABB,
    WithABB,
    WithDimer,
    WithDimer,
    WithDimer, // 20
    TwoSites,
    TwoSites,
    TwoSites, // reserved
    TwoSites,
}};

} // namespace

const SpeciesList& SpeciesOfModel(int model) {
    return SpeciesTable[model >= 1 && model <= LastReservedModel ? static_cast<std::size_t>(model) : 0];
}

std::vector<std::string> SpeciesNames() {
    std::vector<std::string> names;
    for (const ListedSpecies& each : SpeciesOfModel(Work.Model))
        names.emplace_back(each.Name);
    return names;
}

MonomerCount MonomersIn(SpeciesKind kind) {
    switch (kind) {
    case MonomerA:
    case InactiveA:
        return {1.0, 0.0};
    case MonomerB:
        return {0.0, 1.0};
    case OligomerN:
        return {static_cast<double>(Work.Parms[1]), 0.0};
    case OligomerM:
        return {static_cast<double>(Work.Parms[3]), 0.0};
    case ABB:
        return {1.0, 2.0};
    case AAB:
        return {2.0, 1.0};
    case ABBA:
        return {2.0, 2.0};
    case DimerB:
        return {0.0, 2.0};
    default:
        return {1.0, 1.0}; // AB, wherever
    }
}

} // namespace Quillon
