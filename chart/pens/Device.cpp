#include "chart/pens/Device.h"

#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/ChartStyle.h"
#include "chart/records/Cycles.h"
#include "chart/records/Records.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Quillon {

namespace {

constexpr double TwipsPerInch = 1440.0;

// The page that sizes are taken from where there is no printer: A4 across, at 300 dots per inch.
constexpr int ReferenceWidth = 3508, ReferenceHeight = 2480;
constexpr double ReferenceDots = 300.0;

double DotsOr(double dots, double otherwise) {
    return dots >= 1.0 && dots < 1e6 ? dots : otherwise;
}

int HundredthsOfMillimetre(int units, double dotsPerInch) {
    return static_cast<int>(std::nearbyint(units / dotsPerInch * 2540.0));
}

void Refuse(const std::string& what) {
    Chart.GraphStatus = GraphStatuses::NoSurface;
    Tell("No " + what + " set for graphic output, aborting...", ProgramTitle(), BoxIcon::Stop);
}

MetafileRequest RequestFor(const std::string& fileName) {
    MetafileRequest request;
    request.FileName = fileName;
    request.Description = ProgramTitle() + std::string("\0Graph\0\0", 8);
    const bool printer = Seams.HasPrinter;
    request.DeviceW = printer ? Seams.Printer.Width() : ReferenceWidth;
    request.DeviceH = printer ? Seams.Printer.Height() : ReferenceHeight;
    request.DotsPerInchX = printer ? DotsOr(Seams.Printer.DotsPerInchX(), ReferenceDots) : ReferenceDots;
    request.DotsPerInchY = printer ? DotsOr(Seams.Printer.DotsPerInchY(), ReferenceDots) : ReferenceDots;
    request.WidthHmm = HundredthsOfMillimetre(request.DeviceW, request.DotsPerInchX);
    request.HeightHmm = HundredthsOfMillimetre(request.DeviceH, request.DotsPerInchY);
    return request;
}

// A printer's colours can be asked for or done without, this time only. What a metafile holds is what would
// be printed.
bool PrintsColor(const DrawingSurface& surface) {
    return surface.HasColor() ? Chart.UseOnlyBW == 0 : Chart.UseColorOnBW != 0;
}

void UseTarget(std::int16_t target) {
    if (target != Chart.Target) Chart.State.CyclesBuilt = 0;
    Chart.Target = target;
    const DrawingSurface& surface = TargetSurface();
    const std::int16_t formerColors = Chart.ColorDevice;
    Chart.ColorDevice = Flag(target == Targets::Screen ? surface.HasColor() : PrintsColor(surface));
    if (Chart.ColorDevice != formerColors) Chart.State.CyclesBuilt = 0;
    Chart.PlotterFonts = Flag(target == Targets::Printer && Seams.PrinterIsPlotter);
}

// One direction of the view, from the edges asked for.
void RightenView(int first, int last, std::int16_t device, std::int16_t& low, std::int16_t& high) {
    const int end = std::max(device - 1, 0);
    const bool whole = first < 0 || last > device || last <= first;
    low = ToInt16(whole ? 0 : first);
    high = ToInt16(whole ? end : std::min(last, end));
    if (high <= low) {
        low = 0;
        high = ToInt16(end);
    }
}

void SetFontLimits() {
    GraphState& state = Chart.State;
    const ChartStyle& style = Chart.Style;
    const bool screen = Chart.Target == Targets::Screen;
    const float unit = state.Diagonal > 0 ? 20.0F * Chart.PixY / static_cast<float>(state.Diagonal) : 0.0F;
    state.FontMin = static_cast<float>(screen ? style.ScreenMinFont : style.PrinterMinFont) * unit;
    state.FontMax = static_cast<float>(screen ? style.ScreenMaxFont : style.PrinterMaxFont) * unit;
}

} // namespace

std::int16_t DeviceUnits(double value) {
    constexpr double low = std::numeric_limits<std::int16_t>::min();
    constexpr double high = std::numeric_limits<std::int16_t>::max();
    if (!(std::fabs(value) >= 0.0)) return 0;
    return static_cast<std::int16_t>(std::clamp(std::nearbyint(value), low, high));
}

bool DrawingCancelled() {
    return Chart.Target != Targets::Metafile && ChartCancelled();
}

void ServeDrawing() {
    if (Chart.Target != Targets::Metafile) Host.ServeEvents();
}

void ReadView(const GraphBox& view) {
    GraphState& state = Chart.State;
    const DrawingSurface& surface = TargetSurface();
    state.DeviceW = DeviceUnits(surface.Width());
    state.DeviceH = DeviceUnits(surface.Height());
    Chart.PixX = static_cast<float>(DotsOr(surface.DotsPerInchX(), 96.0) / TwipsPerInch);
    Chart.PixY = static_cast<float>(DotsOr(surface.DotsPerInchY(), 96.0) / TwipsPerInch);
    state.Aspect = Chart.PixX / Chart.PixY;
    RightenView(view.X1, view.X2, state.DeviceW, state.ViewLeft, state.ViewRight);
    RightenView(view.Y1, view.Y2, state.DeviceH, state.ViewTop, state.ViewBottom);
    state.ViewW = ToInt16(state.ViewRight - state.ViewLeft);
    state.ViewH = ToInt16(state.ViewBottom - state.ViewTop);
    state.Diagonal = DeviceUnits(std::trunc(std::hypot(state.ViewW, state.ViewH)));
    SetFontLimits();
}

void ChooseTarget(const GraphSpec& spec) {
    const std::string& device = spec.Device.Str();
    CloseMetafile();
    if (device == "0") {
        if (!Seams.HasPicBox) return Refuse("PictureBox");
        UseTarget(Targets::Screen);
    } else if (device == "1") {
        if (!Seams.HasPrinter) return Refuse("printer");
        UseTarget(Targets::Printer);
    } else {
        if (!Seams.MakeMetafile) return Refuse("metafile");
        Chart.Metafile = Seams.MakeMetafile(RequestFor(device));
        UseTarget(Targets::Metafile);
    }
    ReadView(spec.View);
    if (Chart.State.CyclesBuilt == 0) BuildCycles();
}

void SelectTarget(const GraphSpec& spec) {
    Chart.GraphStatus = GraphStatuses::Fine;
    ChooseTarget(spec);
}

void CloseMetafile() {
    if (Chart.Target == Targets::Metafile && Chart.Metafile.Close) Chart.Metafile.Close();
    Chart.Metafile = {};
}

} // namespace Quillon
