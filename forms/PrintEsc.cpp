// What stands while a print job runs.
#include "chart/dialogs/PrintEsc.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

namespace Quillon {

namespace {

// It lies over whatever window prints, which must not be used meanwhile.
QWidget* MakePrintEsc(QWidget*) {
    auto* form = new FormDialog(PrintEsc.State, PrintEscCancelButton, FrontWindow());
    form->setWindowModality(Qt::ApplicationModal);
    Binder& bind = form->Bind;
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(bind, []() -> Control& { return PrintEsc.Message; }));
    all->addLayout(
        ButtonRow({}, {MakeButton(
                          bind, []() -> Control& { return PrintEsc.CancelButton; }, PrintEscCancelButton)}));
    form->setMinimumWidth(320);
    return form;
}

const FormWindow Registered(PrintEscName, MakePrintEsc);

} // namespace

} // namespace Quillon
