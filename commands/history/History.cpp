#include "commands/history/History.h"

#include "models/function/FitFunction.h"
#include "persistence/codec/FitCodec.h"

#include <new>
#include <utility>

namespace Quillon {

AnalysisHistory History;

namespace {

constexpr const char* Outside = "Other changes";

// The analysis without the folders in which file dialogs start, for as long as this stands.
struct WithoutFolders {
    std::string Data = std::exchange(Work.DataDirectory, "");
    std::string Baselines = std::exchange(Work.BaselineDirectoryLast, "");
    WithoutFolders() = default;
    ~WithoutFolders() {
        Work.DataDirectory = std::move(Data);
        Work.BaselineDirectoryLast = std::move(Baselines);
    }
    WithoutFolders(const WithoutFolders&) = delete;
    WithoutFolders& operator=(const WithoutFolders&) = delete;
};

// "&Fit Data..." as a line of a table has it.
std::string PlainCaption(std::string caption) {
    std::erase(caption, '&');
    if (caption.ends_with("...")) caption.erase(caption.size() - 3);
    return caption;
}

// What a user sets for the program and not for the analysis.
void KeepProgramsOwn(Workspace& analysis) {
    for (const auto number : {&Workspace::YieldInterval, &Workspace::PauseBeforeFit, &Workspace::RescueMode,
                              &Workspace::FormScalingPercent, &Workspace::CellType, &Workspace::RangeLogPlot})
        analysis.*number = Work.*number;
    for (const auto text : {&Workspace::WorkDirectory, &Workspace::ChosenPath, &Workspace::ChosenName})
        analysis.*text = Work.*text;
    analysis.EditBackColor = Work.EditBackColor;
    analysis.ChannelRadii = Work.ChannelRadii;
    analysis.RotorExpansion = Work.RotorExpansion;
    analysis.ReportFontSize = Work.ReportFontSize;
}

// What no file holds may have changed since the step was noted; the bytes are the same.
void RefreshStep(HistoryStep& step) {
    KeptAnalysis fresh = KeepAnalysis(Work, &step.Analysis);
    fresh.Small.DataDirectory = step.Analysis.Small.DataDirectory;
    fresh.Small.BaselineDirectoryLast = step.Analysis.Small.BaselineDirectoryLast;
    step.Analysis = std::move(fresh);
}

void TakeStep(const std::string& command, std::string bytes) {
    const HistoryStep& at = History.Steps[History.Place];
    HistoryStep next{Host.Clock(), PlainCaption(command), KeepAnalysis(Work, &at.Analysis)};
    History.Steps.resize(History.Place + 1); // what had been taken back
    History.Steps.push_back(std::move(next));
    if (History.Steps.size() > HistoryLength + 1) History.Steps.erase(History.Steps.begin() + 1);
    History.Place = History.Steps.size() - 1;
    History.Bytes = std::move(bytes);
}

bool NoteStep(const std::string& command) {
    std::string bytes = BytesToCompare();
    if (bytes == History.Bytes) {
        RefreshStep(History.Steps[History.Place]);
        return false;
    }
    TakeStep(command.empty() ? Outside : command, std::move(bytes));
    return true;
}

} // namespace

std::string BytesToCompare() {
    const WithoutFolders without;
    return EncodeFit(Work);
}

void StartHistory() {
    History = AnalysisHistory{};
    History.Steps.push_back({Host.Clock(), "Start", KeepAnalysis(Work)});
    History.Bytes = BytesToCompare();
}

bool NoteHistory(const std::string& command) {
    if (History.Steps.empty()) return false; // the program is about to start
    History.Failure.clear();
    try {
        return NoteStep(command);
    } catch (const RuntimeError& error) {
        History.Failure = error.Text;
    } catch (const std::bad_alloc&) { // the command itself has been done
        History.Failure = ErrorText::OutOfMemory;
    }
    return false;
}

bool CanUndo() {
    return History.Place > 0;
}
bool CanRedo() {
    return History.Place + 1 < History.Steps.size();
}

void GoToStep(std::size_t place) {
    Workspace there = WholeAnalysis(History.Steps.at(place).Analysis);
    KeepProgramsOwn(there);
    Work = std::move(there);
    History.Place = place;
    History.Bytes = BytesToCompare();
    ResetFitFunction(); // what it keeps belongs to other points
}

void UndoCommand() {
    NoteHistory("");
    if (CanUndo()) GoToStep(History.Place - 1);
}
void RedoCommand() {
    if (!NoteHistory("") && CanRedo()) GoToStep(History.Place + 1);
}

} // namespace Quillon
