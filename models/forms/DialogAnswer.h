#pragma once
// How a dialog was left, for the command that has shown it.

namespace Quillon {

// A dialog that was left by none of its buttons has been accepted as it stood; closing its window is Cancel.
enum class DialogAnswer { Ok, Cancel };

} // namespace Quillon
