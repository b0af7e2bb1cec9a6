#pragma once
// The headline, and the commands on titles and legend.

#include <string>

namespace Quillon {

// Writes a headline on the graph: the part before the first "\" is the first title, the rest the second.
// Without "\" a second title that has text keeps its place as a blank line. "" clears both. A graph that
// stands on the target is brought up to date.
void SetGraphComment(const std::string& text);

// The command: blanks both titles and lays out again.
void DeleteTitles();

// The command: shows or hides the legend and lays out again.
void ShowLegend();

} // namespace Quillon
