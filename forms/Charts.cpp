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
#include "forms/Pieces.h"
#include "forms/shell/ChartBox.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/MenuKeys.h"
#include "forms/shell/WindowSizes.h"
#include "platform/Platform.h"
#include "scandata/range/RangeBar.h"
#include "scandata/range/RangeReadings.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QDragEnterEvent>
#include <QFile>
#include <QMenuBar>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

namespace Quillon {

namespace {

class ChartsWindow : public QDialog {
public:
    explicit ChartsWindow(QWidget* parent) : QDialog(parent), Bind(this) {
        // A dialog stays above its parent; its frame has the buttons of a window all the same.
        setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                       Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint);
        Canvas = new ChartCanvas(this);
        auto* line = MakeLabel(Bind, []() -> Control& { return Charts.StatusLine; });
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
        if (RangeBar.Shown) all->addWidget(BuildRangeBar());
        all->addWidget(line);
        Canvas->Changed = [this] {
            if (Modal && !Charts.Shown) done(QDialog::Accepted);
            if (!HandlerAtWork()) ClearCancel(); // Esc found nothing to break off
        };
        Bind.Also([this] { Follow(); });
        Modal = Charts.Shown;
        setWindowTitle(ShownText(Work.ProgramName + " - Graph"));
        setAcceptDrops(true);
        resize(ForFont(900, 620));
        Canvas->setFocus();
    }

    void reject() override { Canvas->Key(27, 0); } // Esc

protected:
    // A graph file that is dropped is shown.
    void dragEnterEvent(QDragEnterEvent* event) override {
        if (!DroppedGraph(event->mimeData()).empty()) event->acceptProposedAction();
    }
    void dropEvent(QDropEvent* event) override {
        const std::string path = DroppedGraph(event->mimeData());
        if (!path.empty()) RunOnGraph([path] { RestoreGraphFile(path); });
    }
    void closeEvent(QCloseEvent* event) override {
        if (!ChartsMayClose()) return event->ignore();
        event->accept();
        if (Modal) Canvas->Key(27, 0);
    }

private:
    static std::string DroppedGraph(const QMimeData* data) {
        for (const QUrl& url : data->urls()) {
            const std::string path = QFile::encodeName(url.toLocalFile()).toStdString();
            if (url.isLocalFile() && NamesGraphFile(path)) return path;
        }
        return {};
    }

    using ItemRef = std::function<MenuItem&()>;

    void Add(QMenu* menu, ItemRef item, void (*command)(), bool checkable = false, QKeySequence key = {}) {
        QAction* action = menu->addAction(ShownText(item().Text));
        action->setCheckable(checkable);
        action->setShortcut(key);
        connect(action, &QAction::triggered, this, [command] { RunOnGraph(command); });
        Items.push_back({action, std::move(item)});
    }

    // The radii of a fitting range below its graph.
    QWidget* BuildRangeBar() {
        auto* bar = new QWidget;
        auto* row = new QHBoxLayout(bar);
        row->setContentsMargins(8, 2, 8, 2);
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
        row->addSpacing(12);
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
        file->addAction("&Save Graph...", QKeySequence::Save, this, [] { RunOnGraph(DoSaveGraph); });
        file->addAction("&Restore Graph...", QKeySequence::Open, this, [] { RunOnGraph(DoRestoreGraph); });
        file->addSeparator();
        Add(
            file, []() -> MenuItem& { return Charts.SaveAs; }, SaveGraphAs, false, QKeySequence::SaveAs);
        Add(
            file, []() -> MenuItem& { return Charts.WriteData; }, EditWriteData);
        Add(
            file, []() -> MenuItem& { return Charts.WriteMetafile; }, WriteMeta);
        file->addSeparator();
        Add(
            file, []() -> MenuItem& { return Charts.Print; }, PrintGraphControl, false, QKeySequence::Print);
        file->addSeparator();
        file->addAction("Save Graph De&faults...", this, [] { RunOnGraph(SaveChartDefaults); });
        file->addAction("&Close", QKeySequence::Close, this, &QDialog::close);
        BuildEditMenu(bar->addMenu("&Edit"));
        BuildScaleMenu(bar->addMenu("&Scale"));
        BuildStyleMenu(bar->addMenu("S&tyle"));
        Options = bar->addMenu("&Options");
        for (std::size_t i = 0; i < Charts.SpecialOpts.size(); ++i)
            Specials.push_back(Options->addAction("", this, [i] { RunOnGraph(Charts.SpecialActions[i]); }));
        for (QMenu* menu : bar->findChildren<QMenu*>()) {
            GiveKeysBack(menu);
            KeepAccessKeysApart(menu);
        }
        return bar;
    }

    void BuildEditMenu(QMenu* edit) {
        Add(
            edit, []() -> MenuItem& { return Charts.CopyGraph; }, CopyGraph, false, QKeySequence::Copy);
        Add(
            edit, []() -> MenuItem& { return Charts.CopyBitmap; }, CopyBitmap);
        Add(
            edit, []() -> MenuItem& { return Charts.CopyMetafile; }, CopyMeta);
        edit->addSeparator();
        Add(
            edit, []() -> MenuItem& { return Charts.CopyData; }, EditCopyData);
        Add(
            edit, []() -> MenuItem& { return Charts.CopyHeads; }, EditCopyDataWithHeads);
        Add(
            edit, []() -> MenuItem& { return Charts.PasteData; }, EditPasteData, false, QKeySequence::Paste);
    }

    void BuildAxesMenu(QMenu* scale) {
        Add(
            scale, []() -> MenuItem& { return Charts.EditHorz; }, EditHorz);
        Add(
            scale, []() -> MenuItem& { return Charts.EditVert; }, EditVert);
        QMenu* apart = scale->addMenu("&Separate Data Sets");
        Add(
            apart, []() -> MenuItem& { return Charts.SeparateX; }, SeparateX);
        Add(
            apart, []() -> MenuItem& { return Charts.SeparateY; }, SeparateY);
        Add(
            apart, []() -> MenuItem& { return Charts.SeparateBoth; }, SeparateBoth);
        scale->addSeparator();
    }

    void BuildScaleMenu(QMenu* scale) {
        Add(
            scale, []() -> MenuItem& { return Charts.LastZoom; }, DoLastZoom, false,
            QKeySequence("Backspace"));
        Add(
            scale, []() -> MenuItem& { return Charts.AutoScale; }, DoAutoScale, false, QKeySequence("Home"));
        Add(
            scale, []() -> MenuItem& { return Charts.AutoX; }, DoAutoX);
        Add(
            scale, []() -> MenuItem& { return Charts.AutoY; }, DoAutoY);
        scale->addSeparator();
        BuildAxesMenu(scale);
        Add(
            scale, []() -> MenuItem& { return Charts.RoundOnZoom; }, ToggleRoundOnZoom, true);
        Add(
            scale, []() -> MenuItem& { return Charts.ShowCursor; }, ToggleShowCursor, true);
    }

    void BuildStyleMenu(QMenu* style) {
        Add(
            style, []() -> MenuItem& { return Charts.LinePlot; }, [] { SetPlotKind(1, 3); }, true);
        Add(
            style, []() -> MenuItem& { return Charts.SymbolPlot; }, [] { SetPlotKind(2, 1); }, true);
        Add(
            style, []() -> MenuItem& { return Charts.BothPlot; }, [] { SetPlotKind(1, 1); }, true);
        Add(
            style, []() -> MenuItem& { return Charts.AltPlot; }, [] { SetPlotKind(3, 1); }, true);
        Add(
            style, []() -> MenuItem& { return Charts.DotCenter; }, ToggleDotCenter, true);
        style->addSeparator();
        Add(
            style, []() -> MenuItem& { return Charts.ShowLegend; }, [] { ShowLegend(); }, true);
        Add(
            style, []() -> MenuItem& { return Charts.ShowGrids; }, ToggleShowGrids, true);
        Add(
            style, []() -> MenuItem& { return Charts.UseRainbow; }, ToggleRainbow, true);
        Add(
            style, []() -> MenuItem& { return Charts.ClassicColors; }, ToggleClassicColors, true);
        Add(
            style, []() -> MenuItem& { return Charts.DarkCanvas; }, ToggleDarkCanvas, true);
        style->addSeparator();
        Add(
            style, []() -> MenuItem& { return Charts.mnuEditTitles; }, EditTitles);
        Add(
            style, []() -> MenuItem& { return Charts.DeleteTitles; }, [] { DeleteTitles(); });
        Add(
            style, []() -> MenuItem& { return Charts.mnuEditLegend; }, EditLegend);
        style->addSeparator();
        Add(
            style, []() -> MenuItem& { return Charts.AlterColors; }, AlterColors);
        Add(
            style, []() -> MenuItem& { return Charts.LineWidths; }, DoLineWidth);
        Add(
            style, []() -> MenuItem& { return Charts.SymbolSize; }, ChangeSymbolSize);
        style->addAction("Re&fresh", QKeySequence("Ctrl+R"), this, [] { RunOnGraph(DoRefresh); });
    }

    void Follow() {
        for (const auto& [action, item] : Items) {
            action->setEnabled(item().Enabled);
            action->setVisible(item().Visible);
            action->setChecked(item().Checked);
        }
        bool any = false;
        for (std::size_t i = 0; i < Specials.size(); ++i) {
            const bool offered = static_cast<bool>(Charts.SpecialActions[i]);
            any = any || offered;
            Specials[i]->setVisible(offered);
            Specials[i]->setEnabled(Charts.SpecialOpts[i].Enabled);
            Specials[i]->setText(ShownText(Charts.SpecialOpts[i].Text));
        }
        Options->menuAction()->setVisible(any);
        Canvas->Follow();
        if (isVisible() &&
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
    ChartCanvas* Canvas = nullptr;
    QMenu* Options = nullptr;
    std::vector<BoundItem> Items;
    std::vector<QAction*> Specials;
    bool Modal = false;
};

QWidget* MakeCharts(QWidget* parent) {
    return new ChartsWindow(parent);
}

const FormWindow Registered(ChartsName, MakeCharts);

} // namespace

} // namespace Quillon
