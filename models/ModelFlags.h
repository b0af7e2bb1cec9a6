#pragma once
// Which slots a model uses, holds or fits.

namespace Quillon {

// Sets Work.FreeMap and the forced values of Work.Parms for Work.Model, its options and the zero offset
// links, by the table of models. A flag that the model leaves open stays as it is.
void ApplyModelFlags();

// Models with one constant for two bonds show it in both of its slots; behind every fit.
void CopySharedConstants();

} // namespace Quillon
