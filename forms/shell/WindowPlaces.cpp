#include "forms/shell/WindowPlaces.h"

#include "persistence/settings/WindowPlaces.h"

#include <QPointer>
#include <QScreen>
#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <map>

namespace Quillon {

namespace {

constexpr const char* KeyPrefix = "Place";
constexpr int Settled = 400; // milliseconds, in which the window manager has placed a window

struct Place {
    QPoint At;
    QSize Size;
    bool Known = false, Changed = false; // in this run
};

std::map<QString, Place>& Places() {
    static std::map<QString, Place> places;
    return places;
}

// Windows as they stood when nobody had touched them yet.
struct Opened {
    QPointer<QWidget> Window;
    QPoint At;
    QSize Size;
};
std::map<QString, Opened>& OpenedWindows() {
    static std::map<QString, Opened> windows;
    return windows;
}

std::string KeyOf(const QString& name) {
    return KeyPrefix + name.toStdString();
}

// "x y width height"; anything else is none.
Place Parsed(const std::string& text) {
    const QStringList parts = QString::fromStdString(text).split(' ');
    if (parts.size() != 4) return {};
    int numbers[4] = {};
    for (int i = 0; i < 4; ++i) {
        bool fine = false;
        numbers[i] = parts[i].toInt(&fine);
        if (!fine) return {};
    }
    if (numbers[2] < 1 || numbers[3] < 1) return {};
    return {{numbers[0], numbers[1]}, {numbers[2], numbers[3]}, true, false};
}

std::string TextOf(const Place& place) {
    return QString("%1 %2 %3 %4")
        .arg(place.At.x())
        .arg(place.At.y())
        .arg(place.Size.width())
        .arg(place.Size.height())
        .toStdString();
}

Place& PlaceOf(const QString& name) {
    const auto [found, fresh] = Places().try_emplace(name);
    if (fresh) found->second = Parsed(KeptPlace(KeyOf(name)));
    return found->second;
}

int Within(int at, int length, int first, int last) {
    return std::max(first, std::min(at, last - length));
}

void MoveTo(QWidget& window, const Place& place) {
    constexpr int edge = 16, title = 40; // pixels, of the frame
    const QRect room = window.screen()->availableGeometry().adjusted(0, 0, -edge, -title);
    const QSize size = place.Size.expandedTo(window.minimumSize()).boundedTo(room.size());
    window.resize(size);
    window.move(Within(place.At.x(), size.width(), room.left(), room.right()),
                Within(place.At.y(), size.height(), room.top(), room.bottom()));
}

} // namespace

void LoadPlaces() {
    Places().clear();
    OpenedWindows().clear();
}

void PlaceWindow(QWidget& window) {
    const QString name = window.objectName();
    if (name.isEmpty()) return;
    if (const Place& place = PlaceOf(name); place.Known) MoveTo(window, place);
    OpenedWindows().erase(name);
    QTimer::singleShot(Settled, &window, [name, shown = QPointer<QWidget>(&window)] {
        if (shown && shown->isVisible()) OpenedWindows()[name] = {shown, shown->pos(), shown->size()};
    });
}

void NotePlace(QWidget& window) {
    const auto found = OpenedWindows().find(window.objectName());
    if (found == OpenedWindows().end() || found->second.Window != &window) return;
    const Opened opened = found->second;
    OpenedWindows().erase(found);
    if (window.isMinimized() || (window.pos() == opened.At && window.size() == opened.Size)) return;
    PlaceOf(window.objectName()) = {window.pos(), window.size(), true, true};
}

void WritePlaces() {
    std::vector<IniSetting> changed;
    for (auto& [name, place] : Places())
        if (place.Changed) changed.push_back({KeyOf(name), TextOf(place)});
    KeepPlaces(changed);
}

} // namespace Quillon
