#pragma once
// The form "Graph Printing Options" as data, which is also the one for the properties of a metafile: margins,
// size, ratio, colours and line widths on paper. It works on a copy; Print and OK take it over.

#include "platform/Controls.h"
#include "platform/Printer.h"

#include <array>
#include <cstddef>

namespace Quillon {

inline constexpr const char* PrintGrFormName = "PrintGrForm"; // of the form, for the seam

// The places of the fields of lengths.
enum PageLength : std::size_t { LeftEdge, TopEdge, RightEdge, BottomEdge, GraphHeight, GraphWidth };
inline constexpr std::size_t PageLengths = 6;

struct PrintGrFormRecord {
    FormState State;
    Control PrinterNote; // what the pages go to, and the sheet that lies there
    Control PSetup, PaperSetup;
    Control MarginFrame, SizeFrame, CustomFrame, AspectFrame, ColorFrame, WidthFrame;
    std::array<Control, PageLengths> LengthLabel, Length; // margins, then height and width of a custom size
    Control English, Metric;                              // inches or centimetres
    Control PageFull, PageHalf, PageCustom;
    Control CustGraph, CustAxes; // a custom size is that of the whole graph, or of the axes' frame
    Control FixAspect, ChangeAspect;
    Control UseBW; // for this time only; its caption follows what the printer can do
    Control DashedLines;
    Control VaryWidth, StartMin, StartMax; // widths that rise from the least one, or fall from the usual one
    Control EjectPage;
    Control SavePicture; // writes the graph as a picture of the size that it has on paper
    Control PrintButton, OkButton, CancelButton;

    std::array<float, PageLengths> Lengths{}; // what the fields stand for, in the units shown
    PrinterState Printer;
    bool ForMetafile = false;
};
extern PrintGrFormRecord PrintGrForm;

// Shows the form. AskPrintOptions: true when the graph is to be printed. AskMetafileProperties: without the
// print button, for the first time in a run behind a note; true unless it was cancelled.
inline bool MetafileNoteShown = false;
bool AskPrintOptions();
bool AskMetafileProperties();

void LoadPrintGrForm(bool forMetafile);

void PrintGrLengthGotFocus(std::size_t place);
int PrintGrLengthKeyPress(std::size_t place, int key);
void PrintGrLengthLostFocus(std::size_t place); // raises a margin to the printer's border, which is told
void PrintGrUnitsClick(bool metric);            // multiplies or divides all lengths by 2.54
void PrintGrSizeClick(Control PrintGrFormRecord::*size);
void PrintGrCustGraphClick();
void PrintGrCustAxesClick(); // tells what the margins then mean
void PrintGrAspectClick(bool fix);
void PrintGrVaryWidthClick(); // after the box has changed
void PrintGrStartClick(bool least);
void PrintGrPSetup();     // the printer dialog; a page that is held is printed before
void PrintGrPaperSetup(); // the dialog for the paper

// Close the form, unless a length is refused or the margins leave no room.
void PrintGrPrintButton();
void PrintGrOkButton();
void PrintGrSavePicture(); // with what the form shows, which is not taken over; stays open
void PrintGrCancelButton();

} // namespace Quillon
