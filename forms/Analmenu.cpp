// The main window: the menu, and below it where the analysis stands.
#include "commands/Analmenu.h"
#include "commands/StartUp.h"
#include "fit/FitMon.h"
#include "fit/WaitForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/MenuKeys.h"
#include "input/NUMINPUT.h"
#include "models/Catalogue.h"
#include "persistence/Filelist.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QScreen>

#include <algorithm>

namespace Quillon {

namespace {

QString YesOr(const std::string& text, const char* otherwise) {
    return text.empty() ? QString(otherwise) : ShownText(text);
}

// A few lines that say where the analysis stands and what comes next.
QString StateOfTheAnalysis() {
    QString data = "no data sets yet: File > Read/change data sets...";
    if (Work.DataChosen) data = ShownText(DataStateText());
    QString model = "not chosen yet: Analysis > Define Model...";
    if (Work.ModelChosen) model = YesOr(ModelDialogName(Work.Model), "none");
    QString fit = YesOr(FitStateText(), "none yet");
    if (FitStateText().empty() && Work.ModelChosen && Work.DataChosen) fit = "ready: Analysis > Fit Data...";
    return QString(
               "<table cellpadding='4'><tr><td>Data:</td><td>%1</td></tr><tr><td>Model:</td><td>%2</td></tr>"
               "<tr><td>Fit:</td><td>%3</td></tr></table>")
        .arg(data.toHtmlEscaped(), model.toHtmlEscaped(), fit.toHtmlEscaped());
}

class MainWindow : public QMainWindow {
public:
    explicit MainWindow(QWidget* parent) : QMainWindow(parent), Bind(this, &Analmenu.State) {
        BuildMenus();
        auto* state = new QLabel;
        state->setTextFormat(Qt::RichText);
        state->setAlignment(Qt::AlignTop | Qt::AlignLeft);
        state->setMargin(16);
        setCentralWidget(state);
        TakePlace();
        Bind.Also([this, state] {
            const QString text = StateOfTheAnalysis();
            if (state->text() != text && !HandlerAtWork()) state->setText(text); // between two commands
            RefreshMenus();
            if (Analmenu.Ended) QApplication::exit(0); // the question has been asked
        });
    }

protected:
    // While a command is at work it cannot be left standing: a fit or a search is cancelled, a question waits
    // for its answer, and the user closes the window again.
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        if (HandlerAtWork()) {
            if (FitMon.Loaded || WaitForm.State.Shown) Work.AbortFit = FlagTrue;
            return;
        }
        RunHandler([] { Analmenu.Ended = MayEnd(); });
        if (Analmenu.Ended) event->accept();
    }

private:
    // Across the top of the screen: the windows of the analysis open below and before it.
    void TakePlace() {
        const QRect screen = QApplication::primaryScreen()->availableGeometry();
        move(screen.topLeft());
        resize(screen.width(), std::min(780, screen.height()));
    }

    void BuildMenus() {
        for (const auto menu : {MainMenu::File, MainMenu::Edit, MainMenu::Analysis, MainMenu::Graphs,
                                MainMenu::Preferences, MainMenu::Help}) {
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
};

QWidget* MakeAnalmenu(QWidget* parent) {
    return new MainWindow(parent);
}

const FormWindow Registered(AnalmenuName, MakeAnalmenu);

} // namespace

} // namespace Quillon
