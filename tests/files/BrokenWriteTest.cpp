// Writes that are cut off: at each step, at any byte, by an error or by the death of the program. What stands
// under the name is the whole former file or the whole new one.
#include "files/FileStep.h"
#include "files/ReadWhole.h"
#include "files/WriteWhole.h"

#include "tests/support/ChildProcess.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <random>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

std::set<std::string> NamesIn(const std::string& directory) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory))
        names.insert(entry.path().filename().string());
    return names;
}

const std::string Former = "the former file " + std::string(3000, 'f');
const std::string Latter = std::string(200000, 'n') + " the new one"; // several pieces

// Both ways of a write: a file without a name, and, where the file system has no such files, one with.
struct BrokenWrites : testing::TestWithParam<bool> {
    BrokenWrites() : Path(TheScript.MakeFile("target", Former)) {}
    ~BrokenWrites() override { BeforeFileStep = nullptr; }
    // Asks more before each step; the first file to be made without a name is refused when it must have one.
    static void Ask(const std::function<int(FileStep)>& more) {
        bool first = !GetParam();
        BeforeFileStep = [first, more](FileStep step) mutable {
            if (step == FileStep::Make && first) {
                first = false;
                return EOPNOTSUPP;
            }
            return more(step);
        };
    }
    std::vector<FileStep> Steps() {
        std::vector<FileStep> steps;
        Ask([&](FileStep step) {
            steps.push_back(step);
            return 0;
        });
        WriteWhole(Path, Latter);
        BeforeFileStep = nullptr;
        WriteWholeFile(Path, Former);
        return steps;
    }
    Script TheScript;
    std::string Path;
    int Busy = 0; // names taken over so far
};

INSTANTIATE_TEST_SUITE_P(EitherWay, BrokenWrites, testing::Bool(),
                         [](const auto& way) { return way.param ? "Nameless" : "Named"; });

TEST_P(BrokenWrites, TheStepsStandInAnOrderThatLosesNothing) {
    using S = FileStep;
    std::vector<S> steps = Steps();
    // Where the directory of the tests knows no nameless files, both ways are the same.
    std::erase(steps, S::Name);
    EXPECT_EQ(steps, (std::vector<S>{S::Make, S::Write, S::Write, S::Write, S::Write, S::Keep, S::Flush,
                                     S::Close, S::Replace, S::FlushName}));
}

// Without the flush a loss of power leaves a file of the new name that is empty.
TEST_P(BrokenWrites, ANewFileIsOnTheDiskBeforeItTakesItsName) {
    using S = FileStep;
    std::vector<S> steps;
    Ask([&](FileStep step) {
        if (step != S::Write && step != S::Name) steps.push_back(step);
        return 0;
    });
    WriteWhole(TheScript.Directory() + "/new", Latter);
    EXPECT_EQ(steps, (std::vector<S>{S::Make, S::Flush, S::Close, S::Replace, S::FlushName}));
}

TEST_P(BrokenWrites, KilledAtEachStep) {
    const std::vector<FileStep> steps = Steps();
    Path = TheScript.MakeFile("killed/target", Former); // no save of this process's own yet
    const auto names = [&] { return NamesIn(TheScript.Directory() + "/killed"); };
    bool replaced = false, left = false;
    for (std::size_t n = 0; n < steps.size(); ++n) {
        const int signal = InChild([&] {
            std::size_t at = 0;
            Ask([&](FileStep) {
                if (at++ == n) ::raise(SIGKILL);
                return 0;
            });
            WriteWhole(Path, Latter);
        });
        EXPECT_EQ(signal, SIGKILL);
        EXPECT_EQ(ReadWhole(Path), replaced ? Latter : Former) << "killed before step " << n;
        replaced |= steps[n] == FileStep::Replace;
        left |= names().size() > 1;
        BeforeFileStep = nullptr;
        EXPECT_EQ(InChild([&] { WriteWhole(Path, replaced ? Latter : Former); }), 0);
        EXPECT_EQ(names(), std::set<std::string>{"target"}) << "killed before step " << n;
    }
    EXPECT_TRUE(left); // there was something to be removed
    EXPECT_TRUE(replaced);
}

TEST_P(BrokenWrites, AnErrorAtEachStepIsToldAndNothingIsLeft) {
    const std::vector<FileStep> steps = Steps();
    const std::pair<int, const char*> errors[] = {{ENOSPC, ErrorText::DiskFull},
                                                  {EDQUOT, ErrorText::DiskFull},
                                                  {EFBIG, ErrorText::DiskFull},
                                                  {EACCES, ErrorText::PermissionDenied},
                                                  {EROFS, ErrorText::PermissionDenied},
                                                  {ENOENT, ErrorText::PathNotFound},
                                                  {EIO, "Path/File access error: Input/output error"}};
    for (const auto& [number, text] : errors)
        for (std::size_t n = 0; n < steps.size(); ++n) {
            std::size_t at = 0;
            Ask([&, error = number](FileStep) { return at++ == n ? error : 0; });
            std::string told;
            try {
                WriteWhole(Path, Latter);
            } catch (const RuntimeError& error) {
                told = error.Text;
            }
            // A name that cannot be given leaves the other way; the name of a complete file has been given.
            const bool done = steps[n] == FileStep::Name || steps[n] == FileStep::FlushName;
            EXPECT_EQ(told, done ? "" : text) << "step " << n;
            EXPECT_EQ(ReadWhole(Path), done ? Latter : Former) << "step " << n;
            EXPECT_EQ(NamesIn(TheScript.Directory()), std::set<std::string>{"target"}) << "step " << n;
            WriteWholeFile(Path, Former);
        }
}

TEST_P(BrokenWrites, AnInterruptedStepIsTakenAgain) {
    int interrupts = 0;
    Ask([&](FileStep step) { return step == FileStep::Write && interrupts++ % 2 == 0 ? EINTR : 0; });
    WriteWhole(Path, Latter);
    EXPECT_EQ(ReadWhole(Path), Latter);
    EXPECT_EQ(interrupts, 8);
}

// Where the name cannot be taken over, as that of a file mounted by itself, which the system calls busy.
TEST_P(BrokenWrites, AFileThatIsAMountPointIsWrittenInPlace) {
    struct stat before {
    }, after{};
    ASSERT_EQ(::stat(Path.c_str(), &before), 0);
    const auto busy = [&](FileStep step) {
        const bool ofTarget = step == FileStep::Replace && !fs::exists(Path + ".former");
        if (ofTarget && ++Busy == 1) return EBUSY;
        return 0;
    };
    for (const std::string& bytes : {Latter, Former}) { // longer, then shorter
        Busy = 0;
        Ask(busy);
        WriteWhole(Path, bytes);
        EXPECT_EQ(ReadWhole(Path), bytes);
    }
    ASSERT_EQ(::stat(Path.c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(NamesIn(TheScript.Directory()), std::set<std::string>{"target"});
}

TEST_P(BrokenWrites, AMountPointThatCannotBeWrittenGetsItsFormerBytesBack) {
    int writes = -1; // of the target itself, once the copy stands
    const auto failing = [&](int from, int to) {
        Busy = 0, writes = -1;
        Ask([&, from, to](FileStep step) {
            if (step == FileStep::Replace && ++Busy == 1) return EBUSY;
            if (step == FileStep::FlushName || Busy < 2 || step != FileStep::Write) return 0;
            ++writes;
            return writes >= from && writes < to ? ENOSPC : 0;
        });
        try {
            WriteWhole(Path, Latter);
        } catch (const RuntimeError& error) {
            return error.Text;
        }
        return std::string("no error");
    };
    EXPECT_EQ(failing(2, 3), ErrorText::DiskFull);
    EXPECT_EQ(ReadWhole(Path), Former);
    EXPECT_EQ(NamesIn(TheScript.Directory()), std::set<std::string>{"target"});
    const std::string copy = Path + ".former";
    EXPECT_EQ(failing(2, 99), "Disk full; what stood there before is in " + copy);
    EXPECT_EQ(ReadWhole(copy), Former);
    EXPECT_EQ(failing(99, 99), "no error"); // and the copy stays what it is: all that is left of the former
    EXPECT_EQ(ReadWhole(copy), Former);
    EXPECT_EQ(ReadWhole(Path), Latter);
    EXPECT_EQ(NamesIn(TheScript.Directory()), (std::set<std::string>{"target", "target.former"}));
}

TEST_P(BrokenWrites, AFileSystemWithoutADiskIsNoFailure) {
    Ask([](FileStep step) { return step == FileStep::Flush || step == FileStep::FlushName ? EINVAL : 0; });
    WriteWhole(Path, Latter);
    EXPECT_EQ(ReadWhole(Path), Latter);
}

TEST_P(BrokenWrites, KilledAtAnyByte) {
    std::mt19937 random(7);
    std::vector<unsigned long> places{0, 1, 4096, 65535, 65536, 65537, Latter.size() - 1};
    for (int i = 0; i < 40; ++i)
        places.push_back(random() % Latter.size());
    for (const unsigned long place : places) {
        EXPECT_EQ(InChild([&] {
                      Ask([](FileStep) { return 0; });
                      DieAtByte(place);
                      WriteWhole(Path, Latter);
                  }),
                  SIGXFSZ);
        EXPECT_EQ(ReadWhole(Path), Former) << place;
    }
    EXPECT_EQ(InChild([&] {
                  DieAtByte(Latter.size());
                  WriteWhole(Path, Latter);
              }),
              0);
    EXPECT_EQ(ReadWhole(Path), Latter);
}

TEST_P(BrokenWrites, NoRoomAtAnyByte) {
    for (const unsigned long place : {0UL, 1UL, 65536UL, 100000UL, Latter.size() - 1}) {
        EXPECT_EQ(InChild([&] {
                      Ask([](FileStep) { return 0; });
                      FailAtByte(place);
                      try {
                          WriteWhole(Path, Latter);
                      } catch (const RuntimeError& error) {
                          ::_exit(error.Text == ErrorText::DiskFull ? 0 : 1);
                      }
                      ::_exit(2);
                  }),
                  0);
        EXPECT_EQ(ReadWhole(Path), Former);
        EXPECT_EQ(NamesIn(TheScript.Directory()), std::set<std::string>{"target"});
    }
}

// Version n of a file that tells whether it is whole.
std::string Version(unsigned n) {
    return std::string(50000, static_cast<char>('a' + n % 26));
}
bool IsVersion(const std::string& bytes) {
    return bytes.size() == 50000 && bytes.find_first_not_of(bytes[0]) == std::string::npos;
}

TEST_P(BrokenWrites, KilledAtRandomMoments) {
    std::mt19937 random(20200421);
    WriteWhole(Path, Version(0));
    for (int round = 0; round < 25; ++round) {
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        const pid_t child = StartChild([&] {
            for (unsigned n = 0;; ++n) {
                Ask([](FileStep) { return 0; });
                WriteWhole(Path, Version(n));
                if (::write(ends[1], "x", 1) != 1) ::_exit(1);
            }
        });
        // The writes go on while these bytes arrive; the kill meets one of them anywhere.
        char byte = 0;
        for (auto n = random() % 4; n-- > 0;)
            ASSERT_EQ(::read(ends[0], &byte, 1), 1);
        random.discard(random() % 200000);
        ::kill(child, SIGKILL);
        EXPECT_EQ(EndOfChild(child), SIGKILL);
        ::close(ends[0]);
        ::close(ends[1]);
        EXPECT_TRUE(IsVersion(ReadWhole(Path))) << "round " << round;
    }
}

TEST_P(BrokenWrites, TwoProcessesAtOnceLeaveOneWholeFile) {
    WriteWhole(Path, Version(0));
    const auto writer = [&](unsigned first) {
        return StartChild([&, first] {
            for (unsigned n = 0; n < 60; ++n) {
                Ask([](FileStep) { return 0; });
                WriteWhole(Path, Version(first + 2 * n));
            }
        });
    };
    const pid_t one = writer(1), two = writer(2);
    for (int i = 0; i < 300; ++i)
        EXPECT_TRUE(IsVersion(ReadWhole(Path)));
    EXPECT_EQ(EndOfChild(one), 0);
    EXPECT_EQ(EndOfChild(two), 0);
    const std::string left = ReadWhole(Path);
    EXPECT_TRUE(left == Version(1 + 2 * 59) || left == Version(2 + 2 * 59)); // the last of either
    EXPECT_EQ(NamesIn(TheScript.Directory()), std::set<std::string>{"target"});
}

TEST_P(BrokenWrites, LeftoversUnderTheNextNamesAreGoneRound) {
    unsigned long last = 0;
    Ask([&](FileStep step) {
        if (step != FileStep::Replace) return 0;
        for (const std::string& name : NamesIn(TheScript.Directory()))
            if (name.starts_with(".quillon-")) last = std::stoul(name.substr(name.rfind('-') + 1));
        return 0;
    });
    WriteWhole(Path, Latter);
    ASSERT_GT(last, 0U);
    for (unsigned long n = last + 1; n <= last + 20; ++n)
        TheScript.MakeFile(".quillon-" + std::to_string(::getpid()) + "-" + std::to_string(n), "left");
    Ask([](FileStep) { return 0; });
    WriteWhole(Path, Former);
    EXPECT_EQ(ReadWhole(Path), Former);
    EXPECT_EQ(NamesIn(TheScript.Directory()).size(), 21U);
}

TEST(CheckedWrites, AWriterInPlaceIsSeenByTheseTests) {
    // What the tests above are for: a writer that empties the file first.
    Script script;
    const std::string path = script.MakeFile("target", Former);
    EXPECT_EQ(InChild([&] {
                  DieAtByte(1000);
                  FILE* file = std::fopen(path.c_str(), "wb");
                  std::fwrite(Latter.data(), 1, Latter.size(), file);
                  std::fclose(file);
              }),
              SIGXFSZ);
    EXPECT_NE(ReadWhole(path), Former);
}

} // namespace
} // namespace Quillon
