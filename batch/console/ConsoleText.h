#pragma once
// What the program says to somebody at a window, for somebody at a console.

#include <string>

namespace Quillon {

// The text with the places that it sends its reader to as they are called in a job: nobody finds a form here.
std::string ConsoleText(std::string text);

} // namespace Quillon
