#pragma once
// The library that unpacks archives, loaded when the first one is opened. Linked with the programs it would
// be loaded at each start, and with it half a dozen unpackers, a reader of XML and 30 MB of tables of letters
// that it stands on: most of what a start of quillon-fit cost, for something that few runs need.

#include <archive.h>
#include <archive_entry.h>

namespace Quillon {

// The functions in use, as the library declares them, without the "archive_" in front.
struct ArchiveLibrary {
    decltype(&archive_read_new) ReadNew;
    decltype(&archive_read_free) ReadFree;
    decltype(&archive_read_support_filter_gzip) SupportGzip;
    decltype(&archive_read_support_format_tar) SupportTar;
    decltype(&archive_read_support_format_zip) SupportZip;
    decltype(&archive_read_open_filename) OpenFilename;
    decltype(&archive_read_next_header) NextHeader;
    decltype(&archive_read_data_block) DataBlock;
    decltype(&archive_filter_count) FilterCount;
    decltype(&archive_errno) Errno;
    decltype(&archive_error_string) ErrorString;
    decltype(&archive_entry_pathname) Pathname;
    decltype(&archive_entry_filetype) Filetype;
    decltype(&archive_entry_hardlink) Hardlink;
    decltype(&archive_entry_symlink) Symlink;
    decltype(&archive_entry_is_encrypted) IsEncrypted;
};

// Loads it at the first call, for the rest of the process; from any thread. One that cannot be loaded, or
// that lacks a function, is a RuntimeError that says why.
const ArchiveLibrary& LoadedArchiveLibrary();

} // namespace Quillon
