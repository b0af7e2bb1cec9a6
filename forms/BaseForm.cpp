// Which sets share their zero offset.
#include "models/forms/BaseForm.h"
#include "forms/LinkGrid.h"
#include "forms/shell/FormHost.h"

namespace Quillon {

namespace {

constexpr LinkHandlers BaseHandlers{[]() -> LinkBoxes& { return BaseForm.Boxes; },
                                    [] { return BaseForm.State.Shown; }, BaseFormGotFocus, BaseFormKeyPress,
                                    BaseFormLostFocus};

QWidget* MakeBaseForm(QWidget* parent) {
    auto* form = new FormDialog(BaseForm.State, BaseFormOkButton, parent);
    Binder& bind = form->Bind;
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return BaseForm.Head; }, true));
    all->addWidget(Scrolled(LinkGrid(
                       bind, []() -> Control& { return BaseForm.XLabel; },
                       []() -> Control& { return BaseForm.YLabel; }, BaseHandlers)),
                   1);
    all->addLayout(
        ButtonRow({MakeButton(
                       bind, []() -> Control& { return BaseForm.ResetButton; }, BaseFormResetButton),
                   MakeCancel(
                       bind, []() -> Control& { return BaseForm.CancelButton; }, BaseFormCancelButton)},
                  {MakeButton(
                      bind, []() -> Control& { return BaseForm.OkButton; }, BaseFormOkButton, true)}));
    form->resize(460, 150 + 28 * ShownRows(BaseForm.Boxes.SetName.size()));
    return form;
}

const FormWindow Registered(BaseFormName, MakeBaseForm);

} // namespace

} // namespace Quillon
