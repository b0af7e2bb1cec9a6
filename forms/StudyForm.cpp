// Comparison of models, profile of a parameter, resampling.
#include "studies/StudyForm.h"
#include "forms/ChartPieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"

#include <QComboBox>
#include <QHeaderView>
#include <QProgressBar>
#include <QTableWidget>

namespace Quillon {

namespace {

StudyInput& InputAt(std::size_t i) {
    return StudyForm.Inputs[i];
}

QWidget* MakeStudyBox(Binder& bind, std::size_t i) {
    const int input = static_cast<int>(i);
    const ControlRef box = [i]() -> Control& { return InputAt(i).Box; };
    if (!InputAt(i).Box.Items.empty()) {
        QComboBox* list = MakeCombo(bind, box, [input](int row) { StudyFormListRow(input, row); });
        bind.Also([list, i] { list->setEnabled(InputAt(i).Box.Enabled); });
        return list;
    }
    return MakeField(bind, box,
                     {[input] { StudyFormGotFocus(input); },
                      [input](int key) { return StudyFormKeyPress(input, key); },
                      [input] { StudyFormLostFocus(input); },
                      {}},
                     10);
}

// Two questions a line; one that stands alone has the whole line.
QGridLayout* MakeInputs(Binder& bind) {
    auto* grid = new QGridLayout;
    for (std::size_t i = 0; i < StudyForm.Inputs.size(); ++i) {
        QLabel* label = MakeLabel(bind, [i]() -> Control& { return InputAt(i).Label; });
        QWidget* box = MakeStudyBox(bind, i);
        label->setBuddy(box);
        const int row = static_cast<int>(i / 2), column = static_cast<int>(i % 2) * 2;
        grid->addWidget(label, row, column);
        grid->addWidget(box, row, column + 1);
        grid->setColumnStretch(column + 1, 1);
    }
    grid->setRowStretch(grid->rowCount(), 1); // the first line stands beside the first button
    return grid;
}

// Whether nothing but numbers stands in a column.
bool HoldsNumbers(std::size_t column) {
    for (const std::vector<std::string>& row : StudyForm.Rows)
        if (row[column].find_first_not_of("0123456789+-.E") != std::string::npos) return false;
    return true;
}

// Rich text, which a tip wraps.
QString WrappedTip(const QString& text) {
    return text.isEmpty() ? text : "<p>" + text.toHtmlEscaped() + "</p>";
}

void FillColumn(QTableWidget& table, std::size_t column) {
    const Qt::Alignment side = HoldsNumbers(column) ? Qt::AlignRight : Qt::AlignLeft;
    for (std::size_t i = 0; i < StudyForm.Rows.size(); ++i) {
        auto* item = new QTableWidgetItem(ShownText(StudyForm.Rows[i][column]));
        item->setTextAlignment(side | Qt::AlignVCenter);
        if (side == Qt::AlignLeft) item->setToolTip(WrappedTip(item->text()));
        table.setItem(static_cast<int>(i), static_cast<int>(column), item);
    }
}

// Where a column is as wide as its head, two lines of it leave room for others.
QString HeadInLines(const std::string& head) {
    QString text = ShownText(head);
    const auto blank = text.lastIndexOf(' ');
    if (blank > 0) text[blank] = '\n';
    return text;
}

// Numbers are seen whole; where not all has room, words give way to them and stand in the tip.
void PlaceColumns(QTableWidget& table) {
    constexpr int MostLetters = 22;
    const int last = table.columnCount() - 1;
    const auto words = [](int column) { return !HoldsNumbers(static_cast<std::size_t>(column)); };
    table.horizontalHeader()->setStretchLastSection(false);
    table.resizeColumnsToContents();
    const int widest = MostLetters * table.fontMetrics().averageCharWidth();
    const bool cut = table.horizontalHeader()->length() > table.viewport()->width();
    for (int column = 0; cut && column <= last; ++column)
        if (words(column) && table.columnWidth(column) > widest) table.setColumnWidth(column, widest);
    table.horizontalHeader()->setStretchLastSection(last >= 0 && words(last));
}

// Its columns share what room there is.
class StudyTable : public QTableWidget {
public:
    StudyTable() : QTableWidget(0, 0) {}

protected:
    void resizeEvent(QResizeEvent* event) override {
        QTableWidget::resizeEvent(event);
        if (viewport()->width() == Width) return;
        Width = viewport()->width();
        PlaceColumns(*this);
    }

private:
    int Width = 0; // of the columns as they stand
};

void FillStudyTable(QTableWidget& table) {
    const bool many = StudyForm.Columns.size() > 8;
    QStringList heads;
    for (const std::string& head : StudyForm.Columns)
        heads << (many ? HeadInLines(head) : ShownText(head));
    table.setColumnCount(static_cast<int>(heads.size()));
    table.setHorizontalHeaderLabels(heads);
    table.setRowCount(static_cast<int>(StudyForm.Rows.size()));
    for (std::size_t column = 0; column < StudyForm.Columns.size(); ++column)
        FillColumn(table, column);
    PlaceColumns(table);
}

QTableWidget* MakeStudyTable(Binder& bind) {
    auto* table = new StudyTable;
    table->setObjectName("Study");
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setTabKeyNavigation(false);
    table->horizontalHeader()->setHighlightSections(false); // bold letters need more room
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().lineSpacing() + 8);
    table->verticalHeader()->hide(); // numbers of lines would be read as those of models
    table->setMinimumHeight(200);
    QObject::connect(table, &QTableWidget::currentCellChanged, table, [](int row, int, int former, int) {
        if (row != former && !FormsRefreshing()) RunHandler([row] { StudyFormRow(row); });
    });
    QObject::connect(table, &QTableWidget::cellDoubleClicked, table,
                     [](int, int) { RunHandler(StudyFormTakeButton); });
    QObject::connect(table->horizontalHeader(), &QHeaderView::sectionClicked, table,
                     [](int column) { RunHandler([column] { StudyFormSort(column); }); });
    bind.Also([table, shown = std::vector<std::vector<std::string>>{},
               heads = std::vector<std::string>{}]() mutable {
        if (shown != StudyForm.Rows || heads != StudyForm.Columns) FillStudyTable(*table);
        shown = StudyForm.Rows;
        heads = StudyForm.Columns;
        if (table->currentRow() != StudyForm.Chosen && StudyForm.Chosen >= 0)
            table->selectRow(StudyForm.Chosen);
    });
    return table;
}

QProgressBar* MakeStudyBar(Binder& bind) {
    auto* bar = new QProgressBar;
    bar->setRange(0, 1000);
    bar->setTextVisible(false);
    bind.Also([bar] { bar->setValue(static_cast<int>(StudyForm.Fraction * 1000.0)); });
    return bar;
}

QWidget* MakeStudyForm(QWidget* parent) {
    auto* form = new FormDialog(StudyForm.State, StudyFormCloseButton, parent);
    Binder& bind = form->Bind;
    auto* top = new QHBoxLayout;
    top->addLayout(MakeInputs(bind), 1);
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(MakeButton(
        bind, []() -> Control& { return StudyForm.RunButton; }, StudyFormRunButton, true));
    buttons->addWidget(MakeButton(
        bind, []() -> Control& { return StudyForm.StopButton; }, StudyFormStopButton));
    buttons->addStretch(1);
    top->addLayout(buttons);
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return StudyForm.Head; }, true));
    all->addLayout(top);
    all->addWidget(MakeStudyBar(bind));
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return StudyForm.Progress; }, true));
    all->addWidget(MakeStudyTable(bind), 1);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return StudyForm.Notes; }, true));
    all->addLayout(ButtonRow(
        {MakeButton(
             bind, []() -> Control& { return StudyForm.TakeButton; }, StudyFormTakeButton),
         MakeButton(
             bind, []() -> Control& { return StudyForm.GraphButton; }, StudyFormGraphButton),
         MakeButton(
             bind, []() -> Control& { return StudyForm.CorrelationsButton; }, StudyFormCorrelationsButton),
         MakeButton(
             bind, []() -> Control& { return StudyForm.CopyButton; }, StudyFormCopyButton)},
        {MakeCancel(
            bind, []() -> Control& { return StudyForm.CloseButton; }, StudyFormCloseButton)}));
    // The table of a comparison has many columns, and the weights stand among the last ones.
    form->resize(ForFont(StudyForm.Kind == StudyKind::Compare ? 1400 : 1000, 520));
    return form;
}

const FormWindow Registered(StudyFormName, MakeStudyForm);

} // namespace

} // namespace Quillon
