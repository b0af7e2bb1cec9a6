#pragma once
// The calculators on the command line: --vbar, --buffer, --equilibrium-time and what stands beside them.

#include "planning/approach/EquilibriumTime.h"

#include <optional>
#include <string>

namespace Quillon {

struct CalculatorOptions {
    std::string Chain;              // of --vbar: letters or a file; "" not wanted
    std::string Buffer;             // of --buffer; "" not wanted
    std::string Approach;           // of --equilibrium-time; "" not wanted
    double Celsius = 20.0;          // of --temperature
    std::optional<long> Disulfides; // of --disulfides; none: all cysteines are paired
};

// True when one of the three is wanted.
bool WantsCalculation(const CalculatorOptions& options);

// "20.5" of --temperature, 0 to 100; "4" of --disulfides. What is none of it is a RuntimeError that names the
// option.
double ReadCelsius(const std::string& text);
long ReadDisulfides(const std::string& text);

// "mass=50,speed=15000,inner=6.9,outer=7.2" of --equilibrium-time, over what input holds already: mass kDa,
// speed and from rpm, inner and outer cm (meniscus and bottom), channel for both (as TakeChannel of
// planning/ChannelColumn.h has it) or for the one that is not named, vbar mL/g, density g/mL, viscosity mPa
// s, ratio (frictional), rest (the part that may be missing). An unknown word, one that stands twice, no
// number, no speed, and a column that is not named are a RuntimeError.
void ReadApproach(const std::string& text, ApproachInput& input);

} // namespace Quillon
