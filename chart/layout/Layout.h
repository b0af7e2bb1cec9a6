#pragma once
// Layout: where the frame stands in the view, worked out by measuring all text around it.

#include "chart/records/ChartState.h"
#include "chart/records/Records.h"

namespace Quillon {

// The places of TextSizes and of the axis records.
enum AxisPlace : int { BottomAxis, TopAxis, LeftAxis, RightAxis };

GraphAxis& AxisOf(GraphSpec& spec, int place);
AxisSpace& SpaceOf(ChartLayout& layout, int place);
std::int16_t KindOf(int place); // AxisKinds

// Scale and layout of the current spec and data, by the graph type. GraphStatus is NoRoom, and the frame
// empty, when text leaves no room for it.
void LayoutGraph();
void LayoutXY();
void LayoutBars();
void LayoutPie();

// Reads the view afresh and repeats scaling and layout for the current spec and data. Does not draw.
void Replot();

// Starts Chart.Layout.Sizes from the sizes that the GraphSpec asks for.
void TakeTextSizes();

// Clearances and tic lengths, and the widest tic label of each axis.
void MeasureAxes();
void MeasureLabels();

// True when the frame has a length in both directions.
bool FrameStands();

// Shrinks a text size by 0.9, not below FontMin; false when it was there already.
bool ShrinkSize(float& size);

} // namespace Quillon
