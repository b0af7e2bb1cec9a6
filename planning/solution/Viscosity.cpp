#include "planning/solution/Viscosity.h"

#include "planning/solution/SoluteRules.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Quillon {

namespace {

double UreaFactor(double c) {
    return 1.0 + c * (0.0375 + c * (0.00315 + c * 0.00031));
}

double GuanidiniumFactor(double c) {
    return 1.0 + 0.005 * std::sqrt(c) + c * (0.008 + c * c * 0.00254);
}

double GlycerolFactor(double W, double t) {
    const double water = 1.790 * std::exp((-1230.0 - t) * t / (36100.0 + 360.0 * t));
    const double glycerol = 12100.0 * std::exp((-1233.0 + t) * t / (9900.0 + 70.0 * t));
    const double a = 0.705 - 0.0017 * t, b = (4.9 + 0.036 * t) * std::pow(a, 2.5);
    const double alpha = 1.0 - W + a * b * W * (1.0 - W) / (a * W + b * (1.0 - W));
    return std::pow(glycerol / water, 1.0 - alpha);
}

// A polynomial, the constant term first.
template <std::size_t Terms> double Polynomial(const double (&terms)[Terms], double y) {
    double sum = 0.0;
    for (auto term = std::rbegin(terms); term != std::rend(terms); ++term)
        sum = sum * y + *term;
    return sum;
}

double LogOfSucrose(double y, double t) {
    constexpr double A[] = {-1.5018327,   9.4112153,   -1.1435741e3, 1.0504137e5,
                            -4.6927102e6, 1.0323349e8, -1.1028981e9, 4.5921911e9};
    constexpr double B[] = {2.1169907e2, 1.6077073e3,   1.6911611e5,  -1.4184371e7,
                            6.0654775e8, -1.2985834e10, 1.3532907e11, -5.4970416e11};
    const double c = 146.06635 - 25.251728 * std::hypot(1.0, y / 0.070674842);
    return Polynomial(A, y) + Polynomial(B, y) / (t + c);
}

double SucroseFactor(double W, double t) {
    constexpr double MassOfSucrose = 342.297, MassOfWater = 18.015; // g/mol
    const double sucrose = W / MassOfSucrose, water = (1.0 - W) / MassOfWater;
    return std::pow(10.0, LogOfSucrose(sucrose / (sucrose + water), t) - LogOfSucrose(0.0, t));
}

double ShareOfSalt(const Solute& salt) {
    const SoluteRule& rule = RuleOf(salt);
    return salt.Amount * (rule.Cations * ConstantsOf(rule.Cation).ViscosityB +
                          rule.Anions * ConstantsOf(rule.Anion).ViscosityB);
}

double FactorOf(const Solute& solute, double t) {
    switch (RuleOf(solute).By) {
    case Road::Urea:
        return UreaFactor(solute.Amount);
    case Road::Guanidinium:
        return GuanidiniumFactor(solute.Amount);
    case Road::Glycerol:
        return GlycerolFactor(solute.Amount / 100.0, t);
    case Road::Sucrose:
        return SucroseFactor(solute.Amount / 100.0, t);
    case Road::Salt:
        break;
    }
    return 1.0;
}

// The part that a solute may be off by: coefficients B change by up to 0.0015 L/mol with a degree for each
// ion, the share of urea and guanidinium chloride by half a percent of itself; glycerol is its author's
// bound.
double ErrorOf(const Solute& solute, double t) {
    const SoluteRule& rule = RuleOf(solute);
    const double away = std::abs(t - 25.0);
    switch (rule.By) {
    case Road::Salt:
        return solute.Amount * (rule.Cations + rule.Anions) * (0.01 + 0.0015 * away);
    case Road::Urea:
    case Road::Guanidinium:
        return 0.01 + (FactorOf(solute, t) - 1.0) * (0.02 + 0.005 * away);
    case Road::Glycerol:
        return 0.05 * std::min(1.0, solute.Amount / 10.0);
    case Road::Sucrose:
        return 0.01 * std::min(1.0, solute.Amount / 10.0);
    }
    return 0.0;
}

} // namespace

RelativeViscosity ViscosityOf(const std::vector<Solute>& solutes, double celsius) {
    double salts = 1.0;
    RelativeViscosity viscosity;
    viscosity.KnownTo = 0.002; // of water
    for (const Solute& solute : solutes) {
        if (RuleOf(solute).By == Road::Salt) salts += ShareOfSalt(solute);
        viscosity.Value *= FactorOf(solute, celsius);
        viscosity.KnownTo += ErrorOf(solute, celsius);
    }
    viscosity.Value *= salts;
    return viscosity;
}

} // namespace Quillon
