#include "files/ReadWhole.h"

#include "files/Descriptor.h"
#include "files/FileStep.h"

#include <new>
#include <sys/stat.h>

namespace Quillon {

namespace {

[[noreturn]] void RaiseTooLarge(std::size_t most) {
    RaiseError("it is larger than " + std::to_string(most >> 20U) + " MB");
}

// Pieces of a file that may still grow, and that may be a pipe, whose length nobody knows.
void ReadPieces(int descriptor, std::size_t most, std::string& bytes) {
    char block[65536];
    for (;;) {
        ssize_t n = 0;
        const int error = Step(FileStep::Read, [&] {
            n = ::read(descriptor, block, sizeof block);
            return n < 0 ? -1 : 0;
        });
        if (error == EINTR) continue;
        if (error) RaiseReadError(error);
        if (n == 0) return;
        if (bytes.size() + static_cast<std::size_t>(n) > most) RaiseTooLarge(most);
        bytes.append(block, static_cast<std::size_t>(n));
    }
}

// The kind of a file, and its length as the system tells it, for which there is room in bytes then.
void CheckKind(int descriptor, std::size_t most, std::string& bytes) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) RaiseReadError(errno);
    if (S_ISDIR(status.st_mode)) RaiseReadError(EISDIR);
    if (!S_ISREG(status.st_mode) && !S_ISFIFO(status.st_mode))
        RaiseError("it is neither a file nor a pipe"); // a device may have no end
    if (status.st_size <= 0) return;
    if (static_cast<std::size_t>(status.st_size) > most) RaiseTooLarge(most);
    bytes.reserve(static_cast<std::size_t>(status.st_size));
}

} // namespace

std::string ReadWhole(const std::string& path) {
    return ReadAtMost(path, LargestRead);
}

std::string ReadAtMost(const std::string& path, std::size_t most) {
    int number = -1;
    int error = EINTR;
    while (error == EINTR)
        error = Step(FileStep::Open, [&] { return number = ::open(path.c_str(), O_RDONLY | O_CLOEXEC); });
    const Descriptor file(number);
    if (error) RaiseReadError(error);
    std::string bytes;
    try {
        CheckKind(file.Number, most, bytes);
        ReadPieces(file.Number, most, bytes);
    } catch (const std::bad_alloc&) {
        RaiseError(ErrorText::OutOfMemory);
    }
    return bytes;
}

bool IsFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? !S_ISDIR(status.st_mode) : !SaysAbsent(errno);
}

bool IsDirectory(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace Quillon
