// Files of the batch run: a write leaves the whole new file or the whole old one.
#include "batch/BatchPlatform.h"

#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

template <class Action> std::string ErrorOf(Action&& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.Text;
    }
    return "no error";
}

std::size_t FilesIn(const std::string& directory) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(directory), fs::directory_iterator()));
}

TEST(BatchFiles, ReadsWhatIsThere) {
    Script script;
    const std::string bytes("a\0\r\n\xFF", 5);
    EXPECT_EQ(BatchReadFile(script.MakeFile("x", bytes)), bytes);
    EXPECT_EQ(BatchReadFile(script.MakeFile("empty", "")), "");
}

TEST(BatchFiles, TellsWhyAFileCannotBeRead) {
    Script script;
    EXPECT_EQ(ErrorOf([&] { BatchReadFile(script.Directory() + "/none"); }), ErrorText::FileNotFound);
    const std::string file = script.MakeFile("x", "");
    EXPECT_EQ(ErrorOf([&] { BatchReadFile(file + "/below"); }), ErrorText::FileNotFound);
    EXPECT_EQ(ErrorOf([&] { BatchReadFile(script.Directory()); }), ErrorText::FileAccess);
    EXPECT_EQ(ErrorOf([&] { BatchReadFile("/dev/zero"); }), ErrorText::FileAccess); // has no end
}

TEST(BatchFiles, WritesANewFileAndReplacesAnOldOne) {
    Script script;
    const std::string path = script.Directory() + "/out";
    BatchWriteFile(path, "one");
    EXPECT_EQ(BatchReadFile(path), "one");
    BatchWriteFile(path, "");
    EXPECT_EQ(BatchReadFile(path), "");
    EXPECT_EQ(FilesIn(script.Directory()), 1U); // nothing is left beside it
}

TEST(BatchFiles, KeepsTheModeAndTheLink) {
    Script script;
    const std::string file = script.MakeFile("real", "old");
    const std::string link = script.Directory() + "/link";
    fs::create_symlink(file, link);
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    BatchWriteFile(link, "new");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(BatchReadFile(file), "new");
    struct stat status {};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST(BatchFiles, AFailedWriteLeavesEverythingAsItWas) {
    Script script;
    EXPECT_EQ(ErrorOf([&] { BatchWriteFile(script.Directory() + "/none/out", "x"); }),
              ErrorText::PathNotFound);
    EXPECT_EQ(ErrorOf([&] { BatchWriteFile(script.Directory(), "x"); }), ErrorText::FileAccess);
    EXPECT_EQ(ErrorOf([&] { BatchWriteFile("/dev/full", "x"); }), ErrorText::DiskFull);
    EXPECT_EQ(ErrorOf([&] { BatchWriteFile("/proc/out", "x"); }), ErrorText::PathNotFound);
    EXPECT_EQ(FilesIn(script.Directory()), 0U);
}

TEST(BatchFiles, ADeviceTakesTheBytes) {
    EXPECT_EQ(ErrorOf([] { BatchWriteFile("/dev/null", "x"); }), "no error");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(BatchFiles, TellsFilesFromDirectories) {
    Script script;
    const std::string file = script.MakeFile("x", "");
    EXPECT_TRUE(BatchFileExists(file));
    EXPECT_FALSE(BatchFileExists(script.Directory()));
    EXPECT_FALSE(BatchFileExists(file + "y"));
    EXPECT_TRUE(BatchDirectoryExists(script.Directory()));
    EXPECT_FALSE(BatchDirectoryExists(file));
}

} // namespace
} // namespace Quillon
