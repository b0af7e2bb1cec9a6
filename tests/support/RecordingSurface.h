#pragma once
// A drawing surface that keeps what was drawn as text, for tests of whatever paints on one.
//
// Text is measured by rule: a character is half the font's height wide, and a fifth of the height lies below
// the baseline. So a test can say where every text stands.

#include "platform/Surface.h"

#include <string>
#include <vector>

namespace Quillon {

// One drawing operation with all attributes in force.
struct DrawnItem {
    std::string Kind{}; // "line", "polyline", "polygon", "rectangle", "ellipse", "pie", "text", "refresh"
    std::vector<DevicePoint>
        Points;        // of lines and polygons; the centre of a pie; the baseline start of a text
    DeviceRect Rect{}; // of rectangles and ellipses
    std::string Text;
    int RadiusX{}, RadiusY{};
    double Start{}, Sweep{};
    SurfacePen Pen;
    SurfaceBrush Brush;
    SurfaceFont Font;
    Rgb TextColor{};
    bool Clipped = false;
    DeviceRect Clip{};
};

// What a text covers.
DeviceRect TextBounds(const DrawnItem& text);

// The text of an item: "line 10,20 30,40", "rectangle 0,0 9,9", "text 5,12 'abc'", ...
std::string ItemText(const DrawnItem& item);

class RecordingSurface {
public:
    int Width = 800, Height = 600;
    double DotsPerInchX = 96.0, DotsPerInchY = 96.0;
    bool HasColor = true;

    std::vector<DrawnItem> Items;
    std::function<void(const DrawnItem&)> OnItem; // called at each item

    // The surface; it records into this object, which must outlive it.
    DrawingSurface Surface();

    void Clear() { Items.clear(); }
    std::vector<DrawnItem> OfKind(const std::string& kind) const;
    std::vector<std::string> Lines() const;
    std::vector<std::string> Lines(const std::string& kind) const;

    // The item that draws a text; nullptr if there is none.
    const DrawnItem* FindText(const std::string& text) const;
    std::vector<std::string> Texts() const;

private:
    DrawnItem Now; // the attributes in force
    void SetAttributes(DrawingSurface& surface);
    void Keep(const char* kind, std::vector<DevicePoint> points, const DeviceRect& rect = {},
              const std::string& text = "");
};

} // namespace Quillon
