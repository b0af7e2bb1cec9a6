#pragma once
// The window `Charts` as data: the menu items and controls that the engine sets and the zooms it keeps.

#include "platform/Arrays.h"
#include "platform/Controls.h"

#include <array>
#include <cstdint>
#include <functional>

namespace Quillon {

// Scales that were left by zooming, the newest first.
struct ZoomStack {
    static constexpr int Deepest = 10;
    OneBased<float> XMin{Deepest}, XMax{Deepest}, YMin{Deepest}, YMax{Deepest};
    std::int16_t ZoomDepth{};
};

struct ChartsForm {
    // What ChartMenuStatus sets.
    MenuItem LinePlot{"&Lines"}, DotCenter{"&Dots in Symbols"}, BothPlot{"Lines && S&ymbols"};
    MenuItem SymbolPlot{"&Symbols"}, AltPlot{"&Alternate Symbols and Lines"};
    MenuItem ShowLegend{"Show &Legend"}, DeleteTitles{"&Delete Titles"}, ShowGrids{"Show &Grids"};
    MenuItem SeparateX{"Separate Along &X..."}, SeparateY{"Separate Along &Y..."};
    MenuItem SeparateBoth{"Separate Along &Both..."};

    // Options of the graph at hand that belong to whoever made it: captions and what each does. The engine
    // itself does nothing here; an item without an action is not shown.
    std::array<MenuItem, 5> SpecialOpts;
    std::array<std::function<void()>, 5> SpecialActions;

    MenuItem LastZoom{"&Last Zoom", false, false};
    ZoomStack Zooms;
};

inline ChartsForm Charts;

// Sets the menu items after the current spec.
void ChartMenuStatus(ChartsForm& form);

// Puts a scale on the stack of zooms; the oldest of ten is lost.
void PushZoom(float xmin, float xmax, float ymin, float ymax);

// Takes the newest scale from the stack; depth is what is left, and with nothing left LastZoom is disabled.
// An empty stack leaves all as it is.
void PopZoom(float& xmin, float& xmax, float& ymin, float& ymax, std::int16_t& depth);

// Empties the stack and disables LastZoom.
void ClearZoom();

} // namespace Quillon
