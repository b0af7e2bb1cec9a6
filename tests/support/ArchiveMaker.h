#pragma once
// Archives for tests, well-formed and hostile ones.

#include <string>
#include <vector>

namespace Quillon {

struct ArchiveEntry {
    std::string Name;
    std::string Bytes;
    char Kind = 'f'; // 'f' file, 'd' folder, 'l' symbolic link, 'h' hard link, 'c' device
    std::string Link = {};
};

// The bytes of an archive: "tar", "tar.gz" or "zip".
std::string ArchiveOf(const std::vector<ArchiveEntry>& entries, const std::string& kind);

// Bytes packed with gzip.
std::string Gzipped(const std::string& bytes);

} // namespace Quillon
