// Units and coefficients.
#include "models/forms/UnitsForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

namespace Quillon {

namespace {

using UnitsMember = Control UnitsFormRecord::*;

QRadioButton* Mass(Binder& bind, UnitsMember m, std::int16_t units) {
    return MakeOption(
        bind, [m]() -> Control& { return UnitsForm.*m; }, [units] { UnitsFormMassClick(units); });
}

QRadioButton* Conc(Binder& bind, UnitsMember m, std::int16_t units) {
    return MakeOption(
        bind, [m]() -> Control& { return UnitsForm.*m; }, [units] { UnitsFormConcClick(units); });
}

void AddInput(Binder& bind, QGridLayout* grid, UnitsInput input,
              std::vector<Control> UnitsFormRecord::*labels) {
    for (std::size_t i = 0; i < (UnitsForm.*labels).size(); ++i) {
        const int line = grid->rowCount();
        QLabel* label = MakeLabel(bind, [labels, i]() -> Control& { return (UnitsForm.*labels)[i]; });
        FieldEdit* field = MakeField(bind, [input, i]() -> Control& { return UnitsFormBox(input, i); },
                                     {[input, i] { UnitsFormGotFocus(input, i); },
                                      [input, i](int key) { return UnitsFormKeyPress(input, i, key); },
                                      [input, i] {
                                          if (UnitsForm.State.Shown) UnitsFormLostFocus(input, i);
                                      },
                                      {}});
        label->setBuddy(field);
        field->setFixedWidth(field->minimumWidth());
        grid->addWidget(field, line, 0);
        grid->addWidget(label, line, 1);
    }
    grid->setColumnStretch(1, 1);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(6);
}

// A note that goes on with the caption of the option above it.
QLabel* Note(Binder& bind, UnitsMember m) {
    QLabel* note = MakeLabel(bind, [m]() -> Control& { return UnitsForm.*m; });
    note->setIndent(22);
    return note;
}

QVBoxLayout* UnitsColumn(QWidget* box, std::initializer_list<QWidget*> widgets) {
    auto* all = new QVBoxLayout(box);
    for (QWidget* widget : widgets)
        all->addWidget(widget);
    all->addStretch(1);
    return all;
}

QGroupBox* DataFrame(Binder& bind, UnitsMember frame, std::initializer_list<QWidget*> widgets) {
    QGroupBox* box = MakeFrame(bind, [frame]() -> Control& { return UnitsForm.*frame; });
    UnitsColumn(box, widgets);
    return box;
}

// The boxes of both frames stand below each other, beside the widest of the columns of options.
void AlignBoxes(Binder& bind, std::initializer_list<QGridLayout*> grids) {
    for (QGridLayout* grid : grids) {
        grid->setColumnStretch(1, 1);
        grid->setHorizontalSpacing(18);
    }
    bind.Also([all = std::vector<QGridLayout*>(grids)] {
        int widest = 0;
        for (const QGridLayout* grid : all)
            for (int row = 0; row < grid->rowCount(); ++row)
                if (const QLayoutItem* options = grid->itemAtPosition(row, 0))
                    widest = std::max(widest, options->sizeHint().width());
        for (QGridLayout* grid : all)
            grid->setColumnMinimumWidth(0, widest);
    });
}

QWidget* MakeUnitsForm(QWidget* parent) {
    auto* form = new FormDialog(UnitsForm.State, UnitsFormCancelButton, parent);
    Binder& bind = form->Bind;

    QGroupBox* mass = MakeFrame(bind, []() -> Control& { return UnitsForm.MassFrame; });
    auto* masses = new QGridLayout(mass);
    auto* massOptions = new QWidget;
    UnitsColumn(massOptions,
                {Mass(bind, &UnitsFormRecord::SigmaUnits, 0), Mass(bind, &UnitsFormRecord::Buoyant, 1),
                 Mass(bind, &UnitsFormRecord::TrueMass, 2), Note(bind, &UnitsFormRecord::TrueMassNote)});
    masses->addWidget(massOptions, 0, 0);
    auto* masslike = new QGridLayout;
    AddInput(bind, masslike, UnitsInput::VBar, &UnitsFormRecord::VBarLabel);
    AddInput(bind, masslike, UnitsInput::Density, &UnitsFormRecord::DensityLabel);
    masses->addLayout(masslike, 0, 1, Qt::AlignTop);

    QGroupBox* conc = MakeFrame(bind, []() -> Control& { return UnitsForm.ConcFrame; });
    auto* concs = new QGridLayout(conc);
    concs->addWidget(
        DataFrame(bind, &UnitsFormRecord::AbsorbanceFrame,
                  {Conc(bind, &UnitsFormRecord::Per_AU, 0), Conc(bind, &UnitsFormRecord::Per_mg_per_ml, 1),
                   Conc(bind, &UnitsFormRecord::Molar, 2)}),
        0, 0);
    auto* absorbance = new QGridLayout;
    AddInput(bind, absorbance, UnitsInput::Absorptivity, &UnitsFormRecord::AbsorptivityLabel);
    AddInput(bind, absorbance, UnitsInput::Extinction, &UnitsFormRecord::ExtinctionLabel);
    concs->addLayout(absorbance, 0, 1, Qt::AlignTop);
    concs->addWidget(DataFrame(bind, &UnitsFormRecord::InterferenceFrame,
                               {Conc(bind, &UnitsFormRecord::Per_Fringe, 3),
                                Conc(bind, &UnitsFormRecord::Refr_per_mg_per_ml, 4),
                                Note(bind, &UnitsFormRecord::RefractivityNote),
                                Conc(bind, &UnitsFormRecord::Ref_Molar, 5)}),
                     1, 0);
    auto* fringes = new QGridLayout;
    AddInput(bind, fringes, UnitsInput::Refractivity, &UnitsFormRecord::RefractivityLabel);
    AddInput(bind, fringes, UnitsInput::RefExt, &UnitsFormRecord::RefExtLabel);
    concs->addLayout(fringes, 1, 1, Qt::AlignTop);
    AlignBoxes(bind, {masses, concs});

    auto* all = new QVBoxLayout(form);
    all->addWidget(mass);
    all->addWidget(conc);
    all->addLayout(ButtonRow(
        {}, {MakeButton(
                 bind, []() -> Control& { return UnitsForm.OkButton; }, UnitsFormOkButton, true),
             MakeCancel(
                 bind, []() -> Control& { return UnitsForm.CancelButton; }, UnitsFormCancelButton)}));
    return form;
}

const FormWindow Registered(UnitsFormName, MakeUnitsForm);

} // namespace

} // namespace Quillon
