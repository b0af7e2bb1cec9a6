// What holds for each window of the program: looking at it changes nothing, it fits its screen with every
// text in sight, and it is worked and read without a mouse.
#include "tests/forms/EveryForm.h"

#include "commands/AccessKeys.h"
#include "commands/Analmenu.h"
#include "commands/MenuRows.h"
#include "commands/export/MeasuredData.h"
#include "commands/history/History.h"
#include "forms/shell/Binding.h"
#include "forms/shell/FormHost.h"
#include "persistence/codec/FitCodec.h"
#include "platform/Platform.h"
#include "scandata/forms/FileForm.h"
#include "tests/forms/Scans.h"
#include "workspace/records/Roads.h"
#include "workspace/records/Workspace.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDockWidget>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace Quillon {
namespace {

struct EveryForm : testing::Test {
    Player player;
};

TEST_F(EveryForm, IsOpenedByTheseTests) {
    std::vector<std::string> rows;
    for (const FormOpening& opening : FormOpenings())
        rows.emplace_back(opening.Form);
    std::sort(rows.begin(), rows.end());
    EXPECT_EQ(rows, RegisteredForms());
}

// --- nothing is lost -------------------------------------------------------------------------------------

struct Bytes {
    std::string Fit = EncodeFit(Work);
    std::int16_t Done = Work.FitDone, Limits = Work.LimitsDone;
    std::size_t Steps = History.Steps.size();
};

// Empty when nothing has changed, otherwise what has.
std::string WhatChanged(const Bytes& before, const Bytes& after) {
    if (before.Fit != after.Fit) return "the analysis";
    if (before.Done != after.Done) return "the fit";
    if (before.Limits != after.Limits) return "the limits";
    return before.Steps != after.Steps ? "the history" : "";
}

std::string ChangeBy(Player& player, const FormOpening& opening, const std::function<void(QWidget&)>& leave) {
    PrepareFor(opening);
    const Bytes before;
    VisitForm(player, opening, leave);
    NoteHistory("");
    return WhatChanged(before, Bytes{});
}

TEST_F(EveryForm, LeftWithoutAChangeLeavesTheAnalysisByteForByte) {
    const auto close = [](QWidget& window) {
        window.close();
        Player::Serve();
    };
    for (const FormOpening& opening : FormOpenings()) {
        if (opening.Form == AnalmenuName) continue; // its X is the end of the program
        std::vector<std::string> ways;
        const auto check = [&](const std::string& way, const std::function<void(QWidget&)>& leave) {
            if (std::ranges::count(opening.Changing, way) > 0) return;
            EXPECT_EQ(ChangeBy(player, opening, leave), "") << opening.Form << " left by " << way;
        };
        PrepareFor(opening);
        VisitForm(player, opening, [&](QWidget& window) { ways = WaysOutOf(window); });
        check("X", close);
        check("Esc", [](QWidget&) { Player::Press(Qt::Key_Escape); });
        for (const std::string& way : ways)
            check(way, [way](QWidget& window) { ClickCaption(window, way); });
    }
}

// The questions that lead to no form of the program: each is left as it is offered, or given up.
TEST_F(EveryForm, TheQuestionsBehindTheSavedDefaultsLeaveTheAnalysis) {
    UseFinishedFit();
    NoteHistory("");
    const Bytes before;
    int asked = 0;
    Host.MessageBoxAnswer = [&](const BoxRequest& request) {
        ++asked;
        return request.Default;
    };
    Host.AskText = [&](const InputRequest& request) {
        ++asked;
        return InputAnswer{false, request.Default};
    };
    player.ClickMenu("SaveDefaults");
    EXPECT_GT(asked, 10);
    EXPECT_EQ(WhatChanged(before, Bytes{}), "");
    Host.AskText = [](const InputRequest&) { return InputAnswer{}; };
    Host.MessageBoxAnswer = [](const BoxRequest& request) {
        return request.Buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Cancel;
    };
    player.ClickMenu("SaveDefaults");
    EXPECT_EQ(WhatChanged(before, Bytes{}), "");
}

TEST_F(EveryForm, ASimulationThatIsGivenUpLeavesTheAnalysis) {
    UseFinishedFit();
    NoteHistory("");
    const Bytes before;
    for (const bool overwrites : {false, true}) {
        Host.MessageBoxAnswer = [overwrites](const BoxRequest& request) {
            return overwrites && request.Text.find("overwrite") != std::string::npos ? BoxAnswer::Yes
                                                                                     : BoxAnswer::No;
        };
        player.Expect("GetGuess", [] { Player::Press(Qt::Key_Escape); });
        player.ClickMenu("DoSimulate");
        EXPECT_EQ(WhatChanged(before, Bytes{}), "");
    }
}

// --- without a mouse -------------------------------------------------------------------------------------

bool IsControl(const QWidget& widget) {
    return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
           qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QAbstractItemView*>(&widget) ||
           qobject_cast<const QPlainTextEdit*>(&widget) || widget.focusPolicy() == Qt::StrongFocus;
}

// What belongs to another control, or has its command in a menu: the button of a field, of the frame of a
// pane, a cell in a line of the table of data sets.
bool IsPartOfAnother(const QWidget& widget) {
    for (const QWidget* at = widget.parentWidget(); at && !at->isWindow(); at = at->parentWidget())
        if (qobject_cast<const QComboBox*>(at) || qobject_cast<const QAbstractItemView*>(at)) return true;
    if (widget.focusPolicy() == Qt::NoFocus && OpenForm(FileFormName)) return true;
    return qobject_cast<const QDockWidget*>(widget.parentWidget()) ||
           qobject_cast<const QMenuBar*>(widget.parentWidget()) || qobject_cast<const QMenuBar*>(&widget);
}

// Of options one is reached by Tab, the others from there by the arrows.
bool IsOptionBesideAStop(const QWidget& widget, const std::set<const QWidget*>& reached) {
    if (!qobject_cast<const QRadioButton*>(&widget)) return false;
    const auto group =
        widget.parentWidget()->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly);
    return std::ranges::any_of(group, [&](const QRadioButton* other) { return reached.contains(other); });
}

// Forwards and back: Tab in a field of values may lead to the next value.
std::set<const QWidget*> ReachedByTab(QWidget& window) {
    std::set<const QWidget*> reached;
    constexpr int most = 40; // presses without meeting anything new: the links of a page of the manual
    for (const int key : {Qt::Key_Tab, Qt::Key_Backtab})
        for (int sinceLast = 0; sinceLast < most; ++sinceLast) {
            QWidget* at = QApplication::focusWidget();
            if (at && at->window() == &window && reached.insert(at).second) sinceLast = 0;
            QTest::keyClick(at ? at : &window, static_cast<Qt::Key>(key));
        }
    Player::Serve();
    return reached;
}

std::string NameOf(const QWidget& widget) {
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    return widget.metaObject()->className() + std::string(" ") +
           (button ? button->text() : widget.accessibleName()).toStdString();
}

TEST_F(EveryForm, LeadsToEachOfItsControlsByTab) {
    for (const FormOpening& opening : FormOpenings()) {
        PrepareFor(opening);
        VisitForm(player, opening, [&](QWidget& window) {
            const std::set<const QWidget*> reached = ReachedByTab(window);
            std::vector<std::string> missed;
            for (const QWidget* widget : window.findChildren<QWidget*>())
                if (widget->window() == &window && widget->isVisible() && widget->isEnabled() &&
                    IsControl(*widget) && !IsPartOfAnother(*widget) && !reached.contains(widget) &&
                    !IsOptionBesideAStop(*widget, reached))
                    missed.push_back(NameOf(*widget));
            EXPECT_EQ(missed, std::vector<std::string>{}) << opening.Form;
        });
    }
}

TEST_F(EveryForm, HasAMenuForTheCellsOfALineThatTabPassesBy) {
    UseFinishedFit();
    player.Expect(FileFormName, [] {
        Player::TabTo(FileForm.Check1[0]);
        QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, {}, {});
        QApplication::sendEvent(QApplication::focusWidget(), &menuKey);
        Player::Serve();
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        EXPECT_GE(menu->actions().size(), 6);
        QTest::keyClick(menu, Qt::Key_Escape);
        Player::Press(Qt::Key_Escape);
    });
    player.ClickMenu("ReadData");
}

// Controls that take the focus and tell a reader nothing.
void FindNameless(QAccessibleInterface* at, std::vector<std::string>& nameless) {
    if (at == nullptr || at->state().invisible) return;
    if (at->state().focusable && at->text(QAccessible::Name).isEmpty() && at->object() != nullptr &&
        at->role() != QAccessible::Window && at->role() != QAccessible::StaticText &&
        at->role() != QAccessible::Client)
        nameless.push_back(at->object()->metaObject()->className());
    for (int i = 0; i < at->childCount() && i < 60; ++i)
        FindNameless(at->child(i), nameless);
}

TEST_F(EveryForm, TellsAReaderTheNameOfEachControl) {
    for (const FormOpening& opening : FormOpenings()) {
        PrepareFor(opening);
        VisitForm(player, opening, [&](QWidget& window) {
            std::vector<std::string> nameless;
            FindNameless(QAccessible::queryAccessibleInterface(&window), nameless);
            EXPECT_EQ(nameless, std::vector<std::string>{}) << opening.Form;
        });
    }
}

// The items that Down meets in a menu that its access key has opened.
std::set<const QAction*> MetByKeys(QMainWindow& main, Qt::Key key) {
    std::set<const QAction*> met;
    Player::Press(key, Qt::AltModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!menu) return met;
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(menu, Qt::Key_Down);
        if (!menu->activeAction() || !met.insert(menu->activeAction()).second) break;
    }
    QTest::keyClick(menu, Qt::Key_Escape);
    QTest::keyClick(&main, Qt::Key_Escape);
    Player::Serve();
    return met;
}

TEST_F(EveryForm, OffersEachCommandOfItsMenusToTheKeys) {
    UseFinishedFit();
    auto* main = qobject_cast<QMainWindow*>(Player::Window(AnalmenuName));
    for (QAction* bar : main->menuBar()->actions()) {
        const auto at = bar->text().indexOf('&');
        ASSERT_GE(at, 0) << bar->text().toStdString();
        const auto key = static_cast<Qt::Key>(bar->text()[at + 1].toUpper().unicode());
        const std::set<const QAction*> met = MetByKeys(*main, key);
        for (const QAction* item : bar->menu()->actions()) {
            const bool open = item->isVisible() && item->isEnabled() && !item->isSeparator();
            EXPECT_TRUE(!open || met.contains(item)) << item->text().toStdString();
        }
    }
}

// --- every command by keys alone ---------------------------------------------------------------------------

// Nobody is asked, no form is shown, and every question is given up: a command runs to the end of its own.
void GiveUpEveryQuestion() {
    Host.ShowModal = [](const std::string&) {};
    Host.ShowForm = [](const std::string&) {};
    Host.AskFile = [](const FileRequest&) { return FileAnswer{}; };
    Host.AskText = [](const InputRequest&) { return InputAnswer{}; };
    Host.MessageBoxAnswer = [](const BoxRequest& request) {
        return request.Buttons == BoxButtons::Ok      ? BoxAnswer::Ok
               : request.Buttons == BoxButtons::YesNo ? BoxAnswer::No
                                                      : BoxAnswer::Cancel;
    };
}

// Opens the menu of an item by its access key and chooses the item by its own, or where it has none by the
// arrows and Return.
void ChooseByKeys(QAction& bar, QAction& item) {
    Player::Press(Qt::Key(AccessKeyOf(RecordText(bar.text())) - 'a' + Qt::Key_A), Qt::AltModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_EQ(menu, bar.menu()) << bar.text().toStdString();
    if (const char key = AccessKeyOf(RecordText(item.text())); key != 0) {
        const bool digit = key >= '0' && key <= '9';
        QTest::keyClick(menu, Qt::Key(digit ? key : key - 'a' + Qt::Key_A));
    } else {
        for (int i = 0; i < 60 && menu->activeAction() != &item; ++i)
            QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    }
    Player::Serve();
    if (menu->isVisible()) menu->close();
}

// The open items of all menus; those that ran when they were chosen go to ran.
void ChooseAllByKeys(const std::function<void()>& prepare, std::set<std::string>& ran) {
    auto* main = qobject_cast<QMainWindow*>(Player::Window(AnalmenuName));
    for (QAction* bar : main->menuBar()->actions())
        for (QAction* item : bar->menu()->actions()) {
            const std::string name = item->objectName().toStdString();
            if (name.empty() || ran.contains(name)) continue;
            prepare();
            SetMenuStatus();
            RefreshForms();
            if (!item->isEnabled()) continue;
            const auto connection =
                QObject::connect(item, &QAction::triggered, item, [&ran, name] { ran.insert(name); });
            ChooseByKeys(*bar, *item);
            QObject::disconnect(connection);
            EXPECT_TRUE(ran.contains(name)) << name << " is not run by its keys";
            Work.AbortFit = FlagFalse;
        }
}

// One analysis has not all commands open: others come with ties of concentrations, with steps that were taken
// back, with a simulation, and with a set alone whose residuals are its baseline.
TEST_F(EveryForm, RunsEachCommandOfTheMainMenuByKeysAlone) {
    GiveUpEveryQuestion();
    const FormOpening* const fit = &FormOpenings().front();
    std::set<std::string> ran;
    ChooseAllByKeys([&] { PrepareFor(*fit); }, ran);
    ChooseAllByKeys(
        [&] {
            PrepareFor(*fit);
            for (const float mass : {20.0F, 30.0F}) {
                Work.Parms[0] = mass;
                NoteHistory("a change");
            }
            UndoCommand();
            Work.ConstraintFlags = ConcentrationBit;
        },
        ran);
    ChooseAllByKeys(
        [&] {
            PrepareFor(*fit);
            KeepMeasuredData(Work);
        },
        ran);
    ChooseAllByKeys(UseOneSet, ran);
    for (const MenuRow& row : MenuRows())
        EXPECT_TRUE(ran.contains(row.Name)) << row.Name << " was never open";
}

// --- the focus is seen -------------------------------------------------------------------------------------

// Tab by Tab: a control that has the focus looks otherwise than without it.
TEST_F(EveryForm, ShowsWhereTheFocusIs) {
    for (const FormOpening& opening : FormOpenings()) {
        PrepareFor(opening);
        VisitForm(player, opening, [&](QWidget& window) {
            std::set<const QWidget*> met;
            std::vector<std::string> unseen;
            for (int i = 0; i < 60; ++i) {
                const QPointer<QWidget> at = QApplication::focusWidget();
                if (!at || at->window() != &window || !met.insert(at).second) break;
                const QImage with = at->grab().toImage();
                QTest::keyClick(at, Qt::Key_Tab);
                Player::Serve();
                if (!at || at->hasFocus()) break; // Tab is a key of its own there
                if (at->grab().toImage() == with) unseen.push_back(NameOf(*at));
            }
            EXPECT_EQ(unseen, std::vector<std::string>{}) << opening.Form;
        });
    }
}

} // namespace
} // namespace Quillon
