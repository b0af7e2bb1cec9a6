#pragma once
// What the engine keeps from one graph to the next beside the graph itself.

#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "platform/Arrays.h"

#include <cstdint>
#include <utility>

namespace Quillon {

// The end of SymbolSize. A graph file whose value lies beyond it is taken for one with a longer header, so
// that no setting may.
inline constexpr float LargestSymbolSize = 0.1F;

struct ChartKept {
    OneBasedMatrix<float> BoxTable; // square; ChartBoxTable of the file that the graph came from, else empty
    std::int16_t ZoomState{};       // markers in use when that file was saved, else 0
    std::int16_t StyleOfFile{}; // -1: Chart.Style came with a file; the next GraphInit reads chart.ini again
    std::int16_t RainbowDefault{}; // UseRainbowColors of chart.ini: what each graph starts with
    // -1: tables of colours begin with the engine's own (chart/records/Palettes.h). Programs take the safe
    // ones unless chart.ini has ClassicColors=True.
    std::int16_t ClassicColors = -1;
    std::int16_t DarkCanvas{}; // -1: the picture box is painted light on dark; paper and files never are
};

inline ChartKept Kept;

// The kinds (AxisKinds) that a graph type gives the axes along X and along Y.
inline std::pair<std::int16_t, std::int16_t> KindsOfType(std::int16_t graphType) {
    const bool across = graphType == GraphTypes::HorizontalBars;
    const bool pie = graphType == GraphTypes::Pie;
    return {across || graphType == GraphTypes::XYPlot ? AxisKinds::Value : AxisKinds::Category,
            across || pie ? AxisKinds::Category : AxisKinds::Value};
}

} // namespace Quillon
