#include "batch/console/BatchPlatform.h"

#include "batch/console/ConsoleText.h"
#include "batch/console/OneLine.h"
#include "files/FillFiles.h"
#include "files/RunPieces.h"
#include "files/WriteWhole.h"
#include "input/NUMINPUT.h"
#include "platform/Paths.h"
#include "platform/QuietPlatform.h"
#include "platform/SplitMix.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

#include <atomic>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <unistd.h>

namespace Quillon {

BatchConsole Console;

namespace {

static_assert(std::atomic<int>::is_always_lock_free); // a signal handler may set it
std::atomic<int> InterruptCame{0};

void OnInterrupt(int) {
    InterruptCame = 1;
}

double SecondsNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

SplitMix Generator;

void SeedUniform() {
    Generator = SplitMix::FromSeed(Console.Seed);
}

ClockTime LocalClock() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    if (!::localtime_r(&now, &local)) return {};
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

const char* AnswerName(BoxAnswer answer) {
    switch (answer) {
    case BoxAnswer::Yes:
        return "Yes";
    case BoxAnswer::No:
        return "No";
    case BoxAnswer::Cancel:
        return "Cancel";
    default:
        return "OK";
    }
}

BoxAnswer AnswerTo(const BoxRequest& request) {
    if (request.Text == "Do you want new guesses for the concentrations?" && Console.NewGuesses) {
        Console.NewGuesses = false;
        return BoxAnswer::Yes;
    }
    if (request.Text.ends_with("Do you want to use the new value anyway?")) return BoxAnswer::Yes;
    return NeutralAnswer(request.Buttons);
}

BoxAnswer AnswerMessage(const BoxRequest& request) {
    const std::string text = MessageLine(ConsoleText(request.Text));
    const BoxAnswer answer = AnswerTo(request);
    if (request.Buttons == BoxButtons::Ok) {
        WriteConsole(text);
        Console.LastTold = text;
    } else {
        WriteConsole(text + " Answer: " + AnswerName(answer));
    }
    return answer;
}

InputAnswer AnswerInput(const InputRequest& request) {
    WriteConsole(ConsoleText(request.Prompt) + " Answer: Cancel");
    return {};
}

std::string ProgramDirectory() {
    char path[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path);
    return length > 0 ? DirectoryOf({path, static_cast<std::size_t>(length)}) : "";
}

void TellIteration() {
    WriteProgress("iteration " + std::to_string(Work.Iteration) + "  sum of squares " +
                  FormatNumber(Work.SumSq, "#.######E-##") + "  Alpha " + FormatNumber(Work.Alpha, "0.0000"));
}

void ServeEvents() {
    if (Interrupted()) AskToStop();
}

} // namespace

void WriteConsole(const std::string& line) {
    if (!Console.Quiet) Console.WriteLine(OneLine(line));
}

void WriteFailure(const std::string& line) {
    Console.WriteLine(OneLine(line));
}

void WriteEnd(const std::string& message, bool told) {
    if (!told || Console.Quiet) WriteFailure(message);
}

void WriteProgress(const std::string& line) {
    if (Console.Progress) return Console.Progress(line);
    if (Console.Quiet) return;
    if (::isatty(STDERR_FILENO) || SecondsNow() - Console.Started > 2.0) WriteConsole(line);
}

FitProgress BatchProgress() {
    FitProgress progress;
    progress.Iteration = TellIteration;
    progress.Wait = ServeEvents; // passes over few points never do
    progress.Remark = WriteConsole;
    return progress;
}

void WatchInterrupt() {
    struct sigaction former {};
    if (::sigaction(SIGINT, nullptr, &former) == 0 && former.sa_handler == SIG_IGN)
        return; // not to be stopped
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    action.sa_flags = static_cast<int>(SA_RESETHAND); // the second one is meant
    ::sigaction(SIGINT, &action, nullptr);
}

bool Interrupted() {
    return InterruptCame != 0;
}

void InstallBatchPlatform() {
    Console = BatchConsole{};
    Console.Started = SecondsNow();
    Console.WriteLine = [](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); };
    SeedUniform();
    InterruptCame = 0;
    SurviveFileSizeLimit();

    Platform p;
    p.MessageBoxAnswer = AnswerMessage;
    p.AskText = AnswerInput;
    FillFiles(p);
    p.Clock = LocalClock;
    p.Uniform = [] { return Generator.Uniform(); };
    p.SeedUniform = SeedUniform;
    p.ServeEvents = ServeEvents;
    p.ProgramDirectory = ProgramDirectory;
    p.ConfigDirectory = [] { return "/dev/null"; }; // nothing lies below it: no settings of the user are read
    p.RunPieces = [](long count, const auto& piece, const auto& watch) {
        RunPieces(Console.Threads > 0 ? Console.Threads : CoresOfMachine(), count, piece, watch);
    };
    p.ShowModal = [](const std::string& form) {
        if (Console.ShowModal) Console.ShowModal(form);
    };
    InstallPlatform(p);
}

} // namespace Quillon
