// The options of an axis.
#include "chart/dialogs/AxisOptsForm.h"
#include "forms/ChartPieces.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

#include <QComboBox>

namespace Quillon {

namespace {

AxisOptsFormRecord& Form = AxisOptsForm;

// A control of the record by its member: the record is laid out anew when the form loads.
using AxisMember = Control AxisOptsFormRecord::*;

ControlRef Of(AxisMember member) {
    return [member]() -> Control& { return Form.*member; };
}

FieldEdit* NumberField(Binder& bind, AxisMember member, int digits) {
    const ControlRef field = Of(member);
    return MakeField(bind, field,
                     {[field] { AxisOptsNumberGotFocus(field()); },
                      [field](int key) { return AxisOptsNumberKeyPress(field(), key); },
                      [field] { AxisOptsNumberLostFocus(field()); },
                      {}},
                     digits);
}

QComboBox* List(Binder& bind, AxisMember member, std::function<void(QComboBox*)> dress) {
    return MakeCombo(
        bind, Of(member), [member](int row) { AxisOptsListClick(Form.*member, row); }, std::move(dress));
}

struct Choice {
    AxisMember Control;
    std::function<void()> Chosen;
};

// A frame with options one below the other.
QWidget* Options(Binder& bind, AxisMember title, const std::vector<Choice>& choices) {
    QGroupBox* frame = MakeFrame(bind, Of(title));
    auto* rows = new QVBoxLayout(frame);
    for (const Choice& choice : choices)
        rows->addWidget(MakeOption(bind, Of(choice.Control), choice.Chosen));
    rows->addStretch(1);
    return frame;
}

QWidget* TypeFrame(Binder& bind) {
    return Options(
        bind, &AxisOptsFormRecord::TypeFrame,
        {{&AxisOptsFormRecord::Linear, [] { AxisOptsTypeClick(ScaleTypes::Linear, 10.0F); }},
         {&AxisOptsFormRecord::LogBase10, [] { AxisOptsTypeClick(ScaleTypes::Logarithmic, 10.0F); }},
         {&AxisOptsFormRecord::NaturalLog, [] { AxisOptsTypeClick(ScaleTypes::Logarithmic, NaturalBase); }}});
}

QWidget* ModeFrame(Binder& bind) {
    return Options(bind, &AxisOptsFormRecord::ModeFrame,
                   {{&AxisOptsFormRecord::ScaleAutorange, [] { AxisOptsModeClick(ScaleModes::Autorange); }},
                    {&AxisOptsFormRecord::Prescaled, [] { AxisOptsModeClick(ScaleModes::Prescaled); }},
                    {&AxisOptsFormRecord::ScaleManual, [] { AxisOptsModeClick(ScaleModes::Manual); }}});
}

QWidget* ScaleFrame(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, Of(&AxisOptsFormRecord::ScaleFrame));
    auto* grid = new QGridLayout(frame);
    const std::pair<AxisMember, AxisMember> rows[] = {
        {&AxisOptsFormRecord::MinLabel, &AxisOptsFormRecord::MinScale},
        {&AxisOptsFormRecord::MaxLabel, &AxisOptsFormRecord::MaxScale},
        {&AxisOptsFormRecord::FirstTicLabel, &AxisOptsFormRecord::FirstTicInput},
        {&AxisOptsFormRecord::Label1, &AxisOptsFormRecord::IntervalInput}};
    int row = 0;
    for (const auto& [label, field] : rows)
        AddRow(bind, grid, row++, 0, Of(label), NumberField(bind, field, 12));
    auto* check = new QCheckBox;
    bind.Check(check, Of(&AxisOptsFormRecord::GridCheck), AxisOptsGridClick);
    grid->addWidget(check, row, 0, 1, 2);
    grid->setRowStretch(row + 1, 1);
    grid->setColumnMinimumWidth( // the longest caption of the interval: the fields stay where they are
        0, frame->fontMetrics().horizontalAdvance("Tics/Decade 0,1,2,4,8") + 8);
    return frame;
}

QWidget* Box(QLayout* layout) {
    auto* box = new QWidget;
    layout->setContentsMargins(0, 0, 0, 0);
    box->setLayout(layout);
    return box;
}

// Options stand in boxes of their own, so that the arrow keys stay among them.
QWidget* OptionColumn(Binder& bind, const std::vector<Choice>& choices) {
    auto* column = new QVBoxLayout;
    for (const Choice& choice : choices)
        column->addWidget(MakeOption(bind, Of(choice.Control), choice.Chosen));
    return Box(column);
}

QWidget* TicFrame(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, Of(&AxisOptsFormRecord::TicFrame));
    auto* grid = new QGridLayout(frame);
    grid->addWidget(
        OptionColumn(
            bind,
            {{&AxisOptsFormRecord::MarkandLabel, [] { AxisOptsTicModeClick(TicModes::MarksAndLabels); }},
             {&AxisOptsFormRecord::MarkOnly, [] { AxisOptsTicModeClick(TicModes::MarksOnly); }},
             {&AxisOptsFormRecord::NoTics, [] { AxisOptsTicModeClick(TicModes::NoTics); }}}),
        0, 0, 3, 1, Qt::AlignTop);
    grid->addWidget(
        OptionColumn(
            bind, {{&AxisOptsFormRecord::DecFormat, [] { AxisOptsFormatClick(TicFormats::Decimal); }},
                   {&AxisOptsFormRecord::ExpFormat, [] { AxisOptsFormatClick(TicFormats::Exponential); }}}),
        0, 1, 3, 1, Qt::AlignTop);
    AddRow(bind, grid, 0, 2, Of(&AxisOptsFormRecord::DecimalLabel),
           NumberField(bind, &AxisOptsFormRecord::TicDecimalInput, 4));
    AddRow(bind, grid, 1, 2, Of(&AxisOptsFormRecord::LabelSizeLabel),
           NumberField(bind, &AxisOptsFormRecord::TicLabelSizeInput, 6));
    AddRow(bind, grid, 2, 2, Of(&AxisOptsFormRecord::AxisColorLabel),
           List(bind, &AxisOptsFormRecord::AxisColor, DressColors));
    AddRow(bind, grid, 3, 2, Of(&AxisOptsFormRecord::LabelFontLabel),
           List(bind, &AxisOptsFormRecord::LabelFontBox, DressFonts));
    grid->setColumnStretch(3, 1);
    return frame;
}

QWidget* TitleFrame(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, Of(&AxisOptsFormRecord::TitleFrame));
    auto* grid = new QGridLayout(frame);
    FieldEdit* text = MakeField(bind, Of(&AxisOptsFormRecord::AxisTitleInput),
                                {AxisOptsTitleGotFocus, AxisOptsTitleKeyPress, {}, {}}, 40);
    AddRow(bind, grid, 0, 0, Of(&AxisOptsFormRecord::TextLabel), text);
    grid->addWidget(text, 0, 1, 1, 3);
    AddRow(bind, grid, 1, 0, Of(&AxisOptsFormRecord::TitleFontLabel),
           List(bind, &AxisOptsFormRecord::TitleFontBox, DressFonts));
    AddRow(bind, grid, 1, 2, Of(&AxisOptsFormRecord::TitleColorLabel),
           List(bind, &AxisOptsFormRecord::TitleColor, DressColors));
    AddRow(bind, grid, 2, 0, Of(&AxisOptsFormRecord::TitleSizeLabel),
           NumberField(bind, &AxisOptsFormRecord::TitleSizeInput, 6));
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return frame;
}

QWidget* MakeAxisOptsForm(QWidget* parent) {
    auto* form = new FormDialog(Form.State, AxisOptsCancelButton, parent);
    Binder& bind = form->Bind;
    auto* grid = new QGridLayout;
    grid->addWidget(ScaleFrame(bind), 0, 0, 2, 1);
    grid->addWidget(ModeFrame(bind), 0, 1);
    grid->addWidget(TypeFrame(bind), 0, 2);
    grid->addWidget(KeepPlace(MakeLabel(bind, Of(&AxisOptsFormRecord::Note), true)), 1, 1, 1, 2);
    grid->addWidget(TicFrame(bind), 2, 0, 1, 3);
    grid->addWidget(TitleFrame(bind), 3, 0, 1, 3);
    auto* all = new QVBoxLayout(form);
    all->addLayout(grid, 1);
    all->addWidget(MakeLabel(bind, Of(&AxisOptsFormRecord::SizeNote), true));
    all->addLayout(
        ButtonRow({MakeButton(bind, Of(&AxisOptsFormRecord::SwapButton), AxisOptsSwapButton)},
                  {MakeButton(bind, Of(&AxisOptsFormRecord::OkButton), AxisOptsOkButton, true),
                   MakeCancel(bind, Of(&AxisOptsFormRecord::CancelButton), AxisOptsCancelButton)}));
    return form;
}

const FormWindow Registered(AxisOptsFormName, MakeAxisOptsForm);

} // namespace

} // namespace Quillon
