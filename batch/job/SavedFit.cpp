#include "batch/job/SavedFit.h"

#include "batch/console/BatchPlatform.h"
#include "batch/console/OneLine.h"
#include "input/NUMINPUT.h"
#include "persistence/FitFile.h"
#include "platform/Letters.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Workspace.h"

#include <algorithm>

namespace Quillon {

namespace {

[[noreturn]] void FailFit(const std::string& path, const std::string& reason) {
    RaiseError(OneLine(path + ": " + reason));
}

// The refusals that the program tells in boxes.
void CheckHeader(const FitFileHeader& header, const std::string& path) {
    if (!SameProgram(header.Program, Work.ProgramNameUpper))
        FailFit(path, "this file is a fit from " + header.Program + " not " + Work.ProgramNameUpper);
    if (NumericPrefix(header.Version) < static_cast<double>(Work.FileFormatVersion))
        FailFit(path, "this file is a fit from version " + header.Version +
                          ", which cannot be used with version " + Work.ProgramVersion);
    // The desktop asks whether to try it all the same; nobody is here to say so.
    if (NumericPrefix(header.Version) > NumericPrefix(Work.ProgramVersion))
        FailFit(path, "this file is a fit from version " + header.Version + ", which is newer than version " +
                          Work.ProgramVersion + " that is running");
}

} // namespace

bool NamesSavedFit(const std::string& path) {
    return EndsWithLetters(path, ".quil") || EndsWithLetters(path, ".fit");
}

void RestoreSavedFit(const std::string& bytes, const std::string& path) {
    Work = FreshWorkspace();
    try {
        CheckHeader(ReadFitHeader(bytes), path);
        if (AdoptFit(bytes, path).ModelGone) FailFit(path, "this fit is for a model that no longer exists");
    } catch (const RuntimeError& error) {
        if (error.Text.starts_with(path)) throw;
        FailFit(path, error.Text);
    }
}

RunEnd RunSavedFit(const std::string& path, bool refit, long restarts) {
    if (refit) {
        Work.RescueMode = Rescue::Always;
        Work.LastModel = Work.Model;
        Work.LastNonIdeal = Work.NonIdeal;
        Work.LastSeparateK = Work.SeparateK;
        FitAgain();
        return EndOfRestarts({restarts, 1});
    }
    RunEnd end;
    end.HasFit = Work.FitDone != 0;
    end.Converged = end.Complete = end.HasFit && Work.Outcome.End != FitEnd::StoppedShort;
    if (end.Converged) return end;
    end.Message =
        end.HasFit ? Work.Outcome.Sentence : "no finished fit stands in " + path + ", --refit runs it";
    WriteFailure(end.Message);
    return end;
}

} // namespace Quillon
