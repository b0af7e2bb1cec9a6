// Texts, place and format of the legend.
#include "chart/dialogs/LegendOptsForm.h"
#include "chart/dialogs/OptionLists.h"
#include "forms/ChartPieces.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

#include <QComboBox>
#include <QListWidget>

namespace Quillon {

namespace {

// The sets and the text of the chosen one.
QVBoxLayout* LegendTexts(Binder& bind) {
    auto* list = new QListWidget;
    bind.List(
        list, []() -> Control& { return LegendOptsForm.lstLegendText; }, 0, LegendOptsRowClick);
    FieldEdit* text = MakeField(
        bind, []() -> Control& { return LegendOptsForm.txtLegendText; },
        {LegendOptsTextGotFocus, LegendOptsTextKeyPress, {}, LegendOptsTextChanged}, 30);
    auto* label = new QLabel;
    label->setBuddy(text);
    bind.Label(label, []() -> Control& { return LegendOptsForm.TextLabel; });
    auto* column = new QVBoxLayout;
    column->addWidget(list, 1);
    column->addWidget(label);
    column->addWidget(text);
    return column;
}

QWidget* LegendPlace(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, []() -> Control& { return LegendOptsForm.PlaceFrame; });
    auto* rows = new QVBoxLayout(frame);
    rows->addWidget(MakeOption(
        bind, []() -> Control& { return LegendOptsForm.optRight; },
        [] { LegendOptsPlaceClick(LegendPlaces::Right); }));
    rows->addWidget(MakeOption(
        bind, []() -> Control& { return LegendOptsForm.optBottom; },
        [] { LegendOptsPlaceClick(LegendPlaces::Below); }));
    return frame;
}

QWidget* LegendFormat(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, []() -> Control& { return LegendOptsForm.TextFrame; });
    auto* grid = new QGridLayout(frame);
    grid->addWidget(MakeOption(
                        bind, []() -> Control& { return LegendOptsForm.optSingle; }, LegendOptsSingleClick),
                    0, 0);
    grid->addWidget(
        MakeCombo(
            bind, []() -> Control& { return LegendOptsForm.Color; }, LegendOptsColorClick, DressColors),
        0, 1);
    grid->addWidget(MakeOption(
                        bind, []() -> Control& { return LegendOptsForm.optMatch; }, LegendOptsMatchClick),
                    1, 0, 1, 2);
    AddRow(
        bind, grid, 2, 0, []() -> Control& { return LegendOptsForm.FontLabel; },
        MakeCombo(
            bind, []() -> Control& { return LegendOptsForm.FontBox; }, LegendOptsFontClick, DressFonts));
    AddRow(
        bind, grid, 3, 0, []() -> Control& { return LegendOptsForm.SizeLabel; },
        MakeField(
            bind, []() -> Control& { return LegendOptsForm.TitleSizeInput; },
            {LegendOptsSizeGotFocus, LegendOptsSizeKeyPress, LegendOptsSizeLostFocus, {}}, 8));
    grid->addWidget(MakePreview(bind, []() -> Control& { return LegendOptsForm.Preview; }), 4, 0, 1, 2);
    return frame;
}

QWidget* MakeLegendOptsForm(QWidget* parent) {
    auto* form = new FormDialog(LegendOptsForm.State, LegendOptsCancelButton, parent);
    Binder& bind = form->Bind;
    auto* right = new QVBoxLayout;
    right->addWidget(LegendPlace(bind));
    right->addWidget(LegendFormat(bind));
    right->addStretch(1);
    auto* columns = new QHBoxLayout;
    columns->addLayout(LegendTexts(bind), 1);
    columns->addLayout(right);
    auto* all = new QVBoxLayout(form);
    all->addLayout(columns, 1);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return LegendOptsForm.SizeNote; }, true));
    all->addLayout(OkAndCancel(
        bind, []() -> Control& { return LegendOptsForm.OkButton; }, LegendOptsOkButton,
        []() -> Control& { return LegendOptsForm.CancelButton; }, LegendOptsCancelButton));
    return form;
}

const FormWindow Registered(LegendOptsFormName, MakeLegendOptsForm);

} // namespace

} // namespace Quillon
