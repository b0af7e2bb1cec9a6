// Colours of sets.
#include "chart/dialogs/SetColor.h"
#include "forms/ChartPieces.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

#include <QComboBox>
#include <QListWidget>
#include <QScrollBar>

namespace Quillon {

namespace {

QListWidget* ColorRows(Binder& bind) {
    auto* list = new QListWidget;
    list->setIconSize(SwatchSize);
    list->setMinimumHeight(14 * (list->fontMetrics().lineSpacing() + 4));
    bind.List(
        list, []() -> Control& { return SetColorForm.Rows; }, 0, SetColorRowClick);
    bind.Also([list] {
        const std::vector<ChartColor>& colors = ShownColors();
        const int rows = std::min(list->count(), static_cast<int>(colors.size()));
        for (int row = 0; row < rows; ++row)
            list->item(row)->setIcon(Swatch(colors[static_cast<std::size_t>(row)]));
        const int bar = list->verticalScrollBar()->sizeHint().width();
        list->setMinimumWidth(list->sizeHintForColumn(0) + bar + 2 * list->frameWidth());
    });
    QObject::connect(list, &QListWidget::itemActivated, list, [] { RunHandler(SetColorEditButton); });
    return list;
}

QWidget* TableFrame(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, []() -> Control& { return SetColorForm.TableFrame; });
    auto* rows = new QVBoxLayout(frame);
    rows->addWidget(MakeOption(
        bind, []() -> Control& { return SetColorForm.ForScreen; }, [] { SetColorTableClick(true); }));
    rows->addWidget(MakeOption(
        bind, []() -> Control& { return SetColorForm.ForPrinter; }, [] { SetColorTableClick(false); }));
    return frame;
}

QWidget* MakeSetColor(QWidget* parent) {
    auto* form = new FormDialog(SetColorForm.State, SetColorCancelButton, parent);
    Binder& bind = form->Bind;
    QListWidget* list = ColorRows(bind);
    auto* label = new QLabel;
    label->setBuddy(list);
    bind.Label(label, []() -> Control& { return SetColorForm.RowsLabel; });
    auto* left = new QVBoxLayout;
    left->addWidget(label);
    left->addWidget(list, 1);
    auto* palette = new QGridLayout;
    AddRow(
        bind, palette, 0, 0, []() -> Control& { return SetColorForm.PaletteLabel; },
        MakeCombo(
            bind, []() -> Control& { return SetColorForm.Palette; }, SetColorPaletteClick));
    auto* right = new QVBoxLayout;
    right->addWidget(TableFrame(bind));
    right->addLayout(palette);
    right->addWidget(MakeButton(
        bind, []() -> Control& { return SetColorForm.EditButton; }, SetColorEditButton));
    right->addWidget(MakeButton(
        bind, []() -> Control& { return SetColorForm.SaveDefaults; }, SetColorSaveDefaults));
    right->addStretch(1);
    auto* columns = new QHBoxLayout;
    columns->addLayout(left, 1);
    columns->addLayout(right);
    auto* all = new QVBoxLayout(form);
    all->addLayout(columns, 1);
    all->addLayout(OkAndCancel(
        bind, []() -> Control& { return SetColorForm.OkButton; }, SetColorOkButton,
        []() -> Control& { return SetColorForm.CancelButton; }, SetColorCancelButton));
    return form;
}

const FormWindow Registered(SetColorName, MakeSetColor);

} // namespace

} // namespace Quillon
