#include "forms/shell/WindowSizes.h"

#include "forms/Pieces.h"
#include "forms/shell/ReaderNames.h"
#include "forms/shell/WindowPlaces.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QLabel>
#include <QScreen>

#include <algorithm>
#include <iterator>
#include <vector>

namespace Quillon {

namespace {

constexpr QSize FrameRoom(16, 40);     // of a window's frame and title
constexpr double UsualLineHeight = 17; // pixels, of the font that sizes were chosen with

double FormScale = 1.0;

// As it was before any scaling.
const QFont& DesktopFont() {
    static const QFont font = QApplication::font();
    return font;
}

QFont Scaled(QFont font) {
    if (font.pointSizeF() > 0.0)
        font.setPointSizeF(font.pointSizeF() * FormScale);
    else
        font.setPixelSize(static_cast<int>(font.pixelSize() * FormScale));
    return font;
}

QSize RoomFor(const QWidget& window) {
    return window.screen()->availableSize() - FrameRoom;
}

bool Fits(QSize size, QSize room) {
    return size.width() <= room.width() && size.height() <= room.height();
}

// What a window of a width needs: lines that wrap are higher than its least size tells.
QSize LeastSize(const QWidget& window, int width) {
    const QLayout* layout = window.layout();
    if (!layout) return window.minimumSize();
    const QSize least = layout->totalMinimumSize();
    if (!layout->hasHeightForWidth()) return least;
    return least.expandedTo({0, layout->totalMinimumHeightForWidth(std::max(width, least.width()))});
}

// The row of buttons at the foot of a window, which may be the last of several; null where the last row is
// none.
QHBoxLayout* FootOf(QLayout& rows) {
    for (int i = rows.count() - 1; i >= 0; --i)
        if (QLayout* row = rows.itemAt(i)->layout())
            return qobject_cast<QVBoxLayout*>(row) ? FootOf(*row) : qobject_cast<QHBoxLayout*>(row);
    return nullptr;
}

// What stands in a row from a place on, moved to the end of another.
void MoveFrom(QHBoxLayout& row, int place, QHBoxLayout& to) {
    while (row.count() > place) {
        QWidget* button = row.itemAt(place)->widget();
        delete row.takeAt(place);
        if (button) to.addWidget(button);
    }
}

// The ways out of a row of buttons: what stands behind its stretch, in a row of its own.
QHBoxLayout* WaysOut(QHBoxLayout& foot) {
    int stretch = foot.count() - 1;
    while (stretch >= 0 && !foot.itemAt(stretch)->spacerItem())
        --stretch;
    auto* ways = new QHBoxLayout;
    ways->addStretch(1);
    MoveFrom(foot, stretch + 1, *ways);
    return ways;
}

// How many of the buttons of a row have room beside each other; at least one.
int PlacesWithin(const QHBoxLayout& row, int width) {
    int places = 0, taken = -row.spacing();
    for (; places < row.count(); ++places) {
        const QWidget* button = row.itemAt(places)->widget();
        if (!button || button->isHidden()) continue;
        taken += button->minimumSizeHint().width() + row.spacing();
        if (taken > width && places > 0) break;
    }
    return places;
}

// A foot that is too wide becomes several rows, the ways out in the last of them.
void BreakFoot(QHBoxLayout& foot, int width) {
    auto* column = qobject_cast<QVBoxLayout*>(foot.parent());
    if (!column || foot.minimumSize().width() <= width) return;
    int line = column->indexOf(&foot);
    column->insertLayout(++line, WaysOut(foot));
    for (QHBoxLayout* row = &foot; row->minimumSize().width() > width;) {
        auto* next = new QHBoxLayout;
        const int places = PlacesWithin(*row, width);
        MoveFrom(*row, places, *next);
        row->addStretch(1);
        next->addStretch(1);
        column->insertLayout(line++, next);
        if (next->count() < 2 || places == 0) return; // a button alone is as wide as it is
        row = next;
    }
}

// The long texts of a window that stand in one line, the widest first.
std::vector<QLabel*> LongTexts(const QWidget& window) {
    constexpr int longText = 30; // letters; the names of parameters are shorter
    std::vector<QLabel*> found;
    for (QLabel* label : window.findChildren<QLabel*>())
        if (!label->wordWrap() && label->text().size() > longText && !label->text().contains('\n'))
            found.push_back(label);
    const auto wider = [](const QLabel* a, const QLabel* b) {
        return a->sizeHint().width() > b->sizeHint().width();
    };
    std::stable_sort(found.begin(), found.end(), wider);
    return found;
}

// The text goes on in a second line. Its least size tells so: layouts that lie in others do not ask how high
// a text becomes.
void WrapOnce(QLabel& label) {
    constexpr int step = 8; // pixels
    const int whole = label.sizeHint().width();
    label.setWordWrap(true);
    const int high = 2 * label.heightForWidth(2 * whole);
    int width = whole / 2;
    while (width < whole && label.heightForWidth(width) > high)
        width += step;
    label.setMinimumSize(width, high);
}

int LeastWidth(QWidget& window) {
    for (QLayout* layout : window.findChildren<QLayout*>())
        layout->invalidate(); // what lies in others, or in frames, keeps its former size otherwise
    window.layout()->activate();
    return window.layout()->totalMinimumSize().width();
}

// A window that is wider than the screen by its texts alone: the buttons at the foot go on in a second row,
// and as many of its long texts as are in the way in a second line.
void MakeNarrower(QDialog& window, int width) {
    const QMargins margins = window.layout()->contentsMargins();
    if (QHBoxLayout* foot = FootOf(*window.layout()))
        BreakFoot(*foot, width - margins.left() - margins.right());
    for (QLabel* label : LongTexts(window)) {
        if (LeastWidth(window) <= width) return;
        WrapOnce(*label);
    }
    LeastWidth(window);
}

// The row that stays in sight: the whole foot where it is not too wide, otherwise its ways out.
QLayout* TakeFoot(QLayout& rows, int width) {
    QHBoxLayout* foot = FootOf(rows);
    if (!foot) return nullptr;
    if (foot->minimumSize().width() > width) return WaysOut(*foot);
    qobject_cast<QLayout*>(foot->parent())->removeItem(foot);
    foot->setParent(nullptr);
    return foot;
}

// Everything scrolls but the way out.
void Scroll(QDialog& window, int width) {
    QLayout* rows = window.layout();
    QWidget* const first = window.focusWidget(); // what gets another parent loses the focus
    const QMargins margins = rows->contentsMargins();
    rows->setSizeConstraint(QLayout::SetDefaultConstraint);
    QLayout* foot = TakeFoot(*rows, width - margins.left() - margins.right());
    QScrollArea* area = Scrolled(rows, &window);
    area->setFocusPolicy(Qt::NoFocus); // it follows the control that has the focus
    auto* whole = new QVBoxLayout(&window);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(area, 1);
    if (foot) {
        foot->setContentsMargins(margins);
        whole->addLayout(foot);
    }
    window.setMinimumSize(0, 0);
    if (first) first->setFocus();
}

// The toolkit's own dialogs see to their size themselves.
bool IsOfTheToolkit(const QDialog& window) {
    constexpr const char* kinds[] = {"QMessageBox", "QFileDialog", "QInputDialog", "QAbstractPrintDialog",
                                     "QPageSetupDialog"};
    return std::any_of(std::begin(kinds), std::end(kinds),
                       [&](const char* kind) { return window.inherits(kind); });
}

class ScreenKeeper : public QObject {
public:
    bool eventFilter(QObject* object, QEvent* event) override {
        const bool shows = event->type() == QEvent::Show, hides = event->type() == QEvent::Hide;
        if ((!shows && !hides) || event->spontaneous()) return false;
        auto* window = qobject_cast<QDialog*>(object);
        if (!window || !window->isWindow() || IsOfTheToolkit(*window)) return false;
        if (hides)
            NotePlace(*window);
        else
            Keep(*window);
        return false;
    }

private:
    static void Keep(QDialog& window) {
        const QSize room = RoomFor(window);
        QSize needed = LeastSize(window, std::min(window.width(), room.width()));
        if (window.layout() && needed.width() > room.width()) {
            MakeNarrower(window, room.width());
            needed = LeastSize(window, room.width());
        }
        if (window.layout() && !Fits(needed, room)) Scroll(window, room.width());
        window.resize(window.size().expandedTo({0, needed.height()}).boundedTo(room));
        window.setAttribute(Qt::WA_KeyboardFocusChange); // the focus is seen before the first Tab
        NameForReaders(window);
        PlaceWindow(window);
    }
};

} // namespace

void ScaleForms(int percent) {
    const QFont& desktop = DesktopFont(); // the first time it is the font that is being replaced
    FormScale = percent / 100.0;
    QApplication::setFont(Scaled(desktop));
}

QFont FixedPitchFont() {
    return Scaled(QFontDatabase::systemFont(QFontDatabase::FixedFont));
}

QSize ForFont(int width, int height) {
    const double desktop = QFontMetrics(DesktopFont()).lineSpacing() / UsualLineHeight;
    return QSize(width, height) * (FormScale * std::max(1.0, desktop));
}

void KeepWindowsOnScreen() {
    static ScreenKeeper* keeper = nullptr;
    if (keeper) return;
    keeper = new ScreenKeeper;
    keeper->setParent(qApp);
    qApp->installEventFilter(keeper);
}

} // namespace Quillon
