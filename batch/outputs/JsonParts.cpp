#include "batch/outputs/JsonParts.h"

namespace Quillon {

std::string JsonFlag(bool value) {
    return value ? "true" : "false";
}

std::string JsonMember(const std::string& name, const std::string& value) {
    return "\"" + name + "\": " + value;
}

std::string JoinedTexts(const std::vector<std::string>& parts, const char* separator) {
    std::string text;
    for (const std::string& part : parts)
        text += (&part == &parts.front() ? "" : separator) + part;
    return text;
}

std::string InlineObject(const std::vector<std::string>& members) {
    return "{" + JoinedTexts(members, ", ") + "}";
}

std::string InlineList(const std::vector<std::string>& items) {
    return "[" + JoinedTexts(items, ", ") + "]";
}

std::string JsonList(const std::vector<std::string>& items) {
    return items.empty() ? "[]" : "[\n    " + JoinedTexts(items, ",\n    ") + "\n  ]";
}

std::string JsonText(const std::vector<std::string>& members) {
    return "{\n  " + JoinedTexts(members, ",\n  ") + "\n}\n";
}

} // namespace Quillon
