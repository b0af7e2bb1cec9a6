#include "tests/forms/Scans.h"

#include "commands/Analmenu.h"
#include "fit/GNLLSQ.h"
#include "fit/equations/FreeMap.h"
#include "fit/forms/FitMon.h"
#include "forms/shell/Binding.h"
#include "models/SEDEQ3.h"
#include "platform/Narrow.h"
#include "scandata/reader/ScanWriter.h"
#include "scandata/table/FitData.h"
#include "tests/support/Simulate.h"
#include "workspace/records/Workspace.h"

#include <cmath>

namespace Quillon {

namespace {

ModelCase MonomerDimer() {
    ModelCase c;
    c.Name = "MonomerDimer";
    c.Model = 2;
    c.MassA = TrueMass;
    c.LnK2 = std::log(TrueConstant);
    c.Fitted = {0, 2};
    c.Noise = 0.001;
    for (const float rpm : {16000.0F, 20000.0F, 24000.0F}) {
        SimulatedSet set;
        set.Rpm = rpm;
        set.Inner = 5.82F;
        set.Outer = 6.18F;
        set.Points = 100;
        c.Sets.push_back(set);
    }
    return c;
}

} // namespace

std::vector<std::string> WriteScans(const std::string& folder) {
    const Workspace kept = Work;
    Work = SimulatedWorkspace(MonomerDimer());
    std::vector<std::string> paths;
    for (long row = 1; row <= 3; ++row) {
        Work.FitRange[0][row] = 1;
        Work.FitRange[1][row] = Work.ScanPoints[row];
        paths.push_back(folder + "/0000" + std::to_string(row) + ".RA1");
        WriteScan(paths.back(), RowNo(row), 1);
    }
    Work = kept;
    return paths;
}

namespace {

void UseCase(const ModelCase& c) {
    Work = SimulatedWorkspace(c);
    const long sets = static_cast<long>(c.Sets.size());
    for (long row = 1; row <= sets; ++row) {
        Work.ScanFile[row] = "0000" + std::to_string(row) + ".RA1";
        Work.BaselineFile[row] = "(none)";
    }
    Work.HighestSet = ToInt16(sets);
    Work.DataChosen = Work.ModelChosen = FlagTrue;
    Work.PauseBeforeFit = FlagFalse;
    FillModelNames();
    BuildFitData();
    BuildParmNames();
    BuildParmFormats();
    BuildParmScale();
    SetDefaultBounds();
    SetMenuStatus();
    RefreshForms();
}

} // namespace

void UseSimulatedData() {
    UseCase(MonomerDimer());
}

void UseAllSets() {
    ModelCase c = MonomerDimer();
    c.Sets.resize(18, c.Sets[0]);
    for (SimulatedSet& set : c.Sets)
        set.Points = 12;
    UseCase(c);
}

namespace {

void FitUnseen() {
    Work.MonitorMode = 0;
    RunFit();
    Work.MonitorMode = 1;
    SetMenuStatus();
    RefreshForms();
}

} // namespace

void UseFinishedFit() {
    UseSimulatedData();
    FitUnseen();
}

void UseOneSet() {
    ModelCase c = MonomerDimer();
    c.Model = 1;
    c.Fitted = {0};
    c.Sets.resize(1);
    UseCase(c);
    FitUnseen();
}

void UseChannelRadii() {
    Work.ChannelRadii[0] = 5.85F;
    Work.ChannelRadii[8] = 6.15F;
}

} // namespace Quillon
