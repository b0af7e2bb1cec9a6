#include "chart/targets/PageGeometry.h"

#include "chart/pens/Device.h"

#include "platform/Narrow.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

// What a line of text takes beside the frame, as a part of the frame's diagonal; the two main titles together
// take twice that. Both are singles, as the sizes of texts are.
constexpr float LineShare = 0.05F, TwoTitlesShare = 0.1F;

PageEdges Scaled(const PageEdges& edges, double by) {
    return {edges.Left * by, edges.Top * by, edges.Right * by, edges.Bottom * by};
}

// The sheet in the units in force.
PrinterPage InUnits(const PrinterPage& page, double perInch) {
    return {page.Width * perInch, page.Height * perInch, Scaled(page.Border, perInch),
            Scaled(page.Margin, perInch)};
}

double Length(float value) {
    return static_cast<double>(value);
}

// The part of the sheet that the size choice gives.
PagePlace ChosenPlace(const ChartStyle& style, const PrinterPage& sheet) {
    const PageEdges& border = sheet.Border;
    PagePlace place;
    place.Left = std::max(Length(style.LeftMargin) - border.Left, 0.0);
    place.Top = std::max(Length(style.TopMargin) - border.Top, 0.0);
    place.Right = sheet.Width - Length(style.RightMargin) - border.Left;
    place.Bottom = sheet.Height - Length(style.BottomMargin) - border.Top;
    if (style.PageCustom != 0) {
        place.Right = place.Left + Length(style.CustomWidth);
        place.Bottom = place.Top + Length(style.CustomHeight);
    } else if (style.PageHalf != 0.0F && sheet.Height > sheet.Width) {
        place.Bottom = sheet.Height / 2.0 - border.Top;
    } else if (style.PageHalf != 0.0F) {
        place.Right = sheet.Width / 2.0 - border.Left;
    }
    place.Right = std::min(place.Right, sheet.PrintableWidth());
    place.Bottom = std::min(place.Bottom, sheet.PrintableHeight());
    return place;
}

// The largest place of that ratio within a place, in its middle. [decision: aspect-within-the-space]
PagePlace WithAspect(const PagePlace& space, double aspect) {
    const double width = space.Right - space.Left, height = space.Bottom - space.Top;
    PagePlace place = space;
    if (width / height > aspect) {
        place.Left = (space.Left + space.Right - height * aspect) / 2.0;
        place.Right = place.Left + height * aspect;
    } else {
        place.Top = (space.Top + space.Bottom - width / aspect) / 2.0;
        place.Bottom = place.Top + width / aspect;
    }
    return place;
}

// Gap, labels and title of an axis.
double AxisShare(const GraphAxis& axis) {
    const bool titled = axis.Show == 1 && !axis.Title.Text.Empty();
    return Length(LineShare) * (1 + (HasLabels(axis) ? 1 : 0) + (titled ? 1 : 0));
}

// The main titles, and the labels and title of the top axis where it has them.
double TopShare(const GraphSpec& spec) {
    const int titles = (spec.Title1.Text.Empty() ? 0 : 1) + (spec.Title2.Text.Empty() ? 0 : 1);
    const double axis = AxisShare(spec.AxisX2) - Length(LineShare);
    return axis + (titles == 2 ? Length(TwoTitlesShare) : titles * Length(LineShare));
}

// The legend's height or width in the window, as a part of the window's diagonal, with a line to spare.
double LegendShare(const ChartModule& window, std::int16_t where) {
    const GraphLegend& legend = window.Spec.Legend;
    if (legend.Show == 0 || legend.Where != where || window.State.MultiSet == 0) return 0.0;
    const int size = where == LegendPlaces::Right ? window.Layout.Legend.Width : window.Layout.Legend.Height;
    return Length(LineShare) / 2.0 + static_cast<double>(size) / std::max<int>(window.State.Diagonal, 1);
}

double RightShare(const ChartModule& window) {
    return AxisShare(window.Spec.AxisY2) + LegendShare(window, LegendPlaces::Right);
}

double BottomShare(const ChartModule& window) {
    return AxisShare(window.Spec.AxisX1) + LegendShare(window, LegendPlaces::Below);
}

double DiagonalOf(const GraphBox& box) {
    return std::hypot(box.X2 - box.X1, box.Y2 - box.Y1);
}

} // namespace

int SheetDots(const PrinterPage& sheet) {
    constexpr double mostUnits = 30000.0;
    return static_cast<int>(std::min(PageDots, mostUnits / std::hypot(sheet.Width, sheet.Height)));
}

double DotsOf(const PrinterState& printer) {
    return printer.Name.empty() ? PageDots : SheetDots(printer.Page);
}

double UnitsPerInch(const ChartStyle& style) {
    return style.MetricUnits != 0 ? MillimetresPerInch / 10.0 : 1.0;
}

PagePlace PlaceOnPage(const ChartStyle& style, const PrinterPage& page, double windowAspect) {
    const PagePlace place = ChosenPlace(style, InUnits(page, UnitsPerInch(style)));
    const bool keeps = style.KeepAspect != 0 && place.HasRoom() && windowAspect > 0.0;
    return keeps ? WithAspect(place, windowAspect) : place;
}

void UseWholeSheet(ChartStyle& style, const PrinterPage& sheet) {
    const PageEdges margin = Scaled(sheet.Margin, UnitsPerInch(style));
    style.LeftMargin = ToSingle(margin.Left);
    style.TopMargin = ToSingle(margin.Top);
    style.RightMargin = ToSingle(margin.Right);
    style.BottomMargin = ToSingle(margin.Bottom);
    style.PageFull = -1.0F;
    style.PageHalf = 0.0F;
    style.PageCustom = FlagFalse;
}

GraphBox BoxOnDevice(const PagePlace& place, const ChartStyle& style, const DrawingSurface& surface) {
    const double perInch = UnitsPerInch(style);
    const auto units = [perInch](double length, double dots, int size) {
        return DeviceUnits(std::clamp(length * dots / perInch, 0.0, std::max(size - 1.0, 0.0)));
    };
    GraphBox box;
    box.Color = 15;
    box.X1 = units(place.Left, surface.DotsPerInchX(), surface.Width());
    box.X2 = units(place.Right, surface.DotsPerInchX(), surface.Width());
    box.Y1 = units(place.Top, surface.DotsPerInchY(), surface.Height());
    box.Y2 = units(place.Bottom, surface.DotsPerInchY(), surface.Height());
    return box;
}

bool SizesTheFrame(const ChartStyle& style) {
    return style.AxisFrame != 0 && style.PageCustom != 0;
}

GraphBox FrameOnPage(const GraphBox& place, const ChartModule& window, const DrawingSurface& surface) {
    const double d = DiagonalOf(place);
    GraphBox frame = place;
    if (frame.X2 >= surface.Width() - 1) frame.X2 = DeviceUnits(frame.X2 - d * RightShare(window));
    if (frame.Y2 >= surface.Height() - 1) frame.Y2 = DeviceUnits(frame.Y2 - d * BottomShare(window));
    return frame;
}

GraphBox ViewAroundFrame(const GraphBox& frame, const ChartModule& window, const DrawingSurface& surface) {
    const double d = DiagonalOf(frame);
    GraphBox view = frame;
    view.X1 = DeviceUnits(std::max(frame.X1 - d * AxisShare(window.Spec.AxisY1), 0.0));
    view.Y1 = DeviceUnits(std::max(frame.Y1 - d * TopShare(window.Spec), 0.0));
    view.X2 = DeviceUnits(std::min<double>(frame.X2 + d * RightShare(window), surface.Width() - 1));
    view.Y2 = DeviceUnits(std::min<double>(frame.Y2 + d * BottomShare(window), surface.Height() - 1));
    return view;
}

} // namespace Quillon
