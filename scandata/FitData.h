#pragma once
// From the data set table to the flat vectors of the fit.

#include "platform/Arrays.h"

#include <string>

namespace Quillon {

// Flattens the included rows into PtX, PtY, PtSet, SetPts with their scales and labels, subtracts baselines,
// appends the pseudo-points of concentration constraints, and carries the parameters of each set over when
// the table was rearranged. The only writer of these records. For point p of a row with the range p1..p2, in
// double precision,
//
//     x = r(p)^2 / 2 - (r(p1)^2 + r(p2)^2) / 4        y = value(p) - baseline(r(p) - shift)
//
// and relative to the first set, with speed w, header temperature T (degrees Celsius as they stand) and
// optical path d:   SetSigmaScale = (w / w1)^2 (T1 / T)   SetSignalScale = d / d1.
//
// Set-up of the model (SelectModel without its dialog) and, with another first set, of the parameter scale
// follow. Work.IncludeSet has to be current.
//
// A RuntimeError: two or more sets and one without speed or temperature or the first without a path; a range
// outside its scan ("Subscript out of range"); more points than 16 bits count ("Overflow"); a constraint with
// a tolerance of 0. The records of the fit are then those of the former build, and Work.DataChosen is false:
// the table has to be accepted again before anything is fitted.
void BuildFitData();

// The baseline of a row at a radius in cm: linear between its points, constant outside them; 0 for a row
// without baseline points. Quick for rising radii, right for all.
float BaselineAt(float radius, long row);

// Forgets where the latest call of BaselineAt ended; for whoever replaces the points of a baseline.
void ForgetBaselinePlace();

// Work.SetOfRow from Work.SetRow.
void BuildSetOfRow();

// Takes the common directory off labels first..last; prefix receives it, with its separator. Letters are
// compared in capitals. Nothing happens when there is only one label or no common directory; prefix then
// stays.
void ShortenLabels(OneBased<std::string>& labels, std::string& prefix, long first, long last);

} // namespace Quillon
