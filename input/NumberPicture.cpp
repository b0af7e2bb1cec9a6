#include "input/NumberPicture.h"

#include <algorithm>
#include <cstddef>

namespace Quillon {
namespace {

constexpr bool IsPlace(char c) {
    return c == '0' || c == '#';
}

bool IsPlaceAt(std::string_view part, std::size_t i) {
    return i < part.size() && IsPlace(part[i]);
}

// An exponent starts at i: "E" or "e", a sign, at least one digit place. It needs a mantissa before it.
bool IsExponentAt(std::string_view part, std::size_t i, const PicturePart& soFar) {
    return !soFar.Scientific && soFar.WholePlaces + soFar.FractionPlaces > 0 &&
           (part[i] == 'E' || part[i] == 'e') && i + 2 < part.size() &&
           (part[i + 1] == '+' || part[i + 1] == '-') && IsPlace(part[i + 2]);
}

// Takes the exponent in; answers how many characters of the picture it has.
std::size_t AddExponent(std::string_view part, std::size_t i, PicturePart& picture) {
    std::size_t end = i + 2;
    long digits = 0;
    for (; IsPlaceAt(part, end); ++end)
        if (part[end] == '0' || digits > 0) ++digits;
    picture.Scientific = true;
    picture.ExponentLetter = part[i];
    picture.ExponentPlus = part[i + 1] == '+';
    picture.ExponentDigits = std::max(1L, digits);
    picture.Elements.push_back({PictureItem::Exponent, part[i]});
    return end - i;
}

void AddPlace(char place, PicturePart& picture) {
    if (picture.HasMark) {
        ++picture.FractionPlaces;
        if (place == '0') picture.FractionDigits = picture.FractionPlaces;
        picture.Elements.push_back({PictureItem::FractionPlace, place});
    } else {
        ++picture.WholePlaces;
        if (place == '0' || picture.WholeDigits > 0) ++picture.WholeDigits;
        picture.Elements.push_back({PictureItem::WholePlace, place});
    }
}

} // namespace

PicturePart ParsePart(std::string_view part) {
    PicturePart picture;
    std::size_t i = 0;
    while (i < part.size()) {
        const char c = part[i];
        if (IsExponentAt(part, i, picture)) {
            i += AddExponent(part, i, picture);
            continue;
        }
        if (IsPlace(c) && !picture.Scientific) {
            AddPlace(c, picture);
        } else if (c == '.' && !picture.HasMark && !picture.Scientific) {
            picture.HasMark = true;
            picture.Elements.push_back({PictureItem::Mark, c});
        } else if (c == ',' && !picture.HasMark && !picture.Scientific && i > 0 && IsPlace(part[i - 1]) &&
                   IsPlaceAt(part, i + 1)) {
            picture.Groups = true;
        } else {
            if (c == '%') ++picture.Percents;
            picture.Elements.push_back({PictureItem::Itself, c});
        }
        ++i;
    }
    return picture;
}

ChosenPart ChoosePart(std::string_view picture, double value) {
    const std::size_t first = std::min(picture.find(';'), picture.size());
    const std::string_view above = picture.substr(0, first);
    const std::string_view rest = picture.substr(std::min(first + 1, picture.size()));
    const std::size_t second = std::min(rest.find(';'), rest.size());
    const std::string_view below = rest.substr(0, second);
    const std::string_view behind = rest.substr(std::min(second + 1, rest.size()));
    const std::string_view zero = behind.substr(0, behind.find(';'));
    if (value < 0 && !below.empty()) return {below, false};
    if (value == 0 && !zero.empty()) return {zero, true};
    return {above, true};
}

} // namespace Quillon
