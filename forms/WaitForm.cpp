// The progress of a search.
#include "fit/forms/WaitForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

#include <QProgressBar>
#include <QTimer>

namespace Quillon {

namespace {

QWidget* MakeWaitForm(QWidget* parent) {
    auto* form = new FormDialog(WaitForm.State, WaitFormCancelButton, parent);
    Binder& bind = form->Bind;
    auto* bar = new QProgressBar;
    bar->setRange(0, 1000);
    bar->setMinimumWidth(380);
    bind.Also([bar] {
        bar->setValue(static_cast<int>(WaitForm.Fraction * 1000.0));
        bar->setFormat(ShownText(WaitForm.Picture2.Text));
    });
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(bind, []() -> Control& { return WaitForm.Label1; }));
    all->addWidget(MakeLabel(bind, []() -> Control& { return WaitForm.Label2; }));
    all->addWidget(bar);
    all->addLayout(
        ButtonRow({}, {MakeButton(
                          bind, []() -> Control& { return WaitForm.CancelButton; }, WaitFormCancelButton)}));
    QTimer::singleShot(50, form, [form] { RunSoon(form, WaitFormTimer1); }); // the window is painted first
    return form;
}

const FormWindow Registered(WaitFormName, MakeWaitForm);

} // namespace

} // namespace Quillon
