// The commands that hand data and pictures over to other programs, and take data from them.
#include "chart/files/Exchange.h"

#include "chart/draw/DrawGraph.h"
#include "chart/files/GraphFile.h"
#include "chart/files/PastedText.h"
#include "chart/hand/ChartMarkers.h"
#include "chart/hand/Charts.h"
#include "chart/hand/Redraw.h"
#include "chart/layout/Layout.h"
#include "chart/layout/LegendLayout.h"
#include "chart/pens/Device.h"
#include "chart/records/ChartState.h"
#include "chart/records/Kept.h"
#include "chart/targets/Metafile.h"
#include "chart/targets/SvgFile.h"
#include "input/NUMINPUT.h"
#include "platform/Narrow.h"
#include "platform/Paths.h"
#include "platform/Platform.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr const char* SaveTitle = " - Save Graph File";

// A picture is as wide as the text of a page in print, and its outlines of symbols are half a point.
constexpr double PictureInches = 170.0 / 25.4;
constexpr double PictureDots = 300.0;
constexpr float PictureSymbolTwips = 10.0F;

// --- data --------------------------------------------------------------------------------------------------

// The head that names were given for what stood below, taken off again.
std::string NameFromHead(const std::string& head) {
    const std::string pattern = AsStored("\n", Chart.Spec.AxisY1, Chart.LoadFactorY);
    const std::string front = pattern.substr(0, pattern.find('\n'));
    const std::string end = pattern.substr(front.size() + 1);
    const bool has =
        head.size() >= front.size() + end.size() && head.starts_with(front) && head.ends_with(end);
    return has ? head.substr(front.size(), head.size() - front.size() - end.size()) : head;
}

void TakeNames(const PastedData& data) {
    const long sets = data.X.Sets();
    Chart.SetNames.Resize(sets);
    Chart.SetFlags.Recreate(sets); // those of the sets before
    for (long set = 1; set <= static_cast<long>(data.Names.size()); ++set)
        Chart.SetNames[set] = NameFromHead(data.Names[static_cast<std::size_t>(set - 1)]);
}

// A zoom goes with its graph, also where it was made a manual scale.
void LeaveZoom(GraphAxis& axis) {
    const bool manual = axis.ScaleMode == ScaleModes::Manual && Charts.Zooms.GaveScale;
    if (manual || axis.ScaleMode == ScaleModes::Zoomed) axis.ScaleMode = ScaleModes::Autorange;
}

void TakePasted(PastedData data) {
    GraphState& state = Chart.State;
    TakeNames(data);
    state.Npts = ToInt16(data.X.Points());
    state.Nsets = state.LastSet = ToInt16(data.X.Sets());
    state.FirstSet = 1;
    if (state.Nsets > 1) state.MultiSet = 1;
    Chart.DataX = std::move(data.X);
    Chart.DataY = std::move(data.Y);
    Chart.Looks = {};
    LeaveZoom(Chart.Spec.AxisX1);
    LeaveZoom(Chart.Spec.AxisY1);
    Replot();
    if (Chart.GraphStatus >= GraphStatuses::Stop) RaiseError("the graph has no room");
    Chart.Columns = {};
}

void ShowPasted() {
    RemoveMarkers();
    Kept.ZoomState = 0;
    Charts.StatusLine.Text.clear();
    ClearZoom();
    ClearSpecialOptions();
    RedrawAsLaidOut();
    ChartMenuStatus(Charts);
}

// --- pictures ----------------------------------------------------------------------------------------------

// The graph, its surfaces and its maker of metafiles as they were, on every way out.
struct ScreenScope {
    ChartModule Former = Chart;
    ChartSeams Wired = Seams;
    ScreenScope() = default;
    ~ScreenScope() {
        Chart = std::move(Former);
        Seams = std::move(Wired);
    }
    ScreenScope(const ScreenScope&) = delete;
    ScreenScope& operator=(const ScreenScope&) = delete;
};

PictureRequest RequestOfWindow() {
    const GraphState& state = Chart.State;
    const double ratio = state.ViewW > 0 ? static_cast<double>(state.ViewH) / state.ViewW : 0.75;
    PictureRequest request;
    request.DotsPerInchX = request.DotsPerInchY = PictureDots;
    request.Width = static_cast<int>(std::nearbyint(PictureInches * PictureDots));
    request.Height = static_cast<int>(std::nearbyint(request.Width * std::clamp(ratio, 0.1, 4.0)));
    return request;
}

// As many dots as the picture box has.
PictureRequest RequestOfBox() {
    const DrawingSurface& box = Seams.PicBox;
    PictureRequest request;
    request.Width = box.Width();
    request.Height = box.Height();
    request.DotsPerInchX = box.DotsPerInchX();
    request.DotsPerInchY = box.DotsPerInchY();
    return request;
}

// Lines that are seen on paper.
void SuitPaper(ChartStyle& style) {
    style.SymbolWidth = std::max(style.SymbolWidth, PictureSymbolTwips);
}

// What the screen has of its own.
void SuitBox(ChartStyle& style) {
    style.PrintColors = style.ScreenColors;
    style.PrinterHFonts = style.ScreenHFonts;
    style.PrinterVFonts = style.ScreenVFonts;
    style.PrinterMaxFont = style.ScreenMaxFont;
    style.PrinterMinFont = style.ScreenMinFont;
}

std::string Picture(const std::string& ending, const PictureRequest& place, void (*suit)(ChartStyle&)) {
    const ScreenScope scope;
    std::string bytes;
    SetMetafileMaker([&](const MetafileRequest& asked) {
        PictureRequest request = place;
        request.Description = asked.Description;
        const PictureFile picture = OpenPictureAs(ending, request);
        return MetafileTarget{picture.Surface, picture.SetWindow,
                              [&bytes, finish = picture.Finish] { bytes = finish(); }};
    });
    suit(Chart.Style);
    Chart.Spec.View = Chart.Spec.Frame = GraphBox{};
    Chart.Spec.View.Color = Chart.Spec.Frame.Color = 15;
    Chart.Spec.Relayout = 1;
    Chart.Spec.Device = "picture"; // no target's number: it is painted once and closed
    const GraphState shown = Chart.State;
    SelectTarget(Chart.Spec);
    CarryLegend(shown);
    Replot();
    ShowGraph();
    if (Chart.GraphStatus >= GraphStatuses::Stop) RaiseError("the graph has no room");
    CloseMetafile();
    return bytes;
}

std::string Picture(const std::string& ending) {
    return Picture(ending, RequestOfWindow(), SuitPaper);
}

// Programs into which an SVG is pasted take its units for pixels of 1/96 inch, whatever its viewBox says:
// here they are.
std::string InPixels(const std::string& svg, const PictureRequest& request) {
    constexpr double pixelsPerInch = 96.0;
    const double scale = pixelsPerInch / request.DotsPerInchX;
    const std::size_t box = svg.find("viewBox=\"");
    const std::size_t open = svg.find('>', box);
    const std::size_t close = svg.rfind("</svg>");
    if (box == std::string::npos || open == std::string::npos || close == std::string::npos) return svg;
    return svg.substr(0, box) + "viewBox=\"0 0 " + DoubleText(request.Width * scale) + " " +
           DoubleText(request.Height * scale) + "\">\n<g transform=\"scale(" + DoubleText(scale) +
           ") translate(0.5 0.5)\">" + svg.substr(open + 1, close - open - 1) + "</g>\n</svg>\n";
}

// --- files -------------------------------------------------------------------------------------------------

// A file to write; "" when none is chosen.
std::string FileFor(const std::string& filter, const std::string& name, const std::string& type) {
    FileRequest request;
    request.Title = ProgramTitle() + SaveTitle;
    request.Filter = filter;
    request.Name = name;
    request.DefaultType = type;
    request.Save = true;
    if (Seams.DataDirectory) request.Directory = Seams.DataDirectory();
    return ChosenFile(request);
}

void WriteTold(const std::string& path, const std::function<std::string()>& bytes) {
    try {
        Host.WriteFile(path, bytes());
    } catch (const RuntimeError& error) {
        Tell("Error '" + error.Text + "' occurred while writing " + path, ProgramTitle(), BoxIcon::Warning);
    }
}

} // namespace

void OfferGraph(const std::function<ClipboardOffer()>& make) {
    if (!GraphMayChange()) return;
    try {
        if (!Host.SetClipboard(make())) RaiseError("the clipboard cannot be used");
    } catch (const RuntimeError& error) {
        Tell("Error '" + error.Text + "' occurred while copying the graph", ProgramTitle(), BoxIcon::Warning);
    }
}

void WriteGraph(const GraphFileKinds& kinds,
                const std::function<std::string(const std::string& ending)>& bytes) {
    if (!GraphMayChange()) return;
    const std::string path = FileFor(kinds.Filter, kinds.Name, kinds.DefaultType);
    if (!path.empty()) WriteTold(path, [&] { return bytes(EndingOf(path)); });
}

PictureFile OpenPictureAs(const std::string& ending, const PictureRequest& request) {
    if (ending == "svg") return OpenSvg(request);
    if (ending == "emf") return OpenMetafile(request);
    if ((ending == "png" || ending == "pdf") && OpenToolkitPicture)
        return OpenToolkitPicture(ending, request);
    RaiseError("no graph is written as '" + ending + "'");
}

void EditWriteData() {
    if (Chart.GraphHeld == 0) return;
    const std::string path = FileFor("ASCII data files (*.DAT)|*.DAT|all files (*.*)|*.*", "*.dat", "dat");
    if (!path.empty()) WriteTold(path, [] { return DataText(AsciiDelimiterChar()); });
}

void EditPasteData() {
    if (!GraphMayChange()) return;
    if (Charts.Needed)
        return Tell(
            "The graph in the window is still waited for.  Numbers can be pasted when that has ended.",
            ProgramTitle(), BoxIcon::Warning);
    const std::string text = Host.ClipboardText();
    if (text.empty()) return Tell("There is no text on the Clipboard.", ProgramTitle(), BoxIcon::Warning);
    ChartModule former = Chart;
    try {
        TakePasted(ReadPastedText(text));
    } catch (const RuntimeError& error) {
        Chart = std::move(former);
        const bool odd = error.Text == OddColumns;
        return Tell(odd ? error.Text : "Error during data paste operation, aborting...\n\n" + error.Text,
                    ProgramTitle(), BoxIcon::Warning);
    }
    ShowPasted();
}

std::string GraphAs(const std::string& ending) {
    if (ending == "grf") return GraphFileBytes();
    if (ending == "dat") return DataText(AsciiDelimiterChar());
    return ending == "csv" ? DataCsv() : Picture(ending);
}

void SaveGraphAs() {
    WriteGraph({"SVG pictures (*.svg)|*.svg|PDF pictures (*.pdf)|*.pdf|PNG pictures (*.png)|*.png|Enhanced "
                "Metafiles (*.EMF)|*.EMF|ASCII data files (*.DAT)|*.DAT|comma separated values "
                "(*.csv)|*.csv|graph save files (*.GRF)|*.GRF|all files (*.*)|*.*",
                "graph.svg", "svg"},
               GraphAs);
}

void CopyGraph() {
    OfferGraph([] {
        ClipboardOffer offer;
        offer.Svg = InPixels(Picture("svg"), RequestOfWindow());
        offer.Emf = Picture("emf");
        if (OpenToolkitPicture) offer.Png = Picture("png");
        offer.Text = DataTextWithHeads();
        return offer;
    });
}

void CopyBitmap() {
    OfferGraph([] {
        ClipboardOffer offer;
        offer.Png = Picture("png", RequestOfBox(), SuitBox);
        return offer;
    });
}

} // namespace Quillon
