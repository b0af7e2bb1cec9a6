#include "persistence/FitFile.h"

#include "fit/Confidence.h"
#include "input/NUMINPUT.h"
#include "models/function/FitFunction.h"
#include "persistence/Filelist.h"
#include "persistence/settings/SisterProgram.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "scandata/table/FitData.h"
#include "workspace/records/Cancel.h"

#include <utility>

namespace Quillon {

namespace {

constexpr const char* FitFilter = "fit save files (*.quil,*.fit)|*.quil;*.fit|all files (*.*)|*.*";
constexpr const char* FitExtension = "quil";
constexpr const char* OwnEnding = ".quil";

// The hourglass for as long as a command works.
struct BusyPointer {
    BusyPointer() { Host.SetPointer(Pointer::Hourglass); }
    ~BusyPointer() { Host.SetPointer(Pointer::Standard); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

FileRequest FitRequest(const std::string& title, const std::string& name, bool save) {
    FileRequest request;
    request.Title = Work.ProgramName + title;
    request.Filter = FitFilter;
    request.Directory = Work.DataDirectory;
    request.Name = name;
    request.DefaultType = FitExtension;
    request.Save = save;
    return request;
}

// "" when the dialog was cancelled.
std::string AskFitFile(const FileRequest& request) {
    const FileAnswer answer = Host.AskFile(request);
    return answer.Cancelled ? "" : answer.Path;
}

// The path below another root: without its drive or leading separators, in this platform's separators.
std::string BelowRoot(const std::string& root, std::string path) {
    if (path.size() >= 2 && path[1] == ':') path.erase(0, 2);
    while (!path.empty() && IsSeparator(path.front()))
        path.erase(0, 1);
    for (char& c : path)
        if (IsSeparator(c)) c = PathSeparator;
    return JoinPath(root, path);
}

// A directory that the file dialogs can start in: the stored one, the same one on another drive, or at last
// the one that the program works in. A fit that never had one keeps none.
std::string ReachableDirectory(const std::string& stored) {
    if (stored.empty() || Host.DirectoryExists(stored)) return stored;
    for (const std::string& root : Host.FileRoots()) {
        const std::string there = BelowRoot(root, stored);
        if (Host.DirectoryExists(there)) return there;
    }
    return Host.WorkingDirectory();
}

// The ratio is not in the file. It exists for a fit with degrees of freedom and a level between 0 and 1.
void DeriveConfidenceRatio() {
    const bool defined = Work.LimitsDone != 0 && Work.NumFree >= 1 && Work.NumPts > Work.NumFree &&
                         Work.LimitsLevel > 0.0F && Work.LimitsLevel < 1.0F;
    if (defined) ComputeConfidenceRatio(Work.LimitsLevel);
}

// A fit that came to its end was the last one, as if it had been fitted just now: what the session had fitted
// before is no longer what the next fit starts from.
void RememberAsLastFit() {
    if (Work.FitDone == 0) return;
    Work.LastModel = Work.Model;
    Work.LastNonIdeal = Work.NonIdeal;
    Work.LastSeparateK = Work.SeparateK;
}

// Settles whether a file of this program's own can be read, by its version; asks where it is newer.
bool VersionAccepted(const FitFileHeader& header) {
    const double version = NumericPrefix(header.Version);
    if (version < static_cast<double>(Work.FileFormatVersion)) {
        Tell("This file is a fit from version " + header.Version +
                 " of this program, which cannot be used with the present version (" + Work.ProgramVersion +
                 ").  Aborting...",
             Work.ProgramName, BoxIcon::Warning);
        return false;
    }
    return version <= NumericPrefix(Work.ProgramVersion) ||
           AskYesNo(
               "This file is a fit from a newer version of this program than the version you are running. "
               "It may not restore correctly, and attempting to read it could cause a crash. Do you want "
               "to proceed anyway?",
               Work.ProgramName, BoxAnswer::No);
}

RestoreOutcome GiveUp() {
    AskToStop();
    return {};
}

std::string ReadBusy(const std::string& path) {
    const BusyPointer busy;
    return Host.ReadFile(path);
}

AdoptedFit AdoptBusy(const std::string& bytes, const std::string& path) {
    const BusyPointer busy;
    Host.ServeEvents(); // the window repaints where the file dialog stood
    const AdoptedFit fit = AdoptFit(bytes, path);
    Host.ServeEvents();
    return fit;
}

RestoreOutcome TryReadFitFile(const std::string& path, bool fromCommandLine) {
    const std::string bytes = ReadBusy(path);
    const FitFileHeader header = ReadFitHeader(bytes);
    if (!SameProgram(header.Program, Work.ProgramNameUpper)) {
        if (!OpenInSisterProgram(header.Program, path, fromCommandLine)) return GiveUp();
        return {RestoreEnd::HandedOver, "", fromCommandLine};
    }
    if (!VersionAccepted(header)) return GiveUp();
    if (AdoptBusy(bytes, path).ModelGone)
        Tell("Sorry, this fit is for a model that no longer exists.  It cannot be restored properly.  I will "
             "reset to the single species model.",
             Work.ProgramName, BoxIcon::Warning);
    AddRecentFile(path);
    return {RestoreEnd::Restored, "", false};
}

void WriteBusy(const std::string& path) {
    const BusyPointer busy;
    Host.ServeEvents(); // the window repaints where the file dialog stood
    WriteFitFile(path);
    Host.ServeEvents();
}

// True when the analysis stands in the file; a failure is told.
bool SaveTo(const std::string& path) {
    try {
        WriteBusy(path);
        AddRecentFile(path);
        return true;
    } catch (const RuntimeError& error) {
        Tell("Error '" + error.Text + " 'occurred while saving fit data and parameters --- terminating\n\n" +
                 path,
             Work.ProgramName, BoxIcon::Warning);
        return false;
    }
}

// The file that the analysis came from, or the first of "fit1.quil", "fit2.quil" that the folder does not
// have.
std::string ProposedName() {
    if (!Work.FitFile.empty() && Host.DirectoryExists(DirectoryOf(Work.FitFile))) return Work.FitFile;
    constexpr int most = 999;
    int n = 1;
    const auto name = [&n] { return "fit" + std::to_string(n) + OwnEnding; };
    while (n < most && Host.FileExists(JoinPath(Work.DataDirectory, name())))
        ++n;
    return name();
}

} // namespace

std::string FitFileBytes() {
    std::string bytes = EncodeFit(Work);
    // A file that could not be restored must not take the place of one that can.
    DecodeFit(bytes, Work);
    return bytes;
}

void WriteFitFile(const std::string& path) {
    Host.WriteFile(path, FitFileBytes());
    Work.FitFile = path;
}

AdoptedFit AdoptFit(const std::string& bytes, const std::string& path) {
    DecodedFit fit = DecodeFit(bytes, Work);
    std::swap(Work, fit.Analysis);
    try {
        BuildSetOfRow();
        DeriveConfidenceRatio();
        Work.DataDirectory = ReachableDirectory(Work.DataDirectory);
    } catch (const RuntimeError&) {
        std::swap(Work, fit.Analysis);
        throw;
    }
    RememberAsLastFit();
    ResetFitFunction();
    Work.FitFile = path;
    return {fit.ModelGone};
}

bool SaveFit() {
    const std::string path = AskFitFile(FitRequest(" - Save Fit Data & Parameters", ProposedName(), true));
    return !path.empty() && SaveTo(path);
}

bool SaveFitToItsFile() {
    const bool ours = Work.FitFile.ends_with(OwnEnding) && Host.FileExists(Work.FitFile);
    return ours ? SaveTo(Work.FitFile) : SaveFit();
}

RestoreOutcome RestoreFit() {
    const std::string path =
        AskFitFile(FitRequest(" - Restore Fit Data & Parameters", "*.quil;*.fit", false));
    if (path.empty()) return {};
    const RestoreOutcome outcome = ReadFitFile(path, false);
    ClearCancel();
    return outcome;
}

RestoreOutcome ReadFitFile(const std::string& path, bool fromCommandLine) {
    try {
        return TryReadFitFile(path, fromCommandLine);
    } catch (const RuntimeError& error) {
        Tell(
            "Error '" + error.Text +
                "' occurred while restoring fit data and parameters --- terminating. You may have to restart "
                "the program.\n\n" +
                path,
            Work.ProgramName, BoxIcon::Warning);
        return {RestoreEnd::Failed, error.Text, false};
    }
}

} // namespace Quillon
