#include "models/forms/UnitsForm.h"

#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"
#include "models/table/CoefficientWavelength.h"
#include "models/table/DefaultBounds.h"
#include "models/table/ModelTable.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <array>
#include <string>

namespace Quillon {

UnitsFormRecord UnitsForm;

namespace {

// A kind of box: where its values are stored, how they are shown, what is said of a value that is not above
// 0.
struct InputRule {
    std::vector<Control> UnitsFormRecord::*Boxes;
    std::vector<float Workspace::*> Stored;
    const char* Picture;
    const char* Message;
};

const InputRule& RuleOf(UnitsInput input) {
    static const std::array<InputRule, 6> rules{{
        {&UnitsFormRecord::VBarInput,
         {&Workspace::VbarA, &Workspace::VbarB},
         "0.00000",
         "You must enter a positive, non-zero value for v-bar"},
        {&UnitsFormRecord::DensityInput,
         {&Workspace::SolventDensity},
         "#0.000000",
         "You must enter a positive, non-zero value for solvent density"},
        {&UnitsFormRecord::AbsorptivityInput,
         {&Workspace::AbsorpA, &Workspace::AbsorpB},
         "#0.000",
         "You must enter a positive, non-zero value for Absorptivity"},
        {&UnitsFormRecord::ExtinctionInput,
         {&Workspace::ExtA, &Workspace::ExtB},
         "0.000E+##",
         "You must enter a positive, non-zero value for extinction"},
        {&UnitsFormRecord::RefractivityInput,
         {&Workspace::FringeMassA, &Workspace::FringeMassB},
         "0.000",
         "You must enter a positive, non-zero value for solute dn/dc"},
        {&UnitsFormRecord::RefExtInput,
         {&Workspace::RefrA, &Workspace::RefrB},
         ".0000",
         "You must enter a positive, non-zero value."},
    }};
    return rules[static_cast<std::size_t>(input)];
}

constexpr std::array AllInputs{UnitsInput::VBar,       UnitsInput::Density,      UnitsInput::Absorptivity,
                               UnitsInput::Extinction, UnitsInput::Refractivity, UnitsInput::RefExt};

float& Stored(UnitsInput input, std::size_t species) {
    return Work.*RuleOf(input).Stored[species];
}

std::string StoredText(UnitsInput input, std::size_t species) {
    return FormatNumber(static_cast<double>(Stored(input, species)), RuleOf(input).Picture);
}

template <class Visitor> void VisitBoxes(Visitor&& visit) {
    for (const UnitsInput input : AllInputs)
        for (std::size_t species = 0; species < RuleOf(input).Stored.size(); ++species)
            visit(input, species);
}

void ShowCoefficients() {
    VisitBoxes([](UnitsInput input, std::size_t species) {
        UnitsFormBox(input, species).Text = StoredText(input, species);
    });
}

// Leaves a box; false when its value is refused, which has then been told.
bool LeaveBox(UnitsInput input, std::size_t species) {
    Control& box = UnitsFormBox(input, species);
    const BoxLeft left = LeaveNumberBox(box, StoredText(input, species));
    if (left == BoxLeft::Undone) return true;
    if (left == BoxLeft::Altered) {
        Stored(input, species) = NumValue(box.Text);
        box.Text = StoredText(input, species);
    }
    if (Stored(input, species) > 0.0F) return true;
    Host.Beep();
    Tell(RuleOf(input).Message, Work.ProgramName, BoxIcon::Warning);
    UnitsForm.State.FocusOn = &box;
    return false;
}

constexpr std::array MassOptions{&UnitsFormRecord::SigmaUnits, &UnitsFormRecord::Buoyant,
                                 &UnitsFormRecord::TrueMass};
constexpr std::array ConcOptions{
    &UnitsFormRecord::Per_AU,     &UnitsFormRecord::Per_mg_per_ml,      &UnitsFormRecord::Molar,
    &UnitsFormRecord::Per_Fringe, &UnitsFormRecord::Refr_per_mg_per_ml, &UnitsFormRecord::Ref_Molar};

void ShowOptions() {
    for (std::size_t i = 0; i < MassOptions.size(); ++i)
        (UnitsForm.*MassOptions[i]).Value = Flag(Work.MassUnits == static_cast<int>(i));
    for (std::size_t i = 0; i < ConcOptions.size(); ++i)
        (UnitsForm.*ConcOptions[i]).Value = Flag(Work.ConcUnits == static_cast<int>(i));
}

void OpenWeightOptions() {
    const bool weight = !TraitsOfModel().TwoSpecies;
    UnitsForm.Per_mg_per_ml.Enabled = weight && !Work.InterferenceData;
    UnitsForm.Refr_per_mg_per_ml.Enabled = weight && Work.InterferenceData;
    UnitsForm.RefractivityNote.Enabled = UnitsForm.Refr_per_mg_per_ml.Enabled; // it goes on with its caption
}

void NameOptions() {
    UnitsForm.MassFrame = Captioned("Molar Mass Units");
    UnitsForm.SigmaUnits = Captioned("&sigma, reduced", "Use sigma");
    UnitsForm.Buoyant = Captioned("&buoyant molar mass", "Use buoyant molar mass");
    UnitsForm.TrueMass = Captioned("&true molar mass", "Use true molar mass");
    UnitsForm.TrueMassNote = Captioned("(density and solute partial specific volume known)");
    UnitsForm.ConcFrame = Captioned("Concentration Units");
    UnitsForm.AbsorbanceFrame = Captioned("Absorbance Data");
    UnitsForm.InterferenceFrame = Captioned("Interference Data");
    UnitsForm.Per_AU = Captioned("per &Absorbance Unit", "Use signal units");
    UnitsForm.Per_mg_per_ml = Captioned("&mg/mL (absorptivity known)", "Use weight concentration units");
    UnitsForm.Molar = Captioned("m&olar (extinction coefficient known)", "Use molar concentration");
    UnitsForm.Per_Fringe = Captioned("per &fringe", "Use signal units");
    UnitsForm.Refr_per_mg_per_ml =
        Captioned("&mg/mL (refractivity known, equals", "Use weight concentration units");
    UnitsForm.Ref_Molar = Captioned("m&olar (molar refractivity known)", "Use molar concentration");
}

std::string WavelengthText() {
    return FormatNumber(static_cast<double>(CoefficientWavelength()), "0");
}

void NameBoxes() {
    VisitBoxes([](UnitsInput input, std::size_t) { (UnitsForm.*RuleOf(input).Boxes).emplace_back(); });
    UnitsForm.DensityLabel = {Captioned("solvent &density (g/mL)")};
    const std::string at = " at " + WavelengthText() + " nm ";
    for (const std::string species : {"A", "B"}) {
        UnitsForm.VBarLabel.push_back(Captioned("partial specific volume of " + species + " (mL/g)"));
        UnitsForm.AbsorptivityLabel.push_back(Captioned("absorptivity of " + species + at + "(ml/(mg cm))"));
        UnitsForm.ExtinctionLabel.push_back(
            Captioned("molar extinction of " + species + at + "(liter/(mole cm))"));
        UnitsForm.RefractivityLabel.push_back(
            Captioned("refractivity of " + species + " (fringes per mg/mL per cm)"));
        UnitsForm.RefExtLabel.push_back(
            Captioned("molar refractivity of " + species + " ((fringes liter)/(mol cm))"));
    }
    UnitsForm.RefractivityNote = Captioned(".001 X (dn/dc in ml/g)/(lambda in cm)");
}

} // namespace

Control& UnitsFormBox(UnitsInput input, std::size_t species) {
    return (UnitsForm.*RuleOf(input).Boxes).at(species);
}

void LoadUnitsForm() {
    UnitsForm = UnitsFormRecord{};
    UnitsForm.State.Caption = "Set Input/Output Units";
    NameOptions();
    NameBoxes();
    UnitsForm.OkButton = Captioned("OK"); // Alt+O belongs to the molar units
    UnitsForm.CancelButton = Captioned("&Cancel");
    ShowOptions();
    OpenWeightOptions();
    ShowCoefficients();
    UnitsForm.State.FocusOn = &UnitsForm.OkButton;
    UnitsForm.State.Shown = true;
}

void UnitsFormMassClick(std::int16_t massUnits) {
    if (massUnits < 0 || massUnits >= static_cast<int>(MassOptions.size())) return;
    Work.MassUnits = massUnits;
    ShowOptions();
}

void UnitsFormConcClick(std::int16_t concUnits) {
    if (concUnits < 0 || concUnits >= static_cast<int>(ConcOptions.size())) return;
    if ((UnitsForm.*ConcOptions[static_cast<std::size_t>(concUnits)]).Enabled) Work.ConcUnits = concUnits;
    ShowOptions();
}

void UnitsFormGotFocus(UnitsInput input, std::size_t species) {
    NumGotFocus(UnitsFormBox(input, species));
}

int UnitsFormKeyPress(UnitsInput input, std::size_t species, int key) {
    if (key == KeyReturn) UnitsFormOkButton();
    return NumberBoxKey(UnitsFormBox(input, species), key);
}

void UnitsFormLostFocus(UnitsInput input, std::size_t species) {
    LeaveBox(input, species);
}

void UnitsFormOkButton() {
    if (ForgetTakenBack()) ShowCoefficients(); // Esc in the box that Enter then left
    bool accepted = true;
    VisitBoxes([&](UnitsInput input, std::size_t species) {
        if (accepted) accepted = LeaveBox(input, species);
    });
    if (accepted) UnitsForm.State.Shown = false;
}

void UnitsFormCancelButton() {
    UnitsForm.Answer = DialogAnswer::Cancel;
    UnitsForm.State.Shown = false;
}

void DefineUnitsDialog() {
    const Workspace before = Work;
    LoadUnitsForm();
    Host.ShowModal(UnitsFormName);
    ForgetTakenBack();
    if (UnitsForm.Answer == DialogAnswer::Cancel) {
        Work = before;
        return;
    }
    try {
        RefreshUnits();
    } catch (const RuntimeError&) {
        Work = before;
        throw;
    }
}

} // namespace Quillon
