#pragma once
// The keys of the settings in the ini file, as they are written. Reading finds them in any case.

#include <string>

namespace Quillon {

namespace IniKey {
// Section of the fit.
inline constexpr const char* ConfidenceLevel = "ConfidenceLevel";
inline constexpr const char* ConvergenceLimit = "ConvergenceLimit";
inline constexpr const char* ParmsAccuracy = "ParmsAccuracy";
inline constexpr const char* HighCorrelation = "HighCorrelation";
inline constexpr const char* VeryHighCorrelation = "VeryHighCorrelation";
inline constexpr const char* PauseBeforeFit = "PauseBeforeFit";
inline constexpr const char* AlwaysRescue = "AlwaysRescue";
inline constexpr const char* MaxIterations = "MaxIterations";
inline constexpr const char* YieldInterval = "YieldInterval";
inline constexpr const char* OverlayPlot = "OverlayPlot";
inline constexpr const char* SpreadResiduals = "SpreadResiduals";

// Section of the program. Coefficients without a species hold for A and B alike.
inline constexpr const char* FormScalingPercent = "formscalingpercent";
inline constexpr const char* Absorptivity = "Absorptivity";
inline constexpr const char* Extinction = "Extinction";
inline constexpr const char* RefractometricExtinction = "RefractometricExtinction";
inline constexpr const char* SolventDensity = "SolventDensity";
inline constexpr const char* SoluteVBar = "SoluteVBar";
inline constexpr const char* TemperatureScale = "TemperatureScale";
inline constexpr const char* CellPathlength = "CellPathlength";
inline constexpr const char* SoluteRefractivity = "SoluteRefractivity";
inline constexpr const char* FitModelNumber = "FitModelNumber";
inline constexpr const char* NonIdeal = "NonIdeal";
inline constexpr const char* SplitKs = "SplitKs";
inline constexpr const char* ConcentrationUnits = "ConcentrationUnits";
inline constexpr const char* MassUnits = "MWunits";
inline constexpr const char* CellType = "CellType";
inline constexpr const char* RangeLogPlot = "RangeLogPlot";
inline constexpr const char* MaxPtsPerSet = "MaxPtsPerSet";
inline constexpr const char* RotorExpansion = "RotorExpansion";
inline constexpr const char* NameConvention = "NameConvention";
inline constexpr const char* ReportFontSize = "ReportFontSize";
} // namespace IniKey

// The key of a channel's radius at rest: "ChAInner3". channel counts from 1 for A; cell is 3 for long column
// cells, which have the channels A to C, and 4 for short column ones, which have D as well.
inline std::string ChannelKey(int channel, bool outer, int cell) {
    return std::string("Ch") + static_cast<char>('A' + channel - 1) + (outer ? "Outer" : "Inner") +
           std::to_string(cell);
}

// The place of that radius in ChannelRadii.
inline constexpr int ChannelPlace(int channel, bool outer, int cell) {
    return (cell - 3) + 2 * (channel - 1) + (outer ? 8 : 0);
}

} // namespace Quillon
