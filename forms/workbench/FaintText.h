// Text that steps back and is still read: parameters that were not fitted, data sets that are hidden.
#pragma once

#include <QColor>
#include <QPalette>

namespace Quillon {

// The colour of text that steps back on the ground of lists and tables. In: the palette of the list. Out: two
// parts of its text and one of its ground. The desktop's colour of what cannot be used is no measure here: on
// a dark desktop it has a contrast of less than 3 with the ground, but these numbers are read like all
// others.
inline QColor FaintText(const QPalette& palette) {
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    const QColor ground = palette.color(QPalette::Active, QPalette::Base);
    const auto mixed = [](int of, int with) { return (2 * of + with) / 3; };
    return QColor(mixed(text.red(), ground.red()), mixed(text.green(), ground.green()),
                  mixed(text.blue(), ground.blue()));
}

} // namespace Quillon
