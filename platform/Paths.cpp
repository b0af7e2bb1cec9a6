#include "platform/Paths.h"

#include "platform/Letters.h"

namespace Quillon {

namespace {

// Where the file's own name begins.
std::size_t StartOfTitle(std::string_view path) {
    std::size_t i = path.size();
    while (i > 0 && !IsSeparator(path[i - 1]))
        --i;
    return i;
}

} // namespace

std::string FileTitle(std::string_view path) {
    return std::string(path.substr(StartOfTitle(path)));
}

std::string EndingOf(std::string_view path) {
    const std::string_view title = path.substr(StartOfTitle(path));
    const std::size_t point = title.rfind('.');
    return point == std::string_view::npos ? "" : SmallLetters(title.substr(point + 1));
}

std::string DirectoryOf(std::string_view path) {
    const std::size_t title = StartOfTitle(path);
    if (title == 0) return "";
    const bool root = title == 1 || (title == 3 && path[1] == ':');
    return std::string(path.substr(0, root ? title : title - 1));
}

std::string JoinPath(std::string_view directory, std::string_view name) {
    if (directory.empty()) return std::string(name);
    std::string joined(directory);
    if (!IsSeparator(joined.back())) joined += PathSeparator;
    return joined.append(name);
}

bool IsAbsolutePath(std::string_view path) {
    return (!path.empty() && IsSeparator(path[0])) ||
           (path.size() > 2 && path[1] == ':' && IsSeparator(path[2]));
}

} // namespace Quillon
