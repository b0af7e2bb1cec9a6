// What a sequence, a buffer and a column come to.
#include "planning/CalculatorForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"

#include <QHeaderView>
#include <QTableWidget>

namespace Quillon {

namespace {

FieldEdit* MakeCalculatorBox(Binder& bind, std::size_t i) {
    const auto box = static_cast<CalculatorBox>(i);
    return MakeField(
        bind, [i]() -> Control& { return CalculatorForm.Box[i]; },
        {[box] { CalculatorFormGotFocus(box); },
         [box](int key) { return CalculatorFormKeyPress(box, key); },
         [box] { CalculatorFormLostFocus(box); },
         {}},
        10);
}

// What has a line of its own; numbers share one.
bool IsWide(std::size_t i) {
    const auto box = static_cast<CalculatorBox>(i);
    return box == CalculatorBox::Chain || box == CalculatorBox::Buffer || box == CalculatorBox::Channel;
}

QGridLayout* MakeBoxes(Binder& bind) {
    auto* grid = new QGridLayout;
    int row = 0, column = 0;
    for (std::size_t i = 0; i < CalculatorBoxes; ++i) {
        const bool wide = IsWide(i);
        if (wide && column > 0) ++row, column = 0;
        QLabel* label = MakeLabel(bind, [i]() -> Control& { return CalculatorForm.Label[i]; });
        FieldEdit* field = MakeCalculatorBox(bind, i);
        label->setBuddy(field);
        grid->addWidget(label, row, column);
        grid->addWidget(field, row, column + 1, 1, wide ? 3 : 1);
        column += 2;
        if (wide || column > 2) ++row, column = 0;
    }
    grid->addWidget(
        MakeButton(
            bind, []() -> Control& { return CalculatorForm.FileButton; }, CalculatorFormFileButton),
        0, 4);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return grid;
}

void FillCalculatorTable(QTableWidget& table) {
    const auto& rows = CalculatorForm.Rows;
    table.setRowCount(static_cast<int>(rows.size()));
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (std::size_t j = 0; j < rows[i].size(); ++j) {
            auto* item = new QTableWidgetItem(ShownText(rows[i][j]));
            if (j == 1) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            item->setToolTip(ShownText(rows[i][j]));
            table.setItem(static_cast<int>(i), static_cast<int>(j), item);
        }
    table.resizeColumnsToContents();
}

QTableWidget* MakeCalculatorTable(Binder& bind) {
    auto* table = new QTableWidget(0, static_cast<int>(CalculatorForm.Columns.size()));
    table->setObjectName("Numbers");
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().lineSpacing() + 8);
    table->verticalHeader()->hide();
    QStringList heads;
    for (const std::string& head : CalculatorForm.Columns)
        heads << ShownText(head);
    table->setHorizontalHeaderLabels(heads);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft |
                                                   Qt::AlignVCenter); // of sources of any width
    table->resizeColumnsToContents();
    table->setAccessibleName("Numbers with their sources");
    table->setMinimumHeight(120);
    bind.Also([table, shown = std::vector<std::vector<std::string>>{}]() mutable {
        if (shown != CalculatorForm.Rows) FillCalculatorTable(*table);
        shown = CalculatorForm.Rows;
    });
    return table;
}

QWidget* MakeCalculatorForm(QWidget* parent) {
    auto* form = new FormDialog(CalculatorForm.State, CalculatorFormCloseButton, parent);
    Binder& bind = form->Bind;
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return CalculatorForm.Head; }, true));
    all->addLayout(MakeBoxes(bind));
    all->addWidget(MakeCalculatorTable(bind), 1);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return CalculatorForm.Note; }, true));
    all->addLayout(ButtonRow(
        {MakeButton(
             bind, []() -> Control& { return CalculatorForm.CalculateButton; }, CalculatorFormCalculateButton,
             true),
         MakeButton(
             bind, []() -> Control& { return CalculatorForm.UseAButton; },
             [] { CalculatorFormUseButton(0); }),
         MakeButton(
             bind, []() -> Control& { return CalculatorForm.UseBButton; },
             [] { CalculatorFormUseButton(1); }),
         MakeButton(
             bind, []() -> Control& { return CalculatorForm.CopyButton; }, CalculatorFormCopyButton)},
        {MakeCancel(
            bind, []() -> Control& { return CalculatorForm.CloseButton; }, CalculatorFormCloseButton)}));
    form->resize(ForFont(820, 560));
    return form;
}

const FormWindow Registered(CalculatorFormName, MakeCalculatorForm);

} // namespace

} // namespace Quillon
