#include "batch/console/OneLine.h"

#include "platform/RuntimeError.h"

namespace Quillon {

std::string OneLine(std::string_view text) {
    std::string line;
    bool replaced = false;
    for (const char c : text) {
        const bool control = static_cast<unsigned char>(c) < 32 || c == 127;
        if (!control || !replaced) line += control ? ' ' : c;
        replaced = control;
    }
    return line;
}

std::string MessageLine(std::string_view text) {
    std::string line(text);
    for (std::size_t at = line.find("\n\n"); at != std::string::npos; at = line.find("\n\n", at)) {
        const bool stop = at > 0 && line[at - 1] == '.';
        line.replace(stop ? at - 1 : at, stop ? 3 : 2, ": ");
    }
    return OneLine(line);
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t longest = 60;
    if (text.size() <= longest) return "'" + OneLine(text) + "'";
    return "'" + OneLine(text.substr(0, longest)) + "...'";
}

void FailFile(const std::string& path, const std::string& reason) {
    RaiseError(OneLine(path + ": " + reason));
}

} // namespace Quillon
