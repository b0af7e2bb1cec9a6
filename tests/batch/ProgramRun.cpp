#include "tests/batch/ProgramRun.h"

#include "batch/QuillonFit.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <sstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace Quillon {
namespace {

constexpr uid_t Nobody = 65534;

// A directory for the two streams, gone with the run.
struct StreamFiles {
    std::string Directory;
    StreamFiles() {
        char name[] = "/tmp/quillon-run-XXXXXX";
        Directory = ::mkdtemp(name);
        ::chmod(Directory.c_str(), 0755);
    }
    ~StreamFiles() {
        std::error_code ignored;
        std::filesystem::remove_all(Directory, ignored);
    }
    std::string Out() const { return Directory + "/out"; }
    std::string Err() const { return Directory + "/err"; }
};

void Limit(decltype(RLIMIT_DATA) resource, long bytes) {
    if (bytes == 0) return;
    const rlimit limit{static_cast<rlim_t>(bytes), static_cast<rlim_t>(bytes)};
    ::setrlimit(resource, &limit);
}

[[noreturn]] void BecomeProgram(const ProgramStart& start, const StreamFiles& files) {
    ::dup2(::open(files.Out().c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666), STDOUT_FILENO);
    ::dup2(::open(files.Err().c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666), STDERR_FILENO);
    if (!start.Directory.empty() && ::chdir(start.Directory.c_str()) != 0) ::_exit(120);
    Limit(RLIMIT_FSIZE, start.LargestFile);
    if (start.LargestFile > 0) std::signal(SIGXFSZ, SIG_IGN); // the write fails instead
    Limit(RLIMIT_DATA, start.LargestData);
    if (start.Unprivileged && ::getuid() == 0 && (::setgid(Nobody) != 0 || ::setuid(Nobody) != 0))
        ::_exit(121);
    std::signal(SIGINT, SIG_DFL);
    std::vector<char*> arguments{const_cast<char*>(QUILLON_FIT)};
    for (const std::string& argument : start.Arguments)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    ::execv(QUILLON_FIT, arguments.data());
    ::_exit(122);
}

bool Ended(pid_t child, int& status) {
    return ::waitpid(child, &status, WNOHANG) == child;
}

} // namespace

ProgramEnd RunProgram(const ProgramStart& start) {
    const StreamFiles files;
    const pid_t child = ::fork();
    if (child == 0) BecomeProgram(start, files);
    int status = 0;
    bool interrupted = start.InterruptAfter.empty();
    while (!Ended(child, status)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        if (interrupted || !std::filesystem::exists(files.Err())) continue;
        if (ReadWholeFile(files.Err()).find(start.InterruptAfter) == std::string::npos) continue;
        ::kill(child, SIGINT);
        interrupted = true;
    }
    ProgramEnd end;
    if (WIFEXITED(status)) end.Status = WEXITSTATUS(status);
    end.Out = ReadWholeFile(files.Out());
    end.Err = ReadWholeFile(files.Err());
    return end;
}

ProgramEnd RunInside(const std::vector<std::string>& arguments) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    ProgramEnd end;
    end.Status = RunQuillonFit(arguments);
    end.Err = testing::internal::GetCapturedStderr();
    end.Out = testing::internal::GetCapturedStdout();
    return end;
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace Quillon
