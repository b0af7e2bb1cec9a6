#pragma once
// Pictures that are kept as what has been drawn, and become a file at the end: the surface and the operations
// of such a file, over a drawing that a format brings.

#include "platform/PictureFile.h"
#include "platform/Surface.h"

#include <memory>
#include <vector>

namespace Quillon {

// Drawing: Request, Window, and Pen, Brush and TextColor in force. Beside it stand, in its own namespace,
// SetFont, DrawPolyline (two points are a line), DrawPolygon, DrawRectangle, DrawEllipse, DrawPie, WriteText,
// MeasureText, SetClip and ClearClip, which do to it what the surface's operations say (platform/Surface.h).
template <class Drawing> DrawingSurface SurfaceOn(const std::shared_ptr<Drawing>& drawing) {
    DrawingSurface surface; // its functions share the drawing, which lives as long as one of them
    FillSizes(surface, drawing->Request);
    surface.SetPen = [drawing](const SurfacePen& pen) { drawing->Pen = pen; };
    surface.SetBrush = [drawing](const SurfaceBrush& brush) { drawing->Brush = brush; };
    surface.SetFont = [drawing](const SurfaceFont& font) { SetFont(*drawing, font); };
    surface.SetTextColor = [drawing](Rgb color) { drawing->TextColor = color; };
    surface.Line = [drawing](int x1, int y1, int x2, int y2) {
        DrawPolyline(*drawing, {{x1, y1}, {x2, y2}});
    };
    surface.Polyline = [drawing](const std::vector<DevicePoint>& points) { DrawPolyline(*drawing, points); };
    surface.Polygon = [drawing](const std::vector<DevicePoint>& points) { DrawPolygon(*drawing, points); };
    surface.Rectangle = [drawing](const DeviceRect& rect) { DrawRectangle(*drawing, rect); };
    surface.Ellipse = [drawing](const DeviceRect& rect) { DrawEllipse(*drawing, rect); };
    surface.PieSlice = [drawing](DevicePoint centre, int radiusX, int radiusY, double start, double sweep) {
        DrawPie(*drawing, centre, radiusX, radiusY, start, sweep);
    };
    surface.Text = [drawing](int x, int y, const std::string& text) { WriteText(*drawing, x, y, text); };
    surface.Measure = [drawing](const std::string& text) { return MeasureText(*drawing, text); };
    surface.SetClip = [drawing](const DeviceRect& rect) { SetClip(*drawing, rect); };
    surface.ClearClip = [drawing] { ClearClip(*drawing); };
    surface.Refresh = [] {};
    return surface;
}

// A picture on a new drawing, whose window is the whole sheet until another one is set. Finish(Drawing&)
// gives the bytes of the file.
template <class Drawing> PictureFile OpenKept(const PictureRequest& request) {
    const auto drawing = std::make_shared<Drawing>();
    drawing->Request = request;
    drawing->Window = {0, 0, request.Width - 1, request.Height - 1};
    PictureFile file;
    file.Surface = SurfaceOn(drawing);
    file.SetWindow = [drawing](const DeviceRect& window) { drawing->Window = window; };
    file.Finish = [drawing] { return Finish(*drawing); };
    return file;
}

} // namespace Quillon
