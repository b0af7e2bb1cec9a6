#pragma once
// Scans of intensities: each line has the light behind the sample and behind the reference, and what is
// fitted is their absorbance,
//
//     A = log10(reference / sample)
//
// A reading with an intensity that is not above 0 has none and is left out. Instruments differ in which of
// the two columns is the sample's. A sample absorbs more than its reference: the order with the positive mean
// of A is the right one, over all scans of one cell, speed and wavelength together, since a single scan of a
// dilute sample may decide by its noise.

#include "workspace/records/Workspace.h"

#include <string>
#include <string_view>
#include <vector>

namespace Quillon {

// True for a parameter line with the type letter I, or a name whose ending begins with "RI", in any case.
bool IsIntensityScan(std::string_view parameterLine, std::string_view fileName);

// Whether two intensities, of the first and the second column, have an absorbance, and what it is in an
// order.
bool HasAbsorbance(float first, float second);
float AbsorbanceOf(float first, float second, IntensityOrders::Code order);

// One line of such a scan.
struct IntensityReading {
    float Radius = 0.0F; // cm
    float First = 0.0F, Second = 0.0F;
};

// Makes the readings the scan of a row: absorbances, left-out readings and both columns, in the order that
// the scan by itself decides on. A RuntimeError where no reading has two intensities above 0.
void TakeIntensities(RowNo row, const std::vector<IntensityReading>& readings);

// Gives an intensity scan another order: absorbances change their sign, and what lies above the ceiling of
// the row is found anew. Nothing for other scans.
void SetIntensityOrder(RowNo row, IntensityOrders::Code order);

// True for two rows with scans of one cell (as their names tell it), speed (to 1%) and wavelength (to 3 nm).
bool SameMeasurement(RowNo a, RowNo b);

// Decides the order of intensity scans by the sign of the mean, those of one measurement together. Other
// scans among the rows are passed over.
void DecideIntensityOrders(const std::vector<RowNo>& rows);

// "intensities, taken as absorbance with the sample in the first column; 3 readings that are not above 0 left
// out", for whoever has just read the scan of a row; "" for other scans.
std::string IntensityRemark(RowNo row);

// "sample-first" or "reference-first", as a job says it; "" for a row with another scan.
std::string IntensityOrderWord(RowNo row);

// Smallest, mean and largest intensity over the range of a row, of sample and reference; for an intensity
// scan.
struct IntensitySpan {
    float Lowest = 0.0F, Mean = 0.0F, Highest = 0.0F;
};
std::array<IntensitySpan, 2> IntensitySpans(RowNo row);

} // namespace Quillon
