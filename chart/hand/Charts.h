#pragma once
// The window `Charts` as data: the menu items and controls that the engine sets and the zooms it keeps.

#include "chart/hand/ChartScale.h"
#include "chart/hand/KeptZoom.h"
#include "chart/hand/TitleCommands.h"
#include "platform/Arrays.h"
#include "platform/Controls.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace Quillon {

// The formats of the labels that a kept zoom had: a step of one or more chooses no digits, and those of a
// much finer scale would stay.
struct AxisFormat {
    std::int16_t TicFormat{}, Decimals{};
};
struct ZoomFormat {
    AxisFormat X, Y;
};

// Scales that were left by zooming, the newest first.
struct ZoomStack {
    static constexpr int Deepest = 10;
    OneBased<float> XMin{Deepest}, XMax{Deepest}, YMin{Deepest}, YMax{Deepest};
    std::int16_t ZoomDepth{};
    OneBased<ZoomFormat> Formats{Deepest};
    bool GaveScale = false; // the scale at hand is that of a zoom, or of the way back from one
};

// A thin vertical line over the frame that the user moves along X.
struct ChartMarker {
    float X{};                        // units of the stored data
    int Device{};                     // device units, within the frame
    std::uint32_t Color = 0x0000C000; // green
};

// A point beside those of the data: seen, but pale, and none of the graph.
struct PalePoint {
    float X{}, Y{};                 // units of the stored data
    int DeviceX = -1, DeviceY = -1; // -1 outside the frame
};

// The graph is being moved by the pointer.
struct GraphDrag {
    bool On = false;
    bool Moved = false;      // the scale is no longer that of the press
    int X{}, Y{};            // of the press, device units
    double UnitX{}, UnitY{}; // axis units in a device unit; 0 for an axis that takes no part
    ChartScale Begin{};
};

// How the graph at hand is made again from what it shows.
struct GraphOrigin {
    std::string Name;           // "Overlay, set 2"; "" for a graph from elsewhere, as from a file
    std::function<bool()> Make; // builds it without showing it; false where there is nothing to build it from
    std::uint64_t Contents = 0; // a number for what it was made from, of whoever made it
};

inline constexpr const char* ChartsName = "Charts"; // of the form, for the seam

struct ChartsForm {
    // What ChartMenuStatus sets. What needs a graph is off before the first one.
    MenuItem LinePlot{"&Lines"}, DotCenter{"&Dots in Symbols"}, BothPlot{"Lines && S&ymbols"};
    MenuItem SymbolPlot{"&Symbols"}, AltPlot{"&Alternate Symbols and Lines", false, false};
    MenuItem mnuEditTitles{"Edit T&itles...", false, false}, mnuEditLegend{"&Edit Legend...", false, false};
    MenuItem ShowLegend{"Show &Legend"}, DeleteTitles{"&Delete Titles", false, false};
    MenuItem ShowGrids{"Show &Grids"};
    MenuItem SeparateX{"Separate Along &X...", false, false}, SeparateY{"Separate Along &Y...", false, false};
    MenuItem SeparateBoth{"Separate Along &Both...", false, false};
    MenuItem EditHorz{"Edit &Horizontal Axis...", false, false};
    MenuItem EditVert{"Edit &Vertical Axis...", false, false};
    MenuItem LineWidths{"Line &Widths...", false, false}, SymbolSize{"Symbol Si&ze...", false, false};
    MenuItem AlterColors{"Set C&olors...", false, false};
    MenuItem NewWindow{"&New Window", false, false};
    MenuItem SaveAs{"Save Graph &As...", false, false}, WriteData{"&Write Data...", false, false};
    MenuItem WriteMetafile{"Write &Metafile...", false, false}, Print{"&Print...", false, false};
    MenuItem CopyGraph{"&Copy Graph", false, false}, CopyBitmap{"Copy &Bitmap", false, false};
    MenuItem CopyMetafile{"Copy &Metafile", false, false}, CopyData{"Copy &Data", false, false};
    MenuItem CopyHeads{"Copy Data with &Heads", false, false}, PasteData{"&Paste Data", false, false};

    // Options of the graph at hand that belong to whoever made it: captions and what each does. The engine
    // itself does nothing here; an item without an action is not shown.
    std::array<MenuItem, 5> SpecialOpts;
    std::array<std::function<void()>, 5> SpecialActions;
    std::array<bool, 5> OptionWithdrawn{}; // off for as long as SuitSpecialOptions says

    GraphOrigin Origin; // goes with the options

    // Scale commands and options of the window itself.
    MenuItem LastZoom{"&Last Zoom", false, false};
    MenuItem AutoScale{"&AutoScale"}, AutoX{"AutoScale &X"}, AutoY{"AutoScale &Y"};
    MenuItem RoundOnZoom{"&Round Axis Scales on Zoom"}, ShowCursor{"Show &Cursor Position"};
    MenuItem UseRainbow{"Use Rain&bow Colors"};
    MenuItem ClassicColors{"&Classic Colors"}, DarkCanvas{"Dar&k Canvas"};
    ZoomStack Zooms;

    Control StatusLine;         // the label "Status" below the graph
    bool Zooming = false;       // a rubber band is being drawn, from (ZoomX1, ZoomY1) to (LastX, LastY)
    int ZoomX1{}, ZoomY1{};     // device units
    int LastX = -1, LastY = -1; // the latest position of the pointer
    GraphDrag Drag;
    std::optional<ChartScale> LeftByWheel; // while it stands, a turn of the wheel goes on with the zoom
    KeptZoom FormerZoom;                   // of the graph before the one that is being made
    std::vector<ChartMarker> Markers;
    std::int16_t ZoomState{}; // markers that whoever made the graph has in use
    int CapturedMarker = -1;  // the one that the pointer drags
    // A press has met several markers: the first move decides on one of MarkerGroup.First .. Last.
    struct {
        int First = 0, Last = -1; // no group when Last is below First
        int PressX{};             // device units
    } MarkerGroup;
    int ActiveMarker = 0;     // the one that the arrow keys move
    bool WashOutside = false; // what lies outside the two markers is painted grey
    std::vector<PalePoint> PalePoints;
    // What a rectangle that is drawn with Shift is for, told its sides in units of the stored data; a click
    // is a small one. Without it Shift makes no difference.
    std::function<void(const ChartScale& box)> OnShiftBox;
    bool ShiftBox = false;           // the rubber band that is being drawn was begun with Shift
    std::function<void()> OnMarkers; // after markers have moved or come to stand elsewhere
    std::int16_t KeyCode{};          // the last key pressed on the graph, until it is taken
    std::int16_t KeyShift{};         // sum of 1 Shift, 2 Ctrl, 4 Alt
    bool Needed = false;             // whoever made the graph still waits for it
    bool ClosesAsEscape = false;     // closing the window is as good as Escape: nobody is asked
    bool Shown = false;              // cleared to close a window that is shown modally
    // While the window is shown modally: what a key does; true ends the showing.
    std::function<bool(int code, int shift)> EndsOnKey;
};

inline ChartsForm Charts;

// Sets the menu items after the current spec.
void ChartMenuStatus(ChartsForm& form);

// Withdraws all special options, and how the graph is made; who makes the next graph tells its own.
void ClearSpecialOptions();
void OfferSpecialOption(std::size_t place, const std::string& caption, void (*action)());

// Options work on the signal as it was handed over. While the sets stand shifted along Y, or the scale is
// logarithmic, they are off: a logarithm of that would mean nothing.
void SuitSpecialOptions();

// True when the window may be closed: asks while whoever made the graph still waits for it, unless closing
// counts as Escape.
bool ChartsMayClose();

// Puts a scale on the stack of zooms; the oldest of ten is lost.
void PushZoom(float xmin, float xmax, float ymin, float ymax);

// Takes the newest scale from the stack; depth is what is left, and with nothing left LastZoom is disabled.
// An empty stack leaves all as it is.
void PopZoom(float& xmin, float& xmax, float& ymin, float& ymax, std::int16_t& depth);

// Empties the stack, disables LastZoom and lets go of a graph that is being moved.
void ClearZoom();

} // namespace Quillon
