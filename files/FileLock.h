#pragma once
// A file that several copies of the program read, change and write again.

#include <memory>
#include <string>

namespace Quillon {

// Keeps other copies of the program out of a file for as long as the result lives; they do the same, and
// wait here for each other. An empty file ".NAME.lock" beside it holds the lock and stays. Empty after three
// seconds of waiting, and where the folder or its file system allows no lock: work then goes on without.
std::shared_ptr<void> HoldFile(const std::string& path);

// The same without waiting: empty at once when another copy, or this one, holds the file. The lock ends with
// the process, however that ends.
std::shared_ptr<void> HoldFileNow(const std::string& path);

} // namespace Quillon
