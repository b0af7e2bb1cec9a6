#pragma once
// The points of a fit as comma separated values.

#include <string>

namespace Quillon {

// One line for each point of the fit under the head
//
//     set,row,kind,radius_cm,x_cm2,y,fit,residual
//
// kind is data or constraint; a constraint has neither radius nor x. x is r^2/2 less its value in the middle
// of the set, y the signal with the baseline subtracted. Numbers read back give the same bits. The points of
// PtFit have to stand (FitValid).
std::string PointsCsv();

} // namespace Quillon
