// The relative extinction coefficients of a data set.
#include "scandata/reader/ExtinctionForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

namespace Quillon {

namespace {

QWidget* MakeExtinctionForm(QWidget* parent) {
    auto* form = new FormDialog(ExtinctionForm.State, ExtinctionOkButton, parent);
    Binder& bind = form->Bind;
    auto* grid = new QGridLayout;
    for (int i = 0; i < 2; ++i) {
        const auto s = static_cast<std::size_t>(i);
        grid->addWidget(MakeHead(bind, [s]() -> Control& { return ExtinctionForm.Head[s]; }), 0, i);
        grid->addWidget(MakeField(
                            bind, [s]() -> Control& { return ExtinctionForm.ExtinctionInput[s]; },
                            {[s] { ExtinctionGotFocus(s); },
                             [s](int key) { return ExtinctionKeyPress(s, key); },
                             [s] {
                                 if (ExtinctionForm.State.Shown) ExtinctionLostFocus(s);
                             },
                             {}},
                            18),
                        1, i);
    }
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(bind, []() -> Control& { return ExtinctionForm.Label2; }));
    all->addLayout(grid);
    all->addLayout(ButtonRow(
        {}, {MakeButton(
                bind, []() -> Control& { return ExtinctionForm.OkButton; }, ExtinctionOkButton, true)}));
    return form;
}

const FormWindow Registered(ExtinctionFormName, MakeExtinctionForm);

} // namespace

} // namespace Quillon
