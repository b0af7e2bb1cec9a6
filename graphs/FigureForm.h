#pragma once
// The dialog "Figure for Publication" as data: the size of the figure, one panel or one for each data set, a
// preview, and the file that it is written to. It changes nothing in the analysis.

#include "graphs/FigurePlan.h"
#include "platform/Controls.h"

#include <string>

namespace Quillon {

inline constexpr const char* FigureFormName = "FigureForm"; // of the form, for the seam

enum class FigureSize { One, Two, Own };
enum class FigureInput { Width, Height };

struct FigureFormRecord {
    FormState State;
    Control SizeFrame, OneColumnOption, TwoColumnsOption, OwnOption;
    Control WidthLabel, WidthInput, HeightLabel, HeightInput;
    Control PanelsFrame, AllOption, SetsOption;
    Control Note; // the size that the figure has, or why there is none
    Control SaveButton, CloseButton;
    FigureSize Size = FigureSize::One;
    FigureChoice Choice; // what the preview and the file show
    int Shown = 0;       // counts the changes of Choice
};

extern FigureFormRecord FigureForm;

// The command: the form, shown modally, with the choices of the last time in this run.
void FigureDialog();

void LoadFigureForm();

void FigureFormSizeClick(FigureSize size);
void FigureFormPanelsClick(bool panelPerSet);

Control& FigureFormBox(FigureInput input);
void FigureFormGotFocus(FigureInput input);
int FigureFormKeyPress(FigureInput input, int key);

// The text of a box is taken: a width from 40 to 400, a height likewise or nothing, which is as high as the
// contents ask. Another text is told, and the box is what it was.
void FigureFormLostFocus(FigureInput input);

// The figure as a PNG for the form to show, at a resolution; "" where it cannot be made. Note tells the size,
// or the reason.
std::string FigurePreview(double dotsPerInch);

// Asks for a file and writes the figure to it; its ending chooses the format. A failure is told, and nothing
// half is left.
void FigureFormSaveButton();

void FigureFormCloseButton();

} // namespace Quillon
