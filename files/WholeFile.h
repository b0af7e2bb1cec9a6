#pragma once
// Files of the machine, read whole and written whole: what the desktop and the batch run fill the seam with.
//
// A write leaves either the whole former file or the whole new one, whenever the program, the machine or the
// disk gives up. The bytes go to a new file in the directory of the target, are brought to the disk and take
// the target's name in one step; the name is brought to the disk as well. Where the file system allows it the
// new file has no name until it is complete, so that a program that is killed leaves nothing behind.
//
// A link is followed: the file behind it is replaced, also one that is not there yet. The new file has the
// permissions of the former one, and its owner and group where this user may give them. A file that this
// user may not write to is not replaced, though its directory would allow it. Devices and pipes cannot be
// replaced; they take the bytes as they come.
//
// Paths are bytes, as the system has them: "/" alone parts them, and "\" is a letter like any other.

#include <functional>
#include <string>

namespace Quillon {

// Failure is a RuntimeError: "File not found"; "Path/File access error" for what is no file or cannot be
// read.
std::string ReadWhole(const std::string& path);

// Failure is a RuntimeError: "Disk full" (also: beyond the user's share of it, or the largest file allowed),
// "Permission denied", "Path not found", "Path/File access error". The former file is then as it was.
void WriteWhole(const std::string& path, const std::string& bytes);

bool IsFile(const std::string& path); // anything that is no directory
bool IsDirectory(const std::string& path);

// Why no file can be written under a name, known before it is tried; "" when nothing speaks against it.
std::string WhyNotWritable(const std::string& path);

// The whole of standard output at once. Failure is a RuntimeError.
void WriteStandardOutput(const std::string& bytes);

// A write beyond the largest file allowed fails from now on, where the system would end the program.
void SurviveFileSizeLimit();

// The steps of a write on the disk, for tests: asked before each of them; any answer but 0 is the error
// number that the step fails with.
enum class FileStep { Make, Write, Keep, Flush, Name, Replace, FlushName };
extern std::function<int(FileStep)> BeforeFileStep;

} // namespace Quillon
