#include "forms/ChartPieces.h"

#include "chart/CHARTEX.h"
#include "chart/dialogs/OptionLists.h"
#include "forms/surfaces/QtFonts.h"

#include <QComboBox>
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

QColor OnScreen(ChartColor color) {
    return QColor::fromRgb(ToRgb(color));
}

} // namespace

QComboBox* MakeCombo(Binder& bind, ControlRef control, std::function<void(int)> chosen,
                     std::function<void(QComboBox*)> dress) {
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

QIcon Swatch(ChartColor color) {
    QPixmap swatch(SwatchSize);
    swatch.fill(OnScreen(color));
    QPainter painter(&swatch);
    painter.setPen(Qt::gray);
    painter.drawRect(0, 0, swatch.width() - 1, swatch.height() - 1);
    painter.end();
    QIcon icon(swatch);
    icon.addPixmap(swatch, QIcon::Selected); // else the style tints it with the colour of what is chosen
    return icon;
}

void DressColors(QComboBox* box) {
    for (int row = 0; row < box->count(); ++row)
        box->setItemIcon(row, Swatch(ColorOfRow(row)));
    box->setIconSize(SwatchSize);
}

void DressFonts(QComboBox* box) {
    for (int row = 0; row < box->count(); ++row) {
        const std::int16_t code = FontCode(row);
        if ((code & 15) == FontFamilies - 1) continue; // a name in symbols cannot be read
        box->setItemData(row, ToolkitFont({FontFace(code & 15), ListLetters, (code & BoldFont) != 0, 0}),
                         Qt::FontRole);
    }
}

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

} // namespace Quillon
