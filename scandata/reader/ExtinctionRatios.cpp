#include "scandata/reader/ExtinctionRatios.h"

#include "scandata/reader/ExtinctionForm.h"
#include "workspace/records/Roads.h"

#include <cmath>

namespace Quillon {

namespace {

constexpr float SameWavelength = 1.0F; // nm: the monochromator returns no better than this

bool SameWavelengths(float a, float b) {
    return std::abs(a - b) <= SameWavelength;
}

void SetRatios(RowNo row, float a, float b) {
    Work.ExtinctionRatio[0][row] = a;
    Work.ExtinctionRatio[1][row] = b;
}

// The form works on the row behind CurrentRow, over both pages.
void AskForRatios(RowNo row) {
    const std::int16_t shown = Work.CurrentRow;
    Work.CurrentRow = ToInt16(row.Number - 1);
    ShowExtinctionForm();
    Work.CurrentRow = shown;
}

void CompareWithFirst(RowNo row) {
    if (Work.InterferenceData || SameWavelengths(Work.ScanWavelength[row], Work.ScanWavelength[1]))
        SetRatios(row, 1.0F, 1.0F);
    else
        AskForRatios(row);
}

} // namespace

void CompareWavelengths(RowNo row, int oldWavelength) {
    if (row != RowNo(1)) {
        CompareWithFirst(row);
        return;
    }
    if (SameWavelengths(Work.ScanWavelength[1], static_cast<float>(oldWavelength))) return;
    for (RowNo i(2); i <= RowNo(Work.MaxSets); ++i)
        if (Work.ScanFile[i].empty())
            SetRatios(i, 1.0F, 1.0F);
        else
            CompareWithFirst(i);
}

void AdoptKnownRatios(RowNo row) {
    if (Work.ExtinctionRatio[0][row] != 1.0F || Work.ExtinctionRatio[1][row] != 1.0F) return;
    for (const RowNo j : EachRow())
        if (j != row && Work.ScanWavelength[j] != 0.0F &&
            SameWavelengths(Work.ScanWavelength[j], Work.ScanWavelength[row]))
            SetRatios(row, Work.ExtinctionRatio[0][j], Work.ExtinctionRatio[1][j]);
}

} // namespace Quillon
