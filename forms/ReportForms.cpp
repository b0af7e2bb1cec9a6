// The results of a fit and the correlations of its parameters.
#include "chart/CHART.h"
#include "fit/WaitForm.h"
#include "forms/Pieces.h"
#include "forms/Windows.h"
#include "forms/shell/ChartBox.h"
#include "forms/shell/PrintReport.h"
#include "graphs/FitGraphs.h"
#include "graphs/ResidualGraphs.h"
#include "models/ShowConstraintForm.h"
#include "reporting/Correlation.h"
#include "reporting/Results.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QTableWidget>

#include <algorithm>

namespace Quillon {

namespace {

QPlainTextEdit* Lines(Binder& bind, ControlRef control, int rows) {
    auto* text = new QPlainTextEdit;
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    text->setMinimumHeight(text->fontMetrics().lineSpacing() * rows + 12);
    text->setTabChangesFocus(true);
    bind.Text(text, std::move(control));
    return text;
}

QWidget* StatisticsFrame(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, []() -> Control& { return Results.Frame2; });
    auto* grid = new QGridLayout(frame);
    using Member = Control ResultsForm::*;
    const std::pair<Member, Member> rows[] = {{&ResultsForm::SumSqLabel, &ResultsForm::SumSqValue},
                                              {&ResultsForm::DegFreedomLabel, &ResultsForm::DegFreedom},
                                              {&ResultsForm::RmsLabel, &ResultsForm::RmsValue},
                                              {&ResultsForm::ZScoreLabel, &ResultsForm::ZScore}};
    int line = 0;
    for (const auto& [label, value] : rows) {
        grid->addWidget(MakeLabel(bind, [m = label]() -> Control& { return Results.*m; }), line, 0);
        QLabel* number = MakeLabel(bind, [m = value]() -> Control& { return Results.*m; });
        number->setAlignment(Qt::AlignRight);
        grid->addWidget(number, line++, 1);
    }
    return frame;
}

// The small graph: drawn once, when the window opens, into a chart of its own.
QWidget* SmallGraph() {
    auto* box = new ChartPicture;
    box->setMinimumSize(440, 280);
    box->DrawOnce([] {
        if (Work.OverlayPlot)
            MakeFitGraph(FitGraph::Overlay, 0, {});
        else
            MakeResidualGraph(ResidualAxis::X, 0);
    });
    return box;
}

class ResultsWindow : public QDialog {
public:
    explicit ResultsWindow(QWidget* parent) : QDialog(parent), Bind(this) {
        auto* left = new QVBoxLayout;
        left->addWidget(StatisticsFrame(Bind));
        left->addWidget(MakeLabel(
            Bind, []() -> Control& { return Results.Message; }, true));
        left->addWidget(MakeLabel(Bind, []() -> Control& { return Results.ConstraintText; }));
        left->addWidget(SmallGraph(), 1);
        auto* right = new QVBoxLayout;
        auto* heads = new QHBoxLayout;
        heads->addWidget(MakeLabel(Bind, []() -> Control& { return Results.Label1; }));
        heads->addStretch(1);
        heads->addWidget(MakeLabel(Bind, []() -> Control& { return Results.Label2; }));
        right->addLayout(heads);
        right->addWidget(Lines(
                             Bind, []() -> Control& { return Results.ParmsFit; }, 12),
                         3);
        right->addWidget(MakeLabel(Bind, []() -> Control& { return Results.Label3; }));
        right->addWidget(Lines(
                             Bind, []() -> Control& { return Results.ParmsConst; }, 4),
                         1);
        auto* both = new QHBoxLayout;
        both->addLayout(left, 1);
        both->addLayout(right, 1);
        QGroupBox* frame = MakeFrame(Bind, []() -> Control& { return Results.Frame1; });
        frame->setLayout(both);
        auto* all = new QVBoxLayout(this);
        all->addWidget(frame, 1);
        all->addLayout(Buttons());
        Bind.Also([this] { setWindowTitle(ShownText(Results.Caption)); });
        resize(1080, 620);
    }

private:
    QLayout* Buttons() {
        const auto button = [this](Control ResultsForm::*which, std::function<void()> clicked,
                                   bool standard = false) {
            return MakeButton(
                Bind, [which]() -> Control& { return Results.*which; }, std::move(clicked), standard);
        };
        return ButtonRow({button(&ResultsForm::ComputeConfidence, [] { ResultsComputeConfidence(); }),
                          button(&ResultsForm::ViewCorr, ResultsViewCorr),
                          button(&ResultsForm::ShowConstraintButton, ShowConstraintMatch),
                          button(&ResultsForm::Command1, [] { PrintReportWith(false); }),
                          button(&ResultsForm::Command2, [] { PrintReportWith(true); })},
                         {button(&ResultsForm::OkButton, ResultsOkButton, true)});
    }
    Binder Bind;
};

class CorrelationWindow : public QDialog {
public:
    explicit CorrelationWindow(QWidget* parent) : QDialog(parent), Bind(this) {
        const int n = static_cast<int>(Correlation.Names.size());
        auto* table = new QTableWidget(n, n);
        table->setEditTriggers(QAbstractItemView::NoEditTriggers);
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
        resize(std::clamp(columns + table->verticalHeader()->sizeHint().width() + 40, 360, 1100),
               std::min(700, 210 + n * 28));
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

} // namespace

QWidget* MakeResults(QWidget* parent) {
    return new ResultsWindow(parent);
}
QWidget* MakeCorrelation(QWidget* parent) {
    return new CorrelationWindow(parent);
}

} // namespace Quillon
