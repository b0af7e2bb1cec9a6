#include "forms/shell/PrintReport.h"

#include "chart/CHART.h"
#include "forms/shell/Binding.h"
#include "forms/shell/FormHost.h"
#include "forms/surfaces/QtSurface.h"
#include "graphs/FitGraphs.h"
#include "graphs/ResidualGraphs.h"
#include "platform/Platform.h"
#include "reporting/Report.h"
#include "workspace/records/Workspace.h"

#include <QFontDatabase>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>

namespace Quillon {

namespace {

void PaintPages(QPrinter& printer, QPainter& painter) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(static_cast<double>(Work.ReportFontSize));
    painter.setFont(font);
    const QFontMetrics metrics = painter.fontMetrics();
    bool first = true;
    for (const auto& page : PrintReport(StandardPaper())) {
        if (!first) printer.newPage();
        first = false;
        int y = metrics.ascent();
        for (const std::string& line : page) {
            painter.drawText(0, y, ShownText(line));
            y += metrics.lineSpacing();
        }
    }
}

// The graph on a page of its own, by the engine, in the printer's units.
void PaintGraph(QPrinter& printer, QPainter& painter) {
    printer.newPage();
    auto target = std::make_shared<PainterTarget>();
    target->Painter = &painter;
    target->Width = printer.pageLayout().paintRectPixels(printer.resolution()).width();
    target->Height =
        std::min(printer.pageLayout().paintRectPixels(printer.resolution()).height(), target->Width * 3 / 4);
    target->DotsPerInchX = target->DotsPerInchY = printer.resolution();
    const ChartModule kept = Chart;
    const ChartsForm keptForm = Charts;
    const ChartSeams keptSeams = Seams;
    SetScreenSurface(PainterSurface(target));
    if (Work.OverlayPlot)
        MakeFitGraph(FitGraph::Overlay, 0, {});
    else
        MakeResidualGraph(ResidualAxis::X, 0);
    Chart = kept;
    Charts = keptForm;
    Seams = keptSeams;
}

} // namespace

void PrintReportWith(bool withGraph) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName("Quillon report");
    QPrintDialog dialog(&printer, FrontWindow());
    {
        const ModalWait wait(&dialog);
        if (dialog.exec() != QDialog::Accepted) return;
    }
    QPainter painter;
    if (!painter.begin(&printer))
        return Tell("The printer could not be opened.", Work.ProgramName, BoxIcon::Warning);
    PaintPages(printer, painter);
    if (withGraph) PaintGraph(printer, painter);
}

} // namespace Quillon
