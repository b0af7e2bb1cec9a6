#pragma once
// Buttons of a table that show as much of their text as their column has room for.

#include <QHelpEvent>
#include <QPushButton>
#include <QToolTip>

#include <algorithm>

namespace Quillon {

// A button that may show less than its text. Its tip begins with the whole of it then, and a reader is told
// it.
class CutButton : public QPushButton {
public:
    // A new text, of which the button shows what it can.
    void TakeText(const QString& text) {
        if (Whole == text) return;
        Whole = text;
        setAccessibleName(text);
        updateGeometry();
        ShowPart();
    }

protected:
    // What stands for the text at the present width.
    virtual QString Part() const = 0;
    void ShowPart() {
        const QString part = Part();
        IsCut = part != Whole;
        QString caption = part;
        caption.replace('&', "&&"); // no access key
        if (text() != caption) setText(caption);
    }
    bool event(QEvent* event) override {
        if (event->type() != QEvent::ToolTip || !IsCut) return QPushButton::event(event);
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), Whole + '\n' + toolTip(), this);
        return true;
    }
    QString Whole;

private:
    bool IsCut = false;
};

// A boxed entry: a flat button that looks like a field. A long text is cut in its middle, so that a name
// keeps its beginning and its ending.
class BoxedEntry : public CutButton {
public:
    // letters: how many are shown in a column of its usual width; the least, below which it is not cut, is
    // all of the text where least is 0.
    explicit BoxedEntry(int letters = 0, int least = 0) : Usual(letters), Least(least) {
        setAutoDefault(false);
        setFocusPolicy(Qt::NoFocus);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        setStyleSheet("QPushButton { text-align: left; padding: 2px 6px; border: 1px solid palette(mid); "
                      "background: palette(base); color: palette(text); min-height: 1.3em; } "
                      "QPushButton:hover { border-color: palette(highlight); }");
    }
    QSize sizeHint() const override {
        return WithWidth(std::max(fontMetrics().horizontalAdvance(Whole), Letters(Usual)));
    }
    QSize minimumSizeHint() const override { return Least == 0 ? sizeHint() : WithWidth(Letters(Least)); }

protected:
    QString Part() const override {
        return Least == 0 ? Whole : fontMetrics().elidedText(Whole, Qt::ElideMiddle, width() - Frame);
    }
    void resizeEvent(QResizeEvent* event) override {
        QPushButton::resizeEvent(event);
        ShowPart();
    }

private:
    static constexpr int Frame = 16; // pixels, of edge and padding
    int Letters(int count) const { return fontMetrics().horizontalAdvance(QString(count, '0')); }
    QSize WithWidth(int text) const { return {text + Frame, QPushButton::sizeHint().height()}; }
    int Usual, Least;
};

// A button of a line with a sign of one letter that stands for its caption where the screen is narrow.
class LineButton : public CutButton {
public:
    explicit LineButton(const QString& sign) : Sign(sign) { setAutoDefault(false); }
    void BeShort() {
        if (Short) return;
        Short = true;
        updateGeometry();
        ShowPart();
    }
    QSize sizeHint() const override {
        const QSize hint = QPushButton::sizeHint();
        return Short ? QSize(fontMetrics().horizontalAdvance("M") + 12, hint.height()) : hint;
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    QString Part() const override { return Short ? Sign : Whole; }

private:
    QString Sign;
    bool Short = false;
};

} // namespace Quillon
