#include "forms/shell/ChartBox.h"

#include "chart/CHART.h"
#include "chart/Charts.h"
#include "chart/layout/LegendLayout.h"
#include "forms/shell/Binding.h"

#include <QMouseEvent>
#include <QTimer>
#include <QWheelEvent>

#include <vector>

namespace Quillon {

namespace {

constexpr int MarkerReach = 5; // pixels on either side of a marker that take hold of it

int ButtonNumber(Qt::MouseButton button) {
    return button == Qt::LeftButton ? 1 : button == Qt::MiddleButton ? 4 : 2;
}

// A marker over the frame, with a light edge that keeps it visible on any data. The one that the arrow keys
// move has handles at its ends.
void PaintMarker(QPainter& painter, const GraphBox& frame, const ChartMarker& marker, double ratio,
                 bool active) {
    const QColor color = QColor::fromRgb(ToRgb(static_cast<ChartColor>(marker.Color))).darker(130);
    painter.setPen(QPen(QColor(255, 255, 255, 200), 5 * ratio, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(marker.Device, frame.Y1, marker.Device, frame.Y2);
    painter.setPen(QPen(color, 3 * ratio, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(marker.Device, frame.Y1, marker.Device, frame.Y2);
    if (!active) return;
    const QPointF middle(marker.Device, 0);
    const double size = 6 * ratio;
    painter.setPen(QPen(Qt::white, ratio));
    painter.setBrush(color);
    for (const auto& [edge, inward] : {std::pair{frame.Y1, 1.0}, std::pair{frame.Y2, -1.0}})
        painter.drawPolygon(QPolygonF{middle + QPointF(-size, edge - inward * size),
                                      middle + QPointF(size, edge - inward * size),
                                      middle + QPointF(0, edge + inward * size)});
}

// What lies outside the markers is out of the range: it stays visible below a grey veil.
void PaintWash(QPainter& painter, const GraphBox& frame, const std::vector<ChartMarker>& markers) {
    const auto [left, right] = std::minmax(markers[0].Device, markers[1].Device);
    const QColor veil(128, 128, 128, 70);
    painter.fillRect(QRect(QPoint(frame.X1, frame.Y1), QPoint(left, frame.Y2)), veil);
    painter.fillRect(QRect(QPoint(right, frame.Y1), QPoint(frame.X2, frame.Y2)), veil);
}

void PaintPalePoints(QPainter& painter, const std::vector<PalePoint>& points, double ratio) {
    const double size = 3.5 * ratio;
    painter.setBrush(QColor(255, 255, 255, 160));
    painter.setPen(QPen(QColor(150, 150, 150), ratio));
    for (const PalePoint& point : points)
        if (point.DeviceX >= 0) painter.drawEllipse(QPointF(point.DeviceX, point.DeviceY), size, size);
}

// The keys as ChartKey counts them; 0 for those that have no number.
int ChartKeyCode(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    default:
        return event.key() >= Qt::Key_0 && event.key() <= Qt::Key_Z ? event.key() : 0;
    }
}

int ChartKeyShift(const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers();
    return (held.testFlag(Qt::ShiftModifier) ? 1 : 0) + (held.testFlag(Qt::ControlModifier) ? 2 : 0) +
           (held.testFlag(Qt::AltModifier) ? 4 : 0);
}

// The picture boxes that stand; the engine draws on the latest. A graph shown modally gives the box back to
// the chart window when it closes.
std::vector<ChartCanvas*>& Canvases() {
    static std::vector<ChartCanvas*> all;
    return all;
}

} // namespace

void PaintedImage::Let() {
    if (Painter) Painter->end();
    Painter.reset();
    Target->Painter = nullptr;
}

void PaintedImage::Fit(const QWidget& widget) {
    Let();
    const double ratio = widget.devicePixelRatioF();
    const QSize size(std::max(1, static_cast<int>(widget.width() * ratio)),
                     std::max(1, static_cast<int>(widget.height() * ratio)));
    Picture = QImage(size, QImage::Format_RGB32);
    Picture.fill(Qt::white);
    Picture.setDevicePixelRatio(1.0);
    Painter = std::make_unique<QPainter>(&Picture);
    Painter->setRenderHint(QPainter::Antialiasing);
    Painter->setRenderHint(QPainter::TextAntialiasing);
    Target->Painter = Painter.get();
    Target->Width = size.width();
    Target->Height = size.height();
    Target->DotsPerInchX = widget.logicalDpiX() * ratio;
    Target->DotsPerInchY = widget.logicalDpiY() * ratio;
    Target->Scale = 1.0;
    Target->Stamps = true;
}

void RunOnGraph(const std::function<void()>& handler) {
    if (Charts.Shown)
        RunHandler(handler); // a command waits for this window
    else
        RunWhenIdle(handler);
}

// --- ChartCanvas -------------------------------------------------------------------------------------------

ChartCanvas::ChartCanvas(QWidget* parent, GraphWindow* view) : QWidget(parent), View(view) {
    setMinimumSize(320, 240);
    resize(900, 560); // what the engine measures on before the window is shown
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    Box.Fit(*this);
    if (View == nullptr) Canvases().push_back(this);
    SetBoxOf(View, Box.Surface());
}

ChartCanvas::~ChartCanvas() {
    if (View != nullptr) return; // its box goes with its graph
    std::erase(Canvases(), this);
    if (Canvases().empty())
        RemoveScreenSurface();
    else
        SetBoxOf(View, Canvases().back()->Box.Surface());
}

// Of several chart windows the latest has the graph.
bool ChartCanvas::OwnsScreen() const {
    return View != nullptr || Canvases().back() == this;
}

void ChartCanvas::resizeEvent(QResizeEvent*) {
    Box.Fit(*this);
    if (!OwnsScreen()) return;
    SetBoxOf(View, Box.Surface());
    LayOutSoon();
}

// A graph that is not in hand waits until nothing is done to another one.
void ChartCanvas::LayOutSoon() {
    if (View == nullptr && IsInHand(View)) return LayOutAgain();
    if (HandlerAtWork() || Chart.Painting != 0)
        QTimer::singleShot(50, this, [this] { LayOutSoon(); });
    else
        Run([this] { LayOutAgain(); });
}

void ChartCanvas::LayOutAgain() {
    if (!Chart.GraphHeld) return;
    Chart.Spec.View = GraphBox{};
    Chart.Spec.View.Color = 15;
    Chart.Spec.Relayout = 1;
    Chart.Spec.Device = "0";
    const GraphState former = Chart.State;
    SelectTarget(Chart.Spec);
    CarryLegend(former);
    if (View == nullptr)
        RunSoon(this, RedrawChart);
    else
        RedrawChart();
    update();
}

void ChartCanvas::Run(const std::function<void()>& handler) {
    if (View == nullptr) return RunOnGraph(handler);
    RunWhenIdle([this, &handler] {
        const GraphInHand hand(View);
        handler();
    });
}

void ChartCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const double ratio = devicePixelRatioF();
    painter.scale(1.0 / ratio, 1.0 / ratio);
    painter.drawImage(0, 0, Box.Image());
    const ChartsForm& form = FormOf(View);
    const GraphBox& frame = ModuleOf(View).Spec.Frame;
    if (form.WashOutside && form.Markers.size() == 2) PaintWash(painter, frame, form.Markers);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintPalePoints(painter, form.PalePoints, ratio);
    for (std::size_t i = 0; i < form.Markers.size(); ++i)
        PaintMarker(painter, frame, form.Markers[i], ratio, static_cast<int>(i) == form.ActiveMarker);
    if (!form.Zooming) return;
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    const QRect band(QPoint(form.ZoomX1, form.ZoomY1), QPoint(form.LastX, form.LastY));
    painter.setPen(QPen(Qt::white, ratio));
    painter.drawRect(band.normalized());
    painter.setPen(QPen(Qt::black, ratio, Qt::DotLine));
    painter.drawRect(band.normalized());
}

QPoint ChartCanvas::Device(const QMouseEvent& event) const {
    const QPointF p = event.position() * devicePixelRatioF();
    return p.toPoint();
}

int ChartCanvas::MarkerBelow(const QPoint& p) const {
    if (!IsInHand(View)) return -1; // markers stand in the chart window alone
    return MarkerAt(p.x(), p.y(), static_cast<int>(MarkerReach * devicePixelRatioF()));
}

void ChartCanvas::mousePressEvent(QMouseEvent* event) {
    const QPoint p = Device(*event);
    Run([&] {
        const bool left = event->button() == Qt::LeftButton;
        const bool shift = event->modifiers().testFlag(Qt::ShiftModifier) && Charts.OnShiftBox;
        const int reach = static_cast<int>(MarkerReach * devicePixelRatioF());
        if (!left || shift || !MarkerPressed(p.x(), p.y(), reach))
            ChartMouseDown(p.x(), p.y(), ButtonNumber(event->button()), shift);
    });
    update();
}

void ChartCanvas::mouseMoveEvent(QMouseEvent* event) {
    const QPoint p = Device(*event);
    const ChartsForm& form = FormOf(View);
    const bool marker = form.CapturedMarker >= 0 || MarkerBelow(p) >= 0;
    setCursor(form.Drag.On ? Qt::ClosedHandCursor : marker ? Qt::SizeHorCursor : Qt::CrossCursor);
    Run([&] { ChartMouseMove(p.x(), p.y(), 0); });
    update();
}

// An eighth of a degree is the toolkit's unit, and 15 degrees are a notch. What turns finer gives parts of
// one.
void ChartCanvas::wheelEvent(QWheelEvent* event) {
    constexpr double notch = 120.0;
    const QPoint p = (event->position() * devicePixelRatioF()).toPoint();
    const double notches = event->angleDelta().y() / notch;
    if (notches != 0.0) Run([&] { ChartWheel(p.x(), p.y(), notches); });
    event->accept();
    update();
}

void ChartCanvas::mouseReleaseEvent(QMouseEvent* event) {
    const QPoint p = Device(*event);
    Run([&] {
        if (Charts.CapturedMarker >= 0)
            MarkerMouseUp();
        else
            ChartMouseUp(p.x(), p.y(), ButtonNumber(event->button()));
    });
    update();
}

void ChartCanvas::keyPressEvent(QKeyEvent* event) {
    const int code = ChartKeyCode(*event);
    if (code == 0) return QWidget::keyPressEvent(event);
    Key(code, ChartKeyShift(*event));
}

void ChartCanvas::Key(int code, int shift) {
    Run([&] { ChartKey(code, shift); });
    if (Changed) Changed();
    update();
}

// --- ChartPicture ------------------------------------------------------------------------------------------

void ChartPicture::DrawOnce(std::function<void()> make) {
    Make = std::move(make);
}

// Painting serves events: a new size that comes meanwhile has to wait, and what has been painted of the
// widget by then is half of the picture.
void ChartPicture::Draw() {
    Stale = true;
    if (Drawing) return;
    Drawing = true;
    while (Stale) {
        Stale = false;
        DrawBox();
    }
    Drawing = false;
    update();
}

// The engine holds one graph: the one of the chart window is put aside while the small one is painted.
void ChartPicture::DrawBox() {
    Box.Fit(*this);
    const ChartModule kept = Chart;
    const ChartsForm keptForm = Charts;
    const ChartSeams keptSeams = Seams;
    Chart.Painting = 0;
    SetScreenSurface(Box.Surface());
    RunHandler(Make);
    Chart = kept;
    Charts = keptForm;
    Seams = keptSeams;
}

void ChartPicture::resizeEvent(QResizeEvent*) {
    if (Make) Draw();
}

void ChartPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const double ratio = devicePixelRatioF();
    painter.scale(1.0 / ratio, 1.0 / ratio);
    painter.drawImage(0, 0, Box.Image());
}

} // namespace Quillon
