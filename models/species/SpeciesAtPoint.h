#pragma once
// The fitted function taken apart: how much of each species the model has at an x of a set, in order of
// SpeciesOfModel, at the current Work.Parms.
//
// A species' signal is its term of the fitted function in the set's own cell, so that the signals and the
// zero offset add up to the fit whatever paths and wavelengths the cells have. The other units divide that
// signal by what one unit of the species shows in the cell of the set, with e the coefficient of the unit,
// E the set's extinction ratio and l its path:
//
//     mg/mL   e_A E_A l
//     molar   (n_A e_A E_A + n_B e_B E_B) l      for a species of n_A monomers A and n_B monomers B
//
// Molar values fulfil mass action with the constants of the model wherever the table's row 1 is that of set
// 1. All work is double precision.

#include "models/function/FitFrame.h"
#include "models/table/SpeciesList.h"
#include "workspace/records/Counts.h"

#include <array>
#include <span>
#include <vector>

namespace Quillon {

// What concentrations are shown in, whatever the optics.
enum class SpeciesUnit { Signal, Weight, Molar };

// The one of Work.ConcUnits.
SpeciesUnit UnitInForce();

// False for mg/mL above model 6, which has no one coefficient for a complex of two kinds of monomers.
bool SpeciesHaveUnit(SpeciesUnit unit);

// The signal that one unit of a species shows in the cell of a row; 1 for signals.
double SignalOfUnit(SpeciesKind kind, SpeciesUnit unit, RowNo row);

// The products of the monomer signals a and b, and of the powers of a, that species go by.
enum class SignalProduct { A, B, PowerN, PowerM, AB, ABB, BB, AAB, AABB };

// The species of a set, ready to be evaluated at any x: each is a factor times a product.
struct SpeciesPlan {
    FitFrame Frame;
    bool NonIdeal = false;
    bool Begun = false; // a point has been solved, which the next one starts from
    int Count = 0;
    std::array<SpeciesKind, MostSpecies> Kind{};
    std::array<SignalProduct, MostSpecies> Product{};
    std::array<double, MostSpecies> Factor{};
};

// Prepares a set of the fit. A coefficient or path of 0 is the run-time error "Division by zero", a unit that
// the model refuses one that says so.
SpeciesPlan PlanSpecies(SetNo set, SpeciesUnit unit);

// Values by species, then by point.
using SpeciesColumns = std::vector<std::vector<double>>;

// The species at points with rising x, in cm^2 from the reference of the set. What is beyond the range of
// numbers comes out as infinity or as no number. False when the non-ideal monomer has no solution at a point;
// what the fitted function takes in its place stands there.
bool EvaluateSpecies(SpeciesPlan& plan, std::span<const double> x, SpeciesColumns& values);

// The species at all true points of a set; values beyond singles are the run-time error "Overflow".
SpeciesColumns SpeciesOfSet(SetNo set, SpeciesUnit unit);

// The species at a true point of the fit (1..NumPts), in the unit in force, as singles.
std::vector<float> SpeciesAtPoint(long point);

} // namespace Quillon
