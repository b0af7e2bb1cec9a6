#pragma once
// What the choice of a model brings with it: the checks of the dialog, and everything re-derived after it.

#include <cstdint>

namespace Quillon {

// Checks the options against the model as the dialog's OK does, with its messages. May switch an option
// off, and the zero offset links. True when the choice stands; false when the dialog has to stay open.
bool CheckModelChoice();

// What a user has to know of a hetero-association newly chosen; takes mg/mL units back to signal units.
void AnnounceHeteroModel(std::int16_t oldModel);

} // namespace Quillon
