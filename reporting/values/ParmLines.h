#pragma once
// Lines of text about a finished fit, shared by the results form and the printed report: fitted parameters
// with their errors, parameters held constant, tied zero offsets, the warning about high correlations.
//
// Names stand in a column of their own. In a proportional font the column is made by appending blanks until
// the measured width is reached, so the functions take the font as a measuring function; on fixed-pitch
// paper the width of a text is its length.

#include "workspace/records/Counts.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Quillon {

// The width of a text in the font in use, in any unit.
using TextMeasure = std::function<int(const std::string&)>;

// Fixed pitch: one for each character.
int CountCharacters(const std::string& text);

// text with blanks behind it until it is at least width wide. A font without a wide blank gives text as it
// is.
std::string PadToWidth(std::string text, double width, const TextMeasure& measure);

// A text that begins with the decimal point gets a "0" in front of it.
std::string WithLeadingZero(std::string text);

// The free position's name, with its unit behind it as "  (unit) " where it has one.
std::string FittedName(FreePos freePosition);

// How sure the value is: "+/-  0.31", or with LimitsDone "[ 41.9, 43.2 ]", in user units; "not determined"
// without an error, and nothing where the fit came without its inverse.
std::string AccuracyText(FreePos freePosition);

// The error alone, and with LimitsDone the limits behind it: what a report says, which has room for both.
std::string WholeAccuracyText(FreePos freePosition);

// One line for each free position: name column, value, and how sure it is as accuracy says. The column is as
// wide as the widest name and three and a half blanks.
std::vector<std::string> FittedLines(const TextMeasure& measure = CountCharacters,
                                     std::string (*accuracy)(FreePos freePosition) = AccuracyText);

// One line for each slot in use that is held: name and unit, value.
std::vector<std::string> HeldLines(const TextMeasure& measure = CountCharacters);

// One line for each set whose zero offset is tied to that of another.
std::vector<std::string> OffsetLinkLines();

// True when limits have been searched and one of the two of a free position was not found.
bool LacksALimit(FreePos place);

// What is to be said of the fit that stands before its numbers are believed: that it is no minimum, what the
// data do not determine. Empty for most; whole sentences.
std::vector<std::string> FitWarningLines();

// The parts of a warning: " is 1 parameter cross correlation > 0.97" or " are 3 ...s > 0.97", and
// " and 2 higher than 0.99", which is empty without a very high one.
std::string HighCorrelationText(std::int16_t count);
std::string VeryHighCorrelationText(std::int16_t count);

// RunsZ as it is shown: three significant digits.
std::string RunsZText();

} // namespace Quillon
