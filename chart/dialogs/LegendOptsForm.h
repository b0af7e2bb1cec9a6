#pragma once
// The form "Edit Legend Text and Legend Format" as data: the text of each set, place, font, colour and size
// of the legend. It works on a copy; OK brings it into the graph.

#include "chart/dialogs/OptionLists.h"
#include "chart/records/Records.h"
#include "platform/Arrays.h"
#include "platform/Controls.h"

#include <string>

namespace Quillon {

inline constexpr const char* LegendOptsFormName = "LegendOptsForm"; // of the form, for the seam

struct LegendOptsFormRecord {
    FormState State;
    Control TextLabel, PlaceFrame, TextFrame, FontLabel, SizeLabel, SizeNote;
    Control lstLegendText; // one row for each set; Value: the row chosen, from 0
    Control txtLegendText; // the text of that row
    Control optRight, optBottom;
    Control optSingle, optMatch; // one colour for all, or each entry in that of its set
    Control Color;               // Value: the row, from 0; open with optSingle
    Control FontBox;
    Control TitleSizeInput;
    Control Preview;
    Control OkButton, CancelButton;
    GraphLegend Edited; // the copy
};
extern LegendOptsFormRecord LegendOptsForm;

// The command mnuEditLegend: shows the form and, when it was accepted, lays out and draws the graph afresh.
void EditLegend();

void LoadLegendOptsForm();

void LegendOptsRowClick(int row); // what was typed for the former row stays
void LegendOptsTextGotFocus();
int LegendOptsTextKeyPress(int key); // Enter goes to the next row, at the last one it presses OK
void LegendOptsTextChanged();        // the row of the list follows
void LegendOptsPlaceClick(std::int16_t where);
void LegendOptsSingleClick();
void LegendOptsMatchClick();
void LegendOptsColorClick(int row);
void LegendOptsFontClick(int row);
void LegendOptsSizeGotFocus();
int LegendOptsSizeKeyPress(int key);
void LegendOptsSizeLostFocus(); // refuses what is not between 0 and 1

void LegendOptsOkButton(); // closes, unless the size is refused
void LegendOptsCancelButton();

} // namespace Quillon
