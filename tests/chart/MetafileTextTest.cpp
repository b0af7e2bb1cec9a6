// Text and clipping in enhanced metafiles.
#include "MetafileCase.h"

#include <cmath>
#include <numeric>

namespace Quillon {

// --- text ----------------------------------------------------------------------------------------------

TEST(Metafile, TextHasPlaceFontAndAdvances) {
    const std::vector<EmfItem> items = DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                                           s.SetFont({"Arial", 1117, true, 90});
                                           s.SetTextColor(0x0000AA);
                                           s.Text(40, 250, "Hi\xB5");
                                       }).Items;
    ASSERT_EQ(items.size(), 1U);
    const EmfItem& text = items[0];
    EXPECT_EQ(text.Text, "Hi\xB5");
    EXPECT_EQ(Pairs(text.Points), (Places{{40, 250}}));
    EXPECT_EQ(text.Face, "Arial");
    EXPECT_EQ(text.FontHeight, -1000); // the em: of 1117 units from the tallest to the lowest letter
    EXPECT_EQ(text.Escapement, 900);
    EXPECT_EQ(text.Weight, 700);
    EXPECT_EQ(text.CharacterSet, 0);
    EXPECT_EQ(text.TextColor, 0x0000AAU);
    EXPECT_EQ(text.Advances, (std::vector<int>{722, 278, 576})); // Helvetica bold: H 722, i 278
}

TEST(Metafile, AdvancesAddUpToTheMeasuredWidth) {
    const std::string text = "0.0012 iiiillllMMM, fitted (AU)";
    TextSize size;
    const std::vector<EmfItem> items = DrawOn(SmallPicture(), [&](const DrawingSurface& s) {
                                           s.SetFont({"Times New Roman", 13, false, 0});
                                           size = s.Measure(text);
                                           s.Text(10, 10, text);
                                       }).Items;
    int width = 0;
    for (const EmfItem& item : items)
        width = std::accumulate(item.Advances.begin(), item.Advances.end(), width);
    EXPECT_EQ(width, size.Width);
    EXPECT_EQ(size.Height, 13);
}

TEST(Metafile, LettersBehindAPairStoodAUnitBesideTheirPlaces) {
    std::vector<int> places;
    for (const EmfItem& item : DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                                   s.SetFont({"Arial", 37, false, 0}); // em 33
                                   s.Text(100, 200, "Toooooooo");
                               }).Items) {
        int place = Pairs(item.Points).at(0).first;
        for (const int advance : item.Advances) {
            places.push_back(place);
            place += advance;
        }
    }
    ASSERT_EQ(places.size(), 9U);
    for (int i = 1; i < 9; ++i) // Helvetica: T 611, o 556 thousandths
        EXPECT_EQ(places[static_cast<std::size_t>(i)],
                  100 + static_cast<int>(std::lround(33 * (0.611 + (i - 1) * 0.556))))
            << i;
}

TEST(Metafile, ReadersAddedTheirRoundingsUpAlongALine) {
    std::vector<std::string> pieces;
    for (const EmfItem& item : DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                                   s.SetFont({"Courier New", 12, false, 0});
                                   s.Text(10, 100, "sum of squares of all  sets (counts) by wavelength");
                               }).Items)
        pieces.push_back(item.Text);
    EXPECT_EQ(pieces,
              (std::vector<std::string>{"sum of squares ", "of all  ", "sets (counts) ", "by wavelength"}));
}

TEST(Metafile, TextsThatFollowedEachOtherWereTakenForOneParagraph) {
    const EmfFile file = DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                             s.SetFont({"Arial", 12, false, 0});
                             s.Text(10, 100, "0.1");
                             s.Text(60, 100, "0.2");
                             s.Text(30, 120, "Radius");
                         }).File;
    constexpr std::uint32_t text = 84; // EMR_EXTTEXTOUTW
    int texts = 0;
    for (std::size_t i = 0; i + 1 < file.Records.size(); ++i) {
        texts += file.Records[i].Type == text ? 1 : 0;
        EXPECT_FALSE(file.Records[i].Type == text && file.Records[i + 1].Type == text) << i;
    }
    EXPECT_EQ(texts, 3);
}

TEST(Metafile, ReadersPulledPairsTogetherThatWereMeasuredApart) {
    const auto pieces = [](const SurfaceFont& font, const std::string& text) {
        std::vector<std::pair<std::string, std::pair<int, int>>> found;
        for (const EmfItem& item : DrawOn(SmallPicture(), [&](const DrawingSurface& s) {
                                       s.SetFont(font);
                                       s.Text(100, 200, text);
                                   }).Items)
            found.push_back({item.Text, Pairs(item.Points).at(0)});
        return found;
    };
    using Pieces = std::vector<std::pair<std::string, std::pair<int, int>>>;
    // Helvetica: T 611, A 667, V 667, M 833, a blank 278 thousandths of the em of 100.
    EXPECT_EQ(pieces({"Arial", 112, false, 0}, "Total"), (Pieces{{"T", {100, 200}}, {"otal", {161, 200}}}));
    EXPECT_EQ(pieces({"Arial", 112, false, 90}, "AV M"),
              (Pieces{{"A", {100, 200}}, {"V ", {100, 133}}, {"M", {100, 39}}}));
    EXPECT_EQ(pieces({"Arial", 112, false, 0}, "Molar Mass").size(), 2U) << "behind the blank of a pair";
    EXPECT_EQ(pieces({"Courier New", 112, false, 0}, "Total").size(), 1U);
    EXPECT_EQ(pieces({"Arial", 112, false, 0}, "Radius (cm)").size(), 1U);
}

TEST(Metafile, AnglesAreBroughtIntoOneTurn) {
    const auto escapement = [](int angle) {
        const std::vector<EmfItem> items = DrawOn(SmallPicture(), [&](const DrawingSurface& s) {
                                               s.SetFont({"Arial", 12, false, angle});
                                               s.Text(100, 100, "x");
                                           }).Items;
        return items.empty() ? -1 : items[0].Escapement;
    };
    EXPECT_EQ(escapement(0), 0);
    EXPECT_EQ(escapement(270), 2700);
    EXPECT_EQ(escapement(-90), 2700);
    EXPECT_EQ(escapement(540), 1800);
}

TEST(Metafile, BoundsOfTextFollowItsDirection) {
    const auto bounds = [](int angle) {
        return RectAt(
            DrawOn(SmallPicture(),
                   [&](const DrawingSurface& s) {
                       s.SetFont({"Courier New", 34, false, angle}); // em 30, descent 9, letters 18 wide
                       s.Text(200, 150, "0123456789");
                   })
                .File.Records.front(),
            8);
    };
    EXPECT_EQ(bounds(0), (std::vector<int>{200, 125, 380, 159}));
    EXPECT_EQ(bounds(90), (std::vector<int>{175, 0, 209, 150})); // runs out of the picture above
    EXPECT_EQ(bounds(180), (std::vector<int>{20, 141, 200, 175}));
    EXPECT_EQ(bounds(270), (std::vector<int>{191, 150, 225, 299}));
}

TEST(Metafile, SymbolKeepsItsCodesAndSaysSo) {
    const std::vector<EmfItem> items = DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                                           s.SetFont({"Symbol", 1225, true, 0});
                                           s.Text(0, 20, "ab\tc");
                                       }).Items;
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].Face, "Symbol");
    EXPECT_EQ(items[0].CharacterSet, 2);
    EXPECT_EQ(items[0].Text, "ab c"); // a control code has no picture
    EXPECT_EQ(items[0].Advances, (std::vector<int>{631, 549, 250, 549}));
}

// --- clipping ------------------------------------------------------------------------------------------

TEST(Metafile, AClipReplacesTheFormerOne) {
    const std::vector<EmfItem> items = DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                                           s.Line(0, 0, 9, 9);
                                           s.SetClip({10, 20, 109, 119});
                                           s.Line(0, 0, 9, 9);
                                           s.SetClip({200, 20, 249, 39});
                                           s.Line(0, 0, 9, 9);
                                           s.ClearClip();
                                           s.ClearClip();
                                           s.Line(0, 0, 9, 9);
                                       }).Items;
    ASSERT_EQ(items.size(), 4U);
    const auto clip = [&items](std::size_t i) {
        const DeviceRect& rect = items[i].Clip;
        return std::vector<int>{rect.Left, rect.Top, rect.Right, rect.Bottom};
    };
    EXPECT_FALSE(items[0].Clipped);
    EXPECT_EQ(clip(0), (std::vector<int>{0, 0, 400, 300}));
    EXPECT_TRUE(items[1].Clipped);
    EXPECT_EQ(clip(1), (std::vector<int>{10, 20, 110, 120}));
    EXPECT_EQ(clip(2), (std::vector<int>{200, 20, 250, 40}));
    EXPECT_FALSE(items[3].Clipped);
}

// What was selected inside a clip is forgotten by the player when the clip ends.
TEST(Metafile, AttributesSurviveTheEndOfAClip) {
    const std::vector<EmfItem> items = DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                                           s.SetPen({true, 0xAA0000, 1});
                                           s.SetFont({"Arial", 12, false, 0});
                                           s.Line(0, 0, 9, 9);
                                           s.SetClip({10, 20, 110, 120});
                                           s.SetPen({true, 0x00BB00, 4});
                                           s.SetBrush({BrushKind::Solid, 0x0000CC});
                                           s.Rectangle({20, 20, 40, 40});
                                           s.SetTextColor(0xDD00DD);
                                           s.Text(20, 20, "in");
                                           s.ClearClip();
                                           s.Rectangle({20, 20, 40, 40});
                                           s.Text(20, 20, "out");
                                       }).Items;
    ASSERT_EQ(items.size(), 5U);
    for (const std::size_t i : {1U, 3U}) {
        EXPECT_EQ(items[i].PenColor, 0x00BB00U);
        EXPECT_EQ(items[i].PenWidth, 4);
        EXPECT_TRUE(items[i].Filled);
        EXPECT_EQ(items[i].FillColor, 0x0000CCU);
    }
    EXPECT_EQ(items[4].Face, "Arial");
    EXPECT_EQ(items[4].TextColor, 0xDD00DDU);
}

TEST(Metafile, AClipLeftOpenIsClosed) {
    const EmfFile file = DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                             s.SetClip({10, 20, 110, 120});
                             s.Line(0, 0, 50, 50);
                         }).File;
    int depth = 0;
    for (const EmfRecord& record : file.Records)
        depth += record.Type == 33 ? 1 : record.Type == 34 ? -1 : 0;
    EXPECT_EQ(depth, 0);
}

} // namespace Quillon
