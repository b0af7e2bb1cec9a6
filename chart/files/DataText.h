#pragma once
// The data of a graph as text.

#include "chart/records/Records.h"

#include <string>

namespace Quillon {

// The stored data as text: one line for each point of the longest set, in it X and Y of each set, columns
// separated by delimiter, a missing value as one blank, lines ended by CR LF.
std::string DataText(char delimiter);

// The points of the longest set of the graph: up to the last place that holds a value.
long LongestSetOfGraph();

// What stands over stored values of something on an axis: "log10 (text)" or "Ln (text)" over logarithms, with
// " / 1000" behind text where they were divided when they were loaded.
std::string AsStored(const std::string& text, const GraphAxis& axis, float loadFactor);

// The same numbers for spreadsheets, in which a blank would be a text: between tabs, nothing where a value is
// missing, below a line of heads. These are title of the X axis and name of the set over each pair, as
// AsStored has them; where there is none "X", and the title of the Y axis or "Y".
std::string DataTextWithHeads();

// The same as comma separated values, heads in quotes.
std::string DataCsv();

// The command: the data of a graph that is held go to the clipboard, with tabs between the columns. What is
// too much for memory, and a clipboard that does not take it, is told.
void EditCopyData();

// The command: the same with heads.
void EditCopyDataWithHeads();

// The character that AsciiDelimiter stands for: that of its code; a tab for 0 and for 1, the standing value.
char AsciiDelimiterChar();

} // namespace Quillon
