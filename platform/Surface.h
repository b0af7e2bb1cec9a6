#pragma once
// The drawing surface: the plain operations that a chart is painted with, on screen, paper or in a file.
//
// Device units are whole numbers, x to the right, y downward, the origin at the top left corner of the
// surface; a surface is Width by Height units, the last unit is Width - 1. A pen one unit wide or thinner is
// the thinnest line that the device has. Fillings: a toolkit painter for windows, PNG, SVG and PDF; enhanced
// metafiles; and a recording one whose output is text, for tests. Nothing here may serve events but Refresh.
//
// Coordinates beyond the surface are allowed and are clipped by it.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Quillon {

using Rgb = std::uint32_t; // 0x00RRGGBB

// A place in device units.
struct DevicePoint {
    int X{};
    int Y{};
};

// A rectangle with both corners included.
struct DeviceRect {
    int Left{}, Top{}, Right{}, Bottom{};
};

struct SurfacePen {
    bool Visible = true;
    Rgb Color{};
    int Width = 1; // device units; always solid: dashes are drawn piece by piece by the chart
    // What is drawn and filled under this pen is combined with what is there by exclusive or, so that drawing
    // it once more takes it away; on white it has its own colour. Pictures that keep no pixels draw it as
    // usual.
    bool Exclusive = false;
};

// What a closed shape is filled with: nothing, a colour, or a hatch, whose lines lie a twelfth of an inch
// apart on every device (chart/pens/HatchLines.h).
enum class BrushKind {
    Hollow,
    Solid,
    Horizontal,
    Vertical,
    ForwardDiagonal,  // falling to the right
    BackwardDiagonal, // rising to the right
    Cross,
    DiagonalCross
};
// A filling and its colour. Between the lines of a hatch what is below stays in sight.
struct SurfaceBrush {
    BrushKind Kind = BrushKind::Hollow;
    Rgb Color{};
};

struct SurfaceFont {
    std::string Face; // "Arial", "Times New Roman", ...: a filling takes the nearest family that it has
    int Height = 12;  // device units from the top of the tallest letter to the bottom of the lowest
    bool Bold = false;
    int Angle = 0; // degrees counterclockwise: 0, 90, 180, 270
};

struct TextSize {
    int Width{};   // along the line of text
    int Height{};  // across it
    int Descent{}; // the part of Height below the baseline
};

struct DrawingSurface {
    // Size and resolution; read afresh at each painting.
    std::function<int()> Width;
    std::function<int()> Height;
    std::function<double()> DotsPerInchX;
    std::function<double()> DotsPerInchY;
    std::function<bool()> HasColor; // false on a device with two colours

    // Attributes of everything that follows.
    std::function<void(const SurfacePen&)> SetPen;
    std::function<void(const SurfaceBrush&)> SetBrush;
    std::function<void(const SurfaceFont&)> SetFont;
    std::function<void(Rgb)> SetTextColor;

    // Drawing. A line includes both ends. Polygons and ellipses are filled with the brush and outlined with
    // the pen. Polyline joins its points without gaps.
    std::function<void(int x1, int y1, int x2, int y2)> Line;
    std::function<void(const std::vector<DevicePoint>&)> Polyline;
    std::function<void(const std::vector<DevicePoint>&)> Polygon;
    std::function<void(const DeviceRect&)> Rectangle;
    std::function<void(const DeviceRect& around)> Ellipse;
    // A pie slice: centre, radii, start and sweep in degrees counterclockwise from three o'clock.
    std::function<void(DevicePoint centre, int radiusX, int radiusY, double start, double sweep)> PieSlice;

    // Text in the font's direction; (x, y) is the left end of the baseline as the text is read.
    std::function<void(int x, int y, const std::string& text)> Text;
    std::function<TextSize(const std::string& text)> Measure; // in the font in force, unrotated

    std::function<void(const DeviceRect&)> SetClip; // replaces the clip rectangle
    std::function<void()> ClearClip;

    std::function<void()> Refresh; // shows what has been drawn so far; may serve events
};

} // namespace Quillon
