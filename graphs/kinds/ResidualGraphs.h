#pragma once
// Residuals against the fit's x, against the fitted value and against radius.

#include "graphs/kinds/AllSets.h"

namespace Quillon {

enum class ResidualAxis { X, Fitted, Radius };

// Builds the graph of one set, or of AllSets, without showing its window; false when the chart refused
// it. With Work.SpreadResiduals the sets of the graph of all sets stand above each other.
bool MakeResidualGraph(ResidualAxis axis, SetNo set);

// The commands: build and show. The set-wise ones ask for the set by PickSet.
void GraphResiduals();
void GraphResidualsY();
void GraphResidualsR();
void GraphResidSet();
void GraphResidSetY();
void GraphResidualsRSet();

// The root mean square of the residuals of a set in Work.PtResid, in signal units.
double RmsOfSet(SetNo set);

// The distance between the zero lines of separated sets, for a root mean square of the residuals.
float SpreadStep(float rms);

// The limit of the axis of residuals about one zero line: the stated one digit of the root mean square, or
// the multiple of it that holds the largest residual.
float ResidualLimit(float rms, float largest);

} // namespace Quillon
