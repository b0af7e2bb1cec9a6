#include "commands/StartUp.h"

#include "chart/files/GraphFile.h"
#include "commands/Analmenu.h"
#include "commands/Commands.h"
#include "models/SEDEQ3.h"
#include "persistence/Filelist.h"
#include "platform/Platform.h"
#include "scandata/FileForm.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

bool IsNamedLikeAFit(const std::string& argument) {
    return argument.ends_with(".quil") || argument.ends_with(".fit");
}

// The one argument: a folder of scans, or a saved fit, which is opened once everything stands. A fit that is
// not there is told then, and is no folder.
bool IsSavedFit(const std::string& argument) {
    return Host.FileExists(argument) || (IsNamedLikeAFit(argument) && !Host.DirectoryExists(argument));
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

} // namespace

void StartQuillon(const std::string& argument) {
    Work = FreshWorkspace();
    Work.WorkDirectory = Host.WorkingDirectory();
    const bool fit = IsSavedFit(argument) && !NamesGraphFile(argument); // a graph waits for its window
    if (!argument.empty() && !fit && !NamesGraphFile(argument)) Work.DataDirectory = argument;
    ReadFitDefaults();
    ReadProgramDefaults();
    SizeWorkspace();
    LoadRecentFiles();
    StartFileForm();
    LoadAnalmenu();
    if (fit) RunCommand([&] { Analmenu.Ended = ReadFitFile(argument, true).EndProgram; });
}

void RunRecentFile(long item) {
    RunCommand([item] { ChooseRecentFile(item); });
}

} // namespace Quillon
