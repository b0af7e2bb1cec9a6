#include "commands/export/PrintedReport.h"

#include "chart/CHART.h"
#include "chart/dialogs/PrintEsc.h"
#include "chart/dialogs/PrintGraph.h"
#include "chart/draw/CancelScope.h"
#include "chart/files/Exchange.h"
#include "chart/records/Kept.h"
#include "chart/targets/PageGeometry.h"
#include "graphs/kinds/FitGraphs.h"
#include "graphs/kinds/ResidualGraphs.h"
#include "platform/Narrow.h"
#include "platform/PaperPicture.h"
#include "platform/Platform.h"
#include "reporting/PaperReport.h"
#include "reporting/Report.h"
#include "studies/methods/StudyLines.h"
#include "workspace/records/Workspace.h"

#include <functional>
#include <utility>

namespace Quillon {

namespace {

// The engine holds one graph: that of the chart window is put aside while the report's own is drawn.
struct WindowScope {
    ChartModule Graph = Chart;
    ChartsForm Form = Charts;
    ChartSeams Wired = Seams;
    ChartKept Former = Kept;
    WindowScope() = default;
    ~WindowScope() {
        Chart = std::move(Graph);
        Charts = std::move(Form);
        Seams = std::move(Wired);
        Kept = std::move(Former);
    }
    WindowScope(const WindowScope&) = delete;
    WindowScope& operator=(const WindowScope&) = delete;
};

// A surface that measures texts as another one, and on which nothing shows.
DrawingSurface WithoutInk(DrawingSurface surface) {
    surface.Line = [](int, int, int, int) {};
    surface.Polyline = surface.Polygon = [](const std::vector<DevicePoint>&) {};
    surface.Rectangle = surface.Ellipse = surface.SetClip = [](const DeviceRect&) {};
    surface.PieSlice = [](DevicePoint, int, int, double, double) {};
    surface.Text = [](int, int, const std::string&) {};
    surface.ClearClip = surface.Refresh = [] {};
    return surface;
}

// Builders plot on the picture box: here one that shows nothing.
void MakeReportGraph(const DrawingSurface& page, bool overlay) {
    Chart.Painting = FlagFalse;
    Seams.NewGraph = {};
    Seams.KeepsPicture = 0;
    SetScreenSurface(WithoutInk(page));
    const bool made =
        overlay ? MakeFitGraph(FitGraph::Overlay, AllSets, {}) : MakeResidualGraph(ResidualAxis::X, AllSets);
    if (!made) RaiseError("the graph has no room");
}

// The graph with the page settings of the chart window; where they leave it no room on this paper, on what
// the margins of the printer leave.
void DrawGraphPage(const PrintedReport& report, const DrawingSurface& surface) {
    const double ratio = WindowAspect();
    const WindowScope scope;
    Chart.UseOnlyBW = Chart.UseColorOnBW = FlagFalse; // for a graph that is printed by itself
    MakeReportGraph(surface, report.Overlay);
    if (DrawGraphOnPage(report.Printer, surface, ratio).empty()) return;
    UseWholeSheet(Chart.Style, report.Printer.Page);
    const std::string refused = DrawGraphOnPage(report.Printer, surface, ratio);
    if (!refused.empty()) RaiseError(refused);
}

// Draws all pages; false when goOn said no behind one of them.
bool DrawPages(const PrintedReport& report, const PrintJob& job, const std::function<bool()>& goOn) {
    for (int page = 1; page <= PageCount(report); ++page) {
        if (page > 1) job.NewPage();
        DrawPage(report, page, job.Surface);
        if (!goOn()) return false;
    }
    return true;
}

bool RunJob(const PrintedReport& report) {
    const std::optional<PrintJob> job = Host.Printer.Begin(Work.ProgramName + " report");
    if (!job) return false;
    try {
        const PrintEscScope window;
        const bool all = DrawPages(report, *job, [] { return !PrintingCancelled(); });
        if (all)
            job->End();
        else
            job->Abort();
        return all;
    } catch (...) {
        job->Abort();
        throw;
    }
}

} // namespace

PrintedReport MakePrintedReport(const PrinterState& printer, bool withGraph, const StudyResults& studies) {
    PrintedReport report;
    report.Printer = printer;
    report.Paper = PaperOf(printer.Page);
    report.Pages = PrintReport(report.Paper, StudyLines(studies, report.Paper.Columns));
    report.WithGraph = withGraph;
    report.Overlay = Work.OverlayPlot != 0;
    return report;
}

int PageCount(const PrintedReport& report) {
    return static_cast<int>(report.Pages.size()) + (report.WithGraph ? 1 : 0);
}

void DrawPage(const PrintedReport& report, int page, const DrawingSurface& surface) {
    const std::size_t place = static_cast<std::size_t>(page - 1);
    if (place < report.Pages.size())
        DrawReportPage(surface, report.Printer, report.Paper, report.Pages[place]);
    else
        DrawGraphPage(report, surface);
}

bool PrintPages(const PrintedReport& report) {
    EndHeldPage(); // the printer takes one job at a time
    try {
        return RunJob(report);
    } catch (const RuntimeError& error) {
        TellPrintFailure(error.Text);
        return false;
    }
}

std::string ReportPdf(const PrintedReport& report) {
    PrintedReport pages = report;
    pages.Printer.Page = WithoutBorder(report.Printer.Page);
    const CancelScope whole;
    std::string bytes;
    const PictureFile picture =
        OpenPictureAs("pdf", PagePicture(pages.Printer.Page, Work.ProgramName + " report"));
    const PrintJob job = JobOfPicture(InColor(picture, pages.Printer.HasColor),
                                      [&bytes](const std::string& file) { bytes = file; });
    DrawPages(pages, job, [] { return true; });
    job.End();
    return bytes;
}

} // namespace Quillon
