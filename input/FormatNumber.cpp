#include "input/DecimalDigits.h"
#include "input/NUMINPUT.h"
#include "input/NumberPicture.h"

#include <algorithm>
#include <cstdlib>

namespace Quillon {
namespace {

constexpr int SignificantDigits = 15; // what a double holds of any decimal number

// A number brought to the places of a picture part.
struct PlacedNumber {
    DecimalDigits Number;
    long Exponent = 0;
    long WholeDigits = 0;    // to be written left of the mark
    long FractionDigits = 0; // to be written right of it
};

PlacedNumber Place(DecimalDigits number, const PicturePart& picture) {
    PlacedNumber placed;
    long least = picture.WholeDigits;
    if (picture.Scientific) {
        RoundHalfAway(number, picture.WholePlaces + picture.FractionPlaces);
        if (!number.IsZero()) {
            placed.Exponent = number.Point - picture.WholePlaces;
            number.Point = picture.WholePlaces;
        } else if (picture.WholePlaces > 0) {
            least = std::max(1L, least); // the mantissa of zero is the digit 0
        }
    } else {
        RoundHalfAway(number, number.Point + picture.FractionPlaces);
    }
    placed.WholeDigits = std::max(least, number.Point);
    placed.FractionDigits = std::max(picture.FractionDigits, number.Decimals());
    placed.Number = std::move(number);
    return placed;
}

// The digits for 10^from down to 10^to, as far as the number is written there.
void WriteWhole(std::string& text, const PlacedNumber& placed, const PicturePart& picture, long from,
                long to) {
    for (long power = std::min(from, placed.WholeDigits - 1); power >= to; --power) {
        text += placed.Number.At(power);
        if (picture.Groups && power > 0 && power % 3 == 0) text += ',';
    }
}

void WriteExponent(std::string& text, long exponent, const PicturePart& picture) {
    text += picture.ExponentLetter;
    if (exponent < 0)
        text += '-';
    else if (picture.ExponentPlus)
        text += '+';
    const std::string digits = std::to_string(std::labs(exponent));
    const long missing = picture.ExponentDigits - static_cast<long>(digits.size());
    text.append(static_cast<std::size_t>(std::max(0L, missing)), '0');
    text += digits;
}

std::string Write(const PlacedNumber& placed, const PicturePart& picture) {
    std::string text;
    long wholePower = picture.WholePlaces - 1;
    long fractionPlace = 0;
    for (const PictureElement& element : picture.Elements) {
        switch (element.Item) {
        case PictureItem::WholePlace: {
            // The first place takes the digits with it that the picture has no place for.
            const bool first = wholePower == picture.WholePlaces - 1;
            WriteWhole(text, placed, picture, first ? placed.WholeDigits - 1 : wholePower, wholePower);
            --wholePower;
            break;
        }
        case PictureItem::Mark:
            if (picture.WholePlaces == 0) WriteWhole(text, placed, picture, placed.WholeDigits - 1, 0);
            text += '.';
            break;
        case PictureItem::FractionPlace:
            ++fractionPlace;
            if (fractionPlace <= placed.FractionDigits) text += placed.Number.At(-fractionPlace);
            break;
        case PictureItem::Exponent:
            WriteExponent(text, placed.Exponent, picture);
            break;
        case PictureItem::Itself:
            text += element.Character;
            break;
        }
    }
    return text;
}

} // namespace

std::string FormatNumber(double value, std::string_view picture) {
    if (picture.empty()) return DoubleText(value);
    const ChosenPart chosen = ChoosePart(picture, value);
    const PicturePart part = ParsePart(chosen.Part);
    DecimalDigits number = DigitsOf(value, SignificantDigits);
    if (!number.IsZero()) number.Point += 2 * part.Percents; // exact, where a product would round again
    const PlacedNumber placed = Place(std::move(number), part);
    const bool sign = value < 0 && chosen.OwnSign && part.ShowsNumber() && !placed.Number.IsZero();
    return (sign ? "-" : "") + Write(placed, part);
}

} // namespace Quillon
