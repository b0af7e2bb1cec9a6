// Choosing the model, and the rotor speed calculator.
#include "forms/Pieces.h"
#include "forms/Windows.h"
#include "models/ModelForm.h"
#include "models/SigmaCalcForm.h"
#include "models/SpecForm.h"

#include <QApplication>
#include <QFrame>
#include <QKeyEvent>
#include <QListWidget>
#include <QScrollArea>

namespace Quillon {

namespace {

// The list of models: up and down choose, Enter takes.
class ModelDialog : public FormDialog {
public:
    explicit ModelDialog(QWidget* parent) : FormDialog(ModelForm.State, ModelFormCancelButton, parent) {}

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Up) return RunHandler(ModelFormKeyUp);
        if (event->key() == Qt::Key_Down) return RunHandler(ModelFormKeyDown);
        FormDialog::keyPressEvent(event);
    }
};

// A row whose arrows go up and down the list, wherever that scrolls to, and whose double click takes the
// model.
class ModelButton : public QRadioButton {
public:
    explicit ModelButton(std::int16_t model) : Model(model) {}

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Up) return RunHandler(ModelFormKeyUp);
        if (event->key() == Qt::Key_Down) return RunHandler(ModelFormKeyDown);
        QRadioButton::keyPressEvent(event);
    }
    void mouseDoubleClickEvent(QMouseEvent*) override {
        RunHandler([this] { ModelFormRowDoubleClick(Model); });
    }

private:
    std::int16_t Model;
};

QWidget* ModelRows(Binder& bind) {
    auto* rows = new QWidget;
    auto* all = new QVBoxLayout(rows);
    all->setSpacing(1);
    for (std::size_t i = 0; i < ModelForm.ModelRow.size(); ++i) {
        const auto model = static_cast<std::int16_t>(i + 1);
        auto* button = new ModelButton(model);
        bind.Option(
            button, [i]() -> Control& { return ModelForm.ModelRow[i]; },
            [model] { ModelFormRowClick(model); });
        bind.Also([i, button] { // one place for Tab, the chosen row
            button->setFocusPolicy(ModelForm.ModelRow[i].Value ? Qt::StrongFocus : Qt::ClickFocus);
        });
        all->addWidget(button);
    }
    all->addStretch(1);
    return rows;
}

QGroupBox* Pair(QRadioButton* first, QRadioButton* second) {
    auto* frame = new QGroupBox;
    auto* all = new QVBoxLayout(frame);
    all->addWidget(first);
    all->addWidget(second);
    return frame;
}

} // namespace

QWidget* MakeModelForm(QWidget* parent) {
    auto* form = new ModelDialog(parent);
    Binder& bind = form->Bind;
    auto* area = new QScrollArea;
    area->setWidget(ModelRows(bind));
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QObject::connect(qApp, &QApplication::focusChanged, area, [area](QWidget*, QWidget* now) {
        if (now && area->isAncestorOf(now)) area->ensureWidgetVisible(now);
    });
    auto* options = new QHBoxLayout;
    options->addWidget(Pair(
        MakeOption(
            bind, []() -> Control& { return ModelForm.Ideal; }, [] { ModelFormNonIdealClick(false); }),
        MakeOption(
            bind, []() -> Control& { return ModelForm.NonIdeal; }, [] { ModelFormNonIdealClick(true); })));
    options->addWidget(Pair(
        MakeOption(
            bind, []() -> Control& { return ModelForm.SameK; }, [] { ModelFormSeparateKClick(false); }),
        MakeOption(
            bind, []() -> Control& { return ModelForm.UniqueK; }, [] { ModelFormSeparateKClick(true); })));
    auto* all = new QVBoxLayout(form);
    all->addWidget(area, 1);
    all->addLayout(options);
    all->addLayout(ButtonRow(
        {}, {MakeButton(
                 bind, []() -> Control& { return ModelForm.OkButton; }, ModelFormOkButton, true),
             MakeButton(
                 bind, []() -> Control& { return ModelForm.CancelButton; }, ModelFormCancelButton)}));
    form->resize(600, 660);
    return form;
}

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

} // namespace

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
        list, []() -> Control& { return SpecForm.SetList; }, 1, [](int row) { SpecFormSetList(row); });
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

} // namespace Quillon
