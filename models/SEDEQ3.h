#pragma once
// Sedimentation equilibrium models: what the signal at a radius is, given the parameters.
//
// Every model is a sum of exponentials of x = r^2/2 - r0^2/2. The monomer signals of a set are
// a = exp(sigma_A x + ln cA) and b = exp(sigma_B x + ln cB), in signal units of the first set; complexes
// follow from them by mass action. The parameter vector Work.Parms has eight global slots and three for
// each set:
//
//     0 sigma of A        1 stoichiometry N   2 ln K(1>N)      3 stoichiometry M
//     4 ln K(1>M)         5 sigma of B        6 ln K(A+B)      7 second virial coefficient or ln K
//     3s+5 ln cA          3s+6 ln cB          3s+7 zero offset
//
// whose meaning shifts with the model (models/Catalogue.h). The pieces of the folder:
//
//     Catalogue.h     the models by name, and the options that they allow
//     ModelTable.h    what each slot of each model holds: the one place that knows models by number
//     ModelFlags.h    which slots are fitted, held, not used
//     ParmNames.h     names, units and number pictures of the slots
//     FitFrame.h      what is constant for a set at given parameters
//     Species.h       the arithmetic of all models at a point, shared by every road through them
//     FitFunction.h   the fitted function and its derivatives, point by point
//     BlockFunction.h the same for runs of points of a set, for less work and bit for bit the same
//     NonIdeal.h      the non-ideal monomer
//     SpeciesList.h   which species a model has, and what they are made of
//     SpeciesAtPoint.h the fitted function taken apart by species, in all units
//     Integration.h   mean concentrations between two radii
//     Simulation.h    the model at all points, with noise; Random.h the normal deviates
//     ModelChoice.h   checks and consequences of choosing a model
//     ParmScale.h     internal to user units and back
//     DefaultBounds.h bounds, and their way through a change of units or model
//     Guesses.h       concentrations read off the data
//     Constraints.h   concentration constraints and zero offset links
//     SharedConcentrations.h  sets that see the same molecules
//     SetMeanSignal.h what was measured in a set, on average
//
// and the dialogs, as data: ModelForm.h, UnitsForm.h, ConcForm.h, ShowConstraintForm.h, BaseForm.h,
// SigmaCalcForm.h, SpecForm.h.
//
// This header is the face of the folder: it brings all of them.

#include "models/BaseForm.h"
#include "models/BlockFunction.h"
#include "models/Catalogue.h"
#include "models/ConcForm.h"
#include "models/Constraints.h"
#include "models/DefaultBounds.h"
#include "models/FitFrame.h"
#include "models/FitFunction.h"
#include "models/Guesses.h"
#include "models/Integration.h"
#include "models/ModelChoice.h"
#include "models/ModelFlags.h"
#include "models/ModelForm.h"
#include "models/ModelTable.h"
#include "models/NonIdeal.h"
#include "models/ParmNames.h"
#include "models/ParmScale.h"
#include "models/SetMeanSignal.h"
#include "models/ShareForm.h"
#include "models/SharedConcentrations.h"
#include "models/ShowConstraintForm.h"
#include "models/SigmaCalcForm.h"
#include "models/Species.h"
#include "models/SpeciesAtPoint.h"
#include "models/SpeciesList.h"
#include "models/UnitsForm.h"
