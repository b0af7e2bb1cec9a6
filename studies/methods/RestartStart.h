#pragma once
// A start somewhere else: random starting values of the fitted parameters, from which a fit may come to
// another minimum.

#include <string>

namespace Quillon {

// How far a start lies from the one it is drawn from.
inline constexpr double ConstantReach = 4.0; // of ln K, to both sides
inline constexpr double LeastFactor = 0.7;   // of masses and stoichiometries
inline constexpr double LargestFactor = 1.4;
inline constexpr double SignalReach = 1.0; // of ln c where neither of these is fitted

// Moves Work.Parms, evenly within these reaches and with the numbers of Host.Uniform. Constants that each set
// has for itself move together. Fitted concentrations are then guessed anew from the data; where that cannot
// be done they stay, and why is the answer. Held and tied parameters keep their values, zero offsets and
// virial coefficients those of the start.
std::string MoveStart();

// Fitted concentrations as they are read off the data at the constants of Work.Parms, and nothing else. A
// model without a guess of its own takes that of the one before it. Where there is nothing to be read they
// stay, and the answer says why; it is empty otherwise.
std::string GuessSignals();

} // namespace Quillon
