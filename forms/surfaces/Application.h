#pragma once
// The toolkit's application object, for those who draw pictures.

namespace Quillon {

// Pictures need the toolkit's application object. Where the program has none, one without a display is made
// and kept; the locale stays what it was. A missing platform plugin is a RuntimeError, and so is a system
// without any font.
void NeedApplication();

} // namespace Quillon
