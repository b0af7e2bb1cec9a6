#pragma once
// The catalogue of the 22 association models: their names and the options that they allow. What stands in
// their slots is in models/table/ModelTable.h.

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

// Work.FitTitle from model and options: name, " fit", then the options.
std::string ModelFitTitle();

} // namespace Quillon
