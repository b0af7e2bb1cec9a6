#include "forms/surfaces/PdfPicture.h"

#include "forms/surfaces/Application.h"
#include "forms/surfaces/QtSurface.h"
#include "platform/Printer.h"
#include "platform/RuntimeError.h"

#include <QBuffer>
#include <QMarginsF>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

struct PdfDrawing {
    PictureRequest Request;
    QByteArray Bytes;
    std::unique_ptr<QBuffer> Buffer; // each ends before what stands above it
    std::unique_ptr<QPdfWriter> Writer;
    QPainter Painter;
    std::shared_ptr<PainterTarget> Target;
};

// A page is a whole number of points; none of the picture is cut off.
QSizeF PageOf(const PictureRequest& request, const DeviceRect& window) {
    const auto points = [](int units, double dots) {
        return std::max(std::ceil(units * PointsPerInch / dots), 1.0);
    };
    return {points(window.Right - window.Left + 1, request.DotsPerInchX),
            points(window.Bottom - window.Top + 1, request.DotsPerInchY)};
}

// Begins the page of a window; what was begun before goes away.
void BeginPage(PdfDrawing& drawing, const DeviceRect& window) {
    if (drawing.Painter.isActive()) drawing.Painter.end();
    drawing.Writer.reset();
    drawing.Bytes.clear();
    drawing.Buffer = std::make_unique<QBuffer>(&drawing.Bytes);
    drawing.Buffer->open(QIODevice::WriteOnly);
    drawing.Writer = std::make_unique<QPdfWriter>(drawing.Buffer.get());
    QPdfWriter& writer = *drawing.Writer;
    const std::string& description = drawing.Request.Description;
    writer.setCreator("Quillon");
    writer.setTitle(QString::fromLatin1(description.c_str())); // up to its first zero byte
    writer.setPageSize(
        QPageSize(PageOf(drawing.Request, window), QPageSize::Point, {}, QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF(0.0, 0.0, 0.0, 0.0));
    writer.setResolution(std::max(static_cast<int>(std::lround(drawing.Request.DotsPerInchX)), 1));
    if (!drawing.Painter.begin(&writer)) RaiseError("Out of memory");
    drawing.Target->Origin = {window.Left, window.Top};
}

std::string FinishPdf(PdfDrawing& drawing) {
    drawing.Painter.end();
    drawing.Writer.reset();
    drawing.Buffer.reset();
    return std::exchange(drawing.Bytes, {}).toStdString();
}

} // namespace

PictureFile OpenPdf(const PictureRequest& request) {
    NeedApplication();
    const auto drawing = std::make_shared<PdfDrawing>();
    drawing->Request = request;
    drawing->Target = std::make_shared<PainterTarget>();
    PainterTarget& target = *drawing->Target;
    target.Painter = &drawing->Painter;
    target.BaseWidths = true;
    target.Width = request.Width;
    target.Height = request.Height;
    target.DotsPerInchX = request.DotsPerInchX;
    target.DotsPerInchY = request.DotsPerInchY;
    target.ThinnestPen = ThinnestPen(request);
    BeginPage(*drawing, {0, 0, request.Width - 1, request.Height - 1});
    PictureFile file;
    file.Surface = PainterSurface(drawing->Target);
    file.SetWindow = [drawing](const DeviceRect& window) { BeginPage(*drawing, window); };
    file.NewPage = [drawing] {
        if (!drawing->Writer->newPage()) RaiseError("Out of memory");
    };
    file.Finish = [drawing] { return FinishPdf(*drawing); };
    return file;
}

} // namespace Quillon
