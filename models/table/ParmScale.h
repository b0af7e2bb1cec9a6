#pragma once
// A slot as the user sees it, in the units in force: its name, its unit, its number picture, and the road
// between the internal value and the displayed one: a factor for masses, stoichiometries, the virial
// coefficient and zero offsets, an addend for everything that is held as a natural logarithm. All four follow
// from the row of the table of models (models/table/ModelTable.h) and are rebuilt when units or model change.
//
// With P the path of the first set in cm, E_A and E_B its extinction ratios, w its angular velocity, T its
// temperature in kelvin, eps the coefficient of the unit (absorptivity, molar extinction, refractivity):
//
//     sigma to molar mass       M   = sigma R T / (w^2 (1 - vbar rho)); without the bracket the buoyant mass
//     signal to concentration   U_A = eps_A E_A P (fringes: eps_A P); ln c(displayed) = ln c - ln U_A
//     monomer to N-mer          ln K(displayed) = ln K + (N - 1) ln U_A, less ln N in molar terms, where
//                               K = c_N / c_1^N counts N-mers and not their units
//     A + B in signal units     ln K(displayed) = ln K - ln(eps_A E_A P eps_B E_B P): inside the program K of
//                               a hetero-association is molar
//
// Sigma is that of T. Svedberg and K. O. Pedersen, The Ultracentrifuge (Clarendon Press, 1940), part I.

#include "workspace/records/Counts.h"

#include <string>

namespace Quillon {

// True for slots whose displayed value is internal + ParmScale, false where it is internal * ParmScale.
bool IsAdditiveSlot(SlotNo slot);

// A value of a slot in user units from its internal value, and back, with Work.ParmScale. The work is
// double precision; the results are rounded to single.
float ToUserUnits(SlotNo slot, float internal);
float ToInternal(SlotNo slot, float displayed);

// Rebuilds Work.ParmScale from units, coefficients, first set and model. Fills masses and stoichiometries
// that are exactly 0 with their standard values first. A coefficient that is not positive where a logarithm
// needs it is a RuntimeError, whether or not the model uses the slot.
void BuildParmScale();

// Rebuilds Work.ParmName and Work.ParmTitle for all MaxSets sets, by the table of models in the units in
// force.
void BuildParmNames();

// Rebuilds Work.ParmFormat, the number pictures of the slots in user units.
void BuildParmFormats();

// The name of a slot with its unit in parentheses behind it, when it has one: "Ln K(1>N)  (AU^1-N)". between
// stands in front of the parenthesis; columns of numbers take one blank.
std::string ParmCaption(SlotNo slot, const char* between = "  ");

// A value of a slot in user units, in the slot's number picture.
std::string ParmText(SlotNo slot);                  // of Work.Parms
std::string ParmText(SlotNo slot, float displayed); // of a value in user units

// Masses and stoichiometries that nobody has set yet, exactly 0, take their standard values.
void FillStandardParms();

// True when masses are shown in kDa (buoyant or true), false for sigma.
bool MassInKiloDalton();

// True when concentrations are shown in moles per litre, of either optics.
bool ConcInMoles();

} // namespace Quillon
