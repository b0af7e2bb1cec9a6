#include "forms/shell/FormHost.h"

#include "forms/shell/Binding.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>

#include <cstdio>
#include <map>
#include <memory>

namespace Quillon {

namespace {

struct Registered {
    std::function<QWidget*(QWidget*)> Make;
    QPointer<QWidget> Window;
};

std::map<std::string, Registered>& Registry() {
    static std::map<std::string, Registered> forms;
    return forms;
}

Registered* Find(const std::string& name) {
    const auto found = Registry().find(name);
    if (found != Registry().end()) return &found->second;
    std::fprintf(stderr, "quillon: no window is made for the form %s\n", name.c_str());
    return nullptr;
}

} // namespace

void RegisterForm(const std::string& name, std::function<QWidget*(QWidget*)> make) {
    Registry()[name].Make = std::move(make);
}

QWidget* OpenForm(const std::string& name) {
    const auto found = Registry().find(name);
    return found == Registry().end() ? nullptr : found->second.Window.data();
}

QWidget* FrontWindow() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    if (QWidget* active = QApplication::activeWindow()) return active;
    for (const auto& [name, form] : Registry())
        if (form.Window && form.Window->isVisible()) return form.Window;
    return nullptr;
}

void ShowFormModally(const std::string& name) {
    Registered* form = Find(name);
    if (!form) return;
    const QPointer<QWidget> standing =
        form->Window; // the chart window, which a graph is shown modally beside
    const std::unique_ptr<QWidget> window(form->Make(FrontWindow()));
    form->Window = window.get();
    RefreshForms();
    if (auto* dialog = qobject_cast<QDialog*>(window.get())) dialog->exec();
    form->Window = standing;
}

void ShowFormModeless(const std::string& name) {
    Registered* form = Find(name);
    if (!form) return;
    if (!form->Window) form->Window = form->Make(nullptr);
    RefreshForms();
    form->Window->show();
    form->Window->raise();
    form->Window->activateWindow();
}

void HideFormByName(const std::string& name) {
    Registered* form = Find(name);
    if (!form || !form->Window) return;
    auto* dialog = qobject_cast<QDialog*>(form->Window.data());
    if (dialog && dialog->isModal())
        return dialog->done(QDialog::Accepted); // whoever shows it throws it away
    form->Window->hide();
    if (name == "Analmenu" || name == "Charts") return; // these two live as long as the program
    form->Window->deleteLater();
    form->Window = nullptr;
}

} // namespace Quillon
