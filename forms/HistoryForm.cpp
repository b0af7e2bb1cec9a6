// What the analysis was after each command.
#include "commands/history/HistoryForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QTableWidget>

namespace Quillon {

namespace {

void FillTable(QTableWidget& table) {
    const auto& rows = HistoryForm.Rows;
    table.setRowCount(static_cast<int>(rows.size()));
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (std::size_t j = 0; j < rows[i].size(); ++j) {
            auto* item = new QTableWidgetItem(ShownText(rows[i][j]));
            const bool number = j >= 4; // rms, degrees of freedom
            item->setTextAlignment((number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
            table.setItem(static_cast<int>(i), static_cast<int>(j), item);
        }
    table.resizeColumnsToContents();
}

std::vector<std::size_t> MarkedIn(const QTableWidget& table) {
    std::vector<std::size_t> rows;
    for (const QModelIndex& index : table.selectionModel()->selectedRows())
        rows.push_back(static_cast<std::size_t>(index.row()));
    return rows;
}

void MarkIn(QTableWidget& table) {
    table.clearSelection();
    for (const std::size_t row : HistoryForm.Marked)
        for (int column = 0; column < table.columnCount(); ++column)
            if (QTableWidgetItem* item = table.item(static_cast<int>(row), column)) item->setSelected(true);
}

QTableWidget* MakeTable(Binder& bind) {
    auto* table = new QTableWidget(0, static_cast<int>(HistoryForm.Columns.size()));
    table->setObjectName("History");
    table->setAccessibleName("Steps of the history");
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().lineSpacing() + 8);
    table->verticalHeader()->hide();
    table->setMinimumHeight(180);
    QStringList heads;
    for (const std::string& head : HistoryForm.Columns)
        heads << ShownText(head);
    table->setHorizontalHeaderLabels(heads);
    // The model has the room that is over, as the numbers stand beside their heads then.
    table->horizontalHeader()->setSectionResizeMode(3, QHeaderView::Stretch);
    QObject::connect(table, &QTableWidget::itemSelectionChanged, table, [table] {
        if (!FormsRefreshing()) RunHandler([rows = MarkedIn(*table)] { HistoryFormMark(rows); });
    });
    QObject::connect(table, &QTableWidget::cellDoubleClicked, table, [](int row, int) {
        RunHandler([row] { HistoryFormGo(static_cast<std::size_t>(row)); });
    });
    bind.Also([table, shown = std::vector<std::vector<std::string>>{}]() mutable {
        const bool other = shown != HistoryForm.Rows;
        if (other) FillTable(*table);
        if (other || MarkedIn(*table).size() != HistoryForm.Marked.size()) MarkIn(*table);
        if (shown.empty()) table->scrollToBottom(); // the latest ones
        shown = HistoryForm.Rows;
    });
    return table;
}

QWidget* MakeHistoryForm(QWidget* parent) {
    auto* form = new FormDialog(HistoryForm.State, HistoryFormCloseButton, parent);
    Binder& bind = form->Bind;
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return HistoryForm.Head; }, true));
    all->addWidget(MakeTable(bind), 1);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return HistoryForm.Ratio; }, true));
    all->addLayout(
        ButtonRow({MakeButton(
                      bind, []() -> Control& { return HistoryForm.GoButton; }, HistoryFormGoButton, true)},
                  {MakeCancel(
                      bind, []() -> Control& { return HistoryForm.CloseButton; }, HistoryFormCloseButton)}));
    form->resize(ForFont(820, 460));
    return form;
}

const FormWindow Registered(HistoryFormName, MakeHistoryForm);

} // namespace

} // namespace Quillon
