#include "tests/forms/RandomHands.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QPointer>
#include <QTest>
#include <QUrl>
#include <QWheelEvent>

#include <array>

namespace Quillon {

namespace {

bool IsPressedByItsKey(const QWidget& window) {
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
        if (button->isDown()) return true;
    return false;
}

} // namespace

std::string RandomHands::DoOne(QWidget& window) {
    const std::size_t what = Below(100);
    if (what < 46) return Click(window);
    if (what < 90) return Key(window);
    if (what < 95) return Drag(window);
    return what < 97 ? Resize(window) : Wheel(window);
}

// A part of the window that is there to be worked; the window itself where there is none.
QWidget* RandomHands::Child(QWidget& window) {
    QList<QWidget*> children;
    for (QWidget* child : window.findChildren<QWidget*>())
        if (child->isVisible() && child->isEnabled() && child->window() == &window) children << child;
    return children.isEmpty() ? &window : children[static_cast<qsizetype>(Below(10000)) % children.size()];
}

// Each press may end the window.
std::string RandomHands::Click(QWidget& window) {
    const QPointer<QWidget> widget = Child(window);
    const std::string told = std::string("click ") + widget->metaObject()->className();
    const QPoint at(Within(widget->width()), Within(widget->height()));
    const bool twice = Chance(12);
    const auto button = twice || Chance(92) ? Qt::LeftButton
                        : Chance(70)        ? Qt::RightButton
                                            : Qt::MiddleButton;
    QTest::mousePress(widget, button, {}, at);
    if (widget) QTest::mouseRelease(widget, button, {}, at);
    if (!twice || !widget) return told;
    QMouseEvent second(QEvent::MouseButtonDblClick, QPointF(at), QPointF(widget->mapToGlobal(at)), button,
                       button, {});
    QApplication::sendEvent(widget, &second);
    if (widget) QTest::mouseRelease(widget, button, {}, at);
    return told;
}

std::string RandomHands::Drag(QWidget& window) {
    const QPointer<QWidget> widget = Child(window);
    const std::string told = std::string("drag ") + widget->metaObject()->className();
    const auto button = Chance(80) ? Qt::LeftButton : Qt::MiddleButton;
    const auto place = [&] {
        return QPoint(Within(widget->width() + 40) - 20, Within(widget->height() + 40) - 20);
    };
    QTest::mousePress(widget, button, {}, {widget->width() / 2, widget->height() / 2});
    for (int i = 0; i < 3 && widget; ++i) {
        const QPoint at = place();
        QMouseEvent move(QEvent::MouseMove, QPointF(at), QPointF(widget->mapToGlobal(at)), Qt::NoButton,
                         button, {});
        QApplication::sendEvent(widget, &move);
    }
    if (widget) QTest::mouseRelease(widget, button, {}, place());
    return told;
}

std::string RandomHands::Wheel(QWidget& window) {
    QWidget* widget = Child(window);
    const QPointF at(Within(widget->width()), Within(widget->height()));
    QWheelEvent wheel(at, widget->mapToGlobal(at), {}, {0, Chance(50) ? 120 : -120}, Qt::NoButton,
                      Chance(20) ? Qt::ControlModifier : Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &wheel);
    return "wheel";
}

std::string RandomHands::Resize(QWidget& window) {
    window.resize(200 + Within(1000), 150 + Within(700));
    return "resize";
}

// A button that is pressed by its access key shows that for a moment before it acts: what comes next comes
// after that, on a slow machine too.
std::string RandomHands::Key(QWidget& window) {
    constexpr std::array keys{
        Qt::Key_Tab,   Qt::Key_Backtab, Qt::Key_Return,   Qt::Key_Escape, Qt::Key_Space,  Qt::Key_Left,
        Qt::Key_Right, Qt::Key_Up,      Qt::Key_Down,     Qt::Key_Home,   Qt::Key_Delete, Qt::Key_Backspace,
        Qt::Key_End,   Qt::Key_PageUp,  Qt::Key_PageDown, Qt::Key_F1,     Qt::Key_F10};
    constexpr std::array modifiers{Qt::NoModifier, Qt::NoModifier, Qt::NoModifier, Qt::ControlModifier,
                                   Qt::ShiftModifier};
    QWidget* to = QApplication::focusWidget();
    if (!to || to->window() != &window) to = &window;
    const QPointer<QWidget> stands = &window;
    const std::size_t what = Below(100);
    if (what < 35)
        QTest::keyClick(to, "0123456789.-+eEdD,/?aAbBcCpP28 \xE4~"[Below(31)]);
    else if (what < 85)
        QTest::keyClick(to, OneOf(keys), OneOf(modifiers));
    else if (what < 93)
        QTest::keyClick(to,
                        OneOf(std::array{Qt::Key_A, Qt::Key_C, Qt::Key_V, Qt::Key_X, Qt::Key_Z, Qt::Key_Y}),
                        Qt::ControlModifier);
    else
        QTest::keyClick(to, static_cast<Qt::Key>(Qt::Key_A + Within(26)), Qt::AltModifier);
    for (int i = 0; i < 500 && what >= 93 && stands && IsPressedByItsKey(*stands); ++i)
        QTest::qWait(1);
    return "key";
}

void RandomHands::InMenu(QMenu& menu) {
    const auto actions = menu.actions();
    if (actions.isEmpty() || Chance(30)) {
        menu.close();
        return;
    }
    if (Chance(30))
        return QTest::keyClick(&menu, OneOf(std::array{Qt::Key_Down, Qt::Key_Up, Qt::Key_Return}));
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(OneOf(actions)).center());
}

void RandomHands::InPopup(QWidget& popup) {
    if (auto* menu = qobject_cast<QMenu*>(&popup)) return InMenu(*menu);
    QWidget* to = popup.focusWidget() ? popup.focusWidget() : &popup;
    if (Chance(30))
        popup.close();
    else
        QTest::keyClick(to, OneOf(std::array{Qt::Key_Down, Qt::Key_Up, Qt::Key_Return, Qt::Key_Escape}));
}

void RandomHands::Drop(QWidget& window, const std::vector<std::string>& paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const std::string& path : paths)
        urls << QUrl::fromLocalFile(QString::fromStdString(path));
    data.setUrls(urls);
    QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(&window, &enter);
    if (!enter.isAccepted()) return;
    QDropEvent drop({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&window, &drop);
}

} // namespace Quillon
