#include "studies/PlanStudy.h"

#include "input/NUMINPUT.h"
#include "models/table/ParmScale.h"
#include "planning/design/ExpectedErrors.h"
#include "platform/FormControls.h"
#include "platform/Letters.h"
#include "studies/StudyProgress.h"
#include "workspace/records/Roads.h"

#include <cmath>

namespace Quillon {

namespace {

Plan Planned;

constexpr double UsualNoise = 0.005; // of a reading, where no fit shows it

const std::string& TextOf(std::size_t input) {
    return StudyForm.Inputs[input].Box.Text;
}

void AddInputs() {
    const bool fitted = Work.FitDone != 0 && Work.RmsResidual > 0.0F;
    AddTextInput("&Noise:", SingleText(fitted ? Work.RmsResidual : static_cast<float>(UsualNoise)),
                 "Standard deviation of a reading, in units of the signal");
    AddTextInput("&Speeds times:", "0.8, 1, 1.25", "Factors of all speeds, between commas");
    AddTextInput("&Loadings times:", "0.3, 1, 3", "Factors of all loadings, between commas");
}

// A number above 0 and nothing behind it.
double PositiveOf(const std::string& text, const char* what) {
    std::size_t used = 0;
    const double value = NumericPrefix(text, &used);
    if (used == 0 || text.find_first_not_of(' ', used) != std::string::npos || !(value > 0.0))
        RaiseError(std::string("Enter ") + what + " above 0.");
    return value;
}

std::vector<double> FactorsOf(std::string_view text) {
    std::vector<double> factors;
    for (const std::string_view part : PartsBetween(text, ','))
        factors.push_back(PositiveOf(std::string(part), "factors between commas, all"));
    return factors;
}

PlanChoice ChosenPlan() {
    PlanChoice choice{FactorsOf(TextOf(1)), FactorsOf(TextOf(2))};
    if (const std::string why = WhyNoPlan(choice); !why.empty()) RaiseError("This is no plan: " + why + ".");
    return choice;
}

void CheckInputs() {
    PositiveOf(TextOf(0), "a noise");
    ChosenPlan();
}

void RunPlan(const std::function<void(const std::string& text, double fraction)>& told) {
    const PlanChoice choice = ChosenPlan();
    const StudyProgress progress = StartProgress(static_cast<long>(DesignsOf(choice).size()), "designs");
    Planned = PlanExperiment(choice, PositiveOf(TextOf(0), "a noise"), [&](long done) {
        told(ProgressText(progress, done), ProgressFraction(progress, done));
    });
}

bool NothingKept() {
    return false;
}

// --- the table -------------------------------------------------------------------------------------------

bool IsShared(const ExpectedError& parm) {
    return PartOfSlot(SlotNo(parm.Slot)) == SlotPart::Global;
}

// The parameters that have a column: those that all sets share, else all.
std::vector<long> ColumnSlots() {
    std::vector<long> shared, all;
    for (const PlannedDesign& design : Planned.Designs) {
        if (design.Parms.empty()) continue;
        for (const ExpectedError& parm : design.Parms) {
            all.push_back(parm.Slot);
            if (IsShared(parm)) shared.push_back(parm.Slot);
        }
        break;
    }
    return shared.empty() ? all : shared;
}

std::string ErrorText(const ExpectedError& parm) {
    return parm.Error ? FormatNumber(*parm.Error, *parm.Error < 1e-3 ? "0.00E-##" : "#0.0000") : "none";
}

std::string CellOf(const PlannedDesign& design, long slot) {
    for (const ExpectedError& parm : design.Parms)
        if (parm.Slot == slot) return ErrorText(parm);
    return "";
}

void Show() {
    const std::vector<long> slots = ColumnSlots();
    StudyForm.Columns = {"Speeds", "Loadings"};
    for (const long slot : slots)
        StudyForm.Columns.push_back("Error of " + ParmCaption(SlotNo(slot)));
    for (const PlannedDesign& design : Planned.Designs) {
        std::vector<std::string> row{SingleText(ToSingle(design.Of.SpeedFactor)),
                                     SingleText(ToSingle(design.Of.LoadingFactor))};
        for (const long slot : slots)
            row.push_back(CellOf(design, slot));
        StudyForm.Rows.push_back(row);
    }
    StudyForm.Progress.Text =
        Planned.Complete ? "All designs have been looked at." : "Stopped before the end.";
}

// All parameters of the marked design; of none, what the errors mean.
std::string NotesOf(int row) {
    const auto place = static_cast<std::size_t>(row);
    if (row < 0 || place >= Planned.Designs.size())
        return "Errors of a fit with such noise, at the values of the parameters that stand.";
    const PlannedDesign& design = Planned.Designs[place];
    if (!design.Failure.empty()) return "No errors: " + design.Failure + ".";
    std::string text;
    for (const ExpectedError& parm : design.Parms)
        text += (text.empty() ? "" : "; ") + parm.Name + " " + FormatNumber(parm.Value, "#0.0###") +
                (parm.Error ? " +/- " + ErrorText(parm) : ", not determined");
    return text + ".";
}

void Forget() {
    Planned = Plan{};
}

} // namespace

const StudyBehindForm& PlanBehindForm() {
    static const StudyBehindForm plan{
        "Plan an Experiment",
        "The errors that a fit of your sets would have at the values that stand, with other speeds and other "
        "loadings: each is a "
        "factor of all sets. Nothing is measured or fitted, and the analysis stays as it is.",
        "&Plan",
        "",
        AddInputs,
        CheckInputs,
        RunPlan,
        NothingKept,
        Show,
        TakesNothing,
        TakeNothing,
        NotesOf,
        Forget};
    return plan;
}

} // namespace Quillon
