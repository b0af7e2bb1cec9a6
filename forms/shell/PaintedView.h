#pragma once
// A picture in a window that is painted when it is looked at, and painted anew when it has changed.

#include "forms/shell/ChartBox.h"

#include <QWidget>

#include <functional>

namespace Quillon {

class PaintedView : public QWidget {
public:
    // Paints on a surface of the view's size in pixels of the display, with letters so many units high. It
    // may use the chart engine: while the graph window paints, the picture that stands has to do.
    using PaintPicture = std::function<void(const DrawingSurface& surface, int letters)>;

    explicit PaintedView(PaintPicture paint);

    // What the picture shows has changed.
    void PaintAnew();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    PaintPicture Paint;
    PaintedImage Box;
    bool Stale = true;
};

} // namespace Quillon
