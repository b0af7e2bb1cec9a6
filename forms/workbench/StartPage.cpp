#include "forms/workbench/StartPage.h"

#include "commands/Workbench.h"
#include "forms/Pieces.h"

namespace Quillon {

namespace {

// A button of the page: it acts between commands alone, as the menu does.
QPushButton* PageButton(Binder& bind, ControlRef control, std::function<void()> clicked) {
    QPushButton* button = MakeButton(bind, std::move(control), {});
    QObject::connect(button, &QPushButton::clicked, button, [clicked] { RunWhenIdle(clicked); });
    return button;
}

QLabel* Heading(Binder& bind, ControlRef control, double larger) {
    QLabel* label = MakeLabel(bind, std::move(control), true);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * larger);
    font.setBold(true);
    label->setFont(font);
    return label;
}

// A column of buttons that look like lines of a list.
void AddRows(QVBoxLayout* column, const std::vector<QPushButton*>& rows) {
    for (QPushButton* row : rows) {
        row->setFlat(true);
        row->setStyleSheet("QPushButton { text-align: left; padding: 4px } "
                           "QPushButton:hover { text-decoration: underline }");
        row->setCursor(Qt::PointingHandCursor);
        row->setMaximumWidth(row->fontMetrics().horizontalAdvance(QString(60, 'x')));
        column->addWidget(row);
    }
}

std::vector<QPushButton*> RecentRows(Binder& bind) {
    std::vector<QPushButton*> rows;
    for (std::size_t i = 0; i < Workbench.Recent.size(); ++i)
        rows.push_back(PageButton(
            bind, [i]() -> Control& { return Workbench.Recent[i]; }, [i] { RecentFitButton(i); }));
    return rows;
}

// A session to a line, with the button that discards it behind.
void AddSessions(Binder& bind, QVBoxLayout* column) {
    column->addWidget(Heading(
        bind, []() -> Control& { return Workbench.SessionsHead; }, 1.1));
    for (std::size_t i = 0; i < Workbench.Sessions.size(); ++i) {
        auto* row = new QHBoxLayout;
        row->addWidget(PageButton(
            bind, [i]() -> Control& { return Workbench.Sessions[i]; }, [i] { SessionButton(i); }));
        row->addWidget(PageButton(
            bind, [i]() -> Control& { return Workbench.Discards[i]; }, [i] { DiscardButton(i); }));
        row->addStretch(1);
        column->addLayout(row);
    }
}

std::vector<QPushButton*> ExampleRows(Binder& bind) {
    std::vector<QPushButton*> rows;
    for (std::size_t i = 0; i < Workbench.Examples.size(); ++i)
        rows.push_back(PageButton(
            bind, [i]() -> Control& { return Workbench.Examples[i]; }, [i] { ExampleButton(i); }));
    return rows;
}

} // namespace

QWidget* MakeStartPage(Binder& bind) {
    auto* column = new QVBoxLayout;
    column->setContentsMargins(32, 24, 32, 24);
    column->setSpacing(6);
    column->addWidget(Heading(
        bind, []() -> Control& { return Workbench.Title; }, 1.4));
    column->addSpacing(12);
    auto* open = new QHBoxLayout;
    open->addWidget(PageButton(
        bind, []() -> Control& { return Workbench.OpenScans; }, OpenScansButton));
    open->addWidget(PageButton(
        bind, []() -> Control& { return Workbench.OpenFit; }, OpenFitButton));
    open->addStretch(1);
    column->addLayout(open);
    column->addWidget(MakeLabel(
        bind, []() -> Control& { return Workbench.Hint; }, true));
    column->addSpacing(12);
    AddSessions(bind, column);
    column->addSpacing(12);
    column->addWidget(Heading(
        bind, []() -> Control& { return Workbench.RecentHead; }, 1.1));
    AddRows(column, RecentRows(bind));
    column->addSpacing(12);
    column->addWidget(Heading(
        bind, []() -> Control& { return Workbench.ExamplesHead; }, 1.1));
    AddRows(column, ExampleRows(bind));
    column->addStretch(1);
    return Scrolled(column);
}

} // namespace Quillon
