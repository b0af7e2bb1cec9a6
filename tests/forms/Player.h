#pragma once
// Plays a user on the real windows of the program: clicks, drags and keys go to widgets, questions are
// answered on the message boxes that show them. File dialogs alone are answered at the seam.
//
// A command that opens a window returns when that window is closed, so what is to be done in it is named
// beforehand: Expect queues the windows in the order in which they will come. A window that nobody expects
// fails the test, and so does one that never came.

#include "platform/Controls.h"

#include <QPointer>
#include <QString>
#include <QWidget>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace Quillon {

class Player {
public:
    Player(); // starts the program in a folder of its own
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    // The window of a form by its name; play has to close it, but for the monitor and the search window.
    void Expect(const std::string& form, std::function<void()> play);
    // A message; answer is the text of the button that is clicked, or a key ("Escape", "Return").
    void ExpectMessage(const std::string& text, const std::string& answer = "OK");
    // What file dialogs answer, in their order; "" cancels.
    void GiveFile(const std::string& path) { Files.push_back({path}); }
    void GiveFiles(std::vector<std::string> paths) { Files.push_back(std::move(paths)); }

    // --- mouse -------------------------------------------------------------------------------------------
    static void Click(const Control& control); // on the widget that shows it
    static void Click(QWidget* widget);
    static void Drag(QWidget* widget, QPoint from, QPoint to); // with the left button
    void ClickMenu(const std::string& item); // opens the menu and clicks the item of the main window

    // --- keys: to whatever has the focus -------------------------------------------------------------------
    static void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static void Type(const char* text);
    // Opens the menu by its access key and goes down to the item.
    void PressMenu(Qt::Key menu, const std::string& item);
    // Tab until the widget of the control has the focus; fails the test when it never gets it.
    static void TabTo(const Control& control);

    static QWidget* Widget(const Control& control); // fails the test when no window shows it
    static QWidget* Window(const std::string& form);
    static void Serve(); // everything that waits in the event queue

    const std::string& Directory() const { return Folder; }
    // All messages so far.
    std::vector<std::string> Messages;

private:
    struct Step {
        std::string Window;
        std::function<void()> Play;
    };
    void Look();
    void Meet(QWidget* window);
    std::string NameOf(QWidget* window);
    void Drop(QWidget* window, const std::string& why);
    std::deque<Step> Steps;
    std::deque<std::vector<std::string>> Files;
    std::vector<QPointer<QWidget>> Playing;
    std::vector<QPointer<QWidget>> Seen;
    QObject Here; // the looks end with the player
    std::string Folder;
    int Dropped = 0;
};

} // namespace Quillon
