#pragma once
// Names of files as text of a graph.

#include <string>

namespace Quillon {

// Text of a graph is Latin-1, while names of files mostly come in UTF-8. A text that is UTF-8 throughout
// comes back in Latin-1, with "?" for letters that this does not have; any other text comes back as it is.
std::string Latin1Text(const std::string& text);

} // namespace Quillon
