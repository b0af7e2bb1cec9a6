#pragma once
// Walks over many files at once: those of a folder and all below it, or those of an archive.
//
// What lies there may have been made by anybody. Nothing is written, no link of a folder is followed, no
// device is opened for reading, and what a small archive can grow to is limited.

#include "platform/Platform.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace Quillon {

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

// The seam's WalkFiles. A place that is no folder is taken for an archive.
std::vector<PassedFile> WalkFiles(const std::string& place, const MeetFile& meet);

// Its two halves. Names of a folder come sorted by their bytes. Of a folder, links to folders and what is
// neither file nor folder are left alone; a file that cannot be opened is handed back as such.
std::vector<PassedFile> WalkFolder(const std::string& folder, const MeetFile& meet);

// Of an archive, everything that is no file is left alone, and so is an entry whose name leads out of the
// folder that it would be unpacked into. One that ends too early is a RuntimeError, and so is one that is
// packed several times over, that holds too many entries or unpacks to too much. Holes of sparse entries
// count as the zeros that they unpack to.
std::vector<PassedFile> WalkArchive(const std::string& archive, const MeetFile& meet,
                                    const WalkLimits& limits = {});

// True for a name that stays below the folder that it is put into: no root, no drive, no "..", no byte 0.
bool StaysBelow(const std::string& name);

// The seam's MakeFolder.
void MakeFolder(const std::string& path);

} // namespace Quillon
