#pragma once
// Pieces of JSON texts (RFC 8259): records, lists and numbers, for whatever writes some.

#include "batch/outputs/JsonString.h"
#include "batch/outputs/Numbers.h"
#include "platform/RuntimeError.h"

#include <optional>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr const char* JsonNull = "null";

// The shortest text that gives the same bits back; null where the value is not finite or there is none.
template <class T> std::string JsonNumber(T value) {
    const std::string text = ShortestText(value);
    return text.empty() ? JsonNull : text;
}
template <class T> std::string JsonNumber(const std::optional<T>& value) {
    return value ? JsonNumber(*value) : JsonNull;
}

std::string JsonFlag(bool value);

// "name": value. The value is JSON already.
std::string JsonMember(const std::string& name, const std::string& value);

// Why values are null that should have been there: members, a value's name with its reason.
using JsonReasons = std::vector<std::string>;

// The value of a calculation; null where there is none to be made (exists false), and null with its reason
// noted where that goes wrong.
template <class Calculation>
std::string JsonExisting(const std::string& name, bool exists, Calculation&& calculate,
                         JsonReasons& reasons) {
    if (!exists) return JsonNull;
    try {
        return JsonNumber(calculate());
    } catch (const RuntimeError& error) {
        reasons.push_back(JsonMember(name, JsonString(error.Text)));
        return JsonNull;
    }
}

std::string JoinedTexts(const std::vector<std::string>& parts, const char* separator);

// A record or a list on one line, and a list with an item on each line.
std::string InlineObject(const std::vector<std::string>& members);
std::string InlineList(const std::vector<std::string>& items);
std::string JsonList(const std::vector<std::string>& items);

// A whole text: one record, a member on each line.
std::string JsonText(const std::vector<std::string>& members);

} // namespace Quillon
