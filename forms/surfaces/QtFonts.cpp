#include "forms/surfaces/QtFonts.h"

#include "chart/pens/FontClass.h"
#include "chart/pens/SymbolText.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QHash>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

FontClass ClassOf(const QString& face) {
    return ClassOfFace(face.toStdString());
}

// What the Symbol family holds is found in the large families too, at its places in Unicode.
QStringList Candidates(const QString& face) {
    switch (ClassOf(face)) {
    case FontClass::Mono:
        return {face,      "Courier New",     "Liberation Mono", "Cousine", "Nimbus Mono PS",
                "Courier", "DejaVu Sans Mono"};
    case FontClass::Serif:
        return {face,           "Times New Roman", "Liberation Serif", "Tinos",
                "Nimbus Roman", "Times",           "DejaVu Serif"};
    case FontClass::Symbol:
        return {"Times New Roman", "Liberation Serif", "Tinos", "Nimbus Roman", "Times", "DejaVu Serif"};
    default:
        return {face, "Arial", "Liberation Sans", "Arimo", "Nimbus Sans", "Helvetica", "DejaVu Sans"};
    }
}

QFont::StyleHint HintOf(const QString& face) {
    switch (ClassOf(face)) {
    case FontClass::Mono:
        return QFont::Monospace;
    case FontClass::Sans:
        return QFont::SansSerif;
    default:
        return QFont::Serif;
    }
}

// Asking for the list of families takes long, so each answer is kept.
QString InstalledFamily(const QString& face) {
    static QHash<QString, QString> known;
    const auto found = known.constFind(face);
    if (found != known.constEnd()) return *found;
    const QStringList installed = QFontDatabase::families();
    QString family = face;
    for (const QString& candidate : Candidates(face)) {
        if (!installed.contains(candidate, Qt::CaseInsensitive)) continue;
        family = candidate;
        break;
    }
    known.insert(face, family);
    return family;
}

// Height of the letters, from the tallest to the lowest, in ems.
double LetterHeight(const QFont& font) {
    static QHash<QString, double> known;
    const QString key = font.family() + (font.bold() ? " bold" : "");
    const auto found = known.constFind(key);
    if (found != known.constEnd()) return *found;
    constexpr int em = 1000;
    QFont large = font;
    large.setPixelSize(em);
    const QFontMetricsF metrics(large);
    const double height = std::max((metrics.ascent() + metrics.descent()) / em, 0.1);
    known.insert(key, height);
    return height;
}

} // namespace

QFont ToolkitFont(const SurfaceFont& font) {
    const QString face = QString::fromLatin1(font.Face.c_str());
    QFont toolkit(InstalledFamily(face));
    toolkit.setStyleHint(HintOf(face));
    toolkit.setBold(font.Bold && ClassOf(face) != FontClass::Symbol);
    toolkit.setKerning(false);
    toolkit.setStyleStrategy(QFont::PreferNoShaping); // "fi" stays two letters, in search and in width
    toolkit.setHintingPreference(QFont::PreferVerticalHinting); // letters keep their true widths
    toolkit.setPixelSize(std::max(static_cast<int>(std::lround(font.Height / LetterHeight(toolkit))), 1));
    return toolkit;
}

QString ToolkitText(const SurfaceFont& font, const std::string& text) {
    const bool symbol = ClassOfFace(font.Face) == FontClass::Symbol;
    QString result;
    for (const char code : text)
        result += QChar(UnicodeOf(code, symbol));
    return result;
}

} // namespace Quillon
