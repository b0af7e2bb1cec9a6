#pragma once
// Where windows and panes stood when the program ended: section [Desktop] of the ini file. Unlike settings
// these are kept without a question, and a folder that cannot be written costs a place and no message.

#include "input/IniFile.h"

#include <string>
#include <vector>

namespace Quillon {

// What is kept under a key, as it was written; "" when nothing is, or the file cannot be read.
std::string KeptPlace(const std::string& key);

// Keeps values under their keys, all at once. Nothing is written where they stand there already.
void KeepPlaces(const std::vector<IniSetting>& places);

} // namespace Quillon
