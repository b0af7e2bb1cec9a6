// The main window: the menu, and below it the workbench.
#include "commands/Analmenu.h"
#include "commands/Sessions.h"
#include "commands/StartUp.h"
#include "commands/Workbench.h"
#include "fit/forms/FitMon.h"
#include "fit/forms/WaitForm.h"
#include "forms/Pieces.h"
#include "forms/shell/Dropped.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/MenuKeys.h"
#include "forms/shell/ReaderNames.h"
#include "forms/shell/WindowPlaces.h"
#include "forms/shell/WindowSizes.h"
#include "forms/workbench/GraphPane.h"
#include "forms/workbench/Idle.h"
#include "forms/workbench/ParameterPane.h"
#include "forms/workbench/StartPage.h"
#include "forms/workbench/StepsPane.h"
#include "persistence/Filelist.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>

#include <algorithm>
#include <optional>

namespace Quillon {

namespace {

// A pane of the workbench: its own button hides it as the menu does.
class PaneDock : public QDockWidget {
public:
    PaneDock(PaneKind pane, QWidget* content) : Pane(pane) {
        const PaneState& state = Workbench.Panes[static_cast<std::size_t>(pane)];
        setObjectName(state.Key); // by which the toolkit knows it again
        setWindowTitle(state.Caption);
        setWidget(content);
    }

protected:
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        RunHandler([this] { ShowPane(Pane, false); });
    }

private:
    PaneKind Pane;
};

class MainWindow : public QMainWindow {
public:
    explicit MainWindow(QWidget* parent) : QMainWindow(parent), Bind(this, &Analmenu.State) {
        BuildMenus();
        setCentralWidget(MakeStartPage(Bind));
        BuildPanes();
        BuildNote();
        setAcceptDrops(true);
        TakePlace();
        auto* keeper = new QTimer(this);
        connect(keeper, &QTimer::timeout, this, [] {
            KeepSession();
            if (FillKeepNote()) RefreshForms();
        });
        keeper->start(SecondsBetweenKeeps * 1000);
        Bind.Also([this] {
            RefreshMenus();
            if (MayFollowAnalysis()) RefreshPanes();
            if (!Analmenu.Ended) return; // the question has been asked
            KeepArrangement();
            QApplication::exit(0);
        });
    }

protected:
    void showEvent(QShowEvent* event) override {
        QMainWindow::showEvent(event);
        if (Placed || event->spontaneous()) return;
        Placed = true;
        setAttribute(Qt::WA_KeyboardFocusChange); // the focus is seen before the first Tab
        NameForReaders(*this);
        PlaceWindow(*this);
    }

    // While a command is at work it cannot be left standing: a fit or a search is cancelled, a question waits
    // for its answer, and the user closes the window again.
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        if (HandlerAtWork()) {
            if (FitMon.Loaded || WaitForm.State.Shown) AskToStop();
            return;
        }
        RunHandler([] { Analmenu.Ended = MayEnd(); });
        if (Analmenu.Ended) event->accept();
    }

    // Files and folders, as the command line takes them.
    void dragEnterEvent(QDragEnterEvent* event) override {
        if (!HandlerAtWork() && !LocalPaths(event->mimeData()).empty()) event->acceptProposedAction();
    }
    void dropEvent(QDropEvent* event) override {
        const std::vector<std::string> paths = LocalPaths(event->mimeData());
        if (paths.empty()) return;
        event->acceptProposedAction();
        // Whoever dragged them waits until this returns, and a window may open by them.
        QTimer::singleShot(0, this, [paths] { RunWhenIdle([&] { OpenDropped(paths); }); });
    }

private:
    // Across the top of the screen: the windows of the analysis open below and before it.
    void TakePlace() {
        const QRect screen = QApplication::primaryScreen()->availableGeometry();
        move(screen.topLeft());
        constexpr QSize frame(16, 40); // pixels, of title and edges
        resize(screen.width() - frame.width(),
               std::min(ForFont(0, 780).height(), screen.height() - frame.height()));
    }

    void BuildPanes() {
        setDockNestingEnabled(true);
        Panes = {new PaneDock(PaneKind::Steps, MakeStepsPane(Bind)),
                 new PaneDock(PaneKind::Graphs, MakeGraphPane(Bind)),
                 new PaneDock(PaneKind::Parameters, MakeParameterPane(Bind))};
        PlacePanes();
        restoreState(QByteArray::fromHex(QByteArray::fromStdString(Workbench.Layout)));
        RefreshPanes();
    }

    // A line at the foot that is there only when it has something to say.
    void BuildNote() {
        QLabel* note = MakeLabel(
            Bind, []() -> Control& { return Workbench.KeepNote; }, true);
        note->setObjectName("KeepNote");
        statusBar()->setSizeGripEnabled(false);
        statusBar()->addWidget(note, 1);
        Bind.Also([bar = statusBar()] {
            if (bar->isHidden() == Workbench.KeepNote.Visible) bar->setVisible(Workbench.KeepNote.Visible);
        });
    }

    PaneDock* Dock(PaneKind pane) const { return Panes[static_cast<std::size_t>(pane)]; }

    // Where they come to stand by themselves: the steps to the left, the graphs above the parameters.
    void PlacePanes() {
        for (PaneDock* pane : Panes) {
            pane->setFloating(false);
            addDockWidget(pane == Dock(PaneKind::Steps) ? Qt::LeftDockWidgetArea : Qt::RightDockWidgetArea,
                          pane);
        }
        splitDockWidget(Dock(PaneKind::Graphs), Dock(PaneKind::Parameters), Qt::Vertical);
        TimesReset = Workbench.TimesReset;
    }

    // Most of the window to the graphs, unless the user has arranged the panes.
    void SizePanes() {
        QDockWidget* const steps = Dock(PaneKind::Steps);
        const int across = steps->sizeHint().width();
        resizeDocks({steps, Dock(PaneKind::Graphs)}, {across, width() - across}, Qt::Horizontal);
        resizeDocks({Dock(PaneKind::Graphs), Dock(PaneKind::Parameters)}, {3, 1}, Qt::Vertical);
    }

    void RefreshPanes() {
        const bool reset = TimesReset != Workbench.TimesReset;
        if (reset) PlacePanes();
        const bool begun = !Workbench.Starts && StartShown.value_or(true);
        if (StartShown != Workbench.Starts) centralWidget()->setVisible(Workbench.Starts);
        StartShown = Workbench.Starts;
        for (std::size_t i = 0; i < Panes.size(); ++i) {
            const bool seen = PaneIsSeen(static_cast<PaneKind>(i));
            if (Panes[i]->isHidden() == seen) Panes[i]->setVisible(seen);
        }
        if (reset || (begun && Workbench.Layout.empty()))
            QTimer::singleShot(0, this, [this] { SizePanes(); }); // once the window has its size
    }

    // At the end of the program; of the start page alone there is nothing to be kept.
    void KeepArrangement() {
        if (!Workbench.Starts) KeepLayout(saveState().toHex().toStdString());
    }

    void BuildMenus() {
        for (const auto menu : {MainMenu::File, MainMenu::Edit, MainMenu::Analysis, MainMenu::Graphs,
                                MainMenu::View, MainMenu::Preferences, MainMenu::Help}) {
            QMenu* bar = menuBar()->addMenu(ShownText(MainMenuCaption(menu)));
            bar->setToolTipsVisible(true);
            for (const MainMenuItem& item : Analmenu.Items)
                if (item.Row.Menu == menu) AddItem(bar, item);
            if (menu == MainMenu::File) AddRecentFiles(bar);
            KeepAccessKeysApart(bar);
        }
    }

    void AddItem(QMenu* menu, const MainMenuItem& item) {
        if (item.Row.NewGroup) menu->addSeparator();
        QAction* action = menu->addAction(ShownText(item.Item.Text));
        action->setCheckable(item.Row.CheckedWhen != nullptr);
        action->setObjectName(item.Row.Name);
        action->setShortcuts(QKeySequence::listFromString(item.Row.Keys));
        const std::string name = item.Row.Name;
        connect(action, &QAction::triggered, this, [name] { RunWhenIdle([&] { RunMainCommand(name); }); });
        Actions.push_back({name, action});
    }

    void AddRecentFiles(QMenu* menu) {
        Recent.push_back(menu->addSeparator());
        for (long i = 1; i <= MaxRecentFiles; ++i) {
            QAction* action = menu->addAction("");
            connect(action, &QAction::triggered, this, [i] { RunWhenIdle([i] { RunRecentFile(i); }); });
            Recent.push_back(action);
        }
    }

    void RefreshMenus() {
        for (const auto& [name, action] : Actions) {
            const MenuItem& item = MainItem(name);
            action->setEnabled(item.Enabled);
            action->setVisible(item.Visible);
            action->setChecked(item.Checked);
        }
        for (long i = 0; i < static_cast<long>(Recent.size()) && i <= mnuRecentFile.Hi(); ++i) {
            Recent[static_cast<std::size_t>(i)]->setVisible(mnuRecentFile[i].Visible);
            if (i > 0)
                Recent[static_cast<std::size_t>(i)]->setText(
                    QString("&%1 %2").arg(i).arg(ShownText(mnuRecentFile[i].Caption).replace('&', "&&")));
        }
    }

    struct NamedAction {
        std::string Name;
        QAction* Action;
    };
    Binder Bind;
    std::vector<NamedAction> Actions;
    std::vector<QAction*> Recent;
    std::vector<PaneDock*> Panes; // by PaneKind
    int TimesReset = 0;
    std::optional<bool> StartShown; // the start page; nothing before the first look
    bool Placed = false;
};

QWidget* MakeAnalmenu(QWidget* parent) {
    return new MainWindow(parent);
}

const FormWindow Registered(AnalmenuName, MakeAnalmenu);

} // namespace

} // namespace Quillon
