#pragma once
// Which solutes there are, and their list as it is typed.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Quillon {

// What can be dissolved.
struct SoluteKind {
    const char* Name;    // "NaCl", as it is typed; capitals and small letters alike
    const char* Meaning; // "sodium chloride"
    const char* Unit;    // of its amount: "mol/L", or "%" by weight
    double MolarMass;    // g/mol
    double Most;         // the largest amount that the sources stand for
    const char* VolumeSource;
    const char* ViscositySource;
};
const std::vector<SoluteKind>& SoluteKinds();

// So much of a kind, in the unit of the kind.
struct Solute {
    std::size_t Kind = 0; // place in SoluteKinds
    double Amount = 0.0;
};

// Reads "NaCl=0.15, urea=2"; "" and "water" are pure water. What is not read so, an unknown name, one that
// stands twice and an amount below 0 or above the most are a RuntimeError in words.
std::vector<Solute> ReadSolutes(std::string_view text);

// "NaCl, KCl, ...": all names, for messages and tips.
std::string SoluteNames();

} // namespace Quillon
