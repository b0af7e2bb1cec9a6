#pragma once
// What was measured and found, as two tables for a paper: a row for each data set and a row for each
// parameter.
//
// CSV is for other programs: everything that is known, numbers with all their digits, an empty line between
// the tables. HTML, LaTeX and Markdown are for readers: a choice of columns, numbers as they are shown.

#include <string>
#include <vector>

namespace Quillon {

// A table of texts: heads and rows as wide as they are.
struct TextTable {
    std::string Caption;
    std::vector<std::string> Heads;
    std::vector<std::vector<std::string>> Rows;
};

// For readers. Superscripts and Greek are words ("degrees C"), so that every format can show them.
TextTable SetsTable();
TextTable ParametersTable();

enum class MethodsFormat { Csv, Html, Latex, Markdown };

// The format of a file by its ending: csv, html, tex or md in any case, CSV for "-". Another one is a
// RuntimeError that lists them.
MethodsFormat MethodsFormatOf(const std::string& path);

// The whole text, of the fit that stands.
std::string MethodsText(MethodsFormat format);

// A table in HTML, without anything around it; what has a meaning there is written as text.
std::string HtmlTable(const TextTable& table);
std::string HtmlText(const std::string& text);

// What stands before the body of a document: title, style, and that nothing is run or fetched.
std::string HtmlHead(const std::string& title);

} // namespace Quillon
