#include "forms/surfaces/PngPicture.h"

#include "forms/surfaces/Application.h"
#include "forms/surfaces/QtSurface.h"
#include "platform/RuntimeError.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>

#include <cmath>

namespace Quillon {

namespace {

struct PngDrawing {
    QImage Image;
    QPainter Painter; // ends before its image
    DeviceRect Window;
};

int DotsPerMetre(double dotsPerInch) {
    return static_cast<int>(std::lround(dotsPerInch / 0.0254));
}

std::string FinishPng(PngDrawing& drawing) {
    drawing.Painter.end();
    const DeviceRect& part = drawing.Window;
    const QImage image =
        drawing.Image.copy(part.Left, part.Top, part.Right - part.Left + 1, part.Bottom - part.Top + 1);
    drawing.Image = {};
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG")) RaiseError("Out of memory");
    return bytes.toStdString();
}

} // namespace

PictureFile OpenPng(const PictureRequest& request) {
    NeedApplication();
    const auto drawing = std::make_shared<PngDrawing>();
    drawing->Image = QImage(request.Width, request.Height, QImage::Format_RGB32);
    if (drawing->Image.isNull()) RaiseError("Out of memory");
    drawing->Image.setDotsPerMeterX(DotsPerMetre(request.DotsPerInchX));
    drawing->Image.setDotsPerMeterY(DotsPerMetre(request.DotsPerInchY));
    drawing->Image.fill(Qt::white);
    drawing->Window = {0, 0, request.Width - 1, request.Height - 1};
    drawing->Painter.begin(&drawing->Image);
    const auto target = std::make_shared<PainterTarget>();
    target->Painter = &drawing->Painter;
    target->BaseWidths = true;
    target->Width = request.Width;
    target->Height = request.Height;
    target->DotsPerInchX = request.DotsPerInchX;
    target->DotsPerInchY = request.DotsPerInchY;
    PictureFile file;
    file.Surface = PainterSurface(target);
    file.SetWindow = [drawing](const DeviceRect& window) { drawing->Window = window; };
    file.Finish = [drawing] { return FinishPng(*drawing); };
    return file;
}

} // namespace Quillon
