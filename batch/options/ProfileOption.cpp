#include "batch/options/ProfileOption.h"

#include "batch/console/OneLine.h"
#include "batch/options/OutputPlaces.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <charconv>

namespace Quillon {

namespace {

constexpr const char* Endings[] = {"csv", "json", "svg", "png", "pdf", "emf", "dat", "grf"};

long ReadSlot(const std::string& whole, std::string_view text) {
    long slot = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, slot);
    if (failure != std::errc{} || stop != end || slot < 0)
        RaiseError("--profile needs SLOT=FILE or SLOT,SLOT=FILE with numbers of slots, not " + Quoted(whole));
    return slot;
}

} // namespace

ProfileOption ParseProfileOption(const std::string& text) {
    const std::size_t equals = std::min(text.find('='), text.size());
    ProfileOption option;
    std::string_view slots = std::string_view(text).substr(0, equals);
    if (const std::size_t comma = slots.find(','); comma != std::string_view::npos) {
        option.Slots.push_back(ReadSlot(text, slots.substr(0, comma)));
        slots.remove_prefix(comma + 1);
    }
    option.Slots.push_back(ReadSlot(text, slots));
    if (option.Slots.front() == option.Slots.back() && option.Slots.size() == 2)
        RaiseError("--profile: a map needs two different slots, not " + Quoted(text));
    if (equals + 1 >= text.size()) RaiseError("--profile: no file behind " + Quoted(text));
    option.Path = text.substr(equals + 1);
    const std::string ending = EndingOf(option.Path);
    if (option.Path != "-" && std::find(std::begin(Endings), std::end(Endings), ending) == std::end(Endings))
        RaiseError("--profile: " + Quoted(option.Path) +
                   " ends with none of .csv, .json, .svg, .png, .pdf, .emf, .dat and .grf");
    return option;
}

std::string ProfileName(const ProfileOption& option) {
    std::string name;
    for (const long slot : option.Slots)
        name += (name.empty() ? "" : ",") + std::to_string(slot);
    return name;
}

} // namespace Quillon
