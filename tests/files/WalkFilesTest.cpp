// Walks over folders and archives: what is met, and what hostile ones come to.
#include "files/WalkFiles.h"
#include "tests/support/ArchiveMaker.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

struct Met {
    std::vector<std::string> Names;
    std::map<std::string, std::string> Bytes;
    std::vector<PassedFile> Passed;
    std::string Error;

    bool HasPassed(const std::string& name, const std::string& why) const {
        for (const PassedFile& file : Passed)
            if (file.Name == name && file.Why == why) return true;
        return false;
    }
};

Met WalkAll(const std::string& place) {
    Met met;
    try {
        met.Passed = WalkFiles(place, [&](const MetFile& file) {
            met.Names.push_back(file.Name);
            const std::string start(file.Start);
            met.Bytes[file.Name] = file.Whole();
            EXPECT_TRUE(met.Bytes[file.Name].starts_with(start)) << file.Name;
            EXPECT_EQ(start.size(), std::min(met.Bytes[file.Name].size(), StartOfFile));
        });
    } catch (const RuntimeError& error) {
        met.Error = error.Text;
    }
    return met;
}

Met WalkBytes(Script& script, const std::string& bytes) {
    return WalkAll(script.MakeFile("archive", bytes));
}

std::string LongText(std::size_t length) {
    std::string text(length, 'x');
    for (std::size_t i = 0; i < length; i += 7)
        text[i] = static_cast<char>('a' + i % 23);
    return text;
}

TEST(WalkFolder, MeetsAllFilesBelowSortedWithAllTheirBytes) {
    Script script;
    const std::string top = script.Directory() + "/run";
    fs::create_directories(top + "/b/c");
    WriteWholeFile(top + "/z", "");
    WriteWholeFile(top + "/a", LongText(100000));
    WriteWholeFile(top + "/b/c/d", LongText(4096));
    const Met met = WalkAll(top);
    EXPECT_EQ(met.Names, (std::vector<std::string>{"a", "b/c/d", "z"}));
    EXPECT_EQ(met.Bytes.at("a"), LongText(100000));
    EXPECT_EQ(met.Bytes.at("b/c/d"), LongText(4096));
    EXPECT_TRUE(met.Passed.empty());
}

TEST(WalkFolder, LinksToFoldersPipesAndWhatCannotBeOpenedAreLeftAlone) {
    Script script;
    const std::string top = script.Directory() + "/run";
    fs::create_directories(top);
    WriteWholeFile(top + "/file", "1");
    fs::create_symlink(top, top + "/ring");
    fs::create_symlink(top + "/file", top + "/link");
    fs::create_symlink("nowhere", top + "/dead");
    ASSERT_EQ(::mkfifo((top + "/pipe").c_str(), 0600), 0); // nobody writes: a plain open would wait for ever
    const Met met = WalkAll(top);
    EXPECT_EQ(met.Names, (std::vector<std::string>{"file", "link"}));
    EXPECT_TRUE(met.HasPassed("ring", "a link to a folder"));
    EXPECT_TRUE(met.HasPassed("dead", "File not found"));
    EXPECT_TRUE(met.HasPassed("pipe", "neither a file nor a folder"));
}

TEST(WalkArchive, MeetsTheFilesOfEachKindInTheirOrder) {
    for (const char* kind : {"tar", "tar.gz", "zip"}) {
        Script script;
        const Met met = WalkBytes(
            script,
            ArchiveOf({{"run", "", 'd'}, {"run/b", LongText(70000)}, {"run/a", "short"}, {"run/empty", ""}},
                      kind));
        EXPECT_EQ(met.Error, "") << kind;
        EXPECT_EQ(met.Names, (std::vector<std::string>{"run/b", "run/a", "run/empty"})) << kind;
        EXPECT_EQ(met.Bytes.at("run/b"), LongText(70000)) << kind;
        EXPECT_EQ(met.Bytes.at("run/a"), "short") << kind;
    }
}

TEST(WalkArchive, NamesThatLeadOutLinksAndDevicesAreLeftAlone) {
    EXPECT_TRUE(StaysBelow("a/b..c/..d"));
    for (const char* name : {"", "/etc/x", "..", "a/../../x", "a\\..\\x", "C:\\x", "C:x", "\\x"})
        EXPECT_FALSE(StaysBelow(name)) << name;
    Script script;
    const Met met = WalkBytes(script, ArchiveOf({{"good", "1"},
                                                 {"../out", "2"},
                                                 {"/etc/out", "3"},
                                                 {"link", "", 'l', "/etc/passwd"},
                                                 {"hard", "", 'h', "good"},
                                                 {"device", "", 'c'},
                                                 {"last", "4"}},
                                                "tar"));
    EXPECT_EQ(met.Error, "");
    EXPECT_EQ(met.Names, (std::vector<std::string>{"good", "last"}));
    EXPECT_TRUE(met.HasPassed("../out", "its name leads out of the folder"));
    EXPECT_TRUE(met.HasPassed("/etc/out", "its name leads out of the folder"));
    EXPECT_TRUE(met.HasPassed("link", "a link"));
    EXPECT_TRUE(met.HasPassed("hard", "a link"));
    EXPECT_TRUE(met.HasPassed("device", "neither a file nor a folder"));
}

TEST(WalkArchive, EveryTruncationIsToldOrLosesNothing) {
    Script script;
    for (const char* kind : {"tar.gz", "zip"}) {
        const std::string whole = ArchiveOf({{"one", LongText(3000)}, {"two", LongText(2000)}}, kind);
        for (std::size_t length = 1; length < whole.size(); length += 13) {
            const Met met = WalkBytes(script, whole.substr(0, length));
            if (!met.Error.empty()) continue;
            EXPECT_EQ(met.Bytes.size(), 2U) << kind << " " << length;
        }
    }
    EXPECT_NE(WalkBytes(script, "no archive at all").Error, "");
    EXPECT_NE(WalkBytes(script, "").Error, "");
    EXPECT_EQ(WalkAll(script.Directory() + "/none").Error, "File not found");
}

TEST(WalkArchive, TooManyEntriesEndTheWalk) {
    std::vector<ArchiveEntry> entries;
    for (long i = 0; i <= MostMet; ++i)
        entries.push_back({std::to_string(i), "", i % 2 == 0 ? 'f' : 'd'});
    Script script;
    EXPECT_EQ(WalkBytes(script, ArchiveOf(entries, "tar.gz")).Error, "it holds more than 20000 entries");
    entries.pop_back();
    EXPECT_EQ(WalkBytes(script, ArchiveOf(entries, "tar.gz")).Error, "");
}

TEST(WalkArchive, AnEntryThatIsTooLargeIsToldWhereItIsAskedFor) {
    Script script;
    EXPECT_EQ(WalkLimits{}.OneFile, LargestMet);
    EXPECT_EQ(LargestMet, std::size_t{64} << 20U);
    WalkLimits limits;
    limits.OneFile = std::size_t{2} << 20U;
    const std::string bomb(limits.OneFile + 1, '\0');
    const std::string archive = script.MakeFile("bomb", ArchiveOf({{"big", bomb}, {"small", "1"}}, "tar.gz"));
    EXPECT_LT(fs::file_size(archive), 30000U);
    std::vector<std::string> told;
    const auto meet = [&](const MetFile& file) {
        try {
            file.Whole();
        } catch (const RuntimeError& error) {
            told.push_back(file.Name + ": " + error.Text);
        }
    };
    WalkArchive(archive, meet, limits);
    EXPECT_EQ(told, std::vector<std::string>{"big: it is larger than 2 MB"});
}

TEST(WalkArchive, WhatItUnpacksToIsCountedAlsoWhereNobodyWantsIt) {
    Script script;
    WalkLimits limits;
    limits.Archive = 10000;
    limits.OneFile = 6000;
    const auto walk = [&](const std::vector<ArchiveEntry>& entries, const char* kind) -> std::string {
        try {
            WalkArchive(
                script.MakeFile("bomb", ArchiveOf(entries, kind)), [](const MetFile&) {}, limits);
        } catch (const RuntimeError& error) {
            return error.Text;
        }
        return "";
    };
    const std::string zeros(5001, '\0');
    for (const char* kind : {"tar", "tar.gz", "zip"}) {
        EXPECT_EQ(walk({{"a", zeros}}, kind), "") << kind;
        EXPECT_EQ(walk({{"a", zeros}, {"b", zeros}}, kind), "it unpacks to more than 10000 bytes") << kind;
        EXPECT_EQ(walk({{"../a", zeros}, {"/b", zeros}}, kind), "it unpacks to more than 10000 bytes");
        EXPECT_EQ(walk({{"a", std::string(10001, '\0')}}, kind), "it unpacks to more than 10000 bytes");
    }
    limits.Entries = 2;
    EXPECT_EQ(walk({{"a", "1"}, {"../b", "2"}, {"c", "3"}}, "zip"), "it holds more than 2 entries");
}

// The zeros of a hole cost memory and time as others do, though no block brings them.
TEST(WalkArchive, HolesOfSparseEntriesCountAsTheirZeros) {
    const auto octal = [](std::string& head, std::size_t at, std::size_t width, std::size_t number) {
        char text[16];
        std::snprintf(text, sizeof text, "%0*zo", static_cast<int>(width) - 1, number);
        head.replace(at, width - 1, text);
    };
    // The header of an old sparse entry: one byte of data behind a hole.
    std::string head(512, '\0');
    head.replace(0, 4, "hole");
    octal(head, 100, 8, 0644);
    for (const std::size_t field : {108UL, 116UL, 329UL, 337UL}) // owners and devices
        octal(head, field, 8, 0);
    octal(head, 136, 12, 0); // time
    octal(head, 124, 12, 1);
    head[156] = 'S';
    head.replace(257, 7, "ustar  ");
    octal(head, 386, 12, 4999); // where it stands
    octal(head, 398, 12, 1);
    octal(head, 483, 12, 5000);
    std::size_t sum = 8 * ' ';
    for (std::size_t i = 0; i < head.size(); ++i)
        if (i < 148 || i > 155) sum += static_cast<unsigned char>(head[i]);
    octal(head, 148, 7, sum);
    head[155] = ' ';
    std::string one = head + "x" + std::string(511, '\0');
    Script script;
    WalkLimits limits;
    limits.Archive = 10001;
    std::vector<std::size_t> sizes;
    const auto walk = [&](int entries) -> std::string {
        std::string bytes;
        for (int i = 0; i < entries; ++i)
            bytes += one;
        try {
            WalkArchive(
                script.MakeFile("sparse", bytes + std::string(1024, '\0')),
                [&](const MetFile& file) { sizes.push_back(file.Whole().size()); }, limits);
        } catch (const RuntimeError& error) {
            return error.Text;
        }
        return "";
    };
    EXPECT_EQ(walk(2), "");
    EXPECT_EQ(sizes, (std::vector<std::size_t>{5000, 5000}));
    EXPECT_EQ(walk(3), "it unpacks to more than 10001 bytes");
}

TEST(WalkArchive, NamesThatAreNoUtf8KeepTheirBytes) {
    Script script;
    const std::string name = "M\xFCller/\xFF\x80.RA1";
    for (const char* kind : {"tar", "tar.gz", "zip"}) {
        const Met met = WalkBytes(script, ArchiveOf({{name, "1"}, {"plain", "2"}}, kind));
        EXPECT_EQ(met.Error, "") << kind;
        EXPECT_EQ(met.Names, (std::vector<std::string>{name, "plain"})) << kind;
    }
}

TEST(WalkArchive, PackedTwiceIsRefused) {
    Script script;
    const std::string archive = ArchiveOf({{"a", LongText(1000)}}, "tar.gz");
    EXPECT_EQ(WalkBytes(script, archive).Error, "");
    EXPECT_EQ(WalkBytes(script, Gzipped(archive)).Error, "the archive is packed several times over");
}

TEST(WalkArchive, NothingIsWritten) {
    Script script;
    const std::string archive = script.MakeFile("run.tar", ArchiveOf({{"a/b", "1"}, {"c", "2"}}, "tar"));
    WalkAll(archive);
    EXPECT_EQ(std::distance(fs::directory_iterator(script.Directory()), fs::directory_iterator()), 1);
}

TEST(MakeFolder, RefusesWhatIsThereAlready) {
    Script script;
    const std::string path = script.Directory() + "/new";
    MakeFolder(path);
    EXPECT_TRUE(fs::is_directory(path));
    EXPECT_THROW(MakeFolder(path), RuntimeError);
    EXPECT_THROW(MakeFolder(path + "/a/b"), RuntimeError);
}

} // namespace
} // namespace Quillon
