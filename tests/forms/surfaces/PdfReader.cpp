#include "PdfReader.h"

#include <QByteArray>
#include <QRegularExpression>
#include <QString>

#include <algorithm>

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

QString Latin1(const std::string& bytes) {
    return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

int Hex(const QString& digits) {
    return digits.toInt(nullptr, 16);
}

// The entries "<first> <last> [<letter> ...]" of a table to Unicode.
std::map<int, int> LetterTable(const std::string& stream) {
    static const QRegularExpression range("<([0-9A-Fa-f]{4})> <[0-9A-Fa-f]{4}> \\[([^\\]]*)\\]");
    static const QRegularExpression letter("<([0-9A-Fa-f]{4})>");
    std::map<int, int> table;
    QRegularExpressionMatchIterator entries = range.globalMatch(Latin1(stream));
    while (entries.hasNext()) {
        const QRegularExpressionMatch entry = entries.next();
        int code = Hex(entry.captured(1));
        QRegularExpressionMatchIterator letters = letter.globalMatch(entry.captured(2));
        while (letters.hasNext())
            table[code++] = Hex(letters.next().captured(1));
    }
    return table;
}

void ReadPageSize(PdfDocument& document) {
    static const QRegularExpression box("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]");
    for (const auto& [number, object] : document.Objects) {
        const QRegularExpressionMatch match = box.match(Latin1(object));
        if (!match.hasMatch()) continue;
        ++document.Pages;
        document.PageWidth = match.captured(1).toDouble();
        document.PageHeight = match.captured(2).toDouble();
    }
}

// The tables of the fonts, by their names on the page: "F7".
std::map<QString, std::map<int, int>> LetterTables(const PdfDocument& document) {
    static const QRegularExpression toUnicode("/ToUnicode (\\d+) 0 R");
    std::map<QString, std::map<int, int>> tables;
    for (const auto& [number, object] : document.Objects) {
        const QRegularExpressionMatch match = toUnicode.match(Latin1(object));
        if (match.hasMatch())
            tables["F" + QString::number(number)] =
                LetterTable(document.Streams.at(match.captured(1).toInt()));
    }
    return tables;
}

} // namespace

bool PdfDocument::Holds(const std::string& text) const {
    return std::any_of(Objects.begin(), Objects.end(),
                       [&text](const auto& object) { return object.second.find(text) != std::string::npos; });
}

PdfDocument ReadPdf(const std::string& bytes) {
    static const QRegularExpression head("\n(\\d+) 0 obj\n");
    PdfDocument document;
    QRegularExpressionMatchIterator heads = head.globalMatch(Latin1(bytes));
    while (heads.hasNext()) {
        const QRegularExpressionMatch match = heads.next();
        const auto begin = static_cast<std::size_t>(match.capturedEnd());
        const std::size_t end = bytes.find("\nendobj", begin);
        ReadObject(document, match.captured(1).toInt(), bytes.substr(begin, end - begin));
    }
    ReadPageSize(document);
    return document;
}

std::string TextOf(const PdfDocument& document) {
    static const QRegularExpression step("/(F\\d+) [0-9.]+ Tf|<([0-9A-Fa-f]{4})> Tj|\\bET\\b");
    std::map<QString, std::map<int, int>> tables = LetterTables(document);
    std::string text;
    for (const auto& [number, stream] : document.Streams) {
        if (stream.find("\nBT\n") == std::string::npos) continue;
        QString font;
        QRegularExpressionMatchIterator steps = step.globalMatch(Latin1(stream));
        while (steps.hasNext()) {
            const QRegularExpressionMatch match = steps.next();
            if (!match.captured(1).isEmpty()) {
                font = match.captured(1);
            } else if (match.captured(2).isEmpty()) {
                text += '\n';
            } else {
                const auto found = tables[font].find(Hex(match.captured(2)));
                const int letter = found == tables[font].end() ? '?' : found->second;
                text += letter == '\t' ? ' ' : static_cast<char>(letter); // a blank's picture is a tab's too
            }
        }
    }
    return text;
}

} // namespace Quillon
