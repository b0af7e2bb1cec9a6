#pragma once
// The form of an axis as data: scale, tics, labels and title. It works on copies of both axes, between which
// a button swaps; OK brings what was changed into the graph.

#include "chart/records/Records.h"
#include "platform/Controls.h"

#include <array>
#include <cstdint>

namespace Quillon {

inline constexpr const char* AxisOptsFormName = "AxisOptsForm"; // of the form, for the seam

struct AxisOptsFormRecord {
    FormState State;
    Control ScaleFrame, TicFrame, TypeFrame, ModeFrame, TitleFrame;
    Control MinLabel, MaxLabel, FirstTicLabel, Label1; // Label1: of IntervalInput
    Control MinScale, MaxScale, FirstTicInput, IntervalInput;
    Control GridCheck;
    Control Linear, LogBase10, NaturalLog;          // the kind of scale
    Control ScaleManual, Prescaled, ScaleAutorange; // where its limits come from
    Control NoTics, MarkandLabel, MarkOnly;         // what stands at the tics
    Control DecFormat, ExpFormat;                   // of the labels
    Control DecimalLabel, TicDecimalInput;
    Control LabelFontLabel, LabelFontBox, LabelSizeLabel, TicLabelSizeInput; // Value of a list: its row
    Control AxisColorLabel, AxisColor;
    Control TextLabel, AxisTitleInput; // at most 80 characters
    Control TitleFontLabel, TitleFontBox, TitleColorLabel, TitleColor, TitleSizeLabel, TitleSizeInput;
    Control SizeNote;
    Control Note; // seen when the scale will be found after the form has gone
    Control SwapButton, OkButton, CancelButton;
};
extern AxisOptsFormRecord AxisOptsForm;

// The axis in hand, and whether one of the two was changed.
inline GraphAxis EditAxis;
inline std::int16_t AxisChanged = 0;

// The commands: show the form with the bottom or the left axis.
void EditHorz();
void EditVert();

void LoadAxisOptsForm(bool horizontal);

// What IntervalInput takes on a logarithmic scale to the base 10: minor tics in a decade.
bool IsMinorTicCount(float count);

// A field of a number gets the focus, a key (Enter presses OK, Escape Cancel), or is left: refuses what it
// cannot be, each with its reason.
void AxisOptsNumberGotFocus(Control& field);
int AxisOptsNumberKeyPress(Control& field, int key);
void AxisOptsNumberLostFocus(Control& field);
void AxisOptsTitleGotFocus();
int AxisOptsTitleKeyPress(int key);

// Options. A change between linear and logarithmic is warned of and asked whether to rescale.
void AxisOptsTypeClick(std::int16_t scaleType, float logBase);
void AxisOptsModeClick(std::int16_t scaleMode);
void AxisOptsTicModeClick(std::int16_t ticMode);
void AxisOptsFormatClick(std::int16_t ticFormat);
void AxisOptsGridClick();
void AxisOptsListClick(Control& list, int row);

void AxisOptsSwapButton(); // the other axis; what was entered for this one stays
void AxisOptsOkButton();   // closes, unless a field is refused
void AxisOptsCancelButton();

} // namespace Quillon
