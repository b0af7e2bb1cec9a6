#include "batch/table/RowWorkers.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <numeric>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Quillon {

namespace {

// [decision: rows-are-processes]
// A process that works on every so manieth piece, and what has come from it so far.
struct Worker {
    pid_t Process = -1;
    int Pipe = -1;
    std::string Bytes; // not yet a whole record
};

void WriteAll(int pipe, const std::string& bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        const ssize_t written = ::write(pipe, bytes.data() + at, bytes.size() - at);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return; // nobody reads any more
        at += static_cast<std::size_t>(written);
    }
}

// A record is the number of the piece, a blank, its text and a NUL.
void WorkOnPieces(int pipe, long first, long step, long count,
                  const std::function<std::string(long)>& piece) {
    for (long number = first; number < count; number += step) {
        std::string record = std::to_string(number) + " " + piece(number);
        record += '\0';
        WriteAll(pipe, record);
    }
}

Worker StartWorker(long first, long step, long count, const std::function<std::string(long)>& piece) {
    int ends[2];
    if (::pipe(ends) != 0) return {};
    std::fflush(nullptr); // what waits in buffers would be written by both
    const pid_t process = ::fork();
    if (process == 0) {
        ::close(ends[0]);
        WorkOnPieces(ends[1], first, step, count, piece);
        std::fflush(nullptr);
        ::_exit(0);
    }
    ::close(ends[1]);
    if (process < 0) {
        ::close(ends[0]);
        return {};
    }
    return {process, ends[0], ""};
}

// One worker for each first piece; left receives those whose process could not be started.
std::vector<Worker> StartWorkers(const std::vector<long>& firsts, long step, long count,
                                 const std::function<std::string(long)>& piece, std::vector<long>& left) {
    std::vector<Worker> workers;
    for (const long first : firsts) {
        Worker worker = StartWorker(first, step, count, piece);
        if (worker.Process > 0)
            workers.push_back(std::move(worker));
        else
            left.push_back(first);
    }
    return workers;
}

// Takes whole records out of what has come.
long TakeRecords(Worker& worker, std::vector<std::string>& results) {
    long taken = 0;
    for (std::size_t end = worker.Bytes.find('\0'); end != std::string::npos; end = worker.Bytes.find('\0')) {
        const std::size_t blank = worker.Bytes.find(' ');
        std::size_t number = 0;
        std::from_chars(worker.Bytes.data(), worker.Bytes.data() + blank, number);
        if (number < results.size()) results[number] = worker.Bytes.substr(blank + 1, end - blank - 1);
        worker.Bytes.erase(0, end + 1);
        ++taken;
    }
    return taken;
}

void EndWorker(Worker& worker) {
    ::close(worker.Pipe);
    worker.Pipe = -1;
    int status = 0;
    while (::waitpid(worker.Process, &status, 0) < 0 && errno == EINTR) {
    }
}

// What one of the pipes has to give; its worker ends with it.
void ReadFrom(Worker& worker) {
    char bytes[4096];
    const ssize_t size = ::read(worker.Pipe, bytes, sizeof bytes);
    if (size > 0)
        worker.Bytes.append(bytes, static_cast<std::size_t>(size));
    else if (size == 0 || errno != EINTR)
        EndWorker(worker);
}

bool Interrupt(const std::vector<Worker>& workers) {
    for (const Worker& worker : workers)
        ::kill(worker.Process, SIGINT);
    return true;
}

// Waits a moment for any of the workers and takes what has come, done more pieces; false when there is
// nothing to wait for.
bool TakeFromPipes(std::vector<Worker>& workers, std::vector<std::string>& results, long& done) {
    constexpr int Moment = 200; // milliseconds; a signal between two looks is noticed so soon
    std::vector<pollfd> pipes;
    for (const Worker& worker : workers)
        pipes.push_back({worker.Pipe, POLLIN, 0});
    if (::poll(pipes.data(), pipes.size(), Moment) < 0 && errno != EINTR) return false;
    for (std::size_t i = 0; i < workers.size(); ++i) {
        if (pipes[i].revents == 0) continue;
        ReadFrom(workers[i]);
        done += TakeRecords(workers[i], results);
    }
    return true;
}

void Collect(std::vector<Worker>& workers, std::vector<std::string>& results, long& done,
             const std::function<void(long)>& watch, const std::function<bool()>& cancelled) {
    bool told = false;
    while (!workers.empty()) {
        if (!told && cancelled && cancelled()) told = Interrupt(workers);
        if (!TakeFromPipes(workers, results, done)) break;
        watch(done);
        std::erase_if(workers, [](const Worker& worker) { return worker.Pipe < 0; });
    }
}

// The pieces behind those that a process has died of, which keep their empty results: the rest of its work.
std::vector<long> BehindTheDead(const std::vector<long>& firsts, long step,
                                const std::vector<std::string>& results) {
    std::vector<long> behind;
    const auto count = std::ssize(results);
    for (long number : firsts) {
        while (number < count && !results[static_cast<std::size_t>(number)].empty())
            number += step;
        if (number + step < count) behind.push_back(number + step);
    }
    return behind;
}

void RunHere(std::vector<std::string>& results, long from, long step,
             const std::function<std::string(long)>& piece, const std::function<void(long)>& watch) {
    long done = 0;
    for (long number = from; number < std::ssize(results); number += step) {
        results[static_cast<std::size_t>(number)] = piece(number);
        watch(++done);
    }
}

} // namespace

std::vector<std::string> RunInProcesses(int processes, long count,
                                        const std::function<std::string(long)>& piece,
                                        const std::function<void(long)>& watch,
                                        const std::function<bool()>& cancelled) {
    std::vector<std::string> results(static_cast<std::size_t>(count));
    const long step = std::clamp<long>(processes, 1, std::max<long>(count, 1));
    if (step == 1) {
        RunHere(results, 0, 1, piece, watch);
        return results;
    }
    std::vector<long> firsts(static_cast<std::size_t>(step));
    std::iota(firsts.begin(), firsts.end(), 0L);
    long done = 0;
    while (!firsts.empty() && !(cancelled && cancelled())) {
        std::vector<long> left;
        std::vector<Worker> workers = StartWorkers(firsts, step, count, piece, left);
        Collect(workers, results, done, watch, cancelled);
        for (const long first : left)
            RunHere(results, first, step, piece, watch);
        firsts = BehindTheDead(firsts, step, results);
    }
    return results;
}

} // namespace Quillon
