#include "graphs/FigureForm.h"

#include "chart/files/Exchange.h"
#include "chart/files/GraphFile.h"
#include "graphs/Figure.h"
#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"
#include "platform/FormControls.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

FigureFormRecord FigureForm;

namespace {

FigureChoice LastChoice; // of this run

std::string LengthText(double length) {
    return length > 0.0 ? SingleText(static_cast<float>(length)) : "";
}

double& LengthOf(FigureInput input) {
    return input == FigureInput::Width ? FigureForm.Choice.Width : FigureForm.Choice.Height;
}

void NameControls() {
    auto& f = FigureForm;
    f.State.Caption = "Figure for Publication";
    f.SizeFrame = Captioned("Size");
    f.OneColumnOption = Captioned("&One column, 85 mm");
    f.TwoColumnsOption = Captioned("&Two columns, 170 mm");
    f.OwnOption = Captioned("O&wn size");
    f.WidthLabel = Captioned("W&idth [mm]:");
    f.HeightLabel = Captioned("&Height [mm]:");
    f.WidthInput = Captioned("", "From 40 to 400 mm");
    f.HeightInput = Captioned("", "From 40 to 400 mm; nothing: as high as the contents ask");
    f.PanelsFrame = Captioned("Panels");
    f.AllOption = Captioned("&All data sets in one panel");
    f.SetsOption = Captioned("One &panel for each data set");
    f.SaveButton = Captioned("&Save As...", "SVG, PDF, PNG or EMF");
    f.CloseButton = Captioned("&Close");
}

void FollowChoice() {
    auto& f = FigureForm;
    f.OneColumnOption.Value = Flag(f.Size == FigureSize::One);
    f.TwoColumnsOption.Value = Flag(f.Size == FigureSize::Two);
    f.OwnOption.Value = Flag(f.Size == FigureSize::Own);
    f.AllOption.Value = Flag(!f.Choice.PanelPerSet);
    f.SetsOption.Value = Flag(f.Choice.PanelPerSet);
    const bool own = f.Size == FigureSize::Own;
    for (Control* each : {&f.WidthLabel, &f.WidthInput, &f.HeightLabel, &f.HeightInput})
        each->Enabled = own;
    f.WidthInput.Text = LengthText(f.Choice.Width);
    f.HeightInput.Text = LengthText(f.Choice.Height);
    ++f.Shown;
}

FigureSize SizeOf(const FigureChoice& choice) {
    if (choice.Height > 0.0) return FigureSize::Own;
    if (choice.Width == OneColumn) return FigureSize::One;
    return choice.Width == TwoColumns ? FigureSize::Two : FigureSize::Own;
}

FileRequest RequestForFile() {
    FileRequest request;
    request.Title = Work.ProgramName + " - Save Figure";
    request.Filter =
        "SVG pictures (*.svg)|*.svg|PDF pictures (*.pdf)|*.pdf|PNG pictures (*.png)|*.png|Enhanced "
        "Metafiles (*.emf)|*.emf|all files (*.*)|*.*";
    request.Directory = Work.DataDirectory;
    request.Name = "figure.svg";
    request.DefaultType = "svg";
    request.Save = true;
    return request;
}

bool Fits(FigureInput input, double length) {
    if (input == FigureInput::Height && length == 0.0) return true;
    return length >= LeastFigure && length <= LargestFigure;
}

} // namespace

void LoadFigureForm() {
    FigureForm = FigureFormRecord{};
    FigureForm.Choice = LastChoice;
    FigureForm.Size = SizeOf(LastChoice);
    NameControls();
    FollowChoice();
    FigureForm.State.FocusOn = &FigureForm.SaveButton;
    FigureForm.State.Shown = true;
}

void FigureFormSizeClick(FigureSize size) {
    auto& f = FigureForm;
    f.Size = size;
    if (size != FigureSize::Own) {
        f.Choice.Width = size == FigureSize::One ? OneColumn : TwoColumns;
        f.Choice.Height = 0.0;
    } else {
        f.State.FocusOn = &f.WidthInput;
    }
    FollowChoice();
}

void FigureFormPanelsClick(bool panelPerSet) {
    FigureForm.Choice.PanelPerSet = panelPerSet;
    FollowChoice();
}

Control& FigureFormBox(FigureInput input) {
    return input == FigureInput::Width ? FigureForm.WidthInput : FigureForm.HeightInput;
}

void FigureFormGotFocus(FigureInput input) {
    NumGotFocus(FigureFormBox(input));
}

int FigureFormKeyPress(FigureInput input, int key) {
    if (key == KeyReturn)
        FigureForm.State.FocusOn =
            input == FigureInput::Width ? &FigureForm.HeightInput : &FigureForm.SaveButton;
    return NumberBoxKey(FigureFormBox(input), key);
}

void FigureFormLostFocus(FigureInput input) {
    Control& box = FigureFormBox(input);
    if (LeaveNumberBox(box, LengthText(LengthOf(input))) != BoxLeft::Altered) return;
    const double length = box.Text.empty() ? 0.0 : static_cast<double>(NumValue(box.Text));
    if (Fits(input, length)) {
        LengthOf(input) = length;
    } else {
        Tell("A figure is 40 to 400 mm wide and high.", Work.ProgramName, BoxIcon::Warning);
        FigureForm.State.FocusOn = &box;
    }
    FollowChoice();
}

std::string FigurePreview(double dotsPerInch) {
    auto& f = FigureForm;
    f.Note.Text.clear();
    try {
        int width = 0, height = 0;
        std::string bytes = FigureBytes(f.Choice, "png", dotsPerInch,
                                        [&](const std::string& ending, const PictureRequest& request) {
                                            width = request.Width;
                                            height = request.Height;
                                            return OpenPictureAs(ending, request);
                                        });
        const auto millimetres = [&](int units) { return FormatNumber(units / dotsPerInch * 25.4, "0"); };
        f.Note.Text = millimetres(width) + " by " + millimetres(height) + " mm in print";
        f.SaveButton.Enabled = true;
        return bytes;
    } catch (const RuntimeError& error) {
        f.Note.Text = error.Text;
        f.SaveButton.Enabled = false;
        return "";
    }
}

void FigureFormSaveButton() {
    const std::string path = ChosenFile(RequestForFile());
    if (path.empty()) return;
    try {
        Host.WriteFile(path, FigureBytes(FigureForm.Choice, EndingOf(path), FigureDots, OpenPictureAs));
        FigureForm.Note.Text = "Written to " + path;
    } catch (const RuntimeError& error) {
        Tell("Error '" + error.Text + "' occurred while writing " + path, Work.ProgramName, BoxIcon::Warning);
    }
}

void FigureFormCloseButton() {
    FigureForm.State.Shown = false;
}

void FigureDialog() {
    LoadFigureForm();
    Host.ShowModal(FigureFormName);
    LastChoice = FigureForm.Choice;
    ForgetTakenBack();
}

} // namespace Quillon
