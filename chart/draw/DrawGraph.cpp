#include "chart/draw/DrawGraph.h"

#include "chart/draw/CancelScope.h"
#include "chart/draw/DrawAxes.h"
#include "chart/draw/DrawBars.h"
#include "chart/draw/DrawPie.h"
#include "chart/draw/DrawXY.h"
#include "chart/draw/Legend.h"
#include "chart/draw/Marks.h"
#include "chart/draw/Titles.h"
#include "chart/layout/Layout.h"
#include "chart/pens/Device.h"
#include "chart/pens/Pens.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"

namespace Quillon {

namespace {

DeviceRect ViewRect() {
    const GraphState& state = Chart.State;
    return {state.ViewLeft, state.ViewTop, state.ViewRight, state.ViewBottom};
}

void PaintBox(const DeviceRect& place, const GraphBox& box) {
    SelectNoPen();
    TargetSurface().SetBrush({BrushKind::Solid, BoxColor(box)});
    TargetSurface().Rectangle(place);
}

void PaintView() {
    TargetSurface().ClearClip();
    PaintBox(ViewRect(), Chart.Spec.View);
}

void PaintFrame() {
    const GraphBox& frame = Chart.Spec.Frame;
    PaintBox({frame.X1, frame.Y1, frame.X2, frame.Y2}, frame);
}

void PaintAxes() {
    if (Chart.Spec.GraphType == GraphTypes::Pie) return;
    for (const int place : {BottomAxis, LeftAxis, TopAxis, RightAxis}) {
        if (DrawingCancelled()) return;
        DrawAxis(place);
    }
}

void PaintData() {
    switch (Chart.Spec.GraphType) {
    case GraphTypes::HorizontalBars:
        return DrawBarsH();
    case GraphTypes::VerticalBars:
        return DrawBarsV();
    case GraphTypes::CategoryLines:
        return DrawLinesOverCategories();
    case GraphTypes::Pie:
        return DrawPie();
    default:
        return DrawXY();
    }
}

void PaintLegend() {
    if (Chart.State.MultiSet == 1) DrawLegend();
}

void ClipToView() {
    TargetSurface().SetClip(ViewRect());
}

// The steps in order; the cancel flag is tested after each.
void PaintSteps() {
    for (void (*step)() : {PaintView, DrawTitles, PaintFrame, PaintAxes, PaintData, PaintLegend, ClipToView,
                           DrawMarks, DrawNotes}) {
        step();
        if (!DrawingCancelled()) continue;
        if (Chart.Target == Targets::Printer && Seams.AbortPrintJob) Seams.AbortPrintJob();
        return;
    }
}

// What holds while a graph is painted, and is put back on every way out.
struct PaintingScope {
    PaintingScope() {
        Chart.Painting = FlagTrue;
        if (Chart.Target == Targets::Screen) Host.SetPointer(Pointer::Hourglass);
    }
    ~PaintingScope() {
        Chart.Painting = FlagFalse;
        if (Chart.Target == Targets::Screen) Host.SetPointer(Pointer::Standard);
    }
    PaintingScope(const PaintingScope&) = delete;
    PaintingScope& operator=(const PaintingScope&) = delete;
};

// Wipes the whole picture box.
void ClearBox() {
    const DrawingSurface& surface = Seams.PicBox;
    surface.ClearClip();
    surface.SetPen({false, 0, 1});
    surface.SetBrush({BrushKind::Solid, CanvasColor()});
    surface.Rectangle({0, 0, surface.Width() - 1, surface.Height() - 1});
}

void ShowOnScreen() {
    ClearBox();
    if (Seams.KeepsPicture == 0) return;
    const CancelScope untouched; // the window is not left blank
    DrawGraph();
    Seams.PicBox.Refresh();
}

} // namespace

void ClearDrawing() {
    if (Chart.Target == Targets::Screen && Seams.HasPicBox) ClearBox();
    Chart.GraphDrawn = FlagFalse;
}

void ShowTarget() {
    if (Chart.State.Busy != 0 || Chart.Painting != 0 || !HasSurface() || Chart.DataY.Empty()) return;
    if (Chart.Target == Targets::Screen)
        ShowOnScreen();
    else
        DrawGraph();
    if (FrameStands())
        Chart.GraphDrawn = FlagTrue;
    else
        Chart.GraphStatus = GraphStatuses::NoRoom;
}

void ShowGraph() {
    Chart.GraphStatus = GraphStatuses::Fine;
    ShowTarget();
}

void DrawGraph() {
    if (Chart.State.Busy != 0 || Chart.Painting != 0 || !HasSurface()) return;
    if (Chart.DataY.Empty() || !FrameStands()) return;
    {
        const PaintingScope scope;
        if (Chart.Target == Targets::Metafile && Chart.Metafile.SetWindow)
            Chart.Metafile.SetWindow(ViewRect());
        PaintSteps();
        TargetSurface().ClearClip();
    }
    Chart.GraphDrawn = FlagTrue;
}

} // namespace Quillon
