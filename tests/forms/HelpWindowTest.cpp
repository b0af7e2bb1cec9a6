// The manual at its window: from the menu, by F1 in a form, its lists, links and pictures.
#include "fit/forms/GetGuess.h"
#include "forms/shell/FormHost.h"
#include "help/HelpForm.h"
#include "tests/forms/Player.h"
#include "tests/forms/Scans.h"
#include "workspace/records/Workspace.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QListWidget>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QTextTable>

#include <gtest/gtest.h>
#include <set>

namespace Quillon {
namespace {

struct HelpAtTheWindow : testing::Test {
    HelpAtTheWindow() { HelpForm = HelpFormRecord{}; }
    Player player;

    static QTextBrowser* Page() { return Player::Window("HelpForm")->findChild<QTextBrowser*>(); }
    static QString Text() { return Page()->toPlainText(); }
};

TEST_F(HelpAtTheWindow, EveryFormHasItsPage) {
    for (const std::string& form : RegisteredForms())
        EXPECT_NE(FindManualPage("manual/forms/" + form + ".md"), nullptr) << form;
}

TEST_F(HelpAtTheWindow, TheMenuOpensContentsAndIndex) {
    player.ClickMenu("mnuHelpContents");
    ASSERT_TRUE(Player::Window("HelpForm")->isVisible());
    EXPECT_TRUE(Text().startsWith("Quillon")) << Text().left(40).toStdString();
    auto* tabs = Player::Window("HelpForm")->findChild<QTabWidget*>();
    EXPECT_EQ(tabs->currentIndex(), 0);
    player.ClickMenu("mnuHelpIndex");
    EXPECT_EQ(tabs->currentIndex(), 1);
    Player::Click(HelpForm.CloseButton);
    EXPECT_FALSE(HelpForm.State.Shown);
}

TEST_F(HelpAtTheWindow, RowsLinksAndTheWayBack) {
    player.ClickMenu("mnuHelpContents");
    auto* tabs = Player::Window("HelpForm")->findChild<QTabWidget*>();
    auto* contents = qobject_cast<QListWidget*>(tabs->widget(0));
    ASSERT_NE(contents, nullptr);
    ASSERT_EQ(contents->item(1)->text().trimmed(), "A first fit");
    QTest::mouseClick(contents->viewport(), Qt::LeftButton, {},
                      contents->visualItemRect(contents->item(1)).center());
    EXPECT_TRUE(Text().startsWith("A first fit"));
    emit Page()->anchorClicked(QUrl("errors.md#confidence-limits"));
    EXPECT_TRUE(Text().startsWith("What the errors"));
    Player::Click(HelpForm.BackButton);
    EXPECT_TRUE(Text().startsWith("A first fit"));
    Player::Click(HelpForm.ForwardButton);
    EXPECT_TRUE(Text().startsWith("What the errors"));
}

TEST_F(HelpAtTheWindow, KeysDidNotGetPastAHeadingOfTheContents) {
    player.ClickMenu("mnuHelpContents");
    auto* tabs = Player::Window("HelpForm")->findChild<QTabWidget*>();
    auto* contents = qobject_cast<QListWidget*>(tabs->widget(0));
    ASSERT_NE(contents, nullptr);
    QTest::mouseClick(contents->viewport(), Qt::LeftButton, {},
                      contents->visualItemRect(contents->item(1)).center());
    std::set<std::string> seen{HelpForm.Place.Path};
    for (int row = 2; row < contents->count(); ++row) {
        QTest::keyClick(contents, Qt::Key_Down);
        Player::Serve();
        seen.insert(HelpForm.Place.Path);
    }
    for (const ManualEntry& entry : HelpForm.Lists[0])
        if (!entry.Place.Path.empty()) {
            EXPECT_TRUE(seen.contains(entry.Place.Path)) << entry.Place.Path;
        }
}

TEST_F(HelpAtTheWindow, TablesHaveLines) {
    player.ClickMenu("mnuHelpContents");
    emit Page()->anchorClicked(QUrl("species.md"));
    ASSERT_TRUE(Text().startsWith("Species"));
    Player::Serve();
    QTextTable* table = nullptr;
    for (QTextFrame* frame : Page()->document()->rootFrame()->childFrames())
        if (auto* found = qobject_cast<QTextTable*>(frame)) table = found;
    ASSERT_NE(table, nullptr);
    const QRect place = Page()->document()->documentLayout()->frameBoundingRect(table).toRect();
    const QImage picture = Page()->viewport()->grab().toImage();
    int lines = 0; // above the first of its rows, and below each
    for (int y = place.top() - 2; y <= place.bottom() + 2; ++y) {
        int dark = 0;
        for (int x = place.left() + 4; x < place.right() - 4; ++x)
            dark += picture.pixelColor(x, y).lightness() < 230;
        lines += dark > (place.width() - 8) * 9 / 10;
    }
    EXPECT_GE(lines, 4);
}

TEST_F(HelpAtTheWindow, PicturesAreBuiltIn) {
    player.ClickMenu("mnuHelpContents");
    int pictures = 0;
    for (const ManualPage& page : ManualPages())
        for (std::size_t at = page.Text.find("!["); at != std::string::npos;
             at = page.Text.find("![", at + 1)) {
            const std::size_t open = page.Text.find("](", at) + 2;
            const std::string link = page.Text.substr(open, page.Text.find(')', open) - open);
            HelpForm.Place = {page.Path, ""};
            const QVariant picture = Page()->loadResource(QTextDocument::ImageResource, QUrl(link.c_str()));
            EXPECT_FALSE(picture.value<QImage>().isNull()) << page.Path << " " << link;
            ++pictures;
        }
    EXPECT_GT(pictures, 0);
}

TEST_F(HelpAtTheWindow, F1InAFormThatWaitsOpensItsPageBesideIt) {
    UseSimulatedData();
    Work.LastModel = Work.Model;
    Work.NewData = 0;
    player.Expect("GetGuess", [] {
        Player::Press(Qt::Key_F1);
        ASSERT_NE(OpenForm("HelpForm"), nullptr);
        EXPECT_TRUE(Text().startsWith("Parameter Guesses"));
        Player::Click(HelpForm.StartButton); // takes clicks though the form is modal
        EXPECT_TRUE(Text().startsWith("Quillon"));
        Player::Click(HelpForm.CloseButton);
        Player::Click(GetGuess.CancelButton);
    });
    player.ClickMenu("FitData");
}

TEST_F(HelpAtTheWindow, AFormThatWasOpenedAboveTheManualWentWithItInTheMiddleOfAChange) {
    UseSimulatedData();
    Work.LastModel = Work.Model;
    Work.NewData = 0;
    player.ClickMenu("mnuHelpContents");
    QApplication::setActiveWindow(Player::Window("HelpForm"));
    ASSERT_EQ(QApplication::activeWindow(), Player::Window("HelpForm"));
    player.Expect("GetGuess", [] {
        Player::Press(Qt::Key_F1); // the manual comes to this window, from where it stood
        ASSERT_NE(OpenForm("GetGuess"), nullptr);
        EXPECT_TRUE(Text().startsWith("Parameter Guesses"));
        Player::Click(HelpForm.CloseButton);
        Player::Click(GetGuess.CancelButton);
    });
    player.ClickMenu("FitData");
    EXPECT_EQ(GetGuess.Answer, DialogAnswer::Cancel);
}

} // namespace
} // namespace Quillon
