// Guesses, and what is fitted.
#include "fit/forms/GetGuess.h"
#include "commands/fitting/LiveCurve.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/PaintedView.h"

namespace Quillon {

namespace {

void AddGuessRow(Binder& bind, QGridLayout* grid, int row) {
    const auto i = static_cast<std::size_t>(row);
    const Cell cell = CellOf(GetGuess.Layout, row);
    const int column = cell.Block * 5;
    auto* check = new QCheckBox;
    bind.Check(check, At(GetGuess.FitCheck, i), [row] { GetGuessFitCheck(row); });
    grid->addWidget(KeepPlace(MakeLabel(bind, At(GetGuess.ParameterName, i))), cell.Row + 1, column);
    grid->addWidget(KeepPlace(MakeField(bind, At(GetGuess.Guess, i),
                                        {[row] { GetGuessGotFocus(row); },
                                         [row](int key) { return GetGuessKeyPress(row, key); },
                                         [row] { GetGuessLostFocus(row); },
                                         {}})),
                    cell.Row + 1, column + 1);
    grid->addWidget(MakeButton(bind, At(GetGuess.Estimate, i), [row] { GetGuessEstimate(row); }),
                    cell.Row + 1, column + 2);
    grid->addWidget(KeepPlace(check), cell.Row + 1, column + 3);
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

// The curve at the values in the fields.
class CurvePicture : public PaintedView {
public:
    CurvePicture() : PaintedView(PaintLiveCurve) {
        setMinimumSize(320, 260);
        setAccessibleName("Data with the curves of these values, and residuals");
    }
    QSize sizeHint() const override { return {440, 380}; }
};

QLayout* CurveColumn(Binder& bind) {
    auto* picture = new CurvePicture;
    auto* column = new QVBoxLayout;
    column->addWidget(picture, 1);
    column->addWidget(MakeLabel(bind, []() -> Control& { return LiveCurve.Rms; }));
    StartLiveCurve();
    bind.Also([picture] {
        if (FollowGuesses()) picture->PaintAnew();
    });
    return column;
}

QWidget* MakeGetGuess(QWidget* parent) {
    auto* form = new FormDialog(GetGuess.State, GetGuessCancelButton, parent);
    Binder& bind = form->Bind;
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(3);
    for (int block = 0; block < GetGuess.Layout.Columns(); ++block) {
        grid->addWidget(MakeHead(bind, []() -> Control& { return GetGuess.ParameterHead; }), 0, block * 5);
        grid->addWidget(MakeHead(bind, []() -> Control& { return GetGuess.ValueHead; }), 0, block * 5 + 1);
        grid->addWidget(MakeHead(bind, []() -> Control& { return GetGuess.FitHead; }), 0, block * 5 + 3);
        if (block > 0) grid->setColumnMinimumWidth(block * 5 - 1, 24);
    }
    for (int row = 0; row < GetGuess.Layout.Rows; ++row)
        AddGuessRow(bind, grid, row);
    auto* fields = new QVBoxLayout;
    fields->addLayout(grid);
    fields->addWidget(MakeLabel(
        bind, []() -> Control& { return GetGuess.Note; }, true));
    fields->addStretch(1);
    fields->addWidget(ConvergenceFrame(bind));
    auto* both = new QHBoxLayout;
    both->addLayout(fields);
    both->addLayout(CurveColumn(bind), 1);
    auto* all = new QVBoxLayout(form);
    all->addLayout(both);
    all->addLayout(
        ButtonRow({MakeButton(
                      bind, []() -> Control& { return GetGuess.Page2; }, GetGuessPage2)},
                  {MakeButton(
                       bind, []() -> Control& { return GetGuess.OkButton; }, GetGuessOkButton, true),
                   MakeCancel(
                       bind, []() -> Control& { return GetGuess.CancelButton; }, GetGuessCancelButton)}));
    return form;
}

const FormWindow Registered(GetGuessName, MakeGetGuess);

} // namespace

} // namespace Quillon
