// The small windows: one question, one list, one text.
#include "fit/ConfidenceInput.h"
#include "fit/WaitForm.h"
#include "forms/Pieces.h"
#include "forms/Windows.h"
#include "graphs/PickSet.h"
#include "scandata/ExtinctionForm.h"
#include "scandata/InfoBox.h"

#include <QListWidget>
#include <QProgressBar>
#include <QTimer>

namespace Quillon {

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

QWidget* MakePickSet(QWidget* parent) {
    auto* form = new FormDialog(PickSetWindow.State, PickSetCancelButton, parent);
    Binder& bind = form->Bind;
    auto* list = new QListWidget;
    list->setMinimumSize(420, 220);
    bind.List(
        list, []() -> Control& { return PickSetWindow.SetList; }, 1, [](int row) { PickSetRow(row); });
    QObject::connect(list, &QListWidget::itemDoubleClicked, form, [] { RunHandler(PickSetOkButton); });
    auto* all = new QVBoxLayout(form);
    all->addWidget(list);
    all->addLayout(ButtonRow(
        {}, {MakeButton(
                 bind, []() -> Control& { return PickSetWindow.OkButton; }, PickSetOkButton, true),
             MakeButton(
                 bind, []() -> Control& { return PickSetWindow.CancelButton; }, PickSetCancelButton)}));
    return form;
}

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

QWidget* MakeInfoBox(QWidget* parent) {
    auto* form = new FormDialog(InfoBox.State, InfoBoxOkButton, parent);
    Binder& bind = form->Bind;
    auto* all = new QVBoxLayout(form);
    for (std::size_t i = 0; i < InfoBox.Line.size(); ++i)
        all->addWidget(MakeLabel(bind, [i]() -> Control& { return InfoBox.Line[i]; }));
    all->addLayout(
        ButtonRow({}, {MakeButton(
                          bind, []() -> Control& { return InfoBox.OkButton; }, InfoBoxOkButton, true)}));
    return form;
}

} // namespace Quillon
