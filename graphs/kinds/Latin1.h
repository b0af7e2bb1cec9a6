#pragma once
// Names of files as text of a graph.

#include <string>

namespace Quillon {

// Text of a graph is Latin-1, while names of files mostly come in UTF-8. A text that is UTF-8 throughout
// comes back in Latin-1. Of letters that this does not have, Latin ones lose their marks, Greek ones are
// spelled out ("alpha"), and there is a "?" for all others. Any other text comes back as it is.
std::string Latin1Text(const std::string& text);

} // namespace Quillon
