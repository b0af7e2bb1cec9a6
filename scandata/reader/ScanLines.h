#pragma once
// The lines of a scan file, taken apart: the fields of the parameter line and the list of points. What is
// wrong with one is a RuntimeError that tells the line's number, its text and why.

#include "scandata/reader/TextItems.h"

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <string_view>

namespace Quillon {

// Raises what is wrong with the line at a place of the file: "line 7, '6.1': a radius without a value". A
// long line is cut behind 60 characters, control characters show as blanks.
[[noreturn]] void RaiseAt(const TextItems& file, std::size_t place, const std::string& why);

// Runs take; what it raises is told with the line at a place of the file.
void TakeFrom(const TextItems& file, std::size_t place, const std::function<void()>& take);

// Numbers of a file. One that does not fit the width of its field is a RuntimeError that says so.
double NumberOf(std::string_view text); // the longest numeric prefix, 0 without one
float SingleOf(double value);
[[noreturn]] void RaiseTooLarge();
template <class Whole> Whole WholeOf(double value) { // rounded to nearest, ties to even
    const double whole = std::nearbyint(value);
    if (!(whole >= static_cast<double>(std::numeric_limits<Whole>::min()) &&
          whole <= static_cast<double>(std::numeric_limits<Whole>::max())))
        RaiseTooLarge();
    return static_cast<Whole>(whole);
}

// The text from position (from 1; taken as 1 when below) up to the nearest of the separators; position is
// then one past it, or 0 where there is none.
std::string_view TokenAt(long& position, std::string_view text, std::string_view separators);

// --- line 1 and 2 ------------------------------------------------------------------------------------------

std::string_view ReadCommentLine(TextItems& file); // an empty file is a RuntimeError

// The parameter line, taken field by field.
struct HeaderFields {
    std::string_view Rest;
    std::size_t Width = 0; // of the latest field with the blank behind it; 0 when there was no such blank
};

inline constexpr const char* CommaInHeader =
    "a comma ends the parameter line; numbers have a decimal point and are parted by blanks";

// Drops type letter, blank and cell number. A line without them is a RuntimeError.
HeaderFields StartHeader(std::string_view line, bool endsAtComma);

// A field is what stands before a blank: the end of the line does not end one, which then reads as 0.
double NextHeaderField(HeaderFields& header);

// The field behind the last blank, read no wider than the field before it.
double LastHeaderField(const HeaderFields& header);

// --- points ------------------------------------------------------------------------------------------------

struct PointLine {
    float Radius{}; // cm
    float Value{};
    bool Excluded = false; // by a negative third number
    float Second{};        // the second reading, where the third number is one
    bool NoNumber = false; // a reading is a word, "nan" for one, which counts as 0
};

// What the third number of a point says: the deviation of its value, where a negative one excludes the point,
// or a second reading at the radius, which every point has to have.
enum class ThirdNumber { Deviation, Reading };

// Takes the next point when its line is an ordinary one: two or three numbers that TakePlainNumber reads,
// with blanks between them and no comma up to the line's end. The fast road: one pass over the bytes, no
// copy, the same bits. False for every other line, with nothing taken.
bool TakePlainPoint(TextItems& file, PointLine& point, ThirdNumber third = ThirdNumber::Deviation);

// How a list of points ended.
struct PointList {
    long Points = 0;           // stored ones, the terminating line counted off
    bool TooMany = false;      // the last number that a point may have is taken; more may follow
    bool Terminated = false;   // by a radius of 0
    long Excluded = 0;         // points left out
    std::size_t LastPlace = 0; // where its last item begins
    float NoRadius = 0.0F;     // the first radius that lies in no rotor; 0 without one
    std::size_t NoRadiusPlace = 0;
    long NoNumbers = 0; // points with a reading that is no number; the first of them
    std::size_t NoNumberPlace = 0;
};

// Reads point lines to the end of the list, which may not be the end of the file. store(i, point) keeps point
// i and tells whether i + 1 is still a number that a point may have.
PointList ReadPoints(TextItems& file, const std::function<bool(long i, const PointLine& point)>& store,
                     ThirdNumber third = ThirdNumber::Deviation);

// A list without a point is a RuntimeError that says how it came to that.
void RequirePoints(const TextItems& file, const PointList& list);

// A list with a first number that is no radius in cm is a RuntimeError that says what it may be.
void RequireRadii(const TextItems& file, const PointList& list);

// What is to be said of readings that are no number, as "nan" is none; "" where all are.
std::string RemarkOnReadings(const TextItems& file, const PointList& list);

// What is to be said of lines behind the end of a list; "" when nothing but blanks is left.
std::string RemarkOnRest(const TextItems& file, const PointList& list);

} // namespace Quillon
