#pragma once
// From records of controls to widgets and back.
//
// A form's file in forms/ makes widgets, lays them out and binds each to its record. After every event, and
// whenever the event queue is served, RefreshForms brings all widgets up to their records. A handler of the
// logic is called with what the user did; it changes records and nothing else.

#include "forms/shell/FieldEdit.h"
#include "platform/Controls.h"

#include <QDialog>

#include <functional>
#include <vector>

class QAbstractButton;
class QCheckBox;
class QLabel;
class QListWidget;
class QPlainTextEdit;
class QWidget;

namespace Quillon {

// A caption with "&" for the access key, as labels that have no access key show it.
QString ShownText(const std::string& text); // Latin-1
std::string RecordText(const QString& text);
QString WithoutAccessKey(const std::string& text);
// A tip in lines: one of plain text is shown as a single one however long it is.
QString WrappedTip(const std::string& text);

// Everything that keeps widgets and records together. One for each window.
class Binder {
public:
    explicit Binder(QWidget* window, FormState* state = nullptr);
    ~Binder();
    Binder(const Binder&) = delete;
    Binder& operator=(const Binder&) = delete;

    void Label(QLabel* label, ControlRef control);
    void Button(QAbstractButton* button, ControlRef control, std::function<void()> clicked);
    void Check(QCheckBox* box, ControlRef control, std::function<void()> clicked);
    // An option button: Value -1 when chosen.
    void Option(QAbstractButton* option, ControlRef control, std::function<void()> chosen);
    void Field(FieldEdit* field, ControlRef control);
    // A list with one row for each of Items; Value is the chosen row, counted from base.
    void List(QListWidget* list, ControlRef control, int base, std::function<void(int row)> chosen);
    void Text(QPlainTextEdit* text, ControlRef control); // read-only, selectable
    // Shows and hides any widget with a record.
    void Visible(QWidget* widget, ControlRef control);
    // Anything else that has to follow the records.
    void Also(std::function<void()> refresh);

    // Brings the widgets up to the records, and gives the focus where a handler wants it.
    void Refresh();

    QWidget* WidgetOf(const Control& control) const;

private:
    struct Binding {
        QWidget* Widget;
        ControlRef Record;
        std::function<void()> Update;
    };
    void Follow(QWidget* widget, ControlRef control, std::function<void()> update);
    void ObeyFocus();
    QWidget* Window;
    FormState* State;
    std::vector<Binding> Bindings;
    std::vector<std::function<void()>> Others;
    bool Refreshing = false;
};

// Brings every open window up to its records.
void RefreshForms();

// True while widgets are brought up to their records. A field that loses the focus to that is left
// afterwards.
bool FormsRefreshing();

// The widget that shows a control, in whichever window is open; null when none does.
QWidget* WidgetFor(const Control& control);

// Runs a handler of the logic: an error that reaches this far is told in a message.
void RunGuarded(const std::function<void()>& handler);

// The same on behalf of a widget, unless a field that is being left refuses its value; the windows are
// brought up to date afterwards.
void RunHandler(const std::function<void()>& handler);

// The same for a timer or a new size of a window: what a click may lose here, these do as soon as they may.
void RunSoon(QObject* context, const std::function<void()>& handler);

// The same for a window that stands beside the others, such as the main window. Between the closing of a
// dialog and the end of the command that opened it such a window is free for a moment, and a click that has
// waited would start a second command within the first: it does nothing.
void RunWhenIdle(const std::function<void()>& handler);

// A handler waits for the answer of a window: stands while the window is shown modally. Once the window is
// closed the waiting handler goes on as soon as it gets the word; until then no other handler starts, for it
// would find the first one's work half done.
class ModalWait {
public:
    explicit ModalWait(QDialog* window);
    ~ModalWait();
    ModalWait(const ModalWait&) = delete;
    ModalWait& operator=(const ModalWait&) = delete;
    bool Over = false; // the window is closed
};

// True while a handler is at work: in a window that it has opened, or in a long command that serves events.
bool HandlerAtWork();

// A modal or modeless window of a form: closes itself when its record says that it is not shown any more;
// closing it by the window manager counts as the handler given.
class FormDialog : public QDialog {
    Q_OBJECT
public:
    FormDialog(FormState& state, std::function<void()> closedByUser, QWidget* parent);
    Binder Bind;
    void setVisible(bool visible) override;

public slots:
    void reject() override; // Esc and the window's close button

protected:
    void closeEvent(QCloseEvent* event) override;
    FormState& State;

private:
    std::function<void()> ClosedByUser;
    bool CaptionFits = false;
};

} // namespace Quillon
