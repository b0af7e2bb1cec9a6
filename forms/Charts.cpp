// The chart window.
#include "chart/Charts.h"
#include "chart/CHART.h"
#include "chart/dialogs/LegendOptsForm.h"
#include "chart/dialogs/TitleOptsForm.h"
#include "forms/Pieces.h"
#include "forms/shell/ChartBox.h"
#include "forms/shell/FormHost.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDialog>
#include <QMenuBar>

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
        all->addWidget(line);
        Canvas->Changed = [this] {
            if (Modal && !Charts.Shown) done(QDialog::Accepted);
            if (!HandlerAtWork()) Work.AbortFit = FlagFalse; // Esc found nothing to break off
        };
        Bind.Also([this] { Follow(); });
        Modal = Charts.Shown;
        setWindowTitle(ShownText(Work.ProgramName + " - Graph"));
        resize(900, 620);
        Canvas->setFocus();
    }

    void reject() override { Canvas->Key(27, 0); } // Esc

protected:
    void closeEvent(QCloseEvent* event) override {
        if (!ChartsMayClose()) return event->ignore();
        event->accept();
        if (Modal) Canvas->Key(27, 0);
    }

private:
    using ItemRef = std::function<MenuItem&()>;

    void Add(QMenu* menu, ItemRef item, void (*command)(), bool checkable = false, QKeySequence key = {}) {
        QAction* action = menu->addAction(ShownText(item().Text));
        action->setCheckable(checkable);
        action->setShortcut(key);
        connect(action, &QAction::triggered, this, [command] { RunOnGraph(command); });
        Items.push_back({action, std::move(item)});
    }

    QMenuBar* BuildMenus() {
        auto* bar = new QMenuBar;
        QMenu* file = bar->addMenu("&File");
        file->addAction("Copy &Data", this, [] { RunOnGraph(EditCopyData); });
        file->addAction("Copy &Bitmap", QKeySequence::Copy, this, [this] {
            if (Chart.GraphHeld != 0) QApplication::clipboard()->setPixmap(Canvas->grab());
        });
        file->addSeparator();
        file->addAction("Save Graph De&faults...", this, [] { RunOnGraph(SaveChartDefaults); });
        file->addAction("&Close", QKeySequence::Close, this, &QDialog::close);
        BuildScaleMenu(bar->addMenu("&Scale"));
        BuildStyleMenu(bar->addMenu("S&tyle"));
        Options = bar->addMenu("&Options");
        for (std::size_t i = 0; i < Charts.SpecialOpts.size(); ++i)
            Specials.push_back(Options->addAction("", this, [i] { RunOnGraph(Charts.SpecialActions[i]); }));
        return bar;
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
        style->addSeparator();
        Add(
            style, []() -> MenuItem& { return Charts.mnuEditTitles; }, EditTitles);
        Add(
            style, []() -> MenuItem& { return Charts.DeleteTitles; }, [] { DeleteTitles(); });
        Add(
            style, []() -> MenuItem& { return Charts.mnuEditLegend; }, EditLegend);
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
