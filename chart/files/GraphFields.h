#pragma once
// The fields of a graph file: all that stands behind the two texts of its header, down to the trailer.
//
// Numbers are little-endian and stand without padding; a text is a 16-bit count of characters and the
// characters, a text of fixed length is filled up with blanks. There is no end marker and no framing: what a
// field means follows from the fields before it. The order of the fields is in GraphFields.cpp.

#include "chart/files/GraphFile.h"
#include "chart/files/GraphStreams.h"

namespace Quillon {

// Appends a graph in the layout of today. A text or list too long for a 16-bit count is the run-time error
// "Overflow".
void GraphFields(GraphWriter& writer, const GraphContents& graph);

// Takes a graph from where the reader stands, which knows the version of the file (1.0 to 1.5). What that
// version has no field for stays in the graph as it was. Too few bytes are the run-time error "Input past end
// of file", a field that cannot be "the file is damaged at NAME"; the graph is then half taken.
void GraphFields(GraphReader& reader, GraphContents& graph);

} // namespace Quillon
