#include "bench/PlainReader.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace Quillon::Bench {

namespace {

[[noreturn]] void Give(const std::string& up) {
    std::fprintf(stderr, "%s is not as expected\n", up.c_str());
    std::exit(1);
}

std::string WholeFile(const std::string& path) {
    std::string bytes(1 << 16, '\0');
    const int file = ::open(path.c_str(), O_RDONLY);
    if (file < 0) Give(path);
    std::size_t size = 0;
    for (;;) {
        const ssize_t n = ::read(file, bytes.data() + size, bytes.size() - size);
        if (n <= 0) break;
        size += static_cast<std::size_t>(n);
        if (size == bytes.size()) bytes.resize(2 * size);
    }
    ::close(file);
    bytes.resize(size);
    return bytes;
}

// What is left of a file.
struct Text {
    const char* At;
    const char* End;
};

// A number off the front, by the library's fastest reader.
double Next(Text& text) {
    while (text.At < text.End && std::isspace(static_cast<unsigned char>(*text.At)))
        ++text.At;
    double value = 0.0;
    const auto [behind, error] = std::from_chars(text.At, text.End, value);
    if (error != std::errc{}) Give("a number");
    text.At = behind;
    return value;
}

void SkipLine(Text& text) {
    const void* const end = std::memchr(text.At, '\n', static_cast<std::size_t>(text.End - text.At));
    if (!end) Give("a line");
    text.At = static_cast<const char*>(end) + 1;
}

// The points of a scan: two lines of header, then radius, value and deviation in each line, of which the last
// is not asked for. x is r^2/2 less its value in the middle of the scan.
void ReadPoints(const std::string& path, int points, Problem& p) {
    const std::string bytes = WholeFile(path);
    Text text{bytes.data(), bytes.data() + bytes.size()};
    SkipLine(text);
    SkipLine(text);
    const std::size_t first = p.X.size();
    for (int i = 0; i < points; ++i) {
        p.X.push_back(static_cast<float>(Next(text)));
        p.Y.push_back(static_cast<float>(Next(text)));
        SkipLine(text);
    }
    const double inner = static_cast<double>(p.X[first]), outer = static_cast<double>(p.X.back());
    const double middle = (inner * inner + outer * outer) / 4.0;
    for (std::size_t i = first; i < p.X.size(); ++i) {
        const double radius = static_cast<double>(p.X[i]);
        p.X[i] = static_cast<float>(radius * radius / 2.0 - middle);
    }
}

} // namespace

std::string ScanName(int set) {
    return "set" + std::to_string(set + 1) + ".ra1";
}

void WriteDescription(const Problem& p, const std::string& folder) {
    std::FILE* file = std::fopen((folder + "/problem.txt").c_str(), "w");
    if (!file) Give(folder);
    std::fprintf(file, "%d %d %d %d %d %.17g %.17g\n", static_cast<int>(p.Kind), p.Sets, p.PointsPerSet,
                 p.Globals, p.PerSet, p.SigmaA, p.SigmaB);
    for (int s = 0; s < p.Sets; ++s) {
        const auto i = static_cast<std::size_t>(s);
        std::fprintf(file, "%.17g %.17g %.17g %.17g\n", p.SigmaScale[i], p.ScaleA[i], p.ScaleB[i],
                     p.SignalAB[i]);
    }
    for (const double v : p.Start)
        std::fprintf(file, "%.17g\n", v);
    std::fclose(file);
}

Problem ReadProblem(const std::string& folder) {
    const std::string bytes = WholeFile(folder + "/problem.txt");
    Text text{bytes.data(), bytes.data() + bytes.size()};
    const auto whole = [&text] { return static_cast<int>(Next(text)); };
    Problem p;
    p.Kind = static_cast<Association>(whole());
    p.Sets = whole();
    p.PointsPerSet = whole();
    p.Globals = whole();
    p.PerSet = whole();
    p.SigmaA = Next(text);
    p.SigmaB = Next(text);
    for (int s = 0; s < p.Sets; ++s)
        for (std::vector<double>* list : {&p.SigmaScale, &p.ScaleA, &p.ScaleB, &p.SignalAB})
            list->push_back(Next(text));
    for (int i = 0; i < p.Parameters(); ++i)
        p.Start.push_back(Next(text));
    p.X.reserve(static_cast<std::size_t>(p.Points()));
    p.Y.reserve(static_cast<std::size_t>(p.Points()));
    for (int s = 0; s < p.Sets; ++s)
        ReadPoints(folder + "/" + ScanName(s), p.PointsPerSet, p);
    return p;
}

} // namespace Quillon::Bench
