// All settings of the ini file.
#include "persistence/settings/SettingsForm.h"
#include "forms/ChartPieces.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"

#include <QComboBox>
#include <QTabWidget>

namespace Quillon {

namespace {

QWidget* WidgetOf(Binder& bind, std::size_t i) {
    const ControlRef box = At(SettingsForm.Box, i);
    switch (SettingRows()[i].Kind) {
    case SettingKind::Flag: {
        auto* check = new QCheckBox;
        bind.Check(check, box, [] {});
        return check;
    }
    case SettingKind::Choice:
        return MakeCombo(bind, box, [i](int place) { SettingsFormChoice(i, place); });
    default:
        return MakeField(bind, box,
                         {[i] { SettingsFormGotFocus(i); },
                          [i](int key) { return SettingsFormKeyPress(i, key); },
                          [i] {
                              if (SettingsForm.State.Shown) SettingsFormLostFocus(i);
                          },
                          {}});
    }
}

void AddSetting(Binder& bind, QGridLayout* grid, std::size_t i) {
    const int line = grid->rowCount();
    QWidget* widget = WidgetOf(bind, i);
    if (SettingRows()[i].Kind == SettingKind::Flag) {
        grid->addWidget(widget, line, 0, 1, 2);
        return;
    }
    QLabel* label = MakeLabel(bind, At(SettingsForm.Label, i));
    label->setBuddy(widget);
    grid->addWidget(label, line, 0);
    grid->addWidget(widget, line, 1);
}

// A page for each group.
QTabWidget* Pages(Binder& bind) {
    auto* pages = new QTabWidget;
    QGridLayout* grid = nullptr;
    for (std::size_t i = 0; i < SettingRows().size(); ++i) {
        const QString group = SettingRows()[i].Group;
        if (pages->count() == 0 || pages->tabText(pages->count() - 1) != group) {
            grid = new QGridLayout;
            grid->setColumnStretch(0, 1);
            auto* page = new QWidget;
            auto* column = new QVBoxLayout(page);
            column->addLayout(grid);
            column->addStretch(1);
            pages->addTab(page, group);
        }
        AddSetting(bind, grid, i);
    }
    return pages;
}

// A refused number may stand on a page that is not seen.
void ShowPageOf(QTabWidget* pages, const QWidget* widget) {
    for (int i = 0; i < pages->count(); ++i)
        if (widget && pages->widget(i)->isAncestorOf(widget)) pages->setCurrentIndex(i);
}

QWidget* MakeSettingsForm(QWidget* parent) {
    auto* form = new FormDialog(SettingsForm.State, SettingsFormCancelButton, parent);
    Binder& bind = form->Bind;
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return SettingsForm.Note; }, true));
    QTabWidget* pages = Pages(bind);
    all->addWidget(pages, 1);
    all->addLayout(ButtonRow(
        {MakeButton(
            bind, []() -> Control& { return SettingsForm.StandardButton; }, SettingsFormStandardButton)},
        {MakeButton(
             bind, []() -> Control& { return SettingsForm.OkButton; }, SettingsFormOkButton, true),
         MakeCancel(
             bind, []() -> Control& { return SettingsForm.CancelButton; }, SettingsFormCancelButton)}));
    bind.Also([pages] {
        if (SettingsForm.State.FocusOn) ShowPageOf(pages, WidgetFor(*SettingsForm.State.FocusOn));
    });
    form->resize(ForFont(640, 520));
    return form;
}

const FormWindow Registered(SettingsFormName, MakeSettingsForm);

} // namespace

} // namespace Quillon
