#pragma once
// A text box under the rules of a form, and how its record is found.

#include "platform/Controls.h"

#include <QLineEdit>

#include <functional>

namespace Quillon {

// A control of a record. Records are laid out anew when their form loads: the place is looked up each time.
using ControlRef = std::function<Control&()>;

// What a text box tells its form. Key gets a character code (8, 9, 13 and 27 for the control keys) and gives
// the one that is taken, 0 for none.
struct FieldHandlers {
    std::function<void()> GotFocus;
    std::function<int(int key)> Key;
    std::function<void()> LostFocus;
    std::function<void()> Changed; // after each change of the text by the user
};

// The property of a button that gives the form up: a click on it asks nothing of the field that it leaves.
inline constexpr const char* GivesUp = "GivesUp";

// A one-line text box under the rules of a form.
//
// Leaving it runs the form's check. When a click or an access key leaves it the check waits until the click
// is through the window system, but always runs before what was clicked does anything; a field that the check
// refuses keeps the focus, and the click is then void. So a bad value is told once, no button is left pressed
// behind the message, and Cancel always cancels.
class FieldEdit : public QLineEdit {
    Q_OBJECT
public:
    FieldEdit(ControlRef control, FieldHandlers handlers, QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    friend bool LeavePendingField();
    void Enter();
    void Leave();
    bool Escape();
    void TakeBack();
    void GiveBackEntry();
    int AskKey(int key);
    void TakeText(const QString& text);
    void ToRecord();
    void FromRecord();
    ControlRef Record;
    FieldHandlers Handlers;
    bool Fresh = false;   // the focus has come by a click that is not over yet
    bool Entered = false; // the form has been told that the focus is here
    int TimesLeft = 0;    // and that it has gone
    QString AtEntry;      // the text that stood here when the focus came
};

// Runs the check of a field that a click has left. False when the check refused the value and took the focus
// back.
bool LeavePendingField();

// Leaves that field unchecked: the form is given up.
void ForgetPendingField();

} // namespace Quillon
