// The start of the program.
#include "workspace/commands/Analmenu.h"
#include "workspace/commands/Commands.h"

#include "models/SEDEQ3.h"
#include "persistence/Filelist.h"
#include "platform/Platform.h"
#include "scandata/FileForm.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

// The one argument: a folder of scans, or a saved fit, which is opened once everything stands.
bool IsSavedFit(const std::string& argument) {
    return !argument.empty() && Host.FileExists(argument);
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
    BuildParmScale();
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
