#include "commands/Sessions.h"

#include "commands/Commands.h"
#include "commands/history/History.h"
#include "commands/history/SavedState.h"
#include "input/NUMINPUT.h"
#include "persistence/FitFile.h"
#include "platform/Paths.h"
#include "platform/Words.h"
#include "scandata/forms/FileForm.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <memory>
#include <new>
#include <tuple>
#include <utility>

namespace Quillon {

WorkBeside SessionWorker;

namespace {

constexpr const char* Beginning = "session-";
constexpr const char* Ending = ".quil";
constexpr int MostSessions = 99;

using SharedBytes = std::shared_ptr<const std::string>;

// A write on its way, and what the thread that does it says of it.
struct WriteBeside {
    SharedBytes Bytes;
    std::shared_ptr<std::string> Failure; // "" while there is none
    WorkUnderWay Work;
};

struct OwnSession {
    std::string Path;           // "" for none
    std::shared_ptr<void> Hold; // keeps others off it
    SharedBytes Kept;           // in the file; null without one
    std::string Failure;
    std::optional<WriteBeside> Writing;
};
OwnSession Own;

// --- keeping ---------------------------------------------------------------------------------------------

// The first of the names that nobody holds and that nobody has left anything under.
OwnSession FreeSession(const std::string& folder) {
    for (int n = 1; n <= MostSessions; ++n) {
        const std::string path = JoinPath(folder, Beginning + std::to_string(n) + Ending);
        std::shared_ptr<void> hold = Host.HoldFileNow(path);
        if (hold && !Host.FileExists(path)) return {path, std::move(hold), nullptr, "", {}};
    }
    return {"", nullptr, nullptr, "no file in " + folder + " could be held", {}};
}

void TakeEndOfWrite() {
    Own.Writing->Work.Wait();
    Own.Failure = *Own.Writing->Failure;
    if (Own.Failure.empty()) Own.Kept = Own.Writing->Bytes;
    Own.Writing.reset();
}

// False while a write is on its way.
bool WriteHasEnded() {
    if (Own.Writing && Own.Writing->Work.HasEnded()) TakeEndOfWrite();
    return !Own.Writing;
}

void ForgetFile() {
    if (Own.Writing) TakeEndOfWrite();
    if (Own.Kept) Host.RemoveFile(Own.Path);
    Own.Kept.reset();
}

// In the midst of a command the analysis at hand may be half done.
bool AtRest() {
    return !CommandAtWork() || FileForm.State.Shown || History.Steps.empty();
}

std::string BytesToKeep() {
    return AtRest() ? EncodeFit(Work) : EncodeFit(WholeAnalysis(History.Steps[History.Place].Analysis));
}

WorkUnderWay AtOnce(const std::function<void()>& work) {
    work();
    return {[] { return true; }, [] {}};
}

// Another thread has a filling of the seam of its own: it gets the operation handed over.
void BeginWrite(std::string bytes) {
    WriteBeside write{
        std::make_shared<const std::string>(std::move(bytes)), std::make_shared<std::string>(), {}};
    const auto work = [path = Own.Path, bytesToWrite = write.Bytes, failure = write.Failure,
                       writeFile = Host.WriteFile] {
        try {
            writeFile(path, *bytesToWrite);
        } catch (const RuntimeError& error) {
            *failure = error.Text;
        } catch (const std::bad_alloc&) {
            *failure = ErrorText::OutOfMemory;
        }
    };
    write.Work = SessionWorker ? SessionWorker(work) : AtOnce(work);
    Own.Writing = std::move(write);
}

bool ComesBack(const std::string& bytes) {
    try {
        DecodeFit(bytes, Work);
        return true;
    } catch (const RuntimeError& error) {
        Own.Failure = error.Text; // the former file stays
        return false;
    }
}

void KeepBytes(std::string bytes) {
    if (Own.Kept && bytes == *Own.Kept)
        Own.Failure.clear(); // the file holds it
    else if (ComesBack(bytes))
        BeginWrite(std::move(bytes));
}

// --- restoring -------------------------------------------------------------------------------------------

auto InOrder(const ClockTime& t) {
    return std::tuple(t.Year, t.Month, t.Day, t.Hour, t.Minute, t.Second);
}

std::string TimeText(const ClockTime& at) {
    const ClockTime now = Host.Clock();
    const bool today = std::tuple(at.Year, at.Month, at.Day) == std::tuple(now.Year, now.Month, now.Day);
    const std::string time = ClockDigits(at.Hour) + ":" + ClockDigits(at.Minute);
    if (today) return time;
    return std::to_string(at.Year) + "-" + ClockDigits(at.Month) + "-" + ClockDigits(at.Day) + " " + time;
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

// Nothing where another copy is at work on it, or where it cannot be read: it is not offered, and stays for
// whoever opens it by hand, who is then told why.
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
    Own = folder.empty() ? OwnSession{"", nullptr, nullptr, "there is no folder for it", {}}
                         : FreeSession(folder);
}

void EndSession() {
    ForgetFile();
    Own = OwnSession{};
}

void KeepSession() {
    if (Own.Path.empty() || !WriteHasEnded()) return;
    if (!(AtRest() ? IsUnsaved() : StepIsUnsaved())) return ForgetFile();
    try {
        KeepBytes(BytesToKeep());
        WriteHasEnded(); // one that was done at once
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
    Own = {path, std::move(hold), std::make_shared<const std::string>(std::move(bytes)), "", {}};
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
