// Options of printing a graph, and properties of a metafile.
#include "chart/dialogs/PrintGrForm.h"
#include "forms/ChartPieces.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

namespace Quillon {

namespace {

using PagesMember = Control PrintGrFormRecord::*;

ControlRef Of(PagesMember member) {
    return [member]() -> Control& { return PrintGrForm.*member; };
}

QRadioButton* Option(Binder& bind, PagesMember member, std::function<void()> chosen) {
    return MakeOption(bind, Of(member), std::move(chosen));
}

QCheckBox* Box(Binder& bind, PagesMember member, std::function<void()> clicked) {
    auto* box = new QCheckBox;
    bind.Check(box, Of(member), std::move(clicked));
    return box;
}

void AddLength(Binder& bind, QGridLayout* grid, int row, std::size_t place) {
    AddRow(
        bind, grid, row, 0, [place]() -> Control& { return PrintGrForm.LengthLabel[place]; },
        MakeField(
            bind, [place]() -> Control& { return PrintGrForm.Length[place]; },
            {[place] { PrintGrLengthGotFocus(place); },
             [place](int key) { return PrintGrLengthKeyPress(place, key); },
             [place] { PrintGrLengthLostFocus(place); },
             {}},
            8));
}

QWidget* Margins(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, Of(&PrintGrFormRecord::MarginFrame));
    auto* grid = new QGridLayout(frame);
    for (const std::size_t place : {LeftEdge, TopEdge, RightEdge, BottomEdge})
        AddLength(bind, grid, static_cast<int>(place), place);
    grid->addWidget(Option(bind, &PrintGrFormRecord::English, [] { PrintGrUnitsClick(false); }), 4, 0, 1, 2);
    grid->addWidget(Option(bind, &PrintGrFormRecord::Metric, [] { PrintGrUnitsClick(true); }), 5, 0, 1, 2);
    grid->setRowStretch(6, 1);
    return frame;
}

QWidget* Sizes(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, Of(&PrintGrFormRecord::SizeFrame));
    auto* rows = new QVBoxLayout(frame);
    for (const PagesMember size :
         {&PrintGrFormRecord::PageFull, &PrintGrFormRecord::PageHalf, &PrintGrFormRecord::PageCustom})
        rows->addWidget(Option(bind, size, [size] { PrintGrSizeClick(size); }));
    rows->addStretch(1);
    return frame;
}

QWidget* CustomSize(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, Of(&PrintGrFormRecord::CustomFrame));
    auto* grid = new QGridLayout(frame);
    AddLength(bind, grid, 0, GraphHeight);
    AddLength(bind, grid, 1, GraphWidth);
    grid->addWidget(Option(bind, &PrintGrFormRecord::CustGraph, PrintGrCustGraphClick), 2, 0, 1, 2);
    grid->addWidget(Option(bind, &PrintGrFormRecord::CustAxes, PrintGrCustAxesClick), 3, 0, 1, 2);
    grid->setRowStretch(4, 1);
    grid->setColumnStretch(2, 1);
    return frame;
}

QWidget* Aspect(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, Of(&PrintGrFormRecord::AspectFrame));
    auto* rows = new QVBoxLayout(frame);
    rows->addWidget(Option(bind, &PrintGrFormRecord::FixAspect, [] { PrintGrAspectClick(true); }));
    rows->addWidget(Option(bind, &PrintGrFormRecord::ChangeAspect, [] { PrintGrAspectClick(false); }));
    return frame;
}

QWidget* ColorsAndLines(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, Of(&PrintGrFormRecord::ColorFrame));
    auto* rows = new QVBoxLayout(frame);
    rows->addWidget(Box(bind, &PrintGrFormRecord::UseBW, [] {}));
    rows->addWidget(Box(bind, &PrintGrFormRecord::DashedLines, [] {}));
    rows->addStretch(1);
    return frame;
}

QWidget* LineWidths(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, Of(&PrintGrFormRecord::WidthFrame));
    auto* rows = new QVBoxLayout(frame);
    rows->addWidget(Box(bind, &PrintGrFormRecord::VaryWidth, PrintGrVaryWidthClick));
    rows->addWidget(Option(bind, &PrintGrFormRecord::StartMin, [] { PrintGrStartClick(true); }));
    rows->addWidget(Option(bind, &PrintGrFormRecord::StartMax, [] { PrintGrStartClick(false); }));
    return frame;
}

QLayout* PrinterRow(Binder& bind) {
    auto* row = new QHBoxLayout;
    row->addWidget(MakeLabel(bind, Of(&PrintGrFormRecord::PrinterNote)), 1);
    row->addWidget(MakeButton(bind, Of(&PrintGrFormRecord::PSetup), PrintGrPSetup));
    row->addWidget(MakeButton(bind, Of(&PrintGrFormRecord::PaperSetup), PrintGrPaperSetup));
    return row;
}

QLayout* Buttons(Binder& bind) {
    const bool metafile = PrintGrForm.ForMetafile;
    return ButtonRow({MakeButton(bind, Of(&PrintGrFormRecord::SavePicture), PrintGrSavePicture),
                      Box(bind, &PrintGrFormRecord::EjectPage, [] {})},
                     {MakeButton(bind, Of(&PrintGrFormRecord::PrintButton), PrintGrPrintButton, !metafile),
                      MakeButton(bind, Of(&PrintGrFormRecord::OkButton), PrintGrOkButton, metafile),
                      MakeCancel(bind, Of(&PrintGrFormRecord::CancelButton), PrintGrCancelButton)});
}

QWidget* MakePrintGrForm(QWidget* parent) {
    auto* form = new FormDialog(PrintGrForm.State, PrintGrCancelButton, parent);
    Binder& bind = form->Bind;
    auto* grid = new QGridLayout;
    grid->addWidget(Margins(bind), 0, 0, 2, 1);
    grid->addWidget(Sizes(bind), 0, 1);
    grid->addWidget(Aspect(bind), 1, 1);
    grid->addWidget(CustomSize(bind), 0, 2, 2, 1);
    grid->addWidget(ColorsAndLines(bind), 2, 0, 1, 2);
    grid->addWidget(LineWidths(bind), 2, 2);
    auto* all = new QVBoxLayout(form);
    all->addLayout(PrinterRow(bind));
    all->addLayout(grid, 1);
    all->addLayout(Buttons(bind));
    return form;
}

const FormWindow Registered(PrintGrFormName, MakePrintGrForm);

} // namespace

} // namespace Quillon
