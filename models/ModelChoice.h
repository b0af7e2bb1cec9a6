#pragma once
// What the choice of a model brings with it: the checks of the dialog, and everything re-derived after it.

#include "models/forms/DialogAnswer.h"

#include <cstdint>

namespace Quillon {

// Checks the options against the model as the dialog's OK does, with its messages. May switch an option
// off, and the zero offset links. True when the choice stands; false when the dialog has to stay open.
bool CheckModelChoice();

// What a user has to know of a hetero-association newly chosen; takes mg/mL units back to signal units.
void AnnounceHeteroModel(std::int16_t oldModel);

// Re-derives everything that hangs on the model: NumParms, FitTitle, names, formats, scale. With showDialog
// the model dialog is loaded and shown first (form "ModelForm"), again and again until its choice stands. A
// cancelled dialog leaves the workspace as it was and is the answer. A RuntimeError (a coefficient without a
// logarithm) leaves the workspace as it was, too.
DialogAnswer SelectModel(bool showDialog);

// The tail of SelectModel for a choice that has been made: oldSeparateK is what stood before, chosen tells
// that the dialog made the choice. That resets the fit flags of all MaxSets sets, since a set may come into
// the fit later than its model.
void AdoptModel(std::int16_t oldSeparateK, bool chosen);

} // namespace Quillon
