#pragma once
// The records of a graph: everything that describes it except its data. They are what a caller fills, what
// the engine works on and what a graph file keeps, in the widths given here.
//
// Text sizes are fractions of the view's diagonal. Line widths are in twips (1/1440 inch). A colour is an
// index into the colour cycle (chart/CHARTEX.h) unless it says otherwise. A font code holds the family in its
// low four bits (0 to 5, an index into the family table) and the style above them; bit 4 is bold.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace Quillon {

// A text of at most N characters, which files keep padded with blanks to N. Blanks at its right end are no
// part of it; what is too long is cut.
template <std::size_t N> class FixedText {
public:
    FixedText() = default;
    FixedText(std::string_view text) : Kept(text.substr(0, N)) { // converts: a text is assigned as it is
        while (!Kept.empty() && Kept.back() == ' ')
            Kept.pop_back();
    }
    FixedText(const std::string& text) : FixedText(std::string_view(text)) {}
    FixedText(const char* text) : FixedText(std::string_view(text)) {}

    const std::string& Str() const { return Kept; }
    operator const std::string&() const { return Kept; }
    bool Empty() const { return Kept.empty(); }
    std::string Padded() const { return Kept + std::string(N - Kept.size(), ' '); }
    bool operator==(const FixedText&) const = default;

private:
    std::string Kept;
};

// The values of GraphSpec::GraphType.
namespace GraphTypes {
inline constexpr std::int16_t HorizontalBars = 1, VerticalBars = 2, CategoryLines = 3, XYPlot = 4, Pie = 5;
}

// The values of GraphSpec::PlotStyle on an X-Y plot. In the bar types any value but 1 means stacked bars.
namespace PlotStyles {
inline constexpr std::int16_t Lines = 1, SymbolsOnly = 2, Alternating = 3;
}

// The values of GraphAxis::ScaleMode. A zoomed scale stands like a manual one, but its tics, number format
// and prescale are those found before the zoom.
namespace ScaleModes {
inline constexpr std::int16_t Manual = 0, Prescaled = 1, Autorange = 2, Zoomed = 3;
}

namespace ScaleTypes {
inline constexpr std::int16_t Linear = 1, Logarithmic = 2;
}

namespace TicModes {
inline constexpr std::int16_t NoTics = 0, MarksAndLabels = 1, MarksOnly = 2;
}

namespace TicFormats {
inline constexpr std::int16_t Decimal = 1, Exponential = 2;
}

namespace LegendPlaces {
inline constexpr std::int16_t Right = 2, Below = 3;
}

// LogBase of natural logarithms: the single nearest to e.
inline constexpr float NaturalBase = 2.718281828459045F;

// A rectangle in device units of the current target, with its background.
struct GraphBox {
    std::int16_t X1{}, Y1{}, X2{}, Y2{};
    std::int16_t Color{};                // the low four bits: one of the 16 basic colours, 15 is white
    std::array<std::int16_t, 3> Spare{}; // zero
    bool operator==(const GraphBox&) const = default;
};

// One line of text with its format.
struct GraphTitle {
    FixedText<80> Text;
    std::int16_t Font{};
    float Size{};
    std::int16_t Color{};
    std::int16_t Justify{}; // 0 left, 1 centre, 2 right of the frame; 3, 4, 5 the same of the view
    bool operator==(const GraphTitle&) const = default;
};

// One axis. On a logarithmic scale Min, Max and FirstTic are logarithms to the base LogBase; on a prescaled
// one they are in units of Factor.
struct GraphAxis {
    std::int16_t Show{};    // 1 shown, 0 suppressed
    std::int16_t Grid{};    // 1 grid lines at the major tics
    std::int16_t TicSide{}; // carried along, used by no drawing
    GraphTitle Title;
    std::int16_t Color{};
    std::int16_t TicMode{};   // TicModes
    std::int16_t ScaleType{}; // ScaleTypes
    float LogBase{};          // 10 or NaturalBase
    std::int16_t ScaleMode{}; // ScaleModes
    float Min{}, Max{};
    float Factor{};           // prescale divisor
    FixedText<40> FactorName; // its name, shown behind the title
    std::int16_t LabelFont{};
    float LabelSize{};
    float FirstTic{};
    float TicInterval{};      // between major tics; on a log10 axis the minor tics in a decade
    std::int16_t TicFormat{}; // TicFormats
    std::int16_t Decimals{};  // digits behind the point of a label
    std::int16_t AxisWidth{};
    std::int16_t TicWidth{};
    bool operator==(const GraphAxis&) const = default;
};

inline bool HasLabels(const GraphAxis& axis) {
    return axis.Show == 1 && axis.TicMode == TicModes::MarksAndLabels;
}

struct GraphLegend {
    std::int16_t Show{};
    std::int16_t Where{};     // LegendPlaces
    std::int16_t TextColor{}; // one colour for all, or its bitwise complement: each entry in its set's colour
    std::int16_t Font{};
    float Size{};
    std::int16_t AutoPlace{}; // 1: the layout places the legend and may shrink it
    GraphBox Box;             // where it stands
    bool operator==(const GraphLegend&) const = default;
};

struct GraphSpec {
    std::int16_t GraphType{};  // GraphTypes
    std::int16_t PlotStyle{};  // PlotStyles
    std::int16_t SymbolMode{}; // 0 symbols with a dot at the centre, 1 without, 2 the dot alone, 3 none
    std::int16_t Relayout{};   // 1: the frame is chosen afresh; 0: the frame given is kept where text permits
    GraphBox View;             // the part of the device to use; all zero: the whole
    GraphBox Frame;            // the plotting area
    GraphTitle Title1, Title2;
    GraphAxis AxisX1, AxisX2, AxisY1, AxisY2; // bottom, top, left, right
    GraphLegend Legend;
    std::int16_t LineWidth{}; // of the data
    std::int32_t Spare{};     // zero
    FixedText<80> Device;     // "0" the picture box, "1" the printer, else the file name of a metafile
    bool operator==(const GraphSpec&) const = default;
};

// A free text at a point of the graph.
struct GraphNote {
    FixedText<80> Text;
    std::int16_t Font{};
    float Size{};
    std::int16_t Color{};
    std::int16_t Direction{}; // 0 horizontal, 1 upward, 2 upside down, 3 downward
    std::int16_t Align{};     // 0 starts at the point, 1 centred on it, 2 centred on the frame
    float X{}, Y{};           // in the units of the stored data
    bool operator==(const GraphNote&) const = default;
};

// A drawn object at a place of the graph, in the units of the stored data.
struct GraphMark {
    std::int16_t Kind{}; // 0 line, 1 arrow, 2 arrow with two heads, 3 line at X1, 4 line at Y1, 5 ellipse
    std::int16_t Fill{}; // of the ellipse: 1 to 6 the hatches, else solid
    std::int16_t Color{};
    std::int16_t XorDraw{}; // 1: drawn by exclusive or
    float X1{}, Y1{};       // start; centre of the ellipse
    float X2{}, Y2{};       // end; radii of the ellipse
    bool operator==(const GraphMark&) const = default;
};

} // namespace Quillon
