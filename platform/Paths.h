#pragma once
// Taking paths apart. New paths are joined with the platform's own separator, decided here alone; a path
// that came from another system keeps its "\" and still shortens and displays, since both separators are
// understood on reading.

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

// The part of a path behind its last separator.
inline std::string FileTitle(std::string_view path) {
    std::size_t i = path.size();
    while (i > 0 && !IsSeparator(path[i - 1]))
        --i;
    return std::string(path.substr(i));
}

// What stands behind the last point of a file's name, in small letters; "" where there is none. The folders
// before it do not count.
inline std::string EndingOf(std::string_view path) {
    const std::string title = FileTitle(path);
    const std::size_t point = title.rfind('.');
    std::string ending = point == std::string::npos ? "" : title.substr(point + 1);
    for (char& letter : ending)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    return ending;
}

// The part of a path before its last separator, without it; "" when there is none. A root ("/", "C:\")
// keeps its own.
inline std::string DirectoryOf(std::string_view path) {
    std::size_t i = path.size();
    while (i > 0 && !IsSeparator(path[i - 1]))
        --i;
    if (i == 0) return "";
    const bool root = i == 1 || (i == 3 && path[1] == ':');
    return std::string(path.substr(0, root ? i : i - 1));
}

// directory and name with exactly one separator between them; an empty directory gives the name alone.
inline std::string JoinPath(std::string_view directory, std::string_view name) {
    if (directory.empty()) return std::string(name);
    std::string joined(directory);
    if (!IsSeparator(joined.back())) joined += PathSeparator;
    return joined.append(name);
}

inline bool IsAbsolutePath(std::string_view path) {
    return (!path.empty() && IsSeparator(path[0])) ||
           (path.size() > 2 && path[1] == ':' && IsSeparator(path[2]));
}

} // namespace Quillon
