#include "scandata/reader/TextItems.h"

#include "platform/Letters.h"
#include "platform/RuntimeError.h"

#include <algorithm>

namespace Quillon {

namespace {

bool EndsItem(char c) {
    return c == ',' || EndsLine(c);
}
bool IsQuote(char c) {
    return c == '"';
}

// Steps over the line end that stands at the place, if one does.
void SkipLineEnd(TextItems& from) {
    if (from.Place < from.Text.size() && from.Text[from.Place] == '\r') {
        ++from.Place;
        if (from.Place < from.Text.size() && from.Text[from.Place] == '\n') ++from.Place;
    } else if (from.Place < from.Text.size() && from.Text[from.Place] == '\n') {
        ++from.Place;
    }
}

void SkipBlanks(TextItems& from) {
    from.Place = std::min(from.Text.find_first_not_of(' ', from.Place), from.Text.size());
}

// Steps over the comma or the line end behind an item.
void SkipItemEnd(TextItems& from) {
    from.AfterComma = from.Place < from.Text.size() && from.Text[from.Place] == ',';
    if (from.AfterComma)
        ++from.Place;
    else
        SkipLineEnd(from);
}

// From the place up to the first character that ends what is taken, or to the end of the text.
template <class Ends> std::string_view TakeUpTo(TextItems& from, Ends ends) {
    std::size_t end = from.Place;
    while (end < from.Text.size() && !ends(from.Text[end]))
        ++end;
    const std::string_view taken = from.Text.substr(from.Place, end - from.Place);
    from.Place = end;
    return taken;
}

void RequireMore(const TextItems& from) {
    if (from.Place >= from.Text.size()) RaiseError(ErrorText::PastEndOfFile);
}

} // namespace

std::string_view ReadTextLine(TextItems& from) {
    RequireMore(from);
    const std::string_view line = TakeUpTo(from, EndsLine);
    SkipLineEnd(from);
    from.AfterComma = false;
    return line;
}

std::string_view ReadTextItem(TextItems& from) {
    RequireMore(from);
    SkipBlanks(from);
    std::string_view item;
    if (from.Place < from.Text.size() && from.Text[from.Place] == '"') {
        ++from.Place;
        item = TakeUpTo(from, IsQuote);
        if (from.Place < from.Text.size()) ++from.Place; // the closing quote
        SkipBlanks(from);
    } else {
        item = TakeUpTo(from, EndsItem);
    }
    SkipItemEnd(from);
    return item;
}

bool NoItemLeft(const TextItems& from) {
    if (from.AfterComma) return from.Place >= from.Text.size();
    std::size_t at = from.Place; // asked before each line: most begin with a blank or two
    while (at < from.Text.size() && (from.Text[at] == ' ' || EndsLine(from.Text[at])))
        ++at;
    return at >= from.Text.size();
}

TextLine LineAt(const TextItems& of, std::size_t place) {
    TextItems from{of.Text};
    TextLine line;
    while (from.Place < of.Text.size() && from.Place <= place)
        line = {line.Number + 1, ReadTextLine(from)};
    return line;
}

std::string_view WithoutLeadingBlanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

std::string_view WithoutBlanks(std::string_view text) {
    return Trimmed(text, " ");
}

} // namespace Quillon
