#include "batch/options/CalculatorOptions.h"

#include "batch/console/OneLine.h"
#include "planning/ChannelColumn.h"
#include "planning/solution/Water.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <functional>
#include <map>
#include <string_view>

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
};

constexpr ApproachWord ApproachWords[] = {
    {"mass", &ApproachInput::MassKDa},          {"speed", &ApproachInput::Rpm},
    {"from", &ApproachInput::FormerRpm},        {"inner", &ApproachInput::Meniscus},
    {"outer", &ApproachInput::Bottom},          {"vbar", &ApproachInput::VBar},
    {"density", &ApproachInput::Density},       {"viscosity", &ApproachInput::Viscosity},
    {"ratio", &ApproachInput::FrictionalRatio}, {"rest", &ApproachInput::Epsilon}};

constexpr std::string_view ChannelWord = "channel";
constexpr const char* Example = "mass=50,speed=15000,inner=6.9,outer=7.2";

[[noreturn]] void Fail(const std::string& reason) {
    RaiseError(reason + ", as in " + Example);
}

const ApproachWord& WordNamed(std::string_view name) {
    for (const ApproachWord& word : ApproachWords)
        if (name == word.Word) return word;
    std::string all;
    for (const ApproachWord& word : ApproachWords)
        all += std::string(word.Word) + ", ";
    RaiseError("knows " + all + std::string(ChannelWord) + ", not " + Quoted(std::string(name)));
}

// The words of a text and what stands behind each.
using Words = std::map<std::string, std::string, std::less<>>;

Words WordsOf(std::string_view rest) {
    Words words;
    while (!rest.empty()) {
        const std::string_view item = rest.substr(0, rest.find(','));
        rest.remove_prefix(std::min(item.size() + 1, rest.size()));
        const std::size_t equals = std::min(item.find('='), item.size());
        const std::string_view name = item.substr(0, equals);
        if (name != ChannelWord) WordNamed(name);
        if (!words.emplace(name, item.substr(std::min(equals + 1, item.size()))).second)
            Fail("has " + std::string(name) + " twice");
    }
    return words;
}

void RequireWords(const Words& words) {
    if (!words.contains("speed")) Fail("needs speed");
    if (words.contains(ChannelWord)) return;
    for (const char* end : {"inner", "outer"})
        if (!words.contains(end)) Fail(std::string("needs ") + end);
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
    const Words words = WordsOf(text);
    const auto take = [&] {
        for (const auto& [name, number] : words) {
            if (name == ChannelWord) continue;
            const std::optional<double> value = Number(number);
            if (!value) Fail("needs a number for " + name);
            input.*WordNamed(name).Target = *value;
        }
    };
    take();
    RequireWords(words);
    const auto channel = words.find(ChannelWord);
    if (channel == words.end()) return;
    TakeChannel(channel->second, input); // at the speed
    take();
}

} // namespace Quillon
