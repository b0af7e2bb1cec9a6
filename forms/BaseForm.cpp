// Which sets share their zero offset.
#include "models/BaseForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"

namespace Quillon {

namespace {

QWidget* MakeBaseForm(QWidget* parent) {
    auto* form = new FormDialog(BaseForm.State, BaseFormOkButton, parent);
    Binder& bind = form->Bind;
    auto* grid = new QGridLayout;
    const auto head = [&](Control BaseFormRecord::*which, int column, int columns) {
        QLabel* label = MakeHead(bind, [which]() -> Control& { return BaseForm.*which; });
        label->setAlignment(Qt::AlignLeft);
        grid->addWidget(label, 0, column, 1, columns);
    };
    head(&BaseFormRecord::XLabel, 0, 2);
    head(&BaseFormRecord::YLabel, 2, 1);
    for (std::size_t i = 0; i < BaseForm.SetNumber.size(); ++i) {
        const int line = static_cast<int>(i) + 1;
        const long set = line;
        grid->addWidget(RightLabel(bind, [i]() -> Control& { return BaseForm.SetNumber[i]; }), line, 0);
        grid->addWidget(MakeLabel(bind, [i]() -> Control& { return BaseForm.SetName[i]; }), line, 1);
        FieldEdit* link = MakeField(
            bind, [i]() -> Control& { return BaseForm.LinkNum[i]; },
            {[set] { BaseFormGotFocus(set); },
             [set](int key) { return BaseFormKeyPress(set, key); },
             [set] {
                 if (BaseForm.State.Shown) BaseFormLostFocus(set);
             },
             {}},
            6);
        link->setFixedWidth(link->minimumWidth());
        grid->addWidget(link, line, 2);
    }
    grid->setHorizontalSpacing(12);
    grid->setColumnStretch(3, 1); // the links stay beside the names of their sets
    grid->setRowStretch(grid->rowCount(), 1);
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return BaseForm.Head; }, true));
    all->addWidget(Scrolled(grid), 1);
    all->addLayout(
        ButtonRow({MakeButton(
                       bind, []() -> Control& { return BaseForm.ResetButton; }, BaseFormResetButton),
                   MakeCancel(
                       bind, []() -> Control& { return BaseForm.CancelButton; }, BaseFormCancelButton)},
                  {MakeButton(
                      bind, []() -> Control& { return BaseForm.OkButton; }, BaseFormOkButton, true)}));
    form->resize(ForFont(460, 150 + 28 * ShownRows(BaseForm.SetName.size())));
    return form;
}

const FormWindow Registered(BaseFormName, MakeBaseForm);

} // namespace

} // namespace Quillon
