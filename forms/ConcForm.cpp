// Constraints on concentrations.
#include "models/forms/ConcForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"

namespace Quillon {

namespace {

FieldEdit* ConcField(Binder& bind, ConcInput input, SetNo set) {
    return MakeField(
        bind, [input, set]() -> Control& { return ConcFormBox(input, set); },
        {[input, set] { ConcFormGotFocus(input, set); },
         [input, set](int key) { return ConcFormKeyPress(input, set, key); },
         [input, set] {
             if (ConcForm.State.Shown) ConcFormLostFocus(input, set);
         },
         {}},
        11);
}

QWidget* MakeConcForm(QWidget* parent) {
    auto* form = new FormDialog(ConcForm.State, ConcFormOkButton, parent);
    Binder& bind = form->Bind;
    auto* grid = new QGridLayout;
    using Member = Control ConcFormRecord::*;
    int column = 1;
    for (const Member head :
         {&ConcFormRecord::ALabel, &ConcFormRecord::VarALabel, &ConcFormRecord::BLabel,
          &ConcFormRecord::VarBLabel, &ConcFormRecord::AvgLabel, &ConcFormRecord::TotalLabel})
        grid->addWidget(MakeHead(
                            bind, [head]() -> Control& { return ConcForm.*head; }, 16, 4),
                        0, column++);
    for (std::size_t i = 0; i < ConcForm.SetLabel.size(); ++i) {
        const int line = static_cast<int>(i) + 1;
        const SetNo set(line);
        grid->addWidget(MakeLabel(bind, [i]() -> Control& { return ConcForm.SetLabel[i]; }), line, 0);
        grid->addWidget(ConcField(bind, ConcInput::ConcA, set), line, 1);
        grid->addWidget(ConcField(bind, ConcInput::VarA, set), line, 2);
        grid->addWidget(ConcField(bind, ConcInput::ConcB, set), line, 3);
        grid->addWidget(ConcField(bind, ConcInput::VarB, set), line, 4);
        grid->addWidget(CenteredLabel(bind, [i]() -> Control& { return ConcForm.AvgC[i]; }), line, 5);
        grid->addWidget(CenteredLabel(bind, [i]() -> Control& { return ConcForm.Text1[i]; }), line, 6);
    }
    grid->setRowStretch(grid->rowCount(), 1);
    auto* all = new QVBoxLayout(form);
    all->addWidget(Scrolled(grid), 1);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return ConcForm.Note; }, true));
    all->addLayout(
        ButtonRow({MakeButton(
                      bind, []() -> Control& { return ConcForm.ClearAllButton; }, ConcFormClearAllButton)},
                  {MakeButton(
                       bind, []() -> Control& { return ConcForm.OkButton; }, ConcFormOkButton, true),
                   MakeCancel(
                       bind, []() -> Control& { return ConcForm.CancelButton; }, ConcFormCancelButton)}));
    form->resize(
        ForFont(ConcForm.BLabel.Visible ? 900 : 660, 170 + 28 * ShownRows(ConcForm.SetLabel.size())));
    return form;
}

const FormWindow Registered(ConcFormName, MakeConcForm);

} // namespace

} // namespace Quillon
