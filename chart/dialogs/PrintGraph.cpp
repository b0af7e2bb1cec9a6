#include "chart/dialogs/PrintGraph.h"

#include "chart/dialogs/PrintEsc.h"
#include "chart/dialogs/PrintGrForm.h"
#include "chart/draw/DrawGraph.h"
#include "chart/files/Exchange.h"
#include "chart/hand/Charts.h"
#include "chart/hand/Redraw.h"
#include "chart/layout/Layout.h"
#include "chart/layout/LegendLayout.h"
#include "chart/pens/Device.h"
#include "chart/records/ChartState.h"
#include "chart/targets/PageGeometry.h"
#include "platform/Narrow.h"
#include "platform/PaperPicture.h"
#include "platform/Platform.h"

#include <cmath>
#include <optional>
#include <utility>

namespace Quillon {

namespace {

constexpr double PixelsPerInch = 300.0; // of a picture made of pixels

// The graph and how it meets the outside, as they were, on every way out.
struct GraphScope {
    ChartModule Former = Chart;
    ChartSeams Wired = Seams;
    GraphScope() = default;
    ~GraphScope() {
        Chart = std::move(Former);
        Seams = std::move(Wired);
    }
    GraphScope(const GraphScope&) = delete;
    GraphScope& operator=(const GraphScope&) = delete;
};

// --- a graph on a page -------------------------------------------------------------------------------------

// View, and frame where the size is that of the frame, for a page of that surface. False without room.
bool PlaceGraph(const PrinterPage& page, const DrawingSurface& surface, double aspect) {
    const PagePlace place = PlaceOnPage(Chart.Style, page, aspect);
    if (!place.HasRoom()) return false;
    GraphBox view = BoxOnDevice(place, Chart.Style, surface);
    view.Color = Chart.Spec.View.Color;
    Chart.Spec.Relayout = 1;
    if (SizesTheFrame(Chart.Style)) {
        const std::int16_t color = Chart.Spec.Frame.Color;
        const GraphBox frame = FrameOnPage(view, Chart, surface);
        if (frame.X2 <= frame.X1 || frame.Y2 <= frame.Y1) return false;
        Chart.Spec.Frame = frame;
        Chart.Spec.Frame.Color = color;
        view = ViewAroundFrame(frame, Chart, surface);
        Chart.Spec.Relayout = 0;
    }
    Chart.Spec.View = view;
    return true;
}

// Lays out for the target of that name and draws; false where texts leave the frame no room.
bool DrawOnTarget(const char* device) {
    Chart.GraphHeld = FlagFalse;
    Chart.Painting = FlagFalse;
    Chart.Spec.Device = device;
    const GraphState window = Chart.State;
    SelectTarget(Chart.Spec);
    CarryLegend(window);
    Replot();
    if (Chart.GraphStatus < GraphStatuses::Stop) ShowGraph();
    return Chart.GraphStatus < GraphStatuses::Stop;
}

constexpr const char* NoRoomBetweenMargins = "the margins leave no room on the paper";
constexpr const char* NoRoomForTexts = "the graph has no room";

// Places the graph and draws it; what it has no room for, empty when it was drawn.
std::string PlaceAndDraw(const PrinterPage& page, const DrawingSurface& surface, double aspect,
                         const char* device) {
    if (!PlaceGraph(page, surface, aspect)) return NoRoomBetweenMargins;
    return DrawOnTarget(device) ? "" : NoRoomForTexts;
}

// --- jobs ------------------------------------------------------------------------------------------------

struct OpenJob {
    PrintJob Job;
    PrinterState Printer;
};

// The page that is held.
std::optional<OpenJob> Held;

std::optional<OpenJob> BeginJob() {
    std::optional<PrintJob> job = Host.Printer.Begin(ProgramTitle() + " graph");
    if (!job) return std::nullopt;
    return OpenJob{std::move(*job), Host.Printer.Current()};
}

// False when it was given up: the job is aborted then.
bool DrawJob(OpenJob& job) {
    if (PrintingCancelled()) return false;
    const std::string refused = DrawGraphOnPage(job.Printer, job.Job.Surface);
    if (!refused.empty()) RaiseError(refused);
    return !PrintingCancelled();
}

// The steps of a job with the window that cancels it.
bool RunJob(std::int16_t mode) {
    std::optional<OpenJob> job = std::exchange(Held, std::nullopt);
    if (!job) job = BeginJob();
    if (!job) return false;
    try {
        const PrintEscScope window;
        if (!DrawJob(*job)) {
            job->Job.Abort();
            return false;
        }
        if (mode == PrintModes::EndPage || EjectPage)
            job->Job.End();
        else
            Held = std::move(job);
        return true;
    } catch (...) {
        if (job) job->Job.Abort();
        throw;
    }
}

void ForgetColors(ChartModule& chart) {
    chart.UseOnlyBW = chart.UseColorOnBW = FlagFalse;
}

// The colours asked for in the dialog hold for this time only: for the command that has shown it, and for no
// graph or report behind that, however the command is left.
struct ColorsOnce {
    ColorsOnce() = default;
    ~ColorsOnce() { ForgetColors(Chart); }
    ColorsOnce(const ColorsOnce&) = delete;
    ColorsOnce& operator=(const ColorsOnce&) = delete;
};

bool Print(std::int16_t mode) {
    const ColorsOnce colors;
    bool done = false;
    Host.SetPointer(Pointer::Hourglass);
    try {
        done = RunJob(mode);
    } catch (const RuntimeError& error) {
        Host.SetPointer(Pointer::Standard);
        TellPrintFailure(error.Text);
    }
    Host.SetPointer(Pointer::Standard);
    if (done && Held) Charts.StatusLine.Text = "The page is held open for the next graph.";
    return done;
}

// What can be printed on of the paper as a device: in pixels of a picture made of them, else fine enough for
// lines.
PictureRequest PaperRequest(const PrinterPage& page, const std::string& ending) {
    PrinterPage printable = WithoutBorder(page);
    printable.Width = page.PrintableWidth();
    printable.Height = page.PrintableHeight();
    PictureRequest request = PagePicture(printable, "");
    if (ending != "png") return request;
    request.Width = static_cast<int>(std::lround(printable.Width * PixelsPerInch));
    request.Height = static_cast<int>(std::lround(printable.Height * PixelsPerInch));
    request.DotsPerInchX = request.DotsPerInchY = PixelsPerInch;
    return request;
}

} // namespace

double WindowAspect() {
    const GraphState& state = Chart.State;
    const double height = state.ViewH * static_cast<double>(state.Aspect);
    return height > 0.0 ? state.ViewW / height : 0.0;
}

std::string DrawGraphOnPage(const PrinterState& printer, const DrawingSurface& page, double window) {
    const GraphScope scope;
    const double aspect = window > 0.0 ? window : WindowAspect();
    SetPrinterSurface(page, printer.IsPlotter);
    return PlaceAndDraw(printer.Page, page, aspect, "1");
}

std::string PictureOnPaper(const std::string& ending) {
    const PrinterState printer = Host.Printer.Current();
    const PictureRequest paper = PaperRequest(printer.Page, ending);
    const GraphScope scope;
    std::string bytes;
    SetMetafileMaker([&](const MetafileRequest& asked) {
        PictureRequest request = paper;
        request.Description = asked.Description;
        const PictureFile picture = InColor(OpenPictureAs(ending, request), printer.HasColor);
        return MetafileTarget{picture.Surface, picture.SetWindow,
                              [&bytes, finish = picture.Finish] { bytes = finish(); }};
    });
    DrawingSurface measure;
    FillSizes(measure, paper);
    // No target's number: it is painted once and closed.
    const std::string refused = PlaceAndDraw(printer.Page, measure, WindowAspect(), "picture");
    if (!refused.empty()) RaiseError(refused);
    CloseMetafile();
    return bytes;
}

bool PrintGraph(std::int16_t mode) {
    if (!GraphMayChange()) return false;
    return mode == PrintModes::Metafile ? AskMetafileProperties() : Print(mode);
}

void PrintGraphControl() {
    const ColorsOnce colors;
    if (GraphMayChange() && AskPrintOptions()) PrintGraph(PrintModes::FromMenu);
}

void CopyMeta() {
    const ColorsOnce colors;
    if (!PrintGraph(PrintModes::Metafile)) return;
    OfferGraph([] {
        ClipboardOffer offer;
        offer.Emf = PictureOnPaper("emf");
        return offer;
    });
}

void WriteMeta() {
    const ColorsOnce colors;
    if (!PrintGraph(PrintModes::Metafile)) return;
    WriteGraph({"Enhanced Metafiles (*.EMF)|*.EMF|all files (*.*)|*.*", "*.EMF", "EMF"},
               [](const std::string&) { return PictureOnPaper("emf"); });
}

void EndHeldPage() {
    const std::optional<OpenJob> job = std::exchange(Held, std::nullopt);
    if (!job) return;
    try {
        job->Job.End();
    } catch (const RuntimeError& error) {
        job->Job.Abort();
        TellPrintFailure(error.Text);
    }
}

} // namespace Quillon
