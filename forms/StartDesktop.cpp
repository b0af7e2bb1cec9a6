#include "forms/StartDesktop.h"

#include "chart/CHART.h"
#include "chart/dialogs/PrintGraph.h"
#include "chart/files/Exchange.h"
#include "chart/records/Palettes.h"
#include "commands/Analmenu.h"
#include "commands/Sessions.h"
#include "commands/StartUp.h"
#include "commands/Workbench.h"
#include "fit/forms/BoundsForm.h"
#include "fit/forms/GetGuess.h"
#include "forms/HelpForm.h"
#include "forms/OpenJob.h"
#include "forms/shell/Binding.h"
#include "forms/shell/ButtonStyle.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowPlaces.h"
#include "forms/shell/WindowSizes.h"
#include "forms/surfaces/PdfPicture.h"
#include "forms/surfaces/PngPicture.h"
#include "platform/Platform.h"
#include "reporting/Results.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Counts.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QFontMetrics>
#include <QLineEdit>
#include <QScreen>

#include <algorithm>
#include <chrono>
#include <future>
#include <memory>
#include <utility>

namespace Quillon {

namespace {

// Rows of parameters that stand one below the other in a window of nine tenths of the screen's height, heads
// and buttons taken off.
int RowsThatFit(int height) {
    const int row = QLineEdit().sizeHint().height() + 3;
    const int others = 8 * row;
    return std::max(8, (height * 9 / 10 - others) / row);
}

// Columns of parameters with their bounds that stand beside each other: the name, two fields of 14 digits and
// what is between them.
int BoundsThatFit(int width) {
    constexpr int letters = 24 + 2 * 14, between = 80;
    const int column = QFontMetrics(QApplication::font()).horizontalAdvance(QString(letters, '0')) + between;
    return 2 * column <= width ? 2 : 1;
}

// Columns of guesses that stand beside each other and beside their curve: the name, a field of 12 digits,
// what estimates it, whether it is fitted.
int GuessesThatFit(int width) {
    constexpr int letters = 24 + 12 + 10 + 12, between = 60, curve = 320;
    const int column = QFontMetrics(QApplication::font()).horizontalAdvance(QString(letters, '0')) + between;
    return 2 * column + curve <= width ? 2 : 1;
}

// Where the system has no thread left, Wait does the work.
WorkUnderWay OnAThread(std::function<void()> work) {
    const auto end = std::make_shared<std::future<void>>(
        std::async(std::launch::async | std::launch::deferred, std::move(work)));
    return {[end] { return end->wait_for(std::chrono::seconds(0)) != std::future_status::timeout; },
            [end] { end->wait(); }};
}

} // namespace

void StartDesktop(const std::string& argument, const std::vector<std::string>& others) {
    Seams.IsCancelled = [] { return Work.AbortFit != 0; };
    Seams.SetCancelled = HandOnCancel;
    BeginWithSafeColors(true);
    Seams.ProgramName = [] { return Work.ProgramName; };
    Seams.DataDirectory = [] { return Work.DataDirectory; };
    OpenToolkitPicture = [](const std::string& kind, const PictureRequest& request) {
        return kind == "png" ? OpenPng(request) : OpenPdf(request);
    };
    TakeOwnStyle();
    ReadJob = OpenJobFile;
    SessionWorker = OnAThread;
    KeepWindowsOnScreen();
    LoadPlaces();
    StartQuillon(argument);
    ScaleForms(Work.FormScalingPercent);
    const QRect screen = QApplication::primaryScreen()->availableGeometry();
    GetGuess.Layout.RowsPerColumn = BoundsForm.Layout.RowsPerColumn = RowsThatFit(screen.height());
    BoundsForm.Layout.MostColumns = BoundsThatFit(screen.width());
    GetGuess.Layout.MostColumns = GuessesThatFit(screen.width());
    if (GetGuess.Layout.MostColumns == 1) // the column scrolls: two pages hold whatever is guessed
        GetGuess.Layout.RowsPerColumn = std::max(GetGuess.Layout.RowsPerColumn, (StandardMaxParms + 1) / 2);
    ResultsFont = [font = QFontMetrics(FixedPitchFont())](const std::string& text) {
        return font.horizontalAdvance(ShownText(text));
    };
    MakeForm(AnalmenuName);
    MakeForm(ChartsName); // the engine measures on its picture box
    Host.ShowForm(AnalmenuName);
    ListenForHelp();
    std::vector<std::string> arguments = others;
    arguments.insert(arguments.begin(), argument);
    BeginSession();
    if (!Analmenu.Ended) OpenArguments(arguments);
    if (!Analmenu.Ended && !Workbench.Starts) OfferSessions(); // the start page has them otherwise
    RefreshForms();
}

void EndDesktop() {
    EndHeldPage();
    EndSession();
    if (QWidget* main = OpenForm(AnalmenuName)) NotePlace(*main);
    WritePlaces();
    UnloadForms();
}

} // namespace Quillon
