#include "commands/history/SavedState.h"

#include "commands/history/History.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <map>

namespace Quillon {

namespace {

std::map<std::string, std::string> InFiles; // path to the bytes of the analysis that stands there

bool HoldsWork(const Workspace& analysis) {
    return analysis.DataChosen != 0 || analysis.FitDone != 0 ||
           std::any_of(analysis.ScanFile.begin(), analysis.ScanFile.end(),
                       [](const std::string& file) { return !file.empty(); });
}

bool StandsInItsFile(const Workspace& analysis, const std::string& bytes) {
    const auto file = InFiles.find(analysis.FitFile);
    return !analysis.FitFile.empty() && file != InFiles.end() && file->second == bytes;
}

} // namespace

void NoteSaved() {
    InFiles[Work.FitFile] = BytesToCompare();
}

RestoreOutcome NoteRestored(RestoreOutcome outcome) {
    if (outcome.End == RestoreEnd::Restored) NoteSaved();
    return outcome;
}

void ForgetSaved() {
    InFiles.clear();
}

bool IsUnsaved() {
    try {
        return HoldsWork(Work) && !StandsInItsFile(Work, BytesToCompare());
    } catch (const RuntimeError&) { // what no file takes stands in none
        return true;
    }
}

bool StepIsUnsaved() {
    const Workspace& step = History.Steps.at(History.Place).Analysis.Small;
    return HoldsWork(step) && !StandsInItsFile(step, History.Bytes);
}

std::string MainCaption() {
    const bool unsaved = IsUnsaved();
    if (Work.FitFile.empty() && !unsaved) return Work.ProgramName + " " + Work.ProgramVersion;
    const std::string name = Work.FitFile.empty() ? "untitled" : FileTitle(Work.FitFile);
    return name + (unsaved ? "*" : "") + " - " + Work.ProgramName;
}

bool SaveFitAs() {
    const bool saved = SaveFit();
    if (saved) NoteSaved();
    return saved;
}

bool SaveFitAgain() {
    const bool saved = SaveFitToItsFile();
    if (saved) NoteSaved();
    return saved;
}

void RestoreFitCommand() {
    NoteRestored(RestoreFit());
}

} // namespace Quillon
