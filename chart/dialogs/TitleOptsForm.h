#pragma once
// The form "Edit Graph Title(s) and Title Format" as data: text, font, colour, size and place of both titles.
// It works on a copy; OK brings it into the graph.

#include "chart/records/Records.h"
#include "platform/Controls.h"

#include <array>

namespace Quillon {

enum class TitleLine { Main, Sub };

inline constexpr const char* TitleOptsFormName = "TitleOptsForm"; // of the form, for the seam

struct TitleOptsFormRecord {
    FormState State;
    Control TitleFrame, SubTitleFrame;
    Control TextLabel, FontLabel, ColorLabel, SizeLabel, AlignmentLabel; // in both frames
    Control TitleInput, SubTitleInput;                                   // at most 80 characters
    Control FontBox, SubFontBox, Color, SubColor;                        // Value: the row, from 0
    Control TitleSizeInput, SubTitleSizeInput;
    Control Alignment, SubAlignment; // Value: Justify
    Control Preview, SubPreview;
    Control SizeNote;
    Control OkButton, CancelButton;
    std::array<GraphTitle, 2> Edited; // the copy
};
extern TitleOptsFormRecord TitleOptsForm;

// The command mnuEditTitles: shows the form and, when it was accepted, lays out and draws the graph afresh.
void EditTitles();

void LoadTitleOptsForm();

// The controls of a line.
Control& TitleTextBox(TitleLine line);
Control& TitleFontBox(TitleLine line);
Control& TitleColorBox(TitleLine line);
Control& TitleSizeBox(TitleLine line);
Control& TitleAlignmentBox(TitleLine line);
Control& TitlePreview(TitleLine line);

void TitleOptsTextGotFocus(TitleLine line);
int TitleOptsTextKeyPress(TitleLine line, int key); // Enter presses OK, Escape Cancel
void TitleOptsTextChanged(TitleLine line);          // the preview follows
void TitleOptsFontClick(TitleLine line, int row);
void TitleOptsColorClick(TitleLine line, int row);
void TitleOptsAlignmentClick(TitleLine line, int row);
void TitleOptsSizeGotFocus(TitleLine line);
int TitleOptsSizeKeyPress(TitleLine line, int key);
void TitleOptsSizeLostFocus(TitleLine line); // refuses what is not between 0 and 1

void TitleOptsOkButton(); // closes, unless a size is refused
void TitleOptsCancelButton();

} // namespace Quillon
