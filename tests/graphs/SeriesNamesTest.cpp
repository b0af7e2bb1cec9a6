// How legends and titles name the data.
#include "graphs/kinds/SeriesNames.h"

#include "GraphBench.h"
#include "graphs/kinds/FitGraphs.h"
#include "graphs/kinds/ResidualGraphs.h"

namespace Quillon {
namespace {

struct SeriesNames : GraphBench {
    SeriesNames() { FillThreeSets(); }
    static std::vector<std::string> All() {
        return {SeriesName(SetNo(1)), SeriesName(SetNo(2)), SeriesName(SetNo(3))};
    }
    static void Label(const char* one, const char* two, const char* three) {
        Work.SetLabel[1] = one;
        Work.SetLabel[2] = two;
        Work.SetLabel[3] = three;
    }
    static void Speed(float one, float two, float three) {
        Work.ScanRPM[Work.SetRow[1]] = one;
        Work.ScanRPM[Work.SetRow[2]] = two;
        Work.ScanRPM[Work.SetRow[3]] = three;
    }
    using Names = std::vector<std::string>;
};

TEST_F(SeriesNames, ALabelThatOccursOnceStandsAlone) {
    Speed(12000, 16000, 20000);
    EXPECT_EQ(All(), (Names{"00011.RA1", "00012.RA1", "00013.RA1"}));
    Label("00011.RA1 Ch A", "00011.RA1 Ch B", "00011.RA1 Ch C"); // the channels tell them apart
    EXPECT_EQ(All(), (Names{"00011.RA1 Ch A", "00011.RA1 Ch B", "00011.RA1 Ch C"}));
}

TEST_F(SeriesNames, WhereAFileNameRepeatsTheSpeedIsNamed) {
    Label("12k/00001.RA1", "16k/00001.RA1", "16k/00002.RA1");
    Speed(12000, 16000, 16000);
    EXPECT_EQ(All(), (Names{"12k/00001.RA1, 12000 rpm", "16k/00001.RA1, 16000 rpm", "16k/00002.RA1"}));
    Speed(16000, 16000, 16000);
    Work.ScanWavelength[Work.SetRow[1]] = 260;
    Work.ScanWavelength[Work.SetRow[2]] = 280;
    EXPECT_EQ(All(), (Names{"12k/00001.RA1, 260 nm", "16k/00001.RA1, 280 nm", "16k/00002.RA1"}));
    Work.ScanWavelength[Work.SetRow[2]] = 260.5F; // the same but for the monochromator
    EXPECT_EQ(All(), (Names{"12k/00001.RA1", "16k/00001.RA1", "16k/00002.RA1"}));
}

TEST_F(SeriesNames, SetsOfOneScanAreToldApartByTheirRange) {
    Label("00001.RA1", "00001.RA1", "00002.RA1");
    // Radii of set k start from 6 + k / 4 cm, a sixteenth apart; a range from the fourth point on.
    EXPECT_EQ(All(), (Names{"00001.RA1, 6.50-6.75 cm", "00001.RA1, 6.75-6.88 cm", "00002.RA1"}));
    Work.ScanRadius[Work.SetRow[2]] = Work.ScanRadius[Work.SetRow[1]];
    Work.FitRange[1][Work.SetRow[2]] = Work.FitRange[1][Work.SetRow[1]];
    EXPECT_EQ(All(), (Names{"00001.RA1, set 1", "00001.RA1, set 2", "00002.RA1"}));
}

// Two Greek names were two question marks in a legend.
TEST_F(SeriesNames, NamesThatAreShownAlikeAreToldApart) {
    Label("\xE8\xA9\xA6.RA1", "\xE9\xA8\x93.RA1", "00002.RA1"); // two that Latin-1 does not have
    Speed(16000, 16000, 16000);
    EXPECT_EQ(All(), (Names{"?.RA1, 6.50-6.75 cm", "?.RA1, 6.75-6.88 cm", "00002.RA1"}));
    Speed(16000, 20000, 16000);
    EXPECT_EQ(SeriesName(SetNo(2)).substr(0, 17), "?.RA1, 20000 rpm,");
}

TEST_F(SeriesNames, AreThoseOfTheLegends) {
    Label("a/1.RA1", "b/1.RA1", "c\xC3\xB6.RA1"); // the last one in UTF-8
    Speed(1000, 2000, 3000);
    ASSERT_TRUE(MakeFitGraph(FitGraph::Data, AllSets, {}));
    EXPECT_EQ(Chart.SetNames[1], "a/1.RA1, 1000 rpm");
    EXPECT_EQ(Chart.SetNames[3], "c\xF6.RA1");
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, SetNo(2)));
    EXPECT_EQ(Chart.SetNames[1], "b/1.RA1, 2000 rpm");
    EXPECT_NE(Chart.Spec.Title1.Text.Str().find("; data from b/1.RA1, 2000 rpm"), std::string::npos);
    ASSERT_TRUE(MakeFitGraph(FitGraph::Overlay, SetNo(3), {}));
    EXPECT_EQ(Chart.SetNames[2], "c\xF6.RA1 (fit)");
}

// The batch program took "Data from:" with nothing behind it off its pictures; the desktop showed it.
TEST_F(SeriesNames, ATitleThatNamesNothingIsLeftOut) {
    Work.LabelPrefix = "";
    ASSERT_TRUE(MakeFitGraph(FitGraph::Data, AllSets, {}));
    EXPECT_EQ(Chart.Spec.Title2.Text.Str(), "");
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    EXPECT_EQ(Chart.Spec.Title1.Text.Str().find("data from"), std::string::npos);
    EXPECT_EQ(Chart.Spec.Title2.Text.Str(), "");
    Work.LabelPrefix = "/data/\xC3\xBC/";
    ASSERT_TRUE(MakeFitGraph(FitGraph::Data, AllSets, {}));
    EXPECT_EQ(Chart.Spec.Title2.Text.Str(), "Data from: /data/\xFC/");
}

} // namespace
} // namespace Quillon
