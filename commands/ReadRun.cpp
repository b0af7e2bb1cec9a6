#include "commands/ReadRun.h"

#include "commands/Commands.h"
#include "input/NUMINPUT.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "runs/Approach.h"
#include "runs/RunJob.h"
#include "workspace/records/Workspace.h"

#include <numeric>

namespace Quillon {

namespace {

constexpr std::size_t MostLines = 24; // of a message that a screen still holds

std::string SmallLetters(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

std::string GroupLine(const SortedRun& run, const RunGroup& group) {
    const RunScan& last = LastOf(run, group);
    const std::size_t scans = group.Scans.size();
    return "Cell " + std::to_string(group.Cell) + ", " + SingleText(last.Head.Rpm) + " rpm, " +
           SingleText(last.Head.Wavelength) + " nm: " + std::to_string(scans) +
           (scans == 1 ? " scan, " : " scans, ") + ApproachText(run, group);
}

// What lies in the run, and what was left alone, as far as a message has room.
std::string Summary(const SortedRun& run) {
    std::vector<std::string> lines;
    for (const RunGroup& group : run.Groups)
        lines.push_back(GroupLine(run, group));
    lines.insert(lines.end(), run.Remarks.begin(), run.Remarks.end());
    std::string text = FileTitle(run.Place) + ": " + std::to_string(run.Scans.size()) + " scans\n";
    for (std::size_t i = 0; i < lines.size() && i < MostLines; ++i)
        text += "\n" + lines[i];
    return lines.size() > MostLines ? text + "\nand " + std::to_string(lines.size() - MostLines) + " more"
                                    : text;
}

// Where the scans of a place can be read one by one: as they are, or out of the archive.
std::vector<std::string> PathsOf(const SortedRun& run, const std::vector<std::size_t>& scans, bool packed) {
    std::vector<std::string> names;
    std::string folder = run.Place;
    if (packed) {
        const std::string title = FileTitle(run.Place);
        folder = JoinPath(DirectoryOf(run.Place), title.substr(0, title.find('.')) + "-scans");
        names = NamesForFolder(run, scans);
        LayScans(run, scans, names, folder);
    } else {
        for (const std::size_t scan : scans)
            names.push_back(run.Scans[scan].File);
    }
    for (std::string& name : names)
        name = JoinPath(folder, name);
    return names;
}

} // namespace

bool NamesArchive(const std::string& path) {
    const std::string name = SmallLetters(FileTitle(path));
    return name.ends_with(".tar") || name.ends_with(".tar.gz") || name.ends_with(".tgz") ||
           name.ends_with(".zip");
}

void ReadRunAt(const std::string& place) {
    const bool packed = !Host.DirectoryExists(place);
    Host.SetPointer(Pointer::Hourglass);
    SortedRun run;
    try {
        run = SortRun(place, {}, packed);
    } catch (const RuntimeError&) {
        Host.SetPointer(Pointer::Standard);
        throw;
    }
    Host.SetPointer(Pointer::Standard);
    std::vector<std::size_t> groups(run.Groups.size());
    std::iota(groups.begin(), groups.end(), std::size_t{0});
    const std::vector<RunSet> sets = PlanSets(run, groups, {});
    if (const std::string why = WhyNoAnalysis(run, sets); !why.empty())
        return Tell(Summary(run) + "\n\n" + why + ".", Work.ProgramName, BoxIcon::Information);
    if (!AskYesNo(Summary(run) + "\n\nRead the last scan of each into the table of data sets?",
                  Work.ProgramName))
        return;
    ReadScans(PathsOf(run, ScansOf(run, sets), packed));
}

void ReadRunCommand() {
    FileRequest request;
    request.Title = Work.ProgramName + " - Read a Run";
    request.Filter =
        "archives of runs, scans of a folder|*.tar.gz;*.tgz;*.zip;*.tar;*.R*;*.IP*|all files (*.*)|*.*";
    request.Directory = Work.DataDirectory;
    const FileAnswer answer = Host.AskFile(request);
    if (answer.Cancelled || answer.Path.empty()) return;
    ReadRunAt(NamesArchive(answer.Path) ? answer.Path : DirectoryOf(answer.Path));
}

} // namespace Quillon
