#include "forms/shell/ReaderNames.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>

#include <algorithm>
#include <limits>

namespace Quillon {

namespace {

QRect PlaceIn(const QWidget& window, const QWidget& widget) {
    return {widget.mapTo(&window, QPoint(0, 0)), widget.size()};
}

// What has a text shows it to a reader as to an eye.
bool NeedsName(const QWidget& widget) {
    if (!widget.accessibleName().isEmpty() || widget.focusPolicy() == Qt::NoFocus) return false;
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return button->text().isEmpty();
    return qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
           qobject_cast<const QAbstractItemView*>(&widget) || qobject_cast<const QPlainTextEdit*>(&widget) ||
           qobject_cast<const QTextEdit*>(&widget) || qobject_cast<const QAbstractSpinBox*>(&widget);
}

QString Plain(const QLabel& label) {
    QString text = label.text();
    return text.remove('&').simplified();
}

struct Nearby {
    const QLabel* Label = nullptr;
    int Away = std::numeric_limits<int>::max();
    void Take(const QLabel* label, int away) {
        if (away >= 0 && away < Away) *this = {label, away};
    }
};

// A reader finds the label of a field by itself, but not that of a list or a table.
void NameByBuddy(const QLabel& label, QWidget& widget) {
    if (qobject_cast<QAbstractItemView*>(&widget)) widget.setAccessibleName(Plain(label));
}

void NameOne(const QWidget& window, const QList<QLabel*>& labels, QWidget& widget) {
    const QRect place = PlaceIn(window, widget);
    Nearby left, above;
    for (const QLabel* label : labels) {
        if (label->buddy() == &widget) return NameByBuddy(*label, widget);
        if (label->isHidden() || Plain(*label).isEmpty()) continue;
        const QRect at = PlaceIn(window, *label);
        const bool oneLine = at.top() <= place.center().y() && at.bottom() >= place.center().y();
        const bool oneColumn = at.left() <= place.right() && at.right() >= place.left();
        if (oneLine) left.Take(label, place.left() - at.right());
        if (oneColumn) above.Take(label, place.top() - at.bottom());
    }
    QStringList names;
    for (const QLabel* label : {left.Label, above.Label})
        if (label) names << Plain(*label);
    if (names.isEmpty() && !widget.toolTip().isEmpty()) names << widget.toolTip().simplified();
    if (names.isEmpty()) names << window.windowTitle();
    widget.setAccessibleName(names.join(", "));
}

} // namespace

void NameForReaders(QWidget& window) {
    const QList<QLabel*> labels = window.findChildren<QLabel*>();
    for (QWidget* widget : window.findChildren<QWidget*>())
        if (NeedsName(*widget)) NameOne(window, labels, *widget);
}

} // namespace Quillon
