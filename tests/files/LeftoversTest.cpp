// What programs that died have left beside the files they were writing, and the lock that copies of the
// program share.
#include "files/Leftovers.h"
#include "files/Descriptor.h"
#include "files/FileLock.h"
#include "files/ReadWhole.h"
#include "files/WriteWhole.h"

#include "tests/support/ChildProcess.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

// The number of a process that has gone.
pid_t DeadProcess() {
    const pid_t child = StartChild([] {});
    EndOfChild(child);
    return child;
}

std::string LeftBy(pid_t process, int n = 1) {
    return ".quillon-" + std::to_string(process) + "-" + std::to_string(n);
}

TEST(Leftovers, OfDeadProcessesGoWithTheNextSave) {
    Script script;
    const std::string dead = script.MakeFile(LeftBy(DeadProcess()), "half a f");
    const std::string ours =
        script.MakeFile(LeftBy(::getpid(), 2000000000), "of an earlier process of our number");
    WriteWhole(script.Directory() + "/fit.quil", "whole");
    EXPECT_FALSE(fs::exists(dead));
    EXPECT_FALSE(fs::exists(ours));
}

TEST(Leftovers, OfTheLivingAndOfOthersStay) {
    Script script;
    const pid_t living = StartChild([] { ::pause(); });
    const pid_t dead = DeadProcess();
    const std::string number = std::to_string(dead);
    std::vector<std::string> kept = {LeftBy(living),
                                     ".quillon-" + number,
                                     ".quillon-" + number + "-",
                                     LeftBy(dead) + "x",
                                     "quillon-" + number + "-1",
                                     ".quillon--1",
                                     ".quillon-" + number + "x-1",
                                     ".QUILLON.ini.lock"};
    for (const std::string& name : kept)
        script.MakeFile(name, "");
    fs::create_symlink("fit.quil", script.Directory() + "/" + LeftBy(dead, 7));
    fs::create_directory(script.Directory() + "/" + LeftBy(dead, 8));
    WriteWhole(script.Directory() + "/fit.quil", "whole");
    ::kill(living, SIGKILL);
    EndOfChild(living);
    for (const std::string& name : kept)
        EXPECT_TRUE(fs::exists(script.Directory() + "/" + name)) << name;
    EXPECT_TRUE(fs::is_symlink(script.Directory() + "/" + LeftBy(dead, 7)));
    EXPECT_TRUE(fs::exists(script.Directory() + "/" + LeftBy(dead, 8)));
}

// On a shared folder the process may live on another machine, where its number means something else.
TEST(Leftovers, WhatIsMarkedAsInUseStays) {
    Script script;
    const std::string path = script.MakeFile(LeftBy(DeadProcess()), "being written elsewhere");
    const Descriptor elsewhere(::open(path.c_str(), O_WRONLY));
    MarkInUse(elsewhere.Number);
    RemoveLeftovers(script.Directory() + "/");
    EXPECT_TRUE(fs::exists(path));
}

TEST(FileLocks, ReadsAndWritesOfSeveralCopiesLoseNothing) {
    Script script;
    const std::string path = script.MakeFile("QUILLON.ini", "");
    const auto adder = [&](char letter) {
        return StartChild([&path, letter] {
            for (int n = 0; n < 50; ++n) {
                const std::shared_ptr<void> hold = HoldFile(path);
                if (!hold) ::_exit(1);
                const std::string before = ReadWhole(path);
                ::usleep(200); // long enough for the others to read as well
                WriteWhole(path, before + letter);
            }
        });
    };
    const pid_t one = adder('a'), two = adder('b'), three = adder('c');
    EXPECT_EQ(EndOfChild(one) + EndOfChild(two) + EndOfChild(three), 0);
    const std::string all = ReadWhole(path);
    for (const char letter : {'a', 'b', 'c'})
        EXPECT_EQ(std::count(all.begin(), all.end(), letter), 50);
}

TEST(FileLocks, ACopyThatDiesOrHangsStopsNobody) {
    Script script;
    const std::string path = script.MakeFile("QUILLON.ini", "");
    EXPECT_EQ(InChild([&] {
                  const std::shared_ptr<void> hold = HoldFile(path);
                  ::raise(SIGKILL);
              }),
              SIGKILL);
    EXPECT_NE(HoldFile(path), nullptr);
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t hung = StartChild([&] {
        const std::shared_ptr<void> hold = HoldFile(path);
        if (::write(ends[1], "x", 1) == 1) ::pause();
    });
    char byte = 0;
    EXPECT_EQ(::read(ends[0], &byte, 1), 1);
    EXPECT_EQ(HoldFile(path), nullptr);
    ::kill(hung, SIGKILL);
    EndOfChild(hung);
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST(FileLocks, OneThatIsWantedAtOnceWaitsForNobodyAndEndsWithItsProcess) {
    Script script;
    const std::string path = script.MakeFile("session.quil", "");
    EXPECT_EQ(InChild([&] {
                  const std::shared_ptr<void> hold = HoldFileNow(path);
                  if (!hold || HoldFileNow(path)) ::_exit(1); // nor is it given twice
                  ::raise(SIGKILL);
              }),
              SIGKILL);
    const std::shared_ptr<void> hold = HoldFileNow(path);
    EXPECT_NE(hold, nullptr);
    EXPECT_EQ(InChild([&] {
                  if (HoldFileNow(path)) ::_exit(1);
              }),
              0);
}

TEST(FileLocks, AFolderThatIsNotThereHasNone) {
    Script script;
    EXPECT_EQ(HoldFile(script.Directory() + "/none/QUILLON.ini"), nullptr);
    EXPECT_EQ(HoldFile("/dev/null/QUILLON.ini"), nullptr);
}

} // namespace
} // namespace Quillon
