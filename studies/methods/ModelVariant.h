#pragma once
// A model with its options, as a comparison lists it, and which of them contain which.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Quillon {

struct ModelVariant {
    std::int16_t Model = 1; // 1..22
    bool NonIdeal = false;
    bool SeparateK = false;
    bool operator==(const ModelVariant&) const = default;
};

// "4", "2+nonideal", "2+nonideal+separate-k", and the options alone: "nonideal+separate-k", "" without any.
std::string VariantText(const ModelVariant& variant);
std::string OptionsText(const ModelVariant& variant);

// Reads such a text, in any case and with blanks around its parts. A number that is no model and an option
// that is unknown or that the model does not have are a RuntimeError with the reason.
ModelVariant ReadVariant(std::string_view text);

// A list of them between commas. One that stands twice is a RuntimeError, too.
std::vector<ModelVariant> ReadVariants(std::string_view text);

// True when small is a special case of large, and not large itself: large with constants that are switched
// off or equal to each other is small. The relation is transitive; every option of small is one of large. The
// models 4, 5, 8 and 9 with separate constants have no zero offsets, so that what has some is
// a special case only while they are all held at 0 (offsetsAreZero).
bool IsNested(const ModelVariant& small, const ModelVariant& large, bool offsetsAreZero);

} // namespace Quillon
