// The manual as it is built into the program, and its window as data.
#include "help/HelpForm.h"

#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

const fs::path Docs = fs::path(QUILLON_SOURCE) / "docs";

TEST(Manual, HoldsEveryPageByteForByte) {
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(Docs / "manual")) {
        if (entry.path().extension() != ".md") continue;
        ++files;
        const ManualPage* page = FindManualPage(entry.path().lexically_relative(Docs).generic_string());
        ASSERT_NE(page, nullptr) << entry.path();
        EXPECT_EQ(page->Text, ReadWholeFile(entry.path().string())) << entry.path();
    }
    EXPECT_GT(files, 40);
    EXPECT_EQ(FindManualPage("manual/nothing.md"), nullptr);
}

TEST(Manual, EveryLinkOfEveryPageLeadsToAPageThatIsBuiltIn) {
    int links = 0;
    for (const ManualPage& page : ManualPages())
        for (std::size_t at = page.Text.find("]("); at != std::string::npos;
             at = page.Text.find("](", at + 1)) {
            const std::string link = page.Text.substr(at + 2, page.Text.find(')', at) - at - 2);
            if (link.ends_with(".png")) continue;
            ++links;
            EXPECT_NE(FindManualPage(FollowManualLink(page.Path, link).Path), nullptr)
                << page.Path << " " << link;
        }
    EXPECT_GT(links, 100);
}

TEST(Manual, ContentsLeadToEveryPageButTheFirst) {
    std::set<std::string> listed{ManualStart};
    for (const ManualEntry& entry : ManualContents())
        listed.insert(entry.Place.Path);
    for (const ManualPage& page : ManualPages())
        EXPECT_TRUE(listed.contains(page.Path)) << page.Path;
}

TEST(Manual, ContentsNameEachPageByItsTitleAndHeadingsLeadNowhere) {
    const std::vector<ManualEntry> contents = ManualContents();
    EXPECT_EQ(contents.front().Place.Path, "");
    for (const ManualEntry& entry : contents) {
        const ManualPage* page = FindManualPage(entry.Place.Path);
        EXPECT_EQ(entry.Text, page ? ManualTitle(*page) : entry.Text);
    }
}

TEST(Manual, LinksAreFollowedFromWhereTheyStand) {
    using Place = ManualPlace;
    EXPECT_EQ(FollowManualLink("manual/models.md", "constants.md"), (Place{"manual/constants.md", ""}));
    EXPECT_EQ(FollowManualLink("manual/forms/Results.md", "../errors.md#confidence-limits"),
              (Place{"manual/errors.md", "confidence-limits"}));
    EXPECT_EQ(FollowManualLink("manual/index.md", "../number-pictures.md"),
              (Place{"number-pictures.md", ""}));
    EXPECT_EQ(FollowManualLink("manual/models.md", "#the-list"), (Place{"manual/models.md", "the-list"}));
}

TEST(Manual, AnchorsAreThoseOfMarkdown) {
    EXPECT_EQ(AnchorOfHeading("12 and 13: sites for a ligand that dimerises"),
              "12-and-13-sites-for-a-ligand-that-dimerises");
    EXPECT_EQ(AnchorOfHeading("Section [fit]"), "section-fit");
}

TEST(Manual, FormsWithoutAPageLeadToTheBeginning) {
    EXPECT_EQ(PageOfForm("FileForm"), "manual/forms/FileForm.md");
    EXPECT_EQ(PageOfForm("NoSuchForm"), ManualStart);
}

TEST(Manual, TheIndexIsInTheOrderOfTheAlphabet) {
    const std::vector<ManualEntry> index = ManualIndex();
    const auto small = [](std::string text) {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](unsigned char c) { return std::tolower(c); });
        return text;
    };
    ASSERT_GT(index.size(), 100U);
    for (std::size_t i = 1; i < index.size(); ++i)
        EXPECT_LE(small(index[i - 1].Text), small(index[i].Text));
    const auto speeds = std::find_if(
        index.begin(), index.end(), [](const ManualEntry& e) { return e.Text == "Speeds - The experiment"; });
    ASSERT_NE(speeds, index.end());
    EXPECT_EQ(speeds->Place, (ManualPlace{"manual/experiment.md", "speeds"}));
}

TEST(Manual, ASearchWantsAllWordsInAnyCase) {
    const std::vector<ManualEntry> found = SearchManual("CORRELATIONS parameter");
    ASSERT_FALSE(found.empty());
    EXPECT_EQ(found.front().Place.Path, "manual/forms/Correlation.md"); // its title has the word
    for (const ManualEntry& entry : found) {
        const std::string& text = FindManualPage(entry.Place.Path)->Text;
        EXPECT_TRUE(text.find("arameter") != std::string::npos) << entry.Text;
    }
    EXPECT_TRUE(SearchManual("").empty());
    EXPECT_TRUE(SearchManual("xylophone").empty());
}

TEST(Manual, ASearchLeadsToTheHeadingAboveTheFirstHit) {
    const std::vector<ManualEntry> found = SearchManual("ceiling-of-nothing preferential");
    EXPECT_TRUE(found.empty());
    const std::vector<ManualEntry> hydration = SearchManual("preferential hydration");
    ASSERT_EQ(hydration.size(), 1U);
    EXPECT_EQ(hydration.front().Place, (ManualPlace{"manual/models.md", "the-monomers"}));
}

// --- the window --------------------------------------------------------------------------------------------

struct HelpWindow : testing::Test {
    Script script;
    HelpWindow() { HelpForm = HelpFormRecord{}; }
};

TEST_F(HelpWindow, OpensAtTheContentsTheIndexOrAForm) {
    ShowHelpContents();
    EXPECT_EQ(HelpForm.Place.Path, ManualStart);
    EXPECT_EQ(HelpForm.Pane, HelpPane::Contents);
    ShowHelpIndex();
    EXPECT_EQ(HelpForm.Pane, HelpPane::Index);
    EXPECT_EQ(HelpForm.Place.Path, ManualStart);
    ShowHelpOnForm("GetGuess");
    EXPECT_EQ(HelpForm.Place.Path, "manual/forms/GetGuess.md");
    EXPECT_EQ(script.Forms, (std::vector<std::string>{"show HelpForm", "show HelpForm", "show HelpForm"}));
}

TEST_F(HelpWindow, GoesBackAndForward) {
    ShowHelpContents();
    EXPECT_FALSE(HelpForm.BackButton.Enabled);
    HelpFollowLink("errors.md#correlations");
    HelpFollowLink("forms/Correlation.md");
    EXPECT_FALSE(HelpForm.ForwardButton.Enabled);
    HelpBackButton();
    EXPECT_EQ(HelpForm.Place, (ManualPlace{"manual/errors.md", "correlations"}));
    HelpBackButton();
    EXPECT_EQ(HelpForm.Place.Path, ManualStart);
    EXPECT_FALSE(HelpForm.BackButton.Enabled);
    HelpBackButton();
    HelpForwardButton();
    EXPECT_EQ(HelpForm.Place.Path, "manual/errors.md");
    HelpStartButton(); // a new place ends what lay ahead
    EXPECT_FALSE(HelpForm.ForwardButton.Enabled);
    HelpForwardButton();
    EXPECT_EQ(HelpForm.Place.Path, ManualStart);
}

TEST_F(HelpWindow, ALinkToNowhereStays) {
    ShowHelpContents();
    HelpFollowLink("nothing.md");
    HelpFollowLink("https://example.org/");
    EXPECT_EQ(HelpForm.Place.Path, ManualStart);
    EXPECT_FALSE(HelpForm.BackButton.Enabled);
}

TEST_F(HelpWindow, RowsLeadToTheirPages) {
    ShowHelpContents();
    HelpRowClick(HelpPane::Contents, 0); // a heading
    EXPECT_EQ(HelpForm.Place.Path, ManualStart);
    HelpRowClick(HelpPane::Contents, 1);
    EXPECT_EQ(HelpForm.Place.Path, "manual/first-fit.md");
    EXPECT_EQ(HelpForm.Contents.Value, 1);
    HelpRowClick(HelpPane::Contents, 100000);
    HelpRowClick(HelpPane::Search, 0);
    EXPECT_EQ(HelpForm.Place.Path, "manual/first-fit.md");
}

TEST_F(HelpWindow, SearchesAsOneTypesAndSaysWhenThereIsNothing) {
    ShowHelpContents();
    HelpForm.SearchInput.Text = "meniscus";
    HelpSearchChanged();
    EXPECT_FALSE(HelpForm.Found.Items.empty());
    EXPECT_EQ(HelpForm.SearchNote.Text, "");
    HelpForm.SearchInput.Text = "meniscus xylophone";
    HelpSearchChanged();
    EXPECT_TRUE(HelpForm.Found.Items.empty());
    EXPECT_EQ(HelpForm.SearchNote.Text, "No page holds all of these words.");
    HelpForm.SearchInput.Text = " ";
    HelpSearchChanged();
    EXPECT_EQ(HelpForm.SearchNote.Text, "");
}

} // namespace
} // namespace Quillon
