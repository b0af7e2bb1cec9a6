#include "forms/shell/Binding.h"
#include "forms/shell/DesktopColor.h"

#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QCloseEvent>
#include <QLabel>
#include <QListWidget>
#include <QPalette>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <exception>
#include <new>

namespace Quillon {

namespace {

std::vector<Binder*>& OpenBinders() {
    static std::vector<Binder*> all;
    return all;
}

std::vector<ModalWait*> Waits; // of handlers for windows, the innermost last
int HandlersAtWork = 0;

// A window has been closed, and the handler that waits for it has not got the word yet.
bool Answered() {
    return !Waits.empty() && Waits.back()->Over;
}

int RefreshDepth = 0;

void TellError(const std::string& text) {
    Tell(text, Work.ProgramName, BoxIcon::Warning);
}

// Black or white, whichever stands out more: the eye sees green far brighter than blue.
QColor TextOn(const QColor& back) {
    const auto linear = [](double c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    const double luminance =
        0.2126 * linear(back.redF()) + 0.7152 * linear(back.greenF()) + 0.0722 * linear(back.blueF());
    return luminance > 0.179 ? Qt::black : Qt::white; // where the contrast with both is the same
}

void Colour(QWidget* widget, const Control& control) {
    QPalette palette = QGuiApplication::palette();
    if (control.ForeColor != DefaultColor) {
        const QColor c = DesktopColor(control.ForeColor, palette);
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            palette.setColor(QPalette::Active, role, c), palette.setColor(QPalette::Inactive, role, c);
    }
    if (control.BackColor != DefaultColor) {
        const QColor c(static_cast<int>(control.BackColor & 0xFF),
                       static_cast<int>((control.BackColor >> 8) & 0xFF),
                       static_cast<int>((control.BackColor >> 16) & 0xFF));
        palette.setColor(QPalette::Base, c);
        palette.setColor(QPalette::Window, c);
        if (control.ForeColor == DefaultColor) palette.setColor(QPalette::WindowText, TextOn(c));
        widget->setAutoFillBackground(true);
    }
    if (widget->palette() != palette) widget->setPalette(palette);
}

} // namespace

QString ShownText(const std::string& text) {
    return QString::fromLatin1(text.data(), static_cast<int>(text.size()));
}

std::string RecordText(const QString& text) {
    const QByteArray bytes = text.toLatin1();
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QString WithoutAccessKey(const std::string& text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && (i + 1 >= text.size() || text[i + 1] != '&')) continue;
        if (text[i] == '&') ++i;
        plain += text[i];
    }
    return ShownText(plain);
}

QString WrappedTip(const std::string& text) {
    constexpr std::size_t longest = 60; // letters of a line
    std::string wrapped = text;
    std::size_t begin = 0;
    while (wrapped.size() - begin > longest) {
        const std::size_t blank = wrapped.rfind(' ', begin + longest);
        if (blank == std::string::npos || blank <= begin) break;
        wrapped[blank] = '\n';
        begin = blank + 1;
    }
    return ShownText(wrapped);
}

bool HandlerAtWork() {
    return HandlersAtWork > 0;
}

// A command that fails in a way that nobody foresaw ends, but the analysis in the workspace does not.
void RunGuarded(const std::function<void()>& handler) {
    if (!handler) return;
    ++HandlersAtWork;
    try {
        handler();
    } catch (const RuntimeError& error) {
        TellError(error.Text);
    } catch (const std::bad_alloc&) {
        TellError("There is not enough memory for this command.");
    } catch (const std::exception& error) {
        TellError(std::string("This command failed: ") + error.what());
    }
    --HandlersAtWork;
}

bool FormsRefreshing() {
    return RefreshDepth > 0;
}

ModalWait::ModalWait(QDialog* window) {
    Waits.push_back(this);
    QObject::connect(window, &QDialog::finished, window, [this] { Over = true; });
}

ModalWait::~ModalWait() {
    Waits.pop_back();
}

void RunHandler(const std::function<void()>& handler) {
    if (!Answered() && LeavePendingField()) RunGuarded(handler);
    RefreshForms();
}

void RunSoon(QObject* context, const std::function<void()>& handler) {
    if (!Answered()) return RunHandler(handler);
    QTimer::singleShot(0, context, [context, handler] { RunSoon(context, handler); });
}

void RunWhenIdle(const std::function<void()>& handler) {
    if (HandlersAtWork > 0) return RefreshForms(); // an item that is checked by clicking goes back
    RunHandler(handler);
}

// --- Binder ------------------------------------------------------------------------------------------------

Binder::Binder(QWidget* window, FormState* state) : Window(window), State(state) {
    OpenBinders().push_back(this);
}

Binder::~Binder() {
    std::erase(OpenBinders(), this);
}

void Binder::Follow(QWidget* widget, ControlRef control, std::function<void()> update) {
    Bindings.push_back({widget, std::move(control), std::move(update)});
}

void Binder::Label(QLabel* label, ControlRef control) {
    Follow(label, control, [label, control] {
        const std::string& text = control().Text;
        const QString shown = label->buddy() ? ShownText(text) : WithoutAccessKey(text);
        if (label->text() != shown) label->setText(shown);
    });
}

void Binder::Button(QAbstractButton* button, ControlRef control, std::function<void()> clicked) {
    Follow(button, control, [button, control] {
        const QString shown = ShownText(control().Text);
        if (!shown.isEmpty() && button->text() != shown) button->setText(shown);
    });
    QObject::connect(button, &QAbstractButton::clicked, button, [button, clicked] {
        if (button->property(GivesUp).toBool()) ForgetPendingField();
        RunHandler(clicked);
    });
    // Pressed and let go elsewhere: the form stands, and the field that was left still has its check to run.
    QObject::connect(button, &QAbstractButton::released, button,
                     [button] { QTimer::singleShot(0, button, [] { LeavePendingField(); }); });
}

void Binder::Check(QCheckBox* box, ControlRef control, std::function<void()> clicked) {
    Follow(box, control, [box, control] {
        const QSignalBlocker quiet(box);
        const Control& c = control();
        box->setText(ShownText(c.Text));
        box->setCheckState(c.Value == 0 ? Qt::Unchecked : c.Value == 2 ? Qt::PartiallyChecked : Qt::Checked);
    });
    QObject::connect(box, &QCheckBox::clicked, box, [control, clicked](bool checked) {
        RunHandler([&] { // by now the box may show its record again
            control().Value = checked ? 1 : 0;
            clicked();
        });
    });
}

void Binder::Option(QAbstractButton* option, ControlRef control, std::function<void()> chosen) {
    option->setAutoExclusive(false); // the record says which one is chosen
    Follow(option, control, [option, control] {
        const QSignalBlocker quiet(option);
        const Control& c = control();
        option->setText(ShownText(c.Text));
        option->setChecked(c.Value != 0);
    });
    QObject::connect(option, &QAbstractButton::clicked, option, [chosen] { RunHandler(chosen); });
}

void Binder::Field(FieldEdit* field, ControlRef control) {
    Follow(field, control, [field, control] {
        const QString wanted = ShownText(control().Text);
        if (field->text() != wanted) field->setText(wanted);
    });
}

void Binder::List(QListWidget* list, ControlRef control, int base, std::function<void(int)> chosen) {
    Follow(list, control, [list, control, base] {
        const QSignalBlocker quiet(list);
        const Control& c = control();
        if (list->count() != static_cast<int>(c.Items.size())) {
            list->clear();
            for (const std::string& item : c.Items)
                list->addItem(ShownText(item));
        }
        for (int i = 0; i < list->count(); ++i) {
            const QString shown = ShownText(c.Items[static_cast<std::size_t>(i)]);
            if (list->item(i)->text() != shown) list->item(i)->setText(shown);
        }
        if (list->currentRow() != c.Value - base) list->setCurrentRow(c.Value - base);
    });
    QObject::connect(list, &QListWidget::currentRowChanged, list, [chosen, base](int row) {
        if (row >= 0) RunHandler([&] { chosen(row + base); });
    });
}

void Binder::Text(QPlainTextEdit* text, ControlRef control) {
    text->setReadOnly(true);
    Follow(text, control, [text, control] {
        const QString shown = ShownText(control().Text);
        if (text->toPlainText() != shown) text->setPlainText(shown);
    });
}

void Binder::Visible(QWidget* widget, ControlRef control) {
    Follow(widget, std::move(control), [] {});
}

void Binder::Also(std::function<void()> refresh) {
    Others.push_back(std::move(refresh));
}

void Binder::ObeyFocus() {
    if (!State || !State->FocusOn) return;
    const Control* wanted = State->FocusOn;
    State->FocusOn = nullptr;
    for (const Binding& b : Bindings)
        if (&b.Record() == wanted) {
            b.Widget->setFocus(Qt::OtherFocusReason);
            return;
        }
}

void Binder::Refresh() {
    if (Refreshing) return;
    Refreshing = true;
    ++RefreshDepth;
    for (const Binding& b : Bindings) {
        const Control& c = b.Record();
        b.Update();
        if (b.Widget->isHidden() == c.Visible) b.Widget->setVisible(c.Visible);
        if (b.Widget->isEnabled() != c.Enabled && Window->isEnabled()) b.Widget->setEnabled(c.Enabled);
        const QString tip = WrappedTip(c.ToolTip);
        if (b.Widget->toolTip() != tip) b.Widget->setToolTip(tip);
        Colour(b.Widget, c);
    }
    for (const auto& other : Others)
        other();
    if (State && Window->windowTitle() != ShownText(State->Caption))
        Window->setWindowTitle(ShownText(State->Caption));
    --RefreshDepth;
    Refreshing = false;
    ObeyFocus();
}

QWidget* Binder::WidgetOf(const Control& control) const {
    for (const Binding& b : Bindings)
        if (&b.Record() == &control) return b.Widget;
    return nullptr;
}

QWidget* WidgetFor(const Control& control) {
    const std::vector<Binder*>& all = OpenBinders();
    for (auto b = all.rbegin(); b != all.rend(); ++b) // the latest window comes first
        if (QWidget* widget = (*b)->WidgetOf(control)) return widget;
    return nullptr;
}

void RefreshForms() {
    const std::vector<Binder*> all = OpenBinders(); // a refresh may close a window
    for (Binder* b : all)
        if (std::find(OpenBinders().begin(), OpenBinders().end(), b) != OpenBinders().end()) b->Refresh();
}

// --- FormDialog --------------------------------------------------------------------------------------------

FormDialog::FormDialog(FormState& state, std::function<void()> closedByUser, QWidget* parent)
    : QDialog(parent), Bind(this, &state), State(state), ClosedByUser(std::move(closedByUser)) {
    Bind.Also([this] {
        if (!State.Shown && isVisible()) done(QDialog::Accepted);
    });
}

// Wide enough for the caption, which stands in bold between the icon and the buttons of the frame.
void FormDialog::setVisible(bool visible) {
    auto* rows = qobject_cast<QBoxLayout*>(layout());
    if (visible && rows && !CaptionFits) {
        const int width = fontMetrics().horizontalAdvance(ShownText(State.Caption)) * 6 / 5 + 110;
        rows->addSpacerItem(new QSpacerItem(width, 0, QSizePolicy::Minimum, QSizePolicy::Fixed));
        CaptionFits = true;
    }
    QDialog::setVisible(visible);
}

void FormDialog::reject() {
    if (!State.Shown) return QDialog::reject();
    if (ClosedByUser)
        RunHandler(ClosedByUser);
    else
        State.Shown = false;
    RefreshForms();
}

void FormDialog::closeEvent(QCloseEvent* event) {
    if (State.Shown) {
        event->ignore();
        reject();
        return;
    }
    QDialog::closeEvent(event);
}

} // namespace Quillon
