#pragma once
// Graphs of the fit in the workspace as the bytes of files, without a display.
//
// All endings show the same figure: 6 by 4.5 inches at 300 dots per inch, so that a PNG is 1800 by 1350
// pixels and text of the graph's own sizes is 9 to 11 points high. The style is the program's own: no
// chart.ini is read.

#include "batch/graphs/GraphOption.h"
#include "platform/PictureFile.h"

#include <functional>
#include <string>
#include <vector>

namespace Quillon {

// The kind of several graphs on one page (graphs/Figure.h). It has sizes of its own.
inline constexpr const char* FigureKind = "figure";

// The kind of a quantity's values in the fits of --resample.
inline constexpr const char* HistogramKind = "histogram";
inline constexpr const char* ApproachKind = "approach"; // of the groups of --sort, drawn there

// The kinds that there are, in the order in which the help lists them.
std::vector<std::string> GraphKinds();

// The figure that pictures are asked for.
PictureRequest FigureRequest();

// Makes sure before a fit that a graph can be made after it: that the module for its ending is there. A
// RuntimeError that names the graph otherwise.
void CheckGraphFormat(const GraphOption& option);

// A data set that the fit does not have is a RuntimeError.
void CheckGraphSet(const GraphOption& option, long sets);

// Coefficients of a species that the model does not have are a RuntimeError, before the fit.
void CheckGraphModel(const GraphOption& option, int model);

// The graph as the bytes of its file. A graph that cannot be drawn is a RuntimeError. Histograms, which count
// the fits of a study, are made with GraphBytesOf.
std::string GraphBytes(const GraphOption& option);

// The same of a graph that make builds as the builders of graphs/ do; name is what messages call it.
std::string GraphBytesOf(const std::string& name, const std::string& path, GraphColors colors,
                         const std::function<bool()>& make);

// Tables of colours begin with the ones chosen, from now on: for what draws graphs by itself, as reports do.
void BeginWithColors(GraphColors colors);

} // namespace Quillon
