#include "planning/CalculatorForm.h"

#include "input/NUMINPUT.h"
#include "models/table/CoefficientWavelength.h"
#include "models/table/DefaultBounds.h"
#include "models/table/ParmScale.h"
#include "planning/ChannelColumn.h"
#include "platform/FormControls.h"
#include "platform/Letters.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"
#include "workspace/records/SameSettings.h"

#include <cmath>

namespace Quillon {

CalculatorFormRecord CalculatorForm;

namespace {

Calculation Found; // behind the rows of the table

std::size_t PlaceOf(CalculatorBox box) {
    return static_cast<std::size_t>(box);
}

Control& BoxOf(CalculatorBox box) {
    return CalculatorForm.Box[PlaceOf(box)];
}

const std::string& TextOf(CalculatorBox box) {
    return BoxOf(box).Text;
}

bool IsEmpty(CalculatorBox box) {
    return TextOf(box).find_first_not_of(' ') == std::string::npos;
}

// --- naming and filling ----------------------------------------------------------------------------------

struct BoxName {
    const char* Label;
    const char* Tip;
};

constexpr BoxName Names[CalculatorBoxes] = {
    {"&Sequence or file:", "One-letter code, or the name of a file with it, plain or FASTA"},
    {"&Buffer:",
     "water, or what is dissolved: NaCl=0.15, KH2PO4=0.01 in mol/L, glycerol=10 or sucrose=10 in percent by "
     "weight. A buffer of other things: measure its density and type it into the units"},
    {"&Disulfide bonds:", "Empty: all cysteines are paired; 0 inside of cells"},
    {"&Temperature [degrees C]:", "0 to 100; with anything dissolved to 50"},
    {"&Molar mass [kDa]:", "Empty: that of the sequence"},
    {"Frictional rat&io:", "f/f0: 1.2 to 1.3 for compact proteins, more for long ones"},
    {"&Rotor speed [rpm]:", "Empty: no time to equilibrium is wanted"},
    {"Speed be&fore [rpm]:", "At which the column was at equilibrium; empty: evenly filled"},
    {"Cha&nnel:",
     "A, B or C of a six-channel centerpiece, 8A to 8D of an eight-channel one: fills in meniscus and "
     "bottom with its ends"},
    {"Menis&cus [cm]:", "Inner end of the column: a column half as high takes a quarter of the time"},
    {"Bott&om [cm]:", "Outer end of the column"}};

void NameControls() {
    CalculatorForm.State.Caption = "Protein, Buffer, Time to Equilibrium";
    CalculatorForm.Head = Captioned(
        "What a sequence, a buffer and a column come to, each number with its source. Boxes that stay empty "
        "are not asked for.");
    for (std::size_t i = 0; i < CalculatorBoxes; ++i) {
        CalculatorForm.Label[i] = Captioned(Names[i].Label);
        CalculatorForm.Box[i] = Captioned("", Names[i].Tip);
    }
    CalculatorForm.FileButton = Captioned("Fi&le...", "A file with the sequence");
    CalculatorForm.CalculateButton = Captioned("Calc&ulate");
    CalculatorForm.Columns = {"Quantity", "Value", "Unit", "Source"};
    CalculatorForm.UseAButton = Captioned("Use for &A", "Puts v-bar, density and extinction into the units");
    CalculatorForm.UseBButton = Captioned("Use for B", "The same for species B");
    CalculatorForm.CopyButton = Captioned("Cop&y Table");
    CalculatorForm.CloseButton = Captioned("Clos&e");
}

void Fill(CalculatorBox box, float value) {
    if (value > 0.0F) BoxOf(box).Text = SingleText(value);
}

void FillBoxes() {
    const RowNo first(1);
    BoxOf(CalculatorBox::Celsius).Text = "20";
    Fill(CalculatorBox::Celsius, Work.ScanTemperature[first]);
    Fill(CalculatorBox::Rpm, Work.ScanRPM[first]);
    BoxOf(CalculatorBox::Ratio).Text = "1.25";
    if (!HasScan(first) || PointsInRange(first) < 2) return;
    Fill(CalculatorBox::Inner, Work.ScanRadius[first][Work.FitRange[0][first]]);
    Fill(CalculatorBox::Outer, Work.ScanRadius[first][Work.FitRange[1][first]]);
}

void AllowUse() {
    const bool any = Found.Protein || Found.Buffer;
    CalculatorForm.UseAButton.Enabled = CalculatorForm.UseBButton.Enabled = any;
    CalculatorForm.CopyButton.Enabled = !CalculatorForm.Rows.empty();
}

// --- reading ---------------------------------------------------------------------------------------------

// The box gets the focus back.
[[noreturn]] void Refuse(CalculatorBox box, const std::string& text) {
    CalculatorForm.State.FocusOn = &BoxOf(box);
    RaiseError(text);
}

double NumberIn(CalculatorBox box) {
    const std::string& text = TextOf(box);
    if (!IsNumeric(text)) Refuse(box, "Enter a number");
    return static_cast<double>(NumValue(text));
}

double NumberOr(CalculatorBox box, double standard) {
    return IsEmpty(box) ? standard : NumberIn(box);
}

void TakeChannelOfBox() {
    ApproachInput input;
    input.Rpm = NumberOr(CalculatorBox::Rpm, 0.0);
    TakeChannel(std::string(Trimmed(TextOf(CalculatorBox::Channel))), input);
    Fill(CalculatorBox::Inner, static_cast<float>(input.Meniscus));
    Fill(CalculatorBox::Outer, static_cast<float>(input.Bottom));
}

// Unless a box has it, a mass or v-bar that no sequence gives is that of the analysis, and so is the density
// without a buffer.
void FillApproach(ApproachInput& input) {
    if (!(input.MassKDa > 0.0)) input.VBar = static_cast<double>(Work.VbarA);
    if (IsEmpty(CalculatorBox::Buffer) && Work.SolventDensity > 0.0F)
        input.Density = static_cast<double>(Work.SolventDensity);
    input.MassKDa = NumberOr(CalculatorBox::Mass, input.MassKDa);
    input.Rpm = NumberIn(CalculatorBox::Rpm);
    input.FormerRpm = NumberOr(CalculatorBox::Former, 0.0);
    input.Meniscus = NumberIn(CalculatorBox::Inner);
    input.Bottom = NumberIn(CalculatorBox::Outer);
    input.FrictionalRatio = NumberOr(CalculatorBox::Ratio, input.FrictionalRatio);
}

CalculationInput InputOfBoxes() {
    CalculationInput input;
    if (!IsEmpty(CalculatorBox::Chain)) input.Chain = TextOf(CalculatorBox::Chain);
    if (!IsEmpty(CalculatorBox::Buffer)) input.Buffer = TextOf(CalculatorBox::Buffer);
    if (!IsEmpty(CalculatorBox::Disulfides)) {
        const double bonds = NumberIn(CalculatorBox::Disulfides);
        if (bonds != std::floor(bonds) || bonds < 0.0 || bonds > 1e6)
            Refuse(CalculatorBox::Disulfides, "Enter a whole number of bonds");
        input.Disulfides = static_cast<long>(bonds);
    }
    input.Celsius = NumberIn(CalculatorBox::Celsius);
    const bool hasMass = !input.Chain.empty() || !IsEmpty(CalculatorBox::Mass);
    if (hasMass && !IsEmpty(CalculatorBox::Rpm) && !IsEmpty(CalculatorBox::Inner) &&
        !IsEmpty(CalculatorBox::Outer))
        input.Approach = FillApproach;
    return input;
}

void TellFailure(const std::string& text) {
    Host.Beep();
    Tell(text, Work.ProgramName, BoxIcon::Warning);
}

void ShowFound() {
    CalculatorForm.Rows.clear();
    for (const CalculatedNumber& number : Found.Numbers)
        CalculatorForm.Rows.push_back({number.Caption, NumberText(number), number.Unit, number.Source});
    CalculatorForm.Note.Text =
        Found.Numbers.empty()
            ? "Nothing to be calculated: enter a sequence, a buffer, or a mass with speed and radii."
            : "";
    AllowUse();
}

// --- use -------------------------------------------------------------------------------------------------

// Absorptivities and extinctions of the units belong to another wavelength where the first scan has one.
bool CoefficientsAreOf280() {
    const float wavelength = CoefficientWavelength();
    return wavelength == 0.0F || IsSameWavelength(wavelength, 280.0F);
}

void AddWord(std::string& words, const std::string& word) {
    words += (words.empty() ? "" : ", ") + word;
}

// What has been put into Work, in words.
std::string PutIntoUnits(std::size_t species) {
    std::string words;
    if (Found.Protein) {
        (species == 0 ? Work.VbarA : Work.VbarB) = ToSingle(Found.Protein->VBar);
        AddWord(words, "v-bar");
        if (CoefficientsAreOf280() && Found.Protein->Extinction280 > 0.0) {
            (species == 0 ? Work.ExtA : Work.ExtB) = ToSingle(Found.Protein->Extinction280);
            (species == 0 ? Work.AbsorpA : Work.AbsorpB) = ToSingle(Found.Protein->Absorptivity280);
            AddWord(words, "extinction, absorptivity");
        }
    }
    if (Found.Buffer) {
        Work.SolventDensity = ToSingle(Found.Buffer->Density);
        AddWord(words, "density");
    }
    return words;
}

void RefreshAfterUse() {
    if (Work.DataChosen)
        RefreshUnits();
    else
        BuildParmScale();
}

} // namespace

void LoadCalculatorForm() {
    Found = Calculation{};
    CalculatorForm = CalculatorFormRecord{};
    NameControls();
    FillBoxes();
    AllowUse();
    CalculatorForm.State.FocusOn = &BoxOf(CalculatorBox::Chain);
    CalculatorForm.State.Shown = true;
}

void CalculatorFormGotFocus(CalculatorBox box) {
    Control& field = BoxOf(box);
    field.SelStart = 0;
    field.SelLength = static_cast<std::int32_t>(field.Text.size());
}

int CalculatorFormKeyPress(CalculatorBox box, int key) {
    if (key != KeyReturn) return key;
    const std::size_t next = PlaceOf(box) + 1;
    CalculatorForm.State.FocusOn =
        next < CalculatorBoxes ? &CalculatorForm.Box[next] : &CalculatorForm.CalculateButton;
    return 0;
}

void CalculatorFormLostFocus(CalculatorBox box) {
    if (box != CalculatorBox::Channel || IsEmpty(box) || !CalculatorForm.State.Shown) return;
    try {
        TakeChannelOfBox();
    } catch (const RuntimeError& error) {
        BoxOf(box).Text.clear();
        TellFailure(error.Text + ".");
    }
}

void CalculatorFormCalculateButton() {
    Found = Calculation{};
    std::string failure;
    try {
        // The access key of the button leaves the focus in the box.
        if (!IsEmpty(CalculatorBox::Channel) && IsEmpty(CalculatorBox::Inner)) TakeChannelOfBox();
        Found = Calculate(InputOfBoxes());
    } catch (const RuntimeError& error) {
        failure = error.Text + ".";
    }
    ShowFound();
    if (failure.empty()) return;
    CalculatorForm.Note.Text = failure;
    TellFailure(failure);
}

void CalculatorFormFileButton() {
    FileRequest request;
    request.Title = "Sequence of a Protein";
    request.Filter = "sequences (*.fasta)|*.fasta|all files (*.*)|*.*";
    const FileAnswer answer = Host.AskFile(request);
    if (!answer.Cancelled) BoxOf(CalculatorBox::Chain).Text = answer.Path;
}

void CalculatorFormUseButton(std::size_t species) {
    if (!CalculatorForm.UseAButton.Enabled) return;
    const Workspace before = Work;
    try {
        const std::string words = PutIntoUnits(species);
        RefreshAfterUse();
        CalculatorForm.Note.Text = "Put into the units: " + words + (species == 0 ? " (A)." : " (B).");
    } catch (const RuntimeError& error) {
        Work = before;
        TellFailure(error.Text);
    }
}

void CalculatorFormCopyButton() {
    std::string text = "Quantity\tValue\tUnit\tSource\n";
    for (const std::vector<std::string>& row : CalculatorForm.Rows)
        text += row[0] + "\t" + row[1] + "\t" + row[2] + "\t" + row[3] + "\n";
    Host.SetClipboardText(text);
}

void CalculatorFormCloseButton() {
    CalculatorForm.State.Shown = false;
}

void CalculatorDialog() {
    LoadCalculatorForm();
    Host.ShowModal(CalculatorFormName);
}

} // namespace Quillon
