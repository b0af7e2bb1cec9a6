// The dialogs of the chart window: titles and legend.
#include "chart/dialogs/LegendOptsForm.h"
#include "chart/dialogs/OptionLists.h"
#include "chart/dialogs/TitleOptsForm.h"
#include "chart/pens/Fonts.h"
#include "chart/records/ChartStyle.h"
#include "forms/Pieces.h"
#include "forms/Windows.h"
#include "forms/surfaces/QtFonts.h"

#include <QComboBox>
#include <QListWidget>
#include <QPainter>
#include <QSignalBlocker>
#include <QWheelEvent>

namespace Quillon {

namespace {

constexpr int ListLetters = 15; // pixels

// A list of one visible row, which the wheel leaves alone: it belongs to whatever scrolls behind it.
class PlainCombo : public QComboBox {
protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

QComboBox* MakeCombo(Binder& bind, ControlRef control, std::function<void(int)> chosen,
                     std::function<void(QComboBox*)> dress = {}) {
    auto* box = new PlainCombo;
    bind.Visible(box, control);
    bind.Also([box, control, dress] {
        const QSignalBlocker quiet(box);
        const Control& c = control();
        if (box->count() != static_cast<int>(c.Items.size())) {
            box->clear();
            for (const std::string& item : c.Items)
                box->addItem(ShownText(item));
            if (dress) dress(box);
        }
        if (box->currentIndex() != c.Value) box->setCurrentIndex(c.Value);
    });
    QObject::connect(box, &QComboBox::activated, box,
                     [chosen](int row) { RunHandler([&] { chosen(row); }); });
    return box;
}

QColor OnScreen(ChartColor color) {
    return QColor::fromRgb(ToRgb(color));
}

// Each colour as a swatch before its name.
void DressColors(QComboBox* box) {
    for (int row = 0; row < box->count(); ++row) {
        QPixmap swatch(28, 14);
        swatch.fill(OnScreen(ColorOfRow(row)));
        QPainter painter(&swatch);
        painter.setPen(Qt::gray); // black on a dark desktop and white on a light one have an edge
        painter.drawRect(0, 0, swatch.width() - 1, swatch.height() - 1);
        painter.end();
        box->setItemIcon(row, swatch);
    }
    box->setIconSize({28, 14});
}

// Each font in its own letters.
void DressFonts(QComboBox* box) {
    for (int row = 0; row < box->count(); ++row) {
        const std::int16_t code = FontCode(row);
        if ((code & 15) == FontFamilies - 1) continue; // a name in symbols cannot be read
        box->setItemData(row, ToolkitFont({FontFace(code & 15), ListLetters, (code & BoldFont) != 0, 0}),
                         Qt::FontRole);
    }
}

// The sample of a text on the background of the graph.
QLabel* MakePreview(Binder& bind, ControlRef control) {
    auto* sample = new QLabel;
    sample->setAlignment(Qt::AlignCenter);
    sample->setAutoFillBackground(true);
    sample->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Plain));
    sample->setFixedHeight(40);
    sample->setMinimumWidth(1); // a long text does not widen the form
    bind.Also([sample, control] {
        const Control& c = control();
        const std::string bold = " Bold";
        const bool heavy = c.Tag.size() > bold.size() && c.Tag.ends_with(bold);
        const std::string face = heavy ? c.Tag.substr(0, c.Tag.size() - bold.size()) : c.Tag;
        const SurfaceFont font{face, 20, heavy, 0};
        sample->setFont(ToolkitFont(font));
        sample->setText(
            sample->fontMetrics().elidedText(ToolkitText(font, c.Text), Qt::ElideRight, sample->width() - 8));
        QPalette palette = sample->palette();
        palette.setColor(QPalette::WindowText, OnScreen(static_cast<ChartColor>(c.ForeColor)));
        palette.setColor(QPalette::Window, OnScreen(static_cast<ChartColor>(c.BackColor)));
        sample->setPalette(palette);
    });
    return sample;
}

// A label with an access key before its field.
void AddRow(Binder& bind, QGridLayout* grid, int row, int column, ControlRef caption, QWidget* field) {
    auto* label = new QLabel;
    label->setBuddy(field);
    bind.Label(label, std::move(caption));
    grid->addWidget(label, row, column);
    grid->addWidget(field, row, column + 1);
}

QHBoxLayout* OkAndCancel(Binder& bind, ControlRef ok, void (*onOk)(), ControlRef cancel, void (*onCancel)()) {
    return ButtonRow(
        {}, {MakeButton(bind, std::move(ok), onOk, true), MakeCancel(bind, std::move(cancel), onCancel)});
}

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

} // namespace

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

} // namespace Quillon
