#pragma once
// Files of the machine, read whole; and what stands under a name.
//
// Paths are bytes, as the system has them: "/" alone parts them, and "\" is a letter like any other.

#include <cstddef>
#include <string>

namespace Quillon {

// The most that is read of one file, in bytes. The largest fit file and a scan of all points stay far below;
// a larger file is a mistake, and would take the machine's memory before anybody is told.
inline constexpr std::size_t LargestRead = std::size_t{256} << 20U;

// The bytes of a file or of a pipe. Failure is a RuntimeError: "File not found", "Permission denied", "it is
// a directory", "it is larger than 256 MB", "Out of memory", and otherwise "Path/File access error: " with
// the system's words.
std::string ReadWhole(const std::string& path);

// The same with another limit, of whole MB.
std::string ReadAtMost(const std::string& path, std::size_t most);

// Anything that is no directory. Only a name under which certainly nothing stands is no file: one that
// cannot be looked at for another reason, say a network that does not answer, is tried and tells why.
bool IsFile(const std::string& path);

bool IsDirectory(const std::string& path); // certainly one

} // namespace Quillon
