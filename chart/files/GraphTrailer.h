#pragma once
// What a picture depends on and the stated fields of a graph file have no place for: blocks behind the last
// field, each a text (its name), an i16 version and an i32 count of the bytes to come, so that a reader that
// knows none of them stops before the first.
//
//     EXTENSION   pairs of a text and a single: settings by name. Unknown names are skipped.
//     LOOKS       ChartModule::Looks: i16 n, n times i16 colour and i16 dash; i16 m, m times a text, i16
//     colour
//                 and i16 dash
//     CYCLES      ChartModule::CyclesOfFile: for each of the 70 places i32 colour, i16 line, i16 second line,
//                 i16 pattern, i16 symbol, i16 border
//
// In this order, and each only where the graph has something for it: a graph that needs none of them has a
// file of stated fields alone. [decision: graph-trailer]

#include "chart/files/GraphStreams.h"
#include "chart/records/ChartState.h"

namespace Quillon {

// Appends the blocks of a graph.
void WriteTrailer(GraphWriter& writer, const ChartModule& module);

// Takes the blocks that follow; what has none is as standard. Bytes that follow and begin no block are left
// alone, a block that is damaged is a RuntimeError. Counts have to suit the graph that was read before.
void ReadTrailer(GraphReader& reader, ChartModule& module);

} // namespace Quillon
