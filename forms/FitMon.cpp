// The monitor of a fit.
#include "fit/forms/FitMon.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "workspace/records/Workspace.h"

#include <QCloseEvent>

#include <algorithm>

namespace Quillon {

namespace {

// Closing the monitor cancels the fit. It blocks the other windows: the menu of a graph that stands would
// work on arrays that the fit has in hand.
class MonitorWindow : public QDialog {
public:
    explicit MonitorWindow(QWidget* parent) : QDialog(parent), Bind(this) {
        setWindowModality(Qt::ApplicationModal);
    }
    Binder Bind;
    void reject() override { RunHandler(FitMonCancelButton); }

protected:
    void closeEvent(QCloseEvent* event) override {
        if (FitMon.Loaded) {
            event->ignore();
            reject();
        }
    }
};

QLabel* Number(Binder& bind, ControlRef control) {
    QLabel* label = MakeLabel(bind, std::move(control));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance("0.000000E+00") + 12);
    return label;
}

// The record is emptied when the fit ends: what a widget still asks for then is a control of nobody's.
ControlRef MonitorRow(std::vector<Control> FitMonForm::*rows, std::size_t i) {
    return [rows, i]() -> Control& {
        static Control gone;
        std::vector<Control>& all = FitMon.*rows;
        return i < all.size() ? all[i] : gone;
    };
}

void AddMonitorRow(Binder& bind, QGridLayout* grid, int row) {
    const bool sum = row == Work.NumFree;
    const int onPage = FitMon.Paged && row >= 32 && !sum ? row - 32 : row;
    const int per = std::max(1, FitMon.RowsPerColumn);
    const int line = sum ? per + 1 : onPage % per + 1;
    const int column = sum ? 0 : std::min(onPage / per, 1) * 5;
    const auto i = static_cast<std::size_t>(row);
    auto* mark = new QLabel(QString(QChar(0x26A0)));
    mark->setAlignment(Qt::AlignCenter);
    bind.Visible(mark, MonitorRow(&FitMonForm::BoundWarning, i));
    grid->addWidget(KeepPlace(MakeLabel(bind, MonitorRow(&FitMonForm::ParameterName, i))), line, column);
    grid->addWidget(KeepPlace(Number(bind, MonitorRow(&FitMonForm::CurValue, i))), line, column + 1);
    grid->addWidget(KeepPlace(Number(bind, MonitorRow(&FitMonForm::PrevValue, i))), line, column + 2);
    grid->addWidget(KeepPlace(mark), line, column + 3);
}

QWidget* Titled(const char* title, QWidget* inside) {
    auto* frame = new QGroupBox(title);
    auto* all = new QVBoxLayout(frame);
    all->addWidget(inside);
    return frame;
}

QWidget* MakeFitMon(QWidget* parent) {
    auto* form = new MonitorWindow(parent);
    Binder& bind = form->Bind;
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(2);
    for (int block = 0; block < FitMon.Columns; ++block) {
        const auto b = static_cast<std::size_t>(block);
        int column = block * 5;
        for (const auto heads :
             {&FitMonForm::Label1, &FitMonForm::Label2, &FitMonForm::Label3, &FitMonForm::Label4})
            grid->addWidget(MakeHead(bind, MonitorRow(heads, b)), 0, column++);
        if (block > 0) grid->setColumnMinimumWidth(block * 5 - 1, 24);
    }
    for (int row = 0; row <= Work.NumFree; ++row)
        AddMonitorRow(bind, grid, row);
    auto* state = new QHBoxLayout;
    QLabel* status = MakeLabel(bind, []() -> Control& { return FitMon.StatusText; });
    status->setMinimumWidth(status->fontMetrics().horizontalAdvance("Adjusting Increment "));
    state->addWidget(Titled("Status ---", status), 1);
    state->addWidget(
        Titled("Iteration Number", MakeLabel(bind, []() -> Control& { return FitMon.IterNum; })));
    state->addWidget(
        Titled("Increment Reduction Factor", MakeLabel(bind, []() -> Control& { return FitMon.AlphaText; })));
    auto* all = new QVBoxLayout(form);
    all->addLayout(grid);
    all->addStretch(1);
    all->addLayout(state);
    all->addLayout(
        ButtonRow({MakeButton(
                       bind, []() -> Control& { return FitMon.FitButton; }, FitMonFitButton, true),
                   MakeButton(
                       bind, []() -> Control& { return FitMon.NextIter; }, FitMonNextIter),
                   MakeButton(
                       bind, []() -> Control& { return FitMon.Page2; }, FitMonPage2)},
                  {MakeButton(
                      bind, []() -> Control& { return FitMon.CancelButton; }, FitMonCancelButton)}));
    bind.Also([form] {
        if (FitMon.Loaded) form->setWindowTitle(ShownText(FitMon.Caption));
    });
    return form;
}

const FormWindow Registered(FitMonName, MakeFitMon);

} // namespace

} // namespace Quillon
