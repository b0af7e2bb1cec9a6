// Concentrations of the species, integrated over the cell.
#include "models/forms/SpecForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

#include <QListWidget>

namespace Quillon {

namespace {

void AddRadius(Binder& bind, QGridLayout* grid, int line, SpecRadius radius,
               Control SpecFormRecord::*caption) {
    QLabel* label = MakeLabel(bind, [caption]() -> Control& { return SpecForm.*caption; });
    FieldEdit* field = MakeField(
        bind, [radius]() -> Control& { return SpecFormBox(radius); },
        {[radius] { SpecFormGotFocus(radius); },
         [radius](int key) { return SpecFormKeyPress(radius, key); },
         [radius] {
             if (SpecForm.State.Shown) SpecFormLostFocus(radius);
         },
         {}},
        8);
    label->setBuddy(field);
    grid->addWidget(label, line, 0);
    grid->addWidget(field, line, 1);
}

// Name and value of each row of the table of species.
QGridLayout* SpeciesTable(Binder& bind) {
    auto* grid = new QGridLayout;
    grid->setColumnMinimumWidth(0, 130);
    grid->setColumnStretch(1, 1);
    for (std::size_t i = 0; i < SpecForm.SpecName.size(); ++i) {
        const int line = static_cast<int>(i);
        grid->addWidget(MakeLabel(bind, [i]() -> Control& { return SpecForm.SpecName[i]; }), line, 0);
        grid->addWidget(MakeLabel(bind, [i]() -> Control& { return SpecForm.SpecConc[i]; }), line, 1);
    }
    return grid;
}

QWidget* MakeSpecForm(QWidget* parent) {
    auto* form = new FormDialog(SpecForm.State, SpecFormExitButton, parent);
    Binder& bind = form->Bind;
    const auto label = [&](Control SpecFormRecord::*member, bool wrap = false) {
        return MakeLabel(
            bind, [member]() -> Control& { return SpecForm.*member; }, wrap);
    };
    auto* list = new QListWidget;
    list->setMinimumSize(260, 110);
    bind.List(
        list, []() -> Control& { return SpecForm.SetList; }, 1, [](int row) { SpecFormSetList(SetNo(row)); });
    QLabel* listLabel = label(&SpecFormRecord::SetLabel);
    listLabel->setBuddy(list);
    auto* sets = new QVBoxLayout;
    sets->addWidget(listLabel);
    sets->addWidget(list);

    auto* grid = new QGridLayout;
    AddRadius(bind, grid, 0, SpecRadius::Inner, &SpecFormRecord::InnerLabel);
    AddRadius(bind, grid, 1, SpecRadius::Outer, &SpecFormRecord::OuterLabel);
    grid->addWidget(MakeButton(
                        bind, []() -> Control& { return SpecForm.RangeButton; }, SpecFormRangeButton),
                    2, 0, 1, 2);
    auto* units = new QWidget;
    auto* unitLines = new QVBoxLayout(units);
    for (Control SpecFormRecord::*member :
         {&SpecFormRecord::UseAU, &SpecFormRecord::UseMg, &SpecFormRecord::UseMolar})
        unitLines->addWidget(MakeOption(
            bind, [member]() -> Control& { return SpecForm.*member; },
            [member] { SpecFormUnit(SpecForm.*member); }));
    auto* choices = new QVBoxLayout;
    choices->addLayout(grid);
    choices->addWidget(units);
    choices->addStretch(1);

    auto* top = new QHBoxLayout;
    top->addLayout(sets, 1);
    top->addLayout(choices);
    auto* all = new QVBoxLayout(form);
    all->addLayout(top);
    all->addWidget(label(&SpecFormRecord::Head));
    all->addLayout(SpeciesTable(bind));
    for (const auto member :
         {&SpecFormRecord::MonomerTotal, &SpecFormRecord::MeanNote, &SpecFormRecord::Failure,
          &SpecFormRecord::ExpHead, &SpecFormRecord::ExpAverage, &SpecFormRecord::ExpNote})
        all->addWidget(label(member));
    all->addLayout(
        ButtonRow({MakeButton(
                      bind, []() -> Control& { return SpecForm.CopyButton; }, SpecFormCopyButton)},
                  {MakeCancel(
                      bind, []() -> Control& { return SpecForm.ExitButton; }, SpecFormExitButton)}));
    return form;
}

const FormWindow Registered(SpecFormName, MakeSpecForm);

} // namespace

} // namespace Quillon
