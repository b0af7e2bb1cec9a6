// A whole program around a least squares library: reads scans with a plain reader, fits, and writes what it
// found.
//   PROGRAM FOLDER [OUTPUT]      without an output it reads and does no more
#ifdef BENCH_CERES
#include "bench/PeerCeres.h"
#else
#include "bench/PeerMultilarge.h"
#endif
#include "bench/PlainReader.h"

#include <cstdio>

using namespace Quillon::Bench;

namespace {

Solution Fit(const Problem& p) {
#ifdef BENCH_CERES
    return RunCeresAnalytic(p, "dogleg");
#else
    return RunMultilarge(p);
#endif
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 1;
    const Problem p = ReadProblem(argv[1]);
    if (argc < 3) return p.X.empty() ? 1 : 0;
    const Solution found = Fit(p);
    std::FILE* file = std::fopen(argv[2], "w");
    if (!file) return 1;
    std::fprintf(file, "{\"iterations\": %d, \"sum_of_squares\": %.17g, \"parameters\": [", found.Iterations,
                 SumOfSquares(p, found.Parameters));
    for (std::size_t i = 0; i < found.Parameters.size(); ++i)
        std::fprintf(file, "%s%.17g", i > 0 ? ", " : "", found.Parameters[i]);
    std::fprintf(file, "]}\n");
    return std::fclose(file) == 0 ? 0 : 1;
}
