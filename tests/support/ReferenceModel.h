#pragma once
// The 22 models once more, for the tests to hold the program against.
//
// Evaluated straight from the equations in long double: each species is written down with its amount and
// its number of A and B units, the signal is the sum over species, the mean signal of a concentration
// constraint is a plain sum over the set, and the non-ideal monomer is found by bisection. Derivatives are
// exact. Shares no code with the program beyond the records of the workspace.
//
// The parameters come as a vector of their own, by slot, so that a value between two singles can be
// evaluated; everything else (scales of the sets, points, coefficients, fitted slots, links) is read from
// the workspace. A tied zero offset takes the value of the one that it follows.

#include "tests/support/RealMatrix.h"
#include "workspace/records/Workspace.h"

#include <string>

namespace Quillon {

// Work.Parms or another workspace's, widened.
RealVector ReferenceParms(const Workspace& w);

// One pass over all points of the fit. Point p stands at p - 1; column k of the Jacobian belongs to slot
// FreeIndex(k), k = 0..NumFree-1.
struct ReferencePass {
    RealVector Value;    // the fitted value
    RealVector Residual; // PtY - Value
    RealMatrix Jacobian; // derivative of Value
    Real SumSq = 0;
};
ReferencePass EvaluateReference(const Workspace& w, const RealVector& parms);

// The values alone.
RealVector ReferenceValues(const Workspace& w, const RealVector& parms);

// The value at one true point.
Real ReferenceValueAt(const Workspace& w, const RealVector& parms, long point);

// How the stepped parameter is stored before the function is called for a forward difference.
enum class StepStorage {
    Exact,         // not rounded: what the stated steps do to a fit in exact arithmetic
    SingleSum,     // the sum of parameter and step, rounded to single
    SingleAddition // the step rounded to single, then the sum rounded to single
};

// The derivatives that the stated forward differences give: (f(p + h) - f(p)) / h with the step h of the
// slot. Zero offsets have their exact derivative, except that with SeparateK the third slot of a set is
// differenced like the others.
RealMatrix ReferenceForwardDifferences(const Workspace& w, const RealVector& parms, StepStorage storage);

// The step h of a slot at a parameter value.
Real ReferenceStep(int model, long slot, Real value);

// What one species gives to the signal of a point in its set's cell, split by the units that it is made of.
struct ReferenceSpecies {
    std::string Name; // "A", "N-mer", "M-mer", "inactive", "B", "AB", "AB2", "B2", "ABBA", "A2B"
    Real OfA = 0;
    Real OfB = 0;
    Real Signal() const { return OfA + OfB; }
};
std::vector<ReferenceSpecies> ReferenceSpeciesAt(const Workspace& w, const RealVector& parms, long point);

// The mean signal of all A units and of all B units over the true points of a set, without zero offset.
struct ReferenceMeans {
    Real A = 0;
    Real B = 0;
};
ReferenceMeans ReferenceMeansOf(const Workspace& w, const RealVector& parms, long set);

// The amount of monomer where it has to satisfy c = ideal * exp(factor * ct), ct = c + sum of K_i c^n_i: the
// solution with the smaller ct, which is the one that leads to the ideal monomer as factor goes to 0.
// Where there is none (factor positive and too large) a std::domain_error.
struct ReferenceOligomer {
    Real LnK = 0;
    Real Power = 0;
};
Real NonIdealTotal(Real ideal, Real factor, const std::vector<ReferenceOligomer>& oligomers);

} // namespace Quillon
