#pragma once
// The menu of a line of the data set table, as a right click on it opens it.

#include "platform/Controls.h"

#include <functional>
#include <string>
#include <vector>

namespace Quillon {

struct LineMenuItem {
    MenuItem Item;
    std::string Submenu; // the caption of the menu within the menu that it stands in; "" for the menu itself
    bool NewGroup = false; // a line stands above it
    std::function<void()> Command;
};

// What can be done to a line: its channel, path and centerpiece, its range and information, its removal, and
// the same for other scans. A line without a scan offers to read one; one that is locked has no menu. The
// line becomes the current one with the first command.
std::vector<LineMenuItem> FileFormLineMenu(int line);

} // namespace Quillon
