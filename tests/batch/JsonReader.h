#pragma once
// A strict reader of JSON for the tests: anything that is not JSON fails.

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace Quillon {

struct JsonValue {
    enum class Kind { Null, Flag, Number, Text, List, Object };
    Kind Is = Kind::Null;
    bool Flag = false;
    double Number = 0.0;
    std::string Text;
    std::vector<JsonValue> Items;
    std::map<std::string, JsonValue> Members;
    std::vector<std::string> Names; // of the members, in order

    bool IsNull() const { return Is == Kind::Null; }
    // A member or an item; a missing one throws std::out_of_range.
    const JsonValue& operator[](const std::string& name) const { return Members.at(name); }
    const JsonValue& operator[](std::size_t i) const { return Items.at(i); }
};

// The value of the whole text; a std::runtime_error that tells the place where it is no JSON.
JsonValue ReadJson(const std::string& text);

} // namespace Quillon
