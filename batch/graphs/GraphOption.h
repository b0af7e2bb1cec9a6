#pragma once
// The option --graph KIND[:n]=FILE, --graph histogram:SLOT[,QUANTITY]=FILE or --graph GRAPH.grf=FILE, taken
// apart.

#include "graphs/FigurePlan.h"
#include "graphs/kinds/MassGraphs.h"

#include <string>

namespace Quillon {

// By which sets are told apart (chart/records/Palettes.h). Unsaid: the safe table, and that of its file in a
// graph that comes from one.
enum class GraphColors { Unsaid, Safe, Classic };

struct GraphOption {
    std::string Kind;     // "data", "overlay", ...; of a graph file its path
    std::string Source;   // the graph file that is drawn; empty: a graph of the fit
    long Set = 0;         // data set of the fit, counted from 1; 0 all of them
    long Group = 0;       // of approach: the group of the run, counted from 1
    long Slot = 0;        // of histogram: the fitted parameter,
    std::string Quantity; // and what follows from it: "log10_k", "kd", "delta_g_kj"; empty: itself
    std::string Path;
    MassChoice Mass;     // of mass-c and mass-r
    FigureChoice Figure; // of figure
    GraphColors Colors = GraphColors::Unsaid;
};

// Reads what stands behind --graph. What ends with ".grf" before the first "=" is a graph file. A kind that
// is not known, a data set below 1 or beyond those of any fit and a file that is none of the endings, or of a
// figure none of those of pictures, are a RuntimeError that says so, without the program's name.
GraphOption ParseGraphOption(const std::string& text);

// "overlay", "overlay:2": how messages call it.
std::string GraphName(const GraphOption& option);

// Reads a size of a figure in millimetres: the width ("85"), or width and height ("170x90"). Anything else,
// or a length that no figure has, is a RuntimeError.
void ReadFigureSize(const std::string& text, FigureChoice& choice);

// The ending of the file's name in small letters: "svg", "emf", "png", "pdf", "dat", "csv", "grf".
std::string GraphEnding(const GraphOption& option);

} // namespace Quillon
