#include "scandata/table/Labels.h"

#include "platform/Letters.h"
#include "platform/Paths.h"

namespace Quillon {

namespace {

bool SameLetterAt(const OneBased<std::string>& labels, std::size_t place, long first, long last) {
    const char letter = CapitalLetter(labels[first][place]);
    for (long k = first + 1; k <= last; ++k)
        if (place >= labels[k].size() || CapitalLetter(labels[k][place]) != letter) return false;
    return true;
}

bool EndsDirectory(char c) {
    return c == ':' || IsSeparator(c);
}

} // namespace

void ShortenLabels(OneBased<std::string>& labels, std::string& prefix, long first, long last) {
    if (first >= last) return;
    std::size_t common = 0;
    while (common < labels[first].size() && SameLetterAt(labels, common, first, last))
        ++common;
    while (common > 0 && !EndsDirectory(labels[first][common - 1]))
        --common;
    if (common == 0) return;
    prefix = labels[first].substr(0, common);
    for (long k = first; k <= last; ++k)
        labels[k].erase(0, common);
}

} // namespace Quillon
