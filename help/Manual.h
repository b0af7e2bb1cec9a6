#pragma once
// The manual that is built into the program: Markdown pages, and the ways into them.
//
// A page is named by its path below docs/, with "/" ("manual/forms/FileForm.md"); a place is a page and the
// anchor of a heading on it, or "" for its beginning. Texts are UTF-8.

#include "help/EmbeddedPages.h"

#include <string>
#include <string_view>
#include <vector>

namespace Quillon {

// The page of that path; null when there is none.
const ManualPage* FindManualPage(std::string_view path);

struct ManualPlace {
    std::string Path;
    std::string Anchor;
    bool operator==(const ManualPlace&) const = default;
};

// A line of a list that leads somewhere; Place.Path is "" for a line that only heads those below it.
struct ManualEntry {
    std::string Text;
    ManualPlace Place;
};

// Where the manual begins, and the page of a form: the beginning for a form that has none.
inline constexpr const char* ManualStart = "manual/index.md";
std::string PageOfForm(std::string_view form);

// The first heading of a page.
std::string ManualTitle(const ManualPage& page);

// The anchor that readers of Markdown give to a heading: small letters, "-" for blanks, nothing but letters,
// digits, "-" and "_" besides; letters beyond ASCII stay.
std::string AnchorOfHeading(std::string_view heading);

// Where a link on a page leads: relative paths with ".." and "#anchor" are understood.
ManualPlace FollowManualLink(std::string_view fromPath, std::string_view link);

// The first page as a list: its headings, and below each the pages that it links in lists.
std::vector<ManualEntry> ManualContents();

// Every heading of every page as "heading - title of the page", titles alone, in the order of the alphabet
// without regard to case.
std::vector<ManualEntry> ManualIndex();

// The pages that hold all words of the text, without regard to the case of ASCII letters; each leads to the
// heading below which the first word stands. Pages whose title holds a word come first, then those that hold
// the words most often. Nothing for a text without words.
std::vector<ManualEntry> SearchManual(std::string_view text);

} // namespace Quillon
