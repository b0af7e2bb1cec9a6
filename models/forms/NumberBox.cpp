#include "models/forms/NumberBox.h"

#include "input/NUMINPUT.h"

#include <utility>

namespace Quillon {

namespace {
const Control* TakenBack = nullptr; // the box in which Esc was pressed
} // namespace

int NumberBoxKey(Control& box, int key) {
    if (key == KeyEscape) TakenBack = &box;
    return NumKeyPress(box, key);
}

int WholeNumberBoxKey(Control& box, int key) {
    if (key == KeyEscape) TakenBack = &box;
    return IntKeyPress(box, key);
}

BoxLeft LeaveNumberBox(Control& box, const std::string& storedText) {
    NumLostFocus(box);
    if (TakenBack == &box) {
        TakenBack = nullptr;
        box.Text = storedText;
        return BoxLeft::Undone;
    }
    return box.Text == storedText ? BoxLeft::Unaltered : BoxLeft::Altered;
}

bool EntryIsTakenBack() {
    return TakenBack != nullptr;
}

bool ForgetTakenBack() {
    return std::exchange(TakenBack, nullptr) != nullptr;
}

} // namespace Quillon
