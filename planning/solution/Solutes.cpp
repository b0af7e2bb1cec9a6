// The names are those of the rules, and the list as it is typed is read by them.
#include "planning/solution/Solutes.h"

#include "planning/solution/SoluteRules.h"
#include "platform/Letters.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace Quillon {

namespace {

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
