// The table of data sets.
#include "scandata/forms/FileForm.h"
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

// A boxed entry that is clicked: a flat button that looks like a field.
QPushButton* Boxed(Binder& bind, Column column, int line, void (*clicked)(int)) {
    auto* box = new QPushButton;
    box->setAutoDefault(false);
    box->setFocusPolicy(Qt::NoFocus);
    box->setStyleSheet("QPushButton { text-align: left; padding: 2px 6px; border: 1px solid palette(mid); "
                       "background: palette(base); color: palette(text); min-height: 1.3em; } "
                       "QPushButton:hover { border-color: palette(highlight); }");
    bind.Visible(box, At(column, line));
    QObject::connect(box, &QPushButton::clicked, box,
                     [clicked, line] { RunHandler([clicked, line] { clicked(line); }); });
    bind.Also([box, ref = At(column, line)] { // over the caption, which may be empty or hold a "&"
        const QString text = FileText(ref().Text).replace('&', "&&");
        if (box->text() != text) box->setText(text);
    });
    return box;
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
        const int room = screen()->availableGeometry().width() - 60;
        const int bar = sheet.width() > room ? horizontalScrollBar()->sizeHint().height() : 0;
        return {std::min(sheet.width(), room), sheet.height() + bar};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

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
        all->addWidget(new SheetView(Sheet));
        FillSheet();
        all->addWidget(MakeLabel(
            Bind, []() -> Control& { return FileForm.Hint; }, true));
        all->addLayout(Buttons());
        Sheet->MenuOf = [this](int line, QPoint at) { ShowLineMenu(line, at); };
        auto* undo = new QShortcut(QKeySequence::Undo, this);
        connect(undo, &QShortcut::activated, this, [] { RunHandler(FileFormUndo); });
        QTimer::singleShot(100, this, [this] { RunSoon(this, FileFormTimer1); });
        Bind.Also([this] { Sheet->FollowCurrentLine(); });
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

    void FillSheet() {
        QGridLayout* grid = Sheet->Grid;
        for (std::size_t i = 0; i < FileForm.Heads.size(); ++i) {
            const ControlRef head = [i]() -> Control& { return FileForm.Heads[i]; };
            const int column = static_cast<int>(i < PointsColumn ? i : i + 1);
            grid->addWidget(MakeHead(Bind, head, i == 2 ? 24 : 4), 0, column);
        }
        grid->addWidget(MakeHead(
                            Bind, []() -> Control& { return FileForm.PointsHead; }, 8),
                        0, PointsColumn);
        for (int line = 0; line < FileForm.Lines; ++line)
            AddLine(grid, line);
        for (const int column : {2, 7}) // names of files
            grid->setColumnMinimumWidth(column, fontMetrics().horizontalAdvance("00000000.RA1") * 5 / 4 + 16);
        for (const int column : {4, 5})
            grid->setColumnMinimumWidth(column, fontMetrics().horizontalAdvance("0.0000") + 20);
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
                            Boxed(Bind, &R::NameBox, line, FileFormNameClick),
                            MakeLabel(Bind, At(&R::RPMBox, line)),
                            Boxed(Bind, &R::MinRBox, line, FileFormRangeClick),
                            Boxed(Bind, &R::MaxRBox, line, FileFormRangeClick),
                            MakeLabel(Bind, At(&R::PointsBox, line)),
                            Boxed(Bind, &R::BlankFile, line, FileFormBlankClick),
                            shift,
                            MakeLabel(Bind, At(&R::CellBox, line)),
                            Boxed(Bind, &R::ChannelBox, line, FileFormChannelClick),
                            Boxed(Bind, &R::CellPath, line, FileFormPathClick),
                            Small(&R::ExtinctionButton, line, FileFormExtinctionButton),
                            Small(&R::SaveButton, line, FileFormSaveButton),
                            Small(&R::HelpButton, line, FileFormHelpButton)};
        int column = 0;
        for (QWidget* cell : cells) { // boxes and buttons fill their column, the rest stands below its head
            const bool fills = qobject_cast<QPushButton*>(cell) != nullptr;
            cell->setContextMenuPolicy(Qt::NoContextMenu); // the line has one
            grid->addWidget(KeepPlace(cell), row, column++, fills ? Qt::Alignment() : Qt::AlignCenter);
        }
    }

    QPushButton* Small(Column column, int line, void (*clicked)(int)) {
        return MakeButton(Bind, At(column, line), [clicked, line] { clicked(line); });
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
};

QWidget* MakeFileForm(QWidget* parent) {
    return new TableDialog(parent);
}

const FormWindow Registered(FileFormName, MakeFileForm);

} // namespace

} // namespace Quillon
