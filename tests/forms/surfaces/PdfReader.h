#pragma once
// Reads what the tests ask of a PDF: its objects, and the text of its page through the fonts' tables.

#include <map>
#include <string>
#include <vector>

namespace Quillon {

struct PdfDocument {
    std::map<int, std::string> Objects; // by number, streams left out
    std::map<int, std::string> Streams; // unpacked

    bool Holds(const std::string& text) const; // in an object
    double PageWidth{}, PageHeight{};          // points, of the last page
    int Pages{};
};
PdfDocument ReadPdf(const std::string& bytes);

// The texts of all pages, each letter by its font's table to Unicode; letters that have none are "?".
std::string TextOf(const PdfDocument& document);

} // namespace Quillon
