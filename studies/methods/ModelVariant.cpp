#include "studies/methods/ModelVariant.h"

#include "models/table/Catalogue.h"
#include "platform/Letters.h"
#include "platform/Narrow.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>

namespace Quillon {

namespace {

std::vector<std::string> WordsBetween(std::string_view text, char separator) {
    std::vector<std::string> words;
    for (const std::string_view part : PartsBetween(text, separator))
        words.push_back(SmallLetters(Trimmed(part)));
    return words;
}

std::int16_t ReadModelNumber(const std::string& text) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, number);
    if (failure != std::errc{} || stop != end || number < 1 || number > LastModelNumber)
        RaiseError("'" + text + "' is no model; they are 1 to " + std::to_string(LastModelNumber));
    return ToInt16(number);
}

void TakeOption(ModelVariant& variant, const std::string& option) {
    const bool nonIdeal = option == "nonideal";
    if (!nonIdeal && option != "separate-k")
        RaiseError("'" + option + "' is no option of a model; they are nonideal and separate-k");
    const bool allowed = nonIdeal ? ModelAllowsNonIdeal(variant.Model) : ModelAllowsSeparateK(variant.Model);
    if (!allowed) RaiseError("model " + std::to_string(variant.Model) + " has no option " + option);
    bool& flag = nonIdeal ? variant.NonIdeal : variant.SeparateK;
    if (flag) RaiseError(option + " stands twice in " + VariantText(variant));
    flag = true;
}

// The models that a model is the next special case of.
struct NextLarger {
    int Model;
    std::initializer_list<int> In;
};
constexpr NextLarger Larger[] = {
    {1, {2, 3, 4, 5, 6, 7}},
    {2, {3, 4, 6}},
    {3, {5, 6}},
    {4, {5}},
    {7, {8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22}},
    {8, {10, 11}},
    {9, {10, 11, 12}},
    {10, {13, 14}},
    {11, {14}},
    {12, {13}},
    {16, {17, 19}},
    {17, {20}},
    {18, {20}},
    {19, {20}},
    {21, {22}},
};

bool ModelContains(int large, int small) {
    if (large == small) return true;
    for (const NextLarger& step : Larger)
        if (step.Model == small)
            return std::any_of(step.In.begin(), step.In.end(),
                               [&](int next) { return ModelContains(large, next); });
    return false;
}

bool HasOffsets(const ModelVariant& variant) {
    return !OffsetSlotHoldsConstant(variant.Model, variant.SeparateK);
}

} // namespace

std::string OptionsText(const ModelVariant& variant) {
    std::string text = variant.NonIdeal ? "nonideal" : "";
    if (variant.SeparateK) text += (text.empty() ? "" : "+") + std::string("separate-k");
    return text;
}

std::string VariantText(const ModelVariant& variant) {
    const std::string options = OptionsText(variant);
    return std::to_string(variant.Model) + (options.empty() ? "" : "+" + options);
}

ModelVariant ReadVariant(std::string_view text) {
    const std::vector<std::string> parts = WordsBetween(text, '+');
    ModelVariant variant;
    variant.Model = ReadModelNumber(parts.front());
    for (std::size_t i = 1; i < parts.size(); ++i)
        TakeOption(variant, parts[i]);
    return variant;
}

std::vector<ModelVariant> ReadVariants(std::string_view text) {
    std::vector<ModelVariant> variants;
    for (const std::string& part : WordsBetween(text, ',')) {
        const ModelVariant variant = ReadVariant(part);
        if (std::find(variants.begin(), variants.end(), variant) != variants.end())
            RaiseError("model " + VariantText(variant) + " stands twice");
        variants.push_back(variant);
    }
    return variants;
}

bool IsNested(const ModelVariant& small, const ModelVariant& large, bool offsetsAreZero) {
    if (small == large || !ModelContains(large.Model, small.Model)) return false;
    if ((small.NonIdeal && !large.NonIdeal) || (small.SeparateK && !large.SeparateK)) return false;
    return offsetsAreZero || HasOffsets(large) || !HasOffsets(small);
}

} // namespace Quillon
