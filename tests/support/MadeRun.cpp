#include "tests/support/MadeRun.h"

#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Simulate.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace Quillon {

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr long StageSeconds = 72000;

double SigmaOf(double kiloDalton, double rpm) {
    const double omega = rpm * Pi / 30.0;
    return kiloDalton * 1e3 * (1.0 - 0.735 * 1.004) * omega * omega / (8.3144710e7 * 293.15);
}

// The signal of a column at equilibrium between inner and outer radius, its mean 0.5.
double Column(double r, double inner, double outer, double sigma) {
    const auto x = [](double radius) { return radius * radius / 2.0; };
    const double span = sigma * (x(outer) - x(inner));
    return 0.5 * span / std::expm1(span) * std::exp(sigma * (x(r) - x(inner)));
}

struct Place {
    double Inner, Outer;
};

const std::vector<Place>& PlacesOf(int channels) {
    static const std::vector<Place> one = {{6.85, 7.15}};
    static const std::vector<Place> three = {{5.87, 6.09}, {6.42, 6.6}, {6.9, 7.12}};
    return channels == 1 ? one : three;
}

// One reading: a column, or what the optics make of a rib.
double Signal(const RunPlan& plan, double r, double rpm, double disturbance, double scale,
              NoiseSource& noise) {
    const std::vector<Place>& places = PlacesOf(plan.Channels);
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (r < places[i].Inner || r > places[i].Outer) continue;
        const double share = (r - places[i].Inner) / (places[i].Outer - places[i].Inner);
        const double level = scale / static_cast<double>(i + 1);
        return level * (Column(r, places[i].Inner, places[i].Outer, SigmaOf(plan.Mass, rpm)) -
                        disturbance * (share - 0.5)) +
               plan.Noise * noise.Gaussian();
    }
    return 0.5 * noise.Gaussian();
}

std::string NameOf(const RunPlan& plan, int cell, int stage, int number, double wavelength) {
    char name[80];
    if (plan.NewNames)
        std::snprintf(name, sizeof name, "Run7-s%04d-c%d-s%04d-w%03.0f-r_-n1.ra1", stage + 1, cell, number,
                      wavelength);
    else
        std::snprintf(name, sizeof name, "%05d.RA%d", number, cell);
    return name;
}

// What a plan has measured: the same for all scans of a cell, speed and wavelength.
bool IsMissing(const RunPlan& plan, int cell, std::size_t stage, std::size_t wavelength) {
    NoiseSource chance(plan.Seed * 7919 + static_cast<std::uint64_t>(cell) * 101 + stage * 11 + wavelength);
    return chance.Uniform() < plan.MissingShare;
}

} // namespace

std::string ScanFile(char letter, int cell, double rpm, long time, double wavelength,
                     const std::vector<double>& radii, const std::vector<double>& values) {
    const double omega = rpm * Pi / 30.0;
    char line[120];
    std::snprintf(line, sizeof line, "%c %d 20.0 %05.0f %07ld %.4E %.0f 10\r\n", letter, cell, rpm, time,
                  omega * omega * static_cast<double>(time), wavelength);
    std::string text = "made by the tests\r\n" + std::string(line);
    for (std::size_t i = 0; i < radii.size(); ++i) {
        std::snprintf(line, sizeof line, "  %8.4f %13.5E %13.5E\r\n", radii[i], values[i], 0.0);
        text += line;
    }
    return text;
}

std::vector<MadeScan> MakeRun(const RunPlan& plan) {
    std::vector<MadeScan> scans;
    NoiseSource noise(plan.Seed);
    const std::vector<Place>& places = PlacesOf(plan.Channels);
    const double from = places.front().Inner - (plan.Channels == 1 ? 0.0 : 0.06);
    const double to = places.back().Outer + (plan.Channels == 1 ? 0.0 : 0.06);
    std::vector<int> next(100, 1); // number of the next scan, by cell
    for (std::size_t stage = 0; stage < plan.Speeds.size(); ++stage)
        for (int number = 0; number < plan.ScansPerStage; ++number)
            for (const int cell : plan.Cells)
                for (std::size_t w = 0; w < plan.Wavelengths.size(); ++w) {
                    if (IsMissing(plan, cell, stage, w)) continue;
                    const double rpm = plan.Speeds[stage];
                    const double off = std::floor(noise.Uniform() * (plan.Wander + 1));
                    const double disturbance = plan.Amplitude * std::exp(-number / plan.DecayScans);
                    std::vector<double> radii, values;
                    for (int p = 0; p < plan.Points; ++p) {
                        const double grid = from + (to - from) * p / (plan.Points - 1);
                        radii.push_back(std::round(grid * 1e3 + noise.Uniform() - 0.5) / 1e3);
                    }
                    std::sort(radii.begin(), radii.end());
                    radii.erase(std::unique(radii.begin(), radii.end()), radii.end());
                    const double scale = 1.0 / static_cast<double>(w + 1);
                    for (const double r : radii)
                        values.push_back(Signal(plan, r, rpm, disturbance, scale, noise));
                    const long time = static_cast<long>(stage) * StageSeconds +
                                      (number + 1) * (StageSeconds / (plan.ScansPerStage + 1)) + cell * 60 +
                                      static_cast<long>(w) * 20;
                    const int of = next[static_cast<std::size_t>(cell)]++;
                    scans.push_back({NameOf(plan, cell, static_cast<int>(stage), of, plan.Wavelengths[w]),
                                     ScanFile('R', cell, rpm, time, plan.Wavelengths[w] + off, radii, values),
                                     cell, static_cast<int>(stage), static_cast<int>(w), number, false});
                }
    for (int copy = 0; copy < plan.Duplicates; ++copy) {
        MadeScan twin = scans[static_cast<std::size_t>(noise.Uniform() * static_cast<double>(scans.size()))];
        twin.Name = "zcopy" + std::to_string(copy) + "-" + twin.Name;
        twin.Copy = true;
        scans.push_back(twin);
    }
    std::sort(scans.begin(), scans.end(),
              [](const MadeScan& a, const MadeScan& b) { return a.Name < b.Name; });
    return scans;
}

void WriteRun(const std::vector<MadeScan>& scans, const std::string& folder) {
    for (const MadeScan& scan : scans)
        WriteWholeFile(folder + "/" + scan.Name, scan.Bytes);
}

std::vector<ArchiveEntry> EntriesOf(const std::vector<MadeScan>& scans) {
    std::vector<ArchiveEntry> entries;
    for (const MadeScan& scan : scans)
        entries.push_back({"run/" + scan.Name, scan.Bytes});
    return entries;
}

} // namespace Quillon
