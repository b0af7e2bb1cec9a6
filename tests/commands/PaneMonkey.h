#pragma once
// What random hands do in the panes and graph windows of the desktop, below the windows themselves: the
// records and handlers that they show and call. Everything is painted, on surfaces on which nothing is seen.

#include "tests/support/Simulate.h"

#include <string>

namespace Quillon {

class PaneMonkey {
public:
    explicit PaneMonkey(NoiseSource& dice);
    ~PaneMonkey(); // leaves a fresh chart
    PaneMonkey(const PaneMonkey&) = delete;
    PaneMonkey& operator=(const PaneMonkey&) = delete;

    // Between two commands: the workbench follows the analysis and is painted in some size; then a step, a
    // line of the legend, the pointer over the graphs, a pane, or something on one of the graph windows.
    void DoOne();

    // While the guesses dialog stands: something is typed, and the live curve follows and is painted.
    void TypeAGuess();

    // While a graph is shown modally: markers, keys and the bar below it, until it is left.
    void WorkGraph();

    // Does something in a form of graphs, and leaves it. False for another form.
    bool WorkForm(const std::string& form);

    long Painted = 0; // times that something was painted

private:
    std::size_t Below(std::size_t n) { return static_cast<std::size_t>(Dice.Bits() % n); }
    int Within(int n) { return static_cast<int>(Below(static_cast<std::size_t>(n))); }
    bool Chance(std::size_t percent) { return Below(100) < percent; }
    void Look();
    void Press();
    void InAGraphWindow();
    void OnTheGraph();
    void InTheRangeBar();

    NoiseSource& Dice;
};

} // namespace Quillon
