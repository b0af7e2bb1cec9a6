#include "forms/workbench/GraphPane.h"

#include "chart/pens/Pens.h"
#include "chart/records/ChartState.h"
#include "chart/records/Kept.h"
#include "commands/Analmenu.h"
#include "forms/Pieces.h"
#include "forms/shell/PaintedView.h"
#include "forms/workbench/FaintText.h"
#include "forms/workbench/Idle.h"
#include "graphs/GraphPair.h"
#include "workspace/records/Workspace.h"

#include <QListWidget>
#include <QPainter>
#include <QSplitter>
#include <QTimer>
#include <QToolTip>

namespace Quillon {

namespace {

// --- the graphs --------------------------------------------------------------------------------------------

class PairCanvas : public PaintedView {
public:
    PairCanvas() : PaintedView(PaintGraphPair) {
        setMinimumSize(240, 180);
        setMouseTracking(true);
        setFocusPolicy(Qt::StrongFocus);
        setAccessibleName("Data with curves, and residuals");
        setAccessibleDescription("Enter opens the graph window");
    }
    QSize sizeHint() const override { return {640, 480}; }

protected:
    void paintEvent(QPaintEvent* event) override {
        PaintedView::paintEvent(event);
        if (!hasFocus()) return;
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    bool event(QEvent* event) override {
        if (event->type() != QEvent::ToolTip) return QWidget::event(event);
        return true; // it comes with the pointer, below
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        constexpr double reach = 8.0; // pixels
        if (!MayFollowAnalysis()) return;
        const QPoint at = (event->position() * devicePixelRatioF()).toPoint();
        const PairPoint point = PairPointAt(at.x(), at.y(), static_cast<int>(reach * devicePixelRatioF()));
        if (point.Set == NoSet) return QToolTip::hideText();
        QToolTip::showText(event->globalPosition().toPoint(), ShownText(PairPointText(point)), this);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override {
        Open(IsInResiduals(static_cast<int>(event->position().y() * devicePixelRatioF())));
    }
    void keyPressEvent(QKeyEvent* event) override {
        const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (enter) return Open(event->modifiers().testFlag(Qt::ShiftModifier));
        QWidget::keyPressEvent(event);
    }

private:
    static void Open(bool residuals) {
        const char* graph = residuals && GraphPair.HasResiduals ? "GraphResiduals"
                            : GraphPair.HasCurves               ? "GraphOverlay"
                                                                : "GraphData";
        RunWhenIdle([graph] { RunMainCommand(graph); });
    }
};

// --- the legend --------------------------------------------------------------------------------------------

// A sample of a set as the engine paints it, with a little of the canvas around.
QIcon SampleOf(const QWidget& widget, SetNo set) {
    QWidget place;
    place.resize(widget.fontMetrics().lineSpacing() * 5 / 2, widget.fontMetrics().lineSpacing());
    PaintedImage image;
    image.Fit(place);
    PaintSetSample(image.Surface(), set);
    return QPixmap::fromImage(image.Image().copy());
}

class PairLegend : public QListWidget {
public:
    PairLegend() {
        setAccessibleName("Data sets: Space hides and shows one");
        setSelectionMode(NoSelection);
        setFrameShape(QFrame::NoFrame);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
        connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { Toggle(row(item)); });
    }
    QSize sizeHint() const override {
        return {sizeHintForColumn(0) + 2 * frameWidth() + 24, QListWidget::sizeHint().height()};
    }
    QSize minimumSizeHint() const override { return {60, 60}; }
    void Fill() {
        const int current = currentRow();
        clear();
        TakeGround();
        setIconSize({fontMetrics().lineSpacing() * 5 / 2, fontMetrics().lineSpacing()});
        for (std::size_t i = 0; i < GraphPair.Legend.size(); ++i)
            Add(GraphPair.Legend[i], SetNo(static_cast<long>(i) + 1));
        setCurrentRow(std::min(std::max(current, 0), count() - 1));
        updateGeometry();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Space) return Toggle(currentRow());
        QListWidget::keyPressEvent(event);
    }

private:
    // Samples of symbols and lines are told apart on the ground of the graphs, whatever that of the desktop
    // is.
    void TakeGround() {
        const auto color = [](Rgb each) {
            return QColor::fromRgb(Kept.DarkCanvas ? OnDarkCanvas(each) : each);
        };
        QPalette colors = palette();
        colors.setColor(QPalette::Base, color(0xFFFFFF));
        colors.setColor(QPalette::Text, color(0));
        setPalette(colors);
    }
    void Add(const Control& entry, SetNo set) {
        auto* item = new QListWidgetItem(SampleOf(*this, set), ShownText(entry.Text), this);
        item->setToolTip(WrappedTip(entry.ToolTip));
        const bool shown = entry.Value != 0;
        item->setData(Qt::AccessibleTextRole, shown ? item->text() : item->text() + ", hidden");
        if (shown) return;
        QFont font = item->font();
        font.setStrikeOut(true);
        item->setFont(font);
        item->setForeground(FaintText(palette()));
    }
    static void Toggle(int row) {
        if (row < 0 || row >= Work.NumSets) return;
        RunWhenIdle([row] { ToggleSet(SetNo(row + 1)); });
    }
};

} // namespace

QWidget* MakeGraphPane(Binder& bind) {
    auto* canvas = new PairCanvas;
    auto* legend = new PairLegend;
    auto* split = new QSplitter;
    split->addWidget(canvas);
    split->addWidget(legend);
    split->setStretchFactor(0, 1);
    split->setStretchFactor(1, 0);
    split->setChildrenCollapsible(false);
    auto* pane = new QWidget;
    auto* all = new QVBoxLayout(pane);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(split, 1);
    auto* remark = new QLabel;
    remark->setAlignment(Qt::AlignCenter);
    all->addWidget(remark);
    bind.Also([canvas, legend, remark, built = 0]() mutable {
        if (!MayFollowAnalysis() || Chart.Painting != 0) return;
        FollowAnalysis();
        if (built == GraphPair.Builds) return;
        built = GraphPair.Builds;
        canvas->PaintAnew();
        legend->Fill();
        remark->setText(
            ShownText(GraphPair.Remark.Text)); // it follows here: bound, it would come one look late
        remark->setVisible(GraphPair.Remark.Visible);
    });
    return pane;
}

} // namespace Quillon
