// Widths of lines.
#include "chart/dialogs/LineWidthForm.h"
#include "forms/ChartPieces.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

namespace Quillon {

namespace {

FieldEdit* WidthField(Binder& bind, WidthPlace place) {
    return MakeField(
        bind, [place]() -> Control& { return LineWidthForm.Width[place]; },
        {[place] { LineWidthGotFocus(place); },
         [place](int key) { return LineWidthKeyPress(place, key); },
         [place] { LineWidthLostFocus(place); },
         {}},
        8);
}

QWidget* MakeLineWidthForm(QWidget* parent) {
    auto* form = new FormDialog(LineWidthForm.State, LineWidthCancelButton, parent);
    Binder& bind = form->Bind;
    auto* grid = new QGridLayout;
    int row = 0;
    for (const WidthPlace place : {DataWidth, AxesWidth, TicsWidth, SymbolsWidth})
        AddRow(
            bind, grid, row++, 0, [place]() -> Control& { return LineWidthForm.Label[place]; },
            WidthField(bind, place));
    grid->setColumnStretch(1, 1);
    QLabel* explanation = MakeLabel(
        bind, []() -> Control& { return LineWidthForm.Explanation; }, true);
    explanation->setMinimumWidth(explanation->fontMetrics().horizontalAdvance(QString(48, 'n')));
    auto* all = new QVBoxLayout(form);
    all->addWidget(explanation);
    all->addLayout(grid);
    all->addStretch(1);
    all->addLayout(OkAndCancel(
        bind, []() -> Control& { return LineWidthForm.OkButton; }, LineWidthOkButton,
        []() -> Control& { return LineWidthForm.CancelButton; }, LineWidthCancelButton));
    return form;
}

const FormWindow Registered(LineWidthFormName, MakeLineWidthForm);

} // namespace

} // namespace Quillon
