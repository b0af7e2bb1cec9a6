#pragma once
// The catalogue of the 22 association models: their names, the meaning of the parameter slots, and which
// slots a model uses, holds or fits.

#include <cstdint>
#include <string>

namespace Quillon {

inline constexpr int LastModelNumber = 22;

// Name of a model as the model dialog lists it; "" outside 1..22.
std::string ModelDialogName(int model);

// Name of a model as reports and results print it; "" outside 1..22.
std::string ModelReportName(int model);

// The options that a model allows.
bool ModelAllowsNonIdeal(int model);  // models 1 to 5
bool ModelAllowsSeparateK(int model); // models 2 to 6, 8, 9

// True when the third slot of each set holds an association constant and the zero offset is exactly 0:
// SeparateK with model 4, 5 or above 6.
bool OffsetSlotHoldsConstant(int model, bool separateK);

// Fills Work.ModelName(1..ModelCount).
void FillModelNames();

// Sets Work.FreeMap and the forced values of Work.Parms for the model, its options and the offset links.
void ApplyModelFlags();

// Rebuilds Work.ParmName and Work.ParmTitle for all MaxSets sets from model, units and options.
void BuildParmNames();

// Rebuilds Work.ParmFormat, the number pictures of the slots in user units.
void BuildParmFormats();

// Re-derives everything that hangs on the model: NumParms, FitTitle, names, formats, scale. With showDialog
// the model dialog is loaded and shown first (form "ModelForm"), again and again until its choice stands. A
// cancelled dialog leaves the workspace as it was, but for Work.AbortFit, which is set for the caller to
// clear. A RuntimeError (a coefficient without a logarithm) leaves the workspace as it was, too.
void SelectModel(bool showDialog);

// The tail of SelectModel for a choice that has been made: oldSeparateK and oldNumParms are what stood
// before, chosen tells that the dialog made the choice (which resets the fit flags).
void AdoptModel(std::int16_t oldSeparateK, std::int16_t oldNumParms, bool chosen);

// Work.FitTitle from model and options: name, " fit", then the options.
std::string ModelFitTitle();

} // namespace Quillon
