#pragma once
// Where a graph stands on a sheet of paper, by the page settings of the style: margins, full page, half page
// or a size of its own.
//
// Lengths are in the units in force, inches or with MetricUnits centimetres. Places are counted from the
// upper left corner of the area that the printer can print on, as its device units are.

#include "chart/records/ChartState.h"
#include "chart/records/ChartStyle.h"
#include "platform/Printer.h"

namespace Quillon {

struct PagePlace {
    double Left{}, Top{}, Right{}, Bottom{};
    bool HasRoom() const { return Right > Left && Bottom > Top; }
};

// Device units per inch that sheets are drawn in: as fine as those of a PDF file, but on a printer no more of
// them along the diagonal of large sheets than the engine counts.
int SheetDots(const PrinterPage& sheet);
double DotsOf(const PrinterState& printer);

// Units in force in an inch: 1 or 2.54.
double UnitsPerInch(const ChartStyle& style);

// The place of the graph. A margin within the border that cannot be printed on counts as that border; half a
// page is the upper half of a tall sheet and the left one of a wide sheet; a size of its own begins at the
// left and top margins and ends with the sheet. With KeepAspect the graph has the ratio of width to height of
// the window, as large as it fits, in the middle of that place. Margins that meet leave no room.
PagePlace PlaceOnPage(const ChartStyle& style, const PrinterPage& page, double windowAspect);

// Makes the place the full page within the margins of the sheet.
void UseWholeSheet(ChartStyle& style, const PrinterPage& sheet);

// The place in device units, within the printable area.
GraphBox BoxOnDevice(const PagePlace& place, const ChartStyle& style, const DrawingSurface& surface);

// True when the size that is set is that of the axes' frame.
bool SizesTheFrame(const ChartStyle& style);

// The frame for a place that is set for it. One that reaches the end of the page, as a size does that is
// larger than the paper, ends before it, so that what stands to its right and below has room on the page,
// too. [decision: frame-within-the-page]
GraphBox FrameOnPage(const GraphBox& place, const ChartModule& window, const DrawingSurface& surface);

// The view around a frame of that place: wider by fractions of the frame's diagonal for what stands there,
// a twentieth for each of gap, labels and axis title, for each main title, and for the legend as large a part
// as it takes of the window. Within the printable area. window: the graph as it is laid out there.
GraphBox ViewAroundFrame(const GraphBox& frame, const ChartModule& window, const DrawingSurface& surface);

} // namespace Quillon
