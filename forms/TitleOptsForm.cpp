// Texts and formats of the titles.
#include "chart/dialogs/TitleOptsForm.h"
#include "chart/dialogs/OptionLists.h"
#include "forms/ChartPieces.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

#include <QComboBox>

namespace Quillon {

namespace {

QWidget* TitleFrame(Binder& bind, TitleLine line) {
    const bool first = line == TitleLine::Main;
    QGroupBox* frame = MakeFrame(bind, [first]() -> Control& {
        return first ? TitleOptsForm.TitleFrame : TitleOptsForm.SubTitleFrame;
    });
    auto* grid = new QGridLayout(frame);
    FieldEdit* text = MakeField(
        bind, [line]() -> Control& { return TitleTextBox(line); },
        {[line] { TitleOptsTextGotFocus(line); },
         [line](int key) { return TitleOptsTextKeyPress(line, key); },
         {},
         [line] { TitleOptsTextChanged(line); }},
        48);
    FieldEdit* size = MakeField(
        bind, [line]() -> Control& { return TitleSizeBox(line); },
        {[line] { TitleOptsSizeGotFocus(line); },
         [line](int key) { return TitleOptsSizeKeyPress(line, key); },
         [line] { TitleOptsSizeLostFocus(line); },
         {}},
        8);
    QComboBox* font = MakeCombo(
        bind, [line]() -> Control& { return TitleFontBox(line); },
        [line](int row) { TitleOptsFontClick(line, row); }, DressFonts);
    QComboBox* color = MakeCombo(
        bind, [line]() -> Control& { return TitleColorBox(line); },
        [line](int row) { TitleOptsColorClick(line, row); }, DressColors);
    QComboBox* place = MakeCombo(
        bind, [line]() -> Control& { return TitleAlignmentBox(line); },
        [line](int row) { TitleOptsAlignmentClick(line, row); });
    AddRow(
        bind, grid, 0, 0, []() -> Control& { return TitleOptsForm.TextLabel; }, text);
    grid->addWidget(text, 0, 1, 1, 3);
    AddRow(
        bind, grid, 1, 0, []() -> Control& { return TitleOptsForm.FontLabel; }, font);
    AddRow(
        bind, grid, 1, 2, []() -> Control& { return TitleOptsForm.SizeLabel; }, size);
    AddRow(
        bind, grid, 2, 0, []() -> Control& { return TitleOptsForm.ColorLabel; }, color);
    AddRow(
        bind, grid, 2, 2, []() -> Control& { return TitleOptsForm.AlignmentLabel; }, place);
    grid->addWidget(MakePreview(bind, [line]() -> Control& { return TitlePreview(line); }), 3, 0, 1, 4);
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(3, 1);
    return frame;
}

QWidget* MakeTitleOptsForm(QWidget* parent) {
    auto* form = new FormDialog(TitleOptsForm.State, TitleOptsCancelButton, parent);
    Binder& bind = form->Bind;
    auto* all = new QVBoxLayout(form);
    all->addWidget(TitleFrame(bind, TitleLine::Main));
    all->addWidget(TitleFrame(bind, TitleLine::Sub));
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return TitleOptsForm.SizeNote; }, true));
    all->addLayout(OkAndCancel(
        bind, []() -> Control& { return TitleOptsForm.OkButton; }, TitleOptsOkButton,
        []() -> Control& { return TitleOptsForm.CancelButton; }, TitleOptsCancelButton));
    return form;
}

const FormWindow Registered(TitleOptsFormName, MakeTitleOptsForm);

} // namespace

} // namespace Quillon
