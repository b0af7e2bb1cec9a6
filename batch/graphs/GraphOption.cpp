#include "batch/graphs/GraphOption.h"

#include "batch/console/OneLine.h"
#include "batch/graphs/Graphs.h"
#include "chart/files/GraphFile.h"
#include "graphs/Figure.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <charconv>

namespace Quillon {

namespace {

constexpr const char* Endings[] = {"svg", "png", "pdf", "emf", "dat", "csv", "grf"};

// What follows from a constant, as results call it.
constexpr const char* DerivedNames[] = {"log10_k", "kd", "delta_g_kj"};

long ReadSet(const std::string& text) {
    long set = 0;
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, set);
    if (read.ec != std::errc{} || read.ptr != end || set < 1 || set > StandardMaxSets)
        RaiseError("--graph: a data set is a number from 1 to " + std::to_string(StandardMaxSets) + ", not " +
                   Quoted(text));
    return set;
}

void ReadGroup(const std::string& text, GraphOption& option) {
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, option.Group);
    if (read.ec != std::errc{} || read.ptr != end || option.Group < 1)
        RaiseError("--graph approach needs the number of a group of --sort, as approach:2, not " +
                   Quoted(text));
}

// "2", "2,kd"
void ReadQuantity(const std::string& text, GraphOption& option) {
    const std::size_t comma = std::min(text.find(','), text.size());
    const char* end = text.data() + comma;
    const auto read = std::from_chars(text.data(), end, option.Slot);
    if (comma < text.size()) option.Quantity = text.substr(comma + 1);
    const bool known = std::find(std::begin(DerivedNames), std::end(DerivedNames), option.Quantity) !=
                       std::end(DerivedNames);
    if (read.ec != std::errc{} || read.ptr != end || option.Slot < 0 || (comma < text.size() && !known))
        RaiseError("--graph histogram needs the slot of a parameter, and log10_k, kd or delta_g_kj behind a "
                   "comma for what follows from it, as histogram:2,kd, not " +
                   Quoted(text));
}

bool IsKind(const std::string& kind) {
    const std::vector<std::string> known = GraphKinds();
    return std::find(known.begin(), known.end(), kind) != known.end();
}

void CheckKind(const std::string& kind) {
    if (IsKind(kind)) return;
    std::string list;
    for (const std::string& each : GraphKinds())
        list += (list.empty() ? "" : ", ") + each;
    RaiseError("--graph: " + Quoted(kind) + " is none of the kinds " + list);
}

// A figure is several graphs on one page: neither one table of numbers nor one graph file.
void CheckFigure(const GraphOption& option) {
    if (option.Kind != FigureKind || IsFigureEnding(GraphEnding(option))) return;
    RaiseError("--graph figure is a picture: " + Quoted(option.Path) +
               " ends with none of .svg, .png, .pdf and .emf");
}

double ReadLength(const std::string& text) {
    double length = 0.0;
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, length);
    const bool fits = length >= LeastFigure && length <= LargestFigure;
    return read.ec == std::errc{} && read.ptr == end && fits ? length : 0.0;
}

void CheckPath(const GraphOption& option) {
    if (option.Path.empty()) RaiseError("no file behind --graph " + GraphName(option));
    if (option.Path == "-") RaiseError("--graph needs the name of a file");
    const std::string ending = GraphEnding(option);
    if (std::find(std::begin(Endings), std::end(Endings), ending) == std::end(Endings))
        RaiseError("--graph: " + Quoted(option.Path) +
                   " ends with none of .svg, .png, .pdf, .emf, .dat, .csv and .grf, which choose the format");
}

// The equals sign between what is drawn and its file: the first one, but behind a graph file whose name has
// some of its own.
std::size_t SignBetween(const std::string& text) {
    const std::size_t first = text.find('=');
    const std::string what = text.substr(0, first);
    if (IsKind(what.substr(0, what.find(':')))) return first;
    for (std::size_t sign = first; sign != std::string::npos; sign = text.find('=', sign + 1))
        if (NamesGraphFile(text.substr(0, sign))) return sign;
    return first;
}

} // namespace

GraphOption ParseGraphOption(const std::string& text) {
    const std::size_t equals = SignBetween(text);
    if (equals == std::string::npos) RaiseError("--graph needs KIND=FILE, not " + Quoted(text));
    const std::string what = text.substr(0, equals);
    const std::size_t colon = what.find(':');
    GraphOption option;
    if (NamesGraphFile(what)) {
        option.Kind = option.Source = what;
        option.Path = text.substr(equals + 1);
        CheckPath(option);
        if (option.Path == what) RaiseError("--graph: " + Quoted(what) + " would be written over itself");
        return option;
    }
    option.Kind = what.substr(0, colon);
    option.Path = text.substr(equals + 1);
    CheckKind(option.Kind);
    const std::string behind = colon == std::string::npos ? "" : what.substr(colon + 1);
    if (option.Kind == HistogramKind)
        ReadQuantity(behind, option);
    else if (option.Kind == ApproachKind)
        ReadGroup(behind, option);
    else if (colon != std::string::npos)
        option.Set = ReadSet(behind);
    CheckPath(option);
    CheckFigure(option);
    return option;
}

void ReadFigureSize(const std::string& text, FigureChoice& choice) {
    const std::size_t by = text.find('x');
    choice.Width = ReadLength(text.substr(0, by));
    choice.Height = by == std::string::npos ? 0.0 : ReadLength(text.substr(by + 1));
    if (choice.Width == 0.0 || (by != std::string::npos && choice.Height == 0.0))
        RaiseError("--figure-size is a width, or WIDTHxHEIGHT, in millimetres from 40 to 400, not " +
                   Quoted(text));
}

std::string GraphName(const GraphOption& option) {
    if (option.Kind == HistogramKind)
        return option.Kind + ":" + std::to_string(option.Slot) +
               (option.Quantity.empty() ? "" : "," + option.Quantity);
    if (option.Kind == ApproachKind) return option.Kind + ":" + std::to_string(option.Group);
    return option.Set == 0 ? option.Kind : option.Kind + ":" + std::to_string(option.Set);
}

std::string GraphEnding(const GraphOption& option) {
    return EndingOf(option.Path);
}

} // namespace Quillon
