// Files read whole and written whole: links, permissions, devices, and the words for what fails.
#include "files/WholeFile.h"

#include "tests/support/ChildProcess.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

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

mode_t ModeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 07777U;
}

TEST(WholeFile, ReadsWhatIsThere) {
    Script script;
    const std::string bytes("a\0\r\n\xFF", 5);
    EXPECT_EQ(ReadWhole(script.MakeFile("x", bytes)), bytes);
    EXPECT_EQ(ReadWhole(script.MakeFile("empty", "")), "");
}

TEST(WholeFile, TellsWhyAFileCannotBeRead) {
    Script script;
    EXPECT_EQ(ErrorOf([&] { ReadWhole(script.Directory() + "/none"); }), ErrorText::FileNotFound);
    const std::string file = script.MakeFile("x", "");
    EXPECT_EQ(ErrorOf([&] { ReadWhole(file + "/below"); }), ErrorText::FileNotFound);
    EXPECT_EQ(ErrorOf([&] { ReadWhole(script.Directory()); }), ErrorText::FileAccess);
    EXPECT_EQ(ErrorOf([&] { ReadWhole("/dev/zero"); }), ErrorText::FileAccess); // has no end
}

TEST(WholeFile, WritesANewFileAndReplacesAnOldOne) {
    Script script;
    const std::string path = script.Directory() + "/out";
    WriteWhole(path, "one");
    EXPECT_EQ(ReadWhole(path), "one");
    WriteWhole(path, "");
    EXPECT_EQ(ReadWhole(path), "");
    EXPECT_EQ(FilesIn(script.Directory()), 1U); // nothing is left beside it
}

TEST(WholeFile, ANewFileHasThePermissionsThatTheUserGivesNewFiles) {
    Script script;
    const mode_t former = ::umask(027);
    WriteWhole(script.Directory() + "/out", "x");
    ::umask(former);
    EXPECT_EQ(ModeOf(script.Directory() + "/out"), 0640U);
}

TEST(WholeFile, AnOldFileKeepsItsPermissionsAndItsGroup) {
    Script script;
    const std::string file = script.MakeFile("real", "old");
    fs::permissions(file, fs::perms(0604));
    struct stat before {};
    const bool givenAway = ::getuid() == 0 && ::chown(file.c_str(), 1234, 4321) == 0; // no other user may
    EXPECT_EQ(givenAway, ::getuid() == 0);
    ASSERT_EQ(::stat(file.c_str(), &before), 0);
    const mode_t former = ::umask(077); // is for new files
    WriteWhole(file, "new");
    ::umask(former);
    struct stat after {};
    ASSERT_EQ(::stat(file.c_str(), &after), 0);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_NE(after.st_ino, before.st_ino); // it is another file all the same
}

TEST(WholeFile, TheFileBehindALinkIsReplacedAndTheLinkStays) {
    Script script;
    const std::string file = script.MakeFile("there/real", "old");
    const std::string link = script.Directory() + "/link";
    const std::string second = script.Directory() + "/second";
    fs::create_symlink("there/real", link); // from where the link lies
    fs::create_symlink(link, second);
    WriteWhole(second, "new");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_TRUE(fs::is_symlink(second));
    EXPECT_EQ(ReadWhole(file), "new");
    EXPECT_EQ(FilesIn(script.Directory()), 3U);
    EXPECT_EQ(FilesIn(script.Directory() + "/there"), 1U);
}

TEST(WholeFile, ALinkWhoseFileHasGoneMakesItAgain) {
    Script script;
    script.MakeFile("there/x", "");
    const std::string link = script.Directory() + "/link";
    fs::create_symlink("there/gone", link);
    WriteWhole(link, "new");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(ReadWhole(script.Directory() + "/there/gone"), "new");
}

TEST(WholeFile, LinksInARingLeadNowhere) {
    Script script;
    const std::string a = script.Directory() + "/a", b = script.Directory() + "/b";
    fs::create_symlink(a, b);
    fs::create_symlink(b, a);
    EXPECT_EQ(ErrorOf([&] { WriteWhole(a, "x"); }), ErrorText::FileAccess);
    EXPECT_EQ(FilesIn(script.Directory()), 2U);
}

TEST(WholeFile, NamesMayBeAsLongAsTheSystemAllowsAndHoldAnyLetter) {
    Script script;
    for (const std::string& name :
         {std::string(255, 'n'), std::string("a\\b c\xE4\n\".quil"), std::string("-"), std::string(".h")}) {
        const std::string path = script.Directory() + "/" + name;
        WriteWhole(path, "one");
        WriteWhole(path, name);
        EXPECT_EQ(ReadWhole(path), name);
    }
    EXPECT_EQ(FilesIn(script.Directory()), 4U);
    EXPECT_EQ(ErrorOf([&] { WriteWhole(script.Directory() + "/" + std::string(256, 'n'), "x"); }),
              ErrorText::FileAccess);
    EXPECT_EQ(FilesIn(script.Directory()), 4U);
}

TEST(WholeFile, AFailedWriteLeavesEverythingAsItWas) {
    Script script;
    EXPECT_EQ(ErrorOf([&] { WriteWhole(script.Directory() + "/none/out", "x"); }), ErrorText::PathNotFound);
    EXPECT_EQ(ErrorOf([&] { WriteWhole(script.Directory(), "x"); }), ErrorText::FileAccess);
    EXPECT_EQ(ErrorOf([&] { WriteWhole("", "x"); }), ErrorText::FileAccess);
    EXPECT_EQ(ErrorOf([&] { WriteWhole("/dev/full", "x"); }), ErrorText::DiskFull);
    EXPECT_EQ(FilesIn(script.Directory()), 0U);
}

TEST(WholeFile, WhatThisUserMayNotWriteIsLeftAlone) {
    Script script;
    const std::string open = script.MakeFile("open/protected", "old");
    const std::string closed = script.MakeFile("closed/file", "old");
    fs::permissions(open, fs::perms(0444));
    fs::permissions(closed, fs::perms(0666));
    fs::permissions(script.Directory() + "/open", fs::perms(0777));
    fs::permissions(script.Directory() + "/closed", fs::perms(0555));
    EXPECT_EQ(InChild([&] {
                  BecomeNobody();
                  const auto refused = [](const std::string& path) {
                      return WhyNotWritable(path) == ErrorText::PermissionDenied &&
                             ErrorOf([&] { WriteWhole(path, "new"); }) == ErrorText::PermissionDenied;
                  };
                  // The second file could be written, but not without a moment in which it is less.
                  if (!refused(open) || !refused(closed)) ::_exit(1);
              }),
              0);
    fs::permissions(script.Directory() + "/closed", fs::perms(0755));
    EXPECT_EQ(ReadWhole(open), "old");
    EXPECT_EQ(ReadWhole(closed), "old");
    EXPECT_EQ(FilesIn(script.Directory() + "/open"), 1U);
    EXPECT_EQ(FilesIn(script.Directory() + "/closed"), 1U);
}

TEST(WholeFile, ADeviceTakesTheBytes) {
    EXPECT_EQ(ErrorOf([] { WriteWhole("/dev/null", "x"); }), "no error");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(WhyNotWritable("/dev/null"), "");
}

TEST(WholeFile, TellsBeforehandWhatCannotBeWritten) {
    Script script;
    EXPECT_EQ(WhyNotWritable(script.Directory() + "/new"), "");
    EXPECT_EQ(WhyNotWritable(script.MakeFile("old", "")), "");
    EXPECT_EQ(WhyNotWritable(script.Directory()), "is a directory");
    EXPECT_EQ(WhyNotWritable(script.Directory() + "/none/new"), ErrorText::PathNotFound);
}

TEST(WholeFile, TellsFilesFromDirectories) {
    Script script;
    const std::string file = script.MakeFile("x", "");
    EXPECT_TRUE(IsFile(file));
    EXPECT_FALSE(IsFile(script.Directory()));
    EXPECT_FALSE(IsFile(file + "y"));
    EXPECT_TRUE(IsDirectory(script.Directory()));
    EXPECT_FALSE(IsDirectory(file));
}

} // namespace
} // namespace Quillon
