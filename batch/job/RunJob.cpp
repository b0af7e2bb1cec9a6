#include "batch/job/RunJob.h"

#include "batch/console/BatchPlatform.h"
#include "batch/console/ConsoleText.h"
#include "batch/job/JobData.h"
#include "batch/job/JobParameters.h"
#include "batch/job/Restarts.h"
#include "commands/fitting/FitCommand.h"
#include "fit/Misfit.h"
#include "fit/equations/FreeMap.h"
#include "fit/equations/NoiseWeights.h"
#include "fit/forms/GetGuess.h"
#include "fit/forms/GuessesDialog.h"
#include "fit/forms/HoldForm.h"
#include "fit/forms/WaitForm.h"
#include "input/NUMINPUT.h"
#include "models/ModelChoice.h"
#include "models/forms/ConcForm.h"
#include "models/table/DefaultBounds.h"
#include "platform/Platform.h"
#include "scandata/table/FitData.h"
#include "scandata/table/OpticsUnits.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <optional>
#include <utility>

namespace Quillon {

namespace {

void TakeSettings(const Job& job) {
    for (const JobSetting& setting : job.Settings)
        Work.*setting.Member = setting.Value;
    if (job.MaxIterations) Work.MaxIterations = *job.MaxIterations;
    if (job.MaxPtsPerSet) Work.MaxPtsPerSet = *job.MaxPtsPerSet;
    Work.MassUnits = job.MassUnits;
    Work.TemperatureScale = job.TemperatureScale;
    Work.PauseBeforeFit = FlagFalse;
    Work.RescueMode = job.Rescue ? Rescue::Always : Rescue::Never;
}

// The units of concentrations follow the optics, which the scans tell.
void SettleConcUnits(const Job& job) {
    Work.ConcUnits = ToInt16(UnitsOfOptics(static_cast<int>(job.Concentration)));
}

// The model dialog's part: the job has chosen, and its choice has been checked.
void ChooseModel(const Job& job) {
    Console.ShowModal = [&](const std::string&) {
        Work.Model = job.Model;
        Work.NonIdeal = Flag(job.NonIdeal);
        Work.SeparateK = Flag(job.SeparateK);
    };
    SelectModel(true);
    Console.ShowModal = nullptr;
    Work.FitDone = Work.FitValid = 0;
    SetDefaultBounds();
}

void Prepare(const Job& job) {
    try {
        BuildFitData();
        ChooseModel(job);
    } catch (const RuntimeError& error) {
        FailJob(job, "fit", "", "the data and constants make no fit: " + error.Text);
    }
    WarnOfConstraintCoefficients();
}

// On the console, or by the monitor.
void RunFitTold() {
    const FitProgress progress = BatchProgress();
    FitDataCommand(Console.Monitored ? nullptr : &progress);
}

// Runs the fit command with the job in place of the guesses dialog. An error of the job that shows there is
// carried across the command, which must not see it.
void RunFitCommand(const Job& job, const std::vector<ListedParm>& listed) {
    std::optional<RuntimeError> jobError;
    Console.NewGuesses = job.Guesses;
    Console.ShowModal = [&](const std::string& form) {
        if (form == HoldFormName) WriteConsole(ConsoleText(HoldForm.Note.Text));
        if (form != GetGuessName) return;
        try {
            TakeListedParms(job, listed);
        } catch (const RuntimeError& error) {
            jobError = error;
            GetGuess.Answer = DialogAnswer::Cancel;
        }
    };
    RunFitTold();
    Console.ShowModal = nullptr;
    if (jobError) throw *jobError;
}

// With the noise that the first fit shows, once more from where that has ended.
void WeighByFit() {
    Work.SetNoise = NoisesOfFit();
    if (!SetsHaveNoise()) return WriteConsole("noise = from-fit: the fit leaves no residuals to weigh by");
    for (const SetNo set : EachSet())
        WriteConsole("set " + std::to_string(set.Number) + " has a noise of " +
                     SingleText(Work.SetNoise[RowOf(set)]));
    FitAgain();
}

// A failure has been told by then, a cancel has not.
std::string LimitsMessage() {
    return Interrupted() || Console.LastTold.empty() ? "The search for confidence limits was cancelled"
                                                     : "The search for confidence limits failed";
}

void SearchLimits(RunEnd& end) {
    int told = -1;
    Console.LastTold.clear();
    SearchLimitsAndTell([&](double fraction) {
        Host.ServeEvents(); // passes over few points never do
        const int percent = static_cast<int>(fraction * 100.0);
        if (percent == told) return;
        told = percent;
        WriteProgress("confidence limits " + FormatNumber(fraction, "#0%"));
    });
    end.Complete = Work.LimitsDone != 0;
    if (end.Complete) return;
    end.Message = LimitsMessage();
    WriteFailure(end.Message);
}

// A remark, and no failure: what is systematic in real scans stays so with the right model.
void TellMisfit() {
    if (const std::string misfit = MisfitText(); !misfit.empty()) WriteConsole(ConsoleText(misfit));
}

void LeaveIncomplete(RunEnd& end, const char* message) {
    end.Complete = false;
    if (end.Message.empty()) end.Message = message;
}

} // namespace

void FitAgain() {
    Console.ShowModal = [](const std::string& form) {
        if (form == HoldFormName) WriteConsole(ConsoleText(HoldForm.Note.Text));
        if (form == GetGuessName) TakeFitChoices(FitChoices());
    };
    RunFitTold();
    Console.ShowModal = nullptr;
}

RunEnd EndOfFit() {
    RunEnd end;
    end.HasFit = Work.FitDone != 0;
    end.Converged = end.Complete = Work.Outcome.End == FitEnd::Converged;
    if (end.Converged) {
        TellMisfit();
        return end;
    }
    const bool told = Work.Outcome.End != FitEnd::Cancelled && !Console.LastTold.empty();
    end.Message = told ? Console.LastTold : Work.Outcome.Sentence;
    WriteEnd(end.Message, told);
    return end;
}

RunEnd EndOfRestarts(const RestartChoice& choice) {
    const PerSlot<float> start = Work.StartParms;
    std::optional<MinimaMet> starts = RunRestarts(choice);
    RunEnd end = EndOfFit();
    end.Start = start;
    end.Restarts = choice;
    end.Starts = std::move(starts);
    if (end.Starts && !end.Starts->Complete) LeaveIncomplete(end, RestartsCancelledText);
    ClearCancel();
    return end;
}

void PrepareJob(const Job& job) {
    Work = FreshWorkspace();
    TakeSettings(job);
    ReadJobData(job);
    SettleConcUnits(job);
    Prepare(job);
}

RunEnd RunJob(const Job& job) {
    PrepareJob(job);
    const std::vector<ListedParm> listed = FindListedParms(job);
    CheckAnythingIsFitted(job, listed);
    TakeListedConstants(job, listed);
    RunFitCommand(job, listed);
    if (job.NoiseFromFit && Work.FitDone && !Interrupted()) WeighByFit();
    RunEnd end = EndOfRestarts(job.Restarts);
    for (const JobSet& set : job.Sets)
        end.Files[set.Number] = {set.File, ScanNamesOf(job, set)};
    if (end.Complete && job.ConfidenceLimits) SearchLimits(end);
    return end;
}

} // namespace Quillon
