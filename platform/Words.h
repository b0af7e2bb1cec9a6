#pragma once
// Small parts of sentences, in the language of the program.

#include <string>
#include <vector>

namespace Quillon {

// "1 scan", "3 scans", "0 scans", and with a plural of its own "2 minima".
std::string Counted(long count, const std::string& one, const std::string& several);
std::string Counted(long count, const std::string& what);

// Sentences one behind the other with a blank between them; "" for none.
std::string Joined(const std::vector<std::string>& sentences);

// A part of a date or a time in two digits: "07"; the year as it is.
std::string ClockDigits(int number);

} // namespace Quillon
