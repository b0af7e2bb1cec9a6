// The search for the directory where the file dialogs start. Today is the 21st of April 2020.
#include "scandata/forms/DataDirectory.h"

#include "ScanFixture.h"

#include <filesystem>

namespace Quillon {
namespace {

struct DataDirectories : ScanTest {
    DataDirectories() {
        Host.WorkingDirectory = [this] { return Made("work"); };
        Host.FileRoots = [this] { return std::vector<std::string>{Made("c"), Made("d")}; };
    }
    std::string Made(const std::string& name) {
        std::string path = script.Directory() + "/" + name;
        std::filesystem::create_directories(path);
        return path;
    }
    std::string Found() {
        FindDataDirectory();
        return Work.DataDirectory;
    }
};

TEST_F(DataDirectories, WithoutAnyPlaceItIsTheWorkingDirectory) {
    EXPECT_EQ(Found(), Made("work"));
    Work.NameConvention = 0;
    EXPECT_EQ(Found(), Made("work"));
}

TEST_F(DataDirectories, LaterPlacesAndRootsOverrideEarlierOnes) {
    for (const char* name :
         {"c/xlawin/xladata", "c/xlawin/xlidata", "c/xladata", "c/xlidata", "d/xlawin/xladata"}) {
        const std::string made = Made(name);
        EXPECT_EQ(Found(), made);
    }
}

TEST_F(DataDirectories, AFileIsNoPlace) {
    script.MakeFile("c/xladata", "");
    EXPECT_EQ(Found(), Made("work"));
}

TEST_F(DataDirectories, TodaysDirectoryInTheOneFoundComesLast) {
    Made("c/xladata");
    const std::string inWork = Made("work/42120");
    EXPECT_EQ(Found(), Made("c/xladata"));
    EXPECT_EQ(Found(), Made("c/xladata"));
    const std::string today = Made("c/xladata/42120");
    EXPECT_EQ(Found(), today);
    std::filesystem::remove_all(Made("c/xladata"));
    EXPECT_EQ(Found(), inWork);
}

TEST_F(DataDirectories, TheOldConventionWantsFiles) {
    Work.NameConvention = 2;
    Made("c/xladata");
    Made("c/xla/42120");
    EXPECT_EQ(Found(), Made("work"));
    script.MakeFile("c/xla/scan", "");
    EXPECT_EQ(Found(), Made("c/xla"));
    script.MakeFile("c/xla/42120/00001.RA1", "");
    EXPECT_EQ(Found(), Made("c/xla/42120"));
    Work.NameConvention = 1;
    EXPECT_EQ(Found(), Made("c/xladata"));
}

TEST_F(DataDirectories, TodaysNameLosesTheLeadingZeroOfTheMonthAlone) {
    EXPECT_EQ(TodaysDirectoryName(), "42120");
    Host.Clock = [] { return ClockTime{2009, 11, 3, 0, 0, 0}; };
    EXPECT_EQ(TodaysDirectoryName(), "110309");
    Host.Clock = [] { return ClockTime{1998, 1, 9, 0, 0, 0}; };
    EXPECT_EQ(TodaysDirectoryName(), "10998");
}

} // namespace
} // namespace Quillon
