#pragma once
// When the workbench may look at the analysis.

namespace Quillon {

// True between two commands, and while the results of a fit are looked at: at other times what is in the
// workspace may be half of something. A fit or a search may run outside of any handler.
bool MayFollowAnalysis();

} // namespace Quillon
