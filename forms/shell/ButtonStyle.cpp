#include "forms/shell/ButtonStyle.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

namespace Quillon {

namespace {

// A frame within the widget, so many pixels from its edge.
void DrawFocus(const QStyleOption& option, QPainter& painter, int inside) {
    painter.save();
    painter.setPen(QPen(option.palette.color(QPalette::Highlight), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(option.rect.adjusted(inside, inside, -inside - 1, -inside - 1));
    painter.restore();
}

class OwnStyle : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* more) const override {
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
        return QProxyStyle::styleHint(hint, option, widget, more);
    }
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        QProxyStyle::drawControl(element, option, painter, widget);
        if (widget == nullptr || !widget->hasFocus()) return;
        constexpr int ofButton = 3;
        if (element == CE_PushButton) DrawFocus(*option, *painter, ofButton);
        if (element == CE_ShapedFrame && qobject_cast<const QAbstractScrollArea*>(widget))
            DrawFocus(*option, *painter, 0);
    }
};

} // namespace

void TakeOwnStyle() {
    static bool taken = false;
    if (!taken) QApplication::setStyle(new OwnStyle); // on top of the desktop's own
    taken = true;
}

} // namespace Quillon
