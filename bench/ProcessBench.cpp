// Times whole processes: quillon-fit beside the same program with Ceres in place of its solver, on the same
// job, in turn. Reading scans, guesses, fit, errors, report: all included. Prints medians of processor and
// elapsed time, peak memory and ratios.
//
//   process-bench QUILLON_FIT CERES_FIT [REPETITIONS]
#include "bench/Problem.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Quillon::Bench;

namespace {

namespace fs = std::filesystem;

struct Program {
    std::string Name, Path;
    std::vector<double> Processor{}, Elapsed{};
    long Peak = 0; // kB
};

double Median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

// The scans of a problem as files and a job for them. The factors of A + B <-> AB that depend on the
// wavelength are extinction ratios.
void WriteJob(const Problem& p, const fs::path& folder) {
    const bool dimer = p.Kind == Association::DimerTetramer;
    std::ofstream job(folder / "fit.job");
    job << "[fit]\nmodel = " << (dimer ? 4 : 8) << "\nconcentration-units = " << (dimer ? "signal" : "molar")
        << "\n[constants]\nextinction-a = 10000\nextinction-b = 10000\n";
    for (int s = 0; s < p.Sets; ++s) {
        const auto i = static_cast<std::size_t>(s);
        const std::string name = "set" + std::to_string(s + 1) + ".ra1";
        std::ofstream scan(folder / name);
        char line[120];
        std::snprintf(line, sizeof line, "simulated\r\nR 1 20.0 %.0f 0080000 1.0000E11 280 1\r\n",
                      10000.0 * std::sqrt(p.SigmaScale[i]));
        scan << line;
        for (int n = 0; n < p.PointsPerSet; ++n) {
            std::snprintf(
                line, sizeof line, "%9.5f %12.5E %12.5E\r\n", 6.9 + 0.2 * n / (p.PointsPerSet - 1),
                static_cast<double>(
                    p.Y[i * static_cast<std::size_t>(p.PointsPerSet) + static_cast<std::size_t>(n)]),
                0.0);
            scan << line;
        }
        job << "[set " << s + 1 << "]\nfile = " << name << "\npath = 1.2\n";
        if (!dimer)
            job << "extinction-ratio-a = " << p.ScaleA[i] << "\nextinction-ratio-b = " << p.ScaleB[i] << "\n";
    }
    job << "[parameters]\n";
    if (dimer)
        job << "0 = 1 fit\n2 = 0.5 fit\n4 = 1.6 fit\n";
    else
        job << "0 = " << p.SigmaA << " hold\n5 = " << p.SigmaB << " hold\n6 = 10.7 fit\n";
    for (int s = 1; s <= p.Sets; ++s)
        job << "Zero Offset, set " << s << " = * fit\n";
}

void Run(Program& program, const fs::path& folder) {
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        const int sink = open((folder / (program.Name + ".err")).c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        dup2(sink, STDERR_FILENO);
        const std::string job = folder / "fit.job";
        const std::string report = folder / (program.Name + ".txt");
        const std::string results = folder / (program.Name + ".json");
        execl(program.Path.c_str(), program.Path.c_str(), job.c_str(), "--quiet", "--report", report.c_str(),
              "--results", results.c_str(), nullptr);
        _exit(127);
    }
    int status = 0;
    rusage used{};
    wait4(child, &status, 0, &used);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "%s did not finish; see %s\n", program.Path.c_str(), folder.c_str());
        std::exit(1);
    }
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + 1e-6 * static_cast<double>(t.tv_usec);
    };
    program.Elapsed.push_back(
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    program.Processor.push_back(seconds(used.ru_utime) + seconds(used.ru_stime));
    program.Peak = std::max(program.Peak, used.ru_maxrss);
}

// "sum_of_squares" of the results a program wrote.
double SumOf(const Program& program, const fs::path& folder) {
    std::ifstream in(folder / (program.Name + ".json"));
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    const std::string key = "\"sum_of_squares\": ";
    const auto at = text.find(key);
    return at == std::string::npos ? 0.0 : std::atof(text.c_str() + at + key.size());
}

void Compare(const char* title, const Problem& p, std::vector<Program> programs, int repetitions) {
    char name[] = "/tmp/process-bench-XXXXXX";
    if (!mkdtemp(name)) std::exit(1);
    const fs::path folder = name;
    WriteJob(p, folder);
    for (int i = 0; i < repetitions; ++i)
        for (Program& program : programs)
            Run(program, folder);
    std::printf("\n%s: %d sets of %d points, %d parameters\n", title, p.Sets, p.PointsPerSet, p.Parameters());
    for (const Program& program : programs)
        std::printf("  %-24s processor %8.2f ms  elapsed %8.2f ms  peak %6.1f MiB  sum of squares %.6e\n",
                    program.Name.c_str(), Median(program.Processor) * 1e3, Median(program.Elapsed) * 1e3,
                    static_cast<double>(program.Peak) / 1024.0, SumOf(program, folder));
    std::printf("  ours / Ceres: processor %.2f, elapsed %.2f\n",
                Median(programs[0].Processor) / Median(programs[1].Processor),
                Median(programs[0].Elapsed) / Median(programs[1].Elapsed));
    fs::remove_all(folder);
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "process-bench QUILLON_FIT CERES_FIT [REPETITIONS]\n");
        return 1;
    }
    const int repetitions = argc > 3 ? std::max(1, std::atoi(argv[3])) : 31;
    const std::vector<Program> programs = {{"quillon-fit", argv[1]}, {"ceres-fit", argv[2]}};
    for (const auto& [sets, points] : {std::pair{6, 200}, std::pair{18, 1500}}) {
        Compare("monomer - dimer - tetramer", MakeProblem(Association::DimerTetramer, sets, points), programs,
                repetitions);
        Compare("A + B <-> AB", MakeProblem(Association::Complex, sets, points), programs, repetitions);
    }
    return 0;
}
