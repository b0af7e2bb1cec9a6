#include "tests/support/ChildProcess.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Quillon {

namespace {

constexpr uid_t Nobody = 65534;

void LimitFiles(unsigned long bytes) {
    const rlimit size{bytes, bytes}, core{0, 0};
    ::setrlimit(RLIMIT_CORE, &core);
    ::setrlimit(RLIMIT_FSIZE, &size);
}

} // namespace

pid_t StartChild(const std::function<void()>& work) {
    const pid_t child = ::fork();
    if (child != 0) return child;
    work();
    ::_exit(0);
}

int EndOfChild(pid_t child) {
    int status = 0;
    if (::waitpid(child, &status, 0) != child) return -1;
    if (WIFSIGNALED(status)) return WTERMSIG(status);
    return WEXITSTATUS(status) == 0 ? 0 : -1;
}

int InChild(const std::function<void()>& work) {
    return EndOfChild(StartChild(work));
}

void DieAtByte(unsigned long bytes) {
    std::signal(SIGXFSZ, SIG_DFL);
    LimitFiles(bytes);
}

void FailAtByte(unsigned long bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    LimitFiles(bytes);
}

void BecomeNobody() {
    if (::getuid() == 0 && (::setgid(Nobody) != 0 || ::setuid(Nobody) != 0)) ::_exit(1);
}

} // namespace Quillon
