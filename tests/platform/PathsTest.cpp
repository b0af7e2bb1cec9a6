// Taking paths of this system and of others apart.
#include "platform/Paths.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

TEST(Paths, TheTitleStandsBehindTheLastSeparator) {
    EXPECT_EQ(FileTitle("/data/run 7/00012.RA1"), "00012.RA1");
    EXPECT_EQ(FileTitle("C:\\xlawin\\xladata\\00012.RA1"), "00012.RA1");
    EXPECT_EQ(FileTitle("C:\\data/mixed\\00012.RA1"), "00012.RA1");
    EXPECT_EQ(FileTitle("00012.RA1"), "00012.RA1");
    EXPECT_EQ(FileTitle("/data/"), "");
    EXPECT_EQ(FileTitle(""), "");
    EXPECT_EQ(FileTitle("/data/M\xFCller.fit"), "M\xFCller.fit"); // any letters
}

TEST(Paths, TheDirectoryStandsBeforeIt) {
    EXPECT_EQ(DirectoryOf("/data/run 7/00012.RA1"), "/data/run 7");
    EXPECT_EQ(DirectoryOf("C:\\xlawin\\00012.RA1"), "C:\\xlawin");
    EXPECT_EQ(DirectoryOf("run7\\old/00012.RA1"), "run7\\old");
    EXPECT_EQ(DirectoryOf("/data/"), "/data");
    EXPECT_EQ(DirectoryOf("00012.RA1"), "");
    EXPECT_EQ(DirectoryOf(""), "");
}

TEST(Paths, ARootKeepsItsSeparator) {
    EXPECT_EQ(DirectoryOf("/00012.RA1"), "/");
    EXPECT_EQ(DirectoryOf("\\00012.RA1"), "\\");
    EXPECT_EQ(DirectoryOf("C:\\00012.RA1"), "C:\\");
    EXPECT_EQ(DirectoryOf("/"), "/");
    EXPECT_EQ(DirectoryOf("ab/c"), "ab"); // no drive letter
}

TEST(Paths, JoiningPutsOneSeparatorBetween) {
    const std::string own(1, PathSeparator);
    EXPECT_EQ(JoinPath("/data", "a.fit"), "/data" + own + "a.fit");
    EXPECT_EQ(JoinPath("/data/", "a.fit"), "/data/a.fit");
    EXPECT_EQ(JoinPath("C:\\data\\", "a.fit"), "C:\\data\\a.fit");
    EXPECT_EQ(JoinPath("/", "a.fit"), "/a.fit");
    EXPECT_EQ(JoinPath("", "a.fit"), "a.fit");
    EXPECT_EQ(JoinPath("/data", ""), "/data" + own);
}

TEST(Paths, WhatWasTakenApartJoinsAgain) {
    for (const std::string path : {"/a/b/c.fit", "/c.fit", "C:\\c.fit", "c.fit", "/a b/c d.fit"})
        EXPECT_EQ(JoinPath(DirectoryOf(path), FileTitle(path)), path);
}

TEST(Paths, AbsolutePathsOfEitherKindAreKnown) {
    for (const char* path : {"/", "/data", "\\data", "\\\\server\\share", "C:\\data", "c:/data"})
        EXPECT_TRUE(IsAbsolutePath(path)) << path;
    for (const char* path : {"", "data", "data/a.fit", "C:", "C:data", "./a", "..\\a"})
        EXPECT_FALSE(IsAbsolutePath(path)) << path;
}

TEST(Paths, EndingIsThatOfTheFileInSmallLetters) {
    EXPECT_EQ(EndingOf("/a/b/Figure.SVG"), "svg");
    EXPECT_EQ(EndingOf("C:\\run.1\\scan"), ""); // the point of a folder
    EXPECT_EQ(EndingOf("a.tar.gz"), "gz");
    EXPECT_EQ(EndingOf("a."), "");
    EXPECT_EQ(EndingOf(""), "");
}

} // namespace
} // namespace Quillon
