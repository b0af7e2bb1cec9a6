#pragma once
// A filling of the seam for work that nobody watches: copies of an analysis, benches, fuzzers.
//
// Nothing is shown or told, there are no files, and the clock and the uniform number stand still, so that the
// work comes to the same whenever and wherever it runs. Whoever has more, as numbers of its own or a file,
// replaces that entry before InstallPlatform.

#include "platform/Platform.h"

namespace Quillon {

// The answer that changes nothing: No where there is a Yes, otherwise Cancel, and Ok where that is all there
// is.
BoxAnswer NeutralAnswer(BoxButtons buttons);

// Every question gets the neutral answer; a file that is asked for is not there, and one that is to be
// written is a RuntimeError.
Platform QuietPlatform();

// The same with one answer to every question, whatever it offers.
Platform QuietPlatform(BoxAnswer answer);

} // namespace Quillon
