#pragma once
// The name of the main window's form (commands/Analmenu.h) for those below it: a fit hides the window while
// it runs.

namespace Quillon {

inline constexpr const char* AnalmenuName = "Analmenu";

} // namespace Quillon
