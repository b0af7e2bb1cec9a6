// The pages of the report before they are printed.
#include "commands/export/ReportPreview.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"
#include "forms/surfaces/QtSurface.h"

#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QShortcut>

#include <cmath>

namespace Quillon {

namespace {

constexpr int SheetEdge = 12; // pixels around the sheet

// One page on its sheet, as wide as there is room. It is drawn once and kept as an image.
class PreviewSheet : public QWidget {
public:
    PreviewSheet() { setAutoFillBackground(false); }

    // Shows the page of the record where it is another one than before.
    void Follow() {
        if (Edition == ReportPreview.Edition && Page == ReportPreview.Page && Drawn == Pixels()) return;
        Edition = ReportPreview.Edition;
        Page = ReportPreview.Page;
        FitHeight();
        Draw();
        update();
    }

protected:
    void resizeEvent(QResizeEvent*) override { Follow(); }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QRect sheet(SheetEdge, SheetEdge, width() - 2 * SheetEdge, SheetHeight());
        painter.fillRect(sheet.translated(3, 3), palette().color(QPalette::Shadow));
        painter.fillRect(sheet, Qt::white); // paper is white in dark windows too
        painter.drawImage(sheet.topLeft(), Image);
    }

private:
    static const PrinterPage& Paper() { return ReportPreview.Report.Printer.Page; }
    double UnitsToPixels() const { return (width() - 2 * SheetEdge) / (Paper().Width * PageDots); }
    int SheetHeight() const {
        return static_cast<int>(std::lround((width() - 2 * SheetEdge) * Paper().Height / Paper().Width));
    }
    QSize Pixels() const {
        return QSize(std::max(width() - 2 * SheetEdge, 1), std::max(SheetHeight(), 1)) * devicePixelRatioF();
    }
    void FitHeight() { setFixedHeight(SheetHeight() + 2 * SheetEdge); }

    void Draw() {
        Drawn = Pixels();
        Image = QImage(Drawn, QImage::Format_RGB32);
        Image.fill(Qt::white);
        QPainter painter(&Image);
        auto target = std::make_shared<PainterTarget>();
        target->Painter = &painter;
        target->Width = PageUnits(Paper().PrintableWidth());
        target->Height = PageUnits(Paper().PrintableHeight());
        target->DotsPerInchX = target->DotsPerInchY = PageDots;
        target->Origin = {-PageUnits(Paper().Border.Left), -PageUnits(Paper().Border.Top)};
        target->Scale = UnitsToPixels() * devicePixelRatioF();
        target->ThinnestPen = 1.0 / target->Scale; // a pixel of the display
        RunGuarded([&] { DrawPreviewPage(PainterSurface(target)); });
        painter.end();
        Image.setDevicePixelRatio(devicePixelRatioF());
    }

    int Edition = -1, Page = 0; // that the image shows
    QSize Drawn;
    QImage Image;
};

// The sheet in an area that scrolls; each page begins at its top.
QWidget* SheetArea(Binder& bind, FormDialog* form) {
    auto* sheet = new PreviewSheet;
    auto* area = new QScrollArea;
    area->setWidget(sheet);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // the width does not hang on the height
    area->setBackgroundRole(QPalette::Mid);
    bind.Also([sheet, area, shown = 0]() mutable {
        sheet->Follow();
        if (shown != ReportPreview.Page) area->verticalScrollBar()->setValue(0);
        shown = ReportPreview.Page;
    });
    for (const auto& [key, pages] : {std::pair{Qt::Key_PageUp, -1}, std::pair{Qt::Key_PageDown, 1}})
        QObject::connect(new QShortcut(key, form), &QShortcut::activated, form,
                         [pages = pages] { RunHandler([pages] { ReportPreviewTurn(pages); }); });
    constexpr int lines = 3; // of the bar, at a press
    for (const auto& [key, steps] : {std::pair{Qt::Key_Up, -lines}, std::pair{Qt::Key_Down, lines}})
        QObject::connect(new QShortcut(key, form), &QShortcut::activated, form,
                         [bar = area->verticalScrollBar(), steps = steps] {
                             bar->setValue(bar->value() + steps * bar->singleStep());
                         });
    return area;
}

QLayout* PageRow(Binder& bind) {
    auto* graph = new QCheckBox;
    bind.Check(
        graph, []() -> Control& { return ReportPreview.WithGraph; }, ReportPreviewGraphClick);
    return ButtonRow(
        {MakeButton(
             bind, []() -> Control& { return ReportPreview.PreviousButton; }, [] { ReportPreviewTurn(-1); }),
         MakeLabel(bind, []() -> Control& { return ReportPreview.PageLabel; }),
         MakeButton(
             bind, []() -> Control& { return ReportPreview.NextButton; }, [] { ReportPreviewTurn(1); })},
        {graph});
}

QLayout* PagePrinterRow(Binder& bind) {
    return ButtonRow(
        {MakeLabel(bind, []() -> Control& { return ReportPreview.PrinterNote; })},
        {MakeButton(
            bind, []() -> Control& { return ReportPreview.PaperSetup; }, ReportPreviewPaperSetup)});
}

QLayout* PreviewButtons(Binder& bind) {
    return ButtonRow(
        {MakeButton(
             bind, []() -> Control& { return ReportPreview.SavePdf; }, ReportPreviewSavePdf),
         MakeButton(
             bind, []() -> Control& { return ReportPreview.SaveText; }, ReportPreviewSaveText),
         MakeButton(
             bind, []() -> Control& { return ReportPreview.SaveHtml; }, ReportPreviewSaveHtml)},
        {MakeButton(
             bind, []() -> Control& { return ReportPreview.PrintButton; }, ReportPreviewPrint, true),
         MakeCancel(
             bind, []() -> Control& { return ReportPreview.CloseButton; }, ReportPreviewClose)});
}

QWidget* MakeReportPreview(QWidget* parent) {
    auto* form = new FormDialog(ReportPreview.State, ReportPreviewClose, parent);
    Binder& bind = form->Bind;
    auto* all = new QVBoxLayout(form);
    all->addLayout(PagePrinterRow(bind));
    all->addWidget(SheetArea(bind, form), 1);
    all->addLayout(PageRow(bind));
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return ReportPreview.SavedNote; }, true));
    all->addLayout(PreviewButtons(bind));
    form->resize(ForFont(720, 640));
    return form;
}

const FormWindow Registered(ReportPreviewName, MakeReportPreview);

} // namespace

} // namespace Quillon
