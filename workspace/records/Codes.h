#pragma once
// What the coded members of the workspace may hold. The members are 16-bit, as saved fits keep them.

#include <cstdint>

namespace Quillon {

// What FreeMap says of a slot beside a position of 0 or more among the fitted ones.
inline constexpr std::int16_t SlotHeld = -1;   // at the value that it has
inline constexpr std::int16_t SlotUnused = -2; // the model has no such parameter
inline constexpr std::int16_t SlotTied = -3;   // to that of another set

// Bits of ConstraintFlags.
inline constexpr std::int16_t ConcentrationBit = 1; // loadings are weighed in the fit
inline constexpr std::int16_t OffsetBit = 2;        // shared zero offsets

// MassUnits: what stands for a mass.
namespace MassUnit {
enum Code : std::int16_t { Sigma, Buoyant, Molar }; // reduced mass; kDa; kDa
}

// ConcUnits: what concentrations are shown in, by the optics of the scans.
namespace ConcUnit {
enum Code : std::int16_t { Absorbance, Weight, Mole, Fringes, FringeWeight, FringeMole };
}

// MonitorMode: whether a window shows a fit at work, and whether it waits for the user between iterations.
namespace Monitor {
enum Code : std::int16_t { None, FreeRun, Stepping, OneIteration };
}

// RescueMode: whether a fit that did not end at a minimum is searched for one by damped steps.
namespace Rescue {
enum Code : std::int16_t { Ask, Always, Never };
}

// TemperatureScale: in what sigma of a set follows the ratio of temperatures.
namespace TemperatureScales {
enum Code : std::int16_t { Celsius, Kelvin };
}

// NewData: what differs from the data of the stored fit.
namespace Changed {
enum Code : std::int16_t { Data = -1, Nothing = 0, Constraints = 1 };
}

// DataChannel: the sample of a cell; CenterpieceType and CellType: how many samples the cell has.
namespace Channel {
enum Code : std::int16_t { None, A, B, C, D };
}
namespace Centerpiece {
enum Code : std::int16_t { TwoChannel = 1, SixChannel = 3, EightChannel = 4 };
}

// NameConvention: where file names have the number of the cell, and which folders hold data; Older stands for
// every number but 1.
namespace NamedBy {
enum Code : std::int16_t { Older, Newer }; // fifth character; last character
}

// LeftOut: why a reading of a scan takes no part.
namespace LeftOutBy {
enum Code : std::int16_t { Hand, Ceiling, Intensity }; // the user, SignalCeiling, an intensity not above 0
}

// IntensityOrder: which of the two columns of an intensity scan is the sample's; None for other scans.
namespace IntensityOrders {
enum Code : std::int16_t { None, SampleFirst, ReferenceFirst };
}

// BaselineFile of a row without one.
inline constexpr const char* NoBaseline = "(none)";

} // namespace Quillon
