// Archives come from strangers and from broken transfers. Only two formats are read and one way of packing,
// by the library's own code: others would start programs. What is unpacked is counted byte by byte, whatever
// the headers claim, also of entries that nobody wants.
#include "files/ArchiveLibrary.h"
#include "files/FileStep.h"
#include "files/WalkFiles.h"

#include <memory>

namespace Quillon {

namespace {

using OpenArchive = std::unique_ptr<archive, int (*)(archive*)>;

constexpr std::size_t BlockSize = 65536;

[[noreturn]] void RaiseDamaged(archive* in) {
    const char* words = LoadedArchiveLibrary().ErrorString(in);
    RaiseError(std::string("the archive is damaged or ends too early") +
               (words ? std::string(": ") + words : ""));
}

// "64 MB", "2 GB"; smaller ones in bytes.
std::string SizeText(std::size_t bytes) {
    constexpr std::size_t mega = std::size_t{1} << 20U, giga = std::size_t{1} << 30U;
    if (bytes >= giga) return std::to_string(bytes / giga) + " GB";
    return bytes >= mega ? std::to_string(bytes / mega) + " MB" : std::to_string(bytes) + " bytes";
}

// The bytes of one entry, taken block by block.
struct EntryBytes {
    archive* In;
    const WalkLimits& Limits;
    std::size_t& Unpacked; // of the whole archive
    std::string Bytes{};
    bool Ended = false;
    bool TooLarge = false;

    // A block that claims to stand far behind the last one is a hole, which unpacks to nothing but zeros.
    void Take(const void* block, std::size_t size, la_int64_t offset) {
        const bool behind = offset >= 0 && static_cast<std::size_t>(offset) >= Bytes.size();
        const std::size_t end = static_cast<std::size_t>(offset) + size;
        const bool taken = !TooLarge && behind && end <= Limits.OneFile && end >= size;
        Unpacked += taken ? end - Bytes.size() : size;
        if (Unpacked > Limits.Archive) RaiseError("it unpacks to more than " + SizeText(Limits.Archive));
        if (!taken) {
            TooLarge = true;
            return Bytes.clear();
        }
        Bytes.resize(static_cast<std::size_t>(offset), '\0');
        Bytes.append(static_cast<const char*>(block), size);
    }

    // Reads on until so many bytes are there, or to the end.
    void ReadUpTo(std::size_t least) {
        while (!Ended && (TooLarge || Bytes.size() < least)) {
            const void* block = nullptr;
            std::size_t size = 0;
            la_int64_t offset = 0;
            const int status = LoadedArchiveLibrary().DataBlock(In, &block, &size, &offset);
            if (status == ARCHIVE_EOF)
                Ended = true;
            else if (status < ARCHIVE_WARN)
                RaiseDamaged(In);
            else
                Take(block, size, offset);
        }
    }

    std::string Whole() {
        ReadUpTo(Limits.OneFile + 1);
        if (TooLarge) RaiseError("it is larger than " + SizeText(Limits.OneFile));
        return Bytes;
    }

    // The rest is unpacked and counted, but not kept.
    void PassOver() {
        TooLarge = true;
        Bytes.clear();
        ReadUpTo(Limits.OneFile + 1);
    }
};

OpenArchive Open(const std::string& path) {
    const ArchiveLibrary& library = LoadedArchiveLibrary();
    OpenArchive in(library.ReadNew(), library.ReadFree);
    if (!in) RaiseError(ErrorText::OutOfMemory);
    library.SupportGzip(in.get());
    library.SupportTar(in.get());
    library.SupportZip(in.get());
    if (library.OpenFilename(in.get(), path.c_str(), BlockSize) != ARCHIVE_OK) {
        const int error = library.Errno(in.get());
        if (error == ENOENT || error == EACCES) RaiseReadError(error);
        RaiseError("it is neither a folder nor an archive (.tar.gz, .zip) that can be read");
    }
    if (library.FilterCount(in.get()) > 2) // one of them hands the bytes of the file on
        RaiseError("the archive is packed several times over");
    return in;
}

// Why an entry is left alone; "" for a file.
std::string WhyPassed(archive_entry* entry, const std::string& name) {
    const ArchiveLibrary& library = LoadedArchiveLibrary();
    const auto type = library.Filetype(entry);
    if (library.Hardlink(entry) || library.Symlink(entry) || type == AE_IFLNK) return "a link";
    if (type != AE_IFREG) return "neither a file nor a folder";
    if (!StaysBelow(name)) return "its name leads out of the folder";
    return library.IsEncrypted(entry) ? "it is encrypted" : "";
}

std::string NameOf(archive_entry* entry) {
    const char* name = LoadedArchiveLibrary().Pathname(entry);
    return name ? name : "";
}

} // namespace

std::vector<PassedFile> WalkArchive(const std::string& path, const MeetFile& meet, const WalkLimits& limits) {
    const OpenArchive in = Open(path);
    std::vector<PassedFile> passed;
    std::size_t unpacked = 0;
    archive_entry* entry = nullptr;
    for (long count = 1;; ++count) {
        const int status = LoadedArchiveLibrary().NextHeader(in.get(), &entry);
        if (status == ARCHIVE_EOF) break;
        if (status < ARCHIVE_WARN)
            RaiseError(count == 1
                           ? "it is no archive (.tar.gz, .zip) that can be read, or one that ends too early"
                           : "the archive is damaged or ends too early");
        if (count > limits.Entries)
            RaiseError("it holds more than " + std::to_string(limits.Entries) + " entries");
        EntryBytes bytes{in.get(), limits, unpacked};
        const std::string name = NameOf(entry);
        const bool isFolder = LoadedArchiveLibrary().Filetype(entry) == AE_IFDIR;
        const std::string why = isFolder ? "" : WhyPassed(entry, name);
        if (!isFolder && why.empty()) {
            bytes.ReadUpTo(StartOfFile);
            const std::string start = bytes.Bytes.substr(0, StartOfFile);
            meet({name, start, [&] { return bytes.Whole(); }});
        } else if (!why.empty()) {
            passed.push_back({name, why});
        }
        bytes.PassOver();
    }
    return passed;
}

} // namespace Quillon
