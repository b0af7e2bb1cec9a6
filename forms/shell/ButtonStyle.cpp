#include "forms/shell/ButtonStyle.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

#include <algorithm>

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

// The edge of a box or a circle to be ticked, as bright as is needed to be seen on a dark window: the style
// takes a shade that is all but the window's own there.
void DrawEdge(const QStyleOption& option, QPainter& painter, bool round) {
    if (option.palette.color(QPalette::Window).lightness() > 127) return;
    QColor edge = option.palette.color(QPalette::WindowText);
    edge.setAlphaF(option.state & QStyle::State_Enabled ? 0.65F : 0.3F);
    painter.save();
    painter.setPen(QPen(edge, 1));
    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing, round);
    const QRect inside = option.rect.adjusted(0, 0, -1, -1);
    round ? painter.drawEllipse(inside) : painter.drawRect(inside);
    painter.restore();
}

class OwnStyle : public QProxyStyle {
public:
    // What is ticked grows with the letters beside it.
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        const int usual = QProxyStyle::pixelMetric(metric, option, widget);
        if (metric != PM_IndicatorWidth && metric != PM_IndicatorHeight &&
            metric != PM_ExclusiveIndicatorWidth && metric != PM_ExclusiveIndicatorHeight)
            return usual;
        const QFontMetrics letters = widget ? widget->fontMetrics() : QFontMetrics(QApplication::font());
        return std::max(usual, letters.height() * 4 / 5);
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck)
            DrawEdge(*option, *painter, false);
        if (element == PE_IndicatorRadioButton) DrawEdge(*option, *painter, true);
    }
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
