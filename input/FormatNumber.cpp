#include "input/FormatNumber.h"

#include "input/DecimalDigits.h"
#include "input/NumberPicture.h"
#include "input/SingleText.h"

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

// Rounds to the mantissa of a picture part; its exponent.
long TakeExponent(DecimalDigits& number, const PicturePart& picture) {
    RoundHalfAway(number, picture.WholePlaces + picture.FractionPlaces);
    if (number.IsZero()) return 0;
    const long exponent = number.Point - picture.WholePlaces;
    number.Point = picture.WholePlaces;
    return exponent;
}

PlacedNumber Place(DecimalDigits number, const PicturePart& picture) {
    PlacedNumber placed;
    long least = picture.WholeDigits;
    if (picture.Scientific) {
        placed.Exponent = TakeExponent(number, picture);
        const bool mantissaOfZero = number.IsZero() && picture.WholePlaces > 0;
        if (mantissaOfZero) least = std::max(1L, least); // it is the digit 0
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

// A number on its way through the elements of a picture part.
struct Writing {
    const PlacedNumber& Placed;
    const PicturePart& Picture;
    long WholePower = Picture.WholePlaces - 1; // of the next place left of the mark
    long FractionPlace = 0;                    // of the last one right of it
    std::string Text{};

    // The first place takes the digits with it that the picture has no place for.
    void WholePlace() {
        const bool first = WholePower == Picture.WholePlaces - 1;
        WriteWhole(Text, Placed, Picture, first ? Placed.WholeDigits - 1 : WholePower, WholePower);
        --WholePower;
    }
    void Mark() {
        if (Picture.WholePlaces == 0) WriteWhole(Text, Placed, Picture, Placed.WholeDigits - 1, 0);
        Text += '.';
    }
    void FractionDigit() {
        ++FractionPlace;
        if (FractionPlace <= Placed.FractionDigits) Text += Placed.Number.At(-FractionPlace);
    }
    void Take(const PictureElement& element) {
        switch (element.Item) {
        case PictureItem::WholePlace:
            return WholePlace();
        case PictureItem::Mark:
            return Mark();
        case PictureItem::FractionPlace:
            return FractionDigit();
        case PictureItem::Exponent:
            return WriteExponent(Text, Placed.Exponent, Picture);
        case PictureItem::Itself:
            Text += element.Character;
        }
    }
};

std::string Write(const PlacedNumber& placed, const PicturePart& picture) {
    Writing writing{placed, picture};
    for (const PictureElement& element : picture.Elements)
        writing.Take(element);
    return writing.Text;
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
