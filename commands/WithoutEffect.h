#pragma once
// The question before a fit about parameters that no point depends on.

namespace Quillon {

inline constexpr const char* HoldQuestion = "Do you want this done before the fit?";

// Names the fitted parameters that no point depends on and offers to hold them at the values that they have.
// With Yes they are held from here on; with No the fit runs as it was chosen. Where nothing would be left to
// fit it is told without a question. Parms, scales, FreeMap and FreeIndex are those of the fit.
void OfferToHoldWithoutEffect();

} // namespace Quillon
