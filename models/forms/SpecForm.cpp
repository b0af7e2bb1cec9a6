#include "models/forms/SpecForm.h"

#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"
#include "models/function/SetMeanSignal.h"
#include "models/species/Integration.h"
#include "models/species/SpeciesAtPoint.h"
#include "models/table/ModelTable.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

namespace Quillon {

SpecFormRecord SpecForm;

namespace {

constexpr const char* NoNumber = "* * *";
constexpr const char* RadiusPicture = "#.0000";

bool OfFringes() {
    return Work.InterferenceData || Work.ConcUnits > ConcUnit::Mole;
}

SpeciesUnit ChosenUnit() {
    if (SpecForm.UseMg.Value) return SpeciesUnit::Weight;
    return SpecForm.UseMolar.Value ? SpeciesUnit::Molar : SpeciesUnit::Signal;
}

std::string ShownNumber(double value, SpeciesUnit unit) {
    switch (unit) {
    case SpeciesUnit::Weight:
        return FormatNumber(value, "0.0000") + " mg/mL";
    case SpeciesUnit::Molar:
        return FormatNumber(value, "0.000E+00") + " M";
    default:
        return FormatNumber(value, "0.0000") + (OfFringes() ? " fringes" : " AU");
    }
}

const std::optional<double>& ValueOf(const IntegratedRow& row, SpeciesUnit unit) {
    return unit == SpeciesUnit::Signal ? row.Signal : unit == SpeciesUnit::Weight ? row.Weight : row.Molar;
}

std::string ShownRow(const IntegratedRow& row, SpeciesUnit unit) {
    const std::optional<double>& value = ValueOf(row, unit);
    if (!value) return NoNumber;
    const bool total = row.Label.starts_with("Total");
    const std::string share = row.Share && !total ? FormatNumber(*row.Share, " (#0.0%)") : "";
    return ShownNumber(*value, unit) + share;
}

// --- what was measured -----------------------------------------------------------------------------------

// A mixture has no one coefficient that leads from its signal to a concentration.
// [decision: measured-stays-signal]
SpeciesUnit MeasuredUnit() {
    return TraitsOfModel().TwoSpecies ? SpeciesUnit::Signal : ChosenUnit();
}

std::string ExpHeadText(SpeciesUnit unit) {
    const char* quantity = unit != SpeciesUnit::Signal ? "Concentration"
                           : OfFringes()               ? "Fringes"
                                                       : "Absorbance";
    return std::string("Experimental ") + quantity +
           " Averaged Over Fitting Range (corrected for baseline offset)";
}

std::string ExpNoteText(SpeciesUnit unit) {
    if (unit == SpeciesUnit::Signal) return "";
    const char* coefficient = unit == SpeciesUnit::Weight ? "absorptivity" : "extinction";
    return std::string("(concentrations will be correct only if ") + coefficient +
           " coefficients are correctly set on Units form)";
}

void ShowMeasured(SetNo set) {
    auto& f = SpecForm;
    const SpeciesUnit unit = MeasuredUnit();
    const double one = SignalOfUnit(SpeciesKind::MonomerA, unit, RowOf(set));
    f.ExpHead.Text = ExpHeadText(unit);
    f.ExpNote.Text = ExpNoteText(unit);
    f.ExpAverage.Text = NoNumber; // where the coefficient is 0
    f.ExpAverage.Text = ShownNumber(Divide(SetMeanSignal(set), one), unit);
}

// --- the table -------------------------------------------------------------------------------------------

float RadiusOf(SpecRadius radius) {
    return NumValue(SpecFormBox(radius).Text);
}

IntegratedSet Integrated(SetNo set) {
    return IntegrateCell(set, RadiusOf(SpecRadius::Inner), RadiusOf(SpecRadius::Outer), ChosenUnit());
}

SetNo ChosenSet() {
    return SetNo(SpecForm.SetList.Value);
}

// The rows of the model, without numbers.
void NameRows() {
    auto& f = SpecForm;
    f.SpecName.clear();
    f.SpecConc.clear();
    const auto add = [&](const char* label) {
        f.SpecName.push_back(Captioned(label));
        f.SpecConc.push_back(Captioned(NoNumber));
    };
    const bool two = TraitsOfModel().TwoSpecies;
    add(two && ChosenUnit() == SpeciesUnit::Signal ? "Total Signal" : "Total");
    if (two) {
        add("Total A");
        add("Total B");
    }
    for (const ListedSpecies& each : SpeciesOfModel(Work.Model))
        add(each.Label);
}

// What the form shows where it has no numbers.
void Blank() {
    NameRows();
    SpecForm.MonomerTotal.Text.clear();
}

void ShowIntegrated(const IntegratedSet& found) {
    auto& f = SpecForm;
    const SpeciesUnit unit = ChosenUnit();
    f.SpecName.clear();
    f.SpecConc.clear();
    for (const IntegratedRow& row : found.Rows) {
        f.SpecName.push_back(Captioned(row.Label));
        f.SpecConc.push_back(Captioned(ShownRow(row, unit)));
    }
    f.MonomerTotal.Text.clear();
    if (unit == SpeciesUnit::Molar && found.MonomerMolar && SpeciesOfModel(Work.Model).Count > 1)
        f.MonomerTotal.Text = "Total counted in monomers: " + ShownNumber(*found.MonomerMolar, unit);
}

// Fills the form; what cannot be had stands in Failure.
void Fill() {
    auto& f = SpecForm;
    f.Failure.Text.clear();
    try {
        ShowMeasured(ChosenSet());
        ShowIntegrated(Integrated(ChosenSet()));
    } catch (const RuntimeError& error) {
        Blank();
        f.Failure.Text = "Error '" + error.Text + "' occurred in the integration.";
    }
}

void NameSpecControls() {
    auto& f = SpecForm;
    f.State.Caption = "Integrated Species Concentrations";
    f.SetLabel = Captioned("&Data Set");
    f.InnerLabel = Captioned("Cell &Inner Radius");
    f.OuterLabel = Captioned("Cell &Outer Radius");
    f.Inner = Captioned("5.6", "cm from the centre of rotation");
    f.Outer = Captioned("7.3", "cm from the centre of rotation");
    f.UseAU = Captioned(OfFringes() ? "&Fringes" : "&Absorbance");
    f.UseMg = Captioned("&mg/mL");
    f.UseMolar = Captioned("&Molar");
    f.RangeButton = Captioned("Use Fitting &Range", "Integrates between the ends of the set's fitting range");
    f.Head = Captioned("Theoretical Concentration Averaged Over Cell:");
    f.MeanNote = Captioned("(plain mean over the radius, not weighted for the sector shape of the cell)");
    f.CopyButton = Captioned("&Copy Table", "Copies the table of all data sets");
    f.ExitButton = Captioned("&Exit");
}

void ChooseUnit(const Control& option) {
    auto& f = SpecForm;
    for (Control* each : {&f.UseAU, &f.UseMg, &f.UseMolar})
        each->Value = Flag(each == &option);
}

void ChooseFirstUnit() {
    auto& f = SpecForm;
    f.UseMg.Enabled = SpeciesHaveUnit(SpeciesUnit::Weight);
    const SpeciesUnit unit = UnitInForce();
    const bool weight = unit == SpeciesUnit::Weight && f.UseMg.Enabled;
    ChooseUnit(weight ? f.UseMg : unit == SpeciesUnit::Molar ? f.UseMolar : f.UseAU);
}

std::string TableLine(SetNo set, const IntegratedRow& row) {
    const auto number = [](const std::optional<double>& value) {
        return "\t" + (value ? DoubleText(*value) : std::string());
    };
    return std::to_string(set.Number) + "\t" + Work.SetLabel[set] + "\t" + SpecForm.Inner.Text + "\t" +
           SpecForm.Outer.Text + "\t" + row.Label + number(row.Signal) + number(row.Weight) +
           number(row.Molar) + number(row.Share) + "\n";
}

} // namespace

Control& SpecFormBox(SpecRadius radius) {
    return radius == SpecRadius::Inner ? SpecForm.Inner : SpecForm.Outer;
}

void LoadSpecForm() {
    SpecForm = SpecFormRecord{};
    NameSpecControls();
    for (const SetNo set : EachSet())
        SpecForm.SetList.Items.push_back("Set " + std::to_string(set.Number) + " - " + Work.SetLabel[set]);
    SpecForm.SetList.Value = 1;
    ChooseFirstUnit();
    Fill();
    SpecForm.State.FocusOn = &SpecForm.SetList;
    SpecForm.State.Shown = true;
}

void IntegrateSpecies() {
    Fill();
    if (!SpecForm.Failure.Text.empty()) Tell(SpecForm.Failure.Text, Work.ProgramName, BoxIcon::Warning);
}

void SpecFormSetList(SetNo set) {
    if (set < SetNo(1) || set > SetNo(Work.NumSets) || set == ChosenSet()) return;
    SpecForm.SetList.Value = ToInt16(set.Number);
    IntegrateSpecies();
}

void SpecFormUnit(Control& option) {
    if (!option.Enabled || option.Value) return;
    ChooseUnit(option);
    IntegrateSpecies();
}

void SpecFormRangeButton() {
    const RowNo row = RowOf(ChosenSet());
    const auto text = [&](std::size_t end) {
        return FormatNumber(static_cast<double>(Work.ScanRadius[row][Work.FitRange[end][row]]),
                            RadiusPicture);
    };
    SpecForm.Inner.Text = text(0);
    SpecForm.Outer.Text = text(1);
    IntegrateSpecies();
}

void SpecFormGotFocus(SpecRadius radius) {
    Control& box = SpecFormBox(radius);
    NumGotFocus(box);
    box.Tag = box.Text; // what Esc brings back
}

int SpecFormKeyPress(SpecRadius radius, int key) {
    return NumberBoxKey(SpecFormBox(radius), key);
}

void SpecFormLostFocus(SpecRadius radius) {
    Control& box = SpecFormBox(radius);
    const BoxLeft left = LeaveNumberBox(box, box.Tag);
    if (left == BoxLeft::Undone) return;
    box.Text = FormatNumber(static_cast<double>(NumValue(box.Text)), RadiusPicture);
    if (!(RadiusOf(SpecRadius::Inner) < RadiusOf(SpecRadius::Outer))) {
        Tell(radius == SpecRadius::Inner ? "Inner radius must be less than outer."
                                         : "Inner radius must be greater than outer.",
             Work.ProgramName, BoxIcon::Warning);
        box.Text = box.Tag; // the table below is still that of the former radii
        SpecForm.State.FocusOn = &box;
        return;
    }
    if (left == BoxLeft::Altered) IntegrateSpecies();
}

std::string SpecFormTable() {
    std::string text = "set\tlabel\tinner_cm\touter_cm\tspecies\tsignal\tmg_per_ml\tmolar\tshare\n";
    for (const SetNo set : EachSet())
        for (const IntegratedRow& row : Integrated(set).Rows)
            text += TableLine(set, row);
    return text;
}

void SpecFormCopyButton() {
    try {
        Host.SetClipboardText(SpecFormTable());
    } catch (const RuntimeError& error) {
        Tell("Error '" + error.Text + "' occurred in the integration; nothing was copied.", Work.ProgramName,
             BoxIcon::Warning);
    }
}

void SpecFormExitButton() {
    SpecForm.State.Shown = false;
}

void IntegrateDialog() {
    LoadSpecForm();
    Host.ShowModal(SpecFormName);
    ForgetTakenBack();
}

} // namespace Quillon
