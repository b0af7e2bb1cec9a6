#include "forms/Pieces.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

namespace Quillon {

namespace {

void BringIntoSight(QScrollArea* area, QWidget* now) {
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
}

} // namespace

QLabel* MakeLabel(Binder& bind, ControlRef control, bool wrap) {
    auto* label = new QLabel;
    label->setWordWrap(wrap);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    bind.Label(label, std::move(control));
    return label;
}

QString InLines(QString text, int letters, int mostLines) {
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

QLabel* MakeHead(Binder& bind, const ControlRef& control, int letters, int mostLines) {
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

QPushButton* MakeButton(Binder& bind, ControlRef control, std::function<void()> clicked, bool standard) {
    auto* button = new QPushButton;
    button->setAutoDefault(false);
    button->setDefault(standard);
    bind.Button(button, std::move(control), std::move(clicked));
    return button;
}

QPushButton* MakeCancel(Binder& bind, ControlRef control, std::function<void()> clicked) {
    QPushButton* button = MakeButton(bind, std::move(control), std::move(clicked));
    button->setProperty(GivesUp, true);
    return button;
}

QWidget* KeepPlace(QWidget* w) {
    QSizePolicy policy = w->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    w->setSizePolicy(policy);
    return w;
}

FieldEdit* MakeField(Binder& bind, ControlRef control, FieldHandlers handlers, int digits) {
    auto* field = new FieldEdit(control, std::move(handlers));
    field->setMinimumWidth(field->fontMetrics().horizontalAdvance(QString(digits, '0')) + 16);
    bind.Field(field, std::move(control));
    return field;
}

bool OptionButton::IsTabStop() const {
    if (isChecked()) return true;
    for (const QRadioButton* other : Group())
        if (other->isChecked()) return false;
    return !Group().isEmpty() && Group().front() == this;
}

void OptionButton::keyPressEvent(QKeyEvent* event) {
    const bool back = event->key() == Qt::Key_Up || event->key() == Qt::Key_Left;
    if (!back && event->key() != Qt::Key_Down && event->key() != Qt::Key_Right)
        return QRadioButton::keyPressEvent(event);
    const QList<QRadioButton*> group = Group();
    const auto next = group.indexOf(this) + (back ? -1 : 1);
    if (next < 0 || next >= group.size()) return;
    group[next]->setFocus(Qt::TabFocusReason);
    group[next]->click();
}

QList<QRadioButton*> OptionButton::Group() const {
    QList<QRadioButton*> all;
    if (parentWidget())
        all = parentWidget()->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly);
    all.removeIf([](const QRadioButton* option) { return !option->isEnabled(); });
    return all;
}

QRadioButton* MakeOption(Binder& bind, ControlRef control, std::function<void()> chosen) {
    auto* option = new OptionButton;
    bind.Option(option, std::move(control), std::move(chosen));
    bind.Also([option] { option->setFocusPolicy(option->IsTabStop() ? Qt::StrongFocus : Qt::ClickFocus); });
    return option;
}

QHBoxLayout* ButtonRow(std::initializer_list<QWidget*> left, std::initializer_list<QWidget*> right) {
    auto* row = new QHBoxLayout;
    for (QWidget* w : left)
        row->addWidget(w);
    row->addStretch(1);
    for (QWidget* w : right)
        row->addWidget(w);
    return row;
}

QGroupBox* MakeFrame(Binder& bind, const ControlRef& control) {
    auto* frame = new QGroupBox;
    bind.Visible(frame, control);
    bind.Also([frame, control] { frame->setTitle(WithoutAccessKey(control().Text)); });
    return frame;
}

Cell CellOf(const RowLayout& layout, int row) {
    const int onPage = layout.PageOf(row) == 0 ? row : row - layout.RowsPerPage();
    return {onPage % layout.RowsPerColumn, onPage / layout.RowsPerColumn};
}

ControlRef At(std::vector<Control>& controls, std::size_t i) {
    return [&controls, i]() -> Control& { return controls[i]; };
}

int ShownRows(std::size_t rows) {
    return static_cast<int>(std::max<std::size_t>(rows, 6));
}

QScrollArea* Scrolled(QLayout* layout, QWidget* window) {
    auto* inside = new QWidget(window);
    inside->setLayout(layout);
    auto* area = new QScrollArea(window);
    area->setWidget(inside);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    QObject::connect(qApp, &QApplication::focusChanged, area,
                     [area](QWidget*, QWidget* now) { BringIntoSight(area, now); });
    return area;
}

QLabel* RightLabel(Binder& bind, ControlRef control) {
    QLabel* label = MakeLabel(bind, std::move(control));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}

QLabel* CenteredLabel(Binder& bind, ControlRef control) {
    QLabel* label = MakeLabel(bind, std::move(control));
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace Quillon
