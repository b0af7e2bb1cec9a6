#pragma once
// Taking paths apart. New paths are joined with the platform's own separator, decided here alone; a path
// that came from another system keeps its "\" and still shortens and displays, since both separators are
// understood on reading. Nothing here asks the system: a path need not exist, and none is a failure.

#include <string>
#include <string_view>

namespace Quillon {

#ifdef _WIN32
inline constexpr char PathSeparator = '\\';
#else
inline constexpr char PathSeparator = '/';
#endif

inline constexpr bool IsSeparator(char c) {
    return c == '/' || c == '\\';
}

// The part of a path behind its last separator; all of a path without one, "" for one that ends in it.
std::string FileTitle(std::string_view path);

// What stands behind the last point of a file's name, in small letters; "" where there is none. The folders
// before it do not count.
std::string EndingOf(std::string_view path);

// The part of a path before its last separator, without it; "" when there is none. A root ("/", "C:\")
// keeps its own.
std::string DirectoryOf(std::string_view path);

// directory and name with exactly one separator between them; an empty directory gives the name alone.
std::string JoinPath(std::string_view directory, std::string_view name);

// Whether a path means the same from every working directory: "/a", "\a", "C:\a". "C:a" does not.
bool IsAbsolutePath(std::string_view path);

} // namespace Quillon
