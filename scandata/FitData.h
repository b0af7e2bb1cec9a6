#pragma once
// From the data set table to the flat vectors of the fit.

#include "platform/Arrays.h"

#include <string>

namespace Quillon {

// Flattens the included rows into PtX, PtY, PtSet, SetPts with their scales and labels, subtracts baselines,
// appends the pseudo-points of concentration constraints, and carries the parameters of each set over when
// the table was rearranged. The only writer of these records. A header without speed or temperature and more
// points than 16 bits count are a RuntimeError.
void BuildFitData();

// The baseline of a row at a radius in cm: linear between its points, constant outside them. Quick for
// rising radii.
float BaselineAt(float radius, long row);

// Work.SetOfRow from Work.SetRow.
void BuildSetOfRow();

// Takes the common directory off labels first..last; prefix receives it. Nothing happens when there is only
// one label.
void ShortenLabels(OneBased<std::string>& labels, std::string& prefix, long first, long last);

} // namespace Quillon
