#pragma once
// What the coefficients of absorbance are told for.

namespace Quillon {

// The wavelength in nm that absorptivities and extinctions belong to: that of row 1 of the data set table,
// which all extinction ratios refer to, whether or not the row is in the fit. While row 1 holds no scan, that
// of the first set; 0 without any.
float CoefficientWavelength();

} // namespace Quillon
