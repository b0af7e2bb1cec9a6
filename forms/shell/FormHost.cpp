#include "forms/shell/FormHost.h"

#include "chart/Charts.h"
#include "commands/Analmenu.h"
#include "fit/forms/FitMon.h"
#include "forms/shell/Binding.h"
#include "help/HelpForm.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>

#include <cstdio>
#include <map>

namespace Quillon {

namespace {

struct Registered {
    QWidget* (*Make)(QWidget* parent) = nullptr;
    QPointer<QWidget> Window;
    bool Modal = false; // whoever shows the window waits for it and throws it away
};

std::map<std::string, Registered>& Registry() {
    static std::map<std::string, Registered> forms;
    return forms;
}

// The window above which the latest modal one stands or stood: from when that has closed until the system has
// made a window the active one again, this one is in front, and what the same command shows next belongs
// above it.
QPointer<QWidget> Behind;

Registered* Find(const std::string& name) {
    const auto found = Registry().find(name);
    if (found != Registry().end()) return &found->second;
    std::fprintf(stderr, "quillon: no window is made for the form %s\n", name.c_str());
    return nullptr;
}

} // namespace

FormWindow::FormWindow(const char* name, QWidget* (*make)(QWidget*)) {
    Registry()[name].Make = make;
}

std::vector<std::string> RegisteredForms() {
    std::vector<std::string> names;
    for (const auto& [name, form] : Registry())
        names.push_back(name);
    return names;
}

QWidget* OpenForm(const std::string& name) {
    const auto found = Registry().find(name);
    return found == Registry().end() ? nullptr : found->second.Window.data();
}

QWidget* FrontWindow() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    QWidget* active = QApplication::activeWindow();
    if (active && active->isVisible()) return active;
    if (Behind && Behind->isVisible()) return Behind;
    for (const auto& [name, form] : Registry())
        if (form.Window && form.Window->isVisible()) return form.Window;
    return nullptr;
}

namespace {

// Graph and monitor stay above the main window, which takes the whole width of the screen. The manual belongs
// to the window that it was asked for in: beside a modal one nothing else could be read.
QWidget* ParentOf(const std::string& name) {
    if (name == ChartsName || name == FitMonName) return OpenForm(AnalmenuName);
    return name == HelpFormName ? FrontWindow() : nullptr;
}

// What a window stands above while somebody waits for it: that in front, but not the manual, which is thrown
// away when it is asked for in another window. A table above it would go along in the middle of a change.
QWidget* BelowModal() {
    QWidget* front = FrontWindow();
    return front && front == OpenForm(HelpFormName) ? OpenForm(AnalmenuName) : front;
}

// A window that stands beside a modal one takes no clicks.
bool IsBlocked(const QWidget* window) {
    const QWidget* modal = QApplication::activeModalWidget();
    return modal && modal != window && !modal->isAncestorOf(window) && window->parentWidget() != modal;
}

} // namespace

void MakeForm(const std::string& name) {
    Registered* form = Find(name);
    if (!form || form->Window) return;
    form->Window = form->Make(ParentOf(name));
    form->Window->setObjectName(QString::fromStdString(name));
}

void ShowFormModally(const std::string& name) {
    Registered* form = Find(name);
    if (!form || form->Modal) return;
    // The engine holds one graph: the chart window that stands would show one that is gone.
    const QPointer<QWidget> standing = form->Window;
    if (standing) standing->hide();
    const QPointer<QWidget> front = BelowModal();
    const QPointer<QWidget> window = form->Make(front);
    window->setObjectName(QString::fromStdString(name));
    form->Window = window;
    form->Modal = true;
    Behind = front;
    RefreshForms();
    if (auto* dialog = qobject_cast<QDialog*>(window.data())) {
        const ModalWait wait(dialog);
        // What stands behind it may show what it is about, as the graphs of the fit whose results are shown.
        QTimer::singleShot(0, dialog, [] { RefreshForms(); });
        dialog->exec();
    }
    form->Modal = false;
    form->Window = standing;
    delete window.data();
    Behind = front; // again, after windows that stood above this one
}

void ShowFormModeless(const std::string& name) {
    if (QWidget* open = OpenForm(name); open && name == HelpFormName && IsBlocked(open)) delete open;
    MakeForm(name);
    Registered* form = Find(name);
    if (!form || form->Modal) return;
    RefreshForms();
    form->Window->show();
    form->Window->raise();
    form->Window->activateWindow();
}

void HideFormByName(const std::string& name) {
    Registered* form = Find(name);
    if (!form || !form->Window) return;
    auto* dialog = qobject_cast<QDialog*>(form->Window.data());
    if (dialog && form->Modal) return dialog->done(QDialog::Accepted);
    form->Window->hide();
    if (name == AnalmenuName || name == ChartsName) return; // these two live as long as the program
    form->Window->deleteLater();
    form->Window = nullptr;
}

void UnloadForms() {
    for (auto& [name, form] : Registry()) {
        delete form.Window.data();
        form.Modal = false;
    }
}

} // namespace Quillon
