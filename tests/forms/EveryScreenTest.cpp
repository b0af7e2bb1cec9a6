// Each window against screens, letters, signs and colours of a desktop: no text is cut, and none exceeds its
// screen.
//
// The program runs anew for each screen. QUILLON_PHOTOGRAPHS names a folder for pictures of all of them, in
// all eight looks (scripts/photograph-windows).
#include "tests/forms/EveryForm.h"

#include "commands/Analmenu.h"
#include "forms/StartDesktop.h"
#include "forms/shell/Binding.h"
#include "forms/shell/FieldEdit.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/PaintedView.h"
#include "forms/shell/WindowSizes.h"
#include "platform/Platform.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDockWidget>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QProcess>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTableWidget>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>

namespace Quillon {
namespace {

struct EveryScreen : testing::Test {
    Player player;
    ~EveryScreen() override {
        ScaleForms(100);
        QApplication::setPalette(QApplication::style()->standardPalette());
    }
};

// Widgets that have less room than their text. What scrolls is measured where it would be seen.
class CutTexts {
public:
    explicit CutTexts(const QWidget& window) {
        for (const auto* widget : window.findChildren<QWidget*>())
            if (widget->isVisible()) Look(*widget);
    }
    std::vector<std::string> Found;

private:
    void Note(const QWidget& widget, const QString& text, int room, int needed) {
        if (room >= needed || text.isEmpty()) return;
        Found.push_back(std::string(widget.metaObject()->className()) + " '" + text.left(60).toStdString() +
                        "' " + std::to_string(room) + " < " + std::to_string(needed));
    }
    void Look(const QWidget& widget) {
        if (const auto* label = qobject_cast<const QLabel*>(&widget)) return LookAtLabel(*label);
        if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return LookAtButton(*button);
        if (const auto* field = qobject_cast<const FieldEdit*>(&widget)) return LookAtField(*field);
        if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) return LookAtCombo(*combo);
        if (const auto* frame = qobject_cast<const QGroupBox*>(&widget))
            return Note(*frame, frame->title(), frame->width(), Advance(*frame, frame->title()));
        if (const auto* head = qobject_cast<const QHeaderView*>(&widget)) return LookAtHead(*head);
        if (const auto* table = qobject_cast<const QTableWidget*>(&widget)) return LookAtTable(*table);
        if (const auto* tree = qobject_cast<const QTreeWidget*>(&widget)) return LookAtTree(*tree);
        if (const auto* list = qobject_cast<const QListWidget*>(&widget)) return LookAtList(*list);
        if (const auto* dock = qobject_cast<const QDockWidget*>(&widget))
            return Note(*dock, dock->windowTitle(), dock->width(), Advance(*dock, dock->windowTitle()) + 40);
    }
    static int Advance(const QWidget& widget, const QString& text) {
        return widget.fontMetrics().horizontalAdvance(text);
    }
    void LookAtLabel(const QLabel& label) {
        if (label.text().isEmpty()) return;
        if (label.wordWrap())
            return Note(label, label.text(), label.height(), label.heightForWidth(label.width()));
        Note(label, label.text(), label.width(), label.minimumSizeHint().width());
        Note(label, label.text(), label.height(), label.minimumSizeHint().height());
    }
    void LookAtButton(const QAbstractButton& button) {
        if (button.text().isEmpty()) return;
        Note(button, button.text(), button.width(), button.minimumSizeHint().width());
        Note(button, button.text(), button.height(), button.minimumSizeHint().height());
    }
    void LookAtField(const FieldEdit& field) { // a path or a title may be longer than its field
        const QString text = field.text();
        constexpr int frame = 8, longest = 14;
        if (text.size() <= longest) Note(field, text, field.width(), Advance(field, text) + frame);
        Note(field, text, field.height(), field.minimumSizeHint().height());
    }
    void LookAtCombo(const QComboBox& combo) {
        QStyleOptionComboBox option;
        option.initFrom(&combo);
        option.editable = combo.isEditable();
        const QRect room =
            combo.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &combo);
        const int icon = combo.itemIcon(combo.currentIndex()).isNull() ? 0 : combo.iconSize().width() + 4;
        Note(combo, combo.currentText(), room.width(), Advance(combo, combo.currentText()) + icon);
    }
    void LookAtHead(const QHeaderView& head) {
        if (!head.model()) return;
        for (int i = 0; i < head.count(); ++i)
            if (!head.isSectionHidden(i))
                Note(head, head.model()->headerData(i, head.orientation()).toString(), head.sectionSize(i),
                     head.orientation() == Qt::Horizontal ? head.sectionSizeHint(i) : 0);
    }
    void LookAtTable(const QTableWidget& table) {
        for (int row = 0; row < table.rowCount(); ++row)
            for (int column = 0; column < table.columnCount(); ++column)
                if (const QTableWidgetItem* item = table.item(row, column); item && item->toolTip().isEmpty())
                    Note(table, item->text(), table.columnWidth(column),
                         QFontMetrics(item->font()).horizontalAdvance(item->text()));
    }
    void LookAtTree(const QTreeWidget& tree) {
        for (QTreeWidgetItemIterator at(const_cast<QTreeWidget*>(&tree)); *at; ++at)
            for (int column = 0; column < tree.columnCount(); ++column) {
                const QRect row = tree.visualItemRect(*at); // indented as its first column is
                const int indent = column == 0 ? row.left() : 0;
                const int box = (*at)->data(column, Qt::CheckStateRole).isValid()
                                    ? tree.style()->pixelMetric(QStyle::PM_IndicatorWidth) + 6
                                    : 0;
                if (row.isEmpty()) continue; // in a group that is closed
                Note(tree, (*at)->text(column), tree.columnWidth(column) - indent - box,
                     Advance(tree, (*at)->text(column)));
            }
    }
    void LookAtList(const QListWidget& list) {
        for (int row = 0; row < list.count(); ++row) {
            const QListWidgetItem& item = *list.item(row);
            const QRect line = list.visualItemRect(&item);
            const int icon = item.icon().isNull() ? 0 : list.iconSize().width() + 4;
            if (list.wordWrap())
                Note(list, item.text(), line.height(), WrappedHeight(list, item, line.width()));
            else
                Note(list, item.text(), list.viewport()->width() - icon, Advance(list, item.text()));
        }
    }
    static int WrappedHeight(const QListWidget& list, const QListWidgetItem& item, int width) {
        const QFontMetrics letters(item.data(Qt::FontRole).isValid() ? item.font() : list.font());
        constexpr int margins = 8, any = 10000;
        return letters.boundingRect(0, 0, width - margins, any, Qt::TextWordWrap, item.text()).height();
    }
};

std::vector<std::string> OffTheScreen(const QWidget& window) {
    const QRect screen = window.screen()->availableGeometry();
    const QRect place(window.mapToGlobal(QPoint(0, 0)), window.size());
    if (screen.contains(place)) return {};
    return {"the window of " + std::to_string(place.width()) + " x " + std::to_string(place.height()) +
            " at " + std::to_string(place.x()) + ", " + std::to_string(place.y())};
}

// Windows whose forms have to be scrolled sideways; tables and texts in a window may be wider than it.
std::vector<std::string> ScrolledSideways(const QWidget& window) {
    for (const auto* area : window.findChildren<QScrollArea*>())
        if (area->isVisible() && area->widgetResizable() && area->horizontalScrollBar()->maximum() > 0)
            return {"scrolls sideways by " + std::to_string(area->horizontalScrollBar()->maximum())};
    return {};
}

// --- looks of a desktop ----------------------------------------------------------------------------------

struct Look {
    int Points;  // of the letters
    char Mark;   // before the decimals
    bool IsDark; // light letters on dark windows
};

QPalette DarkPalette() {
    QPalette dark(QColor(53, 53, 53), QColor(45, 45, 45)); // the tones of edges come from these two
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::AlternateBase, QColor(45, 45, 45));
    dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
    dark.setColor(QPalette::ToolTipBase, QColor(45, 45, 45));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
                            QPalette::HighlightedText}) {
        dark.setColor(role, QColor(235, 235, 235));
        dark.setColor(QPalette::Disabled, role, QColor(127, 127, 127));
    }
    dark.setColor(QPalette::Disabled, QPalette::Highlight, QColor(80, 80, 80));
    dark.setColor(QPalette::PlaceholderText, QColor(150, 150, 150));
    dark.setColor(QPalette::Link, QColor(100, 170, 240));
    return dark;
}

// Starts the program anew as on a desktop with such letters, signs and colours.
void StartWith(const Player& player, const Look& look) {
    static const double usual = QFontInfo(QApplication::font()).pointSizeF();
    const long percent = std::lround(100.0 * look.Points / usual);
    std::ofstream(player.Directory() + "/config/QUILLON.ini")
        << "[quillon]\nformscalingpercent=" << percent << "\n";
    Host.DecimalMark = [mark = look.Mark] { return mark; };
    QApplication::setPalette(look.IsDark ? DarkPalette() : QApplication::style()->standardPalette());
    UnloadForms();
    StartDesktop("");
    EXPECT_NEAR(QFontInfo(QApplication::font()).pointSizeF(), look.Points, 0.5);
    Player::Serve();
}

std::string NameOf(const Look& look) {
    const QScreen& screen = *QApplication::primaryScreen();
    const QSize pixels = screen.size() * screen.devicePixelRatio();
    return std::to_string(pixels.width()) + "x" + std::to_string(pixels.height()) +
           (look.IsDark ? "-dark-" : "-light-") + std::to_string(look.Points) +
           (look.Mark == ',' ? "-comma" : "-point");
}

// --- photographs -----------------------------------------------------------------------------------------

QString PhotographsFolder() {
    return qEnvironmentVariable("QUILLON_PHOTOGRAPHS");
}

void Photograph(QWidget& window, const Look& look, const std::string& title) {
    const QString folder = PhotographsFolder() + "/" + QString::fromStdString(NameOf(look));
    EXPECT_TRUE(QDir().mkpath(folder));
    EXPECT_TRUE(window.grab().save(folder + "/" + QString::fromStdString(title) + ".png"));
}

// Two of the eight, which have each letter size, sign and palette once; for photographs all of them.
std::vector<Look> LooksWith(int points) {
    if (PhotographsFolder().isEmpty()) return {{points, points > 9 ? ',' : '.', points > 9}};
    std::vector<Look> all;
    for (const bool dark : {false, true})
        for (const char mark : {'.', ','})
            all.push_back({points, mark, dark});
    return all;
}

// Pictures of which a part lies where one has to scroll to.
std::vector<std::string> HiddenPictures(const QWidget& window) {
    std::vector<std::string> found;
    for (const auto* widget : window.findChildren<QWidget*>()) // the kind is no one of the toolkit's own
        if (const auto* picture = dynamic_cast<const PaintedView*>(widget);
            picture && picture->isVisible() && picture->visibleRegion().boundingRect() != picture->rect())
            found.push_back("not the whole of '" + picture->accessibleName().toStdString() + "' is seen");
    return found;
}

void LookAtOne(Player& player, const FormOpening& opening, const Look& look) {
    const std::string title = *opening.Title == 0 ? opening.Form : opening.Title;
    PrepareFor(opening);
    VisitForm(player, opening, [&](QWidget& window) {
        Player::Serve();
        EXPECT_EQ(CutTexts(window).Found, std::vector<std::string>{}) << title;
        EXPECT_EQ(OffTheScreen(window), std::vector<std::string>{}) << title;
        EXPECT_EQ(ScrolledSideways(window), std::vector<std::string>{}) << title;
        EXPECT_EQ(HiddenPictures(window), std::vector<std::string>{}) << title;
        if (!PhotographsFolder().isEmpty()) Photograph(window, look, title);
    });
}

void ExpectEachFits(Player& player, int points) {
    for (const Look& look : LooksWith(points)) {
        SCOPED_TRACE(NameOf(look));
        StartWith(player, look);
        for (const FormOpening& opening : FormOpenings())
            LookAtOne(player, opening, look);
        for (const FormOpening& opening : FurtherOpenings())
            LookAtOne(player, opening, look);
    }
}

TEST_F(EveryScreen, FitsWithSmallLetters) {
    ExpectEachFits(player, 9);
}

TEST_F(EveryScreen, FitsWithLargeLettersAndCommasInTheDark) {
    ExpectEachFits(player, 14);
}

// --- larger screens --------------------------------------------------------------------------------------

void ExpectBothOn(const char* screen) {
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QUILLON_TEST_SCREEN", screen);
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QApplication::applicationFilePath(), {"--gtest_filter=EveryScreen.FitsWith*"});
    ASSERT_TRUE(program.waitForFinished(-1));
    const std::string told = program.readAll().toStdString();
    EXPECT_TRUE(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0) << told;
    EXPECT_NE(told.find("[  PASSED  ] 2 tests."), std::string::npos) << told;
}

TEST_F(EveryScreen, IsOneOf1600By1000) {
    ExpectBothOn("1600x1000@1");
}

TEST_F(EveryScreen, IsOneOf3200By2000WithTwoDotsToAPixel) {
    ExpectBothOn("1600x1000@2");
}

} // namespace
} // namespace Quillon
