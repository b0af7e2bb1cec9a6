#pragma once
// Which species a model has, in the order in which graphs and forms list them, and what they are made of.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr int MostSpecies = 8; // no model has more

// What a species is. AB at two sites that differ are two species: the same atoms in two places.
enum class SpeciesKind {
    MonomerA,
    InactiveA, // monomer A that does not associate
    MonomerB,
    OligomerN,
    OligomerM,
    AB,      // at sites that are alike, all of it
    FirstAB, // at the site of ln K1(A+B)
    OtherAB, // at the site of ln K2(A+B)
    ABB,
    AAB,
    ABBA,
    DimerB
};

struct ListedSpecies {
    SpeciesKind Kind{};
    const char* Name = "";  // in graphs: "monomer A"
    const char* Label = ""; // in the form of integrated concentrations: "Monomer A"
};

// The species of a model. The reserved numbers 23 and 24 list those of 21; a number that is no model has
// none.
struct SpeciesList {
    int Count = 0;
    std::array<ListedSpecies, MostSpecies> Items;
    const ListedSpecies* begin() const { return Items.data(); }
    const ListedSpecies* end() const { return Items.data() + Count; }
};
const SpeciesList& SpeciesOfModel(int model);

// The names of the species of Work.Model, in the order of SpeciesOfModel.
std::vector<std::string> SpeciesNames();

// How many monomers A and B a species is made of. Those of an oligomer are the stoichiometries at the current
// Work.Parms and need not be whole.
struct MonomerCount {
    double A = 0.0, B = 0.0;
};
MonomerCount MonomersIn(SpeciesKind kind);

} // namespace Quillon
