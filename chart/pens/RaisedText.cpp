#include "chart/pens/RaisedText.h"

#include <algorithm>

namespace Quillon {

namespace {

bool IsDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

// The length of the exponent behind the caret at a place; 0 where there is none.
std::size_t ExponentAt(const std::string& text, std::size_t caret) {
    std::size_t end = caret + 1;
    if (end < text.size() && text[end] == '-') ++end;
    const std::size_t digits = end;
    while (end < text.size() && IsDigit(text[end]))
        ++end;
    return end == digits ? 0 : end - caret - 1;
}

std::vector<TextPiece> Split(const std::string& text) {
    std::vector<TextPiece> pieces;
    std::size_t begin = 0;
    for (std::size_t caret = text.find('^'); caret != std::string::npos; caret = text.find('^', caret + 1)) {
        const std::size_t length = ExponentAt(text, caret);
        if (length == 0) continue;
        if (caret > begin) pieces.push_back({text.substr(begin, caret - begin)});
        pieces.push_back({text.substr(caret + 1, length), true});
        begin = caret + 1 + length;
    }
    if (begin < text.size()) pieces.push_back({text.substr(begin)});
    return pieces;
}

bool HasGlyph(const TextPiece& piece) {
    return !piece.Raised || (piece.Text.size() == 1 && piece.Text >= "1" && piece.Text <= "3");
}

// The letters of Latin-1.
std::string Glyph(const TextPiece& piece) {
    if (!piece.Raised) return piece.Text;
    return piece.Text == "1" ? "\xB9" : piece.Text == "2" ? "\xB2" : "\xB3";
}

} // namespace

std::vector<TextPiece> PiecesOf(const std::string& text, bool hasGlyphs) {
    std::vector<TextPiece> pieces = Split(text);
    if (!hasGlyphs || !std::all_of(pieces.begin(), pieces.end(), HasGlyph)) return pieces;
    std::string line;
    for (const TextPiece& piece : pieces)
        line += Glyph(piece);
    return {{line}};
}

} // namespace Quillon
