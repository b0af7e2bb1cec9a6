// Times the program's engine beside established least squares libraries on the same points, from the same
// start, to the same stopping rule, on one thread, in turn within one run. Prints medians and ratios.
//
//   fit-bench            the comparison, the cost of a sums pass, growth with the number of sets
//   fit-bench --quick    fewer repetitions
#include "bench/OwnFit.h"
#include "bench/PeerCeres.h"
#include "bench/PeerGsl.h"
#include "bench/PeerMinpack.h"
#include "bench/PeerMultilarge.h"
#include "bench/Problem.h"
#include "fit/GNLLSQ.h"
#include "platform/QuietPlatform.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>

using namespace Quillon;
using namespace Quillon::Bench;

namespace {

// Processor time: everybody runs on one thread, and another process on the machine is nobody's fault.
double Seconds() {
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
}

double Median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

struct Contestant {
    std::string Name;
    std::function<Solution(const Problem&)> Run;
    bool Slow = false;
    std::vector<double> Times;
    Solution Found;
};

std::vector<Contestant> Contestants() {
    return {{"Quillon", RunQuillon},
            {"Ceres analytic, Schur", [](const Problem& p) { return RunCeresAnalytic(p, "schur"); }},
            {"Ceres analytic, Schur, dogleg", [](const Problem& p) { return RunCeresAnalytic(p, "dogleg"); }},
            {"Ceres analytic, dense Cholesky", [](const Problem& p) { return RunCeresAnalytic(p, "dense"); }},
            {"Ceres analytic, sparse", [](const Problem& p) { return RunCeresAnalytic(p, "sparse"); }},
            {"Ceres numeric, Schur", RunCeresNumeric},
            {"GSL multilarge, double dogleg", RunMultilarge},
            {"GSL multifit_nlinear", RunGsl, true},
            {"cminpack lmder", RunMinpack, true}};
}

void Compare(const Problem& p, const char* title, int repetitions) {
    std::printf("\n%s: %d sets of %d points, %d parameters\n", title, p.Sets, p.PointsPerSet, p.Parameters());
    auto all = Contestants();
    for (int pass = 0; pass < repetitions; ++pass)
        for (Contestant& c : all) {
            if (c.Slow && pass >= 3) continue;
            if (c.Name == "Quillon") LoadWorkspace(p);
            const double t = Seconds();
            c.Found = c.Run(p);
            c.Times.push_back(Seconds() - t);
        }
    double best = 1e308;
    for (const Contestant& c : all)
        best = std::min(best, SumOfSquares(p, c.Found.Parameters));
    const double own = Median(all[0].Times);
    double fastest = 1e308;
    for (const Contestant& c : all) {
        const double t = Median(c.Times);
        if (&c != &all[0]) fastest = std::min(fastest, t);
        std::printf(
            "  %-32s %10.3f ms  %3d iterations  sum of squares above the best by %8.1e  ours / this %5.2f\n",
            c.Name.c_str(), t * 1e3, c.Found.Iterations, SumOfSquares(p, c.Found.Parameters) / best - 1.0,
            own / t);
    }
    std::printf("  ours / fastest peer: %.2f\n", own / fastest);
}

// One pass of sums against nothing but the exponentials that it has to evaluate anew.
void SumsPass(const Problem& p, const char* title, int exponentials) {
    LoadWorkspace(p);
    std::vector<double> pass;
    std::vector<double> bare;
    double sink = 0.0;
    for (int i = 0; i < 200; ++i) {
        double t = Seconds();
        AccumulateSums();
        pass.push_back(Seconds() - t);
        t = Seconds();
        for (int e = 0; e < exponentials; ++e) {
            const double slope = 0.9 + 0.01 * e;
            for (long n = 1; n <= Work.NumPts; ++n)
                sink += std::exp(static_cast<double>(Work.PtX[n]) * slope - 2.0);
        }
        bare.push_back(Seconds() - t);
    }
    std::printf("  %-28s %3d x %4d: %8.1f us, exponentials %8.1f us, ratio %.2f%s\n", title, p.Sets,
                p.PointsPerSet, Median(pass) * 1e6, Median(bare) * 1e6, Median(pass) / Median(bare),
                sink == 0.0 ? " " : "");
}

void Growth(Association kind, const char* title) {
    std::printf("\n%s, 1500 points a set: time of a sums pass and of a whole fit by the number of sets\n",
                title);
    for (const int sets : {1, 3, 6, 12, 18}) {
        const Problem p = MakeProblem(kind, sets, 1500);
        std::vector<double> fits;
        std::vector<double> passes;
        int iterations = 0;
        for (int i = 0; i < 9; ++i) {
            LoadWorkspace(p);
            double t = Seconds();
            AccumulateSums();
            passes.push_back(Seconds() - t);
            t = Seconds();
            iterations = RunQuillon(p).Iterations;
            fits.push_back(Seconds() - t);
        }
        std::printf("  %2d sets: pass %8.1f us (%6.1f us a set), fit %8.3f ms in %d iterations\n", sets,
                    Median(passes) * 1e6, Median(passes) * 1e6 / sets, Median(fits) * 1e3, iterations);
    }
}

void InstallQuietPlatform() {
    Platform quiet = QuietPlatform();
    quiet.MessageBoxAnswer = [](const BoxRequest& request) {
        std::printf("  message: %s\n", request.Text.c_str());
        return BoxAnswer::Ok;
    };
    InstallPlatform(quiet);
}

} // namespace

int main(int argc, char** argv) {
    const bool quick = argc > 1 && std::strcmp(argv[1], "--quick") == 0;
    InstallQuietPlatform();
    const int few = quick ? 5 : 21;
    const int many = quick ? 15 : 101;
    const auto dimer = Association::DimerTetramer;
    const auto complex = Association::Complex;
    Compare(MakeProblem(dimer, 6, 200), "monomer - dimer - tetramer", many);
    Compare(MakeProblem(dimer, 18, 1500), "monomer - dimer - tetramer", few);
    Compare(MakeProblem(complex, 6, 200), "A + B <-> AB", many);
    Compare(MakeProblem(complex, 18, 1500), "A + B <-> AB", few);
    std::printf("\nOne sums pass against its exponentials\n");
    for (const auto& [sets, points] : {std::pair{6, 200}, std::pair{18, 1500}}) {
        SumsPass(MakeProblem(dimer, sets, points), "monomer - dimer - tetramer", 3);
        SumsPass(MakeProblem(complex, sets, points), "A + B <-> AB", 4);
    }
    Growth(dimer, "monomer - dimer - tetramer");
    Growth(complex, "A + B <-> AB");
    return 0;
}
