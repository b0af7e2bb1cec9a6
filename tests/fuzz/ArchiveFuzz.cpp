// Any bytes as the archive of a run: the walk ends with its files or in words, no name leads out of the
// folder, no file and no archive grows beyond what was allowed, each entry is asked for once, nothing is
// written; and what looks like scans is sorted and judged.
//
// The entry point is libFuzzer's, so that `clang++ -fsanitize=fuzzer` makes a program of it; the mutation
// test drives it with inputs of its own. A violation stops the program.

#include "files/WalkFiles.h"
#include "platform/Platform.h"
#include "platform/QuietPlatform.h"
#include "runs/RunJob.h"
#include "runs/SortCsv.h"
#include "workspace/records/Workspace.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <string>
#include <unistd.h>

namespace {

using namespace Quillon;

void RequireOfArchive(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "violated: %s\n", what);
    std::abort();
}

// A folder with the input as its only file.
struct ArchiveInFolder {
    std::filesystem::path Folder;
    std::string Path;
    Platform Former = Host;

    ArchiveInFolder(const std::uint8_t* data, std::size_t size) {
        Folder = std::filesystem::temp_directory_path() / ("quillon-archive-" + std::to_string(::getpid()));
        std::filesystem::create_directories(Folder);
        Path = (Folder / "run.tar.gz").string();
        std::ofstream(Path, std::ios::binary)
            .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        InstallPlatform(QuietPlatform(BoxAnswer::Ok));
    }
    ArchiveInFolder(const ArchiveInFolder&) = delete;
    ArchiveInFolder& operator=(const ArchiveInFolder&) = delete;
    ~ArchiveInFolder() {
        Host = Former;
        std::filesystem::remove_all(Folder);
    }
    void RequireAlone() const {
        const auto files = std::distance(std::filesystem::recursive_directory_iterator(Folder),
                                         std::filesystem::recursive_directory_iterator());
        RequireOfArchive(files == 1, "nothing is written");
    }
};

WalkLimits SmallLimits() {
    WalkLimits limits;
    limits.OneFile = 100000;
    limits.Archive = 300000;
    limits.Entries = 50;
    return limits;
}

std::vector<PassedFile> WalkSmall(const std::string& place, const MeetFile& meet) {
    const WalkLimits limits = SmallLimits();
    std::size_t met = 0, bytes = 0;
    return WalkArchive(
        place,
        [&](const MetFile& file) {
            RequireOfArchive(StaysBelow(file.Name), "a name below the folder");
            RequireOfArchive(++met <= static_cast<std::size_t>(limits.Entries), "not too many entries");
            RequireOfArchive(file.Start.size() <= StartOfFile, "a short start");
            MetFile counted = file;
            counted.Whole = [&] {
                std::string whole = file.Whole();
                bytes += whole.size();
                RequireOfArchive(whole.size() <= limits.OneFile, "no file too large");
                RequireOfArchive(bytes <= limits.Archive, "no archive too large");
                RequireOfArchive(whole.starts_with(file.Start), "the whole begins with its start");
                return whole;
            };
            meet(counted);
        },
        limits);
}

void RequireSorted(const SortedRun& run) {
    std::size_t grouped = 0;
    for (const RunGroup& group : run.Groups) {
        grouped += group.Scans.size();
        RequireOfArchive(group.Judged.size() == group.Scans.size() && group.Last < group.Scans.size(),
                         "every scan is judged");
    }
    RequireOfArchive(grouped == run.Scans.size(), "every scan in one group");
    std::vector<std::size_t> all(run.Scans.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    for (const std::string& name : NamesForFolder(run, all))
        RequireOfArchive(StaysBelow(name) && name.find('/') == std::string::npos, "a plain name");
    std::vector<std::size_t> groups(run.Groups.size());
    std::iota(groups.begin(), groups.end(), std::size_t{0});
    RequireOfArchive(!SortCsv(run, groups).empty(), "a table");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Work = FreshWorkspace();
    const ArchiveInFolder archive(data, size);
    Host.WalkFiles = WalkSmall;
    try {
        RequireSorted(SortRun(archive.Path, {}, true));
    } catch (const RuntimeError& error) {
        RequireOfArchive(!error.Text.empty(), "a refusal in words");
    }
    archive.RequireAlone();
    return 0;
}
