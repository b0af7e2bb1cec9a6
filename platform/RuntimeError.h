#pragma once
// The one failure that travels inside a command: what went wrong at run time, in words.
//
// A command catches it at its own edge, tells the user once and leaves the workspace usable. Nothing
// else is thrown anywhere. The texts are those that users see in the messages of the commands.

#include <string>
#include <utility>

namespace Quillon {

struct RuntimeError {
    std::string Text; // in words, no full stop: "Overflow", "Division by zero", ...
};

[[noreturn]] inline void RaiseError(std::string text) {
    throw RuntimeError{std::move(text)};
}

// The standing texts. Raise them by name so that one failure reads the same everywhere.
namespace ErrorText {
inline constexpr const char* Overflow = "Overflow";
inline constexpr const char* DivisionByZero = "Division by zero";
inline constexpr const char* BadSubscript = "Subscript out of range";
inline constexpr const char* BadArgument = "Invalid procedure call or argument";
inline constexpr const char* FileNotFound = "File not found";
inline constexpr const char* PathNotFound = "Path not found";
inline constexpr const char* PermissionDenied = "Permission denied";
inline constexpr const char* PastEndOfFile = "Input past end of file";
inline constexpr const char* DiskFull = "Disk full";
inline constexpr const char* FileAccess = "Path/File access error";
inline constexpr const char* OutOfMemory = "Out of memory";
} // namespace ErrorText

} // namespace Quillon
