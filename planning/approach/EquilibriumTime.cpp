#include "planning/approach/EquilibriumTime.h"

#include "planning/solution/Water.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Quillon {

namespace {

using std::numbers::pi;

constexpr double GasConstant = 8.314462618; // J/(mol K), CODATA 2018
constexpr double Avogadro = 6.02214076e23;
constexpr double MostRpm = 100000.0; // no rotor turns faster

void Demand(bool holds, const char* what) {
    if (!holds) RaiseError(what);
}

void Check(const ApproachInput& in) {
    CheckLiquid(in.Celsius);
    Demand(in.MassKDa > 0.0 && in.MassKDa <= 1e6, "The molar mass has to lie above 0, in kDa");
    Demand(in.VBar > 0.0 && in.VBar < 5.0, "v-bar has to lie above 0 and below 5 mL/g");
    Demand(in.Density > 0.5 && in.Density < 3.0, "The density has to lie between 0.5 and 3 g/mL");
    Demand(in.Viscosity > 0.05 && in.Viscosity < 1000.0,
           "The viscosity has to lie between 0.05 and 1000 mPa s");
    Demand(in.FrictionalRatio >= 1.0 && in.FrictionalRatio <= 10.0,
           "The frictional ratio has to lie between 1 (a sphere) and 10");
    Demand(in.Rpm > 0.0 && in.Rpm <= MostRpm, "The speed has to lie above 0 and within 100000 rpm");
    Demand(in.FormerRpm >= 0.0 && in.FormerRpm <= MostRpm,
           "The former speed has to lie between 0 and 100000 rpm");
    Demand(in.Epsilon > 0.0 && in.Epsilon < 1.0, "The part that may be missing has to lie between 0 and 1");
    Demand(in.Meniscus >= 1.0 && in.Bottom <= 20.0 && in.Bottom - in.Meniscus >= 0.01,
           "The column has to lie between radii of 1 and 20 cm, its bottom outside of its meniscus");
    Demand(std::abs(1.0 - in.VBar * in.Density) > 1e-6,
           "v-bar times density is 1: such a solute neither sinks nor floats");
}

double Omega(double rpm) {
    return rpm * pi / 30.0;
}

double SigmaAt(const ApproachInput& in, double rpm) {
    const double kelvin = in.Celsius + 273.15;
    const double massKg = in.MassKDa; // kDa are kg/mol
    const double perSquareMetre =
        massKg * (1.0 - in.VBar * in.Density) * Omega(rpm) * Omega(rpm) / (GasConstant * kelvin);
    return perSquareMetre * 1e-4;
}

double DiffusionOf(const ApproachInput& in) {
    const double kelvin = in.Celsius + 273.15;
    const double volume = in.MassKDa * in.VBar * 1e-3 / Avogadro; // m^3
    const double radius = std::cbrt(3.0 * volume / (4.0 * pi)) * in.FrictionalRatio;
    const double perSecond =
        GasConstant / Avogadro * kelvin / (6.0 * pi * in.Viscosity * 1e-3 * radius); // m^2/s
    return perSecond * 1e4;
}

double Estimate(const ApproachInput& in, const LammColumn& column) {
    const double height = in.Bottom - in.Meniscus, middle = (in.Bottom + in.Meniscus) / 2.0;
    const double inverse = std::abs(column.Sigma) * middle * height; // 1 / alpha
    const double u = 1.0 + inverse * inverse / (4.0 * pi * pi);
    const double log = std::log(pi * pi * in.Epsilon * u * u / (4.0 * (1.0 + std::cosh(inverse / 2.0))));
    return std::max(0.0, -height * height / (column.Diffusion * pi * pi * u) * log);
}

double MissingPart(const LammState& state, double rest) {
    return std::abs(RiseOf(state) - rest) / std::abs(rest);
}

// Steps that grow with the time are as fine as what still changes. The last one in which the part falls below
// epsilon is parted by the exponential that it falls by.
double SolvedTime(const ApproachInput& in, const LammColumn& column) {
    LammState state = FilledColumn(column, 1.0);
    if (in.FormerRpm > 0.0) {
        state = ColumnAtRest(ColumnOf(in, in.FormerRpm), 1.0);
        state.Column = column;
    }
    const double rest = RiseOf(ColumnAtRest(column, 1.0));
    const double scale = (in.Bottom - in.Meniscus) * (in.Bottom - in.Meniscus) / column.Diffusion;
    double former = MissingPart(state, rest), formerTime = 0.0;
    if (former <= in.Epsilon) return 0.0;
    constexpr int MostSteps = 4000;
    for (int step = 0; step < MostSteps; ++step) {
        const double length = scale * std::min(2e-4 * std::pow(1.05, step), 2e-3);
        AdvanceTo(state, state.Seconds + length, 1);
        const double missing = MissingPart(state, rest);
        if (missing <= in.Epsilon) {
            const double share = std::log(former / in.Epsilon) / std::log(former / missing);
            return formerTime + share * (state.Seconds - formerTime);
        }
        former = missing;
        formerTime = state.Seconds;
    }
    RaiseError("The column is not at equilibrium within the time that was looked at");
}

} // namespace

LammColumn ColumnOf(const ApproachInput& input, double rpm) {
    LammColumn column;
    column.Meniscus = input.Meniscus;
    column.Bottom = input.Bottom;
    column.Diffusion = DiffusionOf(input);
    column.Sigma = SigmaAt(input, rpm);
    return column;
}

ApproachTimes TimesOf(const ApproachInput& input) {
    Check(input);
    const LammColumn column = ColumnOf(input, input.Rpm);
    ApproachTimes times;
    times.Sigma = column.Sigma;
    times.Diffusion = column.Diffusion;
    const double omega = Omega(input.Rpm);
    times.Svedberg = column.Sigma * column.Diffusion / (omega * omega) * 1e13;
    times.SigmaX = column.Sigma * (input.Bottom * input.Bottom - input.Meniscus * input.Meniscus) / 2.0;
    times.EstimateSeconds = Estimate(input, column);
    times.SolvedSeconds = SolvedTime(input, column);
    return times;
}

} // namespace Quillon
