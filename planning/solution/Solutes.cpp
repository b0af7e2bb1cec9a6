// Which solutes there are, and their list as it is typed.
#include "planning/solution/SoluteRules.h"

#include "platform/Letters.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace Quillon {

namespace {

constexpr const char* DenaturantSource = "Kawahara and Tanford 1966";

SoluteRule Salt(const char* name, const char* meaning, double mass, double most, Ion cation, int cations,
                Ion anion, int anions) {
    return {{name, meaning, "mol/L", mass, most, "Millero 1971, Redlich and Meyer 1964",
             "Jenkins and Marcus 1995"},
            Road::Salt,
            cation,
            anion,
            cations,
            anions};
}

std::string AmountText(double amount) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), amount).ptr;
    return {text.data(), end};
}

std::size_t KindNamed(std::string_view name) {
    for (std::size_t i = 0; i < SoluteRules().size(); ++i)
        if (SameLetters(name, SoluteRules()[i].Kind.Name)) return i;
    RaiseError(
        "\"" + std::string(name) + "\" is none of the solutes whose volumes are known here (" +
        SoluteNames() +
        "): leave it out where there is little of it, or measure the density and type it into the units");
}

Solute ReadSolute(std::string_view item) {
    const std::size_t equals = item.find('=');
    if (equals == std::string_view::npos)
        RaiseError("\"" + std::string(item) + "\" names no amount: write NaCl=0.15");
    Solute solute{KindNamed(Trimmed(item.substr(0, equals))), 0.0};
    std::string_view number = Trimmed(item.substr(equals + 1));
    const SoluteKind& kind = SoluteRules()[solute.Kind].Kind;
    if (number.ends_with('%') && std::string_view(kind.Unit) == "%") number.remove_suffix(1);
    const auto [stop, failure] = std::from_chars(number.data(), number.data() + number.size(), solute.Amount);
    const bool good = failure == std::errc{} && stop == number.data() + number.size();
    if (!good || !(solute.Amount >= 0.0 && solute.Amount <= kind.Most))
        RaiseError(std::string(kind.Name) + " needs an amount from 0 to " + AmountText(kind.Most) + " " +
                   kind.Unit + ", not \"" + std::string(number) + "\"");
    return solute;
}

} // namespace

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

const std::vector<SoluteRule>& SoluteRules() {
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
        {{"urea", "urea", "mol/L", 60.056, 10.0, DenaturantSource, DenaturantSource}, Road::Urea},
        {{"GuHCl", "guanidinium chloride", "mol/L", 95.532, 7.0, DenaturantSource, DenaturantSource},
         Road::Guanidinium},
        {{"glycerol", "glycerol", "%", 92.094, 60.0, "Volk and Kaehler 2018", "Cheng 2008"}, Road::Glycerol},
        {{"sucrose", "sucrose", "%", 342.297, 48.0, "Handbook of Chemistry and Physics", "Barber 1966"},
         Road::Sucrose}};
    return rules;
}

const std::vector<SoluteKind>& SoluteKinds() {
    static const std::vector<SoluteKind> kinds = [] {
        std::vector<SoluteKind> all;
        for (const SoluteRule& rule : SoluteRules())
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
    text = Trimmed(text);
    if (SameLetters(text, "water")) text = "";
    while (!text.empty()) {
        const std::size_t comma = std::min(text.find(','), text.size());
        const Solute solute = ReadSolute(Trimmed(text.substr(0, comma)));
        for (const Solute& other : solutes)
            if (other.Kind == solute.Kind)
                RaiseError(std::string(SoluteRules()[solute.Kind].Kind.Name) + " stands twice");
        solutes.push_back(solute);
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return solutes;
}

} // namespace Quillon
