#include "commands/Sessions.h"

#include "commands/Commands.h"
#include "commands/history/History.h"
#include "commands/history/SavedState.h"
#include "input/NUMINPUT.h"
#include "persistence/FitFile.h"
#include "platform/Paths.h"
#include "scandata/forms/FileForm.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <memory>
#include <new>
#include <tuple>
#include <utility>

namespace Quillon {

namespace {

constexpr const char* Beginning = "session-";
constexpr const char* Ending = ".quil";
constexpr int MostSessions = 99;

struct OwnSession {
    std::string Path;           // "" for none
    std::shared_ptr<void> Hold; // keeps others off it
    std::string Kept;           // the bytes in the file; "" without one
    std::string Failure;
};
OwnSession Own;

// --- keeping ---------------------------------------------------------------------------------------------

// The first of the names that nobody holds and that nobody has left anything under.
OwnSession FreeSession(const std::string& folder) {
    for (int n = 1; n <= MostSessions; ++n) {
        const std::string path = JoinPath(folder, Beginning + std::to_string(n) + Ending);
        std::shared_ptr<void> hold = Host.HoldFileNow(path);
        if (hold && !Host.FileExists(path)) return {path, std::move(hold), "", ""};
    }
    return {"", nullptr, "", "no file in " + folder + " could be held"};
}

void ForgetFile() {
    if (!Own.Kept.empty()) Host.RemoveFile(Own.Path);
    Own.Kept.clear();
}

// In the midst of a command the analysis at hand may be half done.
bool AtRest() {
    return !CommandAtWork() || FileForm.State.Shown || History.Steps.empty();
}

std::string BytesToKeep() {
    return AtRest() ? EncodeFit(Work) : EncodeFit(WholeAnalysis(History.Steps[History.Place].Analysis));
}

void Write(const std::string& bytes) {
    try {
        DecodeFit(bytes, Work);
    } catch (const RuntimeError& error) {
        Own.Failure = error.Text; // the former file stays
        return;
    }
    try {
        Host.WriteFile(Own.Path, bytes);
        Own.Kept = bytes;
        Own.Failure.clear();
    } catch (const RuntimeError& error) {
        Own.Failure = error.Text;
    }
}

// --- restoring -------------------------------------------------------------------------------------------

auto InOrder(const ClockTime& t) {
    return std::tuple(t.Year, t.Month, t.Day, t.Hour, t.Minute, t.Second);
}

std::string TwoDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string TimeText(const ClockTime& at) {
    const ClockTime now = Host.Clock();
    const bool today = std::tuple(at.Year, at.Month, at.Day) == std::tuple(now.Year, now.Month, now.Day);
    const std::string time = TwoDigits(at.Hour) + ":" + TwoDigits(at.Minute);
    if (today) return time;
    return std::to_string(at.Year) + "-" + TwoDigits(at.Month) + "-" + TwoDigits(at.Day) + " " + time;
}

std::string Counted(long count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

long ScansIn(const Workspace& w) {
    return std::count_if(w.ScanFile.begin(), w.ScanFile.end(),
                         [](const auto& file) { return !file.empty(); });
}

RecoverableSession Described(const std::string& path, const Workspace& w) {
    RecoverableSession session{path, Host.FileTime(path), w.NumSets, w.FitDone != 0, w.RmsResidual, ""};
    session.Text = "Restore: " + (session.Time ? TimeText(*session.Time) + ", " : "");
    if (session.Sets == 0) session.Sets = ScansIn(w);
    session.Text += Counted(session.Sets, w.NumSets == 0 ? "scan" : "set");
    if (session.HasFit) session.Text += ", rms " + FormatNumber(static_cast<double>(session.Rms), "0.00E-##");
    return session;
}

// Nothing where another copy is at work on it, or where it holds no analysis.
std::optional<RecoverableSession> SessionAt(const std::string& path) {
    const std::shared_ptr<void> hold = Host.HoldFileNow(path);
    if (!hold) return std::nullopt;
    try {
        return Described(path, DecodeFit(Host.ReadFile(path), Work).Analysis);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

BoxAnswer AskAbout(const RecoverableSession& session) {
    BoxRequest question{Work.ProgramName + " has ended without saving the analysis.\n\n" + session.Text,
                        Work.ProgramName, BoxIcon::Question, BoxButtons::YesNoCancel, BoxAnswer::Yes};
    question.YesCaption = "&Restore";
    question.NoCaption = "&Discard";
    return Host.MessageBoxAnswer(question); // Cancel: at another start
}

} // namespace

void BeginSession() {
    EndSession();
    const std::string folder = Host.StateDirectory();
    Own = folder.empty() ? OwnSession{"", nullptr, "", "there is no folder for it"} : FreeSession(folder);
}

void EndSession() {
    ForgetFile();
    Own = OwnSession{};
}

void KeepSession() {
    if (Own.Path.empty()) return;
    if (!(AtRest() ? IsUnsaved() : StepIsUnsaved())) return ForgetFile();
    try {
        const std::string bytes = BytesToKeep();
        if (bytes != Own.Kept) Write(bytes);
    } catch (const RuntimeError& error) {
        Own.Failure = error.Text; // no file takes it: the former one stays
    } catch (const std::bad_alloc&) {
        Own.Failure = ErrorText::OutOfMemory;
    }
}

const std::string& SessionFailure() {
    return Own.Failure;
}

std::vector<RecoverableSession> RecoverableSessions() {
    std::vector<RecoverableSession> sessions;
    const std::string folder = Host.StateDirectory();
    if (folder.empty()) return sessions;
    for (const std::string& name : Host.ListFiles(folder, Beginning + std::string("*") + Ending))
        if (name.starts_with(Beginning) && name.ends_with(Ending))
            if (const auto session = SessionAt(JoinPath(folder, name))) sessions.push_back(*session);
    std::stable_sort(sessions.begin(), sessions.end(), [](const auto& one, const auto& other) {
        return InOrder(one.Time.value_or(ClockTime{})) > InOrder(other.Time.value_or(ClockTime{}));
    });
    return sessions;
}

void RestoreSession(const std::string& path) {
    std::shared_ptr<void> hold = Host.HoldFileNow(path);
    if (!hold) RaiseError("another copy of " + Work.ProgramName + " has taken this session");
    std::string bytes = Host.ReadFile(path);
    AdoptFit(bytes, "");
    ForgetFile();
    Own = {path, std::move(hold), std::move(bytes), ""};
}

void DiscardSession(const std::string& path) {
    if (const std::shared_ptr<void> hold = Host.HoldFileNow(path)) Host.RemoveFile(path);
}

void OfferSessions() {
    for (const RecoverableSession& session : RecoverableSessions()) {
        const BoxAnswer answer = AskAbout(session);
        if (answer == BoxAnswer::No) DiscardSession(session.Path);
        if (answer != BoxAnswer::Yes) continue;
        RunCommand([&] { RestoreSession(session.Path); }, "Restore session");
        return;
    }
}

} // namespace Quillon
