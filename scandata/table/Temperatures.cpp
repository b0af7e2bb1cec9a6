#include "scandata/table/Temperatures.h"

#include "input/NUMINPUT.h"
#include "workspace/records/Roads.h"

#include <cmath>

namespace Quillon {

namespace {

constexpr double KelvinOfZeroCelsius = 273.15;
constexpr double Noticed = 0.005 + 1e-6; // readings have tenths: 20.1 in single precision is no more than 20

// "2.44%", and what lies below a hundredth of a percent as that.
std::string Percent(double share) {
    return FormatNumber(std::fabs(share) * 100.0, "0.0#") + "%";
}

std::string Change(double factor) {
    return Percent(factor - 1.0) + (factor < 1.0 ? " lower" : " higher");
}

std::string DoubtOf(float first, float temperature) {
    const double stated = SigmaByTemperature(first, temperature, TemperatureScales::Celsius);
    const double absolute = SigmaByTemperature(first, temperature, TemperatureScales::Kelvin);
    return "the temperature is " + SingleText(temperature) + " degrees and that of the first set " +
           SingleText(first) + ": by their ratio in degrees Celsius sigma is taken " + Change(stated) +
           ", by absolute temperatures it is " + Change(absolute) +
           ", so that a mass may come out wrong by " + Percent(stated / absolute - 1.0);
}

bool Differs(float first, float temperature) {
    if (first == 0.0F || temperature == 0.0F) return false;
    const double t = temperature;
    return std::fabs(t - static_cast<double>(first)) > Noticed * std::fabs(static_cast<double>(first));
}

} // namespace

double SigmaByTemperature(float first, float temperature, int scale) {
    // [decision: celsius-ratio]
    const double zero = scale == TemperatureScales::Kelvin ? KelvinOfZeroCelsius : 0.0;
    return Divide(static_cast<double>(first) + zero, static_cast<double>(temperature) + zero);
}

std::vector<TemperatureDoubt> TemperatureDoubts(const std::vector<RowNo>& rows) {
    std::vector<TemperatureDoubt> doubts;
    if (Work.TemperatureScale == TemperatureScales::Kelvin) return doubts;
    for (const RowNo row : rows) {
        const float first = Work.ScanTemperature[rows.front()];
        const float temperature = Work.ScanTemperature[row];
        if (Differs(first, temperature)) doubts.push_back({row, DoubtOf(first, temperature)});
    }
    return doubts;
}

std::vector<RowNo> RowsInFit() {
    std::vector<RowNo> rows;
    for (const RowNo row : EachRow())
        if (Work.IncludeSet[row] == 1) rows.push_back(row);
    return rows;
}

bool ScaleMatters() {
    if (!Work.DataChosen) return false;
    for (const SetNo set : EachSet())
        if (Work.ScanTemperature[RowOf(set)] != Work.ScanTemperature[RowOf(SetNo(1))]) return true;
    return false;
}

} // namespace Quillon
