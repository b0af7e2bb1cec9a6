#include "forms/OpenJob.h"

#include "batch/console/BatchPlatform.h"
#include "batch/job/RunJob.h"
#include "fit/forms/FitMon.h"
#include "workspace/records/Codes.h"
#include "workspace/records/Workspace.h"

#include <utility>

namespace Quillon {

namespace {

// The searches behind a fit tell their progress by the monitor, too; its Cancel ends them.
void ShowInMonitor(const std::string& line) {
    if (!FitMon.Loaded) {
        LoadFitMon();
        FitMon.FitButton.Visible = FitMon.NextIter.Visible = false;
        Host.ShowForm(FitMonName);
    }
    FitMon.StatusText.Text = line;
    Host.ServeEvents();
}

// While it lives questions are answered as in a run without anybody to ask, and nothing is written on the
// console; windows stay alive, and the monitor shows the fit where the user wants one.
class AsInBatch {
public:
    explicit AsInBatch(bool monitored) : Own(Host) {
        InstallBatchPlatform();
        Console.WriteLine = [](const std::string&) {};
        Console.Monitored = monitored;
        Console.Progress = [monitored](const std::string& line) {
            if (monitored) ShowInMonitor(line);
        };
        Host.ServeEvents = Own.ServeEvents;
        Host.WaitEvent = Own.WaitEvent;
        Host.ShowForm = Own.ShowForm;
        Host.HideForm = Own.HideForm;
        Host.SetPointer = Own.SetPointer;
        Host.ConfigDirectory = Own.ConfigDirectory;
    }
    ~AsInBatch() {
        CloseFitMonitor();
        Host = std::move(Own);
    }
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
RunEnd RunQuietly(const std::string& path, bool monitored) {
    const AsInBatch batch(monitored);
    return RunJob(ParseJob(Host.ReadFile(path), path));
}

} // namespace

bool OpenJobFile(const std::string& path) {
    const Workspace own = Work;
    Host.SetPointer(Pointer::Hourglass);
    try {
        const RunEnd end = RunQuietly(path, own.MonitorMode != Monitor::None);
        if (!end.HasFit && Work.Outcome.End == FitEnd::Cancelled) { // there is nothing of the job to be seen
            Work = own;
            return false;
        }
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
