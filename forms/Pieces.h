#pragma once
// Widgets that the windows are made of, bound to their records as they are made.
//
// Each function makes a widget without a parent: it is the layout's that it is put into, and goes with its
// window. A control that is asked for by a reference (ControlRef) is read whenever the windows are brought up
// to their records, and must be there for as long as the window.

#include "fit/forms/RowLayout.h"
#include "forms/shell/Binding.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace Quillon {

// A text that can be marked and copied; with wrap in as many lines as its width makes of it.
QLabel* MakeLabel(Binder& bind, ControlRef control, bool wrap = false);

// A text of more than so many letters in lines of much the same length, broken at the blanks nearest to where
// equal lines would end. No more than mostLines of them, whatever their length; blanks become line ends,
// nothing else of the text changes.
QString InLines(QString text, int letters, int mostLines);

// The head of a column. A long one is broken by itself rather than wrapped: a wrapped label does not tell the
// layout how high it becomes. letters is the width at which it is broken, mostLines into how many.
QLabel* MakeHead(Binder& bind, const ControlRef& control, int letters = 24, int mostLines = 2);

// A button with the control's caption; standard makes it the one that Return presses in a field.
QPushButton* MakeButton(Binder& bind, ControlRef control, std::function<void()> clicked,
                        bool standard = false);

// A button that takes everything back: the field that a click on it leaves is not checked.
QPushButton* MakeCancel(Binder& bind, ControlRef control, std::function<void()> clicked);

// A widget whose place stays when it is hidden, so that a table or a page does not jump. Hands back w.
QWidget* KeepPlace(QWidget* w);

// A text box wide enough for so many digits; more can be typed. handlers are called with what the user does
// in it.
FieldEdit* MakeField(Binder& bind, ControlRef control, FieldHandlers handlers, int digits = 12);

// One of a frame's options: Tab reaches the chosen one, or the first where none is chosen, and the arrow keys
// choose the next one.
class OptionButton : public QRadioButton {
public:
    bool IsTabStop() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QList<QRadioButton*>
    Group() const; // those of its frame that can be chosen, in the order in which they stand
};

// Its control's Value is -1 when it is chosen; chosen is called by a click, which does not choose by itself:
// the record does.
QRadioButton* MakeOption(Binder& bind, ControlRef control, std::function<void()> chosen);

// The row of buttons at the foot of a window: what stands alone to the left, the ways out to the right.
QHBoxLayout* ButtonRow(std::initializer_list<QWidget*> left, std::initializer_list<QWidget*> right);

// A frame whose title is a control's caption.
QGroupBox* MakeFrame(Binder& bind, const ControlRef& control);

// Where a row of parameters stands in the grid: down the first column of its page, then down the second. Both
// from 0.
struct Cell {
    int Row, Block;
};

// The cell of a row, from 0 on both pages together.
Cell CellOf(const RowLayout& layout, int row);

// A control of an array, from 0. The array may be filled anew between two looks, but not grow shorter than i.
ControlRef At(std::vector<Control>& controls, std::size_t i);

// Rows that a window opens with; a few more than there are look better than a strip.
int ShownRows(std::size_t rows);

// What does not fit the screen scrolls; a field that gets the focus comes into sight with as much of the
// label before it as there is room for. With the window named whose layout it was, the order of its fields
// for Tab stays.
QScrollArea* Scrolled(QLayout* layout, QWidget* window = nullptr);

// Labels of a table's cells: numbers stand to the right, marks in the middle.
QLabel* RightLabel(Binder& bind, ControlRef control);
QLabel* CenteredLabel(Binder& bind, ControlRef control);

} // namespace Quillon
