#pragma once
// Making the controls of a form (platform/Controls.h), and what is done to several of them at once.

#include "platform/Controls.h"

#include <string>
#include <vector>

namespace Quillon {

// A control with a caption or text, and what is said when the pointer rests on it; visible, enabled, in the
// desktop's colours and with nothing else in it.
inline Control Captioned(const std::string& text, const std::string& toolTip = "") {
    Control c;
    c.Text = text;
    c.ToolTip = toolTip;
    return c;
}

// A column of a table of controls, all its rows shown or hidden; what they hold stays.
inline void ShowColumn(std::vector<Control>& column, bool visible) {
    for (Control& cell : column)
        cell.Visible = visible;
}

} // namespace Quillon
