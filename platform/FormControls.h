#pragma once
// Making the controls of a form.

#include "platform/Controls.h"

#include <string>
#include <vector>

namespace Quillon {

// A control with a caption or text, and what is said when the pointer rests on it.
inline Control Captioned(const std::string& text, const std::string& toolTip = "") {
    Control c;
    c.Text = text;
    c.ToolTip = toolTip;
    return c;
}

// A column of controls, all its rows shown or hidden.
inline void ShowColumn(std::vector<Control>& column, bool visible) {
    for (Control& cell : column)
        cell.Visible = visible;
}

} // namespace Quillon
