// The level of confidence.
#include "fit/forms/ConfidenceInput.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

namespace Quillon {

namespace {

QWidget* MakeConfidenceInput(QWidget* parent) {
    auto* form = new FormDialog(ConfidenceInput.State, ConfidenceInputCancelButton, parent);
    Binder& bind = form->Bind;
    QLabel* label = MakeLabel(bind, []() -> Control& { return ConfidenceInput.LevelLabel; });
    FieldEdit* field = MakeField(
        bind, []() -> Control& { return ConfidenceInput.LevelInput; },
        {ConfidenceInputGotFocus, ConfidenceInputKeyPress, ConfidenceInputLostFocus, {}}, 8);
    label->setBuddy(field);
    auto* line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(field);
    auto* all = new QVBoxLayout(form);
    all->addLayout(line);
    all->addLayout(ButtonRow(
        {},
        {MakeButton(
             bind, []() -> Control& { return ConfidenceInput.OkButton; }, ConfidenceInputOkButton, true),
         MakeCancel(
             bind, []() -> Control& { return ConfidenceInput.CancelButton; }, ConfidenceInputCancelButton)}));
    return form;
}

const FormWindow Registered(ConfidenceInputName, MakeConfidenceInput);

} // namespace

} // namespace Quillon
