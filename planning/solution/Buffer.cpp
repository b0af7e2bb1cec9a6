#include "planning/solution/Buffer.h"

#include "planning/solution/Water.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>

namespace Quillon {

namespace {

// --- ions ------------------------------------------------------------------------------------------------

enum class Ion { None, Na, K, NH4, Mg, Ca, Cl, SO4, Acetate, H2PO4, HPO4 };

struct IonConstants {
    int Charge;
    double Volume0, Volume25, Volume50; // mL/mol, with H+ as 0; 0 and 50 degrees as 25 where not known
    bool AtTemperatures;                // they are known there
    double ViscosityB;                  // L/mol
};

IonConstants ConstantsOf(Ion ion) {
    switch (ion) {
    case Ion::Na:
        return {1, -3.51, -1.21, -0.30, true, 0.085};
    case Ion::K:
        return {1, 7.17, 9.02, 9.57, true, -0.009};
    case Ion::NH4:
        return {1, 17.86, 17.86, 17.86, false, -0.008};
    case Ion::Mg:
        return {2, -21.17, -21.17, -21.17, false, 0.385};
    case Ion::Ca:
        return {2, -17.85, -17.85, -17.85, false, 0.284};
    case Ion::Cl:
        return {-1, 16.44, 17.83, 18.00, true, -0.005};
    case Ion::SO4:
        return {-2, 13.98, 13.98, 13.98, false, 0.206};
    case Ion::Acetate:
        return {-1, 40.46, 40.46, 40.46, false, 0.246};
    case Ion::H2PO4:
        return {-1, 29.1, 29.1, 29.1, false, 0.340};
    case Ion::HPO4:
        return {-2, 7.7, 7.7, 7.7, false, 0.382};
    case Ion::None:
        break;
    }
    return {0, 0.0, 0.0, 0.0, true, 0.0};
}

// --- solutes ---------------------------------------------------------------------------------------------

enum class Road { Salt, Denaturant, Glycerol };

struct SoluteRule {
    SoluteKind Kind;
    Road By;
    Ion Cation = Ion::None, Anion = Ion::None;
    int Cations = 0, Anions = 0;
    double WeightSlope = 0.0; // a of a denaturant
};

constexpr const char* SaltSource = "Millero 1971, Redlich and Meyer 1964; viscosity Jenkins and Marcus 1995";
constexpr const char* DenaturantSource = "Kawahara and Tanford 1966";
constexpr const char* GlycerolSource = "Volk and Kaehler 2018; viscosity Cheng 2008";

SoluteRule Salt(const char* name, const char* meaning, double mass, double most, Ion cation, int cations,
                Ion anion, int anions) {
    return {{name, meaning, "mol/L", mass, most, SaltSource}, Road::Salt, cation, anion, cations, anions};
}

const std::vector<SoluteRule>& Rules() {
    static const std::vector<SoluteRule> rules{
        Salt("NaCl", "sodium chloride", 58.443, 1.0, Ion::Na, 1, Ion::Cl, 1),
        Salt("KCl", "potassium chloride", 74.551, 1.0, Ion::K, 1, Ion::Cl, 1),
        Salt("NH4Cl", "ammonium chloride", 53.491, 1.0, Ion::NH4, 1, Ion::Cl, 1),
        Salt("MgCl2", "magnesium chloride", 95.211, 0.2, Ion::Mg, 1, Ion::Cl, 2),
        Salt("CaCl2", "calcium chloride", 110.984, 0.2, Ion::Ca, 1, Ion::Cl, 2),
        Salt("Na2SO4", "sodium sulfate", 142.042, 0.2, Ion::Na, 2, Ion::SO4, 1),
        Salt("(NH4)2SO4", "ammonium sulfate", 132.139, 0.2, Ion::NH4, 2, Ion::SO4, 1),
        Salt("NaOAc", "sodium acetate", 82.034, 0.5, Ion::Na, 1, Ion::Acetate, 1),
        Salt("KOAc", "potassium acetate", 98.142, 0.5, Ion::K, 1, Ion::Acetate, 1),
        Salt("NaH2PO4", "sodium dihydrogen phosphate", 119.977, 0.2, Ion::Na, 1, Ion::H2PO4, 1),
        Salt("Na2HPO4", "disodium hydrogen phosphate", 141.959, 0.2, Ion::Na, 2, Ion::HPO4, 1),
        Salt("KH2PO4", "potassium dihydrogen phosphate", 136.086, 0.2, Ion::K, 1, Ion::H2PO4, 1),
        Salt("K2HPO4", "dipotassium hydrogen phosphate", 174.176, 0.2, Ion::K, 2, Ion::HPO4, 1),
        {{"urea", "urea", "mol/L", 60.056, 10.0, DenaturantSource},
         Road::Denaturant,
         Ion::None,
         Ion::None,
         0,
         0,
         0.2658},
        {{"GuHCl", "guanidinium chloride", "mol/L", 95.532, 7.0, DenaturantSource},
         Road::Denaturant,
         Ion::None,
         Ion::None,
         0,
         0,
         0.2710},
        {{"glycerol", "glycerol", "%", 92.094, 60.0, GlycerolSource}, Road::Glycerol}};
    return rules;
}

char Small(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameLetters(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Small(x) == Small(y); });
}

std::string_view WithoutBlanks(std::string_view text) {
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    return text;
}

std::string AmountText(double amount) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), amount).ptr;
    return {text.data(), end};
}

std::size_t KindNamed(std::string_view name) {
    for (std::size_t i = 0; i < Rules().size(); ++i)
        if (SameLetters(name, Rules()[i].Kind.Name)) return i;
    RaiseError("\"" + std::string(name) +
               "\" is none of the solutes whose volumes are known here: " + SoluteNames());
}

Solute ReadSolute(std::string_view item) {
    const std::size_t equals = item.find('=');
    if (equals == std::string_view::npos)
        RaiseError("\"" + std::string(item) + "\" names no amount: write NaCl=0.15");
    Solute solute{KindNamed(WithoutBlanks(item.substr(0, equals))), 0.0};
    std::string_view number = WithoutBlanks(item.substr(equals + 1));
    const SoluteKind& kind = Rules()[solute.Kind].Kind;
    if (number.ends_with('%') && std::string_view(kind.Unit) == "%") number.remove_suffix(1);
    const auto [stop, failure] = std::from_chars(number.data(), number.data() + number.size(), solute.Amount);
    const bool good = failure == std::errc{} && stop == number.data() + number.size();
    if (!good || !(solute.Amount >= 0.0 && solute.Amount <= kind.Most))
        RaiseError(std::string(kind.Name) + " needs an amount from 0 to " + AmountText(kind.Most) + " " +
                   kind.Unit + ", not \"" + std::string(number) + "\"");
    return solute;
}

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
double DenaturantVolume(const SoluteRule& kind, double W, double rho) {
    const double density = rho * (1.0 + kind.WeightSlope * W + 0.0330 * W * W);
    return (1.0 / density - (1.0 - W) / rho) / W;
}
double GlycerolVolume(double W, double rho, double t) {
    const double glycerol = 1.2733 - 0.6121e-3 * t; // g/mL
    const double a = (1.78e-6 * t - 1.82e-4) * t + 1.41e-2;
    const double contraction = 1.0 + a * std::pow(std::sin(std::pow(W, 1.31) * std::numbers::pi), 0.81);
    return ((W / glycerol + (1.0 - W) / rho) / contraction - (1.0 - W) / rho) / W;
}

// What is in a millilitre of the solution.
struct Content {
    double Mass = 0.0;   // g of solutes
    double Volume = 0.0; // mL that they take
};

double GramsOf(const Solute& solute, double density) {
    const SoluteKind& kind = Rules()[solute.Kind].Kind;
    return Rules()[solute.Kind].By == Road::Glycerol ? solute.Amount / 100.0 * density
                                                     : solute.Amount * kind.MolarMass / 1000.0;
}

double IonicStrength(const std::vector<Solute>& solutes) {
    double strength = 0.0;
    for (const Solute& solute : solutes)
        if (Rules()[solute.Kind].By == Road::Salt)
            strength += solute.Amount * ValenceFactor(Rules()[solute.Kind]);
    return strength;
}

double VolumeOf(const Solute& solute, double grams, double waterGrams, double strength, double t) {
    const SoluteRule& rule = Rules()[solute.Kind];
    if (grams <= 0.0) return 0.0;
    if (rule.By == Road::Salt) return solute.Amount * MolarVolume(rule, t, strength) / 1000.0;
    const double W = grams / (grams + waterGrams);
    const double rho = WaterDensity(t);
    return grams * (rule.By == Road::Glycerol ? GlycerolVolume(W, rho, t) : DenaturantVolume(rule, W, rho));
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

// What the volumes may miss, mL/mol of a salt: higher terms, and the temperature where it is not in the
// tables.
double VolumeError(const SoluteRule& salt, double t) {
    constexpr double HigherTerms = 0.3, PerDegree = 0.12;
    const bool known = ConstantsOf(salt.Cation).AtTemperatures && ConstantsOf(salt.Anion).AtTemperatures;
    return HigherTerms * ValenceFactor(salt) + (known ? 0.0 : PerDegree * std::abs(t - 25.0));
}

double DensityError(const std::vector<Solute>& solutes, double t) {
    double error = 1e-5; // of water and the printed digits
    for (const Solute& solute : solutes) {
        const SoluteRule& rule = Rules()[solute.Kind];
        if (rule.By == Road::Salt) error += solute.Amount * VolumeError(rule, t) / 1000.0;
        if (rule.By == Road::Denaturant) error += solute.Amount * (1e-4 + 1e-5 * std::abs(t - 25.0));
        if (rule.By == Road::Glycerol) error += solute.Amount * 2e-5;
    }
    return error;
}

// --- viscosities -----------------------------------------------------------------------------------------

double GlycerolFactor(double W, double t) {
    const double water = 1.790 * std::exp((-1230.0 - t) * t / (36100.0 + 360.0 * t));
    const double glycerol = 12100.0 * std::exp((-1233.0 + t) * t / (9900.0 + 70.0 * t));
    const double a = 0.705 - 0.0017 * t, b = (4.9 + 0.036 * t) * std::pow(a, 2.5);
    const double alpha = 1.0 - W + a * b * W * (1.0 - W) / (a * W + b * (1.0 - W));
    return std::pow(glycerol / water, 1.0 - alpha);
}

std::optional<double> ViscosityFactor(const Solute& solute, double t) {
    const SoluteRule& rule = Rules()[solute.Kind];
    const double c = solute.Amount;
    if (rule.By == Road::Salt)
        return c * (rule.Cations * ConstantsOf(rule.Cation).ViscosityB +
                    rule.Anions * ConstantsOf(rule.Anion).ViscosityB);
    if (rule.By == Road::Glycerol) return GlycerolFactor(c / 100.0, t);
    if (rule.Kind.Name == std::string_view("urea")) return 1.0 + c * (0.0375 + c * (0.00315 + c * 0.00031));
    return c == 0.0 ? std::optional(1.0) : std::nullopt;
}

std::optional<double> SolveViscosity(const std::vector<Solute>& solutes, double t) {
    double salts = 1.0, others = 1.0;
    for (const Solute& solute : solutes) {
        const std::optional<double> factor = ViscosityFactor(solute, t);
        if (!factor) return std::nullopt;
        if (Rules()[solute.Kind].By == Road::Salt)
            salts += *factor; // the share of a salt
        else
            others *= *factor;
    }
    return WaterViscosity(t) * salts * others;
}

std::string SourcesOf(const std::vector<Solute>& solutes) {
    std::string sources = std::string("water: ") + WaterDensitySource + ", " + WaterViscositySource;
    for (const Solute& solute : solutes) {
        const std::string source = Rules()[solute.Kind].Kind.Source;
        if (sources.find(source) == std::string::npos) sources += "; " + source;
    }
    return sources;
}

} // namespace

const std::vector<SoluteKind>& SoluteKinds() {
    static const std::vector<SoluteKind> kinds = [] {
        std::vector<SoluteKind> all;
        for (const SoluteRule& rule : Rules())
            all.push_back(rule.Kind);
        return all;
    }();
    return kinds;
}

std::string SoluteNames() {
    std::string names;
    for (const SoluteKind& kind : SoluteKinds())
        names += (names.empty() ? "" : ", ") + std::string(kind.Name);
    return names;
}

std::vector<Solute> ReadSolutes(std::string_view text) {
    std::vector<Solute> solutes;
    text = WithoutBlanks(text);
    if (SameLetters(text, "water")) text = "";
    while (!text.empty()) {
        const std::size_t comma = std::min(text.find(','), text.size());
        const Solute solute = ReadSolute(WithoutBlanks(text.substr(0, comma)));
        for (const Solute& other : solutes)
            if (other.Kind == solute.Kind)
                RaiseError(std::string(Rules()[solute.Kind].Kind.Name) + " stands twice");
        solutes.push_back(solute);
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return solutes;
}

BufferValues ValuesOfBuffer(const std::vector<Solute>& solutes, double celsius) {
    CheckLiquid(celsius);
    constexpr double MostWithSolutes = 50.0;
    if (!solutes.empty() && celsius > MostWithSolutes)
        RaiseError("With anything dissolved the temperature has to lie between 0 and 50 degrees Celsius");
    BufferValues values;
    values.Density = SolveDensity(solutes, celsius);
    values.DensityKnownTo = DensityError(solutes, celsius);
    values.Viscosity = SolveViscosity(solutes, celsius);
    values.Sources = SourcesOf(solutes);
    return values;
}

} // namespace Quillon
