// Separation of data sets.
#include "chart/dialogs/ShiftData.h"
#include "forms/ChartPieces.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

#include <QListWidget>

namespace Quillon {

namespace {

FieldEdit* AmountField(Binder& bind, ControlRef field, std::function<void()> left = {}) {
    return MakeField(bind, field,
                     {[field] { ShiftDataGotFocus(field()); },
                      [field](int key) { return ShiftDataKeyPress(field(), key); },
                      std::move(left),
                      {}},
                     10);
}

QWidget* SetFrame(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, []() -> Control& { return ShiftData.SetFrame; });
    auto* list = new QListWidget;
    list->setMinimumHeight(6 * list->fontMetrics().lineSpacing() + 8);
    bind.List(
        list, []() -> Control& { return ShiftData.SetNum; }, 0, ShiftDataSetClick);
    auto* grid = new QGridLayout(frame);
    auto* label = new QLabel;
    label->setBuddy(list);
    bind.Label(label, []() -> Control& { return ShiftData.SetLabel; });
    grid->addWidget(label, 0, 0, Qt::AlignTop);
    grid->addWidget(list, 0, 1);
    grid->addWidget(MakeLabel(bind, []() -> Control& { return ShiftData.SetName; }), 1, 1);
    AddRow(
        bind, grid, 2, 0, []() -> Control& { return ShiftData.ValueLabel; },
        AmountField(
            bind, []() -> Control& { return ShiftData.ValueBox; }, ShiftDataValueLostFocus));
    grid->setColumnStretch(1, 1);
    return frame;
}

QRadioButton* Way(Binder& bind, ControlRef control, ShiftBy by) {
    return MakeOption(bind, std::move(control), [by] { ShiftDataClick(by); });
}

QWidget* MakeShiftData(QWidget* parent) {
    auto* form = new FormDialog(ShiftData.State, ShiftDataCancelButton, parent);
    Binder& bind = form->Bind;
    auto* grid = new QGridLayout;
    grid->addWidget(Way(
                        bind, []() -> Control& { return ShiftData.ByPercent; }, ShiftBy::Percent),
                    0, 0);
    grid->addWidget(AmountField(bind, []() -> Control& { return ShiftData.PercentInput; }), 0, 1);
    grid->addWidget(Way(
                        bind, []() -> Control& { return ShiftData.ByConstant; }, ShiftBy::Constant),
                    1, 0);
    grid->addWidget(AmountField(bind, []() -> Control& { return ShiftData.ValueInput; }), 1, 1);
    grid->addWidget(Way(
                        bind, []() -> Control& { return ShiftData.ByVariable; }, ShiftBy::Variable),
                    2, 0, 1, 2);
    grid->addWidget(SetFrame(bind), 3, 0, 1, 2);
    grid->setRowStretch(3, 1);
    auto* all = new QVBoxLayout(form);
    all->addLayout(grid, 1);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return ShiftData.Note; }, true));
    all->addLayout(
        ButtonRow({MakeCancel(
                      bind, []() -> Control& { return ShiftData.TakeBackButton; }, ShiftDataTakeBackButton)},
                  {MakeButton(
                       bind, []() -> Control& { return ShiftData.OkButton; }, ShiftDataOkButton, true),
                   MakeCancel(
                       bind, []() -> Control& { return ShiftData.CancelButton; }, ShiftDataCancelButton)}));
    return form;
}

const FormWindow Registered(ShiftDataName, MakeShiftData);

} // namespace

} // namespace Quillon
