#include "tests/forms/HostileFiles.h"

#include "chart/files/GraphFile.h"
#include "commands/Analmenu.h"
#include "files/ReadWhole.h"
#include "persistence/codec/FitCodec.h"
#include "tests/forms/Scans.h"
#include "tests/support/ArchiveMaker.h"
#include "tests/support/MadeRun.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <utility>

namespace Quillon {

namespace {

constexpr const char* JobOfTheScans = "[fit]\nmodel = 1\n\n[set 1]\nfile = 00001.RA1\n\n"
                                      "[set 2]\nfile = 00002.RA1\n\n[parameters]\n0 = 20\n";

std::string ArchiveOfARun() {
    RunPlan plan;
    plan.Cells = {1};
    plan.ScansPerStage = 4;
    plan.Points = 40;
    return ArchiveOf(EntriesOf(MakeRun(plan)), "tar.gz");
}

} // namespace

HostileFiles::HostileFiles(std::string folder, NoiseSource& dice) : Folder(std::move(folder)), Dice(dice) {
    Whole = Scans = WriteScans(Folder);
    Add("whole.job", JobOfTheScans);
    Add("run.tar.gz", ArchiveOfARun());
    Add("broken.RA1", "no scan\nat all\n\n");
    Add("empty.RA2", "");
    std::filesystem::create_directories(Folder + "/a folder & more");
    Whole.push_back(Folder + "/a folder & more");
    Whole.push_back(Folder);
}

void HostileFiles::Add(const std::string& name, const std::string& bytes) {
    Whole.push_back(Folder + "/" + name);
    std::ofstream(Whole.back(), std::ios::binary) << bytes;
}

void HostileFiles::AddFit() {
    const Workspace kept = Work;
    UseFinishedFit();
    Add("whole.quil", EncodeFit(Work));
    RunMainCommand("GraphOverlay");
    Add("whole.grf", GraphFileBytes());
    Work = kept;
}

// A copy that ends too early or has bytes of something else in it, under a name with the same ending.
std::string HostileFiles::Damaged(const std::string& path) {
    if (!std::filesystem::is_regular_file(path)) return path;
    std::string bytes = ReadWhole(path);
    if (!bytes.empty() && Chance(40)) bytes.resize(Below(bytes.size()));
    for (std::size_t n = Below(6); n > 0 && !bytes.empty(); --n)
        bytes[Below(bytes.size())] = static_cast<char>(Below(256));
    const std::string name = std::filesystem::path(path).filename().string();
    const std::string copy = Folder + "/damaged" + std::to_string(Below(3)) + name.substr(name.find('.'));
    std::ofstream(copy, std::ios::binary) << bytes;
    return copy;
}

std::string HostileFiles::One() {
    const std::string path = Whole[Below(Whole.size())];
    if (path != Folder && Chance(40)) return Damaged(path);
    return Chance(5) ? path + ".not there" : path;
}

std::vector<std::string> HostileFiles::Some() {
    if (Chance(20)) return Scans;
    std::vector<std::string> paths;
    for (std::size_t n = 1 + Below(3); n > 0; --n)
        paths.push_back(One());
    return paths;
}

// What is written is among what is read later.
std::string HostileFiles::NameToWrite(const FileRequest& request) {
    constexpr std::array types{".RA1", ".quil", ".grf",  ".svg", ".png",
                               ".emf", ".csv",  ".html", ".job", ".txt"};
    std::string type = request.DefaultType;
    if (type.empty() || Chance(30)) type = types[Below(types.size())];
    if (type.front() != '.') type.insert(0, ".");
    const std::string path = Folder + "/written" + std::to_string(Below(3)) + type;
    if (std::ranges::find(Whole, path) == Whole.end()) Whole.push_back(path);
    return path;
}

FileAnswer HostileFiles::Choose(const FileRequest& request) {
    FileAnswer answer;
    if (Chance(25)) return answer;
    if (request.Save)
        answer.Paths = {NameToWrite(request)};
    else if (request.Several && Chance(40))
        answer.Paths = Some();
    else
        answer.Paths = {Chance(60) ? Scans[Below(Scans.size())] : One()};
    answer.Cancelled = false;
    answer.Path = answer.Paths.front();
    answer.Title = std::filesystem::path(answer.Path).filename().string();
    return answer;
}

std::string HostileFiles::Pasted() {
    constexpr std::array<const char*, 6> texts{
        "1.5\n2,5\r\n-3e300\n", "r\ty\tweight\n6.0\t0.1\t1\n6.1\t\tx\n",
        "\t\t\t\n\n",           "=1/0",
        "\xE4\xF6\xFC\x01",     ""};
    if (Chance(10)) return std::string(200000, '7');
    return texts[Below(texts.size())];
}

} // namespace Quillon
