#pragma once
// The data of a graph as text.

#include <string>

namespace Quillon {

// The stored data as text: one line for each point of the longest set, in it X and Y of each set, columns
// separated by delimiter, a missing value as one blank, lines ended by CR LF.
std::string DataText(char delimiter);

// The same between tabs, below a line of heads: title of the X axis and name of the set over each pair.
std::string DataTextWithHeads();

// The command: the data of a graph that is held go to the clipboard, with tabs between the columns. What is
// too much for memory is told.
void EditCopyData();

// The command: the same with heads.
void EditCopyDataWithHeads();

// The character that AsciiDelimiter stands for: that of its code; a tab for 0 and for 1, the standing value.
char AsciiDelimiterChar();

} // namespace Quillon
