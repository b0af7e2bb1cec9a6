#include "forms/shell/ButtonStyle.h"

#include <QApplication>
#include <QProxyStyle>

namespace Quillon {

namespace {

class WordsAlone : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* more) const override {
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
        return QProxyStyle::styleHint(hint, option, widget, more);
    }
};

} // namespace

void ShowButtonsAsWords() {
    if (QApplication::style()->styleHint(QStyle::SH_DialogButtonBox_ButtonsHaveIcons) != 0)
        QApplication::setStyle(new WordsAlone); // on top of the desktop's own
}

} // namespace Quillon
