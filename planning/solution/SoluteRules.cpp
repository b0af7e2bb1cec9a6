#include "planning/solution/SoluteRules.h"

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

} // namespace Quillon
