#include "tests/support/ArchiveMaker.h"

#include <archive.h>
#include <archive_entry.h>

#include <stdexcept>

namespace Quillon {

namespace {

void Check(archive* out, int status) {
    if (status < ARCHIVE_WARN) throw std::runtime_error(archive_error_string(out));
}

la_ssize_t Append(archive*, void* bytes, const void* block, std::size_t size) {
    static_cast<std::string*>(bytes)->append(static_cast<const char*>(block), size);
    return static_cast<la_ssize_t>(size);
}

void Add(archive* out, const ArchiveEntry& entry) {
    archive_entry* const head = archive_entry_new();
    archive_entry_set_pathname(head, entry.Name.c_str());
    archive_entry_set_perm(head, 0644);
    archive_entry_set_filetype(head, AE_IFREG);
    if (entry.Kind == 'd') archive_entry_set_filetype(head, AE_IFDIR);
    if (entry.Kind == 'c') archive_entry_set_filetype(head, AE_IFCHR);
    if (entry.Kind == 'l') archive_entry_set_filetype(head, AE_IFLNK);
    if (entry.Kind == 'l') archive_entry_set_symlink(head, entry.Link.c_str());
    if (entry.Kind == 'h') archive_entry_set_hardlink(head, entry.Link.c_str());
    if (entry.Kind == 'f') archive_entry_set_size(head, static_cast<la_int64_t>(entry.Bytes.size()));
    Check(out, archive_write_header(out, head));
    if (entry.Kind == 'f') archive_write_data(out, entry.Bytes.data(), entry.Bytes.size());
    archive_entry_free(head);
}

} // namespace

std::string ArchiveOf(const std::vector<ArchiveEntry>& entries, const std::string& kind) {
    std::string bytes;
    archive* const out = archive_write_new();
    if (kind == "zip")
        archive_write_set_format_zip(out);
    else
        archive_write_set_format_gnutar(out);
    if (kind == "tar.gz") archive_write_add_filter_gzip(out);
    archive_write_set_bytes_in_last_block(out, 1);
    Check(out, archive_write_open(out, &bytes, nullptr, Append, nullptr));
    for (const ArchiveEntry& entry : entries)
        Add(out, entry);
    Check(out, archive_write_close(out));
    archive_write_free(out);
    return bytes;
}

std::string Gzipped(const std::string& bytes) {
    std::string packed;
    archive* const out = archive_write_new();
    archive_write_set_format_raw(out);
    archive_write_add_filter_gzip(out);
    archive_write_set_bytes_in_last_block(out, 1);
    Check(out, archive_write_open(out, &packed, nullptr, Append, nullptr));
    archive_entry* const head = archive_entry_new();
    archive_entry_set_filetype(head, AE_IFREG);
    Check(out, archive_write_header(out, head));
    archive_write_data(out, bytes.data(), bytes.size());
    archive_entry_free(head);
    Check(out, archive_write_close(out));
    archive_write_free(out);
    return packed;
}

} // namespace Quillon
