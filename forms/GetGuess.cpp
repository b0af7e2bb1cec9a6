// Guesses, and what is fitted.
#include "fit/forms/GetGuess.h"
#include "commands/fitting/LiveCurve.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/PaintedView.h"

#include <QScreen>
#include <QSplitter>

#include <algorithm>

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
        setMinimumSize(300, 240);
        setAccessibleName("Data with the curves of these values, and residuals");
    }
    QSize sizeHint() const override { return {440, 380}; }
};

// The number is that of the curve, at every letter that is typed.
QWidget* CurveColumn(Binder& bind) {
    auto* side = new QWidget;
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    auto* picture = new CurvePicture;
    column->addWidget(picture, 1);
    QLabel* rms = MakeLabel(bind, []() -> Control& { return LiveCurve.Rms; });
    rms->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // words in its place move no edge
    column->addWidget(rms);
    StartLiveCurve();
    bind.Also([picture, rms] {
        if (!FollowGuesses()) return;
        picture->PaintAnew();
        rms->setText(ShownText(LiveCurve.Rms.Text));
    });
    return side;
}

// The fields scroll where they have not room beside the curve, which is always in sight.
class FieldsView : public QWidget {
public:
    explicit FieldsView(QLayout* fields) {
        auto* all = new QVBoxLayout(this);
        all->setContentsMargins(0, 0, 0, 0);
        Area = Scrolled(fields, this);
        Area->setFocusPolicy(Qt::NoFocus); // it follows the field that has the focus
        all->addWidget(Area);
    }
    QSize sizeHint() const override {
        const int bar = Area->verticalScrollBar()->sizeHint().width();
        return Area->widget()->sizeHint() + QSize(bar, 0);
    }
    QSize minimumSizeHint() const override {
        constexpr int curve = 350, least = 160; // pixels: curve and edges beside the fields; a few rows
        const int room = screen()->availableGeometry().width() - curve;
        return {std::min(sizeHint().width(), room), least};
    }

private:
    QScrollArea* Area;
};

QGridLayout* GuessRows(Binder& bind) {
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(3);
    for (int block = 0; block < GetGuess.Layout.Columns(); ++block) {
        grid->addWidget(MakeHead(bind, []() -> Control& { return GetGuess.ParameterHead; }), 0, block * 5);
        grid->addWidget(MakeHead(bind, []() -> Control& { return GetGuess.ValueHead; }), 0, block * 5 + 1);
        grid->addWidget(MakeHead(
                            bind, []() -> Control& { return GetGuess.FitHead; }, 12),
                        0, block * 5 + 3);
        if (block > 0) grid->setColumnMinimumWidth(block * 5 - 1, 24);
    }
    for (int row = 0; row < GetGuess.Layout.Rows; ++row)
        AddGuessRow(bind, grid, row);
    return grid;
}

QSplitter* FieldsBesideCurve(Binder& bind) {
    auto* fields = new QVBoxLayout;
    fields->setContentsMargins(0, 0, 0, 0);
    fields->addLayout(GuessRows(bind));
    fields->addWidget(MakeLabel(
        bind, []() -> Control& { return GetGuess.Note; }, true));
    fields->addStretch(1);
    auto* both = new QSplitter;
    both->setObjectName("FieldsAndCurve");
    both->addWidget(new FieldsView(fields));
    both->addWidget(CurveColumn(bind));
    both->setStretchFactor(1, 1);
    both->setChildrenCollapsible(false);
    return both;
}

QWidget* MakeGetGuess(QWidget* parent) {
    auto* form = new FormDialog(GetGuess.State, GetGuessCancelButton, parent);
    Binder& bind = form->Bind;
    auto* all = new QVBoxLayout(form);
    all->addWidget(FieldsBesideCurve(bind), 1);
    all->addWidget(ConvergenceFrame(bind));
    all->addLayout(
        ButtonRow({MakeButton(
                      bind, []() -> Control& { return GetGuess.Page2; }, GetGuessPage2)},
                  {MakeButton(
                       bind, []() -> Control& { return GetGuess.OkButton; }, GetGuessOkButton, true),
                   MakeCancel(
                       bind, []() -> Control& { return GetGuess.CancelButton; }, GetGuessCancelButton)}));
    // All fields in sight where the screen has room, which a window takes two thirds of by itself.
    bind.Also([form, opened = false]() mutable {
        if (opened) return;
        opened = true;
        for (QWidget* inside : form->findChildren<QWidget*>()) // they have their texts by now
            inside->updateGeometry();
        for (QLayout* inside : form->findChildren<QLayout*>())
            inside->invalidate();
        form->resize(form->sizeHint().boundedTo(form->screen()->availableSize()));
    });
    return form;
}

const FormWindow Registered(GetGuessName, MakeGetGuess);

} // namespace

} // namespace Quillon
