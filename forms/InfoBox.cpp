// What a scan file says of itself.
#include "scandata/forms/InfoBox.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

namespace Quillon {

namespace {

QWidget* MakeInfoBox(QWidget* parent) {
    auto* form = new FormDialog(InfoBox.State, InfoBoxOkButton, parent);
    Binder& bind = form->Bind;
    auto* all = new QVBoxLayout(form);
    for (std::size_t i = 0; i < InfoBox.Line.size(); ++i)
        all->addWidget(MakeLabel(bind, [i]() -> Control& { return InfoBox.Line[i]; }));
    all->addWidget(MakeLabel(bind, []() -> Control& { return InfoBox.Intensities; }));
    all->addLayout(
        ButtonRow({MakeButton(
                      bind, []() -> Control& { return InfoBox.SwitchButton; }, InfoBoxSwitchButton)},
                  {MakeButton(
                      bind, []() -> Control& { return InfoBox.OkButton; }, InfoBoxOkButton, true)}));
    return form;
}

const FormWindow Registered(InfoBoxName, MakeInfoBox);

} // namespace

} // namespace Quillon
