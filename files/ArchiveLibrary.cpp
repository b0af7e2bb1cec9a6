#include "files/ArchiveLibrary.h"

#include "platform/RuntimeError.h"

#include <dlfcn.h>
#include <string>

namespace Quillon {

namespace {

// With the number of its binary interface, which has been the same since its third edition; the build holds
// it against the library whose headers it reads.
constexpr const char* Name = "libarchive.so.13";

[[noreturn]] void RaiseMissing() {
    const char* why = ::dlerror();
    RaiseError(std::string("archives are unpacked by ") + Name + ", which cannot be loaded" +
               (why ? std::string(": ") + why : ""));
}

template <class Function> void Find(void* library, Function& function, const char* name) {
    function = reinterpret_cast<Function>(::dlsym(library, name));
    if (!function) RaiseMissing();
}

ArchiveLibrary Load() {
    void* const at = ::dlopen(Name, RTLD_NOW | RTLD_LOCAL);
    if (!at) RaiseMissing();
    ArchiveLibrary library{};
    Find(at, library.ReadNew, "archive_read_new");
    Find(at, library.ReadFree, "archive_read_free");
    Find(at, library.SupportGzip, "archive_read_support_filter_gzip");
    Find(at, library.SupportTar, "archive_read_support_format_tar");
    Find(at, library.SupportZip, "archive_read_support_format_zip");
    Find(at, library.OpenFilename, "archive_read_open_filename");
    Find(at, library.NextHeader, "archive_read_next_header");
    Find(at, library.DataBlock, "archive_read_data_block");
    Find(at, library.FilterCount, "archive_filter_count");
    Find(at, library.Errno, "archive_errno");
    Find(at, library.ErrorString, "archive_error_string");
    Find(at, library.Pathname, "archive_entry_pathname");
    Find(at, library.Filetype, "archive_entry_filetype");
    Find(at, library.Hardlink, "archive_entry_hardlink");
    Find(at, library.Symlink, "archive_entry_symlink");
    Find(at, library.IsEncrypted, "archive_entry_is_encrypted");
    return library;
}

} // namespace

const ArchiveLibrary& LoadedArchiveLibrary() {
    static const ArchiveLibrary library = Load(); // one that failed is tried again by the next call
    return library;
}

} // namespace Quillon
