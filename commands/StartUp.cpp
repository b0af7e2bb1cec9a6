#include "commands/StartUp.h"

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
    } catch (const RuntimeError&) {
        TellReadFailure();
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
    if (!argument.empty() && !IsSavedFit(argument)) Work.DataDirectory = argument;
    ReadFitDefaults();
    ReadProgramDefaults();
    SizeWorkspace();
    LoadRecentFiles();
    StartFileForm();
    LoadAnalmenu();
    if (IsSavedFit(argument)) RunCommand([&] { Analmenu.Ended = ReadFitFile(argument, true).EndProgram; });
}

void RunRecentFile(long item) {
    RunCommand([item] { ChooseRecentFile(item); });
}

} // namespace Quillon
