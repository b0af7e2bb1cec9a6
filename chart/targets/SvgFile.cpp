#include "chart/targets/SvgFile.h"

#include "chart/pens/BaseFonts.h"
#include "chart/pens/FontClass.h"
#include "chart/pens/HatchLines.h"
#include "chart/pens/SymbolText.h"
#include "chart/targets/KeptPicture.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <utility>

namespace Quillon {

namespace {

constexpr double PointsPerInch = 72.0;

struct SvgDrawing {
    PictureRequest Request;
    DeviceRect Window;
    std::string Body;
    std::string Definitions; // clips
    int Clips = 0;
    bool Clipped = false;

    SurfacePen Pen;
    SurfaceBrush Brush;
    const BaseFont* Font = &BaseFontFor("Arial", false);
    int Em = 12, Height = 13, Angle = 0;
    Rgb TextColor = 0;
};

// --- text of the file ----------------------------------------------------------------------------------

// A number with at most three places behind the point, whatever the locale.
std::string Number(double value) {
    std::array<char, 64> buffer{};
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, 3);
    std::string text(buffer.data(), result.ptr);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text == "-0" ? "0" : text;
}

std::string ColorCode(Rgb color) {
    constexpr const char* digits = "0123456789abcdef";
    std::string code = "#";
    for (int shift = 20; shift >= 0; shift -= 4)
        code += digits[color >> static_cast<unsigned>(shift) & 15U];
    return code;
}

std::string Attribute(const char* name, const std::string& value) {
    return std::string(" ") + name + "=\"" + value + "\"";
}
std::string Attribute(const char* name, double value) {
    return Attribute(name, Number(value));
}

void AppendUtf8(std::string& text, char16_t letter) {
    const auto code = static_cast<unsigned>(letter);
    const auto append = [&text](unsigned byte) { text.push_back(static_cast<char>(byte)); };
    if (code < 0x80U) return append(code);
    if (code < 0x800U) {
        append(0xC0U | code >> 6U);
    } else {
        append(0xE0U | code >> 12U);
        append(0x80U | (code >> 6U & 0x3FU));
    }
    append(0x80U | (code & 0x3FU));
}

std::string Escaped(const std::string& text, bool symbol) {
    std::string escaped;
    for (const char code : text) {
        const char16_t letter = UnicodeOf(code, symbol);
        if (letter == u'&')
            escaped += "&amp;";
        else if (letter == u'<')
            escaped += "&lt;";
        else if (letter == u'>')
            escaped += "&gt;";
        else
            AppendUtf8(escaped, letter);
    }
    return escaped;
}

std::string PointList(const std::vector<DevicePoint>& points) {
    std::string list;
    for (const DevicePoint point : points)
        list += (list.empty() ? "" : " ") + std::to_string(point.X) + "," + std::to_string(point.Y);
    return list;
}

// --- pen and brush -------------------------------------------------------------------------------------

double PenWidth(const SvgDrawing& drawing) {
    return std::max<double>(drawing.Pen.Width, ThinnestPen(drawing.Request));
}

std::string StrokeOf(const SvgDrawing& drawing) {
    if (!drawing.Pen.Visible) return "";
    const double width = PenWidth(drawing);
    std::string stroke = Attribute("stroke", ColorCode(drawing.Pen.Color));
    if (width > 1.0) stroke += Attribute("stroke-width", width);
    return stroke;
}

void AppendHatch(SvgDrawing& drawing, const std::vector<PlanePoint>& outline) {
    const double dots = drawing.Request.DotsPerInchY;
    const auto place = [](PlanePoint point) { return Number(point.X) + " " + Number(point.Y); };
    std::string lines;
    for (const PlaneSegment& line :
         HatchLines(drawing.Brush.Kind, outline, HatchSpacing(dots), drawing.Window))
        lines += "M" + place(line.From) + "L" + place(line.To);
    if (lines.empty()) return;
    drawing.Body += "<path" + Attribute("d", lines) + Attribute("stroke", ColorCode(drawing.Brush.Color)) +
                    Attribute("stroke-width", HatchWidth(dots)) + "/>\n";
}

// Appends a shape, given by its element and geometry and once more by its outline, filled and outlined.
void AppendShape(SvgDrawing& drawing, const std::string& shape, const std::vector<PlanePoint>& outline) {
    const bool solid = drawing.Brush.Kind == BrushKind::Solid;
    if (IsHatch(drawing.Brush.Kind)) AppendHatch(drawing, outline);
    if (!solid && !drawing.Pen.Visible) return;
    const std::string fill = solid ? Attribute("fill", ColorCode(drawing.Brush.Color)) : "";
    drawing.Body += "<" + shape + fill + StrokeOf(drawing) + "/>\n";
}

// --- drawing -------------------------------------------------------------------------------------------

// A line is half a unit longer at both ends, so that the units of its end points are whole; one without
// length is a dot as wide as the pen.
void DrawLine(SvgDrawing& drawing, DevicePoint from, DevicePoint to) {
    if (!drawing.Pen.Visible) return;
    const double length = std::hypot(to.X - from.X, to.Y - from.Y);
    double stepX = PenWidth(drawing) / 2.0, stepY = 0.0;
    if (length > 0.0) {
        stepX = (to.X - from.X) / length / 2.0;
        stepY = (to.Y - from.Y) / length / 2.0;
    }
    drawing.Body += "<line" + Attribute("x1", from.X - stepX) + Attribute("y1", from.Y - stepY) +
                    Attribute("x2", to.X + stepX) + Attribute("y2", to.Y + stepY) + StrokeOf(drawing) +
                    "/>\n";
}

void DrawPolyline(SvgDrawing& drawing, const std::vector<DevicePoint>& points) {
    if (points.size() < 2 || !drawing.Pen.Visible) return;
    const DevicePoint first = points.front(), last = points.back();
    if (points.size() == 2) return DrawLine(drawing, first, last);
    const bool closed = first.X == last.X && first.Y == last.Y;
    drawing.Body += (closed ? "<polygon" : "<polyline") + Attribute("points", PointList(points)) +
                    StrokeOf(drawing) + "/>\n";
}

void DrawPolygon(SvgDrawing& drawing, const std::vector<DevicePoint>& points) {
    AppendShape(drawing, "polygon" + Attribute("points", PointList(points)), OutlineOf(points));
}

// The outline runs through the middle of the edge's units. Without one the edge's units are filled whole.
double EdgeOf(const SvgDrawing& drawing) {
    return drawing.Pen.Visible ? 0.0 : 0.5;
}

void DrawRectangle(SvgDrawing& drawing, const DeviceRect& rect) {
    const double edge = EdgeOf(drawing);
    AppendShape(drawing,
                "rect" + Attribute("x", rect.Left - edge) + Attribute("y", rect.Top - edge) +
                    Attribute("width", rect.Right - rect.Left + 2.0 * edge) +
                    Attribute("height", rect.Bottom - rect.Top + 2.0 * edge) +
                    Attribute("stroke-linejoin", "miter"),
                OutlineOf(rect));
}

void DrawEllipse(SvgDrawing& drawing, const DeviceRect& around) {
    const PlanePoint centre = {(around.Left + around.Right) / 2.0, (around.Top + around.Bottom) / 2.0};
    const double radiusX = (around.Right - around.Left) / 2.0 + EdgeOf(drawing);
    const double radiusY = (around.Bottom - around.Top) / 2.0 + EdgeOf(drawing);
    AppendShape(drawing,
                "ellipse" + Attribute("cx", centre.X) + Attribute("cy", centre.Y) + Attribute("rx", radiusX) +
                    Attribute("ry", radiusY),
                ArcOutline(centre, radiusX, radiusY, 0.0, 360.0));
}

void DrawPie(SvgDrawing& drawing, DevicePoint centre, int radiusX, int radiusY, double start, double sweep) {
    const DeviceRect around = {centre.X - radiusX, centre.Y - radiusY, centre.X + radiusX,
                               centre.Y + radiusY};
    if (std::fabs(sweep) >= 360.0) return DrawEllipse(drawing, around);
    const std::vector<PlanePoint> outline = ArcOutline(
        {static_cast<double>(centre.X), static_cast<double>(centre.Y)}, radiusX, radiusY, start, sweep);
    const auto place = [](PlanePoint point) { return Number(point.X) + " " + Number(point.Y); };
    const std::string flags =
        std::string(std::fabs(sweep) > 180.0 ? "1 " : "0 ") + (sweep > 0.0 ? "0 " : "1 ");
    const std::string path = "M" + place(outline[0]) + "L" + place(outline[1]) + "A" +
                             std::to_string(radiusX) + " " + std::to_string(radiusY) + " 0 " + flags +
                             place(outline.back()) + "Z";
    AppendShape(drawing, "path" + Attribute("d", path), outline);
}

// --- text ----------------------------------------------------------------------------------------------

void SetFont(SvgDrawing& drawing, const SurfaceFont& font) {
    drawing.Font = &BaseFontFor(font.Face, font.Bold);
    drawing.Em = EmOfHeight(*drawing.Font, font.Height);
    drawing.Height = font.Height;
    drawing.Angle = font.Angle;
}

// The families of equal width first.
const char* FamiliesOf(FontClass fontClass) {
    switch (fontClass) {
    case FontClass::Sans:
        return "Arial, 'Liberation Sans', Arimo, Helvetica, 'Nimbus Sans', sans-serif";
    case FontClass::Mono:
        return "'Courier New', 'Liberation Mono', Cousine, Courier, monospace";
    default:
        return "'Times New Roman', 'Liberation Serif', Tinos, Times, 'Nimbus Roman', serif";
    }
}

// A place for each letter: no reader then moves on by widths of its own or pulls pairs like "To" together.
std::string LettersAt(const SvgDrawing& drawing, double x, const std::string& text) {
    std::string list;
    for (const double ems : LetterPlaces(*drawing.Font, text))
        list += (list.empty() ? "" : " ") + Number(x + ems * drawing.Em);
    return list;
}

void WriteText(SvgDrawing& drawing, int x, int y, const std::string& text) {
    if (text.empty()) return;
    const std::string place = Number(x - 0.5) + " " + Number(y - 0.5); // a baseline lies between units
    drawing.Body += "<text" + Attribute("x", LettersAt(drawing, x - 0.5, text)) + Attribute("y", y - 0.5) +
                    Attribute("font-family", std::string(FamiliesOf(drawing.Font->Class))) +
                    Attribute("font-size", drawing.Em);
    if (drawing.Font->Bold) drawing.Body += Attribute("font-weight", "bold");
    if (drawing.Angle != 0)
        drawing.Body +=
            Attribute("transform", "rotate(" + std::to_string(-drawing.Angle) + " " + place + ")");
    drawing.Body += Attribute("fill", ColorCode(drawing.TextColor)) + Attribute("xml:space", "preserve") +
                    ">" + Escaped(text, drawing.Font->Class == FontClass::Symbol) + "</text>\n";
}

// --- clipping and the file -----------------------------------------------------------------------------

void ClearClip(SvgDrawing& drawing) {
    if (drawing.Clipped) drawing.Body += "</g>\n";
    drawing.Clipped = false;
}

void SetClip(SvgDrawing& drawing, const DeviceRect& rect) {
    ClearClip(drawing);
    const std::string name = "clip" + std::to_string(++drawing.Clips);
    drawing.Definitions += "<clipPath" + Attribute("id", name) + "><rect" + Attribute("x", rect.Left - 0.5) +
                           Attribute("y", rect.Top - 0.5) +
                           Attribute("width", std::max(rect.Right - rect.Left + 1, 0)) +
                           Attribute("height", std::max(rect.Bottom - rect.Top + 1, 0)) + "/></clipPath>\n";
    drawing.Body += "<g" + Attribute("clip-path", "url(#" + name + ")") + ">\n";
    drawing.Clipped = true;
}

// Units are addressed by their middles, so the view begins half a unit before the first.
TextSize MeasureText(const SvgDrawing& drawing, const std::string& text) {
    return MeasureBaseText(*drawing.Font, drawing.Em, drawing.Height, text);
}

std::string Finish(SvgDrawing& drawing) {
    ClearClip(drawing);
    const DeviceRect& window = drawing.Window;
    const int width = window.Right - window.Left + 1, height = window.Bottom - window.Top + 1;
    const auto points = [](int units, double dots) { return Number(units * PointsPerInch / dots) + "pt"; };
    std::string file = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg";
    file += Attribute("xmlns", "http://www.w3.org/2000/svg") + Attribute("version", "1.1");
    file += Attribute("width", points(width, drawing.Request.DotsPerInchX));
    file += Attribute("height", points(height, drawing.Request.DotsPerInchY));
    file += Attribute("viewBox", Number(window.Left - 0.5) + " " + Number(window.Top - 0.5) + " " +
                                     Number(width) + " " + Number(height));
    if (drawing.Request.DotsPerInchX != drawing.Request.DotsPerInchY)
        file += Attribute("preserveAspectRatio", "none");
    const std::string& description = drawing.Request.Description;
    file += ">\n<title>" + Escaped(description.substr(0, description.find('\0')), false) + "</title>\n";
    if (!drawing.Definitions.empty()) file += "<defs>\n" + drawing.Definitions + "</defs>\n";
    // Flat ends keep the gaps of dashed lines open.
    file += "<g fill=\"none\" fill-rule=\"evenodd\" stroke-linecap=\"butt\" stroke-linejoin=\"round\"";
    // Texts were measured letter by letter: no reader pulls pairs like "To" together. Some know the one, some
    // the other.
    file += " style=\"font-kerning:none;font-feature-settings:'kern' 0\">\n";
    return file + std::exchange(drawing.Body, {}) + "</g>\n</svg>\n";
}

} // namespace

PictureFile OpenSvg(const PictureRequest& request) {
    return OpenKept<SvgDrawing>(request);
}

} // namespace Quillon
