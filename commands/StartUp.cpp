#include "commands/StartUp.h"

#include "chart/Charts.h"
#include "chart/files/GraphFile.h"
#include "commands/Analmenu.h"
#include "commands/Commands.h"
#include "commands/ReadRun.h"
#include "commands/Workbench.h"
#include "commands/history/History.h"
#include "commands/history/SavedState.h"
#include "models/SEDEQ3.h"
#include "persistence/Filelist.h"
#include "persistence/FitFile.h"
#include "platform/Letters.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "scandata/forms/DataDirectory.h"
#include "scandata/forms/FileForm.h"
#include "studies/methods/StudyResults.h"
#include "workspace/records/Workspace.h"

#include <string_view>

namespace Quillon {

std::function<bool(const std::string& path)> ReadJob;

namespace {

bool BeginsAsAFit(const std::string& path) {
    try {
        ReadFitHeader(Host.ReadFile(path));
        return true;
    } catch (const RuntimeError&) { // a question: whoever opens the file is told what it lacks
        return false;
    }
}

// Coefficients of 0, say, that a mistyped setting became: no scale can be built with them.
void ScaleOrStandard() {
    try {
        BuildParmScale();
    } catch (const RuntimeError& error) {
        TellReadFailure("the coefficients make no scale: " + error.Text);
        const Workspace standard;
        for (const auto coefficient :
             {&Workspace::AbsorpA, &Workspace::AbsorpB, &Workspace::ExtA, &Workspace::ExtB,
              &Workspace::FringeMassA, &Workspace::FringeMassB, &Workspace::RefrA, &Workspace::RefrB,
              &Workspace::VbarA, &Workspace::VbarB, &Workspace::SolventDensity})
            Work.*coefficient = standard.*coefficient;
        BuildParmScale();
    }
}

void SizeWorkspace() {
    for (auto& type : Work.CenterpieceType)
        type = Work.CellType;
    for (auto& path : Work.CellPath)
        path = Work.CellPathlength;
    FillModelNames();
    Work.FitTitle = ModelFitTitle();
    BuildParmNames();
    BuildParmFormats();
    ScaleOrStandard();
    SetDefaultBounds();
}

void OpenGraph(const std::string& path) {
    RunCommand(
        [&] {
            if (RestoreGraphFile(path)) Host.ShowForm(ChartsName);
        },
        "Show Saved Graph");
}

// A report or a saved fit that names "00012.RA1" alone tells nobody which of all of them it was.
std::string WholePath(const std::string& path) {
    return IsAbsolutePath(path) ? path : JoinPath(Work.WorkDirectory, path);
}

// A name that leads nowhere is no place where the file dialogs can start.
void TellMissing(const std::string& path) {
    Tell("There is no file or folder " + path, Work.ProgramName, BoxIcon::Warning);
    if (Work.DataDirectory == path) FindDataDirectory();
}

void TellJob(const std::string& path) {
    Tell(path + " is a job, which quillon-fit runs:\n\nquillon-fit \"" + path +
             "\" --save \"fit.quil\"\n\nThe fit that is saved there opens here.",
         Work.ProgramName, BoxIcon::Information);
}

void OpenJob(const std::string& path) {
    if (!ReadJob) return TellJob(path);
    RunCommand([&] { ReadJob(WholePath(path)); }, "Open job");
}

void OpenRun(const std::string& path) {
    RunCommand([&] { ReadRunAt(WholePath(path)); }, "Read a run");
}

void TellNotOpened(const std::string& path) {
    Tell(path + " is not opened: several scans can be opened at once, of everything else the first alone.",
         Work.ProgramName, BoxIcon::Warning);
}

void OpenFit(const std::string& path) {
    RunCommand([&] { NoteRestored(ReadFitFile(path, false)); }, "Open fit");
}

// Whether the start of the program has opened fits and folders itself.
enum class Opened { AtStart, Now };

void OpenFirst(const std::string& path, ArgumentKind kind, Opened when) {
    if (when == Opened::Now && kind == ArgumentKind::Fit) return OpenFit(path);
    if (when == Opened::Now && kind == ArgumentKind::Folder) return OpenRun(path);
    switch (kind) {
    case ArgumentKind::Run:
        return OpenRun(path);
    case ArgumentKind::Graph:
        return OpenGraph(path);
    case ArgumentKind::Job:
        return OpenJob(path);
    case ArgumentKind::Missing:
        return TellMissing(path);
    default:
        return;
    }
}

// Scans all together, whatever stands between them; of the rest the first alone.
void OpenAll(const std::vector<std::string>& paths, Opened when) {
    std::vector<std::string> scans;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const ArgumentKind kind = KindOfArgument(paths[i]);
        if (kind == ArgumentKind::Scan)
            scans.push_back(WholePath(paths[i]));
        else if (i == 0 || kind == ArgumentKind::Missing)
            OpenFirst(paths[i], kind, when);
        else
            TellNotOpened(paths[i]);
    }
    if (!scans.empty()) RunCommand([&] { ReadScans(scans); }, "Read scans");
}

} // namespace

ArgumentKind KindOfArgument(const std::string& argument) {
    if (argument.empty()) return ArgumentKind::Nothing;
    if (NamesGraphFile(argument)) return ArgumentKind::Graph;
    if (Host.DirectoryExists(argument)) return ArgumentKind::Folder;
    if (EndsWithLetters(argument, ".quil") || EndsWithLetters(argument, ".fit")) return ArgumentKind::Fit;
    if (!Host.FileExists(argument)) return ArgumentKind::Missing;
    if (EndsWithLetters(argument, ".job")) return ArgumentKind::Job;
    if (NamesArchive(argument)) return ArgumentKind::Run;
    return BeginsAsAFit(argument) ? ArgumentKind::Fit : ArgumentKind::Scan;
}

void StartQuillon(const std::string& argument) {
    Work = FreshWorkspace();
    ForgetSaved();
    Work.WorkDirectory = Host.WorkingDirectory();
    const ArgumentKind kind = KindOfArgument(argument);
    if (kind == ArgumentKind::Folder || kind == ArgumentKind::Missing) Work.DataDirectory = argument;
    if (kind == ArgumentKind::Scan || kind == ArgumentKind::Run)
        Work.DataDirectory = DirectoryOf(WholePath(argument));
    ReadFitDefaults();
    ReadProgramDefaults();
    SizeWorkspace();
    LoadRecentFiles();
    StartFileForm();
    LoadAnalmenu();
    if (kind == ArgumentKind::Fit)
        RunCommand([&] { Analmenu.Ended = NoteRestored(ReadFitFile(argument, true)).EndProgram; });
    StartHistory();
    ForgetStudies();
    SetMenuStatus();
}

void OpenArguments(const std::vector<std::string>& arguments) {
    OpenAll(arguments, Opened::AtStart);
}

void OpenDropped(const std::vector<std::string>& paths) {
    OpenAll(paths, Opened::Now);
}

void OpenAnything() {
    FileRequest request;
    request.Title = Work.ProgramName + " - Open";
    request.Filter =
        "all files (*.*)|*.*|saved fits (*.quil,*.fit)|*.quil;*.fit|scans (*.R*,*.IP*)|*.R*;*.IP*|"
        "graphs (*.grf)|*.grf";
    request.Directory = Work.DataDirectory;
    request.Several = true;
    const FileAnswer answer = Host.AskFile(request);
    if (!answer.Cancelled) OpenDropped(answer.Paths);
}

std::string DesktopHelp() {
    return "usage: quillon [FOLDER | FIT | JOB.job | GRAPH.grf | RUN.tar.gz | SCAN...]\n"
           "\n"
           "Global analysis of sedimentation equilibrium experiments.\n"
           "\n"
           "  FOLDER      where the file dialogs look for scans\n"
           "  FIT         a saved fit (.quil, .fit) is restored\n"
           "  JOB.job     the analysis of a job, fitted\n"
           "  GRAPH.grf   a graph file is opened in the graph window\n"
           "  RUN.tar.gz  the archive of a run (.zip too) is sorted, to choose from\n"
           "  SCAN...     scans go into the table of data sets\n"
           "  --help      this text\n"
           "  --version   the program's version\n"
           "\n"
           "quillon-fit runs fits without a display.\n";
}

std::string DesktopVersion() {
    const Workspace fresh;
    return fresh.ProgramName + " " + fresh.ProgramVersion + "\n";
}

void RunRecentFile(long item) {
    RunCommand([item] { NoteRestored(ChooseRecentFile(item)); }, "Restore recent fit");
}

} // namespace Quillon
