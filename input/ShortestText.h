#pragma once
// Numbers for other programs to read: the shortest text that gives the same bits back.

#include <string>

namespace Quillon {

// "" when the value is not finite.
std::string ShortestText(double value);

// A reader that takes the text for a double and stores it as a single gets the single's bits as well.
std::string ShortestText(float value);

} // namespace Quillon
