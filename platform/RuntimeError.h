#pragma once
// The one failure that travels inside a command: what went wrong at run time, in words.
//
// A command catches it at its own edge, tells the user once and leaves the workspace usable. Nothing
// else is thrown anywhere. The texts are those that users see in the messages of the commands.

#include <string>
#include <utility>

namespace Quillon {

// No class of the standard library's: what catches those by their base does not catch this one unawares.
struct RuntimeError {
    std::string Text; // in words, no full stop: "Overflow", "Division by zero", ...
};

// Ends the command in hand with that text. Whoever catches it keeps the text, or says in a comment why nobody
// needs it: a place that is tried among others, a question whose answer the failure is.
[[noreturn]] inline void RaiseError(std::string text) {
    throw RuntimeError{std::move(text)};
}

// The standing texts. Raise them by name so that one failure reads the same everywhere.
namespace ErrorText {
// What numbers come to: beyond the range of the width that they are stored in, a quotient by 0, a subscript
// beyond its array, a logarithm or a root of what has none.
inline constexpr const char* Overflow = "Overflow";
inline constexpr const char* DivisionByZero = "Division by zero";
inline constexpr const char* BadSubscript = "Subscript out of range";
inline constexpr const char* BadArgument = "Invalid procedure call or argument";
// What the system says of files and memory.
inline constexpr const char* FileNotFound = "File not found";
inline constexpr const char* PathNotFound = "Path not found";
inline constexpr const char* PermissionDenied = "Permission denied";
inline constexpr const char* PastEndOfFile = "Input past end of file";
inline constexpr const char* DiskFull = "Disk full";
inline constexpr const char* FileAccess = "Path/File access error";
inline constexpr const char* OutOfMemory = "Out of memory";
} // namespace ErrorText

} // namespace Quillon
