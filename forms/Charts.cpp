// The chart window.
#include "chart/Charts.h"
#include "chart/CHART.h"
#include "chart/dialogs/AxisOptsForm.h"
#include "chart/dialogs/LegendOptsForm.h"
#include "chart/dialogs/LineWidthForm.h"
#include "chart/dialogs/PrintGraph.h"
#include "chart/dialogs/SetColor.h"
#include "chart/dialogs/ShiftData.h"
#include "chart/dialogs/TitleOptsForm.h"
#include "chart/files/DataText.h"
#include "chart/files/Exchange.h"
#include "chart/files/GraphFile.h"
#include "forms/HelpForm.h"
#include "forms/Pieces.h"
#include "forms/shell/ChartBox.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/MenuKeys.h"
#include "forms/shell/WindowSizes.h"
#include "forms/workbench/Idle.h"
#include "graphs/GraphWindows.h"
#include "platform/Platform.h"
#include "scandata/range/RangeBar.h"
#include "scandata/range/RangeReadings.h"
#include "workspace/records/AnalmenuName.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QDragEnterEvent>
#include <QFile>
#include <QMenuBar>
#include <QMimeData>
#include <QPointer>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <map>

namespace Quillon {

namespace {

void ShowFurtherWindows();

class ChartsWindow : public QDialog {
public:
    // view: null for the chart window itself.
    ChartsWindow(QWidget* parent, GraphWindow* view) : QDialog(parent), Bind(this), View(view) {
        // A dialog stays above its parent; its frame has the buttons of a window all the same.
        setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                       Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint);
        Canvas = new ChartCanvas(this, View);
        auto* line = MakeLabel(Bind, [this]() -> Control& { return Form().StatusLine; });
        line->setFixedHeight(line->fontMetrics().lineSpacing() + 4);
        line->setSizePolicy(QSizePolicy::Ignored,
                            QSizePolicy::Fixed); // a long text does not widen the window
        line->setIndent(4);
        Bind.Also([line] { // and can be read all the same
            const bool cut = line->fontMetrics().horizontalAdvance(line->text()) > line->width();
            line->setToolTip(cut ? line->text() : QString());
        });
        auto* all = new QVBoxLayout(this);
        all->setContentsMargins(0, 0, 0, 0);
        all->setMenuBar(BuildMenus());
        all->addWidget(Canvas, 1);
        if (View == nullptr && RangeBar.Shown) all->addWidget(BuildRangeBar());
        all->addWidget(line);
        Canvas->Changed = [this] {
            if (Modal && !Charts.Shown) done(QDialog::Accepted);
            if (!HandlerAtWork()) ClearCancel(); // Esc found nothing to break off
        };
        Bind.Also([this] { Follow(); });
        if (View == nullptr && !Charts.Shown) Bind.Also(ShowFurtherWindows);
        Modal = View == nullptr && Charts.Shown;
        setWindowTitle(ShownText(Work.ProgramName + " - Graph"));
        setAcceptDrops(true);
        resize(ForFont(900, 620));
        Canvas->setFocus();
    }

    bool IsClosed() const { return Closed; }

    void reject() override { Canvas->Key(27, 0); } // Esc

protected:
    // A graph file that is dropped is shown.
    void dragEnterEvent(QDragEnterEvent* event) override {
        if (!DroppedGraph(event->mimeData()).empty()) event->acceptProposedAction();
    }
    void dropEvent(QDropEvent* event) override {
        const std::string path = DroppedGraph(event->mimeData());
        if (!path.empty()) Canvas->Run([path] { RestoreGraphFile(path); });
    }
    void closeEvent(QCloseEvent* event) override {
        if (View != nullptr) return CloseView(event);
        if (!ChartsMayClose()) return event->ignore();
        event->accept();
        if (Modal) Canvas->Key(27, 0);
    }

private:
    // A further window goes with its graph, but not while something is done to that.
    void CloseView(QCloseEvent* event) {
        if (HandlerAtWork() || IsInHand(View)) return event->ignore();
        event->accept();
        Closed = true;
        QTimer::singleShot(0, qApp, RefreshForms);
    }

    static std::string DroppedGraph(const QMimeData* data) {
        for (const QUrl& url : data->urls()) {
            const std::string path = QFile::encodeName(url.toLocalFile()).toStdString();
            if (url.isLocalFile() && NamesGraphFile(path)) return path;
        }
        return {};
    }

    using ItemRef = MenuItem ChartsForm::*;

    void Add(QMenu* menu, ItemRef item, void (*command)(), bool checkable = false, QKeySequence key = {}) {
        QAction* action = menu->addAction(ShownText((Form().*item).Text));
        action->setCheckable(checkable);
        action->setShortcut(key);
        connect(action, &QAction::triggered, this, [this, command] { Canvas->Run(command); });
        Items.push_back({action, item});
    }

    // The radii of a fitting range below its graph.
    QWidget* BuildRangeBar() {
        auto* bar = new QWidget;
        auto* rows = new QVBoxLayout(bar);
        rows->setContentsMargins(8, 2, 8, 2);
        auto* row = new QHBoxLayout;
        rows->addLayout(row);
        for (const std::size_t side : {std::size_t{0}, std::size_t{1}}) {
            row->addWidget(MakeLabel(Bind, [side]() -> Control& { return RangeBar.Label[side]; }));
            row->addWidget(MakeField(
                Bind, [side]() -> Control& { return RangeBar.Radius[side]; },
                {[side] { RangeBarGotFocus(side); },
                 [side](int key) { return RangeBarKeyPress(side, key); },
                 [side] { RangeBarLostFocus(side); },
                 {}},
                8));
        }
        row->addWidget(MakeLabel(Bind, []() -> Control& { return RangeBar.Count; }));
        row->addWidget(MakeButton(
            Bind, []() -> Control& { return RangeBar.AutoButton; }, RangeBarAutoButton));
        if (ForFont(900, 0).width() > QApplication::primaryScreen()->availableSize().width()) {
            row->addStretch(1); // with large letters on a small screen the rest stands below
            row = new QHBoxLayout;
            rows->addLayout(row);
        } else {
            row->addSpacing(12);
        }
        row->addWidget(MakeLabel(Bind, []() -> Control& { return RangeBar.CeilingLabel; }));
        row->addWidget(MakeField(
            Bind, []() -> Control& { return RangeBar.Ceiling; },
            {RangeCeilingGotFocus, RangeCeilingKeyPress, RangeCeilingLostFocus, {}}, 7));
        row->addWidget(MakeButton(
            Bind, []() -> Control& { return RangeBar.SpikesButton; }, RangeSpikesButton));
        row->addStretch(1);
        row->addWidget(MakeButton(
            Bind, []() -> Control& { return RangeBar.AcceptButton; }, RangeBarAcceptButton));
        row->addWidget(MakeCancel(
            Bind, []() -> Control& { return RangeBar.CancelButton; }, RangeBarCancelButton));
        return bar;
    }

    // The keys belong to the graph: a menu that was opened and left gives them back.
    void GiveKeysBack(QMenu* menu) {
        connect(menu, &QMenu::aboutToHide, this, [this] {
            QTimer::singleShot(0, this, [this] {
                const bool typing = qobject_cast<FieldEdit*>(focusWidget()) != nullptr;
                if (!QApplication::activePopupWidget() && !typing) Canvas->setFocus();
            });
        });
    }

    QMenuBar* BuildMenus() {
        auto* bar = new QMenuBar;
        QMenu* file = bar->addMenu("&File");
        Add(file, &ChartsForm::NewWindow, NewGraphWindow, false, QKeySequence::New);
        file->addAction("&Save Graph...", QKeySequence::Save, this, [this] { Canvas->Run(DoSaveGraph); });
        file->addAction("&Restore Graph...", QKeySequence::Open, this,
                        [this] { Canvas->Run(DoRestoreGraph); });
        file->addSeparator();
        Add(file, &ChartsForm::SaveAs, SaveGraphAs, false, QKeySequence::SaveAs);
        Add(file, &ChartsForm::WriteData, EditWriteData);
        Add(file, &ChartsForm::WriteMetafile, WriteMeta);
        file->addSeparator();
        Add(file, &ChartsForm::Print, PrintGraphControl, false, QKeySequence::Print);
        file->addSeparator();
        file->addAction("Save Graph De&faults...", this, [this] { Canvas->Run(SaveChartDefaults); });
        file->addAction("&Close", QKeySequence::Close, this, &QDialog::close);
        BuildEditMenu(bar->addMenu("&Edit"));
        BuildScaleMenu(bar->addMenu("&Scale"));
        BuildStyleMenu(bar->addMenu("S&tyle"));
        Options = bar->addMenu("&Options");
        for (std::size_t i = 0; i < Charts.SpecialOpts.size(); ++i)
            Specials.push_back(Options->addAction("", this, [this, i] {
                Canvas->Run([i] { std::function<void()>(Charts.SpecialActions[i])(); });
            }));
        for (QMenu* menu : bar->findChildren<QMenu*>()) {
            GiveKeysBack(menu);
            KeepAccessKeysApart(menu);
        }
        return bar;
    }

    void BuildEditMenu(QMenu* edit) {
        Add(edit, &ChartsForm::CopyGraph, CopyGraph, false, QKeySequence::Copy);
        Add(edit, &ChartsForm::CopyBitmap, CopyBitmap);
        Add(edit, &ChartsForm::CopyMetafile, CopyMeta);
        edit->addSeparator();
        Add(edit, &ChartsForm::CopyData, EditCopyData);
        Add(edit, &ChartsForm::CopyHeads, EditCopyDataWithHeads);
        Add(edit, &ChartsForm::PasteData, EditPasteData, false, QKeySequence::Paste);
    }

    void BuildAxesMenu(QMenu* scale) {
        Add(scale, &ChartsForm::EditHorz, EditHorz);
        Add(scale, &ChartsForm::EditVert, EditVert);
        QMenu* apart = scale->addMenu("&Separate Data Sets");
        Add(apart, &ChartsForm::SeparateX, SeparateX);
        Add(apart, &ChartsForm::SeparateY, SeparateY);
        Add(apart, &ChartsForm::SeparateBoth, SeparateBoth);
        scale->addSeparator();
    }

    void BuildScaleMenu(QMenu* scale) {
        Add(scale, &ChartsForm::LastZoom, DoLastZoom, false, QKeySequence("Backspace"));
        Add(scale, &ChartsForm::AutoScale, DoAutoScale, false, QKeySequence("Home"));
        Add(scale, &ChartsForm::AutoX, DoAutoX);
        Add(scale, &ChartsForm::AutoY, DoAutoY);
        scale->addSeparator();
        BuildAxesMenu(scale);
        Add(scale, &ChartsForm::RoundOnZoom, ToggleRoundOnZoom, true);
        Add(scale, &ChartsForm::ShowCursor, ToggleShowCursor, true);
    }

    void BuildStyleMenu(QMenu* style) {
        Add(
            style, &ChartsForm::LinePlot, [] { SetPlotKind(1, 3); }, true);
        Add(
            style, &ChartsForm::SymbolPlot, [] { SetPlotKind(2, 1); }, true);
        Add(
            style, &ChartsForm::BothPlot, [] { SetPlotKind(1, 1); }, true);
        Add(
            style, &ChartsForm::AltPlot, [] { SetPlotKind(3, 1); }, true);
        Add(style, &ChartsForm::DotCenter, ToggleDotCenter, true);
        style->addSeparator();
        Add(
            style, &ChartsForm::ShowLegend, [] { ShowLegend(); }, true);
        Add(style, &ChartsForm::ShowGrids, ToggleShowGrids, true);
        Add(style, &ChartsForm::UseRainbow, ToggleRainbow, true);
        Add(style, &ChartsForm::ClassicColors, ToggleClassicColors, true);
        Add(style, &ChartsForm::DarkCanvas, ToggleDarkCanvas, true);
        style->addSeparator();
        Add(style, &ChartsForm::mnuEditTitles, EditTitles);
        Add(style, &ChartsForm::DeleteTitles, [] { DeleteTitles(); });
        Add(style, &ChartsForm::mnuEditLegend, EditLegend);
        style->addSeparator();
        Add(style, &ChartsForm::AlterColors, AlterColors);
        Add(style, &ChartsForm::LineWidths, DoLineWidth);
        Add(style, &ChartsForm::SymbolSize, ChangeSymbolSize);
        style->addAction("Re&fresh", QKeySequence("Ctrl+R"), this, [this] { Canvas->Run(DoRefresh); });
    }

    ChartsForm& Form() const { return FormOf(View); }

    void Follow() {
        const ChartsForm& form = Form();
        if (View != nullptr) setWindowTitle(ShownText(Work.ProgramName + " - " + CaptionOf(View)));
        for (const auto& [action, item] : Items) {
            action->setEnabled((form.*item).Enabled);
            action->setVisible((form.*item).Visible);
            action->setChecked((form.*item).Checked);
        }
        bool any = false;
        for (std::size_t i = 0; i < Specials.size(); ++i) {
            const bool offered = static_cast<bool>(form.SpecialActions[i]);
            any = any || offered;
            Specials[i]->setVisible(offered);
            Specials[i]->setEnabled(form.SpecialOpts[i].Enabled);
            Specials[i]->setText(ShownText(form.SpecialOpts[i].Text));
        }
        Options->menuAction()->setVisible(any);
        Canvas->Follow();
        if (View == nullptr && isVisible() &&
            RangeBar.FocusOnGraph) { // the window of other graphs stands hidden behind this one
            Canvas->setFocus();
            RangeBar.FocusOnGraph = false;
        }
        if (Modal && !Charts.Shown) done(QDialog::Accepted); // by a button of the bar
    }

    struct BoundItem {
        QAction* Action;
        ItemRef Item;
    };
    Binder Bind;
    GraphWindow* View;
    bool Closed = false;
    ChartCanvas* Canvas = nullptr;
    QMenu* Options = nullptr;
    std::vector<BoundItem> Items;
    std::vector<QAction*> Specials;
    bool Modal = false;
};

using FurtherWindows = std::map<int, QPointer<ChartsWindow>>; // by the number of the graph

// True where the window of a graph has its corner.
bool IsTaken(QPoint corner, const FurtherWindows& shown) {
    const auto stands = [corner](const QWidget* window) {
        return window != nullptr && window->isVisible() && window->pos() == corner;
    };
    return stands(OpenForm(ChartsName)) || std::any_of(shown.begin(), shown.end(), [&](const auto& further) {
               return stands(further.second.data());
           });
}

// A further window opens beside those that stand already, so that the title of each stays in sight, and from
// the upper left of the screen where there is no more room; of one nearly as large as the screen at least
// half is seen. One that the user has put somewhere opens there again all the same
// (forms/shell/WindowPlaces.h).
void PlaceBeside(QWidget& window, const FurtherWindows& shown) {
    const QWidget* first = OpenForm(ChartsName);
    if (first == nullptr || !first->isVisible()) return;
    const int step = std::max(first->style()->pixelMetric(QStyle::PM_TitleBarHeight), 1);
    const QRect room = first->screen()->availableGeometry();
    QSize seen = window.size() + QSize(0, step);
    if (seen.width() + step > room.width() || seen.height() + step > room.height()) seen /= 2;
    QPoint corner = first->pos();
    for (int tries = 0; tries < 100 && IsTaken(corner, shown); ++tries) {
        corner += QPoint(step, step);
        if (!room.contains(QRect(corner, seen))) corner = room.topLeft();
    }
    window.move(corner);
}

// Each further graph has a window above the main one, which is made when the graph is there.
void ShowFurtherWindows() {
    static FurtherWindows shown;
    for (auto window = shown.begin(); window != shown.end();) {
        if (window->second && !window->second->IsClosed()) {
            ++window;
            continue;
        }
        delete window->second.data();
        CloseGraphWindow(window->first);
        window = shown.erase(window);
    }
    for (GraphWindow& graph : GraphWindows) {
        if (shown.count(graph.Number) > 0) continue;
        auto* window = new ChartsWindow(OpenForm(AnalmenuName), &graph);
        shown[graph.Number] = window;
        window->setObjectName(QString("Graph%1").arg(graph.Number)); // by which its place is known again
        window->setProperty(PageProperty, ChartsName);
        PlaceBeside(*window, shown);
        window->show();
    }
    if (MayFollowAnalysis()) FollowInGraphWindows();
}

QWidget* MakeCharts(QWidget* parent) {
    return new ChartsWindow(parent, nullptr);
}

const FormWindow Registered(ChartsName, MakeCharts);

} // namespace

} // namespace Quillon
