#pragma once
// What the chart engine holds: the one graph of the process with all that has been worked out for it.

#include "chart/records/ChartSeams.h"
#include "chart/records/ChartStyle.h"
#include "chart/records/Columns.h"
#include "chart/records/Cycles.h"
#include "chart/records/Records.h"
#include "chart/records/SetLooks.h"
#include "chart/records/SetTable.h"
#include "platform/Arrays.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Quillon {

// The values of ChartModule::Target.
namespace Targets {
inline constexpr std::int16_t Metafile = 0, Screen = 1, Printer = 2;
}

// The values of GraphState::KindX and KindY.
namespace AxisKinds {
inline constexpr std::int16_t Category = 1, Value = 2;
}

// The codes of GraphStatus. Below 100: put right, the work goes on. From 100: stopped.
namespace GraphStatuses {
inline constexpr std::int16_t Fine = 0;
inline constexpr std::int16_t BadLogBase = 15;    // LogBase of a log axis not usable; 10 is taken
inline constexpr std::int16_t ZeroFactor = 20;    // Factor of a manual scale zero; 1 is taken
inline constexpr std::int16_t BadPlotStyle = 30;  // PlotStyle outside 1 to 3; 1 is taken
inline constexpr std::int16_t NoRoom = 105;       // text leaves no room for the frame; nothing is drawn
inline constexpr std::int16_t BadGraphType = 135; // GraphType outside 1 to 5
inline constexpr std::int16_t BadSetRange = 155;  // firstSet greater than lastSet
inline constexpr std::int16_t NoPoints = 160;     // fewer than one point
inline constexpr std::int16_t NoSurface = 195;    // no surface for the target
inline constexpr std::int16_t Stop = 100;         // the least code that stops
} // namespace GraphStatuses

// The working values of the current graph. Lengths and places are in device units of the target. The order is
// that of the graph file.
struct GraphState {
    std::int16_t Busy{};               // 1 while data are filled in; a draw request then is ignored
    std::int16_t IniRead{};            // 1 after chart.ini has been read
    std::int16_t CyclesBuilt{};        // 1 while ChartModule::Cycles is valid
    float Aspect{};                    // device units per twip in X divided by those in Y
    std::int16_t DeviceW{}, DeviceH{}; // size of the target
    std::int16_t NColors{};            // colours of the table in force
    std::int16_t ViewW{}, ViewH{};
    std::int16_t Diagonal{}; // of the view, its whole part: every Size, TicSize, ... is a fraction of it
    std::int16_t ViewLeft{}, ViewTop{}, ViewRight{}, ViewBottom{}; // the view after it has been put right
    std::int16_t Stagger{}; // 1: the category labels of the bottom axis stand in two rows
    std::int16_t LabelWidthX1{}, LabelWidthY1{}, LabelWidthX2{}, LabelWidthY2{}; // widest tic label
    std::int16_t Npts{}, Nsets{}, FirstSet{}, LastSet{};
    std::int16_t MultiSet{};       // 1 when the data came as several sets
    std::int16_t KindX{}, KindY{}; // AxisKinds
    std::int16_t TicLenX{}, TicLenY{}, ClearX{}, ClearY{};
    std::int16_t SymbolHalfX{}, SymbolHalfY{};
    float FontMax{}, FontMin{};          // the fractions of the diagonal that clamp every text size
    std::array<std::int16_t, 6> Mouse{}; // mouse and marker state
    bool operator==(const GraphState&) const = default;
};

// The space that an axis takes outside the frame, from the frame outward: device units across the axis.
struct AxisSpace {
    std::int16_t TicGap1{}, TicHeight{}, TicGap2{};       // the tic labels
    std::int16_t TitleGap1{}, TitleHeight{}, TitleGap2{}; // the axis title
    int Total() const { return TicGap1 + TicHeight + TicGap2 + TitleGap1 + TitleHeight + TitleGap2; }
    bool operator==(const AxisSpace&) const = default;
};

// The space of the main titles above the top axis, from above downward.
struct TitleSpace {
    std::int16_t Gap1{}, Height1{}, Gap2{}; // first title and the gap below it
    std::int16_t Height2{}, Gap3{};         // second title and the gap below it
    std::int16_t Total{};
    bool operator==(const TitleSpace&) const = default;
};

// The arrangement of the legend: its entries in rows, each a sample and a text.
struct LegendSpace {
    std::int16_t Columns{}, Rows{};
    std::int16_t EntryWidth{}, EntryHeight{};
    std::int16_t SampleWidth{}, Gap{};
    std::int16_t Width{}, Height{}; // of the whole
    bool operator==(const LegendSpace&) const = default;
};

// The text sizes in force after layout, fractions of the diagonal. They start as those of the GraphSpec and
// shrink where the place is short; the GraphSpec keeps what was asked for.
struct TextSizes {
    float Title1{}, Title2{};
    std::array<float, 4> AxisTitle{}, Label{}; // bottom, top, left, right
    float Legend{};
};

struct ChartLayout {
    AxisSpace Left, Bottom, Top, Right;
    TitleSpace Titles;
    LegendSpace Legend;
    TextSizes Sizes;
};

// The dash pattern of the pen in force. It lives across lines, so that it runs on along a polyline.
struct DashState {
    std::int16_t Style{}; // 0 solid, 1 to 4 the patterns
    std::size_t Pair{};   // the (on, off) pair in use
    bool InGap = false;
    double Used{};     // length of the present piece that has been used
    double Unit = 1.0; // device units that a unit of the patterns takes
};

// The one graph.
struct ChartModule {
    GraphSpec Spec; // the current one
    GraphState State;
    ChartStyle Style;
    StyleCycles Cycles;
    ChartLayout Layout;

    SetTable DataX, DataY;           // the values after prescale and log transform, not the caller's
    ChartColumns Columns;            // what these were before they were changed
    OneBased<std::string> SetNames;  // legend text per set, counted from the first set plotted
    OneBased<std::string> CatLabels; // label per category; numbers stand in for blank ones
    std::vector<GraphNote> Notes;
    std::vector<GraphMark> Marks;
    OneBased<std::int16_t>
        SetFlags;   // one per set: the number by which it looks (SetLooks::Numbers); 0: its own
    SetLooks Looks; // what sets show, where their numbers do not tell them apart

    // The cycles of a graph file that had them in place of their orders: used as they are on every target
    // with colours. Reading the defaults again drops them.
    std::optional<StyleCycles> CyclesOfFile;

    std::int16_t GraphHeld{};   // -1: the data stay after drawing, for redraw, zoom and save
    std::int16_t GraphDrawn{};  // -1: a graph stands on the target
    std::int16_t GraphStatus{}; // GraphStatuses
    std::int16_t Target = Targets::Screen;
    std::int16_t PlotterFonts{}; // -1 on a plotter
    std::int16_t Log10Axis{};    // -1 while the axis in hand is logarithmic to the base 10
    std::int16_t ColorDevice{};  // -1 on a target with colours
    std::int16_t UseColorOnBW{}; // this time only: colours on a printer that has two
    std::int16_t UseOnlyBW{};    // this time only: black and white on a colour printer
    std::int16_t Painting{};     // -1 while DrawGraph runs

    float PixX{}, PixY{}; // device units per twip
    DashState Dash;
    double XScale{}, YScale{}, XOffset{}, YOffset{}; // the mapping of axis units to device units
    // What the stored data were divided by when they were loaded. After a restore: LoadDivisor of the axis.
    float LoadFactorX = 1.0F, LoadFactorY = 1.0F;

    OneBased<float> SetShift;    // separation of sets: offset per set or pair, in scale units
    std::int16_t SeparateMode{}; // 0 both axes, 1 X, 2 Y

    MetafileTarget Metafile; // while Target is a metafile
};

inline ChartModule Chart;

} // namespace Quillon
