#include "forms/surfaces/QtSurface.h"

#include "chart/pens/BaseFonts.h"
#include "chart/pens/HatchLines.h"
#include "forms/surfaces/QtFonts.h"
#include "forms/surfaces/Stamp.h"

#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>
#include <vector>

namespace Quillon {

namespace {

// The toolkit's pens for a pen in force: a graph has tens of thousands of symbols, and their pen is made
// once.
struct MadePens {
    double Width = -1.0; // that they were made for; none are made while it is negative
    QPen Round, Miter;
};

struct PainterState {
    std::shared_ptr<PainterTarget> Target;
    SurfacePen Pen;
    mutable MadePens Pens;
    SurfaceBrush Brush;
    mutable Stamp Symbol; // of the shape drawn last, with pen and brush in force
    SurfaceFont Font;
    QFont Letters;
    Rgb TextColor = 0;
};

QColor ColorOf(Rgb color) {
    return QColor::fromRgb(color);
}

// --- pen and place -------------------------------------------------------------------------------------

double PenWidth(const PainterState& state) {
    return std::max<double>(state.Pen.Width, std::max(state.Target->ThinnestPen, 1.0));
}

// Ends are flat, so that the gaps of a dashed line stay open.
const QPen& PenOf(const PainterState& state, Qt::PenJoinStyle join = Qt::RoundJoin) {
    static const QPen none(Qt::NoPen);
    if (!state.Pen.Visible) return none;
    MadePens& pens = state.Pens;
    if (const double width = PenWidth(state); pens.Width != width) {
        const auto make = [&](Qt::PenJoinStyle style) {
            return QPen(ColorOf(state.Pen.Color), width, Qt::SolidLine, Qt::FlatCap, style);
        };
        pens = {width, make(Qt::RoundJoin), make(Qt::MiterJoin)};
    }
    return join == Qt::MiterJoin ? pens.Miter : pens.Round;
}

// What the painter has already is not set again: to the painter it would be news, at a price.
void Mix(QPainter& painter, QPainter::CompositionMode mode, bool smooth) {
    if (painter.testRenderHint(QPainter::Antialiasing) != smooth)
        painter.setRenderHint(QPainter::Antialiasing, smooth);
    if (painter.compositionMode() != mode) painter.setCompositionMode(mode);
}

// Device units to painter units. Shift is where in its unit a coordinate lies.
QPainter& PlacePainter(const PainterState& state, double shift) {
    const PainterTarget& target = *state.Target;
    QTransform transform = QTransform::fromScale(target.Scale, target.Scale);
    transform.translate(shift - target.Origin.X, shift - target.Origin.Y);
    if (target.Painter->worldTransform() != transform) target.Painter->setWorldTransform(transform);
    return *target.Painter;
}

QPainter& PainterAt(const PainterState& state, double shift) {
    QPainter& painter = PlacePainter(state, shift);
    Mix(painter, QPainter::CompositionMode_SourceOver, true);
    return painter;
}

// A line of an odd width runs through the middles of the units, one of an even width between them: both then
// have sharp edges on a display.
double ShiftForPen(const PainterState& state) {
    return state.Pen.Visible && std::lround(PenWidth(state)) % 2 == 0 ? 0.0 : 0.5;
}

QPainter& PainterForPen(const PainterState& state) {
    QPainter& painter = PlacePainter(state, ShiftForPen(state));
    const bool exclusive = state.Pen.Visible && state.Pen.Exclusive &&
                           painter.paintEngine()->hasFeature(QPaintEngine::RasterOpModes);
    // A mixed edge would not go away again.
    Mix(painter,
        exclusive ? QPainter::RasterOp_NotSourceXorDestination : QPainter::CompositionMode_SourceOver,
        !exclusive);
    return painter;
}

QPointF PointOf(DevicePoint point) {
    return {static_cast<double>(point.X), static_cast<double>(point.Y)};
}

QPolygonF PointsOf(std::span<const DevicePoint> points) {
    QPolygonF polygon;
    for (const DevicePoint point : points)
        polygon << PointOf(point);
    return polygon;
}

// --- areas ---------------------------------------------------------------------------------------------

void DrawHatch(const PainterState& state, QPainter& painter, const QPainterPath& path) {
    const PainterTarget& target = *state.Target;
    const double dots = target.DotsPerInchY;
    const DeviceRect surface = {0, 0, target.Width - 1, target.Height - 1};
    std::vector<PlanePoint> outline;
    for (const QPointF& point : path.toFillPolygon())
        outline.push_back({point.x(), point.y()});
    painter.setPen(QPen(ColorOf(state.Brush.Color), HatchWidth(dots), Qt::SolidLine, Qt::FlatCap));
    for (const PlaneSegment& line : HatchLines(state.Brush.Kind, outline, HatchSpacing(dots), surface))
        painter.drawLine(QPointF(line.From.X, line.From.Y), QPointF(line.To.X, line.To.Y));
}

QBrush BrushOf(const PainterState& state) {
    return state.Brush.Kind == BrushKind::Solid ? QBrush(ColorOf(state.Brush.Color)) : QBrush(Qt::NoBrush);
}

void DrawArea(const PainterState& state, const QPainterPath& path, Qt::PenJoinStyle join = Qt::RoundJoin) {
    QPainter& painter = PainterForPen(state);
    if (IsHatch(state.Brush.Kind)) DrawHatch(state, painter, path);
    painter.setPen(PenOf(state, join));
    painter.setBrush(BrushOf(state));
    painter.drawPath(path);
}

// The outline runs through the middle of the edge's units. Without one the edge's units are filled whole.
QRectF EdgesOf(const PainterState& state, const DeviceRect& rect) {
    const double edge = state.Pen.Visible ? 0.0 : 0.5;
    return QRectF(PointOf({rect.Left, rect.Top}), PointOf({rect.Right, rect.Bottom}))
        .adjusted(-edge, -edge, edge, edge);
}

// --- the operations ------------------------------------------------------------------------------------

// A line is half a unit longer at both ends, so that the units of its end points are whole; one without
// length is a dot as wide as the pen.
void DrawLine(const PainterState& state, DevicePoint from, DevicePoint to) {
    if (!state.Pen.Visible) return;
    QPainter& painter = PainterForPen(state);
    const QPointF first = PointOf(from), last = PointOf(to);
    const double length = std::hypot(last.x() - first.x(), last.y() - first.y());
    const QPointF more = length > 0.0 ? (last - first) / (2.0 * length) : QPointF(PenWidth(state) / 2.0, 0.0);
    painter.setPen(PenOf(state));
    painter.drawLine(first - more, last + more);
}

void DrawPolyline(const PainterState& state, const std::vector<DevicePoint>& points) {
    if (points.size() < 2 || !state.Pen.Visible) return;
    if (points.size() == 2) return DrawLine(state, points[0], points[1]);
    QPainter& painter = PainterForPen(state);
    painter.setPen(PenOf(state));
    const DevicePoint first = points.front(), last = points.back();
    if (first.X != last.X || first.Y != last.Y) return painter.drawPolyline(PointsOf(points));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolygon(PointsOf(points)); // a closed line has no ends
}

void DrawRectangle(const PainterState& state, const DeviceRect& rect) {
    QPainterPath path;
    path.addRect(EdgesOf(state, rect));
    DrawArea(state, path, Qt::MiterJoin);
}

// A polygon, or the ellipse within two corners.
QPainterPath PathOf(const PainterState& state, std::span<const DevicePoint> corners, bool round) {
    QPainterPath path;
    if (round) {
        path.addEllipse(EdgesOf(state, {corners[0].X, corners[0].Y, corners[1].X, corners[1].Y}));
        return path;
    }
    path.addPolygon(PointsOf(corners));
    path.closeSubpath();
    return path;
}

bool TakesStamp(const PainterState& state, std::span<const DevicePoint> corners) {
    const bool exclusive = state.Pen.Visible && state.Pen.Exclusive;
    return state.Target->Stamps && !exclusive && !IsHatch(state.Brush.Kind) && IsSmall(corners);
}

Stamp StampFor(const PainterState& state, std::span<const DevicePoint> corners, bool round) {
    const int reach = static_cast<int>(std::ceil(PenWidth(state))) + 2;
    std::vector<DevicePoint> places(corners.begin(), corners.end());
    for (DevicePoint& place : places)
        place = {place.X - corners[0].X, place.Y - corners[0].Y};
    return MakeStamp(corners, round, reach, [&](QPainter& painter) {
        painter.translate(ShiftForPen(state), ShiftForPen(state));
        painter.setPen(PenOf(state));
        painter.setBrush(BrushOf(state));
        painter.drawPath(PathOf(state, places, round));
    });
}

void DrawShape(const PainterState& state, std::span<const DevicePoint> corners, bool round) {
    if (!TakesStamp(state, corners)) return DrawArea(state, PathOf(state, corners, round));
    if (!IsStampOf(state.Symbol, corners, round)) state.Symbol = StampFor(state, corners, round);
    SetDown(PainterAt(state, 0.0), state.Symbol, corners[0]);
}

void DrawPolygon(const PainterState& state, const std::vector<DevicePoint>& points) {
    DrawShape(state, points, false);
}

void DrawEllipse(const PainterState& state, const DeviceRect& around) {
    DrawShape(state,
              std::array{DevicePoint{around.Left, around.Top}, DevicePoint{around.Right, around.Bottom}},
              true);
}

void DrawPie(const PainterState& state, DevicePoint centre, int radiusX, int radiusY, double start,
             double sweep) {
    const DeviceRect around = {centre.X - radiusX, centre.Y - radiusY, centre.X + radiusX,
                               centre.Y + radiusY};
    if (std::fabs(sweep) >= 360.0) return DrawEllipse(state, around);
    QPainterPath path(PointOf(centre));
    path.arcTo(QRectF(PointOf({around.Left, around.Top}), PointOf({around.Right, around.Bottom})), start,
               sweep);
    path.closeSubpath();
    DrawArea(state, path);
}

const BaseFont& BaseOf(const PainterState& state) {
    return BaseFontFor(state.Font.Face, state.Font.Bold);
}

double NaturalWidth(const PainterState& state, const QString& letters) {
    return QFontMetricsF(state.Letters, state.Target->Painter->device()).horizontalAdvance(letters);
}

// By what the installed letters are drawn wider, so that a text takes what was measured.
double StretchOf(const PainterState& state, const std::string& text, const QString& letters) {
    const double natural = state.Target->BaseWidths ? NaturalWidth(state, letters) : 0.0;
    if (natural <= 0.0) return 1.0;
    const BaseFont& base = BaseOf(state);
    const double stretch = TextEms(base, text) * EmOfHeight(base, state.Font.Height) / natural;
    return std::fabs(stretch - 1.0) < 0.002 ? 1.0 : stretch;
}

void WriteText(const PainterState& state, int x, int y, const std::string& text) {
    if (text.empty()) return;
    QPainter& painter = PainterAt(state, 0.0);
    painter.translate(x, y);
    painter.rotate(-state.Font.Angle);
    painter.setPen(ColorOf(state.TextColor));
    painter.setFont(state.Letters);
    const QString letters = ToolkitText(state.Font, text);
    painter.scale(StretchOf(state, text, letters), 1.0);
    painter.drawText(QPointF(0.0, 0.0), letters);
}

TextSize MeasureText(const PainterState& state, const std::string& text) {
    if (state.Target->BaseWidths) {
        const BaseFont& base = BaseOf(state);
        return MeasureBaseText(base, EmOfHeight(base, state.Font.Height), state.Font.Height, text);
    }
    const QFontMetricsF metrics(state.Letters, state.Target->Painter->device());
    const auto units = [](double length) { return static_cast<int>(std::lround(length)); };
    return {units(metrics.horizontalAdvance(ToolkitText(state.Font, text))), state.Font.Height,
            units(metrics.descent())};
}

void SetClip(const PainterState& state, const DeviceRect& rect) {
    const QRectF units(rect.Left, rect.Top, rect.Right - rect.Left + 1, rect.Bottom - rect.Top + 1);
    PainterAt(state, 0.0).setClipRect(units);
}

void SetFont(PainterState& state, const SurfaceFont& font) {
    state.Font = font;
    state.Letters = ToolkitFont(font);
}

void FillAttributes(DrawingSurface& surface, const std::shared_ptr<PainterState>& state) {
    const std::shared_ptr<PainterTarget> target = state->Target;
    surface.Width = [target] { return target->Width; };
    surface.Height = [target] { return target->Height; };
    surface.DotsPerInchX = [target] { return target->DotsPerInchX; };
    surface.DotsPerInchY = [target] { return target->DotsPerInchY; };
    surface.HasColor = [target] { return target->HasColor; };
    surface.SetPen = [state](const SurfacePen& pen) {
        state->Pen = pen;
        state->Pens.Width = -1.0;
        state->Symbol = {};
    };
    surface.SetBrush = [state](const SurfaceBrush& brush) {
        state->Brush = brush;
        state->Symbol = {};
    };
    surface.SetFont = [state](const SurfaceFont& font) { SetFont(*state, font); };
    surface.SetTextColor = [state](Rgb color) { state->TextColor = color; };
}

} // namespace

DrawingSurface PainterSurface(std::shared_ptr<PainterTarget> target) {
    const auto state = std::make_shared<PainterState>();
    state->Target = std::move(target);
    SetFont(*state, {});
    DrawingSurface surface;
    FillAttributes(surface, state);
    surface.Line = [state](int x1, int y1, int x2, int y2) { DrawLine(*state, {x1, y1}, {x2, y2}); };
    surface.Polyline = [state](const std::vector<DevicePoint>& points) { DrawPolyline(*state, points); };
    surface.Polygon = [state](const std::vector<DevicePoint>& points) { DrawPolygon(*state, points); };
    surface.Rectangle = [state](const DeviceRect& rect) { DrawRectangle(*state, rect); };
    surface.Ellipse = [state](const DeviceRect& rect) { DrawEllipse(*state, rect); };
    surface.PieSlice = [state](DevicePoint centre, int radiusX, int radiusY, double start, double sweep) {
        DrawPie(*state, centre, radiusX, radiusY, start, sweep);
    };
    surface.Text = [state](int x, int y, const std::string& text) { WriteText(*state, x, y, text); };
    surface.Measure = [state](const std::string& text) { return MeasureText(*state, text); };
    surface.SetClip = [state](const DeviceRect& rect) { SetClip(*state, rect); };
    surface.ClearClip = [state] { state->Target->Painter->setClipping(false); };
    surface.Refresh = [state] {
        if (state->Target->Refresh) state->Target->Refresh();
    };
    return surface;
}

} // namespace Quillon
