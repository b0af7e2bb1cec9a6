#include "forms/workbench/StepsPane.h"

#include "commands/Workbench.h"
#include "forms/Pieces.h"

#include <QPainter>

namespace Quillon {

namespace {

// Drawn by the widget itself, so that it is sharp on every display and follows the palette.
class StepMark : public QWidget {
public:
    explicit StepMark(std::size_t step) : Step(step) {
        const int size = fontMetrics().lineSpacing() * 3 / 2;
        setFixedSize(size, size);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        const StepState progress = Workbench.Steps[Step].Progress;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF disc = QRectF(rect()).adjusted(1, 1, -1, -1);
        painter.setPen(progress == StepState::Waits ? palette().color(QPalette::Mid) : Qt::transparent);
        painter.setBrush(Fill(progress));
        painter.drawEllipse(disc);
        if (progress == StepState::Done) return Tick(painter, disc);
        painter.setPen(
            palette().color(progress == StepState::Next ? QPalette::HighlightedText : QPalette::WindowText));
        painter.drawText(rect(), Qt::AlignCenter, QString::number(Step + 1));
    }

private:
    QBrush Fill(StepState progress) const {
        if (progress == StepState::Done) return QColor(0x00, 0x7A, 0x5A); // white on it stands out 5 : 1
        return progress == StepState::Next ? palette().brush(QPalette::Highlight) : QBrush(Qt::NoBrush);
    }
    static void Tick(QPainter& painter, const QRectF& disc) {
        const auto at = [&](double x, double y) {
            return disc.topLeft() + QPointF(x * disc.width(), y * disc.height());
        };
        painter.setPen(QPen(Qt::white, disc.width() / 8.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(QPolygonF{at(0.27, 0.53), at(0.44, 0.69), at(0.73, 0.33)});
    }
    std::size_t Step;
};

} // namespace

QWidget* MakeStepsPane(Binder& bind) {
    auto* pane = new QWidget;
    auto* grid = new QGridLayout(pane);
    grid->setColumnStretch(1, 1);
    for (std::size_t i = 0; i < Workbench.Steps.size(); ++i) {
        const int row = static_cast<int>(2 * i);
        auto* mark = new StepMark(i);
        bind.Also([mark] { mark->update(); });
        QPushButton* button = MakeButton(bind, [i]() -> Control& { return Workbench.Steps[i].Button; }, {});
        QObject::connect(button, &QPushButton::clicked, button, [i] { RunWhenIdle([i] { StepButton(i); }); });
        QLabel* state = MakeLabel(
            bind, [i]() -> Control& { return Workbench.Steps[i].State; }, true);
        state->setAlignment(Qt::AlignTop | Qt::AlignLeft);
        state->setMinimumWidth(state->fontMetrics().horizontalAdvance(QString(18, 'x')));
        grid->addWidget(mark, row, 0, Qt::AlignTop);
        grid->addWidget(button, row, 1);
        grid->addWidget(state, row + 1, 1);
    }
    QPushButton* once = MakeButton(bind, []() -> Control& { return Workbench.AtOnce; }, {});
    QObject::connect(once, &QPushButton::clicked, once, [] { RunWhenIdle(AtOnceButton); });
    const int last = static_cast<int>(2 * Workbench.Steps.size());
    grid->addWidget(once, last, 1);
    grid->setRowStretch(last + 1, 1);
    return pane;
}

} // namespace Quillon
