#pragma once
// A resampling in lines of text, for reports and for the form.

#include "reporting/MethodsTable.h"
#include "studies/methods/Resampling.h"
#include "workspace/records/Counts.h"

#include <string>
#include <vector>

namespace Quillon {

// "parametric", "residuals": the kinds as jobs and results name them.
const char* KindName(ResampleKind kind);

// "1000 fits to resampled data (parametric, seed 1), 3 of which failed", and for residuals in blocks the
// lengths of the blocks.
std::string ResamplingHead(const Resampling& resampling);

// A value of a fitted slot in its picture.
std::string SpreadText(SlotNo slot, double displayed);

// The same as a table for documents: a row for each parameter and each derived quantity.
TextTable ResamplingTable(const Resampling& resampling);

// A derived quantity and its value as they are shown: "Ln K(1>N): Kd  (mol/L)", "6.158E-6".
std::string QuantityCaption(const DerivedQuantity& quantity);
std::string QuantityText(const DerivedQuantity& quantity, double value);

// The whole: the head, a line for each parameter and each derived quantity with its limits, how well these
// are known.
std::vector<std::string> ResamplingLines(const Resampling& resampling);

} // namespace Quillon
