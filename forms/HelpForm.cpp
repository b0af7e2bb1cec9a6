// The window of the manual.
#include "forms/HelpForm.h"

#include "commands/Analmenu.h"
#include "commands/Commands.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"
#include "help/HelpForm.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QImage>
#include <QListWidget>
#include <QScrollBar>
#include <QSplitter>
#include <QTabWidget>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextTable>

namespace Quillon {

namespace {

constexpr int PageWidth = 640; // pixels of the widest picture

QString FromUtf8(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// A page of the manual. Its pictures are built into the program; links go to the form.
class PageView : public QTextBrowser {
public:
    PageView() {
        setOpenLinks(false);
        document()->setDocumentMargin(16);
        connect(this, &QTextBrowser::anchorClicked, this,
                [](const QUrl& link) { RunHandler([&] { HelpFollowLink(link.toString().toStdString()); }); });
    }

    // Shows the place of the form when it is to be shown anew.
    void Follow() {
        if (Shown == HelpForm.Shown) return;
        Shown = HelpForm.Shown;
        setMarkdown(FromUtf8(HelpPageText()));
        FrameTables();
        SpaceBlocks();
        ScrollTo(HelpForm.Place.Anchor);
    }

    QVariant loadResource(int type, const QUrl& name) override {
        if (type != QTextDocument::ImageResource) return {};
        const std::string path = FollowManualLink(HelpForm.Place.Path, name.toString().toStdString()).Path;
        const QImage picture(":/docs/" + QString::fromStdString(path));
        return picture.width() > PageWidth ? picture.scaledToWidth(PageWidth, Qt::SmoothTransformation)
                                           : picture;
    }

private:
    // True for the head of a table that was written without one.
    static bool HeadIsEmpty(const QTextTable& table) {
        for (int column = 0; column < table.columns(); ++column)
            if (!table.cellAt(0, column).firstCursorPosition().block().text().isEmpty()) return false;
        return table.rows() > 1;
    }

    // Tables as a reader expects them: thin lines, room about the text.
    void FrameTables() {
        for (QTextFrame* frame : document()->rootFrame()->childFrames())
            if (auto* table = qobject_cast<QTextTable*>(frame)) {
                QTextTableFormat format = table->format();
                format.setBorder(1); // less is not drawn
                format.setBorderCollapse(true);
                format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
                format.setBorderBrush(palette().mid());
                format.setCellPadding(4);
                table->setFormat(format);
                if (HeadIsEmpty(*table)) table->removeRows(0, 1);
            }
    }

    // Formulas and lines to type stand apart from the text around them, and headings from what ends above.
    void SpaceBlocks() {
        const auto isCode = [](const QTextBlock& block) {
            return block.isValid() && block.blockFormat().hasProperty(QTextFormat::BlockCodeLanguage);
        };
        for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
            QTextBlockFormat format = block.blockFormat();
            if (isCode(block)) {
                format.setLeftMargin(24);
                format.setTopMargin(isCode(block.previous()) ? 0 : 6);
                format.setBottomMargin(isCode(block.next()) ? 0 : 8);
            } else if (format.headingLevel() > 1) {
                format.setTopMargin(16);
            } else {
                continue;
            }
            QTextCursor(block).setBlockFormat(format);
        }
    }

    void ScrollTo(const std::string& anchor) {
        verticalScrollBar()->setValue(0);
        if (anchor.empty()) return;
        for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
            if (block.blockFormat().headingLevel() == 0) continue;
            if (AnchorOfHeading(block.text().toStdString()) != anchor) continue;
            const QRectF place = document()->documentLayout()->blockBoundingRect(block);
            verticalScrollBar()->setValue(static_cast<int>(place.top()));
            return;
        }
    }

    long Shown = 0;
};

// A heading of the list leads nowhere: keys pass over it, as they would not over a row that cannot be left.
// The pages below it stand further in, with all their lines: nothing is drawn in the place of their pictures.
void MarkHeadings(QListWidget& list, HelpPane pane) {
    QPixmap nothing(list.iconSize());
    nothing.fill(Qt::transparent);
    const QIcon margin(nothing);
    const std::vector<ManualEntry>& entries = HelpForm.Lists[static_cast<std::size_t>(pane)];
    for (int row = 0; row < list.count(); ++row) {
        QListWidgetItem* item = list.item(row);
        if (!entries[static_cast<std::size_t>(row)].Place.Path.empty()) {
            if (pane == HelpPane::Contents) item->setIcon(margin);
            continue;
        }
        item->setFlags(Qt::NoItemFlags);
        item->setForeground(list.palette().brush(QPalette::Active, QPalette::Text));
        QFont font = item->font();
        font.setBold(true);
        item->setFont(font);
    }
}

// A list of places. Its rows are UTF-8, as the pages are.
QListWidget* MakeList(Binder& bind, HelpPane pane) {
    auto* list = new QListWidget;
    list->setWordWrap(true); // a long title goes on in a second line
    list->setIconSize({list->fontMetrics().averageCharWidth(), 1});
    list->setResizeMode(QListView::Adjust);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    bind.Also([list, pane] {
        const Control& rows = HelpList(pane);
        const QSignalBlocker quiet(list);
        if (list->count() != static_cast<int>(rows.Items.size()) || pane == HelpPane::Search) {
            list->clear();
            for (const std::string& row : rows.Items)
                list->addItem(FromUtf8(row));
            MarkHeadings(*list, pane);
        }
        list->setCurrentRow(rows.Value);
    });
    const auto go = [pane](int row) {
        if (row >= 0) RunHandler([&] { HelpRowClick(pane, row); });
    };
    QObject::connect(list, &QListWidget::currentRowChanged, list, go);
    QObject::connect(list, &QListWidget::itemActivated, list,
                     [list, go](QListWidgetItem* item) { go(list->row(item)); });
    return list;
}

QWidget* MakeSearch(Binder& bind) {
    auto* field = MakeField(
        bind, []() -> Control& { return HelpForm.SearchInput; },
        {HelpSearchGotFocus, HelpSearchKeyPress, [] {}, HelpSearchChanged}, 20);
    auto* pane = new QWidget;
    auto* column = new QVBoxLayout(pane);
    column->addWidget(field);
    column->addWidget(MakeLabel(
        bind, []() -> Control& { return HelpForm.SearchNote; }, true));
    column->addWidget(MakeList(bind, HelpPane::Search), 1);
    return pane;
}

QTabWidget* MakeTabs(Binder& bind) {
    auto* tabs = new QTabWidget;
    tabs->addTab(MakeList(bind, HelpPane::Contents), ShownText(HelpForm.ContentsTab.Text));
    tabs->addTab(MakeList(bind, HelpPane::Index), ShownText(HelpForm.IndexTab.Text));
    tabs->addTab(MakeSearch(bind), ShownText(HelpForm.SearchTab.Text));
    QObject::connect(tabs, &QTabWidget::currentChanged, tabs,
                     [](int tab) { RunHandler([&] { HelpPaneClick(static_cast<HelpPane>(tab)); }); });
    bind.Also([tabs] {
        const QSignalBlocker quiet(tabs);
        tabs->setCurrentIndex(static_cast<int>(HelpForm.Pane));
    });
    return tabs;
}

QWidget* MakeHelpForm(QWidget* parent) {
    auto* form = new FormDialog(HelpForm.State, HelpCloseButton, parent);
    form->setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                         Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint);
    form->setModal(false);
    Binder& bind = form->Bind;
    auto* page = new PageView;
    bind.Also([page] { page->Follow(); });
    auto* split = new QSplitter;
    split->addWidget(MakeTabs(bind));
    split->addWidget(page);
    split->setStretchFactor(1, 1);
    split->setSizes({ForFont(270, 0).width(), ForFont(730, 0).width()});
    const auto button = [&](Control HelpFormRecord::*control, void (*clicked)()) {
        return MakeButton(
            bind, [control]() -> Control& { return HelpForm.*control; }, clicked);
    };
    auto* all = new QVBoxLayout(form);
    all->addWidget(split, 1);
    all->addLayout(ButtonRow({button(&HelpFormRecord::BackButton, HelpBackButton),
                              button(&HelpFormRecord::ForwardButton, HelpForwardButton),
                              button(&HelpFormRecord::StartButton, HelpStartButton)},
                             {button(&HelpFormRecord::CloseButton, HelpCloseButton)}));
    form->resize(ForFont(1000, 640));
    return form;
}

const FormWindow Registered(HelpFormName, MakeHelpForm);

// The form that a key is meant for: boxes and lists that open above a form belong to it.
std::string FormOf(const QWidget* window) {
    for (; window; window = window->parentWidget()) {
        const QVariant page = window->property(PageProperty);
        if (page.isValid()) return page.toString().toStdString();
        if (window->isWindow() && !window->objectName().isEmpty()) return window->objectName().toStdString();
    }
    return AnalmenuName;
}

class HelpKey : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier) return false;
        const std::string form = FormOf(QApplication::activeWindow());
        if (form != HelpFormName) RunGuarded([&] { HelpOn(form); });
        RefreshForms();
        return true;
    }
};

} // namespace

void ListenForHelp() {
    qApp->installEventFilter(new HelpKey(qApp));
}

} // namespace Quillon
