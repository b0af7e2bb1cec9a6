#pragma once
// The windows of the program by name, as the seam asks for them.

#include <QWidget>

#include <string>
#include <vector>

namespace Quillon {

// Registers how the window of a form is made, before the program begins: each file of a window has one of
// these. The window is made anew at each showing and thrown away when it is hidden; its record holds
// everything that lasts. name is the constant beside that record.
struct FormWindow {
    FormWindow(const char* name, QWidget* (*make)(QWidget* parent));
};

// The names of all of them, in the order of the alphabet.
std::vector<std::string> RegisteredForms();

// The seam's three entries. A form of an unknown name is shown as nothing at all, and told on standard error.
void ShowFormModally(const std::string& name);
void ShowFormModeless(const std::string& name);
void HideFormByName(const std::string& name);

// The open window of that name, or null. Windows bear the names of their forms as object names.
QWidget* OpenForm(const std::string& name);

// Makes the window without showing it.
void MakeForm(const std::string& name);

// Throws all windows away, at the end of the program.
void UnloadForms();

// The window that a box or a new form belongs to.
QWidget* FrontWindow();

} // namespace Quillon
