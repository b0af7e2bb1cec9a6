#pragma once
// What a running program keeps of an analysis that is not saved, so that it outlives the program's own death.
//
// Each running copy has a file of its own in the user's state folder (Host.StateDirectory): "session-1.quil",
// a fit file like any other, replaced as a whole at most as often as KeepSession is called, every two
// seconds. It is held (Host.HoldFileNow) for as long as the process lives, so that copies do not mix, and
// what nobody holds is what a copy that died has left. A clean end removes it, and so does a save.

#include "platform/Platform.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr int SecondsBetweenKeeps = 2;

// Runs a piece of work beside the windows, on another thread, so that nobody who types waits for a disk.
// Filled by whoever shows windows; without it the work is done at once.
struct WorkUnderWay {
    std::function<bool()> HasEnded;
    std::function<void()> Wait; // until it has ended
};
using WorkBeside = std::function<WorkUnderWay(std::function<void()> work)>;
extern WorkBeside SessionWorker;

// Takes a file for this copy, in place of one that it may have had. Without a folder, or where it allows no
// lock, nothing is kept, and SessionFailure says so.
void BeginSession();

// The clean end: the file goes, once a write that is on its way has ended.
void EndSession();

// Brings the file up to the analysis, where that is unsaved and another than the file holds: to the one at
// hand between commands and while the table of data sets stands, and otherwise to the one that the command at
// work began with. May be called while events are served: it changes nothing of the analysis. An analysis
// that no file could be restored from is passed over, and the former one stays; so does the file while an
// earlier write is still on its way.
void KeepSession();

// Why the latest attempt that has ended failed, "" when it did not: the analysis is then not kept.
const std::string& SessionFailure();

// An analysis that a copy of the program has left without a clean end.
struct RecoverableSession {
    std::string Path;
    std::optional<ClockTime> Time; // when it was kept
    long Sets = 0;                 // data sets of the fit, or scans of the table where there is none
    bool HasFit = false;
    float Rms = 0.0F; // of a fit
    std::string Text; // "Restore: 21:38, 8 sets, rms 3.98E-3", with the date where it is not today's
};

// All that can be restored, the latest first.
std::vector<RecoverableSession> RecoverableSessions();

// Makes the analysis of a session the one at hand: it is unsaved and has no file of its own. The session goes
// on as this copy's. RuntimeError, and both as they were, when it cannot be read or another copy has taken
// it.
void RestoreSession(const std::string& path);

// The user does not want it: the file goes.
void DiscardSession(const std::string& path);

// At the start: asks of each session, the latest first, whether it is to be restored, discarded or kept for
// another start, until one is restored.
void OfferSessions();

} // namespace Quillon
