#include "forms/shell/PaintedView.h"

#include <QTimer>

namespace Quillon {

PaintedView::PaintedView(PaintPicture paint) : Paint(std::move(paint)) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PaintedView::PaintAnew() {
    Stale = true;
    update();
}

void PaintedView::paintEvent(QPaintEvent*) {
    if (Stale && Chart.Painting == 0) {
        Stale = false;
        Box.Fit(*this);
        Paint(Box.Surface(), static_cast<int>(fontMetrics().height() * devicePixelRatioF()));
    } else if (Stale) {
        QTimer::singleShot(50, this, [this] { update(); });
    }
    QPainter painter(this);
    painter.scale(1.0 / devicePixelRatioF(), 1.0 / devicePixelRatioF());
    painter.drawImage(0, 0, Box.Image());
}

void PaintedView::resizeEvent(QResizeEvent*) {
    Stale = true;
}

} // namespace Quillon
