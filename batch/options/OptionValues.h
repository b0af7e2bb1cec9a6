#pragma once
// What stands behind options, read. What is none of it is a RuntimeError that names the option and what it
// needs, without the program's name.

#include "batch/options/Options.h"

#include <string>

namespace Quillon {

// A whole number from least to most, of options such as "--restarts 20".
long ReadCount(const char* option, const std::string& text, long least, long most);

// The same of an option whose numbers have no end that a user would meet: "a number from 3 on".
long ReadCountFrom(const char* option, const std::string& text, long least);

// "12-40" of --rows, or "12" alone.
RowRange ReadRows(const std::string& text);

// Which of two words the text is: true for the second.
bool IsSecond(const char* option, const std::string& text, const char* first, const char* second);

// Text that is not empty, for target; what tells in the message what the option needs.
void TakeFileName(std::string& target, const char* option, const std::string& value);
void TakeValue(std::string& target, const char* option, const char* what, const std::string& value);

} // namespace Quillon
