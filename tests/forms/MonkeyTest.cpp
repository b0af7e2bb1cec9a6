// Clicks and types at random over all windows and messages of the program.
//
// In the suite for two seconds; by hand longer, best under the sanitizers:
//   QUILLON_MONKEY_SECONDS=300 QUILLON_MONKEY_SEED=7 test_forms --gtest_filter=Monkey*
// QUILLON_MONKEY_LOG=1 tells every step. File dialogs are answered at the seam, and nothing is printed.
#include "chart/Charts.h"
#include "commands/Analmenu.h"
#include "commands/history/History.h"
#include "fit/forms/FitMon.h"
#include "fit/forms/WaitForm.h"
#include "forms/StartDesktop.h"
#include "forms/shell/Binding.h"
#include "forms/shell/DesktopPlatform.h"
#include "forms/shell/FormHost.h"
#include "platform/Platform.h"
#include "tests/forms/Scans.h"
#include "tests/support/Simulate.h"
#include "workspace/records/Workspace.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QPrintDialog>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <unistd.h>

namespace Quillon {
namespace {

long FromEnvironment(const char* name, long otherwise) {
    bool ok = false;
    const int value = qEnvironmentVariableIntValue(name, &ok);
    return ok ? value : otherwise;
}

std::string NameOf(const QWidget* window) {
    if (const auto* box = qobject_cast<const QMessageBox*>(window))
        return "message " + box->text().toStdString();
    const std::string name = window->objectName().toStdString();
    return name.empty() ? window->metaObject()->className() : name;
}

class Monkey {
public:
    Monkey(std::uint64_t seed, long seconds);
    ~Monkey();
    void Play();
    long Steps = 0;
    int Starts = 0;

private:
    static constexpr long LongestInOneWindow = 4000; // steps; a window that outlasts them cannot be left

    std::size_t Below(std::size_t n) { return static_cast<std::size_t>(Noise.Bits() % n); }
    bool Chance(std::size_t percent) { return Below(100) < percent; }
    template <class List> auto OneOf(const List& list) { return list[Below(std::size(list))]; }

    void Look();
    void Step();
    void CheckIdle();
    void WalkHistory();
    void WatchFor(QWidget* window);
    QWidget* Target();
    void InMenu(QMenu* menu);
    void InMainWindow();
    void InWindow(QWidget* window);
    void Click(QWidget* window);
    void Drag(QWidget* window);
    void Key(QWidget* window);
    void ChangeWorkspace();
    void End();
    FileAnswer ChooseFile(const FileRequest& request);
    void Tell(const std::string& what);

    NoiseSource Noise;
    QElapsedTimer Clock;
    long Seconds;
    bool Logs;
    QObject Here;
    std::string Folder;
    std::vector<std::string> Scans;
    QPointer<QWidget> Last;
    long StepsInLast = 0;
    std::string First; // the bytes of the analysis at the start of the program
    long Commands = 0;
};

Monkey::Monkey(std::uint64_t seed, long seconds)
    : Noise(seed), Seconds(seconds), Logs(FromEnvironment("QUILLON_MONKEY_LOG", 0) != 0) {
    Folder =
        (std::filesystem::temp_directory_path() / ("quillon-monkey-" + std::to_string(::getpid()))).string();
    std::filesystem::create_directories(Folder + "/config");
    qputenv("QUILLON_CONFIG", QByteArray::fromStdString(Folder + "/config"));
    InstallDesktopPlatform();
    Host.AskFile = [this](const FileRequest& request) { return ChooseFile(request); };
    Host.StartProgram = [](const std::string&, const std::string&) { return true; };
    Host.Beep = [] {};
    const auto show = Host.MessageBoxAnswer;
    Host.MessageBoxAnswer = [this, show](const BoxRequest& request) {
        // What nobody foresaw is told in these words.
        for (const char* bad : {"This command failed", ErrorText::BadSubscript})
            EXPECT_EQ(request.Text.find(bad), std::string::npos) << request.Text;
        Tell("message: " + request.Text);
        return show(request);
    };
    Work = FreshWorkspace();
    Scans = WriteScans(Folder);
    std::FILE* broken = std::fopen((Folder + "/broken.RA1").c_str(), "w");
    std::fputs("no scan\nat all\n\n", broken);
    std::fclose(broken);
}

Monkey::~Monkey() {
    UnloadForms();
    std::error_code ignored;
    std::filesystem::remove_all(Folder, ignored);
}

void Monkey::Tell(const std::string& what) {
    if (Logs) std::fprintf(stderr, "%ld %s\n", Steps, what.c_str());
}

// Starts the program again whenever the monkey has ended it.
void Monkey::Play() {
    Clock.start();
    while (Clock.elapsed() < Seconds * 1000) {
        StartDesktop(Folder);
        First = BytesToCompare();
        ++Starts;
        QTimer::singleShot(0, &Here, [this] { Look(); });
        QApplication::exec();
        if (!HandlerAtWork()) WalkHistory();
        UnloadForms();
    }
}

FileAnswer Monkey::ChooseFile(const FileRequest& request) {
    FileAnswer answer;
    Tell("file: " + request.Title);
    if (Chance(25)) return answer;
    if (request.Save)
        answer.Paths = {Folder + "/written" + std::to_string(Below(5)) + ".RA1"};
    else if (Chance(70))
        answer.Paths = {OneOf(Scans)};
    else if (request.Several && Chance(50))
        answer.Paths = Scans;
    else
        answer.Paths = {Folder +
                        (Chance(50) ? "/broken.RA1" : "/written" + std::to_string(Below(5)) + ".RA1")};
    answer.Cancelled = false;
    answer.Path = answer.Paths.front();
    answer.Title = std::filesystem::path(answer.Path).filename().string();
    return answer;
}

void Monkey::Look() {
    if (Analmenu.Ended) return;
    QTimer::singleShot(0, &Here, [this] { Look(); });
    if (Clock.elapsed() > Seconds * 1000) return End();
    ++Steps;
    Step();
}

// Out of every window, and out of the program.
void Monkey::End() {
    Work.AbortFit = FlagTrue;
    if (QWidget* popup = QApplication::activePopupWidget()) {
        popup->close();
        return;
    }
    if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
        if (NameOf(dialog) != FitMonName && NameOf(dialog) != WaitFormName) dialog->done(QDialog::Rejected);
    if (!HandlerAtWork()) QApplication::exit(0);
}

QWidget* Monkey::Target() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    QWidget* main = OpenForm(AnalmenuName);
    QWidget* charts = OpenForm(ChartsName);
    if (charts && charts->isVisible() && Chance(50)) return charts;
    return main && main->isVisible() ? main : nullptr;
}

// Nothing may be left behind by a command that is over.
void Monkey::CheckIdle() {
    if (HandlerAtWork() || QApplication::activePopupWidget() || QApplication::activeModalWidget()) return;
    const QWidget* main = OpenForm(AnalmenuName);
    ASSERT_TRUE(main && main->isVisible()) << "no window is left";
    EXPECT_EQ(Work.AbortFit, FlagFalse) << "a cancel is left";
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "an hourglass is left";
    EXPECT_FALSE(FitMon.Loaded);
}

// Back to the start and forth to the end: the bytes are those that stood there.
void Monkey::WalkHistory() {
    Tell("all steps back and forth");
    NoteHistory("");
    while (CanRedo())
        RunMainCommand("Redo");
    const std::string last = BytesToCompare();
    while (CanUndo())
        RunMainCommand("Undo");
    EXPECT_TRUE(BytesToCompare() == First) << "Undo does not lead to the start";
    while (CanRedo())
        RunMainCommand("Redo");
    EXPECT_TRUE(BytesToCompare() == last) << "Redo does not lead to the end";
}

void Monkey::WatchFor(QWidget* window) {
    if (Last != window) {
        Last = window;
        StepsInLast = 0;
        Tell("window: " + NameOf(window));
    }
    if (++StepsInLast < LongestInOneWindow || NameOf(window) == AnalmenuName || NameOf(window) == ChartsName)
        return;
    ADD_FAILURE() << "there is no way out of " << NameOf(window);
    StepsInLast = 0;
    Work.AbortFit = FlagTrue;
    if (auto* dialog = qobject_cast<QDialog*>(window)) dialog->done(QDialog::Rejected);
}

void Monkey::Step() {
    CheckIdle();
    if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) return InMenu(menu);
    if (QWidget* popup = QApplication::activePopupWidget()) {
        popup->close();
        return;
    }
    QWidget* window = Target();
    if (!window) return;
    WatchFor(window);
    if (!window->isActiveWindow()) window->activateWindow();
    if (auto* print = qobject_cast<QPrintDialog*>(window)) return print->reject();
    if (window == OpenForm(AnalmenuName) && Chance(60)) return InMainWindow();
    InWindow(window);
}

void Monkey::InMenu(QMenu* menu) {
    const auto actions = menu->actions();
    if (actions.isEmpty() || Chance(30)) {
        menu->close();
        return;
    }
    if (Chance(30)) return QTest::keyClick(menu, OneOf(std::array{Qt::Key_Down, Qt::Key_Up, Qt::Key_Return}));
    QAction* action = OneOf(actions);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
}

// Ends the program, or asks two dozen questions.
bool IsTedious(const QString& command) {
    return command == "MenuExit" || command == "SaveDefaults";
}

void Monkey::InMainWindow() {
    if (Chance(10) && !HandlerAtWork()) return ChangeWorkspace();
    QWidget* main = OpenForm(AnalmenuName);
    std::vector<QAction*> items;
    for (QAction* action : main->findChildren<QAction*>())
        if (!action->objectName().isEmpty() && action->isEnabled() &&
            (!IsTedious(action->objectName()) || Chance(10)))
            items.push_back(action);
    if (items.empty()) return;
    QAction* item = OneOf(items);
    QAction* fit = main->findChild<QAction*>("FitData"); // which leads through most windows
    if (fit->isEnabled() && Chance(15)) item = fit;
    if (++Commands % 200 == 0 && !HandlerAtWork()) WalkHistory();
    Tell("command: " + item->objectName().toStdString());
    item->trigger();
}

// So that all commands get their turn: data, a fit that stands, other models and options.
void Monkey::ChangeWorkspace() {
    Tell("other data");
    const auto serve = Host.ServeEvents;
    Host.ServeEvents = [] {}; // this is no command: it happens between two steps
    if (Chance(50))
        UseSimulatedData();
    else
        UseFinishedFit();
    Host.ServeEvents = serve;
    Work.PauseBeforeFit = Flag(Chance(50));
    Work.OverlayPlot = Flag(Chance(50));
    Work.RangeLogPlot = Flag(Chance(50));
    Work.ChannelRadii[0] = 5.85F;
    Work.ChannelRadii[8] = 6.15F;
}

void Monkey::InWindow(QWidget* window) {
    const std::size_t what = Below(100);
    if (what < 45) return Click(window);
    if (what < 90) return Key(window);
    if (what < 95) return Drag(window);
    if (what < 97)
        return window->resize(200 + static_cast<int>(Below(1000)), 150 + static_cast<int>(Below(700)));
    if (what == 97 && window != OpenForm(AnalmenuName)) {
        Tell("close");
        window->close();
        return;
    }
    QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    if (QWidget* focus = QApplication::focusWidget()) QApplication::sendEvent(focus, &wheel);
}

QWidget* VisibleChild(QWidget* window, std::size_t bits) {
    QList<QWidget*> children;
    for (QWidget* child : window->findChildren<QWidget*>())
        if (child->isVisible() && child->isEnabled() && child->window() == window) children << child;
    return children.isEmpty() ? window : children[static_cast<qsizetype>(bits) % children.size()];
}

void Monkey::Click(QWidget* window) {
    QWidget* widget = VisibleChild(window, Below(10000));
    const QPoint at(static_cast<int>(Below(static_cast<std::size_t>(std::max(1, widget->width())))),
                    static_cast<int>(Below(static_cast<std::size_t>(std::max(1, widget->height())))));
    Tell(std::string("click ") + widget->metaObject()->className());
    if (Chance(80)) return QTest::mouseClick(widget, Qt::LeftButton, {}, at);
    if (Chance(60)) return QTest::mouseDClick(widget, Qt::LeftButton, {}, at);
    QTest::mouseClick(widget, Qt::RightButton, {}, at);
}

void Monkey::Drag(QWidget* window) {
    const QPointer<QWidget> widget = VisibleChild(window, Below(10000));
    const auto place = [&](int size) {
        return static_cast<int>(Below(static_cast<std::size_t>(size + 40))) - 20;
    };
    QTest::mousePress(widget, Qt::LeftButton, {}, {widget->width() / 2, widget->height() / 2});
    for (int i = 0; i < 3 && widget; ++i) {
        const QPoint at(place(widget->width()), place(widget->height()));
        QMouseEvent move(QEvent::MouseMove, QPointF(at), QPointF(widget->mapToGlobal(at)), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(widget, &move);
    }
    if (widget)
        QTest::mouseRelease(widget, Qt::LeftButton, {}, {place(widget->width()), place(widget->height())});
}

void Monkey::Key(QWidget* window) {
    QWidget* to = QApplication::focusWidget();
    if (!to || to->window() != window) to = window;
    const std::size_t what = Below(100);
    if (what < 35) return QTest::keyClick(to, "0123456789.-+eEdD,/?aAbBcCpP28 \xE4~"[Below(31)]);
    if (what < 85)
        return QTest::keyClick(
            to,
            OneOf(std::array{Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space,
                             Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Backspace,
                             Qt::Key_Delete, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown, Qt::Key_F10}),
            OneOf(std::array{Qt::NoModifier, Qt::NoModifier, Qt::NoModifier, Qt::ControlModifier,
                             Qt::ShiftModifier}));
    if (what < 93)
        return QTest::keyClick(to, OneOf(std::array{Qt::Key_A, Qt::Key_C, Qt::Key_V, Qt::Key_X, Qt::Key_Z}),
                               Qt::ControlModifier);
    QTest::keyClick(to, static_cast<Qt::Key>(Qt::Key_A + static_cast<int>(Below(26))), Qt::AltModifier);
}

TEST(Monkey, FindsNoWayToBreakTheProgram) {
    const long seed = FromEnvironment("QUILLON_MONKEY_SEED", 1);
    std::printf("seed %ld\n", seed);
    Monkey monkey(static_cast<std::uint64_t>(seed), FromEnvironment("QUILLON_MONKEY_SECONDS", 2));
    monkey.Play();
    std::printf("%ld steps, %d starts\n", monkey.Steps, monkey.Starts);
    EXPECT_GT(monkey.Steps, 20);
}

} // namespace
} // namespace Quillon
