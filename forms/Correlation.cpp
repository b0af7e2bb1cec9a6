// The correlations of the parameters of a fit.
#include "reporting/values/Correlation.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QTableWidget>

#include <algorithm>

namespace Quillon {

namespace {

class CorrelationWindow : public QDialog {
public:
    explicit CorrelationWindow(QWidget* parent) : QDialog(parent), Bind(this) {
        const int n = static_cast<int>(Correlation.Names.size());
        auto* table = new QTableWidget(n, n);
        table->setEditTriggers(QAbstractItemView::NoEditTriggers);
        table->setTabKeyNavigation(false); // Tab leaves the table
        QStringList names;
        for (const auto& name : Correlation.Names)
            names << ShownText(name);
        table->setHorizontalHeaderLabels(names);
        table->setVerticalHeaderLabels(names);
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j)
                table->setItem(i, j, Cell(i, j));
        table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().lineSpacing() + 8);
        const int columns = n * FillWidth(*table);
        auto* all = new QVBoxLayout(this);
        all->addWidget(table, 1);
        for (const auto legend : {&CorrelationForm::HighLegend, &CorrelationForm::VeryHighLegend}) {
            QLabel* label = MakeLabel(Bind, [legend]() -> Control& { return Correlation.*legend; });
            label->setMargin(3);
            all->addWidget(label, 0, Qt::AlignLeft); // a patch of the colour, no wider than its text
        }
        auto* copy = new QPushButton("Copy &Table");
        copy->setAutoDefault(false);
        connect(copy, &QPushButton::clicked, this, [table] { CopyTable(*table); });
        all->addLayout(ButtonRow({copy}, {MakeButton(
                                             Bind, []() -> Control& { return Correlation.OkButton; },
                                             CorrelationOkButton, true)}));
        setWindowTitle(ShownText(Correlation.Caption));
        const QSize usual = ForFont(0, 210 + n * 28);
        resize(std::max(columns + table->verticalHeader()->sizeHint().width() + 40, 360), usual.height());
    }

private:
    static QTableWidgetItem* Cell(int i, int j) {
        const CorrelationCell& cell =
            Correlation.Cells[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
        auto* item = new QTableWidgetItem(ShownText(cell.Text));
        item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        const std::uint32_t color = CorrelationColor(cell.Class);
        if (color == DefaultColor) return item;
        item->setBackground(QColor(static_cast<int>(color & 0xFF), static_cast<int>((color >> 8) & 0xFF),
                                   static_cast<int>((color >> 16) & 0xFF)));
        item->setForeground(Qt::black);
        return item;
    }
    // The columns share the width of the window; none is narrower than what it holds. Answers that width.
    static int FillWidth(QTableWidget& table) {
        table.resizeColumnsToContents();
        int widest = table.fontMetrics().horizontalAdvance(WidestCorrelationText);
        for (int i = 0; i < table.columnCount(); ++i)
            widest = std::max(widest, table.columnWidth(i));
        table.horizontalHeader()->setMinimumSectionSize(widest);
        table.horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
        return widest;
    }
    static void CopyTable(const QTableWidget& table) {
        QString text;
        for (int i = -1; i < table.rowCount(); ++i) {
            for (int j = -1; j < table.columnCount(); ++j) {
                if (j >= 0) text += '\t';
                if (i < 0 && j >= 0)
                    text += table.horizontalHeaderItem(j)->text();
                else if (i >= 0 && j < 0)
                    text += table.verticalHeaderItem(i)->text();
                else if (i >= 0)
                    text += table.item(i, j)->text();
            }
            text += '\n';
        }
        QApplication::clipboard()->setText(text);
    }
    Binder Bind;
};

QWidget* MakeCorrelation(QWidget* parent) {
    return new CorrelationWindow(parent);
}

const FormWindow Registered(CorrelationName, MakeCorrelation);

} // namespace

} // namespace Quillon
