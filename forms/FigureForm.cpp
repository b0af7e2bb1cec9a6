// The figure for publication.
#include "graphs/FigureForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"

#include <QPixmap>

namespace Quillon {

namespace {

using FigureMember = Control FigureFormRecord::*;

ControlRef Of(FigureMember member) {
    return [member]() -> Control& { return FigureForm.*member; };
}

QGroupBox* SizeFrame(Binder& bind) {
    QGroupBox* box = MakeFrame(bind, Of(&FigureFormRecord::SizeFrame));
    auto* grid = new QGridLayout(box);
    const std::pair<FigureMember, FigureSize> sizes[] = {
        {&FigureFormRecord::OneColumnOption, FigureSize::One},
        {&FigureFormRecord::TwoColumnsOption, FigureSize::Two},
        {&FigureFormRecord::OwnOption, FigureSize::Own}};
    for (const auto& [member, size] : sizes)
        grid->addWidget(MakeOption(bind, Of(member), [each = size] { FigureFormSizeClick(each); }),
                        grid->rowCount(), 0, 1, 2);
    const std::tuple<FigureMember, FigureMember, FigureInput> inputs[] = {
        {&FigureFormRecord::WidthLabel, &FigureFormRecord::WidthInput, FigureInput::Width},
        {&FigureFormRecord::HeightLabel, &FigureFormRecord::HeightInput, FigureInput::Height}};
    for (const auto& [label, member, which] : inputs) {
        const FigureInput input = which;
        const int line = grid->rowCount();
        QLabel* text = MakeLabel(bind, Of(label));
        FieldEdit* field = MakeField(bind, Of(member),
                                     {[input] { FigureFormGotFocus(input); },
                                      [input](int key) { return FigureFormKeyPress(input, key); },
                                      [input] {
                                          if (FigureForm.State.Shown) FigureFormLostFocus(input);
                                      },
                                      {}},
                                     6);
        text->setBuddy(field);
        text->setIndent(22);
        grid->addWidget(text, line, 0);
        grid->addWidget(field, line, 1);
    }
    return box;
}

QGroupBox* PanelsFrame(Binder& bind) {
    QGroupBox* box = MakeFrame(bind, Of(&FigureFormRecord::PanelsFrame));
    auto* column = new QVBoxLayout(box);
    column->addWidget(
        MakeOption(bind, Of(&FigureFormRecord::AllOption), [] { FigureFormPanelsClick(false); }));
    column->addWidget(
        MakeOption(bind, Of(&FigureFormRecord::SetsOption), [] { FigureFormPanelsClick(true); }));
    return box;
}

// The figure on white paper, as large as there is room: drawn anew when the choice or the room has changed.
class FigurePicture : public QLabel {
public:
    FigurePicture() {
        setObjectName("FigurePreview");
        setMinimumSize(360, 420);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        setAlignment(Qt::AlignCenter);
        setFrameShape(QFrame::StyledPanel);
    }

    void Follow() {
        if (Shown == FigureForm.Shown || !FigureForm.State.Shown) return;
        Shown = FigureForm.Shown;
        const double ratio = devicePixelRatioF();
        constexpr double millimetresPerInch = 25.4;
        const double widest = (width() - 12) * ratio / FigureForm.Choice.Width * millimetresPerInch;
        QPixmap picture;
        picture.loadFromData(QByteArray::fromStdString(FigurePreview(std::clamp(widest, 60.0, 400.0))));
        if (!picture.isNull() && picture.height() > (height() - 12) * ratio)
            picture =
                picture.scaledToHeight(static_cast<int>((height() - 12) * ratio), Qt::SmoothTransformation);
        picture.setDevicePixelRatio(ratio);
        setPixmap(picture);
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QLabel::resizeEvent(event);
        Shown = -1;
        Follow();
    }

private:
    int Shown = -1; // the choice that the picture shows
};

QWidget* MakeFigureForm(QWidget* parent) {
    auto* form = new FormDialog(FigureForm.State, FigureFormCloseButton, parent);
    Binder& bind = form->Bind;
    auto* side = new QVBoxLayout;
    side->addWidget(SizeFrame(bind));
    side->addWidget(PanelsFrame(bind));
    side->addStretch(1);
    auto* picture = new FigurePicture;
    picture->setAccessibleName("Preview of the figure");
    auto* both = new QHBoxLayout;
    both->addLayout(side);
    both->addWidget(picture, 1);
    auto* all = new QVBoxLayout(form);
    all->addLayout(both, 1);
    bind.Also([picture] { picture->Follow(); }); // before the note, which it writes
    all->addWidget(MakeLabel(bind, Of(&FigureFormRecord::Note), true));
    all->addLayout(
        ButtonRow({}, {MakeButton(bind, Of(&FigureFormRecord::SaveButton), FigureFormSaveButton, true),
                       MakeCancel(bind, Of(&FigureFormRecord::CloseButton), FigureFormCloseButton)}));
    return form;
}

const FormWindow Registered(FigureFormName, MakeFigureForm);

} // namespace

} // namespace Quillon
