#pragma once
// Sigma of a set against that of the first one, as far as temperatures go.
//
// sigma = M (1 - vbar rho) omega^2 / (R T), so that it goes against the absolute temperature. Analyses of
// many years have taken the ratio of the readings in degrees Celsius instead, which is the standing rule
// here, too: harmless while all scans were made at one temperature, and no more when readings near 0 differ
// by a tenth.

#include "workspace/records/Counts.h"

#include <string>
#include <vector>

namespace Quillon {

// Celsius over Celsius or kelvin over kelvin, by scale (TemperatureScales): what sigma of a set at
// temperature is to be multiplied with, beside the square of the speeds, against the first set at first;
// degrees Celsius. A divisor of 0 is the run-time error "Division by zero".
double SigmaByTemperature(float first, float temperature, int scale);

// A set whose temperature does not go with that of the first one.
struct TemperatureDoubt {
    RowNo Row;
    std::string Text; // both temperatures and the size of the effect, in one sentence without a full stop
};

// Those of the rows whose readings in degrees Celsius differ by more than 0.5% from that of the first of
// them. None while sigma follows the absolute temperature (Work.TemperatureScale), and none of a reading of
// 0, which the fit refuses.
std::vector<TemperatureDoubt> TemperatureDoubts(const std::vector<RowNo>& rows);

// The rows that the table includes in the fit (IncludeSet), in rising order.
std::vector<RowNo> RowsInFit();

// True when sigma of a set of the open fit would be another on the other scale.
bool ScaleMatters();

} // namespace Quillon
