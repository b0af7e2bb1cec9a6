#include "runs/RunJob.h"

#include "input/NUMINPUT.h"
#include "input/ShortestText.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "runs/Approach.h"
#include "runs/ReadRun.h"

#include <algorithm>
#include <set>

namespace Quillon {

namespace {

// A value that a job reads as it stands.
std::string Value(const std::string& text) {
    const bool plain = text.find_first_of(" ;#\",") == std::string::npos;
    return plain ? text : '"' + text + '"';
}

// Channels of the centerpiece to samples in it: each sample has a reference channel beside it.
const char* CenterpieceText(std::int16_t samples) {
    return samples == 4 ? "8" : "6";
}

std::string FilesText(const SortedRun& run, const RunSet& set, const ScanPath& nameOf) {
    std::string list;
    for (const std::size_t i : set.Scans)
        list += (list.empty() ? "" : ", ") + Value(nameOf(run.Groups[set.Group].Scans[i]));
    return list;
}

std::string RatioText(const RunSet& set, float wavelength) {
    const auto lines = [](const char* mark, const std::string& a, const std::string& b) {
        return std::string(mark) + "extinction-ratio-a = " + a + "\n" + mark + "extinction-ratio-b = " + b +
               "\n";
    };
    if (set.Ratio) return lines("", ShortestText(set.Ratio->A), ShortestText(set.Ratio->B));
    if (!set.LacksRatio) return "";
    return "; the extinction at " + SingleText(wavelength) + " nm against that of set 1 is not known\n" +
           lines("; ", "1", "1");
}

std::string ColumnText(const RunChannel& column) {
    const std::string range =
        "inner = " + ShortestText(column.Inner) + "\nouter = " + ShortestText(column.Outer) + "\n";
    if (column.Channel == 0) return range;
    return std::string("centerpiece = ") + CenterpieceText(column.Samples) +
           "\nchannel = " + static_cast<char>('A' + column.Channel - 1) + "\n" + range;
}

std::string SetText(const SortedRun& run, const RunSet& set, const ScanPath& nameOf) {
    const RunGroup& group = run.Groups[set.Group];
    const RunScan& last = run.Scans[group.Scans[set.Scans.back()]];
    std::string text = "; cell " + std::to_string(group.Cell) + ", " + SingleText(last.Head.Rpm) + " rpm, " +
                       SingleText(last.Head.Wavelength) + " nm: " + ApproachText(run, group) + "\n";
    text += "file = " + FilesText(run, set, nameOf) + "\n";
    text += ColumnText(set.Column);
    text += RatioText(set, last.Head.Wavelength);
    if (set.ConcentrationsOf > 0)
        text += "concentrations-of = " + std::to_string(set.ConcentrationsOf) + "\n";
    return text;
}

bool IsPlain(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
           c == '_' || c == '-';
}

std::string PlainName(std::string name) {
    for (char& c : name)
        if (!IsPlain(c)) c = '_';
    constexpr std::size_t longest = 200; // with a number in front it is still a name on every disk
    if (name.size() > longest) name.erase(0, name.size() - longest);
    if (name.find_first_not_of('.') == std::string::npos) name += '_'; // "." and ".." are no files
    return name;
}

} // namespace

std::string RunJobText(const SortedRun& run, const std::vector<RunSet>& sets, const ScanPath& nameOf) {
    std::string text = "; the last scans of " + ShownName(FileTitle(run.Place)) + "\n";
    text += "[fit]\nmodel = 1\nmass-units = sigma\n";
    for (std::size_t i = 0; i < sets.size(); ++i)
        text += "\n[set " + std::to_string(i + 1) + "]\n" + SetText(run, sets[i], nameOf);
    return text;
}

std::vector<std::size_t> ScansOf(const SortedRun& run, const std::vector<RunSet>& sets) {
    std::vector<std::size_t> scans;
    for (const RunSet& set : sets)
        for (const std::size_t i : set.Scans) {
            const std::size_t scan = run.Groups[set.Group].Scans[i];
            if (std::find(scans.begin(), scans.end(), scan) == scans.end()) scans.push_back(scan);
        }
    return scans;
}

std::vector<std::string> NamesForFolder(const SortedRun& run, const std::vector<std::size_t>& scans) {
    std::vector<std::string> names;
    std::set<std::string> taken;
    for (const std::size_t scan : scans) {
        const std::string plain = PlainName(FileTitle(run.Scans[scan].File));
        std::string name = plain;
        for (int number = 2; !taken.insert(name).second; ++number)
            name = std::to_string(number) + "-" + plain;
        names.push_back(name);
    }
    return names;
}

void LayScans(const SortedRun& run, const std::vector<std::size_t>& scans,
              const std::vector<std::string>& names, const std::string& folder) {
    const auto at = [&](std::size_t i) { return JoinPath(folder, names[i]); };
    std::size_t written = 0;
    std::string path = folder;
    try {
        Host.MakeFolder(folder);
        for (; written < scans.size(); ++written) {
            path = at(written);
            Host.WriteFile(path, run.Scans[scans[written]].Whole);
        }
    } catch (const RuntimeError& error) {
        for (std::size_t i = 0; i < written; ++i)
            Host.RemoveFile(at(i));
        RaiseError(path + ": " + error.Text);
    }
}

} // namespace Quillon
