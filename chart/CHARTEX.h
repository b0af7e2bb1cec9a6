#pragma once
// The style of graphs: defaults and their file chart.ini, the cycles by which sets are told apart, fonts,
// titles and legends.

#include "chart/dialogs/SaveChartDefaults.h"
#include "chart/hand/TitleCommands.h"
#include "chart/layout/TitleLayout.h"
#include "chart/pens/Fonts.h"
#include "chart/records/ChartDefaults.h"
#include "chart/records/ChartStyle.h"
#include "chart/records/Colors.h"
#include "chart/records/Cycles.h"
