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
// whose meaning shifts with the model (models/table/Catalogue.h). The pieces of the folder, floor by floor:
//
//     table/     ModelTable.h    what each slot of each model holds: alone in knowing models by number
//                Catalogue.h     the models by name, and the options that they allow
//                ParmScale.h     a slot as the user sees it: name, unit, picture, internal to user units
//                DefaultBounds.h bounds, and their way through a change of units or model
//                SpeciesList.h   which species a model has, and what they are made of
//     function/  FitFrame.h      what is constant for a set at given parameters
//                Species.h       the arithmetic of all models at a point, shared by every road through them
//                FitFunction.h   the fitted function and its derivatives, point by point
//                BlockFunction.h the same for runs of points of a set, for less work and bit for bit the same
//                NonIdeal.h      the non-ideal monomer
//                Constraints.h   concentration constraints and zero offset links
//                SharedConcentrations.h  sets that see the same molecules
//                SetMeanSignal.h what was measured in a set, on average
//                Simulation.h    the model at all points, with noise; Random.h the normal deviates
//     species/   SpeciesAtPoint.h the fitted function taken apart by species, in all units
//                Integration.h   mean concentrations between two radii
//     forms/     the dialogs, as data: ModelForm.h, UnitsForm.h, ConcForm.h, ShowConstraintForm.h,
//                BaseForm.h, ShareForm.h, SigmaCalcForm.h, SpecForm.h
//
// and over them ModelChoice.h (checks and consequences of choosing a model), ModelFlags.h (which slots are
// fitted, held, not used) and Guesses.h (concentrations read off the data).
//
// This header is the face of the folder: it brings all of them.

#include "models/Guesses.h"
#include "models/ModelChoice.h"
#include "models/ModelFlags.h"
#include "models/forms/BaseForm.h"
#include "models/forms/ConcForm.h"
#include "models/forms/ModelForm.h"
#include "models/forms/ShareForm.h"
#include "models/forms/ShowConstraintForm.h"
#include "models/forms/SigmaCalcForm.h"
#include "models/forms/UnitsForm.h"
#include "models/function/BlockFunction.h"
#include "models/function/Constraints.h"
#include "models/function/FitFrame.h"
#include "models/function/FitFunction.h"
#include "models/function/NonIdeal.h"
#include "models/function/SetMeanSignal.h"
#include "models/function/SharedConcentrations.h"
#include "models/function/Species.h"
#include "models/species/Integration.h"
#include "models/species/SpeciesAtPoint.h"
#include "models/table/Catalogue.h"
#include "models/table/DefaultBounds.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "models/table/SpeciesList.h"
