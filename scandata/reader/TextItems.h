#pragma once
// Free-format text input from a file that stands whole in memory: lines, and items that end at a comma.
//
// A line ends with CR LF, LF or CR; the last one may lack its end. The views handed out point into the
// text, nothing is copied.

#include <cstddef>
#include <string_view>

namespace Quillon {

inline constexpr bool EndsLine(char c) {
    return c == '\n' || c == '\r';
}

struct TextItems {
    std::string_view Text;
    std::size_t Place = 0;   // the next character to be read, from 0
    bool AfterComma = false; // the latest item ended at a comma, so that one more item stands on the line
};

// The next line without its end. Behind the last one: the run-time error "Input past end of file".
std::string_view ReadTextLine(TextItems& from);

// The next item: leading blanks are skipped, and the item ends at the end of the line or at the first comma,
// which is taken along. An item that starts with a double quote runs to the closing quote, over line ends
// too, and is handed out without its quotes. Behind the end of the text: "Input past end of file".
std::string_view ReadTextItem(TextItems& from);

// True when no item is left. Empty and blank lines at the very end do not count as items.
bool NoItemLeft(const TextItems& from);

// A line as a message shows it: its number, from 1, and its text without its end.
struct TextLine {
    long Number = 0;
    std::string_view Text;
};

// The line that a place of the text belongs to; a line end belongs to the line before it.
TextLine LineAt(const TextItems& of, std::size_t place);

// Without the blanks in front; tabs stay.
std::string_view WithoutLeadingBlanks(std::string_view text);

// Without the blanks at both ends; tabs stay.
std::string_view WithoutBlanks(std::string_view text);

} // namespace Quillon
