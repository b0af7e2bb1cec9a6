#pragma once
// What the graph builders share.

#include "chart/CHART.h"
#include "chart/records/SetLooks.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace Quillon {

inline constexpr std::size_t LongestTitle = 80; // characters

// A spec with the defaults of an X-Y graph and single colours for sets; the former graph is let go.
GraphSpec StartGraph(int plotStyle);

// Gives an axis its limits; equal ones ask for autorange.
void ImposeScale(GraphAxis& axis, bool log, float low, float high, int decimals);

// The second axis of each pair repeats the first without labels.
void CopyOppositeAxes(GraphSpec& spec);

// The sets that a graph shows: all, or the one.
std::pair<long, long> SetsOf(long set);

// The longest of the sets first..last, in points.
long LongestSet(long first, long last);

// The looks of series that show the data sets first..last, each of them several times in a row: a set has the
// colour, symbol and dash of its number in every graph.
SetLooks LooksOfSets(long first, long last, int times = 1);

// A line across the graph at a height, black and as wide as the data lines.
GraphMark LineAt(float y);

// Hands the tables over, with looks where lines go by something else than their place, and marks. False when
// the chart stopped.
bool HandOver(GraphSpec& spec, const SetTable& x, const SetTable& y, const std::vector<std::string>& names,
              SetLooks looks = {}, const std::vector<GraphMark>& marks = {});

// Shows the chart window with the graph that has been made.
void ShowCharts();

} // namespace Quillon
