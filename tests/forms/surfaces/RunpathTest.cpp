// Where programs look for the libraries that they load: beside themselves and nowhere else. An entry that is
// empty or relative is the folder that the program is started in, and whatever a stranger has put there.
#include <gtest/gtest.h>

#include <elf.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

std::string BytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

template <class T> T At(const std::string& bytes, std::size_t place) {
    T value{};
    if (place + sizeof value <= bytes.size()) std::memcpy(&value, bytes.data() + place, sizeof value);
    return value;
}

// The section of a kind, by the ELF-64 format.
Elf64_Shdr SectionOf(const std::string& bytes, std::uint32_t kind) {
    const auto head = At<Elf64_Ehdr>(bytes, 0);
    for (std::size_t i = 0; i < head.e_shnum; ++i)
        if (const auto section = At<Elf64_Shdr>(bytes, head.e_shoff + i * head.e_shentsize);
            section.sh_type == kind)
            return section;
    return {};
}

// RPATH and RUNPATH of a program or library.
std::vector<std::string> RunPaths(const std::string& bytes) {
    const Elf64_Shdr dynamic = SectionOf(bytes, SHT_DYNAMIC);
    const auto head = At<Elf64_Ehdr>(bytes, 0);
    const auto texts = At<Elf64_Shdr>(bytes, head.e_shoff + dynamic.sh_link * head.e_shentsize);
    std::vector<std::string> paths;
    for (std::size_t at = 0; at < dynamic.sh_size; at += sizeof(Elf64_Dyn)) {
        const auto entry = At<Elf64_Dyn>(bytes, dynamic.sh_offset + at);
        if (entry.d_tag == DT_RPATH || entry.d_tag == DT_RUNPATH)
            paths.emplace_back(bytes.c_str() + texts.sh_offset + entry.d_un.d_val);
    }
    return paths;
}

std::vector<std::string> EntriesOf(const std::string& path) {
    std::vector<std::string> entries;
    std::size_t begin = 0;
    for (std::size_t end = path.find(':'); end != std::string::npos; end = path.find(':', begin)) {
        entries.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    entries.push_back(path.substr(begin));
    return entries;
}

// Safe: the program's own folder, or one that is told from there.
bool IsSafe(const std::string& entry) {
    return entry == "$ORIGIN" || entry.starts_with("$ORIGIN/");
}

void ExpectSafe(const fs::path& file) {
    const std::string bytes = BytesOf(file);
    ASSERT_TRUE(bytes.starts_with("\177ELF")) << file;
    for (const std::string& path : RunPaths(bytes))
        for (const std::string& entry : EntriesOf(path))
            EXPECT_TRUE(IsSafe(entry)) << file << ": '" << path << "'";
}

TEST(Runpaths, OfTheBuiltProgramsEndedInTheFolderTheyAreStartedIn) {
    for (const char* file : {QUILLON_PROGRAM, QUILLON_FIT, QUILLON_SURFACES})
        ExpectSafe(file);
    EXPECT_EQ(RunPaths(BytesOf(QUILLON_PROGRAM)).size(), 1U); // it has one, or this reads nothing at all
}

TEST(Runpaths, OfTheInstalledProgramsHoldNothingOfTheBuild) {
    const fs::path root = fs::temp_directory_path() / ("quillon-installed-" + std::to_string(::getpid()));
    for (const char* folder : {"forms", "batch"}) {
        const std::string command = std::string("\"" QUILLON_CMAKE "\" -DCMAKE_INSTALL_PREFIX=\"") +
                                    root.string() + "\" -P \"" QUILLON_BUILD "/" + folder +
                                    "/cmake_install.cmake\" > /dev/null";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
    }
    int seen = 0;
    for (const auto& entry : fs::recursive_directory_iterator(root))
        if (entry.is_regular_file() && BytesOf(entry.path()).starts_with("\177ELF")) {
            ExpectSafe(entry.path());
            ++seen;
        }
    EXPECT_EQ(seen, 3);
    const std::string start =
        "QT_QPA_PLATFORM=offscreen \"" + (root / "bin/quillon").string() + "\" --version";
    EXPECT_EQ(std::system((start + " > /dev/null").c_str()), 0); // it finds its library
    fs::remove_all(root);
}

TEST(Runpaths, AnEmptyEntryIsSeen) {
    EXPECT_EQ(EntriesOf("$ORIGIN:"), (std::vector<std::string>{"$ORIGIN", ""}));
    EXPECT_FALSE(IsSafe(""));
    EXPECT_FALSE(IsSafe("/usr/lib"));
    EXPECT_FALSE(IsSafe("$ORIGINAL"));
    EXPECT_TRUE(IsSafe("$ORIGIN/../lib/quillon"));
}

} // namespace
} // namespace Quillon
