#pragma once
// The form of the colours by which sets are told apart, as data. It works on the tables themselves, so that
// the graph shows each change at once; Cancel brings the tables of before back.

#include "chart/records/Colors.h"
#include "platform/Controls.h"

#include <vector>

namespace Quillon {

inline constexpr const char* SetColorName = "SetColor"; // of the form, for the seam

struct SetColorRecord {
    FormState State;
    Control TableFrame;
    Control ForScreen, ForPrinter; // which of the two tables
    Control RowsLabel;
    Control Rows; // one row for each entry of the table, "1 - Black"; Value: the row chosen, from 0
    Control EditButton;
    Control PaletteLabel, Palette; // whole tables; Value: the one that the table is, else the last, "Own"
    Control SaveDefaults;
    Control OkButton, CancelButton;
};
extern SetColorRecord SetColorForm;

// The command: shows the form, without a graph, too. Not while the gradient is in use.
void AlterColors();

void LoadSetColor();

// The table that the form shows, by row.
const std::vector<ChartColor>& ShownColors();

void SetColorTableClick(bool screen);
void SetColorRowClick(int row);
void SetColorPaletteClick(int row); // the table becomes that palette
void SetColorEditButton();          // the colour of the row, by the colour dialog

// Writes both tables to chart.ini, for the graphs of all sessions to come.
void SetColorSaveDefaults();

void SetColorOkButton();
void SetColorCancelButton();

} // namespace Quillon
