#include "studies/methods/Copies.h"

#include "models/function/FitFunction.h"
#include "platform/QuietPlatform.h"
#include "platform/SplitMix.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

#include <atomic>
#include <utility>
#include <vector>

namespace Quillon {

namespace {

// The filling of a piece. cancelled outlives it.
Platform FillingOfPiece(SplitMix random, const std::atomic<bool>& cancelled) {
    Platform p = QuietPlatform();
    p.Uniform = [random]() mutable { return random.Uniform(); };
    p.ServeEvents = [&cancelled] {
        if (cancelled) AskToStop();
    };
    return p;
}

// Puts a copy and its filling into use on this thread for as long as it lives.
class OnCopy {
public:
    OnCopy(const Workspace& analysis, Platform filling)
        : FormerWork(std::exchange(Work, analysis)), FormerHost(std::move(Host)) {
        InstallPlatform(std::move(filling));
        ResetFitFunction(); // what it keeps of a set is that of another analysis
    }
    ~OnCopy() {
        Work = std::move(FormerWork);
        ResetFitFunction();
        Host = std::move(FormerHost);
    }
    OnCopy(const OnCopy&) = delete;
    OnCopy& operator=(const OnCopy&) = delete;

private:
    Workspace FormerWork;
    Platform FormerHost;
};

CopiesEnd EndOf(const std::vector<std::string>& reasons, bool complete) {
    CopiesEnd end;
    end.Complete = complete;
    for (const std::string& reason : reasons) {
        if (reason.empty()) continue;
        if (end.Reason.empty()) end.Reason = reason;
        ++end.Broken;
    }
    return end;
}

} // namespace

std::string BrokenText(const CopiesEnd& end) {
    return end.Broken > 0 ? ", " + std::to_string(end.Broken) + " of them in arithmetic: " + end.Reason : "";
}

CopiesEnd RunOnCopies(long count, std::uint64_t seed, const std::function<void(long number)>& piece,
                      const std::function<void(long done)>& told) {
    const Workspace analysis = Work;
    std::atomic<bool> cancelled{false};
    std::vector<std::string> reasons(static_cast<std::size_t>(count)); // each piece writes its own
    const auto onCopy = [&](long number) {
        if (cancelled) return;
        // Seeds and numbers of pieces are small: no two of them meet.
        const std::uint64_t own = (seed << 20) + static_cast<std::uint64_t>(number);
        const OnCopy here(analysis, FillingOfPiece(SplitMix::FromSeed(own), cancelled));
        try {
            piece(number);
        } catch (const RuntimeError& error) {
            reasons[static_cast<std::size_t>(number)] = error.Text;
        }
    };
    Host.RunPieces(count, onCopy, [&](long done) {
        if (told) told(done);
        Host.ServeEvents();
        if (Work.AbortFit) cancelled = true;
    });
    return EndOf(reasons, !cancelled);
}

} // namespace Quillon
