#pragma once
// Files of the machine, written whole: what the desktop and the batch run fill the seam with.
//
// A write leaves either the whole former file or the whole new one, whenever the program, the machine or the
// disk gives up. The bytes go to a new file in the folder of the target, are brought to the disk and take
// the target's name in one step; the name is brought to the disk as well. Where the file system allows it the
// new file has no name until it is complete. A program that is killed between two steps may leave a file
// ".quillon-*", which the next write into the folder removes.
//
// A link is followed: the file behind it is replaced, also one that is not there yet. The new file has the
// permissions of the former one, and its owner and group where this user may give them. A file that this
// user may not write to is not replaced, though its folder would allow it.
//
// What cannot be replaced takes the bytes in place: devices, pipes, the descriptors that the program was
// started with ("/dev/stdout"), where they go on behind what stands there; and a file that is a mount point,
// of which a copy is kept until it is complete.
//
// Paths are bytes, as the system has them: "/" alone parts them, and "\" is a letter like any other.

#include <string>

namespace Quillon {

// Failure is a RuntimeError: "Disk full" (also: beyond the user's share of it, or the largest file allowed),
// "Permission denied", "Path not found", "it is a directory", "its links lead in a circle", and otherwise
// "Path/File access error: " with the system's words. The former file is then as it was; where a mount point
// could not be given its former bytes back, the error names the copy that has them.
void WriteWhole(const std::string& path, const std::string& bytes);

// Why no file can be written under a name, known before it is tried; "" when nothing speaks against it.
std::string WhyNotWritable(const std::string& path);

// The whole of standard output at once. Failure is a RuntimeError.
void WriteStandardOutput(const std::string& bytes);

// A write beyond the largest file allowed fails from now on, where the system would end the program.
void SurviveFileSizeLimit();

} // namespace Quillon
