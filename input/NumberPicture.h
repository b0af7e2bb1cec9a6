#pragma once
// A number picture taken apart: the places of a part in order, and what they add up to.

#include <string_view>
#include <vector>

namespace Quillon {

enum class PictureItem {
    Itself,        // a character that is written as it stands
    WholePlace,    // "0" or "#" left of the decimal mark
    Mark,          // the decimal mark
    FractionPlace, // "0" or "#" right of it
    Exponent       // "E+00" and the like, as one item
};

struct PictureElement {
    PictureItem Item = PictureItem::Itself;
    char Character = 0;
};

// One part of a picture; parts are separated by ";".
struct PicturePart {
    std::vector<PictureElement> Elements;
    long WholePlaces = 0;
    long WholeDigits = 0; // written at least: the places from the first "0" on
    long FractionPlaces = 0;
    long FractionDigits = 0; // written at least: the places up to the last "0"
    long Percents = 0;       // each multiplies by 100
    bool HasMark = false;
    bool Groups = false; // "," between groups of three in the whole part
    bool Scientific = false;
    char ExponentLetter = 'E';
    bool ExponentPlus = false; // a positive exponent shows its sign
    long ExponentDigits = 1;   // written at least

    bool ShowsNumber() const { return WholePlaces + FractionPlaces > 0 || HasMark; }
};

PicturePart ParsePart(std::string_view part);

// The part of a picture that a value is written with, and whether a negative value gets a "-" there. A part
// that is empty is taken as not given.
struct ChosenPart {
    std::string_view Part;
    bool OwnSign = true;
};
ChosenPart ChoosePart(std::string_view picture, double value);

} // namespace Quillon
