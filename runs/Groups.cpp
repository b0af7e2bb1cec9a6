#include "runs/Groups.h"

#include "platform/Paths.h"
#include "runs/ReadRun.h"
#include "workspace/records/SameSettings.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace Quillon {

namespace {

using ScanPlaces = std::vector<std::size_t>;

// What settles the group of a scan, and where the groups stand; found step by step.
struct Place {
    long Wavelength = 0; // cluster among those of the cell and optics, by rising wavelength
    long Speed = 0;      // cluster among those of the wavelength, by rising speed
    long Stay = 0;       // of the rotor at a speed, in the order of time
    long CellSpeed = 0;  // cluster of the speed among those of the cell, whatever was measured
};

// Numbers the values of the scans named in rising order; one that is not the same as the one before it
// begins a new number.
template <class ValueOf, class IsSame, class Store>
void Number(ScanPlaces scans, const ValueOf& valueOf, const IsSame& isSame, const Store& store) {
    std::sort(scans.begin(), scans.end(),
              [&](std::size_t a, std::size_t b) { return valueOf(a) < valueOf(b); });
    long number = 0;
    for (std::size_t i = 0; i < scans.size(); ++i) {
        if (i > 0 && !isSame(valueOf(scans[i - 1]), valueOf(scans[i]))) ++number;
        store(scans[i], number);
    }
}

// Scans parted by a key.
template <class KeyOf> auto PartedBy(const SortedRun& run, const KeyOf& keyOf) {
    std::map<decltype(keyOf(std::size_t{})), ScanPlaces> parts;
    for (std::size_t i = 0; i < run.Scans.size(); ++i)
        parts[keyOf(i)].push_back(i);
    return parts;
}

// Numbers a value of the header within each part of the run that a key makes.
template <class KeyOf, class IsSame>
void NumberWithin(const SortedRun& run, const KeyOf& keyOf, float ScanHead::*member, const IsSame& isSame,
                  long Place::*number, std::vector<Place>& places) {
    for (const auto& part : PartedBy(run, keyOf))
        Number(
            part.second, [&](std::size_t i) { return run.Scans[i].Head.*member; }, isSame,
            [&](std::size_t i, long cluster) { places[i].*number = cluster; });
}

void NumberHeaders(const SortedRun& run, std::vector<Place>& places) {
    const auto cell = [&](std::size_t i) { return run.Scans[i].Cell; };
    const auto optics = [&](std::size_t i) { return std::tuple(cell(i), run.Scans[i].Optics); };
    const auto wavelength = [&](std::size_t i) { return std::tuple(optics(i), places[i].Wavelength); };
    NumberWithin(run, optics, &ScanHead::Wavelength, IsSameWavelength, &Place::Wavelength, places);
    NumberWithin(run, wavelength, &ScanHead::Rpm, IsSameSpeed, &Place::Speed, places);
    NumberWithin(run, cell, &ScanHead::Rpm, IsSameSpeed, &Place::CellSpeed, places);
}

// What one rotor made is of one folder and has one run number.
auto FolderOf(const RunScan& scan) {
    return std::tuple(DirectoryOf(scan.File), scan.Name.RunId);
}
bool IsOneFolder(const RunScan& a, const RunScan& b) {
    return FolderOf(a) == FolderOf(b);
}

bool IsEarlier(const RunScan& a, const RunScan& b) {
    return std::tuple(a.Head.Time, a.Head.Rpm) < std::tuple(b.Head.Time, b.Head.Rpm);
}

// Stays of the rotor at one speed, in the order of time; scans of one time by rising speed.
void NumberStays(const SortedRun& run, std::vector<Place>& places) {
    auto parts = PartedBy(run, [&](std::size_t i) { return FolderOf(run.Scans[i]); });
    for (auto& part : parts) {
        ScanPlaces& scans = part.second;
        std::sort(scans.begin(), scans.end(),
                  [&](std::size_t a, std::size_t b) { return IsEarlier(run.Scans[a], run.Scans[b]); });
        long stay = 0;
        for (std::size_t i = 0; i < scans.size(); ++i) {
            if (i > 0 && !IsSameSpeed(run.Scans[scans[i - 1]].Head.Rpm, run.Scans[scans[i]].Head.Rpm)) ++stay;
            places[scans[i]].Stay = stay;
        }
    }
}

void SortByTime(const SortedRun& run, ScanPlaces& scans) {
    std::sort(scans.begin(), scans.end(), [&](std::size_t a, std::size_t b) {
        const auto key = [&](std::size_t i) {
            const RunScan& scan = run.Scans[i];
            return std::tuple(scan.Head.Time, scan.Name.Scan.value_or(0), scan.Name.Replicate.value_or(0),
                              std::string_view(scan.File));
        };
        return key(a) < key(b);
    });
}

// A group of its own for each stay: in order of time, a change of stay ends one.
void Divide(const SortedRun& run, const std::vector<Place>& places, ScanPlaces scans,
            std::vector<RunGroup>& groups) {
    SortByTime(run, scans);
    std::map<decltype(FolderOf(RunScan{})), long> stays; // of each folder, the latest
    for (const std::size_t i : scans) {
        const RunScan& scan = run.Scans[i];
        const auto folder = FolderOf(scan);
        const auto known = stays.find(folder);
        const bool back = known != stays.end() && known->second != places[i].Stay;
        if (stays.empty() || back) {
            groups.push_back({scan.Cell, scan.Optics, places[i].Stay, {}, 0, {}, {}});
            stays.clear();
        }
        stays[folder] = places[i].Stay;
        groups.back().Scans.push_back(i);
    }
}

float LowestWavelength(const SortedRun& run, const ScanPlaces& scans) {
    float lowest = run.Scans[scans.front()].Head.Wavelength;
    for (const std::size_t i : scans)
        lowest = std::min(lowest, run.Scans[i].Head.Wavelength);
    return lowest;
}

void TellMixed(SortedRun& run) {
    for (std::size_t g = 0; g < run.Groups.size(); ++g) {
        const RunScan& first = run.Scans[run.Groups[g].Scans.front()];
        for (const std::size_t i : run.Groups[g].Scans) {
            const RunScan& scan = run.Scans[i];
            if (IsOneFolder(scan, first)) continue;
            run.Remarks.push_back("Group " + std::to_string(g + 1) +
                                  " has scans of several folders or runs, " + ShownName(first.File) +
                                  " and " + ShownName(scan.File) +
                                  ": they are compared as those of one sample");
            break;
        }
    }
}

} // namespace

bool IsSameStay(const SortedRun& run, const RunGroup& a, const RunGroup& b) {
    const RunScan &first = run.Scans[a.Scans.front()], &second = run.Scans[b.Scans.front()];
    const bool together = IsOneFolder(first, second);
    return (!together || a.Stay == b.Stay) && IsSameSpeed(first.Head.Rpm, second.Head.Rpm);
}

void GroupRun(SortedRun& run) {
    std::vector<Place> places(run.Scans.size());
    NumberHeaders(run, places);
    NumberStays(run, places);
    const auto parts = PartedBy(run, [&](std::size_t i) {
        const RunScan& scan = run.Scans[i];
        return std::tuple(scan.Cell, scan.Optics, places[i].Wavelength, places[i].Speed);
    });
    for (const auto& part : parts)
        Divide(run, places, part.second, run.Groups);
    std::stable_sort(run.Groups.begin(), run.Groups.end(), [&](const RunGroup& a, const RunGroup& b) {
        const auto key = [&](const RunGroup& group) {
            return std::tuple(group.Cell, places[group.Scans.front()].CellSpeed,
                              LowestWavelength(run, group.Scans), group.Optics,
                              run.Scans[group.Scans.front()].Head.Time);
        };
        return key(a) < key(b);
    });
    TellMixed(run);
}

} // namespace Quillon
