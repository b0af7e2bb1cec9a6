#pragma once
// Texts with raised digits: a caret and the whole number behind it, "cm^2", "10^-5", stand as an exponent.
// The text itself, in files and fields, stays as it was typed.

#include <string>
#include <vector>

namespace Quillon {

struct TextPiece {
    std::string Text;
    bool Raised = false;
    bool operator==(const TextPiece&) const = default;
};

// A text in the pieces that it is drawn in, in its order. A caret that no digit follows, with or without a
// minus before it, stays a caret. Where all exponents of a text are 1, 2 or 3 and hasGlyphs says that the
// font has letters for these, as every font of Latin-1 has, they are those letters in a piece of the line.
std::vector<TextPiece> PiecesOf(const std::string& text, bool hasGlyphs);

// Exponents in the font of a line: their height, and how far their baseline stands above that of the line, as
// parts of the height of the line. They end below its tallest letters, so that lines take no more room.
inline constexpr double RaisedHeight = 0.65, RaisedBy = 0.26;

} // namespace Quillon
