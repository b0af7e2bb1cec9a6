#include "runs/ReadRun.h"

#include "input/Utf8Text.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/Words.h"

#include <map>
#include <unordered_map>

namespace Quillon {

namespace {

constexpr std::size_t MostNamed = 3; // files that one sentence names

// "a, b, c and 12 more".
std::string NameList(const std::vector<std::string>& names) {
    std::string list;
    for (std::size_t i = 0; i < names.size() && i < MostNamed; ++i)
        list += (i == 0 ? "" : ", ") + ShownName(names[i]);
    return names.size() > MostNamed ? list + " and " + std::to_string(names.size() - MostNamed) + " more"
                                    : list;
}

// What was left alone on the walk, a sentence for each reason.
void TellPassed(const std::vector<PassedFile>& passed, SortedRun& run) {
    std::map<std::string, std::vector<std::string>> byReason;
    for (const PassedFile& file : passed)
        byReason[file.Why].push_back(file.Name);
    for (const auto& [why, names] : byReason)
        run.Remarks.push_back(Counted(std::ssize(names), "file is", "files are") + " left alone (" + why +
                              "): " + NameList(names));
}

// Reading goes on behind a bad file; a name is enough to call it one.
class Reader {
public:
    Reader(SortedRun& run, bool keepBytes) : Run(run), KeepsBytes(keepBytes) {}

    void Meet(const MetFile& file) {
        const bool scan = LooksLikeScan(file.Start);
        if (!scan && ScanNameOf(FileTitle(file.Name)).Type == 0) return;
        try {
            std::string bytes = file.Whole();
            RunScan read = ReadRunScan(file.Name, bytes);
            if (KeepsBytes) read.Whole = std::move(bytes);
            Take(std::move(read));
        } catch (const RuntimeError& error) {
            Run.Remarks.push_back(ShownName(file.Name) + ": it is left alone: " + error.Text);
        }
    }

    void TellTwins() {
        for (const auto& [kept, twin] : Twins)
            Run.Remarks.push_back(ShownName(twin) + ": the same bytes as " + ShownName(Run.Scans[kept].File) +
                                  ", which stands for both");
    }

private:
    // Length, a number of 64 bits made of all bytes, and the headers.
    const RunScan* TwinOf(const RunScan& scan, std::size_t& place) const {
        const auto [begin, end] = ByMark.equal_range(scan.Mark);
        for (auto at = begin; at != end; ++at) {
            const RunScan& other = Run.Scans[at->second];
            if (other.Bytes != scan.Bytes || other.Head.Comment != scan.Head.Comment ||
                !(other.Readings == scan.Readings))
                continue;
            place = at->second;
            return &other;
        }
        return nullptr;
    }

    void Take(RunScan scan) {
        std::size_t place = 0;
        if (TwinOf(scan, place)) return Twins.emplace_back(place, scan.File), void();
        if (scan.Head.Cell != 0 && scan.Head.Cell != scan.Cell)
            Run.Remarks.push_back(ShownName(scan.File) + ": cell " + std::to_string(scan.Cell) +
                                  " by its name, " + std::to_string(scan.Head.Cell) +
                                  " by its header; the name counts");
        ByMark.emplace(scan.Mark, Run.Scans.size());
        Run.Scans.push_back(std::move(scan));
    }

    SortedRun& Run;
    bool KeepsBytes;
    std::unordered_multimap<std::uint64_t, std::size_t> ByMark;
    std::vector<std::pair<std::size_t, std::string>> Twins; // the scan kept, the file left out
};

} // namespace

SortedRun ReadRun(const std::string& place, bool keepBytes) {
    SortedRun run;
    run.Place = place;
    Reader reader(run, keepBytes);
    try {
        TellPassed(Host.WalkFiles(place, [&](const MetFile& file) { reader.Meet(file); }), run);
    } catch (const RuntimeError& error) {
        RaiseError(place + ": " + error.Text);
    }
    reader.TellTwins();
    if (!run.Scans.empty()) return run;
    RaiseError(place + ": there is no scan in it" + (run.Remarks.empty() ? "" : "; " + run.Remarks.front()));
}

std::string ShownName(const std::string& name) {
    constexpr const char* digits = "0123456789ABCDEF";
    std::string shown;
    for (std::size_t i = 0; i < name.size();) {
        const auto byte = static_cast<unsigned char>(name[i]);
        const std::size_t length = byte < 128 ? 1 : Utf8SequenceLength(name, i);
        if (length == 0) {
            shown += "\\x";
            shown += digits[byte >> 4U];
            shown += digits[byte & 15U];
        } else {
            shown.append(name, i, length);
        }
        i += std::max<std::size_t>(length, 1);
    }
    return shown;
}

} // namespace Quillon
