#pragma once
// What the graph builders share.

#include "chart/CHART.h"
#include "chart/hand/Charts.h"
#include "chart/records/SetLooks.h"
#include "graphs/kinds/AllSets.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr std::size_t LongestTitle = 80; // characters

// A spec with the defaults of an X-Y graph and single colours for sets; the former graph is let go.
GraphSpec StartGraph(int plotStyle);

// Gives an axis its limits; equal ones ask for autorange.
void ImposeScale(GraphAxis& axis, bool log, float low, float high, int decimals);

// The second axis of each pair repeats the first without labels.
void CopyOppositeAxes(GraphSpec& spec);

// The sets that a graph shows: the one, or those of AllSets.
using SetRange = OrdinalRange<SetKind>;
SetRange SetsOf(SetNo set);

// How many sets these are, and the place of one among them, from 1.
inline long PlaceIn(const SetRange& sets, SetNo set) {
    return set.Number - sets.First.Number + 1;
}
inline long CountOf(const SetRange& sets) {
    return PlaceIn(sets, sets.Last);
}

// The longest of the sets, in points.
long LongestSet(const SetRange& sets);

// The looks of series that show data sets, each of them several times in a row: a set has the colour, symbol
// and dash of its number in every graph.
SetLooks LooksOfSets(const SetRange& sets, int times = 1);

// The diagonal of a view or frame, which sizes are fractions of: whole device units, at least 1.
double DiagonalOf(const GraphBox& box);

// A line across the graph at a height, black and as wide as the data lines.
GraphMark LineAt(float y);

// Hands the tables over, with looks where lines go by something else than their place, and marks. False when
// the chart stopped.
bool HandOver(GraphSpec& spec, const SetTable& x, const SetTable& y, const std::vector<std::string>& names,
              SetLooks looks = {}, const std::vector<GraphMark>& marks = {});

// Shows the chart window with the graph that has been made, zoomed as the one before it where they share an
// axis. origin: its name, and how it is made again.
void ShowCharts(const GraphOrigin& origin);

// A graph of one set, or of AllSets, that is made by make for as long as stands says so and there is the set.
GraphOrigin OriginOf(const std::string& name, SetNo set, bool (*stands)(), const std::function<bool()>& make);

// What graphs need: data; a fit; a fit of the data as they are.
bool DataStand();
bool FitStands();
bool FitOfTheseDataStands();

} // namespace Quillon
