// The minima that fits from other starts come to.
#include "studies/MinimaForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"

#include <QHeaderView>
#include <QProgressBar>
#include <QTableWidget>

namespace Quillon {

namespace {

FieldEdit* AddInput(Binder& bind, QHBoxLayout* row, MinimaInput input, Control MinimaFormRecord::*caption) {
    QLabel* label = MakeLabel(bind, [caption]() -> Control& { return MinimaForm.*caption; });
    FieldEdit* field = MakeField(
        bind, [input]() -> Control& { return MinimaFormBox(input); },
        {[input] { MinimaFormGotFocus(input); },
         [input](int key) { return MinimaFormKeyPress(input, key); },
         [input] {
             if (MinimaForm.State.Shown) MinimaFormLostFocus(input);
         },
         {}},
        6);
    field->setFixedWidth(field->minimumWidth());
    label->setBuddy(field);
    row->addWidget(label);
    row->addWidget(field);
    return field;
}

void FillMinimaTable(QTableWidget& table) {
    const auto& rows = MinimaForm.Rows;
    table.setRowCount(static_cast<int>(rows.size()));
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (std::size_t j = 0; j < rows[i].size(); ++j) {
            auto* item = new QTableWidgetItem(ShownText(rows[i][j]));
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            table.setItem(static_cast<int>(i), static_cast<int>(j), item);
        }
    table.resizeColumnsToContents();
}

// The table follows the rows of the record; it is filled when they are others.
QTableWidget* MakeMinimaTable(Binder& bind) {
    auto* table = new QTableWidget(0, static_cast<int>(MinimaForm.Columns.size()));
    table->setObjectName("Minima");
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setTabKeyNavigation(false);
    table->horizontalHeader()->setHighlightSections(false); // bold letters need more room
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().lineSpacing() + 8);
    QStringList heads;
    for (const std::string& head : MinimaForm.Columns)
        heads << ShownText(head);
    table->setHorizontalHeaderLabels(heads);
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    table->setMinimumHeight(180);
    QObject::connect(table, &QTableWidget::currentCellChanged, table, [](int row, int, int former, int) {
        if (row != former && !FormsRefreshing()) RunHandler([row] { MinimaFormRow(row); });
    });
    bind.Also([table, shown = std::vector<std::vector<std::string>>{}]() mutable {
        if (shown != MinimaForm.Rows) FillMinimaTable(*table);
        shown = MinimaForm.Rows;
        if (table->currentRow() != MinimaForm.Chosen && MinimaForm.Chosen >= 0)
            table->selectRow(MinimaForm.Chosen);
    });
    return table;
}

QProgressBar* MakeMinimaBar(Binder& bind) {
    auto* bar = new QProgressBar;
    bar->setRange(0, 1000);
    bar->setTextVisible(false);
    bind.Also([bar] { bar->setValue(static_cast<int>(MinimaForm.Fraction * 1000.0)); });
    return bar;
}

QWidget* MakeMinimaForm(QWidget* parent) {
    auto* form = new FormDialog(MinimaForm.State, MinimaFormCloseButton, parent);
    Binder& bind = form->Bind;
    auto* inputs = new QHBoxLayout;
    AddInput(bind, inputs, MinimaInput::Count, &MinimaFormRecord::CountLabel);
    AddInput(bind, inputs, MinimaInput::Seed, &MinimaFormRecord::SeedLabel);
    inputs->addStretch(1);
    inputs->addWidget(MakeButton(
        bind, []() -> Control& { return MinimaForm.SearchButton; }, MinimaFormSearchButton, true));
    inputs->addWidget(MakeButton(
        bind, []() -> Control& { return MinimaForm.StopButton; }, MinimaFormStopButton));
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return MinimaForm.Head; }, true));
    all->addLayout(inputs);
    all->addWidget(MakeMinimaBar(bind));
    all->addWidget(MakeLabel(bind, []() -> Control& { return MinimaForm.Progress; }));
    all->addWidget(MakeMinimaTable(bind), 1);
    all->addLayout(
        ButtonRow({MakeButton(
                      bind, []() -> Control& { return MinimaForm.TakeButton; }, MinimaFormTakeButton)},
                  {MakeCancel(
                      bind, []() -> Control& { return MinimaForm.CloseButton; }, MinimaFormCloseButton)}));
    form->resize(ForFont(720, 420));
    return form;
}

const FormWindow Registered(MinimaFormName, MakeMinimaForm);

} // namespace

} // namespace Quillon
