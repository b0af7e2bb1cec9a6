// What the data cannot determine, before a fit.
#include "fit/forms/HoldForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"

#include <QCheckBox>

namespace Quillon {

namespace {

QWidget* MakeHoldForm(QWidget* parent) {
    auto* form = new FormDialog(HoldForm.State, HoldFormCancelButton, parent);
    Binder& bind = form->Bind;
    auto* list = new QVBoxLayout;
    for (std::size_t i = 0; i < HoldForm.HoldCheck.size(); ++i) {
        auto* box = new QCheckBox;
        bind.Check(box, At(HoldForm.HoldCheck, i), [i] { HoldFormCheck(static_cast<int>(i)); });
        list->addWidget(box);
    }
    list->addStretch(1);
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return HoldForm.Note; }, true));
    all->addWidget(Scrolled(list), 1);
    all->addLayout(
        ButtonRow({MakeButton(
                       bind, []() -> Control& { return HoldForm.HoldButton; }, HoldFormHoldButton, true),
                   MakeButton(
                       bind, []() -> Control& { return HoldForm.FitButton; }, HoldFormFitButton)},
                  {MakeCancel(
                      bind, []() -> Control& { return HoldForm.CancelButton; }, HoldFormCancelButton)}));
    form->resize(ForFont(460, 160 + 28 * ShownRows(HoldForm.HoldCheck.size())));
    return form;
}

const FormWindow Registered(HoldFormName, MakeHoldForm);

} // namespace

} // namespace Quillon
