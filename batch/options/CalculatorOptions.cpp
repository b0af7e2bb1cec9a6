#include "batch/options/CalculatorOptions.h"

#include "batch/console/OneLine.h"
#include "planning/solution/Water.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <vector>

namespace Quillon {

namespace {

std::optional<double> Number(std::string_view text) {
    double value = 0.0;
    const auto [stop, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = failure == std::errc{} && stop == text.data() + text.size();
    return whole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

struct ApproachWord {
    const char* Word;
    double ApproachInput::*Target;
    bool Needed;
};

constexpr ApproachWord ApproachWords[] = {
    {"mass", &ApproachInput::MassKDa, false},          {"speed", &ApproachInput::Rpm, true},
    {"from", &ApproachInput::FormerRpm, false},        {"inner", &ApproachInput::Meniscus, true},
    {"outer", &ApproachInput::Bottom, true},           {"vbar", &ApproachInput::VBar, false},
    {"density", &ApproachInput::Density, false},       {"viscosity", &ApproachInput::Viscosity, false},
    {"ratio", &ApproachInput::FrictionalRatio, false}, {"rest", &ApproachInput::Epsilon, false}};

constexpr const char* Example = "mass=50,speed=15000,inner=6.9,outer=7.2";

[[noreturn]] void Fail(const std::string& reason) {
    RaiseError(reason + ", as in " + Example);
}

const ApproachWord& WordNamed(std::string_view name) {
    for (const ApproachWord& word : ApproachWords)
        if (name == word.Word) return word;
    std::string all;
    for (const ApproachWord& word : ApproachWords)
        all += (all.empty() ? "" : ", ") + std::string(word.Word);
    RaiseError("knows " + all + ", not " + Quoted(std::string(name)));
}

} // namespace

bool WantsCalculation(const CalculatorOptions& options) {
    return !options.Chain.empty() || !options.Buffer.empty() || !options.Approach.empty();
}

double ReadCelsius(const std::string& text) {
    const std::optional<double> celsius = Number(text);
    if (!celsius) RaiseError("--temperature needs degrees Celsius, not " + Quoted(text));
    CheckLiquid(*celsius);
    return *celsius;
}

long ReadDisulfides(const std::string& text) {
    long count = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, count);
    if (failure != std::errc{} || stop != end || count < 0)
        RaiseError("--disulfides needs a number of bonds, not " + Quoted(text));
    return count;
}

void ReadApproach(const std::string& text, ApproachInput& input) {
    std::vector<std::string_view> seen;
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::string_view item = rest.substr(0, rest.find(','));
        rest.remove_prefix(std::min(item.size() + 1, rest.size()));
        const std::size_t equals = std::min(item.find('='), item.size());
        const ApproachWord& word = WordNamed(item.substr(0, equals));
        if (std::find(seen.begin(), seen.end(), word.Word) != seen.end())
            Fail(std::string("has ") + word.Word + " twice");
        seen.push_back(word.Word);
        const std::optional<double> value = Number(item.substr(std::min(equals + 1, item.size())));
        if (!value) Fail(std::string("needs a number for ") + word.Word);
        input.*word.Target = *value;
    }
    for (const ApproachWord& word : ApproachWords)
        if (word.Needed && std::find(seen.begin(), seen.end(), word.Word) == seen.end())
            Fail(std::string("needs ") + word.Word);
}

} // namespace Quillon
