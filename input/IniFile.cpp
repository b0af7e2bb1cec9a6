#include "input/IniFile.h"

#include "input/Utf8Text.h"
#include "platform/Letters.h"
#include "platform/Platform.h"

namespace Quillon {

namespace {

// A line of the file: [Start, End) without its line end, the next one starting at Next.
struct IniLine {
    std::size_t Start{}, End{}, Next{};
};

IniLine LineAt(std::string_view bytes, std::size_t start) {
    IniLine line{start, bytes.size(), bytes.size()};
    const std::size_t feed = bytes.find('\n', start);
    if (feed != std::string_view::npos) {
        line.End = feed;
        line.Next = feed + 1;
    }
    if (line.End > line.Start && bytes[line.End - 1] == '\r') --line.End;
    return line;
}

std::string_view Stripped(std::string_view text) {
    return Trimmed(text, " \t\r");
}

bool SameName(std::string_view a, std::string_view b) {
    return SameLetters(Stripped(a), Stripped(b));
}

bool InQuotes(std::string_view value) {
    return value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
           value.front() == value.back();
}

// Where a key stands, or where it would go.
struct Found {
    bool Section = false;
    bool Key = false;
    std::size_t ValueStart{}, ValueEnd{}; // with Key: what stands behind "="
    std::size_t Behind{};                 // with Section: the start of the line behind its last key
};

Found Find(std::string_view bytes, std::string_view section, std::string_view key) {
    Found found;
    bool inside = false;      // within a section of that name
    bool firstOfName = false; // within the one that a new key joins
    std::size_t at = bytes.substr(0, ByteOrderMark.size()) == ByteOrderMark ? ByteOrderMark.size() : 0;
    while (at < bytes.size()) {
        const IniLine line = LineAt(bytes, at);
        at = line.Next;
        const std::string_view text = Stripped(bytes.substr(line.Start, line.End - line.Start));
        if (text.empty() || text[0] == ';' || text[0] == '#') continue;
        if (text[0] == '[') {
            const std::size_t close = text.find(']');
            inside = close != std::string_view::npos && SameName(text.substr(1, close - 1), section);
            firstOfName = inside && !found.Section;
            if (firstOfName) {
                found.Section = true;
                found.Behind = line.Next;
            }
            continue;
        }
        if (!inside) continue;
        if (firstOfName) found.Behind = line.Next;
        const std::size_t equals = bytes.find('=', line.Start);
        if (equals >= line.End || !SameName(bytes.substr(line.Start, equals - line.Start), key)) continue;
        found.Key = true;
        found.ValueStart = equals + 1;
        found.ValueEnd = line.End;
        return found;
    }
    return found;
}

// What is written for a value so that reading gives it back.
std::string Written(std::string_view value) {
    std::string line(value);
    for (char& c : line)
        if (c == '\n' || c == '\r') c = ' ';
    if (Stripped(line).size() != line.size() || InQuotes(line)) return '"' + line + '"';
    return line;
}

std::string LineEndOf(std::string_view bytes) {
    const std::size_t feed = bytes.find('\n');
    const bool returns = feed != std::string_view::npos && feed > 0 && bytes[feed - 1] == '\r';
    return returns ? "\r\n" : "\n";
}

} // namespace

std::string IniValue(const std::string& bytes, std::string_view section, std::string_view key,
                     const std::string& missing) {
    const Found found = Find(bytes, section, key);
    if (!found.Key) return missing;
    std::string_view value(bytes);
    value = Stripped(value.substr(found.ValueStart, found.ValueEnd - found.ValueStart));
    if (InQuotes(value)) value = value.substr(1, value.size() - 2);
    return std::string(value);
}

std::string WithIniValue(const std::string& bytes, std::string_view section, std::string_view key,
                         std::string_view value) {
    const Found found = Find(bytes, section, key);
    const std::string end = LineEndOf(bytes);
    std::string result = bytes;
    if (found.Key) {
        result.replace(found.ValueStart, found.ValueEnd - found.ValueStart, Written(value));
        return result;
    }
    const std::string line = std::string(Stripped(key)) + "=" + Written(value) + end;
    if (found.Section) {
        const bool open = found.Behind > 0 && bytes[found.Behind - 1] != '\n'; // the last line has no end
        return result.insert(found.Behind, open ? end + line : line);
    }
    if (!result.empty() && result.back() != '\n') result += end;
    return result + "[" + std::string(Stripped(section)) + "]" + end + line;
}

std::string ReadIniFile(const std::string& path) {
    try {
        std::string bytes = Host.ReadFile(path);
        if (bytes.size() > LargestIni)
            RaiseError("it is larger than " + std::to_string(LargestIni >> 20U) + " MB");
        return bytes;
    } catch (const RuntimeError& error) {
        if (error.Text == ErrorText::FileNotFound) return "";
        throw;
    }
}

void WriteIniValue(const std::string& path, std::string_view section, std::string_view key,
                   std::string_view value) {
    WriteIniValues(path, section, {{std::string(key), std::string(value)}});
}

void WriteIniValues(const std::string& path, std::string_view section,
                    const std::vector<IniSetting>& settings) {
    const std::shared_ptr<void> hold = Host.HoldFile(path); // between the read and the write nobody else
    std::string bytes = ReadIniFile(path);
    for (const IniSetting& setting : settings)
        bytes = WithIniValue(bytes, section, setting.Key, setting.Value);
    Host.WriteFile(path, bytes);
}

} // namespace Quillon
