#pragma once
// What a walk over many files tells, and how far it goes: what lies there may have been made by anybody.

#include "platform/Platform.h"

#include <cstddef>
#include <functional>

namespace Quillon {

// Called for each file that is met.
using MeetFile = std::function<void(const MetFile& file)>;

inline constexpr std::size_t StartOfFile = 4096;                  // bytes that are looked at before the rest
inline constexpr std::size_t LargestMet = std::size_t{64} << 20U; // bytes of one file
inline constexpr std::size_t LargestArchive = std::size_t{2} << 30U; // bytes that an archive may unpack to
inline constexpr long MostMet = 20000; // files of a folder, entries of an archive

// What a walk over an archive bears; tests make it small.
struct WalkLimits {
    std::size_t OneFile = LargestMet, Archive = LargestArchive;
    long Entries = MostMet;
};

} // namespace Quillon
