// Times whole processes on the same scans from the same start, in turn: quillon-fit; the same program with
// Ceres in place of its solver; and programs of a library and a plain reader, which know these scans and no
// others. Reading, fit, errors, report: all included, as far as a program has them. Prints medians of
// processor and elapsed time, peak memory and ratios; or, with valgrind, counts of instructions.
//
//   process-bench FOLDER_OF_THE_PROGRAMS [REPETITIONS | --instructions]
#include "bench/PlainReader.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Quillon::Bench;

namespace {

namespace fs = std::filesystem;

// A program that takes a job; one of a library and a plain reader; that reader alone.
enum class Kinds { Job, Plain, Reader };

struct Program {
    std::string Name, Path;
    Kinds Kind{};
    std::vector<double> Processor{}, Elapsed{};
    long Peak = 0; // kB
    double Instructions = 0.0;
};

double Median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

// The start, in the units of the job: those of the problem but for the concentrations of A + B <-> AB, which
// are molar there.
void WriteStart(const Problem& p, std::ofstream& job) {
    const bool dimer = p.Kind == Association::DimerTetramer;
    const double molar = dimer ? 0.0 : std::log(10000.0 * 1.2);
    job << std::setprecision(9) << "[parameters]\n";
    const int globals[] = {0, 2, 4};
    for (int g = 0; g < p.Globals; ++g)
        job << (dimer ? globals[g] : 6) << " = " << p.Start[static_cast<std::size_t>(g)] << " fit\n";
    if (!dimer) job << "0 = " << p.SigmaA << " hold\n5 = " << p.SigmaB << " hold\n";
    for (int s = 0; s < p.Sets; ++s) {
        const double* own = p.Start.data() + p.Globals + s * p.PerSet;
        const int first = 3 * (s + 1) + 5;
        job << first << " = " << own[0] - molar << " fit\n";
        if (!dimer) job << first + 1 << " = " << own[1] - molar << " fit\n";
        job << first + 2 << " = " << own[p.PerSet - 1] << " fit\n";
    }
}

// The scans of a problem as files and a job for them. The factors of A + B <-> AB that depend on the
// wavelength are extinction ratios.
void WriteJob(const Problem& p, const fs::path& folder) {
    const bool dimer = p.Kind == Association::DimerTetramer;
    std::ofstream job(folder / "fit.job");
    job << "[fit]\nguesses = no\nmodel = " << (dimer ? 4 : 8)
        << "\nconcentration-units = " << (dimer ? "signal" : "molar")
        << "\n[constants]\nextinction-a = 10000\nextinction-b = 10000\n";
    for (int s = 0; s < p.Sets; ++s) {
        const auto i = static_cast<std::size_t>(s);
        const std::string name = ScanName(s);
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
    WriteStart(p, job);
    WriteDescription(p, folder);
}

// The arguments of a program: ours take a job and give report and results, the plain ones take the folder and
// give results; one that only reads has no output.
std::vector<std::string> ArgumentsOf(const Program& program, const fs::path& folder) {
    const std::string output = folder / (program.Name + ".json");
    if (program.Kind == Kinds::Reader) return {program.Path, folder};
    if (program.Kind == Kinds::Plain) return {program.Path, folder, output};
    return {program.Path,
            folder / "fit.job",
            "--quiet",
            "--report",
            folder / (program.Name + ".txt"),
            "--results",
            output};
}

[[noreturn]] void Become(const std::vector<std::string>& arguments, const fs::path& errors) {
    const int sink = open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    dup2(sink, STDERR_FILENO);
    std::vector<char*> list;
    for (const std::string& argument : arguments)
        list.push_back(const_cast<char*>(argument.c_str()));
    list.push_back(nullptr);
    execvp(list[0], list.data());
    _exit(127);
}

// Starts a program, waits for its end, and gives what it used.
rusage Finish(const std::vector<std::string>& arguments, const fs::path& errors) {
    const pid_t child = fork();
    if (child == 0) Become(arguments, errors);
    int status = 0;
    rusage used{};
    wait4(child, &status, 0, &used);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "%s did not finish; see %s\n", arguments[0].c_str(), errors.c_str());
        std::exit(1);
    }
    return used;
}

void Run(Program& program, const fs::path& folder) {
    const auto start = std::chrono::steady_clock::now();
    const rusage used = Finish(ArgumentsOf(program, folder), folder / (program.Name + ".err"));
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + 1e-6 * static_cast<double>(t.tv_usec);
    };
    program.Elapsed.push_back(
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    program.Processor.push_back(seconds(used.ru_utime) + seconds(used.ru_stime));
    program.Peak = std::max(program.Peak, used.ru_maxrss);
}

// Instructions of a run in millions, which no neighbour on the machine disturbs.
double InstructionsOf(const Program& program, const fs::path& folder) {
    std::vector<std::string> arguments{"valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null"};
    for (const std::string& argument : ArgumentsOf(program, folder))
        arguments.push_back(argument);
    const fs::path told = folder / (program.Name + ".callgrind");
    Finish(arguments, told);
    std::ifstream in(told);
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    const std::string key = "Collected : ";
    const auto at = text.find(key);
    return at == std::string::npos ? 0.0 : 1e-6 * std::atof(text.c_str() + at + key.size());
}

// "sum_of_squares" of the results a program wrote.
double SumOf(const Program& program, const fs::path& folder) {
    std::ifstream in(folder / (program.Name + ".json"));
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    const std::string key = "\"sum_of_squares\": ";
    const auto at = text.find(key);
    return at == std::string::npos ? 0.0 : std::atof(text.c_str() + at + key.size());
}

struct Settings {
    int Repetitions = 31;
    bool Instructions = false; // count them in place of the time
};

// Ours over the fastest peer, by what a program needed.
template <class Need>
void PrintRatios(const std::vector<Program>& programs, const char* of, const Need& need) {
    double fastest = 1e308;
    for (const Program& program : programs)
        if (program.Kind == Kinds::Plain) fastest = std::min(fastest, need(program));
    std::printf("  %s: ours / fastest plain peer %.2f", of, need(programs[0]) / fastest);
    for (const Program& program : programs)
        if (&program != &programs[0] && program.Kind != Kinds::Reader)
            std::printf(", / %s %.2f", program.Name.c_str(), need(programs[0]) / need(program));
    std::printf("\n");
}

void CompareTimes(const fs::path& folder, std::vector<Program>& programs, int repetitions) {
    for (int i = 0; i < repetitions; ++i)
        for (Program& program : programs)
            Run(program, folder);
    for (const Program& program : programs)
        std::printf("  %-24s processor %8.2f ms  elapsed %8.2f ms  peak %6.1f MiB  sum of squares %.6e\n",
                    program.Name.c_str(), Median(program.Processor) * 1e3, Median(program.Elapsed) * 1e3,
                    static_cast<double>(program.Peak) / 1024.0, SumOf(program, folder));
    PrintRatios(programs, "processor", [](const Program& p) { return Median(p.Processor); });
    PrintRatios(programs, "elapsed", [](const Program& p) { return Median(p.Elapsed); });
}

void CompareInstructions(const fs::path& folder, std::vector<Program>& programs) {
    for (Program& program : programs) {
        program.Instructions = InstructionsOf(program, folder);
        std::printf("  %-24s %8.1f million instructions\n", program.Name.c_str(), program.Instructions);
    }
    PrintRatios(programs, "instructions", [](const Program& p) { return p.Instructions; });
}

void Compare(const char* title, const Problem& p, std::vector<Program> programs, const Settings& settings) {
    char name[] = "/tmp/process-bench-XXXXXX";
    if (!mkdtemp(name)) std::exit(1);
    const fs::path folder = name;
    WriteJob(p, folder);
    std::printf("\n%s: %d sets of %d points, %d parameters\n", title, p.Sets, p.PointsPerSet, p.Parameters());
    settings.Instructions ? CompareInstructions(folder, programs)
                          : CompareTimes(folder, programs, settings.Repetitions);
    fs::remove_all(folder);
}

} // namespace

int main(int argc, char** argv) {
    Settings settings;
    if (argc > 2 && std::string_view(argv[2]) == "--instructions") settings.Instructions = true;
    if (argc > 2 && !settings.Instructions) settings.Repetitions = std::max(1, std::atoi(argv[2]));
    if (argc < 2) {
        std::fprintf(stderr, "process-bench FOLDER_OF_THE_PROGRAMS [REPETITIONS | --instructions]\n");
        return 1;
    }
    const fs::path bin = argv[1];
    const std::vector<Program> programs = {{"quillon-fit", bin / "quillon-fit", Kinds::Job},
                                           {"ceres-fit", bin / "ceres-fit", Kinds::Job},
                                           {"gsl-plain", bin / "gsl-plain", Kinds::Plain},
                                           {"ceres-plain", bin / "ceres-plain", Kinds::Plain},
                                           {"plain-reading", bin / "gsl-plain", Kinds::Reader}};
    for (const auto& [sets, points] : {std::pair{6, 200}, std::pair{18, 1500}}) {
        Compare("monomer - dimer - tetramer", MakeProblem(Association::DimerTetramer, sets, points), programs,
                settings);
        Compare("A + B <-> AB", MakeProblem(Association::Complex, sets, points), programs, settings);
    }
    return 0;
}
