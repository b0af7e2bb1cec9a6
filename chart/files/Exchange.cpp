// The commands that hand data and pictures over to other programs, and take data from them.
#include "chart/files/Exchange.h"

#include "chart/draw/DrawGraph.h"
#include "chart/files/DataText.h"
#include "chart/files/GraphFile.h"
#include "chart/hand/Charts.h"
#include "chart/hand/Redraw.h"
#include "chart/layout/Layout.h"
#include "chart/layout/LegendLayout.h"
#include "chart/pens/Device.h"
#include "chart/records/ChartState.h"
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

void TakeNames(const PastedData& data) {
    const long sets = data.X.Sets();
    Chart.SetNames.Resize(sets);
    Chart.SetFlags.Recreate(sets); // those of the sets before
    for (long set = 1; set <= static_cast<long>(data.Names.size()); ++set)
        Chart.SetNames[set] = data.Names[static_cast<std::size_t>(set - 1)];
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
    for (GraphAxis* axis : {&Chart.Spec.AxisX1, &Chart.Spec.AxisY1})
        if (axis->ScaleMode == ScaleModes::Zoomed) axis->ScaleMode = ScaleModes::Autorange;
    Replot();
    if (Chart.GraphStatus >= GraphStatuses::Stop) RaiseError("the graph has no room");
    Chart.Columns = {};
}

void ShowPasted() {
    Charts.Markers.clear();
    Charts.StatusLine.Text.clear();
    ClearZoom();
    ClearSpecialOptions();
    RedrawAsLaidOut();
    ChartMenuStatus(Charts);
}

std::string CsvText(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

std::string CsvValue(float value) {
    return value == MissingValue ? "" : SingleText(value);
}

std::string CsvHead() {
    std::string head;
    for (long set = 1; set <= Chart.DataX.Sets(); ++set) {
        const std::string name = set <= Chart.SetNames.Hi() ? Chart.SetNames[set] : "";
        head += (set > 1 ? "," : "") + CsvText(Chart.Spec.AxisX1.Title.Text.Str()) + "," + CsvText(name);
    }
    return head + "\r\n";
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

std::string Picture(const std::string& ending) {
    const PictureRequest window = RequestOfWindow();
    const ScreenScope scope;
    std::string bytes;
    SetMetafileMaker([&](const MetafileRequest& asked) {
        PictureRequest request = window;
        request.Description = asked.Description;
        const PictureFile picture = OpenPictureAs(ending, request);
        return MetafileTarget{picture.Surface, picture.SetWindow,
                              [&bytes, finish = picture.Finish] { bytes = finish(); }};
    });
    Chart.Style.SymbolWidth = std::max(Chart.Style.SymbolWidth, PictureSymbolTwips);
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

std::string EndingOf(const std::string& path) {
    const std::string title = FileTitle(path);
    const std::size_t point = title.rfind('.');
    std::string ending = point == std::string::npos ? "" : title.substr(point + 1);
    for (char& c : ending)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return ending;
}

// Asks for a file; "" when none is chosen.
std::string AskForFile(const std::string& filter, const std::string& name, const std::string& type) {
    FileRequest request;
    request.Title = ProgramTitle() + SaveTitle;
    request.Filter = filter;
    request.Name = name;
    request.DefaultType = type;
    request.Save = true;
    if (Seams.DataDirectory) request.Directory = Seams.DataDirectory();
    const FileAnswer answer = Host.AskFile(request);
    return answer.Cancelled ? "" : answer.Path;
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
    const std::string path = AskForFile(kinds.Filter, kinds.Name, kinds.DefaultType);
    if (!path.empty()) WriteTold(path, [&] { return bytes(EndingOf(path)); });
}

PictureFile OpenPictureAs(const std::string& ending, const PictureRequest& request) {
    if (ending == "svg") return OpenSvg(request);
    if (ending == "emf") return OpenMetafile(request);
    if ((ending == "png" || ending == "pdf") && OpenToolkitPicture)
        return OpenToolkitPicture(ending, request);
    RaiseError("no graph is written as '" + ending + "'");
}

std::string DataCsv() {
    std::string text = CsvHead();
    const long points = LongestSetOfGraph();
    for (long point = 1; point <= points; ++point) {
        for (long set = 1; set <= Chart.DataX.Sets(); ++set)
            text += (set > 1 ? "," : "") + CsvValue(Chart.DataX(point, set)) + "," +
                    CsvValue(Chart.DataY(point, set));
        text += "\r\n";
    }
    return text;
}

void EditWriteData() {
    if (Chart.GraphHeld == 0) return;
    const std::string path = AskForFile("ASCII data files (*.DAT)|*.DAT|all files (*.*)|*.*", "*.dat", "dat");
    if (!path.empty()) WriteTold(path, [] { return DataText(AsciiDelimiterChar()); });
}

void EditPasteData() {
    if (!GraphMayChange() || Charts.Needed) return;
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

} // namespace Quillon
