#include "PdfReader.h"

#include <QByteArray>

#include <algorithm>
#include <cstdlib>
#include <regex>

namespace Quillon {

namespace {

// The toolkit's unpacking wants the unpacked size in front; an estimate will do.
std::string Unpacked(const std::string& packed) {
    QByteArray bytes("\0\1\0\0", 4);
    bytes.append(packed.data(), static_cast<qsizetype>(packed.size()));
    return qUncompress(bytes).toStdString();
}

void ReadObject(PdfDocument& document, int number, const std::string& body) {
    const std::size_t begin = body.find("stream\n");
    document.Objects[number] = body.substr(0, begin);
    if (begin == std::string::npos) return;
    const std::size_t end = body.rfind("\nendstream");
    const std::string data = body.substr(begin + 7, end - begin - 7);
    const bool packed = body.substr(0, begin).find("/FlateDecode") != std::string::npos;
    document.Streams[number] = packed ? Unpacked(data) : data;
}

int Hex(const std::string& digits) {
    return static_cast<int>(std::strtol(digits.c_str(), nullptr, 16));
}

// The entries "<first> <last> [<letter> ...]" of a table to Unicode.
std::map<int, int> LetterTable(const std::string& stream) {
    std::map<int, int> table;
    static const std::regex range("<([0-9A-Fa-f]{4})> <[0-9A-Fa-f]{4}> \\[([^\\]]*)\\]"),
        letter("<([0-9A-Fa-f]{4})>");
    for (std::sregex_iterator entry(stream.begin(), stream.end(), range), none; entry != none; ++entry) {
        int code = Hex((*entry)[1]);
        const std::string letters = (*entry)[2];
        for (std::sregex_iterator at(letters.begin(), letters.end(), letter); at != none; ++at)
            table[code++] = Hex((*at)[1]);
    }
    return table;
}

std::string Number(const std::string& text, const std::string& key) {
    const std::regex pattern(key + " (\\d+) 0 R");
    std::smatch match;
    return std::regex_search(text, match, pattern) ? match[1].str() : "";
}

} // namespace

bool PdfDocument::Holds(const std::string& text) const {
    return std::any_of(Objects.begin(), Objects.end(),
                       [&text](const auto& object) { return object.second.find(text) != std::string::npos; });
}

PdfDocument ReadPdf(const std::string& bytes) {
    PdfDocument document;
    static const std::regex head("\n(\\d+) 0 obj\n"), box("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]");
    for (std::sregex_iterator at(bytes.begin(), bytes.end(), head), none; at != none; ++at) {
        const std::size_t begin = static_cast<std::size_t>(at->position() + at->length());
        const std::size_t end = bytes.find("\nendobj", begin);
        ReadObject(document, std::atoi((*at)[1].str().c_str()), bytes.substr(begin, end - begin));
    }
    for (const auto& [number, object] : document.Objects) {
        std::smatch match;
        if (!std::regex_search(object, match, box)) continue;
        document.PageWidth = std::strtod(match[1].str().c_str(), nullptr);
        document.PageHeight = std::strtod(match[2].str().c_str(), nullptr);
    }
    return document;
}

std::string TextOf(const PdfDocument& document) {
    std::map<std::string, std::map<int, int>> tables; // by the name of the font on the page, "F7"
    for (const auto& [number, object] : document.Objects) {
        const std::string table = Number(object, "/ToUnicode");
        if (table.empty()) continue;
        tables["F" + std::to_string(number)] = LetterTable(document.Streams.at(std::atoi(table.c_str())));
    }
    static const std::regex step("/(F\\d+) [0-9.]+ Tf|<([0-9A-Fa-f]{4})> Tj|\\bET\\b");
    std::string text;
    for (const auto& [number, stream] : document.Streams) {
        if (stream.find("\nBT\n") == std::string::npos) continue;
        std::string font;
        for (std::sregex_iterator at(stream.begin(), stream.end(), step), none; at != none; ++at) {
            if ((*at)[1].matched)
                font = (*at)[1];
            else if (!(*at)[2].matched)
                text += '\n';
            else {
                const auto found = tables[font].find(Hex((*at)[2]));
                const int letter = found == tables[font].end() ? '?' : found->second;
                text += letter == '\t' ? ' ' : static_cast<char>(letter); // a blank's picture is a tab's too
            }
        }
    }
    return text;
}

} // namespace Quillon
