#pragma once
// Density and viscosity of water at one atmosphere by temperature t, degrees Celsius, from 0 to 100.
//
// Density (G. S. Kell, J. Chem. Eng. Data 20 (1975) 97, air-free water, within 1e-5 g/mL), in kg/m^3:
//
//     (999.83952 + 16.945176 t - 7.9870401e-3 t^2 - 46.170461e-6 t^3 + 105.56302e-9 t^4
//      - 280.54253e-12 t^5) / (1 + 16.879850e-3 t)
//
// Viscosity (J. Kestin, M. Sokolov and W. A. Wakeham, J. Phys. Chem. Ref. Data 7 (1978) 941), with 1.002 mPa
// s at 20 degrees and d = 20 - t:
//
//     log10(viscosity / 1.002) = d / (t + 96) (1.2378 - 1.303e-3 d + 3.06e-6 d^2 + 2.55e-8 d^3)
//
// Both count in the temperature scale of 1968, which differs from that of 1990 by 0.005 degrees at 20.

namespace Quillon {

// A temperature outside 0 to 100 degrees Celsius is a RuntimeError in words.
void CheckLiquid(double celsius);

// In g/mL, and in mPa s (cP). Fail as CheckLiquid.
double WaterDensity(double celsius);
double WaterViscosity(double celsius);

inline constexpr const char* WaterDensitySource = "Kell 1975";
inline constexpr const char* WaterViscositySource = "Kestin et al. 1978";

} // namespace Quillon
