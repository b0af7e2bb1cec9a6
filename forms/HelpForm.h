#pragma once
// The key of the manual.

namespace Quillon {

// A window whose own name is no page's has the page's name as this property.
inline constexpr const char* PageProperty = "manualPage";

// From now on F1 opens the manual at the page of the window that has the focus.
void ListenForHelp();

} // namespace Quillon
