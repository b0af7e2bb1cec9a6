// Files read whole and written whole: links, permissions, devices, and the words for what fails.
#include "files/FileStep.h"
#include "files/FileTarget.h"
#include "files/ReadWhole.h"
#include "files/WriteWhole.h"

#include "tests/support/ChildProcess.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
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
    EXPECT_EQ(ErrorOf([&] { ReadWhole(script.Directory()); }), "it is a directory");
    EXPECT_EQ(ErrorOf([&] { ReadWhole("/dev/zero"); }), "it is neither a file nor a pipe"); // has no end
    fs::create_symlink("ring", script.Directory() + "/ring");
    EXPECT_EQ(ErrorOf([&] { ReadWhole(script.Directory() + "/ring"); }), "its links lead in a circle");
    fs::permissions(file, fs::perms::none);
    EXPECT_EQ(InChild([&] {
                  BecomeNobody();
                  if (ErrorOf([&] { ReadWhole(file); }) != ErrorText::PermissionDenied) ::_exit(1);
              }),
              0);
}

TEST(WholeFile, AFileBeyondTheLimitIsRefusedBeforeItTakesTheMemory) {
    Script script;
    const std::string path = script.MakeFile("huge", "");
    fs::resize_file(path, std::uintmax_t{100} << 30U); // 100 GB that take no room on the disk
    EXPECT_EQ(ErrorOf([&] { ReadWhole(path); }), "it is larger than 256 MB");
    fs::resize_file(path, LargestRead + 1);
    EXPECT_EQ(ErrorOf([&] { ReadWhole(path); }), "it is larger than 256 MB");
    constexpr std::size_t megabyte = std::size_t{1} << 20U;
    fs::resize_file(path, megabyte);
    EXPECT_EQ(ReadAtMost(path, megabyte).size(), megabyte);
}

TEST(WholeFile, APipeThatDoesNotEndIsRefusedAtTheLimit) {
    Script script;
    const std::string path = script.Directory() + "/pipe";
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    const pid_t writer = StartChild([&] {
        const int pipe = ::open(path.c_str(), O_WRONLY);
        const std::string piece(65536, 'x');
        while (::write(pipe, piece.data(), piece.size()) > 0) {
        }
    });
    EXPECT_EQ(ErrorOf([&] { ReadAtMost(path, std::size_t{2} << 20U); }), "it is larger than 2 MB");
    EXPECT_EQ(EndOfChild(writer), SIGPIPE);
}

TEST(WholeFile, AReadThatASignalInterruptsGoesOn) {
    Script script;
    const std::string bytes(200000, 'b');
    const std::string path = script.MakeFile("x", bytes);
    int steps = 0;
    BeforeFileStep = [&](FileStep step) {
        EXPECT_TRUE(step == FileStep::Open || step == FileStep::Read);
        return steps++ % 2 == 0 ? EINTR : 0;
    };
    EXPECT_EQ(ErrorOf([&] { EXPECT_EQ(ReadWhole(path), bytes); }), "no error");
    EXPECT_GE(steps, 10);
    BeforeFileStep = [](FileStep step) { return step == FileStep::Read ? EIO : 0; };
    EXPECT_EQ(ErrorOf([&] { ReadWhole(path); }), "Path/File access error: Input/output error");
    BeforeFileStep = nullptr;
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
    EXPECT_EQ(ErrorOf([&] { WriteWhole(a, "x"); }), "its links lead in a circle");
    EXPECT_EQ(WhyNotWritable(a), "its links lead in a circle");
    EXPECT_EQ(FilesIn(script.Directory()), 2U);
}

// Each link leads through a folder that is a link too: no step is long, but the whole is more than the system
// follows. It refuses such a name, as it refuses links of others in a folder of all.
TEST(WholeFile, LinksAreNotFollowedByHandWhereTheSystemRefusesTo) {
    Script script;
    const std::string folder = script.Directory() + "/f";
    fs::create_directory(folder);
    fs::create_symlink(".", folder + "/again");
    for (int i = 0; i < 30; ++i)
        fs::create_symlink("again/" + std::to_string(i + 1), folder + "/" + std::to_string(i));
    EXPECT_EQ(ErrorOf([&] { WriteWhole(folder + "/0", "x"); }), "its links lead in a circle");
    EXPECT_FALSE(fs::exists(folder + "/30"));
    EXPECT_EQ(ErrorOf([&] { WriteWhole(folder + "/20", "x"); }), "no error"); // 20 links are few enough
    EXPECT_EQ(ReadWhole(folder + "/30"), "x");
}

TEST(WholeFile, WhatCannotBeLookedAtIsNotTakenForAbsent) {
    Script script;
    const std::string file = script.MakeFile("closed/file", "old");
    fs::permissions(script.Directory() + "/closed", fs::perms::owner_read);
    EXPECT_EQ(InChild([&] {
                  BecomeNobody();
                  if (!IsFile(file) || IsDirectory(file)) ::_exit(1);
                  if (ErrorOf([&] { WriteWhole(file, "x"); }) != ErrorText::PermissionDenied) ::_exit(2);
                  if (ErrorOf([&] { ReadWhole(file); }) != ErrorText::PermissionDenied) ::_exit(3);
              }),
              0);
    fs::permissions(script.Directory() + "/closed", fs::perms::owner_all);
}

// ">> log" and "> log": what the descriptor leads to goes on, and is not replaced by another file.
TEST(WholeFile, AnOpenDescriptorTakesTheBytesWhereItStands) {
    Script script;
    const std::string log = script.MakeFile("log", "before\n");
    for (const char* name : {"/dev/stdout", "/proc/self/fd/1", "/dev/fd/1"})
        for (const int how : {O_APPEND, O_TRUNC}) {
            WriteWholeFile(log, "before\n");
            struct stat before {
            }, after{};
            ASSERT_EQ(::stat(log.c_str(), &before), 0);
            EXPECT_EQ(InChild([&] {
                          ::dup2(::open(log.c_str(), O_WRONLY | how), STDOUT_FILENO);
                          WriteStandardOutput("one\n");
                          if (!WhyNotWritable(name).empty()) ::_exit(1);
                          WriteWhole(name, "two\n");
                          WriteStandardOutput("three\n");
                      }),
                      0)
                << name;
            ASSERT_EQ(::stat(log.c_str(), &after), 0);
            EXPECT_EQ(after.st_ino, before.st_ino);
            EXPECT_EQ(ReadWhole(log), std::string(how == O_APPEND ? "before\n" : "") + "one\ntwo\nthree\n")
                << name;
        }
    EXPECT_EQ(FilesIn(script.Directory()), 1U);
}

TEST(WholeFile, ADescriptorOfAnotherProcessTakesTheBytesBehindItsOwn) {
    Script script;
    const std::string log = script.MakeFile("log", "before\n");
    const int open = ::open(log.c_str(), O_WRONLY);
    const std::string name = "/proc/" + std::to_string(::getpid()) + "/fd/" + std::to_string(open);
    EXPECT_EQ(InChild([&] {
                  ::close(open);
                  WriteWhole(name, "after\n");
              }),
              0);
    ::close(open);
    EXPECT_EQ(ReadWhole(log), "before\nafter\n");
    EXPECT_EQ(ErrorOf([&] { WriteWhole("/proc/self/fd/987", "x"); }), ErrorText::PathNotFound);
    EXPECT_EQ(WhyNotWritable("/proc/self/fd/987"), ErrorText::PathNotFound);
}

TEST(FileTargets, ASpellingIsNoOtherFile) {
    Script script;
    const std::string folder = script.Directory();
    fs::create_directory(folder + "/sub");
    fs::create_symlink("sub", folder + "/linked");
    fs::create_symlink("sub/new", folder + "/link");
    const std::string one = ResolvedPath(folder + "/sub/new");
    for (const char* other : {"/sub/../sub/new", "//sub/./new", "/linked/new", "/link"})
        EXPECT_EQ(ResolvedPath(folder + other), one) << other;
    EXPECT_NE(ResolvedPath(folder + "/sub/New"), one);
    EXPECT_NE(ResolvedPath(folder + "/new"), one);
    EXPECT_EQ(ResolvedPath("/x"), "/x");
    EXPECT_EQ(ResolvedPath("name").substr(0, 1), "/");
    EXPECT_EQ(ResolvedPath(folder + "/none/x"), folder + "/none/x");
}

TEST(FileTargets, AFileIsKnownUnderEachOfItsNames) {
    Script script;
    const std::string file = script.MakeFile("a", "x");
    fs::create_hard_link(file, script.Directory() + "/hard");
    fs::create_symlink("hard", script.Directory() + "/soft");
    EXPECT_TRUE(IsSameFile(file, script.Directory() + "/hard"));
    EXPECT_TRUE(IsSameFile(script.Directory() + "/soft", file));
    EXPECT_FALSE(IsSameFile(file, script.MakeFile("b", "x")));
    EXPECT_FALSE(IsSameFile(file, script.Directory() + "/none"));
    EXPECT_FALSE(IsSameFile(script.Directory() + "/none", script.Directory() + "/none"));
    const std::string link = script.Directory() + "/sedeq";
    fs::create_symlink(fs::read_symlink("/proc/self/exe"), link);
    EXPECT_TRUE(IsThisProgram(link));
    EXPECT_FALSE(IsThisProgram(file));
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
              "Path/File access error: File name too long");
    EXPECT_EQ(FilesIn(script.Directory()), 4U);
}

TEST(WholeFile, AFailedWriteLeavesEverythingAsItWas) {
    Script script;
    EXPECT_EQ(ErrorOf([&] { WriteWhole(script.Directory() + "/none/out", "x"); }), ErrorText::PathNotFound);
    EXPECT_EQ(ErrorOf([&] { WriteWhole(script.Directory(), "x"); }), "it is a directory");
    EXPECT_EQ(ErrorOf([&] { WriteWhole("", "x"); }), ErrorText::PathNotFound);
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
    EXPECT_EQ(WhyNotWritable(script.Directory()), "it is a directory");
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
