#pragma once
// What a reader wants of an association constant: Kd, log10 K, Delta G, in molar terms whatever the units of
// display, with the limits of ln K carried through.
//
// Inside the program ln K of a self-association is one of signals of the first set, c_N = K c_1^N. With U the
// signal of one mole per litre of A there, concentrations in mol/L and N-mers counted as such,
//
//     ln K(molar) = ln K + (N - 1) ln U - ln N
//
// and of the dimers of B that go by their signal the same with N = 2 and U of B. All other constants are
// molar as they stand. From it
//
//     Kd = 1 / K              in mol/L to the power of the bonds, N - 1 of an N-mer
//     Kd^(1/bonds)            in mol/L
//     Delta G = -R T ln K     kJ/mol for 1 mol/L, T the mean temperature of the sets
//
// (C. Tanford, Physical Chemistry of Macromolecules, Wiley 1961, chapter 8.)

#include "workspace/records/Counts.h"

#include <optional>
#include <string>
#include <vector>

namespace Quillon {

// The numbers of one constant. A constant without a unit has no KdRoot.
struct ConstantTerms {
    double LnK = 0.0, Log10K = 0.0;
    double Kd = 0.0;              // mol/L to the power of the bonds; infinity where a double does not hold it
    std::optional<double> KdRoot; // mol/L
    double DeltaG = 0.0;          // kJ/mol
};

struct DerivedConstant {
    long Slot = 0;
    std::string Name; // as the parameter is named
    double Bonds = 0.0;
    std::string Unit; // of Kd: "mol/L", "(mol/L)^3"; "" for a constant without one
    std::optional<ConstantTerms> Value;
    // The lower and upper limit of each number by itself: that of Kd comes from the upper one of ln K. From
    // the confidence limits where they were searched and the stoichiometry is held, else one standard error
    // to each side, with that of a fitted stoichiometry. Empty of a held constant and where a limit is not
    // known.
    std::optional<ConstantTerms> Lower, Upper;
    std::string Convention; // "macroscopic, 2 A = A2"
    std::string Reason;     // why there is no value; empty where there is one
};

// That of a slot at the present value, fit or none; nothing where the slot holds no association constant.
std::optional<DerivedConstant> DerivedConstantOf(SlotNo slot);

// All association constants that are fitted or held, by slot. Expects a fit that stands.
std::vector<DerivedConstant> DerivedConstants();

// The same for reports: a few lines for each constant that has a value, none for others.
std::vector<std::string> DerivedLines();

// Whether a molar coefficient of A (or of B) stands that somebody has set: a program that knows nothing of
// the sample starts with one, too. Whoever shows concentrations in mol/L has settled it.
bool MolarCoefficientIsGiven(bool ofB);

// The mean temperature of the sets of the fit, in kelvin.
double MeanKelvin();

} // namespace Quillon
