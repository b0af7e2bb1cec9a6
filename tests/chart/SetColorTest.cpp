// The form of the colours: live, taken back by Cancel, kept in the file.
#include "chart/dialogs/SetColor.h"

#include "ChartBench.h"
#include "chart/records/Palettes.h"

namespace Quillon {
namespace {

class SetColorTest : public ChartBench {
protected:
    SetColorTest() {
        GraphSpec spec = Begin();
        Plot(spec, Table({{1, 2}, {1, 2}}), Table({{1, 2}, {2, 3}}));
        Chart.Style.ScreenColors = Chart.Style.PrintColors = Palettes()[0].Colors;
        BuildCycles();
    }
    Rgb ColorOfSecondSet() {
        Screen.Clear();
        ShowGraph();
        return DataItems("polyline").at(1).Pen.Color;
    }
    SetColorRecord& Form = SetColorForm;
};

TEST_F(SetColorTest, ListsTheTableOfTheScreen) {
    Chart.Style.PrintColors = {0, 0x102030};
    LoadSetColor();
    EXPECT_EQ(Form.State.Caption, "Set Line/Symbol Colors");
    ASSERT_EQ(Form.Rows.Items.size(), 14U);
    EXPECT_EQ(Form.Rows.Items[0], "1 - Black");
    EXPECT_EQ(Form.Rows.Items[1], "2 - Blue");
    EXPECT_EQ(Form.Palette.Items, (std::vector<std::string>{"Classic", "Safe", "Own"}));
    EXPECT_EQ(Form.Palette.Value, 0);
    SetColorTableClick(false);
    EXPECT_EQ(Form.Rows.Items, (std::vector<std::string>{"1 - Black", "2 - #302010"}));
    EXPECT_EQ(Form.Palette.Value, 2);
}

TEST_F(SetColorTest, SafeColoursWereToldByCodesAlone) {
    LoadSetColor();
    SetColorPaletteClick(1);
    EXPECT_EQ(Form.Rows.Items,
              (std::vector<std::string>{"1 - Black", "2 - Blue (#0072B2)", "3 - Orange (#D47E12)",
                                        "4 - Bluish Green (#009E73)", "5 - Reddish Purple (#C17CA8)",
                                        "6 - Vermilion (#BB5702)", "7 - Sky Blue (#0998F4)",
                                        "8 - Brown (#8A744C)"}));
}

TEST_F(SetColorTest, AChangeIsSeenAtOnceAndStaysWithOk) {
    Outside.ExpectModal(SetColorName, [this] {
        SetColorRowClick(1);
        Outside.ExpectColor("Color of Set 2", 0x00112233);
        SetColorEditButton();
        EXPECT_EQ(ColorOfSecondSet(), 0x332211U); // the surface has red first
        EXPECT_EQ(Form.Rows.Items[1], "2 - #332211");
        EXPECT_EQ(Form.Palette.Value, 2); // an own one
        SetColorOkButton();
    });
    AlterColors();
    EXPECT_EQ(ColorOfSecondSet(), 0x332211U);
    EXPECT_EQ(Chart.Style.PrintColors, Palettes()[0].Colors);
}

TEST_F(SetColorTest, CancelBringsBothTablesBack) {
    const Rgb before = ColorOfSecondSet();
    Outside.ExpectModal(SetColorName, [this, before] {
        SetColorPaletteClick(1);
        EXPECT_EQ(Form.Rows.Items.size(), Palettes()[1].Colors.size());
        EXPECT_NE(ColorOfSecondSet(), before);
        SetColorTableClick(false);
        SetColorPaletteClick(1);
        SetColorCancelButton();
    });
    AlterColors();
    EXPECT_EQ(ColorOfSecondSet(), before);
    EXPECT_EQ(Chart.Style.PrintColors, Palettes()[0].Colors);
    EXPECT_EQ(Chart.State.NColors, 14);
}

TEST_F(SetColorTest, CancelLeftAGraphOfAnEarlyFileInTheColoursOfTheTables) {
    StyleCycles own = Chart.Cycles;
    own.Color[1] = 0x00ABCDEF; // blue, green, red
    Chart.CyclesOfFile = own;
    BuildCycles();
    ASSERT_EQ(ColorOfSecondSet(), 0xEFCDABU);
    Outside.ExpectModal(SetColorName, [this] {
        SetColorPaletteClick(1);
        EXPECT_NE(ColorOfSecondSet(), 0xEFCDABU);
        SetColorCancelButton();
    });
    AlterColors();
    EXPECT_EQ(ColorOfSecondSet(), 0xEFCDABU);
}

TEST_F(SetColorTest, TablesThatAreSavedAreReadAgainWithTheirLengths) {
    Chart.Style.ScreenColors = {0, 0x0000FF, 0x123456};
    Chart.Style.PrintColors[13] = 0x654321;
    const ChartStyle saved = Chart.Style;
    SetColorSaveDefaults();
    EXPECT_NE(ReadWholeFile(ChartIniPath()).find("ScreenColor2=&H123456"), std::string::npos);
    EXPECT_NE(ReadWholeFile(ChartIniPath()).find("PrintColor13=&H654321"), std::string::npos);
    ReadChartDefaults();
    EXPECT_EQ(Chart.Style.ScreenColors, saved.ScreenColors);
    EXPECT_EQ(Chart.Style.PrintColors, saved.PrintColors);
}

TEST_F(SetColorTest, AFileThatCannotBeWrittenIsTold) {
    Host.WriteFile = [](const std::string&, const std::string&) { RaiseError(ErrorText::DiskFull); };
    Outside.ExpectMessage("Error occurred while writing defaults to " + ChartIniPath() + "\n\nDisk full");
    SetColorSaveDefaults();
}

TEST_F(SetColorTest, TheGradientLeavesNothingToAlter) {
    ToggleRainbow();
    EXPECT_FALSE(Charts.AlterColors.Enabled);
    AlterColors(); // no form comes
    ToggleRainbow();
    EXPECT_TRUE(Charts.AlterColors.Enabled);
}

} // namespace
} // namespace Quillon
