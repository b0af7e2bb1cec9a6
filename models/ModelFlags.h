#pragma once
// Which slots a model uses, holds or fits.

namespace Quillon {

// Sets Work.FreeMap and the forced values of Work.Parms for Work.Model, its options and the zero offset
// links, by the table of models. A flag that the model leaves open stays as it is.
void ApplyModelFlags();

} // namespace Quillon
