// The bounds of parameters.
#include "fit/forms/BoundsForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

namespace Quillon {

namespace {

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

const FormWindow Registered(BoundsFormName, MakeBoundsForm);

} // namespace

} // namespace Quillon
