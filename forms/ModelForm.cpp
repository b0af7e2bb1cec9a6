// Choosing the model.
#include "models/forms/ModelForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollArea>

namespace Quillon {

namespace {

// The list of models: up and down choose, Enter takes.
class ModelDialog : public FormDialog {
public:
    explicit ModelDialog(QWidget* parent) : FormDialog(ModelForm.State, ModelFormCancelButton, parent) {}

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Up) return RunHandler(ModelFormKeyUp);
        if (event->key() == Qt::Key_Down) return RunHandler(ModelFormKeyDown);
        FormDialog::keyPressEvent(event);
    }
};

// A row whose arrows go up and down the list, wherever that scrolls to, and whose double click takes the
// model.
class ModelButton : public QRadioButton {
public:
    explicit ModelButton(std::int16_t model) : Model(model) {}

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Up) return RunHandler(ModelFormKeyUp);
        if (event->key() == Qt::Key_Down) return RunHandler(ModelFormKeyDown);
        QRadioButton::keyPressEvent(event);
    }
    void mouseDoubleClickEvent(QMouseEvent*) override {
        RunHandler([this] { ModelFormRowDoubleClick(Model); });
    }

private:
    std::int16_t Model;
};

QWidget* ModelRows(Binder& bind) {
    auto* rows = new QWidget;
    auto* all = new QVBoxLayout(rows);
    all->setSpacing(1);
    for (std::size_t i = 0; i < ModelForm.ModelRow.size(); ++i) {
        const auto model = static_cast<std::int16_t>(i + 1);
        auto* button = new ModelButton(model);
        bind.Option(
            button, [i]() -> Control& { return ModelForm.ModelRow[i]; },
            [model] { ModelFormRowClick(model); });
        bind.Also([i, button] { // one place for Tab, the chosen row
            button->setFocusPolicy(ModelForm.ModelRow[i].Value ? Qt::StrongFocus : Qt::ClickFocus);
        });
        all->addWidget(button);
    }
    all->addStretch(1);
    return rows;
}

QGroupBox* Pair(QRadioButton* first, QRadioButton* second) {
    auto* frame = new QGroupBox;
    auto* all = new QVBoxLayout(frame);
    all->addWidget(first);
    all->addWidget(second);
    return frame;
}

QWidget* MakeModelForm(QWidget* parent) {
    auto* form = new ModelDialog(parent);
    Binder& bind = form->Bind;
    auto* area = new QScrollArea;
    area->setWidget(ModelRows(bind));
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QObject::connect(qApp, &QApplication::focusChanged, area, [area](QWidget*, QWidget* now) {
        if (now && area->isAncestorOf(now)) area->ensureWidgetVisible(now);
    });
    auto* options = new QHBoxLayout;
    options->addWidget(Pair(
        MakeOption(
            bind, []() -> Control& { return ModelForm.Ideal; }, [] { ModelFormNonIdealClick(false); }),
        MakeOption(
            bind, []() -> Control& { return ModelForm.NonIdeal; }, [] { ModelFormNonIdealClick(true); })));
    options->addWidget(Pair(
        MakeOption(
            bind, []() -> Control& { return ModelForm.SameK; }, [] { ModelFormSeparateKClick(false); }),
        MakeOption(
            bind, []() -> Control& { return ModelForm.UniqueK; }, [] { ModelFormSeparateKClick(true); })));
    auto* all = new QVBoxLayout(form);
    all->addWidget(area, 1);
    all->addLayout(options);
    all->addLayout(ButtonRow(
        {}, {MakeButton(
                 bind, []() -> Control& { return ModelForm.OkButton; }, ModelFormOkButton, true),
             MakeButton(
                 bind, []() -> Control& { return ModelForm.CancelButton; }, ModelFormCancelButton)}));
    form->resize(ForFont(600, 660));
    return form;
}

const FormWindow Registered(ModelFormName, MakeModelForm);

} // namespace

} // namespace Quillon
