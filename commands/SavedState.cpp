#include "commands/SavedState.h"

#include "commands/Analmenu.h"
#include "commands/History.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "scandata/table/TableRows.h"
#include "workspace/records/Workspace.h"

#include <map>

namespace Quillon {

namespace {

std::map<std::string, std::string> InFiles; // path to the bytes of the analysis that stands there

bool HoldsWork() {
    return Work.DataChosen != 0 || Work.FitDone != 0 || MainItem("DoFitSave").Enabled || !TableIsEmpty();
}

bool StandsInItsFile() {
    const auto file = InFiles.find(Work.FitFile);
    return !Work.FitFile.empty() && file != InFiles.end() && file->second == BytesToCompare();
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
        return HoldsWork() && !StandsInItsFile();
    } catch (const RuntimeError&) { // what no file takes stands in none
        return true;
    }
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
