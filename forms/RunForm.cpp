// A sorted run as a tree.
#include "commands/RunForm.h"
#include "forms/Pieces.h"
#include "forms/shell/DesktopColor.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"

#include <QHeaderView>
#include <QPlainTextEdit>
#include <QTreeWidget>

namespace Quillon {

namespace {

constexpr int LineRole = Qt::UserRole; // the subscript of an item's line
constexpr int RatiosInARow = 3;

Qt::CheckState StateOf(const RunLine& line) {
    return line.Ticked == RunLine::All    ? Qt::Checked
           : line.Ticked == RunLine::Some ? Qt::PartiallyChecked
                                          : Qt::Unchecked;
}

QTreeWidgetItem* MakeItem(std::size_t i, const QPalette& palette) {
    const RunLine& line = RunForm.Lines[i];
    auto* item = new QTreeWidgetItem;
    item->setData(0, LineRole, static_cast<int>(i));
    for (int column = 0; column < 4; ++column)
        item->setText(column, ShownText(line.Texts[static_cast<std::size_t>(column)]));
    item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
    if (line.Color != DefaultColor) item->setForeground(3, DesktopColor(line.Color, palette));
    if (line.CanTick) item->setCheckState(0, StateOf(line));
    return item;
}

// Items in the order of the lines, each below the last one of less depth. The tree takes them when they stand
// whole: one that shows them already measures its columns anew for each.
std::vector<QTreeWidgetItem*> FillTree(QTreeWidget& tree) {
    std::vector<QTreeWidgetItem*> items;
    QList<QTreeWidgetItem*> cells;
    std::array<QTreeWidgetItem*, 4> latest{};
    for (std::size_t i = 0; i < RunForm.Lines.size(); ++i) {
        QTreeWidgetItem* item = MakeItem(i, tree.palette());
        const auto depth = static_cast<std::size_t>(RunForm.Lines[i].Depth);
        if (depth == 0)
            cells << item;
        else
            latest[depth - 1]->addChild(item);
        latest[depth] = item;
        items.push_back(item);
    }
    tree.addTopLevelItems(cells);
    return items;
}

// Cells and speeds open, the scans of a wavelength closed.
void OpenGroups(const std::vector<QTreeWidgetItem*>& items) {
    for (std::size_t i = 0; i < items.size(); ++i)
        items[i]->setExpanded(RunForm.Lines[i].Depth < 2);
}

void NameColumns(QTreeWidget& tree) {
    QStringList heads;
    for (const std::string& head : RunForm.Columns)
        heads << ShownText(head);
    tree.setHeaderLabels(heads);
    tree.header()->setStretchLastSection(false);
}

QTreeWidget* MakeTree(Binder& bind) {
    auto* tree = new QTreeWidget;
    tree->setObjectName("Run");
    tree->setAccessibleName("Scans of the run");
    tree->setUniformRowHeights(true);
    tree->setMinimumHeight(200);
    NameColumns(*tree);
    const std::vector<QTreeWidgetItem*> items = FillTree(*tree);
    OpenGroups(items);
    // The words at the end are of any length: what the others leave is the first column's.
    tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    tree->header()->setSectionResizeMode(3, QHeaderView::ResizeToContents);
    tree->setColumnWidth(1, tree->fontMetrics().horizontalAdvance("000 scans  "));
    tree->setColumnWidth(2, tree->fontMetrics().horizontalAdvance("000.0 h to 000.0 h  "));
    if (!items.empty()) tree->setCurrentItem(items.front());
    QObject::connect(tree, &QTreeWidget::itemChanged, tree, [](QTreeWidgetItem* item, int column) {
        if (column != 0 || FormsRefreshing()) return;
        const auto line = static_cast<std::size_t>(item->data(0, LineRole).toInt());
        if (item->checkState(0) != StateOf(RunForm.Lines[line])) RunHandler([line] { RunFormTick(line); });
    });
    QObject::connect(tree, &QTreeWidget::currentItemChanged, tree, [](QTreeWidgetItem* item) {
        if (!item) return;
        const auto line = static_cast<std::size_t>(item->data(0, LineRole).toInt());
        RunHandler([line] { RunFormMark(line); });
    });
    bind.Also([items] {
        for (std::size_t i = 0; i < items.size() && i < RunForm.Lines.size(); ++i)
            if (RunForm.Lines[i].CanTick && items[i]->checkState(0) != StateOf(RunForm.Lines[i]))
                items[i]->setCheckState(0, StateOf(RunForm.Lines[i]));
    });
    return tree;
}

FieldEdit* MakeRatio(Binder& bind, std::size_t i, std::size_t species) {
    FieldEdit* field = MakeField(
        bind, [i, species]() -> Control& { return species == 0 ? RunForm.Ratios[i].A : RunForm.Ratios[i].B; },
        {[i, species] { RunFormRatioGotFocus(i, species); },
         [i, species](int key) { return RunFormRatioKeyPress(i, species, key); },
         [i, species] { RunFormRatioLostFocus(i, species); },
         {}},
        7);
    field->setFixedWidth(field->minimumWidth());
    field->setAccessibleName(ShownText(RunForm.Ratios[i].Label.Text) +
                             (species == 0 ? ", species A" : ", species B"));
    return field;
}

QGridLayout* MakeRatios(Binder& bind) {
    auto* grid = new QGridLayout;
    for (std::size_t i = 0; i < RunForm.Ratios.size(); ++i) {
        const int row = static_cast<int>(i) / RatiosInARow, column = static_cast<int>(i) % RatiosInARow * 4;
        grid->addWidget(RightLabel(bind, [i]() -> Control& { return RunForm.Ratios[i].Label; }), row, column);
        grid->addWidget(MakeRatio(bind, i, 0), row, column + 1);
        grid->addWidget(MakeRatio(bind, i, 1), row, column + 2);
        grid->setColumnMinimumWidth(column + 3, 16);
    }
    grid->setColumnStretch(RatiosInARow * 4, 1);
    return grid;
}

QPlainTextEdit* MakeRemarks(Binder& bind) {
    auto* text = new QPlainTextEdit;
    text->setAccessibleName("What was left alone");
    text->setMaximumHeight(text->fontMetrics().lineSpacing() * 4 + 12);
    bind.Text(text, []() -> Control& { return RunForm.Remarks; });
    bind.Visible(text, []() -> Control& { return RunForm.Remarks; });
    return text;
}

QHBoxLayout* MakeChoices(Binder& bind) {
    auto* row = new QHBoxLayout;
    row->addWidget(MakeButton(
        bind, []() -> Control& { return RunForm.AllButton; }, RunFormAllButton));
    row->addWidget(MakeButton(
        bind, []() -> Control& { return RunForm.NoneButton; }, RunFormNoneButton));
    row->addSpacing(16);
    auto* average = new QCheckBox;
    bind.Check(
        average, []() -> Control& { return RunForm.Average; }, RunFormAverage);
    row->addWidget(average);
    row->addStretch(1);
    row->addWidget(MakeButton(
        bind, []() -> Control& { return RunForm.GraphButton; }, RunFormGraphButton));
    return row;
}

QWidget* MakeRunForm(QWidget* parent) {
    auto* form = new FormDialog(RunForm.State, RunFormCancelButton, parent);
    Binder& bind = form->Bind;
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return RunForm.Head; }, true));
    all->addWidget(MakeTree(bind), 1);
    all->addLayout(MakeChoices(bind));
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return RunForm.RatioHead; }, true));
    all->addLayout(MakeRatios(bind));
    all->addWidget(MakeRemarks(bind));
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return RunForm.Count; }, true));
    all->addLayout(
        ButtonRow({}, {MakeButton(
                           bind, []() -> Control& { return RunForm.OkButton; }, RunFormOkButton, true),
                       MakeCancel(
                           bind, []() -> Control& { return RunForm.CancelButton; }, RunFormCancelButton)}));
    form->resize(ForFont(860, 620));
    return form;
}

const FormWindow Registered(RunFormName, MakeRunForm);

} // namespace

} // namespace Quillon
