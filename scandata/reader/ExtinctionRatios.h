#pragma once
// The extinction of both species in a row of the data set table relative to row 1: when a new scan asks for
// it, and what is known already.

#include "workspace/records/Counts.h"

namespace Quillon {

// The comparison of wavelengths after a read into a row: ratios go to 1 where the wavelength is within 1 nm
// of that of row 1 and for interference data, otherwise the form "ExtinctionForm" is shown for the row, which
// Work.CurrentRow names (from 0, over both pages) for the time of the call. oldWavelength is what the row
// held before in whole nm; a read into row 1 that moved it by more than 1 nm compares all other rows.
void CompareWavelengths(RowNo row, int oldWavelength);

// What the extinction form shows first: where both ratios of a row are exactly 1, those of the last other row
// whose wavelength (not 0) lies within 1 nm of the row's are taken over.
void AdoptKnownRatios(RowNo row);

} // namespace Quillon
