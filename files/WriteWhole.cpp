#include "files/WriteWhole.h"

#include "files/Descriptor.h"
#include "files/FileStep.h"
#include "files/FileTarget.h"
#include "files/Leftovers.h"
#include "files/ReadWhole.h"

#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <sys/stat.h>

namespace Quillon {

namespace {

constexpr std::size_t LargestPiece = 65536; // bytes of one write

int WriteAll(int descriptor, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        ssize_t n = 0;
        const int error = Step(FileStep::Write, [&] {
            n = ::write(descriptor, bytes.data() + done, std::min(bytes.size() - done, LargestPiece));
            return n < 0 ? -1 : 0;
        });
        if (error == EINTR) continue;
        if (error || n == 0) return error ? error : ENOSPC;
        done += static_cast<std::size_t>(n);
    }
    return 0;
}

// Some file systems have nothing to bring to a disk.
int Flush(FileStep step, int descriptor) {
    const int error = Step(step, [&] { return ::fsync(descriptor); });
    return error == EINVAL || error == ENOSYS ? 0 : error;
}

// Some file systems tell here for the first time that bytes have been lost.
int CloseChecked(Descriptor& file) {
    return Step(FileStep::Close, [&] { return file.Close(); });
}

// What is to be written, and where.
struct Replacement {
    std::string Folder; // with its "/"
    std::string Target;
    const std::string& Bytes;
    const struct stat* Former; // nullptr when there is no former file
    mode_t Mode() const { return Former ? Former->st_mode & 0777 : 0666; }
};

// Permissions and, as far as this user may, owner and group. Giving a file away can take permissions from it,
// so these come last.
int KeepAttributes(int descriptor, const Replacement& what) {
    if (!what.Former) return 0;
    const bool kept = ::fchown(descriptor, what.Former->st_uid, what.Former->st_gid) == 0 ||
                      ::fchown(descriptor, static_cast<uid_t>(-1), what.Former->st_gid) == 0;
    static_cast<void>(kept); // a file of this user's own is better than none
    return Step(FileStep::Keep, [&] { return ::fchmod(descriptor, what.Mode()); });
}

int Fill(int descriptor, const Replacement& what) {
    int error = WriteAll(descriptor, what.Bytes);
    if (!error) error = KeepAttributes(descriptor, what);
    if (!error) error = Flush(FileStep::Flush, descriptor);
    return error;
}

// The complete file beside takes the target's name, or goes.
int Replace(const std::string& beside, const Replacement& what) {
    const int error =
        Step(FileStep::Replace, [&] { return std::rename(beside.c_str(), what.Target.c_str()); });
    if (error) ::unlink(beside.c_str());
    return error;
}

// Tries names until one is free: another process of our number may have left some.
template <class Call>
int UnderFreeName(FileStep step, const Replacement& what, std::string& beside, const Call& call) {
    int error = EEXIST;
    for (int i = 0; i < 100 && error == EEXIST; ++i) {
        beside = NameBeside(what.Folder);
        error = Step(step, call);
    }
    return error;
}

// A file without a name. Unsupported: the file system has no such files, and nothing has been left.
constexpr int Unsupported = -1;

int WriteNameless(const Replacement& what) {
    int number = -1;
    const int refused = Step(FileStep::Make, [&] {
        return number = ::open(what.Folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, what.Mode());
    });
    Descriptor file(number);
    if (refused == EOPNOTSUPP || refused == EISDIR || refused == EINVAL) return Unsupported;
    if (refused) return refused;
    MarkInUse(file.Number);
    if (const int error = Fill(file.Number, what)) return error;
    const std::string open = "/proc/self/fd/" + std::to_string(file.Number);
    std::string beside;
    if (UnderFreeName(FileStep::Name, what, beside, [&] {
            return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, beside.c_str(), AT_SYMLINK_FOLLOW);
        }))
        return Unsupported;
    if (const int error = CloseChecked(file)) {
        ::unlink(beside.c_str());
        return error;
    }
    return Replace(beside, what);
}

int WriteNamed(const Replacement& what) {
    std::string beside;
    int number = -1;
    int error = UnderFreeName(FileStep::Make, what, beside, [&] {
        return number = ::open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, what.Mode());
    });
    if (error) return error;
    Descriptor file(number);
    MarkInUse(file.Number);
    error = Fill(file.Number, what);
    if (!error) error = CloseChecked(file);
    if (!error) return Replace(beside, what);
    ::unlink(beside.c_str());
    return error;
}

// The new name survives a loss of power; a file system that cannot do it is no failure.
void FlushName(const Replacement& what) {
    const Descriptor folder(::open(what.Folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder) Flush(FileStep::FlushName, folder.Number);
}

int WriteBeside(const Replacement& what) {
    RemoveLeftovers(what.Folder);
    const int error = WriteNameless(what);
    return error == Unsupported ? WriteNamed(what) : error;
}

// --- in place
// -----------------------------------------------------------------------------------------------

int Overwrite(const std::string& path, const std::string& bytes) {
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (!file) return errno;
    int error = WriteAll(file.Number, bytes);
    if (!error && ::ftruncate(file.Number, static_cast<off_t>(bytes.size())) != 0) error = errno;
    if (!error) error = Flush(FileStep::Flush, file.Number);
    return error ? error : CloseChecked(file);
}

// A copy that stands there already may be all that is left from a write that was cut off.
std::string NameOfCopy(const std::string& target) {
    std::string name = target + ".former";
    for (int n = 2; IsFile(name); ++n)
        name = target + ".former-" + std::to_string(n);
    return name;
}

// A file that is a mount point keeps its place. Its former bytes stand beside it under a name that is not
// swept away until the new ones do.
void WriteOverMountPoint(const Replacement& what) {
    const std::string former = ReadWhole(what.Target);
    const std::string copy = NameOfCopy(what.Target);
    if (const int error = WriteBeside({what.Folder, copy, former, what.Former})) RaiseWriteError(error);
    if (const int error = Overwrite(what.Target, what.Bytes)) {
        if (Overwrite(what.Target, former) != 0)
            RaiseError(WriteErrorText(error) + "; what stood there before is in " + copy);
        ::unlink(copy.c_str());
        RaiseWriteError(error);
    }
    ::unlink(copy.c_str());
}

void WriteToDevice(const std::string& path, const std::string& bytes) {
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (!file) RaiseWriteError(errno);
    if (const int error = WriteAll(file.Number, bytes)) RaiseWriteError(error);
}

// Behind what stands there: our own descriptor knows where that ends, one of another process is opened anew.
void WriteToDescriptor(const std::string& path, const std::string& bytes) {
    int number = -1;
    const std::string name = path.substr(FolderOf(path).size());
    std::from_chars(name.data(), name.data() + name.size(), number);
    struct stat own {
    }, meant{};
    const bool ours = ::fstat(number, &own) == 0 && ::stat(path.c_str(), &meant) == 0 &&
                      own.st_dev == meant.st_dev && own.st_ino == meant.st_ino;
    const Descriptor opened(ours ? -1 : ::open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
    if (!ours && !opened) RaiseWriteError(errno);
    if (const int error = WriteAll(ours ? number : opened.Number, bytes)) RaiseWriteError(error);
}

std::string WhyNotHere(const FileTarget& target) {
    if (target.Error) return WriteErrorText(target.Error);
    if (target.Exists && S_ISDIR(target.Status.st_mode)) return WriteErrorText(EISDIR);
    if (target.Exists && ::access(target.Path.c_str(), W_OK) != 0) return WriteErrorText(errno);
    return "";
}

} // namespace

void WriteWhole(const std::string& path, const std::string& bytes) {
    if (path.empty()) RaiseError(ErrorText::PathNotFound);
    const FileTarget target = FindTarget(path);
    if (const std::string reason = WhyNotHere(target); !reason.empty()) RaiseError(reason);
    if (target.OpenElsewhere) return WriteToDescriptor(target.Path, bytes);
    if (target.Exists && !S_ISREG(target.Status.st_mode)) return WriteToDevice(target.Path, bytes);
    const Replacement what{FolderOf(target.Path), target.Path, bytes,
                           target.Exists ? &target.Status : nullptr};
    const int error = WriteBeside(what);
    if (error == EBUSY && target.Exists) return WriteOverMountPoint(what);
    if (error) RaiseWriteError(error);
    FlushName(what);
}

std::string WhyNotWritable(const std::string& path) {
    const FileTarget target = FindTarget(path);
    const std::string reason = WhyNotHere(target);
    if (!reason.empty()) return reason;
    if (target.OpenElsewhere) return target.Exists ? "" : WriteErrorText(ENOENT);
    if (target.Exists && !S_ISREG(target.Status.st_mode)) return "";
    return ::access(FolderOf(target.Path).c_str(), W_OK) == 0 ? "" : WriteErrorText(errno);
}

void WriteStandardOutput(const std::string& bytes) {
    if (const int error = WriteAll(STDOUT_FILENO, bytes)) RaiseWriteError(error);
}

void SurviveFileSizeLimit() {
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace Quillon
