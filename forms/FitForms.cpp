// The monitor of a fit, and the forms for guesses and bounds.
#include "fit/BoundsForm.h"
#include "fit/FitMon.h"
#include "fit/GetGuess.h"
#include "forms/Pieces.h"
#include "forms/Windows.h"
#include "workspace/records/Workspace.h"

#include <QCloseEvent>

namespace Quillon {

namespace {

// Where a row stands in the grid: down the first column of its page, then down the second.
struct Cell {
    int Row, Block;
};
Cell CellOf(const RowLayout& layout, int row) {
    const int onPage = layout.PageOf(row) == 0 ? row : row - layout.RowsPerPage();
    return {onPage % layout.RowsPerColumn, onPage / layout.RowsPerColumn};
}

ControlRef At(std::vector<Control>& controls, std::size_t i) {
    return [&controls, i]() -> Control& { return controls[i]; };
}

void AddGuessRow(Binder& bind, QGridLayout* grid, int row) {
    const auto i = static_cast<std::size_t>(row);
    const Cell cell = CellOf(GetGuess.Layout, row);
    const int column = cell.Block * 4;
    auto* check = new QCheckBox;
    bind.Check(check, At(GetGuess.FitCheck, i), [row] { GetGuessFitCheck(row); });
    grid->addWidget(KeepPlace(MakeLabel(bind, At(GetGuess.ParameterName, i))), cell.Row + 1, column);
    grid->addWidget(KeepPlace(MakeField(bind, At(GetGuess.Guess, i),
                                        {[row] { GetGuessGotFocus(row); },
                                         [row](int key) { return GetGuessKeyPress(row, key); },
                                         [row] { GetGuessLostFocus(row); },
                                         {}})),
                    cell.Row + 1, column + 1);
    grid->addWidget(KeepPlace(check), cell.Row + 1, column + 2);
}

QWidget* ConvergenceFrame(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, []() -> Control& { return GetGuess.frmConvControl; });
    auto* line = new QHBoxLayout(frame);
    line->addWidget(MakeLabel(bind, []() -> Control& { return GetGuess.ConvergenceLabel; }));
    line->addWidget(MakeField(
        bind, []() -> Control& { return GetGuess.ConvergenceInput; },
        {GetGuessConvergenceGotFocus, GetGuessConvergenceKeyPress, GetGuessConvergenceLostFocus, {}}, 8));
    line->addSpacing(16);
    line->addWidget(MakeLabel(bind, []() -> Control& { return GetGuess.AccuracyLabel; }));
    line->addWidget(MakeField(
        bind, []() -> Control& { return GetGuess.AccuracyInput; },
        {GetGuessAccuracyGotFocus, GetGuessAccuracyKeyPress, GetGuessAccuracyLostFocus, {}}, 8));
    line->addStretch(1);
    return frame;
}

void AddBoundsRow(Binder& bind, QGridLayout* grid, int row) {
    const auto i = static_cast<std::size_t>(row);
    const Cell cell = CellOf(BoundsForm.Layout, row);
    const int column = cell.Block * 4;
    grid->addWidget(KeepPlace(MakeLabel(bind, At(BoundsForm.ParameterName, i))), cell.Row + 1, column);
    const auto field = [&](BoundSide side, std::vector<Control>& controls) {
        return MakeField(bind, At(controls, i),
                         {[side, row] { BoundsFormGotFocus(side, row); },
                          [side, row](int key) { return BoundsFormKeyPress(side, row, key); },
                          [side, row] { BoundsFormLostFocus(side, row); },
                          {}},
                         14);
    };
    grid->addWidget(KeepPlace(field(BoundSide::Lower, BoundsForm.LowerB)), cell.Row + 1, column + 1);
    grid->addWidget(KeepPlace(field(BoundSide::Upper, BoundsForm.UpperB)), cell.Row + 1, column + 2);
}

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

} // namespace

QWidget* MakeGetGuess(QWidget* parent) {
    auto* form = new FormDialog(GetGuess.State, GetGuessCancelButton, parent);
    Binder& bind = form->Bind;
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(3);
    for (int block = 0; block < GetGuess.Layout.Columns(); ++block) {
        grid->addWidget(MakeHead(bind, []() -> Control& { return GetGuess.ParameterHead; }), 0, block * 4);
        grid->addWidget(MakeHead(bind, []() -> Control& { return GetGuess.ValueHead; }), 0, block * 4 + 1);
        grid->addWidget(MakeHead(bind, []() -> Control& { return GetGuess.FitHead; }), 0, block * 4 + 2);
        if (block > 0) grid->setColumnMinimumWidth(block * 4 - 1, 24);
    }
    for (int row = 0; row < GetGuess.Layout.Rows; ++row)
        AddGuessRow(bind, grid, row);
    auto* all = new QVBoxLayout(form);
    all->addLayout(grid);
    all->addStretch(1);
    all->addWidget(ConvergenceFrame(bind));
    all->addLayout(
        ButtonRow({MakeButton(
                      bind, []() -> Control& { return GetGuess.Page2; }, GetGuessPage2)},
                  {MakeButton(
                       bind, []() -> Control& { return GetGuess.OkButton; }, GetGuessOkButton, true),
                   MakeCancel(
                       bind, []() -> Control& { return GetGuess.CancelButton; }, GetGuessCancelButton)}));
    return form;
}

QWidget* MakeBoundsForm(QWidget* parent) {
    auto* form = new FormDialog(BoundsForm.State, BoundsFormCancelButton, parent);
    Binder& bind = form->Bind;
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(3);
    for (int block = 0; block < BoundsForm.Layout.Columns(); ++block) {
        grid->addWidget(MakeHead(bind, []() -> Control& { return BoundsForm.ParameterHead; }), 0, block * 4);
        grid->addWidget(MakeHead(bind, []() -> Control& { return BoundsForm.LowerHead; }), 0, block * 4 + 1);
        grid->addWidget(MakeHead(bind, []() -> Control& { return BoundsForm.UpperHead; }), 0, block * 4 + 2);
        if (block > 0) grid->setColumnMinimumWidth(block * 4 - 1, 24);
    }
    for (int row = 0; row < BoundsForm.Layout.Rows; ++row)
        AddBoundsRow(bind, grid, row);
    auto* all = new QVBoxLayout(form);
    all->addLayout(grid);
    all->addStretch(1);
    all->addLayout(
        ButtonRow({MakeButton(
                      bind, []() -> Control& { return BoundsForm.Page2; }, BoundsFormPage2)},
                  {MakeButton(
                       bind, []() -> Control& { return BoundsForm.OkButton; }, BoundsFormOkButton, true),
                   MakeCancel(
                       bind, []() -> Control& { return BoundsForm.CancelButton; }, BoundsFormCancelButton)}));
    return form;
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

} // namespace Quillon
