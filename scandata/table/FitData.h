#pragma once
// From the data set table to the flat vectors of the fit.

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
// A RuntimeError in words that name the row: two or more sets and one without speed or temperature or the
// first without a path; a speed that no rotor has; a range outside its scan; more points than 16 bits count;
// a constraint with a tolerance of 0. The records of the fit are then those of the former build, and
// Work.DataChosen is false: the table has to be accepted again before anything is fitted.
void BuildFitData();

// Work.SetOfRow from Work.SetRow.
void BuildSetOfRow();

} // namespace Quillon
