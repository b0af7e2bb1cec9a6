// Works all windows and messages of the program at random: clicks, drags, the wheel, keys and menus, files
// that are dropped and pasted texts, windows that are closed half-way, steps that are taken back.
//
// In the suite for a number of steps, under the sanitizers too; by hand for as many as wanted:
//   QUILLON_MONKEY_STEPS=100000 QUILLON_MONKEY_SEED=7 test_forms --gtest_filter=Monkey*
// QUILLON_MONKEY_LOG=1 tells every step. File dialogs are answered at the seam, and nothing is printed.
#include "chart/Charts.h"
#include "chart/records/ChartState.h"
#include "commands/Analmenu.h"
#include "commands/history/History.h"
#include "fit/forms/FitMon.h"
#include "fit/forms/WaitForm.h"
#include "forms/StartDesktop.h"
#include "forms/shell/Binding.h"
#include "forms/shell/DesktopPlatform.h"
#include "forms/shell/FormHost.h"
#include "platform/Platform.h"
#include "tests/forms/HostileFiles.h"
#include "tests/forms/RandomHands.h"
#include "tests/forms/Scans.h"
#include "tests/support/Simulate.h"
#include "workspace/records/Workspace.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDockWidget>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <unistd.h>

namespace Quillon {
namespace {

long FromEnvironment(const char* name, long otherwise) {
    bool ok = false;
    const int value = qEnvironmentVariableIntValue(name, &ok);
    return ok ? value : otherwise;
}

// Counted, not timed. Runs of one seed part where what a search or a file dialog shows goes by the clock, the
// more of them the longer they are.
long StepsAskedFor() {
    return FromEnvironment("QUILLON_MONKEY_STEPS", 1000);
}

std::string NameOf(const QWidget* window) {
    if (const auto* box = qobject_cast<const QMessageBox*>(window))
        return "message " + box->text().toStdString();
    const std::string name = window->objectName().toStdString();
    return name.empty() ? window->metaObject()->className() : name;
}

class Monkey {
public:
    explicit Monkey(std::uint64_t seed);
    ~Monkey();
    void Play();
    long Steps = 0, Commands = 0;
    int Starts = 0;

private:
    static constexpr long LongestInOneWindow = 4000; // steps; a window that outlasts them cannot be left

    std::size_t Below(std::size_t n) { return static_cast<std::size_t>(Noise.Bits() % n); }
    int Within(int n) { return static_cast<int>(Below(static_cast<std::size_t>(n))); }
    bool Chance(std::size_t percent) { return Below(100) < percent; }
    template <class List> auto OneOf(const List& list) {
        return *(std::begin(list) + Within(static_cast<int>(std::size(list))));
    }

    void WireHost();
    void Look();
    void Step();
    void CheckIdle();
    void WalkHistory();
    void WatchFor(QWidget* window);
    QWidget* Target();
    void InMainWindow();
    void InWindow(QWidget& window);
    void ChangeWorkspace();
    void End();
    void Tell(const std::string& what);

    NoiseSource Noise;
    bool Logs = FromEnvironment("QUILLON_MONKEY_LOG", 0) != 0;
    QObject Here;
    std::string Folder;
    HostileFiles Files;
    RandomHands Hands{Noise};
    QPointer<QWidget> Last;
    long StepsInLast = 0;
    std::string First; // the bytes of the analysis at the start of the program
};

std::string FolderOfThisProcess() {
    const std::string folder =
        (std::filesystem::temp_directory_path() / ("quillon-monkey-" + std::to_string(::getpid()))).string();
    std::filesystem::create_directories(folder + "/config");
    qputenv("QUILLON_CONFIG", QByteArray::fromStdString(folder + "/config"));
    InstallDesktopPlatform();
    Work = FreshWorkspace();
    return folder;
}

Monkey::Monkey(std::uint64_t seed) : Noise(seed), Folder(FolderOfThisProcess()), Files(Folder, Noise) {
    WireHost();
    // Letters that are typed in a list look for one word, however slowly they come.
    QApplication::setKeyboardInputInterval(std::numeric_limits<int>::max());
}

Monkey::~Monkey() {
    UnloadForms();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    std::error_code ignored;
    std::filesystem::remove_all(Folder, ignored);
}

// What goes by the clock goes by counts instead: with the same seed a slow machine makes much the same steps.
void Monkey::WireHost() {
    Host.AskFile = [this](const FileRequest& request) {
        Tell("file: " + request.Title);
        return Files.Choose(request);
    };
    Host.StartProgram = [](const std::string&, const std::string&) { return true; };
    Host.Beep = [] {};
    Host.SeedUniform = [] {};
    Host.Uniform = [this] { return static_cast<float>(Below(1U << 24U)) * 0x1p-24F; };
    Host.ServeEvents = [calls = 0L]() mutable {
        if (Chart.Painting || ++calls % 500 != 0) return;
        RefreshForms();
        QApplication::processEvents();
    };
    Host.RunPieces = [](long count, const std::function<void(long)>& piece,
                        const std::function<void(long)>& watch) {
        for (long i = 0; i < count; ++i) {
            piece(i);
            watch(i + 1);
        }
    };
    const auto show = Host.MessageBoxAnswer;
    Host.MessageBoxAnswer = [this, show](const BoxRequest& request) {
        // What nobody foresaw is told in these words.
        for (const char* bad : {"This command failed", ErrorText::BadSubscript})
            EXPECT_EQ(request.Text.find(bad), std::string::npos) << request.Text;
        Tell("message: " + request.Text);
        return show(request);
    };
}

void Monkey::Tell(const std::string& what) {
    if (Logs) std::fprintf(stderr, "%ld %s\n", Steps, what.c_str());
}

// Starts the program again whenever the monkey has ended it.
void Monkey::Play() {
    while (Steps < StepsAskedFor()) {
        StartDesktop(Folder);
        if (++Starts == 1) Files.AddFit();
        NoteHistory("");
        First = BytesToCompare();
        QTimer::singleShot(0, &Here, [this] { Look(); });
        QApplication::exec();
        if (!HandlerAtWork()) WalkHistory();
        UnloadForms();
    }
}

void Monkey::Look() {
    if (Analmenu.Ended) return;
    QTimer::singleShot(0, &Here, [this] { Look(); });
    if (Steps >= StepsAskedFor()) return End();
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

// The window that waits for an answer, sometimes a message or the manual above it; otherwise any that stands.
QWidget* Monkey::Target() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    QList<QWidget*> windows;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && (qobject_cast<QDialog*>(window) || qobject_cast<QDockWidget*>(window)))
            windows << window;
    QWidget* main = OpenForm(AnalmenuName);
    if (!main || !main->isVisible()) return nullptr;
    if (windows.isEmpty() || Chance(50)) return main;
    // The toolkit has them in the order of their addresses.
    std::ranges::sort(windows, {}, [](const QWidget* window) { return NameOf(window); });
    return OneOf(windows);
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
    if (++StepsInLast < LongestInOneWindow || !window->isModal()) return;
    ADD_FAILURE() << "there is no way out of " << NameOf(window);
    StepsInLast = 0;
    Work.AbortFit = FlagTrue;
    if (auto* dialog = qobject_cast<QDialog*>(window)) dialog->done(QDialog::Rejected);
}

void Monkey::Step() {
    CheckIdle();
    if (QWidget* popup = QApplication::activePopupWidget()) return Hands.InPopup(*popup);
    QWidget* window = Target();
    if (!window) return;
    WatchFor(window);
    if (!window->isActiveWindow()) window->activateWindow();
    if (auto* print = qobject_cast<QPrintDialog*>(window)) return print->reject();
    if (window == OpenForm(AnalmenuName) && Chance(60)) return InMainWindow();
    InWindow(*window);
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
    // One leads through most windows, the others from one analysis to another.
    for (const char* often : {"FitData", "Undo", "Redo"})
        if (QAction* one = main->findChild<QAction*>(often); one->isEnabled() && Chance(8)) item = one;
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

void Monkey::InWindow(QWidget& window) {
    const std::size_t what = Below(200);
    if (what < 2 && &window != OpenForm(AnalmenuName)) {
        Tell("close");
        window.close();
    } else if (what < 6) {
        Tell("drop");
        RandomHands::Drop(window, Files.Some());
    } else if (what < 8) {
        Tell("other clipboard");
        QApplication::clipboard()->setText(QString::fromLatin1(Files.Pasted()));
    } else {
        Tell(Hands.DoOne(window));
    }
}

TEST(Monkey, FindsNoWayToBreakTheProgram) {
    const long seed = FromEnvironment("QUILLON_MONKEY_SEED", 1);
    std::printf("seed %ld\n", seed);
    Monkey monkey(static_cast<std::uint64_t>(seed));
    monkey.Play();
    std::printf("%ld steps, %ld commands, %d starts\n", monkey.Steps, monkey.Commands, monkey.Starts);
    EXPECT_EQ(monkey.Steps, StepsAskedFor());
    EXPECT_GT(monkey.Commands, monkey.Steps / 200); // most steps are made in what a command has opened
}

} // namespace
} // namespace Quillon
