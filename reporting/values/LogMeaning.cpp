#include "reporting/values/LogMeaning.h"

#include "input/NUMINPUT.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "reporting/values/DerivedConstants.h"
#include "reporting/values/Statistics.h"
#include "workspace/records/Workspace.h"

#include <cmath>

namespace Quillon {

namespace {

// Two digits: plain from 0.01 to below 1000, else with an exponent.
std::string TwoDigits(double value) {
    if (!std::isfinite(value)) return "out of range";
    const double size = std::fabs(value);
    if (size != 0.0 && (size < 0.01 || size >= 999.5)) return FormatNumber(value, "0.0E-0");
    return SingleText(static_cast<float>(RoundSignificant(value, 2)));
}

// The logarithm itself, to four digits.
std::string Logarithm(SlotNo slot) {
    const double shown = static_cast<double>(ToUserUnits(slot, Work.Parms[slot]));
    return std::isfinite(shown) ? SingleText(static_cast<float>(RoundSignificant(shown, 4))) : "out of range";
}

const char* ConcentrationUnit() {
    switch (Work.ConcUnits) {
    case ConcUnit::Absorbance:
        return " AU";
    case ConcUnit::Fringes:
        return " fringes";
    default:
        return " mg/mL";
    }
}

std::string ConcentrationMeaning(SlotNo slot) {
    const double c = std::exp(static_cast<double>(ToUserUnits(slot, Work.Parms[slot])));
    return "ln c " + Logarithm(slot) + " = " +
           (ConcInMoles() ? MolarText(c) : TwoDigits(c) + ConcentrationUnit());
}

// "3.1E4 L/mol, Kd 32 uM"; a constant without a unit as the number alone.
std::string MolarMeaning(const DerivedConstant& k) {
    const std::string value = TwoDigits(std::exp(k.Value->LnK));
    if (!k.Value->KdRoot) return value;
    if (k.Bonds == 1.0) return value + " L/mol, Kd " + MolarText(*k.Value->KdRoot);
    const std::string bonds = SingleText(static_cast<float>(k.Bonds));
    return value + " (L/mol)^" + bonds + ", Kd^(1/" + bonds + ") " + MolarText(*k.Value->KdRoot);
}

std::string ConstantMeaning(SlotNo slot, const DerivedConstant& k) {
    const std::string head = "ln K " + Logarithm(slot) + " = ";
    if (k.Value && (ConcInMoles() || !k.Value->KdRoot)) return head + MolarMeaning(k);
    const std::string shown =
        TwoDigits(std::exp(static_cast<double>(ToUserUnits(slot, Work.Parms[slot])))) + " in the units shown";
    return head + shown + (k.Value ? ", " + MolarMeaning(k) : k.Reason.empty() ? "" : "; " + k.Reason);
}

} // namespace

std::string MolarText(double molesPerLitre) {
    struct Prefix {
        const char* Unit;
        double Size;
    };
    constexpr Prefix prefixes[] = {{" M", 1.0}, {" mM", 1e-3}, {" uM", 1e-6}, {" nM", 1e-9}, {" pM", 1e-12}};
    for (const Prefix& prefix : prefixes)
        if (molesPerLitre >= 0.9995 * prefix.Size)
            return TwoDigits(molesPerLitre / prefix.Size) + prefix.Unit;
    return TwoDigits(molesPerLitre) + " M";
}

std::string LogMeaning(SlotNo slot) {
    if (RuleOfSlot(slot).Holds == Quantity::LnSignal) return ConcentrationMeaning(slot);
    const std::optional<DerivedConstant> constant = DerivedConstantOf(slot);
    return constant ? ConstantMeaning(slot, *constant) : "";
}

} // namespace Quillon
