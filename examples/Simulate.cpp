// quillon-simulate: writes scans of sedimentation equilibrium with a known truth.
//
//     quillon-simulate TRUTH DIRECTORY [--noise-free]
//
// TRUTH is a text file of sections and "key = value" lines (examples/README.md lists them): components with
// mass and partial specific volume, complexes with their association constants, optics, columns of solution
// with their loadings, scans. Each scan of it becomes a file of that name in DIRECTORY. The same truth gives
// the same bytes. Exit status 0, or 1 with one line on standard error.
//
// At equilibrium the free molar concentration of component i is c_i(r) = c_i(m) exp(sigma_i (r^2 - m^2) / 2),
// with sigma = M (1 - vbar rho) w^2 / (R T), and a complex of i A and j B stands at K [A]^i [B]^j. The
// concentrations at the middle m of a column follow from what was loaded: no matter leaves the sector.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <numbers>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr double R = 8.3144710e7; // erg per mole and kelvin

// --- the truth file --------------------------------------------------------------------------------------

struct Section {
    std::string Kind, Name; // "scan", "00020.RA2"
    std::map<std::string, std::string> Values;
};

[[noreturn]] void Fail(const std::string& text) {
    throw std::runtime_error(text);
}

std::string Trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::vector<Section> ReadTruth(const std::string& path) {
    std::ifstream in(path);
    if (!in) Fail(path + ": cannot be read");
    std::vector<Section> sections = {{"general", "", {}}};
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        const std::string text = Trimmed(line.substr(0, line.find(';')));
        if (text.empty()) continue;
        const auto equals = text.find('=');
        if (text.front() == '[' && text.back() == ']') {
            std::istringstream head(text.substr(1, text.size() - 2));
            Section section;
            head >> section.Kind >> section.Name;
            sections.push_back(section);
        } else if (equals != std::string::npos) {
            sections.back().Values[Trimmed(text.substr(0, equals))] = Trimmed(text.substr(equals + 1));
        } else {
            Fail(path + ":" + std::to_string(number) + ": neither a section nor a key = value line");
        }
    }
    return sections;
}

std::string Text(const Section& section, const std::string& key) {
    const auto found = section.Values.find(key);
    if (found == section.Values.end())
        Fail("[" + section.Kind + " " + section.Name + "]: " + key + " is missing");
    return found->second;
}

double Number(const Section& section, const std::string& key) {
    const std::string text = Text(section, key);
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (end == text.c_str() || *end != 0)
        Fail("[" + section.Kind + " " + section.Name + "]: " + key + ": \"" + text + "\" is no number");
    return value;
}

double NumberOr(const Section& section, const std::string& key, double otherwise) {
    return section.Values.count(key) != 0 ? Number(section, key) : otherwise;
}

// Two numbers, of A and of B; the second is 0 when it is not given.
std::array<double, 2> Pair(const Section& section, const std::string& key) {
    std::istringstream in(Text(section, key));
    std::array<double, 2> pair = {0, 0};
    if (!(in >> pair[0])) Fail("[" + section.Kind + " " + section.Name + "]: " + key + " is no number");
    in >> pair[1];
    return pair;
}

const Section& Find(const std::vector<Section>& all, const std::string& kind, const std::string& name) {
    for (const Section& each : all)
        if (each.Kind == kind && each.Name == name) return each;
    Fail("there is no section [" + kind + " " + name + "]");
}

// --- random numbers
// ------------------------------------------------------------------------------------------

// xoshiro256** started by splitmix64, normal deviates by the polar method: the same on every machine.
class Noise {
public:
    explicit Noise(std::uint64_t seed) {
        for (std::uint64_t& each : State) {
            std::uint64_t z = (seed += 0x9e3779b97f4a7c15U);
            z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
            z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
            each = z ^ (z >> 31);
        }
    }
    double Uniform() {
        const std::uint64_t result = Turn(State[1] * 5, 7) * 9, t = State[1] << 17;
        State[2] ^= State[0];
        State[3] ^= State[1];
        State[1] ^= State[2];
        State[0] ^= State[3];
        State[2] ^= t;
        State[3] = Turn(State[3], 45);
        return static_cast<double>(result >> 11) * 0x1.0p-53;
    }
    double Normal() {
        double u = 0, v = 0, square = 0;
        do {
            u = 2 * Uniform() - 1;
            v = 2 * Uniform() - 1;
            square = u * u + v * v;
        } while (square >= 1 || square == 0);
        return u * std::sqrt(-2 * std::log(square) / square);
    }

private:
    static std::uint64_t Turn(std::uint64_t x, int by) { return (x << by) | (x >> (64 - by)); }
    std::array<std::uint64_t, 4> State{};
};

// --- the solution at equilibrium
// -------------------------------------------------------------------------------

struct Species {
    std::array<double, 2> Units; // of A and of B
    double LnK;                  // 0 for the free components
};

struct Solution {
    std::vector<Species> All;
    std::array<double, 2> Sigma{}; // of A and B at the speed of the scan, 1/cm^2
};

struct Column {
    double Inner{}, Outer{}; // cm, at speed
    std::array<double, 2> LnMiddle{};
    double Middle() const { return std::sqrt((Inner * Inner + Outer * Outer) / 2); }
};

// Total molar amount of A and B units at a radius, each weighted.
double WeightedTotal(const Solution& s, const Column& c, double r, const std::array<double, 2>& weight) {
    const double x = (r * r - c.Middle() * c.Middle()) / 2;
    double total = 0;
    for (const Species& each : s.All) {
        double ln = each.LnK;
        for (std::size_t i = 0; i < 2; ++i)
            if (each.Units[i] > 0) ln += each.Units[i] * (c.LnMiddle[i] + s.Sigma[i] * x);
        total += (each.Units[0] * weight[0] + each.Units[1] * weight[1]) * std::exp(ln);
    }
    return total;
}

// The mean amount of one component over the sector, by Simpson's rule on r dr.
double LoadedAmount(const Solution& s, const Column& c, std::size_t component) {
    constexpr int Panels = 200;
    std::array<double, 2> weight = {0, 0};
    weight[component] = 1;
    const double h = (c.Outer - c.Inner) / Panels;
    double sum = 0;
    for (int i = 0; i <= Panels; ++i) {
        const double r = c.Inner + i * h;
        const int simpson = i == 0 || i == Panels ? 1 : i % 2 == 1 ? 4 : 2;
        sum += simpson * r * WeightedTotal(s, c, r, weight);
    }
    return sum * h / 3 / ((c.Outer * c.Outer - c.Inner * c.Inner) / 2);
}

// Sets the free amounts so that the loaded ones come out: one halving inside the other, since the amount of
// a component rises with its own free concentration.
void MeetLoadings(const Solution& s, Column& c, const std::array<double, 2>& loading, std::size_t component) {
    if (loading[component] <= 0) {
        if (component == 1) MeetLoadings(s, c, loading, 0);
        return;
    }
    double low = -60, high = std::log(loading[component]) + 5;
    for (int i = 0; i < 70; ++i) {
        c.LnMiddle[component] = (low + high) / 2;
        if (component == 1) MeetLoadings(s, c, loading, 0);
        const bool tooMuch = LoadedAmount(s, c, component) > loading[component];
        (tooMuch ? high : low) = c.LnMiddle[component];
    }
}

Solution SolutionAt(const std::vector<Section>& truth, double rpm) {
    const Section& general = truth.front();
    const double omega = rpm * std::numbers::pi / 30;
    const double kelvin = Number(general, "temperature") + 273.15;
    Solution s;
    for (const Section& each : truth) {
        if (each.Kind == "component") {
            const std::size_t i = each.Name == "B" ? 1 : 0;
            s.Sigma[i] = 1000 * Number(each, "mass") *
                         (1 - Number(each, "vbar") * Number(general, "density")) * omega * omega /
                         (R * kelvin);
            s.All.push_back({{i == 0 ? 1.0 : 0.0, i == 1 ? 1.0 : 0.0}, 0});
        } else if (each.Kind == "complex") {
            s.All.push_back({Pair(each, "units"), Number(each, "ln-k")});
        }
    }
    return s;
}

// --- scans
// ------------------------------------------------------------------------------------------------------

std::string Formatted(const char* format, double value) {
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

// "8.44000E-002": a mantissa of five decimals and an exponent of the digits that the optics write.
std::string Scientific(double value, std::size_t exponentDigits) {
    std::string text = Formatted("%.5E", value);
    const auto sign = text.find('E') + 1;
    while (text.size() - sign - 1 < exponentDigits)
        text.insert(sign + 1, 1, '0');
    return text;
}

struct Optics {
    bool Interference{};
    std::array<double, 2> Coefficient{}; // signal of 1 mol/L in 1 cm
    double Path{}, Noise{}, Wavelength{};
};

Optics OpticsOf(const Section& section) {
    return {Text(section, "type") == "interference", Pair(section, "coefficient"), Number(section, "path"),
            Number(section, "noise"), Number(section, "wavelength")};
}

std::string Header(const Section& general, const Section& scan, const Optics& optics) {
    const double rpm = Number(scan, "speed"), time = Number(scan, "time");
    const double omega = rpm * std::numbers::pi / 30;
    std::string integral = Formatted("%.4E", omega * omega * time);
    integral.erase(std::remove(integral.begin(), integral.end(), '+'), integral.end());
    return (optics.Interference ? "P " : "R ") + Formatted("%.0f ", Number(scan, "cell")) +
           Formatted("%.1f ", Number(general, "temperature")) + Formatted("%05.0f ", rpm) +
           Formatted("%07.0f ", time) + integral + Formatted(" %.0f ", optics.Wavelength) +
           Formatted("%.0f", Number(scan, "averaged"));
}

// The columns of a scan, stretched with the rotor, with the solution at rest in them.
struct Filled {
    Column Where;
    double Offset{};
};
std::vector<Filled> ColumnsOf(const std::vector<Section>& truth, const Section& scan,
                              const Solution& solution) {
    const double rpm = Number(scan, "speed");
    const double stretch = Number(truth.front(), "rotor-expansion") * rpm * rpm;
    std::vector<Filled> columns;
    std::istringstream names(Text(scan, "columns"));
    for (std::string name; names >> name;) {
        const Section& section = Find(truth, "column", name);
        Filled filled;
        filled.Where.Inner = Number(section, "inner") + stretch;
        filled.Where.Outer = Number(section, "outer") + stretch;
        filled.Offset = NumberOr(section, "offset", 0) + NumberOr(scan, "offset", 0);
        MeetLoadings(solution, filled.Where, Pair(section, "loading"), 1);
        columns.push_back(filled);
    }
    return columns;
}

// One point line. Outside the columns the optics see walls and air: noise far above the signal's own.
std::string PointLine(const Optics& optics, const Solution& solution, const std::vector<Filled>& columns,
                      double r, double noise, Noise& random) {
    double value = 0, deviation = 0.25;
    for (const Filled& each : columns) {
        if (r < each.Where.Inner || r > each.Where.Outer) continue;
        value = optics.Path * WeightedTotal(solution, each.Where, r, optics.Coefficient) + each.Offset;
        deviation = noise;
    }
    value += deviation * random.Normal();
    const double spread = deviation * (0.7 + 0.6 * random.Uniform());
    if (optics.Interference) {
        const std::string text = Scientific(value, 2);
        return Formatted("%9.4f", r) + std::string(15 - text.size(), ' ') + text + "\r\n";
    }
    // The absorbance optics give four decimals.
    const std::string text = Scientific(std::round(value * 1e4) / 1e4, 3);
    const std::string third = Scientific(std::round(spread * 1e4) / 1e4, 3);
    return Formatted("%9.4f", r) + std::string(15 - text.size(), ' ') + text +
           std::string(16 - third.size(), ' ') + third + "\r\n";
}

std::string ScanBytes(const std::vector<Section>& truth, const Section& scan, bool noiseFree) {
    const Section& general = truth.front();
    const Optics optics = OpticsOf(Find(truth, "optics", Text(scan, "optics")));
    const Solution solution = SolutionAt(truth, Number(scan, "speed"));
    const std::vector<Filled> columns = ColumnsOf(truth, scan, solution);
    Noise random(static_cast<std::uint64_t>(Number(scan, "seed")));
    std::string bytes = Text(general, "comment") + "\r\n";
    if (optics.Interference)
        bytes = "cm/pixel:  " + Formatted("%.11f", Number(general, "spacing")) + ", " + bytes;
    bytes += Header(general, scan, optics) + "\r\n";
    const double spacing = Number(general, "spacing"), last = Number(general, "last");
    for (double r = Number(general, "first"); r <= last;) {
        bytes += PointLine(optics, solution, columns, r, noiseFree ? 0 : optics.Noise, random);
        // A camera has even pixels; the absorbance scanner stops where it stops, in steps of 0.001 cm.
        r += optics.Interference ? spacing : spacing + 0.001 * std::floor(3 * random.Uniform() - 1);
    }
    return bytes;
}

void WriteScans(const std::string& truthFile, const std::string& directory, bool noiseFree) {
    const std::vector<Section> truth = ReadTruth(truthFile);
    int scans = 0;
    for (const Section& scan : truth) {
        if (scan.Kind != "scan") continue;
        ++scans;
        const std::string path = directory + "/" + scan.Name;
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out << ScanBytes(truth, scan, noiseFree);
        if (!out.flush()) Fail(path + ": cannot be written");
    }
    if (scans == 0) Fail(truthFile + ": no [scan] section");
}

constexpr const char* Usage = "usage: quillon-simulate TRUTH DIRECTORY [--noise-free]\n"
                              "writes the scans that the truth file describes into the directory\n";

} // namespace

int main(int count, char** words) {
    std::vector<std::string> places;
    bool noiseFree = false;
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "--help") {
            std::fputs(Usage, stdout);
            return 0;
        }
        if (word == "--noise-free")
            noiseFree = true;
        else
            places.push_back(word);
    }
    if (places.size() != 2) {
        std::fputs(Usage, stderr);
        return 1;
    }
    try {
        WriteScans(places[0], places[1], noiseFree);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "quillon-simulate: %s\n", failure.what());
        return 1;
    }
    return 0;
}
