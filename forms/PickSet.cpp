// Which set of the fit a graph shows.
#include "graphs/kinds/PickSet.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

#include <QListWidget>

namespace Quillon {

namespace {

QWidget* MakePickSet(QWidget* parent) {
    auto* form = new FormDialog(PickSetWindow.State, PickSetCancelButton, parent);
    Binder& bind = form->Bind;
    auto* list = new QListWidget;
    list->setMinimumSize(420, 220);
    bind.List(
        list, []() -> Control& { return PickSetWindow.SetList; }, 1, [](int row) { PickSetRow(SetNo(row)); });
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

const FormWindow Registered(PickSetName, MakePickSet);

} // namespace

} // namespace Quillon
