// Any bytes as a scan file and as a baseline file: each read ends well with a usable row, or in one message
// with a row that is no worse than before, and the fit's vectors can be built or refused afterwards.
//
// The entry point is libFuzzer's, so that `clang++ -fsanitize=fuzzer` makes a program of it; the mutation
// test drives it with inputs of its own. A violation stops the program.

#include "platform/Platform.h"
#include "platform/QuietPlatform.h"
#include "scandata/reader/ScanReader.h"
#include "scandata/table/FitData.h"
#include "workspace/records/Workspace.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace Quillon;

void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "violated: %s\n", what);
    std::abort();
}

// A platform whose only file is the input; counts the messages.
struct OneFile {
    std::string Bytes;
    int Messages = 0;
    Platform Former = Host;

    explicit OneFile(std::string bytes) : Bytes(std::move(bytes)) {
        Platform p = QuietPlatform(BoxAnswer::Ok);
        p.MessageBoxAnswer = [this](const BoxRequest&) {
            ++Messages;
            return BoxAnswer::Ok;
        };
        p.ReadFile = [this](const std::string&) { return Bytes; };
        p.WriteFile = [](const std::string&, const std::string&) {};
        p.FileExists = [](const std::string&) { return true; };
        InstallPlatform(p);
    }
    OneFile(const OneFile&) = delete;
    OneFile& operator=(const OneFile&) = delete;
    ~OneFile() { Host = Former; }
};

constexpr const char* GoodScan = "good\r\nR 1 20.0 10000 60 1E9 280 32\r\n6.0 0.1\r\n6.5 0.2\r\n7.0 0.4\r\n";

void CheckRow(long row) {
    const long points = Work.ScanPoints[row];
    Require(points >= 0 && points < Work.MaxPtsPerSet, "points within the limit");
    Require(Work.ScanRadius[row].Hi() >= points && Work.ScanValue[row].Hi() >= points, "arrays long enough");
    Require(Work.BaselinePoints[row] >= 0 && Work.BaselinePoints[row] <= Work.MaxPtsPerSet,
            "baseline points within the limit");
    Require(Work.BaselineRadius[row].Hi() >= Work.BaselinePoints[row] &&
                Work.BaselineValue[row].Hi() >= Work.BaselinePoints[row],
            "baseline arrays long enough");
    for (long p = 1; p <= points; ++p)
        Require(std::isfinite(Work.ScanRadius[row][p]) && std::isfinite(Work.ScanValue[row][p]),
                "finite numbers");
}

// Reads the input into a row; loaded tells that a good scan of three points stood there.
void CheckRead(OneFile& file, long row, bool loaded) {
    file.Messages = 0;
    const ScanReadResult read = ReadScan("input", RowNo(row));
    CheckRow(row);
    Require(file.Messages == (read.Ok ? 0 : 1), "a message for a failure and none otherwise");
    const long points = Work.ScanPoints[row];
    if (!read.Ok) {
        Require(points == (loaded ? 3 : 0), "a failed read leaves the count");
        return;
    }
    Require(points > 0 && Work.FitRange[0][row] == 1 && Work.FitRange[1][row] == points, "the whole scan");
    Require(read.FirstRadius == Work.ScanRadius[row][1] && read.LastRadius == Work.ScanRadius[row][points],
            "the end radii");
    Require(Work.SetChanged[row] && !Work.DataChosen && Work.NewData == -1, "the state after a read");
}

void CheckBaseline(OneFile& file, long row) {
    file.Messages = 0;
    const bool ok = ReadBaseline("input", RowNo(row));
    CheckRow(row);
    Require(file.Messages == (ok ? 0 : 1), "a message for a failure and none otherwise");
    Require(ok ? Work.BaselinePoints[row] > 0 : Work.BaselinePoints[row] == 0, "a baseline has points");
    Work.BaselineFile[row] = "input";
}

// Whatever the reads left, a build makes complete vectors or refuses.
void CheckBuild() {
    for (long row = 1; row <= 3; ++row)
        Work.IncludeSet[row] = Work.ScanPoints[row] > 0 ? 1 : 0;
    try {
        BuildFitData();
    } catch (const RuntimeError& error) {
        Require(!error.Text.empty() && !Work.DataChosen, "a refusal in words");
        return;
    }
    Require(Work.PtX.Hi() == Work.NumPts && Work.PtY.Hi() == Work.NumPts && Work.PtSet.Hi() == Work.NumPts,
            "complete vectors");
    for (long n = 1; n <= Work.NumPts; ++n)
        Require(std::isfinite(Work.PtX[n]) && std::isfinite(Work.PtY[n]) && Work.PtSet[n] >= 1 &&
                    Work.PtSet[n] <= Work.NumSets,
                "points of the fit");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Work = FreshWorkspace();
    OneFile file{std::string(data, data + size)};
    const std::string input = file.Bytes;
    file.Bytes = GoodScan;
    for (long row : {1L, 2L})
        Require(ReadScan("good", RowNo(row)).Ok, "a good scan reads");
    file.Bytes = input;
    CheckRead(file, 2, true);
    CheckRead(file, 3, false);
    CheckBaseline(file, 1);
    CheckBuild();
    return 0;
}
