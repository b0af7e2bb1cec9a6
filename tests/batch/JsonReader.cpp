#include "tests/batch/JsonReader.h"

#include <cctype>
#include <charconv>
#include <stdexcept>

namespace Quillon {
namespace {

struct Reader {
    const std::string& Text;
    std::size_t At = 0;

    [[noreturn]] void Fail(const char* what) const {
        throw std::runtime_error(std::string(what) + " at byte " + std::to_string(At));
    }
    char Peek() const { return At < Text.size() ? Text[At] : '\0'; }
    void SkipBlanks() {
        while (At < Text.size() && std::string(" \t\r\n").find(Text[At]) != std::string::npos)
            ++At;
    }
    void Take(const std::string& word) {
        if (Text.compare(At, word.size(), word) != 0) Fail(("expected " + word).c_str());
        At += word.size();
    }

    std::string TakeEscape() {
        const char c = Peek();
        ++At;
        if (c == '"' || c == '\\' || c == '/') return std::string(1, c);
        if (c != 'u' || At + 4 > Text.size()) Fail("unknown escape");
        int code = 0;
        const auto [end, failure] = std::from_chars(Text.data() + At, Text.data() + At + 4, code, 16);
        if (end != Text.data() + At + 4 || failure != std::errc{} || code > 0xFF) Fail("odd code");
        At += 4;
        if (code < 0x80) return std::string(1, static_cast<char>(code));
        return {static_cast<char>(0xC0 | (code >> 6)), static_cast<char>(0x80 | (code & 0x3F))};
    }
    std::string TakeText() {
        Take("\"");
        std::string text;
        while (Peek() != '"') {
            if (At >= Text.size() || static_cast<unsigned char>(Peek()) < 0x20) Fail("open string");
            if (Peek() == '\\') {
                ++At;
                text += TakeEscape();
            } else {
                text += Text[At++];
            }
        }
        ++At;
        return text;
    }

    void TakeDigits() {
        if (!std::isdigit(static_cast<unsigned char>(Peek()))) Fail("expected a digit");
        while (std::isdigit(static_cast<unsigned char>(Peek())))
            ++At;
    }
    double TakeNumber() {
        const std::size_t start = At;
        if (Peek() == '-') ++At;
        if (Peek() == '0')
            ++At;
        else
            TakeDigits();
        if (Peek() == '.') {
            ++At;
            TakeDigits();
        }
        if (Peek() == 'e' || Peek() == 'E') {
            ++At;
            if (Peek() == '+' || Peek() == '-') ++At;
            TakeDigits();
        }
        double value = 0.0;
        std::from_chars(Text.data() + start, Text.data() + At, value);
        return value;
    }

    JsonValue TakeList() {
        JsonValue list;
        list.Is = JsonValue::Kind::List;
        Take("[");
        SkipBlanks();
        while (Peek() != ']') {
            list.Items.push_back(TakeValue());
            SkipBlanks();
            if (Peek() != ']') Take(",");
        }
        ++At;
        return list;
    }
    JsonValue TakeObject() {
        JsonValue object;
        object.Is = JsonValue::Kind::Object;
        Take("{");
        SkipBlanks();
        while (Peek() != '}') {
            SkipBlanks();
            const std::string name = TakeText();
            SkipBlanks();
            Take(":");
            if (!object.Members.emplace(name, TakeValue()).second) Fail("a member stands twice");
            object.Names.push_back(name);
            SkipBlanks();
            if (Peek() != '}') Take(",");
        }
        ++At;
        return object;
    }
    JsonValue TakeValue() {
        SkipBlanks();
        JsonValue value;
        switch (Peek()) {
        case '{':
            return TakeObject();
        case '[':
            return TakeList();
        case 'n':
            Take("null");
            return value;
        case 't':
            Take("true");
            value.Flag = true;
            value.Is = JsonValue::Kind::Flag;
            return value;
        case 'f':
            Take("false");
            value.Is = JsonValue::Kind::Flag;
            return value;
        case '"':
            value.Is = JsonValue::Kind::Text;
            value.Text = TakeText();
            return value;
        default:
            value.Is = JsonValue::Kind::Number;
            value.Number = TakeNumber();
            return value;
        }
    }
};

} // namespace

JsonValue ReadJson(const std::string& text) {
    Reader reader{text};
    JsonValue value = reader.TakeValue();
    reader.SkipBlanks();
    if (reader.At != text.size()) reader.Fail("text behind the value");
    return value;
}

} // namespace Quillon
