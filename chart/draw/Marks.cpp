// Marks and notes: drawn objects and free texts at places of the graph.
#include "chart/draw/Marks.h"

#include "chart/draw/ClipLine.h"
#include "chart/draw/Titles.h"
#include "chart/layout/TitleLayout.h"
#include "chart/pens/DashLine.h"
#include "chart/pens/Device.h"
#include "chart/pens/Fonts.h"
#include "chart/pens/Pens.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "chart/records/SetTable.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/Mapping.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Quillon {

namespace {

enum MarkKind : std::int16_t { PlainLine, Arrow, DoubleArrow, VerticalLine, HorizontalLine, EllipseMark };

double DivisorX() {
    return DrawDivisor(Chart.Spec.AxisX1, Chart.LoadFactorX);
}
double DivisorY() {
    return DrawDivisor(Chart.Spec.AxisY1, Chart.LoadFactorY);
}

int PlaceX(float x) {
    return DeviceX(static_cast<double>(x) / DivisorX());
}
int PlaceY(float y) {
    return DeviceY(static_cast<double>(y) / DivisorY());
}

bool There(float value) {
    return std::isfinite(value) && value != MissingValue;
}

// The head of an arrow from a point to its tip: two arms back from the tip.
void DrawHead(int fromX, int fromY, int tipX, int tipY) {
    const double length = 2.0 * Chart.State.SymbolHalfX;
    const double direction = fromX == tipX ? (tipY > fromY ? 1.0 : -1.0) * std::numbers::pi / 2.0
                                           : std::atan2(tipY - fromY, tipX - fromX);
    const double angle = static_cast<double>(Chart.Style.ArrowAngle) * std::numbers::pi / 180.0;
    for (const double arm : {direction + angle, direction - angle})
        TargetSurface().Line(tipX, tipY, DeviceUnits(tipX - length * std::cos(arm)),
                             DeviceUnits(tipY - length * std::sin(arm)));
}

// A line is drawn as far as it is on the device, so that an end far beyond does not bend it. A head stands at
// an end that is seen.
void DrawMarkLine(const GraphMark& mark) {
    const LineEnds whole{
        MapX(static_cast<double>(mark.X1) / DivisorX()), MapY(static_cast<double>(mark.Y1) / DivisorY()),
        MapX(static_cast<double>(mark.X2) / DivisorX()), MapY(static_cast<double>(mark.Y2) / DivisorY())};
    LineEnds seen = whole;
    if (!ClipLine(seen, Chart.State.DeviceW, Chart.State.DeviceH)) return;
    const int x1 = DeviceUnits(seen.X1);
    const int y1 = DeviceUnits(seen.Y1);
    const int x2 = DeviceUnits(seen.X2);
    const int y2 = DeviceUnits(seen.Y2);
    DashLine(x1, y1, x2, y2);
    const bool startSeen = seen.X1 == whole.X1 && seen.Y1 == whole.Y1;
    const bool endSeen = seen.X2 == whole.X2 && seen.Y2 == whole.Y2;
    const bool arrow = mark.Kind == Arrow || mark.Kind == DoubleArrow;
    if (arrow && endSeen) DrawHead(x1, y1, x2, y2);
    if (mark.Kind == DoubleArrow && startSeen) DrawHead(x2, y2, x1, y1);
}

void DrawEllipse(const GraphMark& mark) {
    const int x = PlaceX(mark.X1);
    const int y = PlaceY(mark.Y1);
    const int rx = DeviceUnits(std::fabs(Chart.XScale * static_cast<double>(mark.X2) / DivisorX()));
    const int ry = DeviceUnits(std::fabs(Chart.YScale * static_cast<double>(mark.Y2) / DivisorY()));
    SelectPattern(mark.Fill, CycleColor(mark.Color));
    TargetSurface().Ellipse({x - rx, y - ry, x + rx, y + ry});
}

bool Between(int place, int a, int b) {
    return place >= std::min(a, b) && place <= std::max(a, b);
}

// A line across the whole scale belongs to the frame: at a value beyond it, after a zoom, there is none.
bool OnScale(const GraphMark& mark) {
    const GraphBox& frame = Chart.Spec.Frame;
    if (mark.Kind == VerticalLine) return Between(PlaceX(mark.X1), frame.X1, frame.X2);
    return mark.Kind != HorizontalLine || Between(PlaceY(mark.Y1), frame.Y1, frame.Y2);
}

void DrawMark(const GraphMark& mark) {
    const GraphSpec& spec = Chart.Spec;
    const bool needsX = mark.Kind != HorizontalLine;
    const bool needsY = mark.Kind != VerticalLine;
    const bool needsEnd = needsX && needsY;
    if ((needsX && !There(mark.X1)) || (needsY && !There(mark.Y1))) return;
    if (needsEnd && (!There(mark.X2) || !There(mark.Y2))) return;
    SelectCyclePen(mark.Color, spec.LineWidth, mark.XorDraw == 1);
    if (mark.Kind == EllipseMark) return DrawEllipse(mark);
    if (!OnScale(mark)) return;
    if (mark.Kind == VerticalLine)
        return DashLine(PlaceX(mark.X1), DeviceY(spec.AxisY1.Min), PlaceX(mark.X1), DeviceY(spec.AxisY1.Max));
    if (mark.Kind == HorizontalLine)
        return DashLine(DeviceX(spec.AxisX1.Min), PlaceY(mark.Y1), DeviceX(spec.AxisX1.Max), PlaceY(mark.Y1));
    DrawMarkLine(mark);
}

// The line of text starts at (x, y) on its baseline, or has its middle there.
void DrawNoteAt(const GraphNote& note, int x, int y, bool centred, const TextSize& font) {
    if (!centred) return PaintText(x, y, note.Text);
    const int half = TextWidth(note.Text) / 2;
    const int across = font.Height / 2;
    switch (note.Direction & 3) {
    case 0:
        return DrawTextLine(note.Text, x - half, y - across, 0, font);
    case 1:
        return DrawTextLine(note.Text, y + half, x - across, 1, font);
    case 2:
        return DrawTextLine(note.Text, x + half, y - across, 2, font);
    default:
        return DrawTextLine(note.Text, y - half, x - across, 3, font);
    }
}

void DrawNote(const GraphNote& note) {
    const GraphBox& frame = Chart.Spec.Frame;
    const bool onFrame = note.Align == 2;
    const bool upright = (note.Direction & 1) != 0;
    const bool needsX = !onFrame || upright;
    const bool needsY = !onFrame || !upright;
    if (!HasText(note.Text) || (needsX && !There(note.X)) || (needsY && !There(note.Y))) return;
    const TextSize font = SelectFont(note.Font, note.Size, note.Direction);
    TargetSurface().SetTextColor(CycleColor(note.Color));
    const int x = needsX ? PlaceX(note.X) : (frame.X1 + frame.X2) / 2;
    const int y = needsY ? PlaceY(note.Y) : (frame.Y1 + frame.Y2) / 2;
    DrawNoteAt(note, x, y, note.Align != 0, font);
}

} // namespace

void DrawMarks() {
    SetFrameMapping();
    for (const GraphMark& mark : Chart.Marks)
        DrawMark(mark);
}

void DrawNotes() {
    SetFrameMapping();
    for (const GraphNote& note : Chart.Notes)
        DrawNote(note);
}

} // namespace Quillon
