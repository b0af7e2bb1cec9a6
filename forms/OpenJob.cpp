#include "forms/OpenJob.h"

#include "batch/console/BatchPlatform.h"
#include "batch/job/RunJob.h"
#include "workspace/records/Workspace.h"

#include <utility>

namespace Quillon {

namespace {

// While it lives questions are answered as in a run without anybody to ask, and nothing is written on the
// console; windows stay alive.
class AsInBatch {
public:
    AsInBatch() : Own(Host) {
        InstallBatchPlatform();
        Console.WriteLine = [](const std::string&) {};
        Host.ServeEvents = Own.ServeEvents;
        Host.SetPointer = Own.SetPointer;
        Host.ConfigDirectory = Own.ConfigDirectory;
    }
    ~AsInBatch() { Host = std::move(Own); }
    AsInBatch(const AsInBatch&) = delete;
    AsInBatch& operator=(const AsInBatch&) = delete;

private:
    Platform Own;
};

// What belongs to the program and not to the analysis of a job.
void KeepProgramSettings(const Workspace& own) {
    for (const auto member : {&Workspace::PauseBeforeFit, &Workspace::RescueMode, &Workspace::MonitorMode,
                              &Workspace::OverlayPlot, &Workspace::SpreadResiduals,
                              &Workspace::FormScalingPercent, &Workspace::CellType, &Workspace::RangeLogPlot,
                              &Workspace::NameConvention, &Workspace::YieldInterval})
        Work.*member = own.*member;
    for (const auto member :
         {&Workspace::CellPathlength, &Workspace::RotorExpansion, &Workspace::ReportFontSize,
          &Workspace::HighCorrelation, &Workspace::VeryHighCorrelation})
        Work.*member = own.*member;
    Work.ChannelRadii = own.ChannelRadii;
    Work.WorkDirectory = own.WorkDirectory;
    Work.DataDirectory = Work.ScanDirectory[RowNo(1)];
}

// The end of the run, or why there was none.
RunEnd RunQuietly(const std::string& path) {
    const AsInBatch batch;
    return RunJob(ParseJob(Host.ReadFile(path), path));
}

} // namespace

bool OpenJobFile(const std::string& path) {
    const Workspace own = Work;
    Host.SetPointer(Pointer::Hourglass);
    try {
        const RunEnd end = RunQuietly(path);
        KeepProgramSettings(own);
        if (!end.Complete && !end.Message.empty()) Tell(end.Message, Work.ProgramName, BoxIcon::Warning);
        return end.HasFit;
    } catch (const RuntimeError& error) {
        Work = own;
        Tell(error.Text, Work.ProgramName, BoxIcon::Warning);
        return false;
    }
}

} // namespace Quillon
