#include "models/NumberBox.h"

#include "input/NUMINPUT.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

int NumberBoxKey(Control& box, int key) {
    if (key == KeyEscape) Work.AbortFit = FlagTrue;
    return NumKeyPress(box, key);
}

int WholeNumberBoxKey(Control& box, int key) {
    if (key == KeyEscape) Work.AbortFit = FlagTrue;
    return IntKeyPress(box, key);
}

BoxLeft LeaveNumberBox(Control& box, const std::string& storedText) {
    NumLostFocus(box);
    if (Work.AbortFit) {
        box.Text = storedText;
        Work.AbortFit = FlagFalse;
        return BoxLeft::Undone;
    }
    return box.Text == storedText ? BoxLeft::Unaltered : BoxLeft::Altered;
}

} // namespace Quillon
