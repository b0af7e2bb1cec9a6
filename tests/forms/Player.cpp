#include "tests/forms/Player.h"

#include "chart/dialogs/PrintEsc.h"
#include "commands/Analmenu.h"
#include "fit/forms/FitMon.h"
#include "fit/forms/WaitForm.h"
#include "forms/StartDesktop.h"
#include "forms/shell/Binding.h"
#include "forms/shell/DesktopPlatform.h"
#include "forms/shell/FormHost.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace Quillon {

namespace {

std::string Plain(QString caption) {
    return caption.remove('&').toStdString();
}

QMainWindow* MainWindow() {
    return qobject_cast<QMainWindow*>(OpenForm(AnalmenuName));
}

QAction* ItemOf(const std::string& name) {
    QAction* item = MainWindow()->findChild<QAction*>(QString::fromStdString(name));
    if (!item) ADD_FAILURE() << "the menu has no item " << name;
    return item;
}

// The menu of the bar that holds an item.
QAction* MenuOf(const QAction* item) {
    for (QAction* menu : MainWindow()->menuBar()->actions())
        if (menu->menu()->actions().contains(const_cast<QAction*>(item))) return menu;
    return nullptr;
}

bool AnyButtonDown() {
    for (const QWidget* window : QApplication::topLevelWidgets())
        for (const QAbstractButton* button : window->findChildren<QAbstractButton*>())
            if (button->isDown()) return true;
    return false;
}

bool StaysOpen(const QWidget* window) {
    const auto name = window->objectName();
    return name == FitMonName || name == WaitFormName || name == PrintEscName;
}

} // namespace

Player::Player() {
    static int count = 0;
    Folder = (std::filesystem::temp_directory_path() /
              ("quillon-windows-" + std::to_string(::getpid()) + "-" + std::to_string(++count)))
                 .string();
    std::filesystem::create_directories(Folder + "/config");
    qputenv("QUILLON_CONFIG", QByteArray::fromStdString(Folder + "/config"));
    InstallDesktopPlatform();
    Host.AskFile = [this](const FileRequest& request) {
        FileAnswer answer;
        if (Files.empty()) {
            ADD_FAILURE() << "nobody expected the file dialog " << request.Title;
            return answer;
        }
        const std::vector<std::string> paths = Files.front();
        Files.pop_front();
        if (paths.front().empty()) return answer;
        answer.Cancelled = false;
        answer.Paths = paths;
        answer.Path = paths.front();
        answer.Title = std::filesystem::path(answer.Path).filename().string();
        return answer;
    };
    Host.Beep = [] {};
    StartDesktop(Folder);
    QTimer::singleShot(0, &Here, [this] { Look(); });
    Serve();
}

Player::~Player() {
    for (const Step& step : Steps)
        ADD_FAILURE() << "the window never came: " << step.Window;
    EXPECT_TRUE(Files.empty()) << "a file dialog never came";
    UnloadForms();
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    std::error_code ignored;
    std::filesystem::remove_all(Folder, ignored);
}

void Player::Expect(const std::string& form, std::function<void()> play) {
    Steps.push_back({form, std::move(play)});
}

void Player::ExpectMessage(const std::string& text, const std::string& answer) {
    Steps.push_back({"message: " + text, [answer] {
                         auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                         ASSERT_NE(box, nullptr);
                         if (answer == "Escape") return Press(Qt::Key_Escape);
                         if (answer == "Return") return Press(Qt::Key_Return);
                         for (QAbstractButton* button : box->buttons())
                             if (Plain(button->text()) == answer) return Click(button);
                         ADD_FAILURE() << "the message has no button " << answer;
                     }});
}

// Looks again and again for a window that has come.
void Player::Look() {
    QTimer::singleShot(1, &Here, [this] { Look(); }); // goes on while this one is played
    QWidget* window = QApplication::activeModalWidget();
    if (!window) return;
    if (std::find(Playing.begin(), Playing.end(), window) != Playing.end()) return;
    const bool seen = std::find(Seen.begin(), Seen.end(), window) != Seen.end();
    if (!seen) return Meet(window);
    if (!StaysOpen(window)) Drop(window, "was left open");
}

void Player::Meet(QWidget* window) {
    Seen.emplace_back(window);
    const std::string name = NameOf(window);
    if (name.starts_with("message: ")) Messages.push_back(name.substr(9));
    if (Steps.empty()) return Drop(window, "was not expected");
    const Step step = Steps.front();
    if (step.Window != name) return Drop(window, "came instead of " + step.Window);
    Steps.pop_front();
    Playing.emplace_back(window);
    Serve();
    step.Play();
    Playing.pop_back();
}

std::string Player::NameOf(QWidget* window) {
    if (const auto* box = qobject_cast<QMessageBox*>(window)) return "message: " + box->text().toStdString();
    if (!window->objectName().isEmpty()) return window->objectName().toStdString();
    return window->metaObject()->className();
}

// Closes a window, so that the test comes to its end.
void Player::Drop(QWidget* window, const std::string& why) {
    ADD_FAILURE() << NameOf(window) << " " << why;
    if (++Dropped > 200) std::abort(); // a window that cannot be closed
    Work.AbortFit = FlagTrue;
    if (auto* dialog = qobject_cast<QDialog*>(window)) dialog->done(QDialog::Rejected);
}

// --- mouse -------------------------------------------------------------------------------------------------

QWidget* Player::Widget(const Control& control) {
    QWidget* widget = WidgetFor(control);
    if (!widget) ADD_FAILURE() << "no window shows the control " << control.Text;
    return widget;
}

QWidget* Player::Window(const std::string& form) {
    QWidget* window = OpenForm(form);
    if (!window) ADD_FAILURE() << form << " is not open";
    return window;
}

void Player::Click(QWidget* widget) {
    ASSERT_NE(widget, nullptr);
    ASSERT_TRUE(widget->isVisible()) << "a hidden widget is clicked";
    QTest::mouseClick(widget, Qt::LeftButton, {}, {std::min(8, widget->width() / 2), widget->height() / 2});
    Serve();
}

void Player::Click(const Control& control) {
    Click(Widget(control));
}

void Player::ClickMenu(const std::string& name) {
    QAction* item = ItemOf(name);
    ASSERT_NE(item, nullptr);
    ASSERT_TRUE(item->isEnabled()) << name;
    QMenuBar* bar = MainWindow()->menuBar();
    QAction* menu = MenuOf(item);
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(menu).center());
    ASSERT_TRUE(menu->menu()->isVisible()) << menu->text().toStdString();
    QTest::mouseClick(menu->menu(), Qt::LeftButton, {}, menu->menu()->actionGeometry(item).center());
    Serve();
}

// --- keys --------------------------------------------------------------------------------------------------

void Player::Press(int key, Qt::KeyboardModifiers modifiers) {
    QWidget* to = QApplication::activePopupWidget();
    if (!to) to = QApplication::focusWidget();
    if (!to) to = QApplication::activeWindow();
    ASSERT_NE(to, nullptr) << "nothing has the focus";
    QTest::keyClick(to, static_cast<Qt::Key>(key), modifiers);
    Serve();
    // A button that is pressed by its access key shows that for a moment before it acts.
    for (int i = 0; i < 2000 && modifiers == Qt::AltModifier && AnyButtonDown(); ++i)
        QTest::qWait(1);
    Serve();
}

void Player::Type(const char* text) {
    ASSERT_NE(QApplication::focusWidget(), nullptr) << "nothing has the focus";
    QTest::keyClicks(QApplication::focusWidget(), text);
    Serve();
}

void Player::PressMenu(Qt::Key key, const std::string& name) {
    QAction* item = ItemOf(name);
    ASSERT_NE(item, nullptr);
    ASSERT_TRUE(item->isEnabled()) << name;
    Press(key, Qt::AltModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr) << "the access key opened no menu";
    for (int i = 0; i < 40 && menu->activeAction() != item; ++i)
        QTest::keyClick(menu, Qt::Key_Down);
    ASSERT_EQ(menu->activeAction(), item);
    QTest::keyClick(menu, Qt::Key_Return);
    Serve();
}

void Player::TabTo(const Control& control) {
    const QWidget* wanted = Widget(control);
    for (int i = 0; i < 200 && QApplication::focusWidget() != wanted; ++i)
        Press(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), wanted) << "Tab never comes to " << control.Text;
}

void Player::Drag(QWidget* widget, QPoint from, QPoint to) {
    const auto send = [&](QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, QPointF(at), QPointF(widget->mapToGlobal(at)), button, held, {});
        QApplication::sendEvent(widget, &event);
    };
    QTest::mousePress(widget, Qt::LeftButton, {}, from);
    send(QEvent::MouseMove, (from + to) / 2, Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    Serve();
}

// There is no window manager here that activates a window that opens, or the one behind one that closes.
void Player::Serve() {
    for (int i = 0; i < 20; ++i) {
        QApplication::processEvents();
        QWidget* front = QApplication::activeModalWidget();
        if (!front) front = FrontWindow();
        const bool active =
            !front || QApplication::activeWindow() == front || QApplication::activePopupWidget();
        if (active && i >= 2) return;
        if (!active) front->activateWindow();
    }
}

} // namespace Quillon
