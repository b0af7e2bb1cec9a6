// The rotor speed calculator.
#include "models/forms/SigmaCalcForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

namespace Quillon {

namespace {

QWidget* MakeSigmaCalcForm(QWidget* parent) {
    auto* form = new FormDialog(SigmaCalcForm.State, SigmaCalcFormExitButton, parent);
    Binder& bind = form->Bind;
    using Member = Control SigmaCalcFormRecord::*;
    const struct {
        SigmaCalcInput Input;
        Member Label, Box;
    } rows[] = {
        {SigmaCalcInput::MW, &SigmaCalcFormRecord::MWLabel, &SigmaCalcFormRecord::MWInput},
        {SigmaCalcInput::VBar, &SigmaCalcFormRecord::VBarLabel, &SigmaCalcFormRecord::VBarInput},
        {SigmaCalcInput::Density, &SigmaCalcFormRecord::DensityLabel, &SigmaCalcFormRecord::DensityInput},
        {SigmaCalcInput::Temp, &SigmaCalcFormRecord::TempLabel, &SigmaCalcFormRecord::TempInput},
        {SigmaCalcInput::RPM, &SigmaCalcFormRecord::Label2, &SigmaCalcFormRecord::RPMInput},
        {SigmaCalcInput::Sigma, &SigmaCalcFormRecord::Label1, &SigmaCalcFormRecord::SigmaInput}};
    auto* grid = new QGridLayout;
    int line = 0;
    for (const auto& row : rows) {
        QLabel* label = MakeLabel(bind, [m = row.Label]() -> Control& { return SigmaCalcForm.*m; });
        const SigmaCalcInput input = row.Input;
        FieldEdit* field =
            MakeField(bind, [m = row.Box]() -> Control& { return SigmaCalcForm.*m; },
                      {[input] { SigmaCalcFormGotFocus(input); },
                       [input](int key) { return SigmaCalcFormKeyPress(input, key); },
                       [input] { SigmaCalcFormLostFocus(input); }, [input] { SigmaCalcFormChange(input); }});
        label->setBuddy(field);
        grid->addWidget(label, line, 0);
        grid->addWidget(field, line++, 1);
    }
    auto* all = new QVBoxLayout(form);
    all->addLayout(grid);
    all->addLayout(ButtonRow(
        {}, {MakeCancel(
                bind, []() -> Control& { return SigmaCalcForm.ExitButton; }, SigmaCalcFormExitButton)}));
    return form;
}

const FormWindow Registered(SigmaCalcFormName, MakeSigmaCalcForm);

} // namespace

} // namespace Quillon
