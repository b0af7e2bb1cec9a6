// The table of data sets.
#include "scandata/forms/FileForm.h"
#include "forms/CutButton.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/MenuKeys.h"
#include "scandata/forms/FileFormChannels.h"
#include "scandata/forms/FileFormEvents.h"
#include "scandata/forms/FileFormMenu.h"
#include "scandata/forms/FileFormScans.h"
#include "scandata/forms/TableUndo.h"
#include "workspace/records/Workspace.h"

#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QFile>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <map>

namespace Quillon {

namespace {

using Column = FileFormRecord::PerLine<Control> FileFormRecord::*;

ControlRef At(Column column, int line) {
    return [column, i = static_cast<std::size_t>(line)]() -> Control& { return (FileForm.*column)[i]; };
}

// The check box of a line: with the focus the line is the current one, and its keys are commands.
class LineCheck : public QCheckBox {
public:
    explicit LineCheck(int line) : Line(line) {}

protected:
    void focusInEvent(QFocusEvent* event) override {
        QCheckBox::focusInEvent(event);
        // A window that comes back gives the focus back, too: the line that a click has chosen meanwhile
        // stays.
        const bool back = event->reason() == Qt::ActiveWindowFocusReason;
        if (back && Work.CurrentRow != Line) return;
        for (QWidget* w = parentWidget(); w; w = w->parentWidget())
            if (auto* view = qobject_cast<QScrollArea*>(w)) view->ensureWidgetVisible(this, 0, 10);
        RunHandler([this] { FileFormCheckFocus(Line); });
    }
    void focusOutEvent(QFocusEvent* event) override {
        QCheckBox::focusOutEvent(event);
        FileFormCheckLostFocus(Line);
    }
    void keyPressEvent(QKeyEvent* event) override {
        switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Up:
            return RunHandler([this] { FileFormArrowKey(Line, FileFormArrow::Previous); });
        case Qt::Key_Right:
        case Qt::Key_Down:
            return RunHandler([this] { FileFormArrowKey(Line, FileFormArrow::Next); });
        default:
            break;
        }
        const QString text = event->text();
        if (text.size() == 1 && text[0] > ' ' && text[0].unicode() < 128 &&
            event->modifiers() != Qt::AltModifier)
            return RunHandler([this, key = text[0].unicode()] { FileFormKey(Line, key); });
        QCheckBox::keyPressEvent(event);
    }

private:
    int Line;
};

// A file's name is bytes of the file system, mostly UTF-8.
QString FileText(const std::string& name) {
    const QString text = QString::fromStdString(name);
    return text.contains(QChar::ReplacementCharacter) ? ShownText(name) : text;
}

// Shows and hides a button with its record, over the caption, which may be empty or hold a "&".
template <class Button>
Button* OfLine(Binder& bind, Button* button, Column column, int line, void (*clicked)(int)) {
    bind.Visible(button, At(column, line));
    QObject::connect(button, &QPushButton::clicked, button,
                     [clicked, line] { RunHandler([clicked, line] { clicked(line); }); });
    bind.Also([button, ref = At(column, line)] { button->TakeText(FileText(ref().Text)); });
    return button;
}

BoxedEntry* Boxed(Binder& bind, Column column, int line, void (*clicked)(int), int letters = 1) {
    return OfLine(bind, new BoxedEntry(letters), column, line, clicked);
}

// The name of a file, as wide as most are; the least is that of a numbered scan, "00001.RA1".
BoxedEntry* BoxedName(Binder& bind, Column column, int line, void (*clicked)(int), int least) {
    constexpr int usual = 15; // letters
    return OfLine(bind, new BoxedEntry(usual, least), column, line, clicked);
}

// The lines of the table. The current one stands in a frame of its own.
class TableSheet : public QWidget {
public:
    TableSheet() : Grid(new QGridLayout(this)) {
        Grid->setContentsMargins(6, 0, 6, 4);
        Grid->setVerticalSpacing(5);
        Grid->setHorizontalSpacing(5);
    }
    void FollowCurrentLine() {
        if (Marked != Work.CurrentRow) update();
    }
    QGridLayout* Grid;
    std::function<void(int line, QPoint at)> MenuOf; // the menu of a line, at a place of the screen

protected:
    void contextMenuEvent(QContextMenuEvent* event) override {
        const bool byKey = event->reason() == QContextMenuEvent::Keyboard; // the line with the focus
        for (int line = 0; line < FileForm.Lines; ++line)
            if (byKey ? line == Work.CurrentRow : LineRect(line).contains(event->pos())) {
                const QPoint at = byKey ? mapToGlobal(LineRect(line).center()) : event->globalPos();
                return MenuOf(line, at);
            }
    }
    void paintEvent(QPaintEvent*) override {
        Marked = Work.CurrentRow;
        // While the ratios of a set are asked for, the current row counts over both pages.
        const QRect line =
            LineRect(Marked < FileForm.Lines ? Marked : Marked - FileFormLines * Work.CurrentPage);
        if (line.isEmpty()) return;
        QPainter painter(this);
        QColor mark = palette().color(QPalette::Highlight);
        painter.setPen(QPen(mark, 1.5));
        mark.setAlpha(40);
        painter.setBrush(mark);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.drawRoundedRect(line, 4, 4);
    }

private:
    QRect LineRect(int line) const {
        if (line < 0 || line >= FileForm.Lines) return {}; // on the page that does not show
        QRect all;
        for (int column = 0; column < Grid->columnCount(); ++column)
            all |= Grid->cellRect(line + 1, column);
        return all.adjusted(-5, -2, 5, 1);
    }
    int Marked = -1; // the line that is painted as the current one
};

// Shows the whole sheet, or as much of it as the screen is wide: the buttons below it stay in reach.
class SheetView : public QScrollArea {
public:
    explicit SheetView(QWidget* sheet) {
        setWidget(sheet);
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
    }
    QSize sizeHint() const override {
        const QSize sheet = widget()->sizeHint();
        const int room = Room();
        const int bar = sheet.width() > room ? horizontalScrollBar()->sizeHint().height() : 0;
        return {std::min(sheet.width(), room), sheet.height() + bar};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }
    // How wide the sheet may be: the screen without what the window has on both sides of it.
    int Room() const { return screen()->availableGeometry().width() - 40; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::LayoutRequest) updateGeometry(); // the window grows with the sheet
        return QScrollArea::eventFilter(watched, event);
    }
};

class TableDialog : public FormDialog {
public:
    explicit TableDialog(QWidget* parent) : FormDialog(FileForm.State, FileFormCloseBox, parent) {
        setAcceptDrops(true);
        if (HasRoomForAllLines()) ShowAllLines();
        auto* all = new QVBoxLayout(this);
        View = new SheetView(Sheet);
        all->addWidget(View);
        FillSheet();
        all->addWidget(MakeLabel(
            Bind, []() -> Control& { return FileForm.Hint; }, true));
        all->addLayout(Buttons());
        Sheet->MenuOf = [this](int line, QPoint at) { ShowLineMenu(line, at); };
        auto* undo = new QShortcut(QKeySequence::Undo, this);
        connect(undo, &QShortcut::activated, this, [] { RunHandler(FileFormUndo); });
        QTimer::singleShot(100, this, [this] { RunSoon(this, FileFormTimer1); });
        Bind.Also([this] { Sheet->FollowCurrentLine(); });
        Bind.Also([this] { FitScreen(); });
    }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override {
        if (event->mimeData()->hasUrls()) event->acceptProposedAction();
    }
    void dropEvent(QDropEvent* event) override {
        std::vector<std::string> paths;
        for (const QUrl& url : event->mimeData()->urls())
            if (url.isLocalFile()) paths.push_back(QFile::encodeName(url.toLocalFile()).toStdString());
        RunHandler([&] { FileFormReadFiles(paths); });
    }
    // Esc closes the table only where nothing would be lost.
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape) return RunHandler(FileFormEscape);
        FormDialog::keyPressEvent(event);
    }

private:
    // A line is about as high as two lines of text and a half; head, hint, messages and buttons take as much
    // as fifteen.
    bool HasRoomForAllLines() const {
        const int text = fontMetrics().lineSpacing();
        constexpr int leastScreen =
            960; // pixels: below it the pages leave room for the windows above the table
        const int room = screen()->availableGeometry().height();
        return room >= leastScreen && room >= AllFileFormLines * 5 * text / 2 + 15 * text;
    }

    // The files are chosen before the main window; the table comes back behind the last. Its modal showing
    // goes on meanwhile, which hide() would end.
    void WriteDataBehindTheTable() {
        QWidget::setVisible(false);
        FileFormWriteData();
        QWidget::setVisible(true);
    }

    // Names are cut to what the screen has room for. Where that is not enough, buttons of lines are short and
    // stand closer, then heads have three lines and smaller letters, then the lines have smaller letters,
    // too.
    void FitScreen() {
        if (!IsTooWide()) return;
        for (LineButton* button : LineButtons)
            button->BeShort();
        Sheet->Grid->setHorizontalSpacing(3);
        if (IsTooWide()) HeadLines = 3;
        constexpr double leastHead = 0.75, leastLine = 0.8; // of the letters of the window
        for (; HeadSize > leastHead && IsTooWide(); HeadSize *= 0.95)
            for (const Head& head : Heads)
                ShowHead(head);
        for (; LineSize > leastLine && IsTooWide(); LineSize *= 0.97)
            TakeLineFont(Letters(LineSize));
    }
    void TakeLineFont(const QFont& letters) {
        Sheet->setFont(letters);
        for (QWidget* cell : Cells) // what has a style of its own does not take it from the sheet
            cell->setFont(letters);
    }
    // The lines that are empty do not tell the sheet of their sizes.
    bool IsTooWide() const {
        if (Sheet->Grid->minimumSize().width() <= View->Room()) return false;
        Sheet->Grid->invalidate();
        return Sheet->Grid->minimumSize().width() > View->Room();
    }
    QFont Letters(double size) const {
        QFont letters = font();
        letters.setPointSizeF(letters.pointSizeF() * size);
        return letters;
    }

    struct Head {
        QLabel* Label;
        ControlRef Record;
        int Letters; // of a line; a longer text is broken
    };
    void ShowHead(const Head& head) const {
        QFont letters = Letters(HeadSize);
        letters.setBold(true);
        head.Label->setFont(letters);
        head.Label->setText(
            InLines(WithoutAccessKey(head.Record().Text).simplified(), head.Letters, HeadLines));
    }
    void AddHead(const ControlRef& record, int letters, int column) {
        auto* label = new QLabel;
        label->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
        Bind.Visible(label, record);
        Heads.push_back({label, record, letters});
        ShowHead(Heads.back());
        Sheet->Grid->addWidget(label, 0, column);
    }

    void FillSheet() {
        QGridLayout* grid = Sheet->Grid;
        for (std::size_t i = 0; i < FileForm.Heads.size(); ++i) {
            const ControlRef head = [i]() -> Control& { return FileForm.Heads[i]; };
            const int column = static_cast<int>(i < PointsColumn ? i : i + 1);
            AddHead(head, i == 2 ? 24 : 4, column);
        }
        AddHead([]() -> Control& { return FileForm.PointsHead; }, 8, PointsColumn);
        for (int line = 0; line < FileForm.Lines; ++line)
            AddLine(grid, line);
    }

    void AddLine(QGridLayout* grid, int line) {
        using R = FileFormRecord;
        const int row = line + 1;
        auto* check = new LineCheck(line);
        Checks.push_back(check);
        Bind.Check(check, At(&R::Check1, line), [line] { FileFormCheckClick(line); });
        auto* shift = new QCheckBox;
        Bind.Check(shift, At(&R::ShiftBase, line), [line] { FileFormShiftClick(line); });
        QWidget* cells[] = {MakeLabel(Bind, At(&R::SetBox, line)),
                            check,
                            BoxedName(Bind, &R::NameBox, line, FileFormNameClick, 9),
                            MakeLabel(Bind, At(&R::RPMBox, line)),
                            Boxed(Bind, &R::MinRBox, line, FileFormRangeClick, 6),
                            Boxed(Bind, &R::MaxRBox, line, FileFormRangeClick, 6),
                            MakeLabel(Bind, At(&R::PointsBox, line)),
                            BoxedName(Bind, &R::BlankFile, line, FileFormBlankClick, 7),
                            shift,
                            MakeLabel(Bind, At(&R::CellBox, line)),
                            Boxed(Bind, &R::ChannelBox, line, FileFormChannelClick),
                            Boxed(Bind, &R::CellPath, line, FileFormPathClick),
                            Small(u"\u03B5", &R::ExtinctionButton, line, FileFormExtinctionButton),
                            Small(u"\u2193", &R::SaveButton, line, FileFormSaveButton),
                            Small(u"?", &R::HelpButton, line, FileFormHelpButton)};
        int column = 0;
        for (QWidget* cell : cells) { // boxes and buttons fill their column, the rest stands below its head
            const bool fills = qobject_cast<QPushButton*>(cell) != nullptr;
            cell->setContextMenuPolicy(Qt::NoContextMenu); // the line has one
            Cells.push_back(cell);
            grid->addWidget(KeepPlace(cell), row, column++, fills ? Qt::Alignment() : Qt::AlignCenter);
        }
    }

    QPushButton* Small(const char16_t* sign, Column column, int line, void (*clicked)(int)) {
        auto* button = OfLine(Bind, new LineButton(QString::fromUtf16(sign)), column, line, clicked);
        LineButtons.push_back(button);
        return button;
    }

    QLayout* Buttons() {
        using Member = Control FileFormRecord::*;
        const auto button = [this](Member m, std::function<void()> clicked) {
            return MakeButton(
                Bind, [m]() -> Control& { return FileForm.*m; }, std::move(clicked));
        };
        auto* log = new QCheckBox;
        Bind.Check(
            log, []() -> Control& { return FileForm.LogPlot; }, FileFormLogPlot);
        using R = FileFormRecord;
        auto* rows = new QVBoxLayout;
        auto* changed = MakeLabel(Bind, []() -> Control& { return FileForm.Changed; });
        changed->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        auto* lastChange = new QHBoxLayout;
        lastChange->addWidget(button(&R::UndoButton, FileFormUndo));
        lastChange->addWidget(changed, 1);
        rows->addLayout(lastChange);
        rows->addLayout(ButtonRow({button(&R::NewFileButton, FileFormNewFileButton),
                                   button(&R::SubtractBlankButton, FileFormSubtractBlankButton),
                                   button(&R::RangeButton, FileFormRangeButton), log},
                                  {button(&R::Page2, FileFormPage2)}));
        rows->addLayout(ButtonRow(
            {button(&R::CopyFile, FileFormCopyFile), button(&R::ClearFiles, FileFormClearFiles),
             button(&R::WriteData, [this] { WriteDataBehindTheTable(); })},
            {button(&R::OkButton, FileFormOkButton), button(&R::CancelButton, FileFormCancelButton)}));
        return rows;
    }

    // The menu is made for the line as it is now; its commands run when it is gone.
    void ShowLineMenu(int line, QPoint at) {
        const std::vector<LineMenuItem> items = FileFormLineMenu(line);
        if (items.empty()) return;
        Checks[static_cast<std::size_t>(line)]->setFocus();
        auto* menu = new QMenu(this);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        std::map<std::string, QMenu*> submenus;
        for (const LineMenuItem& item : items) {
            if (item.NewGroup) menu->addSeparator();
            QMenu*& place = submenus[item.Submenu];
            if (!place) place = item.Submenu.empty() ? menu : menu->addMenu(ShownText(item.Submenu));
            AddCommand(place, item);
        }
        for (const auto& [caption, place] : submenus)
            KeepAccessKeysApart(place);
        menu->popup(at);
    }

    void AddCommand(QMenu* menu, const LineMenuItem& item) {
        QAction* action = menu->addAction(ShownText(item.Item.Text));
        action->setCheckable(!item.Submenu.empty());
        action->setChecked(item.Item.Checked);
        action->setEnabled(item.Item.Enabled);
        connect(action, &QAction::triggered, this, [command = item.Command] { RunHandler(command); });
    }

    static constexpr int PointsColumn = 6; // behind the radii
    std::vector<LineCheck*> Checks;
    TableSheet* Sheet = new TableSheet;
    SheetView* View = nullptr;
    std::vector<Head> Heads;
    int HeadLines = 2;
    double HeadSize = 1.0, LineSize = 1.0; // of letters, against those of the window
    std::vector<QWidget*> Cells;
    std::vector<LineButton*> LineButtons;
};

QWidget* MakeFileForm(QWidget* parent) {
    return new TableDialog(parent);
}

const FormWindow Registered(FileFormName, MakeFileForm);

} // namespace

} // namespace Quillon
