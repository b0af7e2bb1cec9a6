#pragma once
// Where graphs are painted in windows: the picture box of the chart window, and small pictures in others.

#include "chart/records/ChartState.h"
#include "forms/surfaces/QtSurface.h"
#include "graphs/GraphWindows.h"

#include <QImage>
#include <QPainter>
#include <QWidget>

#include <functional>
#include <memory>

namespace Quillon {

// An image with a painter on it that lives as long as the image: the engine measures and draws at any time.
class PaintedImage {
public:
    PaintedImage() = default;
    ~PaintedImage() { Let(); }
    PaintedImage(const PaintedImage&) = delete;
    PaintedImage& operator=(const PaintedImage&) = delete;

    // A white image for a widget of that size, sharp on its display. The surface refers to it from then on.
    void Fit(const QWidget& widget);
    const QImage& Image() const { return Picture; }
    DrawingSurface Surface() const { return PainterSurface(Target); }

private:
    void Let();
    QImage Picture;
    std::unique_ptr<QPainter> Painter;
    std::shared_ptr<PainterTarget> Target = std::make_shared<PainterTarget>();
};

// Runs what the user does to the graph: at any time while the chart window is shown modally, otherwise only
// between commands.
void RunOnGraph(const std::function<void()>& handler);

// The picture box of the chart window, or of a further window of a graph, with the rubber band and the
// markers drawn over the picture.
class ChartCanvas : public QWidget {
public:
    explicit ChartCanvas(QWidget* parent = nullptr, GraphWindow* view = nullptr);
    ~ChartCanvas() override;

    // After the records have changed: shows the picture as it is now.
    void Follow() { update(); }

    // RunOnGraph with the graph of this window in hand.
    void Run(const std::function<void()>& handler);

    // A key on the graph, with the codes of ChartKey. Esc lets go of a rubber band.
    void Key(int code, int shift);
    std::function<void()> Changed; // after anything that the user did on the picture

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void LayOutAgain();
    void LayOutSoon();
    bool OwnsScreen() const;
    QPoint Device(const QMouseEvent& event) const;
    int MarkerBelow(const QPoint& p) const;
    GraphWindow* View; // null: the chart window
    PaintedImage Box;
};

// A small graph that stands in a window of something else; the graph of the chart window is left alone.
class ChartPicture : public QWidget {
public:
    explicit ChartPicture(QWidget* parent = nullptr) : QWidget(parent) {}

    // make builds the graph on the screen target.
    void DrawOnce(std::function<void()> make);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Draw();
    void DrawBox();
    std::function<void()> Make;
    PaintedImage Box;
    bool Drawing = false;
    bool Stale = false; // the size has changed since the picture was begun
};

} // namespace Quillon
