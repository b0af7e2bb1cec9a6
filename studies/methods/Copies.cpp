#include "studies/methods/Copies.h"

#include "models/function/FitFunction.h"
#include "platform/Platform.h"
#include "platform/SplitMix.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

#include <atomic>
#include <utility>

namespace Quillon {

namespace {

BoxAnswer AnswerOfNobody(const BoxRequest& request) {
    switch (request.Buttons) {
    case BoxButtons::Ok:
        return BoxAnswer::Ok;
    case BoxButtons::YesNo:
        return BoxAnswer::No;
    default:
        return BoxAnswer::Cancel;
    }
}

// The filling of a piece. cancelled outlives it.
Platform FillingOfPiece(SplitMix random, const std::atomic<bool>& cancelled) {
    Platform p;
    p.MessageBoxAnswer = AnswerOfNobody;
    p.ReadFile = [](const std::string&) -> std::string { RaiseError("File not found"); };
    p.WriteFile = [](const std::string&, const std::string&) { RaiseError("Path not found"); };
    p.FileExists = p.DirectoryExists = [](const std::string&) { return false; };
    p.Clock = [] { return ClockTime{}; };
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

} // namespace

bool RunOnCopies(long count, std::uint64_t seed, const std::function<void(long number)>& piece,
                 const std::function<void(long done)>& told) {
    const Workspace analysis = Work;
    std::atomic<bool> cancelled{false};
    const auto onCopy = [&](long number) {
        if (cancelled) return;
        // Seeds and numbers of pieces are small: no two of them meet.
        const std::uint64_t own = (seed << 20) + static_cast<std::uint64_t>(number);
        const OnCopy here(analysis, FillingOfPiece(SplitMix::FromSeed(own), cancelled));
        try {
            piece(number);
        } catch (const RuntimeError&) {
            // What it has not handed over is missing; a piece whose reason somebody reads keeps it itself.
        }
    };
    Host.RunPieces(count, onCopy, [&](long done) {
        if (told) told(done);
        Host.ServeEvents();
        if (Work.AbortFit) cancelled = true;
    });
    return !cancelled;
}

} // namespace Quillon
