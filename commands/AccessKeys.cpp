#include "commands/AccessKeys.h"

#include "platform/Letters.h"

#include <set>

namespace Quillon {

namespace {

bool IsKey(char c) {
    const char small = SmallLetter(c);
    return (small >= 'a' && small <= 'z') || (c >= '0' && c <= '9');
}

// The place of the mark; npos without one.
std::size_t MarkOf(const std::string& caption) {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != '&') continue;
        if (caption[i + 1] != '&') return i;
        ++i;
    }
    return std::string::npos;
}

// Where a key that is not taken stands, at the beginning of a word or anywhere; npos without one.
std::size_t FreePlace(const std::string& text, const std::set<char>& taken, bool wordsOnly) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool begins = i == 0 || text[i - 1] == ' ' || text[i - 1] == '(';
        if ((begins || !wordsOnly) && IsKey(text[i]) && !taken.contains(SmallLetter(text[i]))) return i;
    }
    return std::string::npos;
}

void MoveMark(std::string& caption, std::set<char>& taken) {
    std::string plain = caption;
    plain.erase(MarkOf(caption), 1);
    std::size_t place = FreePlace(plain, taken, true);
    if (place == std::string::npos) place = FreePlace(plain, taken, false);
    if (place == std::string::npos) return;
    taken.insert(SmallLetter(plain[place]));
    caption = plain.insert(place, "&");
}

} // namespace

char AccessKeyOf(const std::string& caption) {
    const std::size_t mark = MarkOf(caption);
    return mark == std::string::npos ? '\0' : SmallLetter(caption[mark + 1]);
}

std::vector<std::string> WithOwnAccessKeys(std::vector<std::string> captions) {
    std::set<char> taken;
    std::vector<std::string*> clashes;
    for (std::string& caption : captions)
        if (const char key = AccessKeyOf(caption); key != 0 && !taken.insert(key).second)
            clashes.push_back(&caption);
    for (std::string* caption : clashes)
        MoveMark(*caption, taken);
    return captions;
}

} // namespace Quillon
