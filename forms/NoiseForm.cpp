// The noise that each data set is weighted by.
#include "fit/forms/NoiseForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"

namespace Quillon {

namespace {

FieldEdit* NoiseField(Binder& bind, SetNo set) {
    return MakeField(
        bind, [set]() -> Control& { return NoiseFormBox(set); },
        {[set] { NoiseFormGotFocus(set); },
         [set](int key) { return NoiseFormKeyPress(set, key); },
         [set] {
             if (NoiseForm.State.Shown) NoiseFormLostFocus(set);
         },
         {}},
        12);
}

QWidget* MakeNoiseForm(QWidget* parent) {
    auto* form = new FormDialog(NoiseForm.State, NoiseFormCancelButton, parent);
    Binder& bind = form->Bind;
    auto* grid = new QGridLayout;
    grid->setColumnStretch(0, 1);
    grid->addWidget(MakeHead(bind, []() -> Control& { return NoiseForm.NoiseHead; }), 0, 1);
    grid->addWidget(MakeHead(bind, []() -> Control& { return NoiseForm.RmsHead; }), 0, 2);
    for (std::size_t i = 0; i < NoiseForm.SetLabel.size(); ++i) {
        const int line = static_cast<int>(i) + 1;
        grid->addWidget(MakeLabel(bind, [i]() -> Control& { return NoiseForm.SetLabel[i]; }), line, 0);
        grid->addWidget(NoiseField(bind, SetNo(line)), line, 1);
        grid->addWidget(CenteredLabel(bind, [i]() -> Control& { return NoiseForm.RmsLabel[i]; }), line, 2);
    }
    grid->setRowStretch(grid->rowCount(), 1);
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return NoiseForm.Note; }, true));
    all->addWidget(Scrolled(grid), 1);
    all->addLayout(
        ButtonRow({MakeButton(
                       bind, []() -> Control& { return NoiseForm.FromFitButton; }, NoiseFormFromFitButton),
                   MakeButton(
                       bind, []() -> Control& { return NoiseForm.NoneButton; }, NoiseFormNoneButton)},
                  {MakeButton(
                       bind, []() -> Control& { return NoiseForm.OkButton; }, NoiseFormOkButton, true),
                   MakeCancel(
                       bind, []() -> Control& { return NoiseForm.CancelButton; }, NoiseFormCancelButton)}));
    form->resize(ForFont(560, 200 + 28 * ShownRows(NoiseForm.SetLabel.size())));
    return form;
}

const FormWindow Registered(NoiseFormName, MakeNoiseForm);

} // namespace

} // namespace Quillon
