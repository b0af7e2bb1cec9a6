#include "forms/shell/FieldEdit.h"

#include "forms/shell/Binding.h"
#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QTimer>

#include <algorithm>

namespace Quillon {

namespace {

QPointer<FieldEdit> PendingField; // a click has left it, its check has still to run

int KeyCode(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return KeyReturn;
    case Qt::Key_Escape:
        return KeyEscape;
    case Qt::Key_Tab:
        return KeyTab;
    default:
        break;
    }
    const QString text = event.text();
    if (text.size() == 1 && text[0].unicode() >= 32 && text[0].unicode() < 256 && text[0].unicode() != 127)
        return text[0].unicode();
    return 0;
}

bool IsCommand(const QKeyEvent& event) {
    return event.modifiers().testFlag(Qt::ControlModifier) || event.modifiers().testFlag(Qt::AltModifier) ||
           event.modifiers().testFlag(Qt::MetaModifier);
}

} // namespace

bool LeavePendingField() {
    if (!PendingField || FormsRefreshing()) return true;
    const QPointer<FieldEdit> field = PendingField;
    PendingField = nullptr;
    field->Leave();
    // Behind a message the window is not active again yet: its focus widget tells what hasFocus() will.
    return !field || field->window()->focusWidget() != field;
}

void ForgetPendingField() {
    PendingField = nullptr;
}

FieldEdit::FieldEdit(ControlRef control, FieldHandlers handlers, QWidget* parent)
    : QLineEdit(parent), Record(std::move(control)), Handlers(std::move(handlers)) {
    connect(this, &QLineEdit::textEdited, this, [this] {
        ToRecord();
        if (Handlers.Changed) RunHandler(Handlers.Changed);
    });
}

void FieldEdit::ToRecord() {
    Control& c = Record();
    c.Text = RecordText(text());
    c.SelStart = hasSelectedText() ? selectionStart() : cursorPosition();
    c.SelLength = static_cast<std::int32_t>(selectedText().size());
}

void FieldEdit::FromRecord() {
    const Control& c = Record();
    const QString wanted = ShownText(c.Text);
    if (text() != wanted) setText(wanted);
    if (c.SelLength > 0)
        setSelection(c.SelStart, c.SelLength);
    else
        setCursorPosition(std::min<int>(c.SelStart, static_cast<int>(wanted.size())));
}

// Asks the form about a key, with the record as the box stands, and takes over what the rules changed.
int FieldEdit::AskKey(int key) {
    if (!Handlers.Key) return key;
    ToRecord();
    int taken = 0;
    RunHandler([&] { taken = Handlers.Key(key); });
    return taken;
}

void FieldEdit::TakeText(const QString& typed) {
    FromRecord();
    insert(typed);
    ToRecord();
    if (Handlers.Changed) RunHandler(Handlers.Changed);
}

void FieldEdit::keyPressEvent(QKeyEvent* event) {
    const int key = IsCommand(*event) ? 0 : KeyCode(*event);
    if (key == 0) {
        // An access key that the window does not have would otherwise be typed, past the rules.
        const bool unknown = event->modifiers() == Qt::AltModifier && !event->text().isEmpty();
        if (unknown) return event->ignore();
        QLineEdit::keyPressEvent(event);
        ToRecord();
        return;
    }
    event->accept();
    if (key == KeyEscape) return event->setAccepted(Escape());
    const int taken = AskKey(key);
    if (key == KeyReturn || key == KeyTab) return;
    if (taken != 0)
        TakeText(QString(QChar(taken)));
    else
        FromRecord();
}

// Esc goes to the form first, which may have a rule for it. It gives back the value that stood in the field
// when it was entered; a field that is as it was leaves Esc to the window: false.
bool FieldEdit::Escape() {
    const bool changed = text() != AtEntry;
    AskKey(KeyEscape);
    if (!hasFocus() || !window()->isVisible()) return true;
    TakeBack();
    if (changed && hasFocus() && text() != AtEntry) GiveBackEntry();
    return changed;
}

// A form that keeps the former value gives it back when the field is left: left and entered at once, so that
// the user sees it and the request does not stay behind.
void FieldEdit::TakeBack() {
    if (!EntryIsTakenBack()) return;
    const QString entry = AtEntry;
    Leave();
    if (hasFocus()) Enter();
    AtEntry = entry;
}

void FieldEdit::GiveBackEntry() {
    Control& c = Record();
    c.Text = RecordText(AtEntry);
    c.SelStart = 0;
    c.SelLength = static_cast<std::int32_t>(c.Text.size());
    FromRecord();
    if (Handlers.Changed) RunHandler(Handlers.Changed);
}

void FieldEdit::inputMethodEvent(QInputMethodEvent* event) {
    QLineEdit::inputMethodEvent(event);
    ToRecord();
}

// Tab belongs to the form where it has a rule for it; where that leads to a field that the check of this one
// takes the focus back from, it has led somewhere all the same.
bool FieldEdit::focusNextPrevChild(bool next) {
    if (next && Handlers.Key) {
        const QWidget* before = window()->focusWidget();
        const int left = TimesLeft;
        AskKey(KeyTab);
        if (window()->focusWidget() != before || TimesLeft != left || !window()->isVisible()) return true;
    }
    return QLineEdit::focusNextPrevChild(next);
}

void FieldEdit::Enter() {
    RunHandler([this] {
        Entered = true;
        if (Handlers.GotFocus) Handlers.GotFocus();
    });
    if (!Entered) return;
    AtEntry = ShownText(Record().Text); // a window that is not active yet gives the focus once more, unasked
    if (!hasFocus()) return;            // the field before this one has taken the focus back
    FromRecord();
    AtEntry = text();
    if (Record().SelLength > 0) selectAll();
}

void FieldEdit::Leave() {
    if (!Entered) return;
    Entered = false;
    ++TimesLeft;
    ToRecord();
    Record().SelLength = 0;
    RunGuarded(Handlers.LostFocus);
    RefreshForms();
}

void FieldEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason)
        if (Entered) return;
    if (PendingField == this) { // a click went elsewhere and came back before anything was asked
        PendingField = nullptr;
        return;
    }
    Fresh = event->reason() == Qt::MouseFocusReason;
    Enter();
}

// A click into a field selects the number, so that typing replaces it; a drag or a second click does not.
void FieldEdit::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (Fresh && !hasSelectedText()) selectAll();
    Fresh = false;
}

void FieldEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason) return;
    ToRecord();
    const bool clicked =
        event->reason() == Qt::MouseFocusReason || event->reason() == Qt::ShortcutFocusReason;
    if (!clicked && !FormsRefreshing()) return Leave();
    PendingField = this;
    const QWidget* to = QApplication::focusWidget();
    if (!to || !to->property(GivesUp).toBool()) QTimer::singleShot(0, this, [] { LeavePendingField(); });
}

} // namespace Quillon
