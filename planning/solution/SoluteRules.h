#pragma once
// What the solutes of a buffer are, for those who calculate with them (planning/solution/Buffer.cpp): the
// roads by which their volumes and viscosities are found, and the constants of the ions.

#include "planning/solution/Solutes.h"

#include <vector>

namespace Quillon {

enum class Ion { None, Na, K, NH4, Mg, Ca, Cl, SO4, Acetate, H2PO4, HPO4 };

struct IonConstants {
    int Charge;
    double Volume0, Volume25, Volume50; // mL/mol, with H+ as 0; 0 and 50 degrees as 25 where not known
    bool AtTemperatures;                // they are known there
    double ViscosityB;                  // L/mol, at 25 degrees
};
IonConstants ConstantsOf(Ion ion);

// Of the sources that planning/solution/Buffer.h names.
enum class Road { Salt, Urea, Guanidinium, Glycerol, Sucrose };

struct SoluteRule {
    SoluteKind Kind;
    Road By;
    Ion Cation = Ion::None, Anion = Ion::None; // of a salt
    int Cations = 0, Anions = 0;               // of them in a formula
};

// In the order of SoluteKinds.
const std::vector<SoluteRule>& SoluteRules();
inline const SoluteRule& RuleOf(const Solute& solute) {
    return SoluteRules()[solute.Kind];
}

// Amounts are percent by weight, not mol/L.
inline bool IsByWeight(const SoluteRule& rule) {
    return rule.By == Road::Glycerol || rule.By == Road::Sucrose;
}

} // namespace Quillon
