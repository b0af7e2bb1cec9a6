#include "tests/forms/EveryForm.h"

#include "chart/Charts.h"
#include "chart/dialogs/AxisOptsForm.h"
#include "chart/dialogs/LegendOptsForm.h"
#include "chart/dialogs/LineWidthForm.h"
#include "chart/dialogs/PrintEsc.h"
#include "chart/dialogs/PrintGrForm.h"
#include "chart/dialogs/SetColor.h"
#include "chart/dialogs/ShiftData.h"
#include "chart/dialogs/TitleOptsForm.h"
#include "commands/Analmenu.h"
#include "commands/MenuRows.h"
#include "commands/RunForm.h"
#include "commands/export/ReportPreview.h"
#include "commands/history/History.h"
#include "fit/GNLLSQ.h"
#include "fit/forms/FitMon.h"
#include "fit/forms/GetGuess.h"
#include "fit/forms/HoldForm.h"
#include "fit/forms/WaitForm.h"
#include "forms/shell/Binding.h"
#include "forms/shell/FormHost.h"
#include "help/HelpForm.h"
#include "models/SEDEQ3.h"
#include "models/forms/ShowConstraintForm.h"
#include "models/function/FitFunction.h"
#include "platform/Platform.h"
#include "reporting/Results.h"
#include "runs/Approach.h"
#include "runs/Groups.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/InfoBox.h"
#include "scandata/reader/ExtinctionForm.h"
#include "studies/StudyForm.h"
#include "tests/forms/Scans.h"
#include "tests/support/MadeRun.h"
#include "tests/support/ScriptedPrinter.h"
#include "workspace/records/Codes.h"
#include "workspace/records/Roads.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>

namespace Quillon {

namespace {

using Visit = std::function<void()>;
using Opening = std::function<void(Player&, const Visit&)>;

// A command of the main window that shows the form at once.
Opening By(const std::string& form, const std::string& item) {
    return [form, item](Player& player, const Visit& visit) {
        player.Expect(form, visit);
        player.ClickMenu(item);
    };
}

// What another form leads to, or a command of the chart window.
Opening By(const char* form, void (*show)()) {
    return [form, show](Player& player, const Visit& visit) {
        player.Expect(form, visit);
        show();
        Player::Serve();
    };
}
Opening OnGraph(const char* form, void (*show)()) {
    return [form, show](Player& player, const Visit& visit) {
        player.ClickMenu("GraphOverlay");
        By(form, show)(player, visit);
        Player::Window(ChartsName)->close();
    };
}

// A window that stands beside the main one.
Opening Beside(const char* item) {
    return [item](Player& player, const Visit& visit) {
        if (item != nullptr) player.ClickMenu(item);
        Player::Serve();
        visit();
    };
}

void NoNewGuesses() {
    Work.LastModel = Work.Model;
    Work.PauseBeforeFit = FlagTrue;
}

void OpenMonitor(Player& player, const Visit& visit) {
    player.Expect(GetGuessName, [] { Player::Click(GetGuess.OkButton); });
    player.Expect(FitMonName, visit);
    player.ClickMenu("FitData");
}

void OpenSearch(Player& player, const Visit& visit) {
    player.Expect(ResultsName, [&] {
        bool met = false;
        const auto serve = Host.ServeEvents;
        Host.ServeEvents = [&] { // a search may be over before its window is met
            serve();
            for (int i = 0; i < 20000 && WaitForm.State.Shown && !met; ++i)
                QTest::qWait(1);
        };
        player.Expect(WaitFormName, [&] {
            met = true;
            visit();
        });
        Player::Click(Results.ComputeConfidence);
        Host.ServeEvents = serve;
        Player::Click(Results.OkButton);
    });
    player.ClickMenu("ReviewFit");
}

void OpenPreview(Player& player, const Visit& visit) {
    player.Expect(ResultsName, [&] {
        player.Expect(ReportPreviewName, visit);
        Player::Click(Results.Command1);
        Player::Click(Results.OkButton);
    });
    player.ClickMenu("ReviewFit");
}

void OpenPrinting(Player& player, const Visit& visit) {
    const ScriptedPrinter printer;
    OpenPreview(player, [&] {
        const auto serve = Host.ServeEvents;
        Host.ServeEvents = [] { QTest::qWait(30); }; // a job is over before its window is met
        player.Expect(PrintEscName, visit);
        Player::Click(ReportPreview.PrintButton);
        Host.ServeEvents = serve;
        if (ReportPreview.State.Shown) Player::Click(ReportPreview.CloseButton);
    });
}

// A fit in which more is fitted than there are points.
void OpenHold(Player& player, const Visit& visit) {
    const auto points = Work.NumPts;
    Work.NumPts = 4;
    ASSERT_TRUE(LoadHoldForm());
    player.Expect(HoldFormName, visit);
    Host.ShowModal(HoldFormName);
    Work.NumPts = points;
}

// Two cells at two wavelengths, sorted as they are.
void ShowARun() {
    RunPlan plan;
    plan.Wavelengths = {260, 280};
    plan.ScansPerStage = 4;
    plan.Points = 40;
    SortedRun run;
    run.Place = "run.tar.gz";
    run.Remarks = {"00099.RA1: it is left alone: the file is empty"};
    for (const MadeScan& scan : MakeRun(plan))
        run.Scans.push_back(ReadRunScan(scan.Name, scan.Bytes));
    GroupRun(run);
    JudgeRun(run, {});
    ShowRunForm(run);
}

void Constrain() {
    Work.ConstraintFlags = ConcentrationBit;
    for (const SetNo set : EachSet())
        Work.ConcConstraintA[RowOf(set)] = 0.25F;
}

// Those that no command of the menu shows at once, that stand beside the others or need more than a fit, and
// of a form of several studies one of them.
std::vector<FormOpening> OpenedByHand() {
    return {
        {AnalmenuName, Beside(nullptr)},
        {AxisOptsFormName, OnGraph(AxisOptsFormName, EditHorz)},
        {ChartsName, Beside("GraphResiduals")},
        {ExtinctionFormName, By(ExtinctionFormName, [] { ShowExtinctionForm(); })},
        {FitMonName, OpenMonitor, {"Cancel", "Esc", "X"}, NoNewGuesses},   // a fit that was begun
        {GetGuessName, By(GetGuessName, "FitData"), {"OK"}, NoNewGuesses}, // begins one
        {HelpFormName, Beside("mnuHelpContents")},
        {HoldFormName, OpenHold},
        {InfoBoxName, By(InfoBoxName, [] { ShowInfoBox(RowNo(1)); })},
        {LegendOptsFormName, OnGraph(LegendOptsFormName, EditLegend)},
        {LineWidthFormName, OnGraph(LineWidthFormName, DoLineWidth)},
        {PrintEscName, OpenPrinting},
        {PrintGrFormName, OnGraph(PrintGrFormName, [] { AskPrintOptions(); })},
        {ReportPreviewName, OpenPreview},
        {RunFormName, By(RunFormName, ShowARun), {"OK"}},
        {SetColorName, OnGraph(SetColorName, AlterColors)},
        {ShiftDataName, OnGraph(ShiftDataName, SeparateBoth)},
        {ShowConstraintFormName, By(ShowConstraintFormName, "DoShowConstraint"), {}, Constrain},
        {StudyFormName, By(StudyFormName, "ResampleFit")},
        {TitleOptsFormName, OnGraph(TitleOptsFormName, EditTitles)},
        {WaitFormName, OpenSearch},
    };
}

// What a command shows or asks first ends it.
struct Shown {
    std::string Form; // "" of a question
};
[[noreturn]] void EndAt(const std::string& form) {
    throw Shown{form};
}

std::string FirstShownBy(const MenuRow& row) {
    const Platform host = Host;
    Host.ShowModal = Host.ShowForm = EndAt;
    Host.MessageBoxAnswer = [](const BoxRequest&) -> BoxAnswer { EndAt(""); };
    Host.AskChecked = [](const BoxRequest&, const std::string&, bool&) -> BoxAnswer { EndAt(""); };
    Host.AskText = [](const InputRequest&) -> InputAnswer { EndAt(""); };
    Host.AskFile = [](const FileRequest&) -> FileAnswer { EndAt(""); };
    std::string form;
    try {
        row.Command();
    } catch (const Shown& shown) {
        form = shown.Form;
    }
    Host = host;
    return form;
}

// Of each form that a command of the menu shows at once the first such item. Items of dialogs end in dots.
std::map<std::string, std::string> ItemsByForm() {
    std::map<std::string, std::string> items;
    for (const MenuRow& row : MenuRows()) {
        PrepareFor({});
        const bool enabled = row.EnabledWhen == nullptr || row.EnabledWhen();
        if (enabled && std::string(row.Caption).ends_with("...")) items.emplace(FirstShownBy(row), row.Name);
    }
    return items;
}

std::vector<FormOpening> AllOpenings() {
    std::vector<FormOpening> all = OpenedByHand();
    const auto byHand = [&all](const std::string& form) {
        return std::ranges::any_of(all, [&](const FormOpening& opening) { return opening.Form == form; });
    };
    const std::map<std::string, std::string> items = ItemsByForm();
    for (const std::string& form : RegisteredForms())
        if (const auto item = items.find(form); item != items.end() && !byHand(form))
            all.push_back({form, By(form, item->second)});
    return all;
}

} // namespace

const std::vector<FormOpening>& FormOpenings() {
    static const std::vector<FormOpening> all = AllOpenings();
    return all;
}

namespace {

// What a click on a line of the table of data sets leads to, on the graph that waits for an answer.
Opening OnTheTable(void (*click)()) {
    return [click](Player& player, const Visit& visit) {
        player.Expect(FileFormName, [&] {
            player.Expect(ChartsName, [&] {
                Charts.ClosesAsEscape = true;
                visit();
            });
            click();
            FileForm.FormChanged = 0; // the ranges are not doubted
            Player::Click(FileForm.OkButton);
        });
        player.ClickMenu("ReadData");
    };
}

void UseABaseline() {
    Work.BaselineFile[1] = "00009.RA1";
    Work.BaselineRPM[1] = 20000.0F;
    Work.BaselinePoints[1] = Work.ScanPoints[1];
    Work.BaselineRadius[1] = Work.ScanRadius[1];
    Work.BaselineValue[1].Recreate(Work.ScanPoints[1], 0.01F);
}

// A study with what it found.
Opening Run(const char* item) {
    return [item](Player& player, const Visit& visit) {
        player.Expect(StudyFormName, [&] {
            Player::Click(StudyForm.RunButton);
            visit();
        });
        player.ClickMenu(item);
    };
}

void AllSetsWithTheirFit() {
    UseAllSets();
    Work.DataDirectory = "/data";
    Work.MonitorMode = Monitor::None;
    RunFit();
    Work.MonitorMode = Monitor::FreeRun;
}

} // namespace

const std::vector<FormOpening>& FurtherOpenings() {
    static const std::vector<FormOpening> all = {
        {ChartsName, OnTheTable([] { Player::Click(FileForm.MinRBox[0]); }), {}, [] {}, "Range"},
        {ChartsName, OnTheTable([] { Player::Click(FileForm.ShiftBase[0]); }), {}, UseABaseline, "Shift"},
        {StudyFormName, By(StudyFormName, "CompareModels"), {}, [] {}, "Comparison"},
        {StudyFormName, Run("ProfileParameter"), {}, [] {}, "Profile"},
        {StudyFormName, Run("PlanExperiment"), {}, [] {}, "Plan"},
        {AnalmenuName, Beside(nullptr), {}, AllSetsWithTheirFit, "AllSets"},
        {FileFormName, By(FileFormName, "ReadData"), {}, AllSetsWithTheirFit, "AllSetsInTheTable"},
        {GetGuessName,
         By(GetGuessName, "FitData"),
         {"OK"},
         [] {
             AllSetsWithTheirFit();
             NoNewGuesses();
         },
         "AllSetsToBeGuessed"},
        {ResultsName, By(ResultsName, "ReviewFit"), {}, AllSetsWithTheirFit, "AllSetsInTheResults"},
    };
    return all;
}

bool StandsBeside(const std::string& form) {
    return form == AnalmenuName || form == ChartsName || form == HelpFormName;
}

namespace {

void CloseForm(const std::string& form) {
    QWidget* window = OpenForm(form);
    if (form == AnalmenuName || !window || !window->isVisible()) return;
    window->close();
    Player::Serve();
}

} // namespace

namespace {

// The same for all of them: to fit it anew for each would take longer than all windows do.
const Workspace& FinishedFit() {
    static const Workspace fit = [] {
        UseFinishedFit();
        UseChannelRadii();
        Work.DataDirectory = "/data"; // as the start of the program leaves one
        return Work;
    }();
    return fit;
}

} // namespace

void PrepareFor(const FormOpening& opening) {
    Work = FinishedFit();
    ApplyModelFlags();
    ResetFitFunction();
    opening.Prepare();
    NoteHistory("");
    SetMenuStatus();
    RefreshForms();
}

void VisitForm(Player& player, const FormOpening& opening, const std::function<void(QWidget&)>& look) {
    SCOPED_TRACE(opening.Form);
    bool seen = false;
    opening.Open(player, [&] {
        seen = true;
        if (QWidget* window = Player::Window(opening.Form)) look(*window);
        CloseForm(opening.Form);
    });
    EXPECT_TRUE(seen) << opening.Form << " was not shown";
}

namespace {

std::string PlainCaption(const QPushButton& button) {
    return button.text().remove('&').toStdString();
}

} // namespace

std::vector<std::string> WaysOutOf(const QWidget& window) {
    constexpr std::array ways = {"OK", "Cancel", "Close", "Exit"};
    std::vector<std::string> found;
    for (const QPushButton* button : window.findChildren<QPushButton*>())
        if (button->isVisible() && button->isEnabled() && std::ranges::count(ways, PlainCaption(*button)))
            found.push_back(PlainCaption(*button));
    return found;
}

void ClickCaption(QWidget& window, const std::string& caption) {
    for (QPushButton* button : window.findChildren<QPushButton*>())
        if (button->isVisible() && PlainCaption(*button) == caption) return Player::Click(button);
    ADD_FAILURE() << "there is no button " << caption;
}

} // namespace Quillon
