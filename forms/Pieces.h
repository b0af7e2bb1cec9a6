#pragma once
// Widgets that the windows are made of, bound to their records as they are made.

#include "fit/forms/RowLayout.h"
#include "forms/shell/Binding.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace Quillon {

inline QLabel* MakeLabel(Binder& bind, ControlRef control, bool wrap = false) {
    auto* label = new QLabel;
    label->setWordWrap(wrap);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    bind.Label(label, std::move(control));
    return label;
}

// A text of more than so many letters in lines of much the same length, broken at the blanks nearest to where
// equal lines would end.
inline QString InLines(QString text, int letters, int mostLines) {
    const auto lines = std::min<qsizetype>((text.size() + letters - 1) / letters, mostLines);
    for (qsizetype line = 1; line < lines; ++line) {
        const auto end = text.size() * line / lines;
        const auto before = text.lastIndexOf(' ', end);
        const auto behind = text.indexOf(' ', end);
        const auto at = before < 0 || (behind >= 0 && behind - end < end - before) ? behind : before;
        if (at >= 0) text[at] = '\n';
    }
    return text;
}

// The head of a column. A long one is broken by itself rather than wrapped: a wrapped label does not tell the
// layout how high it becomes.
inline QLabel* MakeHead(Binder& bind, const ControlRef& control, int letters = 24, int mostLines = 2) {
    auto* head = new QLabel;
    bind.Visible(head, control);
    bind.Also([head, control, letters, mostLines] {
        head->setText(InLines(WithoutAccessKey(control().Text).simplified(), letters, mostLines));
    });
    QFont font = head->font();
    font.setBold(true);
    head->setFont(font);
    head->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
    return head;
}

inline QPushButton* MakeButton(Binder& bind, ControlRef control, std::function<void()> clicked,
                               bool standard = false) {
    auto* button = new QPushButton;
    button->setAutoDefault(false);
    button->setDefault(standard);
    bind.Button(button, std::move(control), std::move(clicked));
    return button;
}

// A button that takes everything back: the field that a click on it leaves is not checked.
inline QPushButton* MakeCancel(Binder& bind, ControlRef control, std::function<void()> clicked) {
    QPushButton* button = MakeButton(bind, std::move(control), std::move(clicked));
    button->setProperty(GivesUp, true);
    return button;
}

// A widget whose place stays when it is hidden, so that a table or a page does not jump.
inline QWidget* KeepPlace(QWidget* w) {
    QSizePolicy policy = w->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    w->setSizePolicy(policy);
    return w;
}

// A text box wide enough for so many digits.
inline FieldEdit* MakeField(Binder& bind, ControlRef control, FieldHandlers handlers, int digits = 12) {
    auto* field = new FieldEdit(control, std::move(handlers));
    field->setMinimumWidth(field->fontMetrics().horizontalAdvance(QString(digits, '0')) + 16);
    bind.Field(field, std::move(control));
    return field;
}

// One of a frame's options: Tab reaches the chosen one, or the first where none is chosen, and the arrow keys
// choose the next one.
class OptionButton : public QRadioButton {
public:
    bool IsTabStop() const {
        if (isChecked()) return true;
        for (const QRadioButton* other : Group())
            if (other->isChecked()) return false;
        return !Group().isEmpty() && Group().front() == this;
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        const bool back = event->key() == Qt::Key_Up || event->key() == Qt::Key_Left;
        if (!back && event->key() != Qt::Key_Down && event->key() != Qt::Key_Right)
            return QRadioButton::keyPressEvent(event);
        const QList<QRadioButton*> group = Group();
        const auto next = group.indexOf(this) + (back ? -1 : 1);
        if (next < 0 || next >= group.size()) return;
        group[next]->setFocus(Qt::TabFocusReason);
        group[next]->click();
    }

private:
    QList<QRadioButton*> Group() const { // those that can be chosen
        QList<QRadioButton*> all;
        if (parentWidget())
            all = parentWidget()->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly);
        all.removeIf([](const QRadioButton* option) { return !option->isEnabled(); });
        return all;
    }
};

inline QRadioButton* MakeOption(Binder& bind, ControlRef control, std::function<void()> chosen) {
    auto* option = new OptionButton;
    bind.Option(option, std::move(control), std::move(chosen));
    bind.Also([option] { option->setFocusPolicy(option->IsTabStop() ? Qt::StrongFocus : Qt::ClickFocus); });
    return option;
}

// The row of buttons at the foot of a window: what stands alone to the left, the ways out to the right.
inline QHBoxLayout* ButtonRow(std::initializer_list<QWidget*> left, std::initializer_list<QWidget*> right) {
    auto* row = new QHBoxLayout;
    for (QWidget* w : left)
        row->addWidget(w);
    row->addStretch(1);
    for (QWidget* w : right)
        row->addWidget(w);
    return row;
}

// A frame whose title is a control's caption.
inline QGroupBox* MakeFrame(Binder& bind, const ControlRef& control) {
    auto* frame = new QGroupBox;
    bind.Visible(frame, control);
    bind.Also([frame, control] { frame->setTitle(WithoutAccessKey(control().Text)); });
    return frame;
}

// Where a row of parameters stands in the grid: down the first column of its page, then down the second.
struct Cell {
    int Row, Block;
};
inline Cell CellOf(const RowLayout& layout, int row) {
    const int onPage = layout.PageOf(row) == 0 ? row : row - layout.RowsPerPage();
    return {onPage % layout.RowsPerColumn, onPage / layout.RowsPerColumn};
}

inline ControlRef At(std::vector<Control>& controls, std::size_t i) {
    return [&controls, i]() -> Control& { return controls[i]; };
}

// Rows that a window opens with; a few more than there are look better than a strip.
inline int ShownRows(std::size_t rows) {
    return static_cast<int>(std::max<std::size_t>(rows, 6));
}

// What does not fit the screen scrolls; a field that gets the focus comes into sight with as much of the
// label before it as there is room for. With the window named whose layout it was, the order of its fields
// for Tab stays.
inline QScrollArea* Scrolled(QLayout* layout, QWidget* window = nullptr) {
    auto* inside = new QWidget(window);
    inside->setLayout(layout);
    auto* area = new QScrollArea(window);
    area->setWidget(inside);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    QObject::connect(qApp, &QApplication::focusChanged, area, [area](QWidget*, QWidget* now) {
        constexpr int label = 120, line = 40; // pixels
        const QWidget* all = area->widget();
        if (!now || !all || !all->isAncestorOf(now)) return;
        area->ensureWidgetVisible(now, 0, line);
        // That was the cursor's place. A field is seen whole, unless it is a wide text; its label
        // stays in sight where both have room.
        const int left = now->mapTo(all, QPoint(0, 0)).x(), room = area->viewport()->width();
        const int right = left + now->width() - room;
        QScrollBar* bar = area->horizontalScrollBar();
        const int seen = 2 * now->width() > room ? bar->value() : std::max(bar->value(), right);
        bar->setValue(std::min(seen, std::max(left - label, std::min(left, right))));
    });
    return area;
}

inline QLabel* RightLabel(Binder& bind, ControlRef control) {
    QLabel* label = MakeLabel(bind, std::move(control));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}

inline QLabel* CenteredLabel(Binder& bind, ControlRef control) {
    QLabel* label = MakeLabel(bind, std::move(control));
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace Quillon
