#include "planning/solution/Buffer.h"

#include "planning/solution/SoluteRules.h"
#include "planning/solution/Viscosity.h"
#include "planning/solution/Water.h"
#include "platform/RuntimeError.h"

#include <cmath>
#include <numbers>

namespace Quillon {

namespace {

// --- volumes ---------------------------------------------------------------------------------------------

// At t degrees, through the values at 0, 25 and 50.
double VolumeAt(const IonConstants& ion, double t) {
    const double u = t / 25.0 - 1.0;
    const double slope = (ion.Volume50 - ion.Volume0) / 2.0;
    const double bend = (ion.Volume50 + ion.Volume0) / 2.0 - ion.Volume25;
    return ion.Volume25 + u * (slope + u * bend);
}

constexpr double LimitingSlope = 1.868; // mL/mol (mol/L)^-1/2

double ValenceFactor(const SoluteRule& salt) {
    const double cation = ConstantsOf(salt.Cation).Charge, anion = ConstantsOf(salt.Anion).Charge;
    return (salt.Cations * cation * cation + salt.Anions * anion * anion) / 2.0;
}

double MolarVolume(const SoluteRule& salt, double t, double ionicStrength) {
    return salt.Cations * VolumeAt(ConstantsOf(salt.Cation), t) +
           salt.Anions * VolumeAt(ConstantsOf(salt.Anion), t) +
           LimitingSlope * ValenceFactor(salt) * std::sqrt(ionicStrength);
}

// Apparent specific volumes (mL/g) in water of the density rho (g/mL), at the weight fraction W.
double DenaturantVolume(double slope, double W, double rho) {
    const double density = rho * (1.0 + slope * W + 0.0330 * W * W);
    return (1.0 / density - (1.0 - W) / rho) / W;
}
double GlycerolVolume(double W, double rho, double t) {
    const double glycerol = 1.2733 - 0.6121e-3 * t; // g/mL
    const double a = (1.78e-6 * t - 1.82e-4) * t + 1.41e-2;
    const double contraction = 1.0 + a * std::pow(std::sin(std::pow(W, 1.31) * std::numbers::pi), 0.81);
    return ((W / glycerol + (1.0 - W) / rho) / contraction - (1.0 - W) / rho) / W;
}
double SucroseVolume(double W) {
    return 0.6157 + W * (0.0098 + W * 0.0170);
}
double SpecificVolume(Road road, double W, double t) {
    switch (road) {
    case Road::Urea:
        return DenaturantVolume(0.2658, W, WaterDensity(t));
    case Road::Guanidinium:
        return DenaturantVolume(0.2710, W, WaterDensity(t));
    case Road::Glycerol:
        return GlycerolVolume(W, WaterDensity(t), t);
    case Road::Sucrose:
        return SucroseVolume(W);
    case Road::Salt:
        break;
    }
    return 0.0;
}

// What is in a millilitre of the solution.
struct Content {
    double Mass = 0.0;   // g of solutes
    double Volume = 0.0; // mL that they take
};

double GramsOf(const Solute& solute, double density) {
    const SoluteRule& rule = RuleOf(solute);
    return IsByWeight(rule) ? solute.Amount / 100.0 * density : solute.Amount * rule.Kind.MolarMass / 1000.0;
}

double IonicStrength(const std::vector<Solute>& solutes) {
    double strength = 0.0;
    for (const Solute& solute : solutes)
        if (RuleOf(solute).By == Road::Salt) strength += solute.Amount * ValenceFactor(RuleOf(solute));
    return strength;
}

double VolumeOf(const Solute& solute, double grams, double waterGrams, double strength, double t) {
    const SoluteRule& rule = RuleOf(solute);
    if (grams <= 0.0) return 0.0;
    if (rule.By == Road::Salt) return solute.Amount * MolarVolume(rule, t, strength) / 1000.0;
    return grams * SpecificVolume(rule.By, grams / (grams + waterGrams), t);
}

// The density at which volumes add up to one: volumes hang on weight fractions, which hang on it a little.
double SolveDensity(const std::vector<Solute>& solutes, double t) {
    const double water = WaterDensity(t), strength = IonicStrength(solutes);
    double density = water, waterGrams = water;
    for (int round = 0; round < 200; ++round) {
        Content content;
        for (const Solute& solute : solutes) {
            const double grams = GramsOf(solute, density);
            content.Mass += grams;
            content.Volume += VolumeOf(solute, grams, waterGrams, strength, t);
        }
        const double former = density;
        waterGrams = water * (1.0 - content.Volume);
        if (!(waterGrams > 0.2 * water))
            RaiseError("So much does not dissolve in a litre: reduce the amounts");
        density = content.Mass + waterGrams;
        if (std::abs(density - former) < 1e-12) break;
    }
    return density;
}

// What the volumes of a salt may miss, mL/mol: higher terms, the limiting slope away from 25 degrees, and the
// ions' volumes where they are not in the tables.
double VolumeError(const SoluteRule& salt, double t) {
    constexpr double HigherTerms = 0.3, SlopePerDegree = 0.017, VolumePerDegree = 0.12;
    const double away = std::abs(t - 25.0);
    const bool known = ConstantsOf(salt.Cation).AtTemperatures && ConstantsOf(salt.Anion).AtTemperatures;
    return (HigherTerms + SlopePerDegree * away) * ValenceFactor(salt) +
           (known ? 0.0 : VolumePerDegree * away);
}

double ShareOfError(const Solute& solute, double t) {
    const SoluteRule& rule = RuleOf(solute);
    switch (rule.By) {
    case Road::Salt:
        return solute.Amount * VolumeError(rule, t) / 1000.0;
    case Road::Urea:
    case Road::Guanidinium:
        return solute.Amount * (1e-4 + 1e-5 * std::abs(t - 25.0));
    case Road::Glycerol:
        return solute.Amount * 2e-5;
    case Road::Sucrose: // a gram takes up to 5e-4 mL more with each degree
        return solute.Amount * (1e-6 + 6e-6 * std::abs(t - 20.0));
    }
    return 0.0;
}

double DensityError(const std::vector<Solute>& solutes, double t) {
    double error = 1e-5; // of water and the printed digits
    for (const Solute& solute : solutes)
        error += ShareOfError(solute, t);
    return error;
}

// That of water, and each of the solutes' once.
std::string SourcesOf(const char* water, const std::vector<Solute>& solutes,
                      const char* SoluteKind::*source) {
    std::string sources = std::string("water: ") + water;
    for (const Solute& solute : solutes) {
        const std::string own = RuleOf(solute).Kind.*source;
        if (sources.find(own) == std::string::npos) sources += "; " + own;
    }
    return sources;
}

} // namespace

BufferValues ValuesOfBuffer(const std::vector<Solute>& solutes, double celsius) {
    CheckLiquid(celsius);
    constexpr double MostWithSolutes = 50.0;
    if (!solutes.empty() && celsius > MostWithSolutes)
        RaiseError("With anything dissolved the temperature has to lie between 0 and 50 degrees Celsius");
    BufferValues values;
    values.Density = SolveDensity(solutes, celsius);
    values.DensityKnownTo = DensityError(solutes, celsius);
    const RelativeViscosity relative = ViscosityOf(solutes, celsius);
    values.Viscosity = WaterViscosity(celsius) * relative.Value;
    values.ViscosityKnownTo = values.Viscosity * relative.KnownTo;
    values.DensitySource = SourcesOf(WaterDensitySource, solutes, &SoluteKind::VolumeSource);
    values.ViscositySource = SourcesOf(WaterViscositySource, solutes, &SoluteKind::ViscositySource);
    return values;
}

} // namespace Quillon
