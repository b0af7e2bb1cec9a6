#include "platform/Platform.h"

#include <stdexcept>

namespace Quillon {

namespace {

template <class Entry, class Harmless> void OrElse(Entry& entry, Harmless harmless) {
    if (!entry) entry = std::move(harmless);
}

bool HasWhatIsRequired(const Platform& filling) {
    return filling.MessageBoxAnswer && filling.ReadFile && filling.WriteFile && filling.FileExists &&
           filling.DirectoryExists && filling.Clock && filling.Uniform;
}

// Whoever asks where nobody answers is given up on, and changes nothing.
void FillQuestions(Platform& p) {
    OrElse(p.AskChecked, [answer = p.MessageBoxAnswer](const BoxRequest& request, const std::string&, bool&) {
        return answer(request);
    });
    OrElse(p.AskText, [](const InputRequest&) { return InputAnswer{}; });
    OrElse(p.AskFile, [](const FileRequest&) { return FileAnswer{}; });
    OrElse(p.AskColor, [](const std::string&, std::uint32_t) { return ColorAnswer{}; });
}

void FillWindows(Platform& p) {
    OrElse(p.Beep, [] {});
    OrElse(p.SetPointer, [](Pointer) {});
    OrElse(p.ServeEvents, [] {});
    OrElse(p.WaitEvent, p.ServeEvents);
    OrElse(p.ShowModal, [](const std::string&) {});
    OrElse(p.ShowForm, [](const std::string&) {});
    OrElse(p.HideForm, [](const std::string&) {});
}

void FillClipboard(Platform& p) {
    OrElse(p.SetClipboardText, [](const std::string&) { return false; });
    OrElse(p.ClipboardText, [] { return std::string{}; });
    OrElse(p.SetClipboard, [](const ClipboardOffer&) { return false; });
}

void FillFolders(Platform& p) {
    OrElse(p.ListFiles, [](const std::string&, const std::string&) { return std::vector<std::string>{}; });
    OrElse(p.WalkFiles, [](const std::string&, const std::function<void(const MetFile&)>&) {
        return std::vector<PassedFile>{};
    });
    OrElse(p.MakeFolder, [](const std::string&) {});
    OrElse(p.FileRoots, [] { return std::vector<std::string>{}; });
    OrElse(p.WorkingDirectory, [] { return std::string{}; });
    OrElse(p.ConfigDirectory, [] { return std::string{}; });
    OrElse(p.ProgramDirectory, [] { return std::string{}; });
    OrElse(p.StateDirectory, [] { return std::string{}; });
}

void FillFiles(Platform& p) {
    OrElse(p.RemoveFile, [](const std::string&) {});
    OrElse(p.HoldFile, [](const std::string&) { return std::shared_ptr<void>{}; });
    OrElse(p.HoldFileNow, [](const std::string&) { return std::shared_ptr<void>{}; });
    OrElse(p.FileTime, [](const std::string&) { return std::optional<ClockTime>{}; });
    OrElse(p.Sha256, [](std::string_view) { return std::string{}; });
}

void PieceByPiece(long count, const std::function<void(long)>& piece,
                  const std::function<void(long)>& watch) {
    for (long number = 0; number < count; ++number) {
        piece(number);
        watch(number + 1);
    }
}

void FillSystem(Platform& p) {
    OrElse(p.SeedUniform, [] {});
    OrElse(p.StartProgram, [](const std::string&, const std::string&) { return false; });
    OrElse(p.IsThisProgram, [](const std::string&) { return false; });
    OrElse(p.DecimalMark, [] { return '.'; });
    OrElse(p.RunPieces, PieceByPiece);
}

} // namespace

void InstallPlatform(Platform filling) {
    if (!HasWhatIsRequired(filling)) throw std::logic_error("the platform record lacks a required operation");
    FillQuestions(filling);
    FillWindows(filling);
    FillClipboard(filling);
    FillFolders(filling);
    FillFiles(filling);
    FillSystem(filling);
    FillPrinter(filling.Printer);
    Host = std::move(filling);
}

} // namespace Quillon
