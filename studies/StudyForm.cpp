#include "studies/StudyForm.h"

#include "input/NUMINPUT.h"
#include "planning/design/ExpectedErrors.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "reporting/values/Correlation.h"
#include "studies/StudyKinds.h"
#include "studies/methods/OtherMinima.h"
#include "studies/methods/Resampling.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <numeric>

namespace Quillon {

StudyFormRecord StudyForm;

namespace {

std::vector<int> Order; // the rows of the table by their places in the study
int SortedBy = -1;
bool Backwards = false;

const StudyBehindForm& Study() {
    return StudyOf(StudyForm.Kind);
}

void ShowRunning(bool running) {
    StudyForm.RunButton.Enabled = !running;
    StudyForm.StopButton.Enabled = running;
    for (StudyInput& input : StudyForm.Inputs)
        input.Box.Enabled = !running;
    StudyForm.CopyButton.Enabled = !running && !StudyForm.Rows.empty();
    // The lines of a map that was stopped would go round what was not fitted.
    StudyForm.GraphButton.Enabled =
        StudyForm.CopyButton.Enabled && (FoundMap() == nullptr || FoundMap()->Complete);
    StudyForm.CorrelationsButton.Enabled =
        StudyForm.CopyButton.Enabled && FoundResampling().Correlations.size() > 1;
    StudyForm.State.FocusOn = running ? &StudyForm.StopButton : &StudyForm.RunButton;
}

void ClearTable() {
    StudyForm.Columns.clear();
    StudyForm.Rows.clear();
    StudyForm.Notes.Text.clear();
    Order.clear();
    SortedBy = -1;
    Backwards = false;
    StudyFormRow(-1);
}

void ShowFound() {
    ClearTable();
    Study().Show();
    Order.resize(StudyForm.Rows.size());
    std::iota(Order.begin(), Order.end(), 0);
    StudyFormRow(StudyForm.Rows.empty() ? -1 : 0);
}

// The row of the study behind a row of the table.
int StudyRow(int row) {
    return row >= 0 && row < static_cast<int>(Order.size()) ? Order[static_cast<std::size_t>(row)] : -1;
}

// What is not there stands last, numbers go by their value, everything else by its letters.
bool ComesBefore(const std::string& a, const std::string& b) {
    if (a.empty() || b.empty()) return !a.empty() && b.empty();
    if (a.starts_with('<') != b.starts_with('<')) return a.starts_with('<'); // below what is shown at all
    std::size_t usedA = 0, usedB = 0;
    const double x = NumericPrefix(a, &usedA), y = NumericPrefix(b, &usedB);
    if (usedA > 0 && usedB > 0 && x != y) return x < y;
    return a < b;
}

void TellOfInput(const std::string& reason) {
    Host.Beep();
    Tell(reason, Work.ProgramName, BoxIcon::Warning);
}

// What cannot be read is told while nothing runs that could be stopped, and the table stays.
bool InputsAreGood() {
    try {
        Study().CheckInputs();
    } catch (const RuntimeError& error) {
        TellOfInput(error.Text);
        return false;
    }
    return true;
}

void LeaveStudy() {
    Study().Forget();
    StudyForm.State.Shown = false;
}

std::string LineOf(const std::vector<std::string>& fields) {
    std::string line;
    for (const std::string& field : fields)
        line += (&field == &fields.front() ? "" : "\t") + field;
    return line + "\n";
}

} // namespace

void AddTextInput(const char* label, const std::string& text, const char* tip) {
    StudyForm.Inputs.push_back({Captioned(label), Captioned(text, tip)});
}

bool CanStudy(StudyKind kind) {
    if (kind == StudyKind::Plan) return CanPlan();
    return kind == StudyKind::Compare ? CanRestart() : CanRestart() && CanResample();
}

void LoadStudyForm(StudyKind kind) {
    StudyForm = StudyFormRecord{};
    StudyForm.Kind = kind;
    const StudyBehindForm& study = Study();
    study.Forget();
    StudyForm.State.Caption = study.Caption;
    StudyForm.Head = Captioned(study.Head);
    study.AddInputs();
    StudyForm.RunButton = Captioned(study.Run);
    StudyForm.StopButton = Captioned("S&top");
    StudyForm.TakeButton = Captioned(study.Take);
    StudyForm.TakeButton.Visible = !StudyForm.TakeButton.Text.empty();
    StudyForm.GraphButton = Captioned("&Graph");
    StudyForm.GraphButton.Visible = kind == StudyKind::Profile || kind == StudyKind::Resample;
    StudyForm.CorrelationsButton = Captioned("Correlat&ions...");
    StudyForm.CorrelationsButton.Visible = kind == StudyKind::Resample;
    StudyForm.CopyButton = Captioned("C&opy Table");
    StudyForm.CloseButton = Captioned("Clos&e");
    if (study.Recall())
        ShowFound();
    else
        ClearTable();
    ShowRunning(false);
    StudyForm.State.Shown = true;
}

void StudyFormGotFocus(int input) {
    Control& box = StudyForm.Inputs[static_cast<std::size_t>(input)].Box;
    box.SelStart = 0;
    box.SelLength = static_cast<std::int32_t>(box.Text.size());
}

int StudyFormKeyPress(int input, int key) {
    if (key != KeyReturn) return key;
    const auto next = static_cast<std::size_t>(input) + 1;
    StudyForm.State.FocusOn =
        next < StudyForm.Inputs.size() ? &StudyForm.Inputs[next].Box : &StudyForm.RunButton;
    return 0;
}

void StudyFormLostFocus(int) {} // what stands in the boxes is judged when the study is run

void StudyFormListRow(int input, int row) {
    StudyForm.Inputs[static_cast<std::size_t>(input)].Box.Value = static_cast<std::int16_t>(row);
}

void StudyFormRunButton() {
    if (!StudyForm.RunButton.Enabled || !InputsAreGood()) return;
    ClearTable();
    ClearCancel();
    ShowRunning(true);
    std::string failure;
    try {
        Study().RunStudy([](const std::string& text, double fraction) {
            StudyForm.Progress.Text = text;
            StudyForm.Fraction = fraction;
        });
        if (!IsCancelled()) StudyForm.Fraction = 1.0;
        ShowFound();
    } catch (const RuntimeError& error) {
        failure = error.Text;
    }
    ClearCancel();
    ShowRunning(false);
    if (!failure.empty()) TellOfInput(failure);
}

void StudyFormStopButton() {
    AskToStop();
}

void StudyFormRow(int row) {
    StudyForm.Chosen = row;
    const int place = StudyRow(row);
    StudyForm.TakeButton.Enabled = !StudyForm.Rows.empty() && Study().MayTake(place);
    StudyForm.Notes.Text = StudyForm.Rows.empty() ? "" : Study().NotesOf(place);
}

void StudyFormSort(int column) {
    const auto place = static_cast<std::size_t>(column);
    if (column < 0 || place >= StudyForm.Columns.size()) return;
    Backwards = SortedBy == column && !Backwards;
    SortedBy = column;
    const int marked = StudyRow(StudyForm.Chosen);
    std::vector<std::size_t> rows(Order.size());
    std::iota(rows.begin(), rows.end(), std::size_t{0});
    std::stable_sort(rows.begin(), rows.end(), [&](std::size_t a, std::size_t b) {
        const std::string& x = StudyForm.Rows[a][place];
        const std::string& y = StudyForm.Rows[b][place];
        return Backwards && !x.empty() && !y.empty() ? ComesBefore(y, x) : ComesBefore(x, y);
    });
    std::vector<std::vector<std::string>> sorted;
    std::vector<int> order;
    for (const std::size_t row : rows) {
        sorted.push_back(StudyForm.Rows[row]);
        order.push_back(Order[row]);
    }
    StudyForm.Rows = std::move(sorted);
    Order = std::move(order);
    const auto found = std::find(Order.begin(), Order.end(), marked);
    StudyFormRow(found == Order.end() ? -1 : static_cast<int>(found - Order.begin()));
}

void StudyFormTakeButton() {
    if (!StudyForm.TakeButton.Enabled) return;
    Study().TakeRow(StudyRow(StudyForm.Chosen));
    StudyForm.Taken = true;
    LeaveStudy();
}

int MarkedStudyRow() {
    return StudyRow(StudyForm.Chosen);
}

void StudyFormGraphButton() {
    if (StudyForm.GraphButton.Enabled && StudyForm.Draw) StudyForm.Draw();
}

void StudyFormCorrelationsButton() {
    if (!StudyForm.CorrelationsButton.Enabled) return;
    const Resampling& found = FoundResampling();
    FillCorrelation("Correlations of the Fits to Resampled Data", found.Names, found.Correlations);
    Host.ShowModal(CorrelationName);
}

void StudyFormCopyButton() {
    std::string text = LineOf(StudyForm.Columns);
    for (const std::vector<std::string>& row : StudyForm.Rows)
        text += LineOf(row);
    Host.SetClipboardText(text);
}

void StudyFormCloseButton() {
    if (StudyForm.StopButton.Enabled)
        StudyFormStopButton();
    else
        LeaveStudy();
}

} // namespace Quillon
