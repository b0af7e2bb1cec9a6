#pragma once
// How each window of the program is opened, for what holds for all of them: by the item of the menu that
// shows it at once, or by a row of its own. A form that is registered and has neither fails the tests.

#include "tests/forms/Player.h"

#include <functional>
#include <string>
#include <vector>

namespace Quillon {

struct FormOpening {
    std::string Form;
    // Runs what shows the window; visit is called while it stands and has to close it, unless it stands
    // beside the others.
    std::function<void(Player&, const std::function<void()>& visit)> Open;
    // Of the ways out those that are there to change the analysis: captions of buttons, "Esc", "X".
    std::vector<std::string> Changing = {};
    // What the analysis needs beside a finished fit of three sets.
    std::function<void()> Prepare = [] {};
    const char* Title = ""; // of one of several states of a form; "" for the form itself
};

// One for each form, by their names.
const std::vector<FormOpening>& FormOpenings();

// Forms in other states that look different: graphs that wait for a range or a shift, the other studies, all
// 18 data sets.
const std::vector<FormOpening>& FurtherOpenings();

// A window that is not waited for: it stays until it is closed, as the main window does.
bool StandsBeside(const std::string& form);

// A finished fit, and what the window needs.
void PrepareFor(const FormOpening& opening);

// Opens the window and calls look with it. Whatever look has left open is closed.
void VisitForm(Player& player, const FormOpening& opening, const std::function<void(QWidget&)>& look);

// The captions of its visible buttons that leave a window: OK, Cancel, Close, Exit, as they are there.
std::vector<std::string> WaysOutOf(const QWidget& window);
void ClickCaption(QWidget& window, const std::string& caption);

} // namespace Quillon
