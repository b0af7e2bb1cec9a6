#include "tests/support/RecordingSurface.h"

#include <cstdio>

namespace Quillon {

namespace {

int WidthOf(const SurfaceFont& font, const std::string& text) {
    return (font.Height * static_cast<int>(text.size()) + 1) / 2;
}

std::string PointText(const DevicePoint& p) {
    return std::to_string(p.X) + "," + std::to_string(p.Y);
}

} // namespace

DeviceRect TextBounds(const DrawnItem& text) {
    const int w = WidthOf(text.Font, text.Text);
    const int h = text.Font.Height;
    const int below = h / 5;
    const int x = text.Points[0].X;
    const int y = text.Points[0].Y;
    switch (text.Font.Angle) {
    case 90:
        return {x - (h - below), y - w + 1, x + below - 1, y};
    case 180:
        return {x - w + 1, y - below, x, y + (h - below) - 1};
    case 270:
        return {x - below, y, x + (h - below) - 1, y + w - 1};
    default:
        return {x, y - (h - below), x + w - 1, y + below - 1};
    }
}

std::string ItemText(const DrawnItem& item) {
    std::string text = item.Kind;
    for (const DevicePoint& p : item.Points)
        text += " " + PointText(p);
    if (item.Kind == "rectangle" || item.Kind == "ellipse")
        text += " " + PointText({item.Rect.Left, item.Rect.Top}) + " " +
                PointText({item.Rect.Right, item.Rect.Bottom});
    if (item.Kind == "pie") {
        char angles[64];
        std::snprintf(angles, sizeof angles, " %.2f %.2f", item.Start, item.Sweep);
        text += " " + std::to_string(item.RadiusX) + "x" + std::to_string(item.RadiusY) + angles;
    }
    if (item.Kind == "text") text += " '" + item.Text + "'";
    return text;
}

void RecordingSurface::Keep(const char* kind, std::vector<DevicePoint> points, const DeviceRect& rect,
                            const std::string& text) {
    Now.Kind = kind;
    Now.Points = std::move(points);
    Now.Rect = rect;
    Now.Text = text;
    Items.push_back(Now);
    if (OnItem) OnItem(Items.back());
}

void RecordingSurface::SetAttributes(DrawingSurface& s) {
    s.SetPen = [this](const SurfacePen& pen) { Now.Pen = pen; };
    s.SetBrush = [this](const SurfaceBrush& brush) { Now.Brush = brush; };
    s.SetFont = [this](const SurfaceFont& font) { Now.Font = font; };
    s.SetTextColor = [this](Rgb color) { Now.TextColor = color; };
    s.SetClip = [this](const DeviceRect& rect) {
        Now.Clipped = true;
        Now.Clip = rect;
    };
    s.ClearClip = [this] { Now.Clipped = false; };
    s.Measure = [this](const std::string& text) {
        return TextSize{WidthOf(Now.Font, text), Now.Font.Height, Now.Font.Height / 5};
    };
}

DrawingSurface RecordingSurface::Surface() {
    DrawingSurface s;
    SetAttributes(s);
    s.Width = [this] { return Width; };
    s.Height = [this] { return Height; };
    s.DotsPerInchX = [this] { return DotsPerInchX; };
    s.DotsPerInchY = [this] { return DotsPerInchY; };
    s.HasColor = [this] { return HasColor; };
    s.Line = [this](int x1, int y1, int x2, int y2) { Keep("line", {{x1, y1}, {x2, y2}}); };
    s.Polyline = [this](const std::vector<DevicePoint>& points) { Keep("polyline", points); };
    s.Polygon = [this](const std::vector<DevicePoint>& points) { Keep("polygon", points); };
    s.Rectangle = [this](const DeviceRect& rect) { Keep("rectangle", {}, rect); };
    s.Ellipse = [this](const DeviceRect& rect) { Keep("ellipse", {}, rect); };
    s.PieSlice = [this](DevicePoint centre, int rx, int ry, double start, double sweep) {
        Now.RadiusX = rx;
        Now.RadiusY = ry;
        Now.Start = start;
        Now.Sweep = sweep;
        Keep("pie", {centre});
    };
    s.Text = [this](int x, int y, const std::string& text) { Keep("text", {{x, y}}, {}, text); };
    s.Refresh = [this] { Keep("refresh", {}); };
    return s;
}

std::vector<DrawnItem> RecordingSurface::OfKind(const std::string& kind) const {
    std::vector<DrawnItem> found;
    for (const DrawnItem& item : Items)
        if (item.Kind == kind) found.push_back(item);
    return found;
}

std::vector<std::string> RecordingSurface::Lines() const {
    std::vector<std::string> lines;
    for (const DrawnItem& item : Items)
        lines.push_back(ItemText(item));
    return lines;
}

std::vector<std::string> RecordingSurface::Lines(const std::string& kind) const {
    std::vector<std::string> lines;
    for (const DrawnItem& item : Items)
        if (item.Kind == kind) lines.push_back(ItemText(item));
    return lines;
}

const DrawnItem* RecordingSurface::FindText(const std::string& text) const {
    for (const DrawnItem& item : Items)
        if (item.Kind == "text" && item.Text == text) return &item;
    return nullptr;
}

std::vector<std::string> RecordingSurface::Texts() const {
    std::vector<std::string> texts;
    for (const DrawnItem& item : Items)
        if (item.Kind == "text") texts.push_back(item.Text);
    return texts;
}

} // namespace Quillon
