#include "forms/shell/DesktopPrinter.h"

#include "chart/targets/PageGeometry.h"
#include "forms/shell/Binding.h"
#include "forms/shell/FormHost.h"
#include "forms/surfaces/PdfPicture.h"
#include "forms/surfaces/QtSurface.h"
#include "platform/PaperPicture.h"
#include "platform/Platform.h"

#include <QFile>
#include <QFontDatabase>
#include <QPageSetupDialog>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace Quillon {

namespace {

// The printer in use; dialogs change it. It is made when it is first asked for: that takes a moment.
QPrinter& InUse() {
    static const std::unique_ptr<QPrinter> printer = [] {
        auto made = std::make_unique<QPrinter>(QPrinter::HighResolution);
        if (made->outputFormat() == QPrinter::PdfFormat) made->setPageSize(QPageSize(QPageSize::A4));
        const double margin = PrinterPage().Margin.Left * PointsPerInch;
        made->setPageMargins(QMarginsF(margin, margin, margin, margin), QPageLayout::Point);
        return made;
    }();
    return *printer;
}

// The print dialog has named a file, and asked before one that exists. It is for one job: the next one must
// not write over it.
bool FileNamed = false;

bool IsFile(const QPrinter& printer) {
    return printer.outputFormat() == QPrinter::PdfFormat;
}

PageEdges EdgesOf(const QMarginsF& points) {
    return {points.left() / PointsPerInch, points.top() / PointsPerInch, points.right() / PointsPerInch,
            points.bottom() / PointsPerInch};
}

PrinterPage PageOf(const QPrinter& printer) {
    QPageLayout layout = printer.pageLayout();
    layout.setUnits(QPageLayout::Point);
    // The sheet's own size: the toolkit rounds points, and A4 is no whole number of them.
    const QRectF paper = layout.fullRect(QPageLayout::Millimeter);
    PrinterPage page;
    page.Width = paper.width() / MillimetresPerInch;
    page.Height = paper.height() / MillimetresPerInch;
    page.Margin = EdgesOf(layout.margins(QPageLayout::Point));
    if (!IsFile(printer)) page.Border = EdgesOf(layout.minimumMargins());
    return page;
}

bool PrintsColor(const QPrinter& printer) {
    if (printer.colorMode() == QPrinter::GrayScale) return false;
    if (IsFile(printer)) return true;
    const QList<QPrinter::ColorMode> modes = QPrinterInfo(printer).supportedColorModes();
    return modes.isEmpty() || modes.contains(QPrinter::Color);
}

std::vector<std::string> FixedFonts() {
    std::vector<std::string> faces;
    for (const QString& family : QFontDatabase::families())
        if (QFontDatabase::isFixedPitch(family)) faces.push_back(RecordText(family));
    return faces;
}

PrinterState Current() {
    const QPrinter& printer = InUse();
    PrinterState state;
    state.Name = IsFile(printer) ? "" : RecordText(printer.printerName());
    state.Page = PageOf(printer);
    state.HasColor = PrintsColor(printer); // IsPlotter stays off: no system tells. [decision: no-plotter]
    state.FixedFonts = FixedFonts();
    return state;
}

// --- dialogs ---------------------------------------------------------------------------------------------

bool Choose() {
    RefreshForms();
    QPrintDialog dialog(&InUse(), FrontWindow());
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false); // all pages are printed
    const ModalWait wait(&dialog);
    const bool chosen = dialog.exec() == QDialog::Accepted;
    FileNamed = FileNamed || chosen;
    return chosen;
}

bool SetUpPage() {
    RefreshForms();
    QPageSetupDialog dialog(&InUse(), FrontWindow());
    const ModalWait wait(&dialog);
    return dialog.exec() == QDialog::Accepted;
}

// --- jobs ------------------------------------------------------------------------------------------------

// Where a PDF file goes: the name from the print dialog, or one that is asked for; "" when none is given.
std::string FilePath(const std::string& title) {
    const QString named = std::exchange(FileNamed, false) ? InUse().outputFileName() : QString();
    if (!named.isEmpty()) return QFile::encodeName(named).toStdString();
    FileRequest request;
    request.Title = title;
    request.Filter = "PDF files (*.pdf)|*.pdf|all files (*.*)|*.*";
    request.Name = title + ".pdf";
    request.DefaultType = "pdf";
    request.Save = true;
    const FileAnswer answer = Host.AskFile(request);
    return answer.Cancelled ? "" : answer.Path;
}

std::optional<PrintJob> BeginFile(const std::string& title) {
    const std::string path = FilePath(title);
    if (path.empty()) return std::nullopt;
    const PictureFile pages = InColor(OpenPdf(PagePicture(PageOf(InUse()), title)), PrintsColor(InUse()));
    return JobOfPicture(pages, [path](const std::string& bytes) { Host.WriteFile(path, bytes); });
}

// A job on the printer. The painter lives as long as the job; whole sheets are painted on, and the border
// is left by the origin.
struct SheetJob {
    QPainter Painter;
    std::shared_ptr<PainterTarget> Target = std::make_shared<PainterTarget>();

    SheetJob() = default;
    ~SheetJob() { Close(); }
    SheetJob(const SheetJob&) = delete;
    SheetJob& operator=(const SheetJob&) = delete;

    void Open(const std::string& title) {
        QPrinter& printer = InUse();
        const PrinterPage page = PageOf(printer);
        const int dots = SheetDots(page);
        printer.setResolution(dots);
        printer.setDocName(ShownText(title));
        printer.setFullPage(true);
        if (!Painter.begin(&printer)) RaiseError("the printer could not be opened");
        const auto units = [dots](double inches) { return static_cast<int>(std::lround(inches * dots)); };
        Target->Painter = &Painter;
        Target->Width = units(page.PrintableWidth());
        Target->Height = units(page.PrintableHeight());
        Target->DotsPerInchX = Target->DotsPerInchY = dots;
        Target->Scale = static_cast<double>(printer.resolution()) / dots; // a driver may have its own
        Target->Origin = {-units(page.Border.Left), -units(page.Border.Top)};
        Target->HasColor = PrintsColor(printer);
        PictureRequest paper;
        paper.DotsPerInchX = paper.DotsPerInchY = dots;
        Target->ThinnestPen = ThinnestPen(paper);
    }

    void Check() const {
        if (InUse().printerState() == QPrinter::Error) RaiseError("the printer does not answer");
    }

    void Turn() {
        if (!InUse().newPage()) RaiseError("the printer takes no further page");
        Check();
    }

    void Close() {
        if (Painter.isActive()) Painter.end();
        InUse().setFullPage(false);
    }

    void End() {
        const bool done = Painter.end();
        Close();
        if (!done) RaiseError("the printer did not take the job");
        Check();
    }

    void Abort() {
        InUse().abort();
        Close();
    }
};

std::optional<PrintJob> BeginSheets(const std::string& title) {
    const auto sheets = std::make_shared<SheetJob>();
    sheets->Open(title);
    PrintJob job;
    job.Surface = PainterSurface(sheets->Target);
    job.NewPage = [sheets] { sheets->Turn(); };
    job.End = [sheets] { sheets->End(); };
    job.Abort = [sheets] { sheets->Abort(); };
    return job;
}

} // namespace

PrinterOperations DesktopPrinter() {
    PrinterOperations printer;
    printer.Current = Current;
    printer.Choose = Choose;
    printer.SetUpPage = SetUpPage;
    printer.Begin = [](const std::string& title) {
        return IsFile(InUse()) ? BeginFile(title) : BeginSheets(title);
    };
    return printer;
}

} // namespace Quillon
