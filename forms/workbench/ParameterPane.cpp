#include "forms/workbench/ParameterPane.h"

#include "forms/Pieces.h"
#include "forms/workbench/FaintText.h"
#include "forms/workbench/Idle.h"
#include "platform/Platform.h"
#include "reporting/ParameterTable.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QTableWidget>

#include <algorithm>
#include <numeric>

namespace Quillon {

namespace {

constexpr int NoteColumn = static_cast<int>(ParameterHeads.size()) - 1;

class ParameterList : public QTableWidget {
public:
    ParameterList() : QTableWidget(0, static_cast<int>(ParameterHeads.size())) {
        setAccessibleName("Parameters of the fit");
        QStringList heads;
        for (const char* head : ParameterHeads)
            heads << head;
        setHorizontalHeaderLabels(heads);
        setEditTriggers(NoEditTriggers);
        setSelectionBehavior(SelectRows);
        setTabKeyNavigation(false); // Tab leaves the table
        setFrameShape(QFrame::NoFrame);
        setWordWrap(false);
        verticalHeader()->hide();
        verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() + 6);
        setHorizontalScrollMode(ScrollPerPixel);
        horizontalHeader()->setHighlightSections(false);
    }
    QSize sizeHint() const override {
        return {QTableWidget::sizeHint().width(), verticalHeader()->defaultSectionSize() * 8};
    }
    QSize minimumSizeHint() const override { return {120, verticalHeader()->defaultSectionSize() * 3}; }

    // Brings the table up to the analysis. One that is not whole, say, has none: why, else "".
    std::string Follow() {
        try {
            Show(ParameterRows());
            return "";
        } catch (const RuntimeError& error) {
            Show({});
            return error.Text;
        }
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QTableWidget::resizeEvent(event);
        GiveNotesTheRest();
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (!event->matches(QKeySequence::Copy)) return QTableWidget::keyPressEvent(event);
        CopySelected();
    }
    void contextMenuEvent(QContextMenuEvent* event) override {
        QMenu menu;
        QAction* copy = menu.addAction("&Copy");
        copy->setShortcut(QKeySequence::Copy);
        copy->setEnabled(!Rows.empty());
        if (menu.exec(event->globalPos()) == copy) CopySelected();
    }

private:
    void Show(std::vector<ParameterRow> rows) {
        if (rows == Rows) return;
        Rows = std::move(rows);
        setRowCount(static_cast<int>(Rows.size()));
        for (std::size_t row = 0; row < Rows.size(); ++row)
            for (std::size_t column = 0; column < ParameterHeads.size(); ++column)
                setItem(static_cast<int>(row), static_cast<int>(column), Cell(row, column));
        for (int column = 0; column < NoteColumn; ++column)
            resizeColumnToContents(column);
        GiveNotesTheRest();
    }
    // What the other columns leave of the width; a longer note is scrolled to rather than cut.
    void GiveNotesTheRest() {
        const int rest = viewport()->width() - horizontalHeader()->sectionPosition(NoteColumn);
        resizeColumnToContents(NoteColumn);
        setColumnWidth(NoteColumn, std::max(columnWidth(NoteColumn), rest));
    }
    QTableWidgetItem* Cell(std::size_t row, std::size_t column) const {
        const std::string& text = Rows[row].Cells[column];
        auto* item = new QTableWidgetItem(ShownText(text));
        const bool number = column >= 1 && column <= 4;
        item->setTextAlignment((number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
        if (static_cast<int>(column) == NoteColumn) item->setToolTip(ShownText(text));
        if (Rows[row].Cells[5] != "fitted") item->setForeground(FaintText(palette()));
        return item;
    }
    // The rows that are marked; all of them where none is.
    void CopySelected() const {
        std::vector<std::size_t> places;
        for (int row = 0; row < rowCount(); ++row)
            if (selectionModel()->isRowSelected(row)) places.push_back(static_cast<std::size_t>(row));
        if (places.empty()) {
            places.resize(Rows.size());
            std::iota(places.begin(), places.end(), std::size_t{0});
        }
        Host.SetClipboardText(ParameterText(Rows, places));
    }
    std::vector<ParameterRow> Rows;
};

} // namespace

QWidget* MakeParameterPane(Binder& bind) {
    auto* list = new ParameterList;
    auto* none = new QLabel;
    none->setAlignment(Qt::AlignCenter);
    auto* pane = new QWidget;
    auto* all = new QVBoxLayout(pane);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(list);
    all->addWidget(none);
    bind.Also([list, none] {
        if (!MayFollowAnalysis()) return;
        const std::string reason = list->Follow();
        none->setText(reason.empty() ? "Parameters come with the fit."
                                     : ShownText("There is nothing to show: " + reason + "."));
        list->setVisible(list->rowCount() > 0);
        none->setVisible(list->rowCount() == 0);
    });
    return pane;
}

} // namespace Quillon
