#pragma once
// The keys of the settings in the ini file, as they are written. Reading finds them in any case.

#include <string>

namespace Quillon {

namespace IniKey {
// Section of the fit.
inline constexpr const char* ConfidenceLevel = "ConfidenceLevel";         // 0..1
inline constexpr const char* ConvergenceLimit = "ConvergenceLimit";       // 0..1
inline constexpr const char* ParmsAccuracy = "ParmsAccuracy";             // kept, and read by no test
inline constexpr const char* HighCorrelation = "HighCorrelation";         // of magnitudes, 0..1
inline constexpr const char* VeryHighCorrelation = "VeryHighCorrelation"; // the same
inline constexpr const char* PauseBeforeFit = "PauseBeforeFit";           // a truth value
inline constexpr const char* AlwaysRescue = "AlwaysRescue";
inline constexpr const char* MaxIterations = "MaxIterations";     // a count
inline constexpr const char* YieldInterval = "YieldInterval";     // points
inline constexpr const char* OverlayPlot = "OverlayPlot";         // a truth value, its sense turned round
inline constexpr const char* SpreadResiduals = "SpreadResiduals"; // a truth value

// Section of the program. Coefficients without a species hold for A and B alike.
inline constexpr const char* FormScalingPercent = "formscalingpercent";             // 75..200
inline constexpr const char* Absorptivity = "Absorptivity";                         // mL/(mg cm)
inline constexpr const char* Extinction = "Extinction";                             // L/(mol cm)
inline constexpr const char* RefractometricExtinction = "RefractometricExtinction"; // fringes L/(mol cm)
inline constexpr const char* SolventDensity = "SolventDensity";                     // g/mL
inline constexpr const char* SoluteVBar = "SoluteVBar";                             // mL/g
inline constexpr const char* TemperatureScale = "TemperatureScale";
inline constexpr const char* CellPathlength = "CellPathlength";         // cm
inline constexpr const char* SoluteRefractivity = "SoluteRefractivity"; // fringes per mg/mL per cm
inline constexpr const char* FitModelNumber = "FitModelNumber";         // of the catalogue
inline constexpr const char* NonIdeal = "NonIdeal";
inline constexpr const char* SplitKs = "SplitKs";
inline constexpr const char* ConcentrationUnits = "ConcentrationUnits";
inline constexpr const char* MassUnits = "MWunits";
inline constexpr const char* CellType = "CellType";
inline constexpr const char* RangeLogPlot = "RangeLogPlot";
inline constexpr const char* MaxPtsPerSet = "MaxPtsPerSet";     // readings; raised to 2048
inline constexpr const char* RotorExpansion = "RotorExpansion"; // cm per rpm squared
inline constexpr const char* NameConvention = "NameConvention";
inline constexpr const char* ReportFontSize = "ReportFontSize"; // points of type
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
