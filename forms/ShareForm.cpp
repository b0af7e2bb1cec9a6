// Which sets share their concentrations.
#include "models/forms/ShareForm.h"
#include "forms/LinkGrid.h"
#include "forms/shell/FormHost.h"

namespace Quillon {

namespace {

constexpr LinkHandlers ShareHandlers{[]() -> LinkBoxes& { return ShareForm.Boxes; },
                                     [] { return ShareForm.State.Shown; }, ShareFormGotFocus,
                                     ShareFormKeyPress, ShareFormLostFocus};

QWidget* MakeShareForm(QWidget* parent) {
    auto* form = new FormDialog(ShareForm.State, ShareFormClose, parent);
    Binder& bind = form->Bind;
    const auto button = [&](Control ShareFormRecord::*which, void (*clicked)()) {
        return MakeCancel(
            bind, [which]() -> Control& { return ShareForm.*which; }, clicked);
    };
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return ShareForm.Head; }, true));
    all->addWidget(Scrolled(LinkGrid(
                       bind, []() -> Control& { return ShareForm.XLabel; },
                       []() -> Control& { return ShareForm.YLabel; }, ShareHandlers)),
                   1);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return ShareForm.Note; }, true));
    all->addLayout(
        ButtonRow({button(&ShareFormRecord::ProposeButton, ShareFormProposeButton),
                   button(&ShareFormRecord::ResetButton, ShareFormResetButton),
                   button(&ShareFormRecord::CancelButton, ShareFormCancelButton)},
                  {MakeButton(
                      bind, []() -> Control& { return ShareForm.OkButton; }, ShareFormOkButton, true)}));
    form->resize(560, 190 + 28 * ShownRows(ShareForm.Boxes.SetName.size()));
    return form;
}

const FormWindow Registered(ShareFormName, MakeShareForm);

} // namespace

} // namespace Quillon
