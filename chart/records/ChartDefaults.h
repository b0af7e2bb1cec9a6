#pragma once
// What graphs start from: the settings of chart.ini, and the records made from them.

#include "chart/records/Records.h"

#include <string>

namespace Quillon {

// Takes the settings from chart.ini in the configuration folder into Chart.Style and marks it as read. A key
// that is missing or cannot be read gives its default; there is no message.
void ReadChartDefaults();

// Where chart.ini lies, and the section in it that is this program's.
std::string ChartIniPath();
std::string ChartIniSection();

// The default records, from Chart.Style.
GraphTitle DefaultTitle();
GraphAxis DefaultAxis();
GraphBox DefaultBox();
GraphLegend DefaultLegend();

} // namespace Quillon
