#pragma once
// What the dialogs of the chart share: their lists and the rule of text sizes.

#include "chart/records/Colors.h"
#include "platform/Controls.h"

#include <string>
#include <vector>

namespace Quillon {

inline constexpr long LongestTitle = 80; // characters of a title that can be typed
inline constexpr float CentimetresPerInch = 2.54F;

// The six ways to justify a title, in the order of GraphTitle::Justify.
std::vector<std::string> JustifyNames();

// The colours of the table in force, in the order of the cycle, by ColorName.
std::vector<std::string> ColorListNames();

// "Dark Blue" for a basic colour, "Vermilion (#BB5702)" for one of the safe palette, "#RRGGBB" for another.
std::string ColorName(ChartColor color);

// The row of a cycle index in the list of colours, and the colour of a row.
int ColorListRow(std::int16_t cycleIndex);
ChartColor ColorOfRow(int row);

// The font of the row chosen in a list of fonts. A font that no row stands for is kept until another row than
// the one shown for it is chosen.
std::int16_t ChosenFont(const Control& list, std::int16_t before);

// A list box with a row chosen.
void FillList(Control& list, const std::vector<std::string>& items, int row);

// Shows a text as it will look: Text, ForeColor, and the face in Tag, with " Bold" behind it where it is
// bold.
void ShowSample(Control& sample, const std::string& text, std::int16_t font, int colorRow);

// The text of a size, a fraction of the diagonal.
std::string SizeText(float size);

// "(.009 to .053 shows)": between which fractions a text changes its size on the target.
std::string SizeNote();

// A box of a size is left or its form accepted: takes a new value into size. One that is not between 0 and 1
// is told, and the focus goes back; false then. A text that was not changed leaves size as it is.
bool TakeSize(FormState& form, Control& box, float& size);

} // namespace Quillon
