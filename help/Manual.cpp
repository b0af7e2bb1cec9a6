#include "help/Manual.h"

#include "platform/Letters.h"

#include <algorithm>
#include <sstream>

namespace Quillon {

namespace {

std::vector<std::string> LinesOf(std::string_view text) {
    std::istringstream in{std::string(text)};
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

bool IsHeading(std::string_view line) {
    return line.starts_with('#');
}

// A heading's text: without its signs, and without the marks of code and emphasis.
std::string HeadingText(std::string_view line) {
    std::string text(line.substr(std::min(line.find_first_not_of("# "), line.size())));
    std::erase_if(text, [](char c) { return c == '`' || c == '*'; });
    return text;
}

// "[text](link)" of a line of a list; false for other lines.
bool IsListedLink(std::string_view line, std::string& text, std::string& link) {
    if (!line.starts_with("- [")) return false;
    const std::size_t close = line.find("](");
    const std::size_t end = line.find(')', close);
    if (close == std::string_view::npos || end == std::string_view::npos) return false;
    text = line.substr(3, close - 3);
    link = line.substr(close + 2, end - close - 2);
    return true;
}

long CountOf(const std::string& word, const std::string& text) {
    long count = 0;
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + word.size()))
        ++count;
    return count;
}

struct Hit {
    ManualEntry Entry;
    bool InTitle;
    long Count;
};

// The heading above the first line that holds the word.
std::string AnchorAbove(const ManualPage& page, const std::string& word) {
    std::string anchor;
    bool title = true;
    for (const std::string& line : LinesOf(page.Text)) {
        if (IsHeading(line)) {
            anchor = title ? "" : AnchorOfHeading(HeadingText(line));
            title = false;
        }
        if (SmallLetters(line).find(word) != std::string::npos) return anchor;
    }
    return "";
}

bool HoldsAll(const std::string& small, const std::vector<std::string>& words, long& count) {
    count = 0;
    for (const std::string& word : words) {
        const long here = CountOf(word, small);
        if (here == 0) return false;
        count += here;
    }
    return true;
}

std::vector<std::string> WordsOf(std::string_view text) {
    std::istringstream in(SmallLetters(text));
    std::vector<std::string> words;
    for (std::string word; in >> word;)
        words.push_back(word);
    return words;
}

} // namespace

const ManualPage* FindManualPage(std::string_view path) {
    for (const ManualPage& page : ManualPages())
        if (page.Path == path) return &page;
    return nullptr;
}

std::string PageOfForm(std::string_view form) {
    const std::string path = "manual/forms/" + std::string(form) + ".md";
    return FindManualPage(path) ? path : ManualStart;
}

std::string ManualTitle(const ManualPage& page) {
    for (const std::string& line : LinesOf(page.Text))
        if (IsHeading(line)) return HeadingText(line);
    return page.Path;
}

std::string AnchorOfHeading(std::string_view heading) {
    std::string anchor;
    for (const char c : heading) {
        const char small = SmallLetter(c);
        const bool stays = static_cast<unsigned char>(c) >= 0x80 || (small >= 'a' && small <= 'z') ||
                           (c >= '0' && c <= '9') || c == '-' || c == '_';
        if (c == ' ')
            anchor += '-';
        else if (stays)
            anchor += small;
    }
    return anchor;
}

ManualPlace FollowManualLink(std::string_view fromPath, std::string_view link) {
    const std::size_t sharp = link.find('#');
    const std::string anchor(sharp == std::string_view::npos ? "" : link.substr(sharp + 1));
    std::string_view rest = link.substr(0, sharp);
    if (rest.empty()) return {std::string(fromPath), anchor};
    std::string folder(
        fromPath.substr(0, fromPath.rfind('/') == std::string_view::npos ? 0 : fromPath.rfind('/')));
    while (rest.starts_with("../")) {
        rest.remove_prefix(3);
        const std::size_t slash = folder.rfind('/');
        folder = slash == std::string::npos ? "" : folder.substr(0, slash);
    }
    return {folder.empty() ? std::string(rest) : folder + "/" + std::string(rest), anchor};
}

std::vector<ManualEntry> ManualContents() {
    std::vector<ManualEntry> contents;
    const ManualPage* start = FindManualPage(ManualStart);
    if (!start) return contents;
    std::string text;
    std::string link;
    for (const std::string& line : LinesOf(start->Text)) {
        if (line.starts_with("## "))
            contents.push_back({HeadingText(line), {}});
        else if (IsListedLink(line, text, link))
            contents.push_back({text, FollowManualLink(ManualStart, link)});
    }
    return contents;
}

std::vector<ManualEntry> ManualIndex() {
    std::vector<ManualEntry> index;
    for (const ManualPage& page : ManualPages()) {
        const std::string title = ManualTitle(page);
        index.push_back({title, {page.Path, ""}});
        for (const std::string& line : LinesOf(page.Text))
            if (line.starts_with("##")) {
                const std::string heading = HeadingText(line);
                index.push_back({heading + " - " + title, {page.Path, AnchorOfHeading(heading)}});
            }
    }
    std::stable_sort(index.begin(), index.end(), [](const ManualEntry& a, const ManualEntry& b) {
        return SmallLetters(a.Text) < SmallLetters(b.Text);
    });
    return index;
}

std::vector<ManualEntry> SearchManual(std::string_view text) {
    const std::vector<std::string> words = WordsOf(text);
    std::vector<Hit> hits;
    for (const ManualPage& page : ManualPages()) {
        long count = 0;
        if (words.empty() || !HoldsAll(SmallLetters(page.Text), words, count)) continue;
        const std::string title = ManualTitle(page);
        const bool inTitle = SmallLetters(title).find(words.front()) != std::string::npos;
        hits.push_back({{title, {page.Path, AnchorAbove(page, words.front())}}, inTitle, count});
    }
    std::stable_sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) {
        return a.InTitle != b.InTitle ? a.InTitle : a.Count > b.Count;
    });
    std::vector<ManualEntry> found;
    for (const Hit& hit : hits)
        found.push_back(hit.Entry);
    return found;
}

} // namespace Quillon
