// Any bytes at all as the program's two ini files: every setting ends within its limits or at its default,
// and a value written among them is read again with all else as it was.
#include "chart/CHART.h"
#include "chart/CHARTEX.h"
#include "commands/Analmenu.h"
#include "commands/StartUp.h"
#include "input/IniFile.h"
#include "persistence/Filelist.h"
#include "platform/Platform.h"
#include "platform/QuietPlatform.h"
#include "workspace/records/Workspace.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace Quillon;

std::string File; // what every name stands for

void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "violated: %s\n", what);
    std::abort();
}

void InstallOneFile() {
    Platform p = QuietPlatform(BoxAnswer::Yes);
    p.AskText = [](const InputRequest&) { return InputAnswer{false, "1"}; };
    p.ReadFile = [](const std::string&) { return File; };
    p.WriteFile = [](const std::string&, const std::string& bytes) { File = bytes; };
    p.FileExists = [](const std::string&) { return true; };
    InstallPlatform(p);
}

void ReadAll() {
    StartQuillon("");
    Require(Work.FormScalingPercent >= 75 && Work.FormScalingPercent <= 200, "formscalingpercent");
    Require(Work.MaxPtsPerSet >= 2048, "MaxPtsPerSet");
    Require(Work.Model >= 1 && Work.Model <= 22, "FitModelNumber");
    Require(Work.ConcUnits >= 0 && Work.ConcUnits <= 5, "ConcentrationUnits");
    Require(Work.MassUnits >= 0 && Work.MassUnits <= 2, "MWUnits");
    Require(Work.CellType == 1 || Work.CellType == 3 || Work.CellType == 4, "CellType");
    for (long item = 1; item <= MaxRecentFiles; ++item)
        Require(mnuRecentFile[item].Visible == !mnuRecentFile[item].Path.empty(), "recent files");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    InstallOneFile();
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    File = bytes;
    ReadAll();
    ReadChartDefaults();
    const std::string other = IniValue(bytes, "other", "key", "none");
    const std::string written = WithIniValue(bytes, "gnllsq", "MaxIterations", "77");
    Require(IniValue(written, "GNLLSQ", "maxiterations") == "77", "a value written");
    Require(IniValue(written, "other", "key", "none") == other, "a value of another section");
    SaveFitDefaults();
    SaveProgramDefaults();
    AddRecentFile("/fit.quil");
    Require(mnuRecentFile[1].Path == "/fit.quil", "the latest file");
    ReadAll();
    Require(mnuRecentFile[1].Path == "/fit.quil", "the latest file read again");
    Require(IniValue(File, "other", "key", "none") == other, "a value of another section");
    return 0;
}
