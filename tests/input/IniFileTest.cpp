// Profile files: what is found, and what a write leaves as it was.
#include "input/IniFile.h"

#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <random>

namespace Quillon {
namespace {

const std::string Sample = "; settings\r\n"
                           "[gnllsq]\r\n"
                           "ConfidenceLevel=0.683\r\n"
                           "  Max Iterations = 40 \r\n"
                           "Empty=\r\n"
                           "\r\n"
                           "[QUILLON]\r\n"
                           "MWUnits=Buoyant\r\n"
                           "Path=\"/data/run 7 \"\r\n"
                           "# MWUnits=False\r\n"
                           "no equals sign here\r\n"
                           "Formula=a=b;c\r\n";

TEST(IniFile, FindsKeysWithoutRegardToCaseAndBlanks) {
    EXPECT_EQ(IniValue(Sample, "GNLLSQ", "confidencelevel"), "0.683");
    EXPECT_EQ(IniValue(Sample, "gnllsq", "MAX ITERATIONS"), "40");
    EXPECT_EQ(IniValue(Sample, "Quillon", "mwunits"), "Buoyant");
    EXPECT_EQ(IniValue(Sample, " quillon ", " MWUNITS "), "Buoyant");
}

TEST(IniFile, MissingKeyOrSectionGivesTheDefault) {
    EXPECT_EQ(IniValue(Sample, "gnllsq", "MWUnits", "none"), "none");
    EXPECT_EQ(IniValue(Sample, "other", "MWUnits", "none"), "none");
    EXPECT_EQ(IniValue("", "gnllsq", "MWUnits", "none"), "none");
    EXPECT_EQ(IniValue("[gnllsq", "gnllsq", "x", "none"), "none");
}

TEST(IniFile, AnEmptyValueIsNoMissingOne) {
    EXPECT_EQ(IniValue(Sample, "gnllsq", "Empty", "none"), "");
}

TEST(IniFile, ValueKeepsEverythingBehindTheFirstEqualsSign) {
    EXPECT_EQ(IniValue(Sample, "quillon", "Formula"), "a=b;c");
}

TEST(IniFile, OnePairOfQuotesIsTakenOff) {
    EXPECT_EQ(IniValue(Sample, "quillon", "Path"), "/data/run 7 ");
    EXPECT_EQ(IniValue("[a]\nb='x'\nc=\"\"\nd=\"\nz=''x''\n", "a", "b"), "x");
    EXPECT_EQ(IniValue("[a]\nb='x'\nc=\"\"\nd=\"\nz=''x''\n", "a", "c", "none"), "");
    EXPECT_EQ(IniValue("[a]\nb='x'\nc=\"\"\nd=\"\nz=''x''\n", "a", "d"), "\"");
    EXPECT_EQ(IniValue("[a]\nb='x'\nc=\"\"\nd=\"\nz=''x''\n", "a", "z"), "'x'");
}

TEST(IniFile, CommentsAndBareLinesAreNoKeys) {
    EXPECT_EQ(IniValue("[a]\n;k=1\n#k=2\nk\nk=3\n", "a", "k"), "3");
}

TEST(IniFile, FirstOfTwoKeysAndAnyOfTwoSectionsCount) {
    const std::string twice = "[a]\nk=1\nk=2\n[b]\nk=3\n[A]\nm=4\nk=5\n";
    EXPECT_EQ(IniValue(twice, "a", "k"), "1");
    EXPECT_EQ(IniValue(twice, "a", "m"), "4");
    EXPECT_EQ(WithIniValue(twice, "a", "m", "9"), "[a]\nk=1\nk=2\n[b]\nk=3\n[A]\nm=9\nk=5\n");
    EXPECT_EQ(WithIniValue(twice, "a", "n", "9"), "[a]\nk=1\nk=2\nn=9\n[b]\nk=3\n[A]\nm=4\nk=5\n");
}

TEST(IniFile, WriteChangesOneLineAndNothingElse) {
    std::string expected = Sample;
    const std::size_t at = expected.find("Buoyant");
    expected.replace(at, 7, "True");
    EXPECT_EQ(WithIniValue(Sample, "Quillon", "MWunits", "True"), expected);
}

TEST(IniFile, NewKeyGoesBehindTheLastKeyOfItsSection) {
    std::string expected = Sample;
    expected.insert(expected.find("Empty=\r\n") + 8, "YieldInterval=200\r\n");
    EXPECT_EQ(WithIniValue(Sample, "gnllsq", "YieldInterval", "200"), expected);
}

TEST(IniFile, NewSectionGoesToTheEnd) {
    EXPECT_EQ(WithIniValue(Sample, "File MRU", "RecentFile1", "/a/b.fit"),
              Sample + "[File MRU]\r\nRecentFile1=/a/b.fit\r\n");
    EXPECT_EQ(WithIniValue("", "s", "k", "v"), "[s]\nk=v\n");
}

TEST(IniFile, FileWithoutALastLineEndIsContinuedProperly) {
    EXPECT_EQ(WithIniValue("[s]", "s", "k", "v"), "[s]\nk=v\n");
    EXPECT_EQ(WithIniValue("[s]\r\na=1", "s", "k", "v"), "[s]\r\na=1\r\nk=v\r\n");
    EXPECT_EQ(WithIniValue("[s]\na=1", "t", "k", "v"), "[s]\na=1\n[t]\nk=v\n");
    EXPECT_EQ(WithIniValue("[s]\na=1", "s", "a", "2"), "[s]\na=2");
}

TEST(IniFile, ByteOrderMarkHidesNoSection) {
    const std::string marked = "\xEF\xBB\xBF[s]\nk=v\n";
    EXPECT_EQ(IniValue(marked, "s", "k"), "v");
    EXPECT_EQ(WithIniValue(marked, "s", "k", "w"), "\xEF\xBB\xBF[s]\nk=w\n");
}

TEST(IniFile, ValuesComeBackAsTheyWereWritten) {
    for (const std::string value :
         {"", " ", " x", "x ", "\"x\"", "'x'", "\"", "a;b", "#1", "=", "\xE9\xFF", "[s]"})
        EXPECT_EQ(IniValue(WithIniValue(Sample, "quillon", "New", value), "quillon", "New", "none"), value);
}

TEST(IniFile, LineBreaksInAValueNeverMakeASecondLine) {
    const std::string written = WithIniValue("[s]\nk=1\n", "s", "k", "a\n[t]\r\nm=2");
    EXPECT_EQ(IniValue(written, "s", "k"), "a [t]  m=2");
    EXPECT_EQ(IniValue(written, "t", "m", "none"), "none");
}

TEST(IniFile, RandomBytesAreReadAndWrittenWithoutHarm) {
    std::mt19937 random(20200421);
    const std::string letters = "[]=;#\"' \t\r\n\xEF\xBB\xBFskSKv";
    for (int round = 0; round < 3000; ++round) {
        std::string bytes;
        for (auto n = random() % 40; n > 0; --n)
            bytes += letters[random() % letters.size()];
        const std::string written = WithIniValue(bytes, "s", "k", "value");
        EXPECT_EQ(IniValue(written, "s", "k"), "value");
        EXPECT_EQ(WithIniValue(written, "S", "K", "value"), written);
        EXPECT_EQ(IniValue(written, "v", "v", "none"), IniValue(bytes, "v", "v", "none"));
    }
}

TEST(IniFile, FilesAreMadeReadAndKeptWhole) {
    Script script;
    const std::string path = script.Directory() + "/quillon.ini";
    EXPECT_EQ(ReadIniFile(path), "");
    WriteIniValue(path, "gnllsq", "MaxIterations", "40");
    WriteIniValue(path, "gnllsq", "maxiterations", "60");
    EXPECT_EQ(ReadIniFile(path), "[gnllsq]\nMaxIterations=60\n");
}

TEST(IniFile, SeveralValuesAreWrittenAtOneTime) {
    Script script;
    const std::string path = script.MakeFile("quillon.ini", "; mine\r\n[s]\r\nb = 1\r\nc=2\r\n");
    int writes = 0;
    const auto write = Host.WriteFile;
    Host.WriteFile = [&](const std::string& file, const std::string& bytes) {
        ++writes;
        write(file, bytes);
    };
    WriteIniValues(path, "S", {{"a", "10"}, {"B", "11"}, {"d", "12"}});
    EXPECT_EQ(writes, 1);
    EXPECT_EQ(ReadIniFile(path), "; mine\r\n[s]\r\nb =11\r\nc=2\r\na=10\r\nd=12\r\n");
}

TEST(IniFile, AFileThatCannotBeReadIsNotOverwritten) {
    Script script;
    const std::string path = script.MakeFile("quillon.ini", "[s]\nk=1\n");
    Host.ReadFile = [](const std::string&) -> std::string { RaiseError(ErrorText::FileAccess); };
    EXPECT_THROW(WriteIniValue(path, "s", "k", "2"), RuntimeError);
    EXPECT_EQ(ReadWholeFile(path), "[s]\nk=1\n");
}

// It was taken for an empty file, and the next setting that was saved became the only one.
TEST(IniFiles, AFileThatCannotBeLookedAtIsNotTakenForAnEmptyOne) {
    Script script;
    const std::string path = script.MakeFile("x.ini", "[s]\na=1\n");
    Host.FileExists = [](const std::string&) { return false; };
    EXPECT_EQ(ReadIniFile(path), "[s]\na=1\n");
    Host.ReadFile = [](const std::string&) -> std::string { RaiseError(ErrorText::PermissionDenied); };
    bool written = false;
    Host.WriteFile = [&](const std::string&, const std::string&) { written = true; };
    EXPECT_THROW(WriteIniValue(path, "s", "b", "2"), RuntimeError);
    EXPECT_FALSE(written);
}

TEST(IniFiles, WhatIsTooLargeForSettingsIsRefused) {
    Script script;
    const std::string path = script.MakeFile("x.ini", std::string(LargestIni, ';'));
    EXPECT_EQ(ReadIniFile(path).size(), LargestIni);
    script.MakeFile("x.ini", std::string(LargestIni + 1, ';'));
    EXPECT_THROW(ReadIniFile(path), RuntimeError);
}

TEST(IniFiles, AreHeldFromTheReadingToTheWriting) {
    Script script;
    const std::string path = script.MakeFile("x.ini", "[s]\na=1\n");
    std::string order;
    Host.HoldFile = [&](const std::string& held) {
        EXPECT_EQ(held, path);
        order += "hold ";
        return std::shared_ptr<void>(&order, [](void* text) { *static_cast<std::string*>(text) += "free "; });
    };
    const auto read = Host.ReadFile;
    Host.ReadFile = [&, read](const std::string& file) {
        order += "read ";
        return read(file);
    };
    Host.WriteFile = [&](const std::string&, const std::string&) { order += "write "; };
    WriteIniValue(path, "s", "b", "2");
    EXPECT_EQ(order, "hold read write free ");
}

} // namespace
} // namespace Quillon
