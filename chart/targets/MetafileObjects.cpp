#include "chart/targets/MetafileObjects.h"

#include "chart/pens/BaseFonts.h"
#include "chart/pens/FontClass.h"
#include "chart/targets/MetafileRecords.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <limits>

namespace Quillon {

namespace {

// Values of the format.
constexpr std::uint32_t StockHollowBrush = 0x80000005U, StockNullPen = 0x80000008U;
constexpr std::uint32_t GeometricPen = 0x10000U, SquareEnds = 0x100U, FlatEnds = 0x200U;
constexpr std::uint32_t SolidBrush = 0;
constexpr int RegularWeight = 400, BoldWeight = 700;

std::uint32_t NextObject(EmfObjects& objects) {
    if (objects.Count >= std::numeric_limits<std::uint16_t>::max() - 1U) RaiseError(ErrorText::Overflow);
    return ++objects.Count;
}

void Select(EmfRecords& records, std::uint32_t& now, std::uint32_t object) {
    if (now == object) return;
    AppendRecord(records, EmfType::SelectObject, object);
    now = object;
}

// The object of that key, made by what is given when it is new.
template <typename Key, typename Make>
std::uint32_t ObjectFor(std::map<Key, std::uint32_t>& known, const Key& key, const Make& make) {
    const auto found = known.find(key);
    if (found != known.end()) return found->second;
    const std::uint32_t number = make();
    known[key] = number;
    return number;
}

// Ends of a wide line are flat, so that the gaps of a dashed one stay open; those of a thin one include the
// end points.
std::uint32_t MakePen(EmfRecords& records, EmfObjects& objects, Rgb color, int width) {
    const std::uint32_t number = NextObject(objects);
    EmfFields fields;
    fields.Word(number).Word(0).Word(0).Word(0).Word(0);
    fields.Word(GeometricPen | (width > 1 ? FlatEnds : SquareEnds)).Signed(width);
    fields.Word(SolidBrush).Color(color).Word(0).Word(0);
    AppendRecord(records, EmfType::MakeGeometricPen, fields);
    return number;
}

std::uint32_t MakeBrush(EmfRecords& records, EmfObjects& objects, Rgb color) {
    const std::uint32_t number = NextObject(objects);
    AppendRecord(records, EmfType::MakeBrush, EmfFields().Word(number).Word(SolidBrush).Color(color).Word(0));
    return number;
}

std::uint8_t PitchAndFamily(FontClass fontClass) {
    switch (fontClass) {
    case FontClass::Sans:
        return 0x22;
    case FontClass::Serif:
        return 0x12;
    case FontClass::Mono:
        return 0x31;
    default:
        return 0x02;
    }
}

// The record is that of the extended form: what follows the face are names and features that stay unset.
std::uint32_t MakeFont(EmfRecords& records, EmfObjects& objects, const EmfFont& font) {
    constexpr std::size_t faceLength = 32, fullSize = 324; // fields without type and size
    const std::uint32_t number = NextObject(objects);
    const bool symbol = font.Base->Class == FontClass::Symbol;
    EmfFields fields;
    fields.Word(number).Signed(-font.Em).Word(0).Signed(10 * font.Angle).Signed(10 * font.Angle);
    fields.Signed(font.Base->Bold ? BoldWeight : RegularWeight);
    fields.Byte(0).Byte(0).Byte(0).Byte(symbol ? 2 : 0); // not slanted or struck out; the character set
    fields.Byte(0).Byte(0).Byte(0).Byte(PitchAndFamily(font.Base->Class));
    fields.Wide(font.Base->Face, faceLength);
    fields.Bytes.resize(fullSize, '\0');
    AppendRecord(records, EmfType::MakeFont, fields);
    return number;
}

void UseDrawMode(EmfRecords& records, EmfObjects& objects, bool exclusive) {
    constexpr std::uint32_t notExclusiveOr = 10, copy = 13; // the first shows a colour as it is on white
    if (objects.Now.Exclusive == exclusive) return;
    AppendRecord(records, EmfType::SetDrawMode, EmfFields().Word(exclusive ? notExclusiveOr : copy));
    objects.Now.Exclusive = exclusive;
}

} // namespace

void UsePen(EmfRecords& records, EmfObjects& objects, const SurfacePen& pen) {
    UseDrawMode(records, objects, pen.Visible && pen.Exclusive);
    if (!pen.Visible) return Select(records, objects.Now.Pen, StockNullPen);
    const std::pair<Rgb, int> key = {pen.Color, std::max(pen.Width, 1)};
    Select(records, objects.Now.Pen,
           ObjectFor(objects.Pens, key, [&] { return MakePen(records, objects, key.first, key.second); }));
}

void UseSolidBrush(EmfRecords& records, EmfObjects& objects, Rgb color) {
    Select(records, objects.Now.Brush,
           ObjectFor(objects.Brushes, color, [&] { return MakeBrush(records, objects, color); }));
}

void UseHollowBrush(EmfRecords& records, EmfObjects& objects) {
    Select(records, objects.Now.Brush, StockHollowBrush);
}

void UseFont(EmfRecords& records, EmfObjects& objects, const EmfFont& font, Rgb color) {
    const std::tuple<const BaseFont*, int, int> key = {font.Base, font.Em, font.Angle};
    Select(records, objects.Now.Font,
           ObjectFor(objects.Fonts, key, [&] { return MakeFont(records, objects, font); }));
    if (objects.Now.TextColor == color) return;
    AppendRecord(records, EmfType::SetTextColor, EmfFields().Color(color));
    objects.Now.TextColor = color;
}

} // namespace Quillon
