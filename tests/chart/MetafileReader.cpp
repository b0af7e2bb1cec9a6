#include "MetafileReader.h"

#include <set>

namespace Quillon {

namespace {

// Record types, by the numbers of the format.
enum : std::uint32_t {
    HeaderType = 1,
    PolygonType = 3,
    PolylineType = 4,
    PolylinesType = 7,
    EndType = 14,
    DrawModeType = 20,
    TextColorType = 24,
    ClipType = 30,
    SaveType = 33,
    RestoreType = 34,
    SelectType = 37,
    BrushType = 39,
    EllipseType = 42,
    RectangleType = 43,
    PieType = 47,
    FontType = 82,
    TextType = 84,
    Polygon16Type = 86,
    Polyline16Type = 87,
    Polylines16Type = 90,
    PenType = 95
};

constexpr std::uint32_t StockFlag = 0x80000000U, HollowBrush = 0x80000005U, NullPen = 0x80000008U;

std::uint32_t WordAt(const std::string& bytes, std::size_t offset) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes.at(offset + i))) << (8 * i);
    return value;
}

bool MakesObject(std::uint32_t type) {
    return type == BrushType || type == FontType || type == PenType;
}

std::string ObjectProblem(const std::vector<EmfRecord>& records, std::uint32_t& made) {
    std::set<std::uint32_t> known;
    for (const EmfRecord& record : records) {
        if (MakesObject(record.Type) && !known.insert(record.Word(8)).second) return "object made twice";
        if (record.Type == SelectType && (record.Word(8) & StockFlag) == 0 &&
            known.count(record.Word(8)) == 0)
            return "object used before it is made";
    }
    made = static_cast<std::uint32_t>(known.size());
    for (const std::uint32_t number : known)
        if (number == 0 || number > made) return "object numbers have gaps";
    return "";
}

std::string HeaderProblem(const std::vector<EmfRecord>& records, std::size_t size) {
    std::uint32_t objects = 0;
    const std::string problem = ObjectProblem(records, objects);
    if (!problem.empty()) return problem;
    const EmfRecord& header = records.front();
    if (header.Type != HeaderType || header.Bytes.size() < 108) return "no header";
    if (header.Word(40) != 0x464D4520U || header.Word(44) != 0x10000U) return "signature";
    if (header.Word(48) != size) return "bytes of the header";
    if (header.Word(52) != records.size()) return "records of the header";
    if (header.Word(56) != objects + 1) return "handles of the header";
    const EmfRecord& last = records.back();
    if (last.Type != EndType || last.Word(last.Bytes.size() - 4) != last.Bytes.size()) return "end of file";
    return "";
}

} // namespace

std::uint32_t EmfRecord::Word(std::size_t offset) const {
    return WordAt(Bytes, offset);
}

int EmfRecord::Short(std::size_t offset) const {
    const unsigned low = static_cast<unsigned char>(Bytes.at(offset));
    const unsigned high = static_cast<unsigned char>(Bytes.at(offset + 1));
    return static_cast<std::int16_t>(low | high << 8U);
}

std::string EmfRecord::Wide(std::size_t offset, std::size_t length) const {
    std::string text;
    for (std::size_t i = 0; i < length; ++i)
        text.push_back(static_cast<char>(Short(offset + 2 * i)));
    return text;
}

EmfFile ReadMetafile(const std::string& bytes) {
    EmfFile file;
    std::size_t at = 0;
    while (at < bytes.size()) {
        if (at + 8 > bytes.size()) return {file.Records, "a record is cut"};
        const std::uint32_t size = WordAt(bytes, at + 4);
        if (size < 8 || size % 4 != 0) return {file.Records, "size of a record"};
        if (at + size > bytes.size()) return {file.Records, "a record is cut"};
        file.Records.push_back({WordAt(bytes, at), at, bytes.substr(at, size)});
        at += size;
    }
    if (file.Records.empty()) return {file.Records, "no records"};
    file.Problem = HeaderProblem(file.Records, bytes.size());
    return file;
}

// --- the player ----------------------------------------------------------------------------------------

namespace {

struct Player {
    EmfItem Now; // the attributes in force
    std::vector<EmfItem> Saved, Items;
    std::map<std::uint32_t, EmfRecord> Objects;
    int Clips = 0;
};

Rgb ColorAt(const EmfRecord& record, std::size_t offset) {
    const std::uint32_t color = record.Word(offset);
    return (color & 0xFFU) << 16U | (color & 0xFF00U) | color >> 16U;
}

DevicePoint PointAt(const EmfRecord& record, std::size_t offset) {
    return {record.Signed(offset), record.Signed(offset + 4)};
}

void SelectObject(Player& player, std::uint32_t number) {
    EmfItem& now = player.Now;
    if (number == HollowBrush)
        now.Filled = false;
    else if (number == NullPen)
        now.PenVisible = false;
    if ((number & StockFlag) != 0) return;
    const EmfRecord& object = player.Objects.at(number);
    if (object.Type == PenType) {
        now.PenVisible = true;
        now.PenWidth = object.Signed(32);
        now.PenColor = ColorAt(object, 40);
    } else if (object.Type == BrushType) {
        now.Filled = true;
        now.FillColor = ColorAt(object, 16);
    } else {
        now.FontHeight = object.Signed(12);
        now.Escapement = object.Signed(20);
        now.Weight = object.Signed(28);
        now.CharacterSet = static_cast<unsigned char>(object.Bytes.at(35));
        now.Face = object.Wide(40, 32).c_str(); // up to the first zero
    }
}

// Points from an offset to the end of the record.
std::vector<DevicePoint> PointsOf(const EmfRecord& record, std::size_t offset, bool wide) {
    std::vector<DevicePoint> points;
    for (std::size_t at = offset; at < record.Bytes.size(); at += wide ? 8U : 4U)
        points.push_back(wide ? PointAt(record, at) : DevicePoint{record.Short(at), record.Short(at + 2)});
    return points;
}

void AddItem(Player& player, const std::string& kind, const std::vector<DevicePoint>& points,
             bool wide = false) {
    EmfItem item = player.Now;
    item.Kind = kind;
    item.Points = points;
    item.Wide = wide;
    player.Items.push_back(item);
}

void AddText(Player& player, const EmfRecord& record) {
    const std::size_t length = record.Word(44), letters = record.Word(48), advances = record.Word(72);
    EmfItem item = player.Now;
    item.Kind = "text";
    item.Points = {PointAt(record, 36)};
    item.Text = record.Wide(letters, length);
    for (std::size_t i = 0; i < length; ++i)
        item.Advances.push_back(record.Signed(advances + 4 * i));
    player.Items.push_back(item);
}

// The first clip of a file is the picture itself.
void NarrowClip(Player& player, const EmfRecord& record) {
    player.Now.Clipped = player.Clips++ > 0;
    player.Now.Clip = {record.Signed(8), record.Signed(12), record.Signed(16), record.Signed(20)};
}

void PlayShape(Player& player, const EmfRecord& record) {
    switch (record.Type) {
    case PolygonType:
        return AddItem(player, "polygon", PointsOf(record, 28, true), true);
    case Polygon16Type:
        return AddItem(player, "polygon", PointsOf(record, 28, false));
    case PolylineType:
        return AddItem(player, "polyline", PointsOf(record, 28, true), true);
    case Polyline16Type:
        return AddItem(player, "polyline", PointsOf(record, 28, false));
    case PolylinesType:
        return AddItem(player, "segments", PointsOf(record, 32 + 4 * record.Word(24), true), true);
    case Polylines16Type:
        return AddItem(player, "segments", PointsOf(record, 32 + 4 * record.Word(24), false));
    case RectangleType:
        return AddItem(player, "rectangle", PointsOf(record, 8, true));
    case EllipseType:
        return AddItem(player, "ellipse", PointsOf(record, 8, true));
    case PieType:
        return AddItem(player, "pie", PointsOf(record, 8, true));
    case TextType:
        return AddText(player, record);
    default:
        return;
    }
}

} // namespace

std::vector<EmfItem> PlayMetafile(const EmfFile& file) {
    Player player;
    for (const EmfRecord& record : file.Records) {
        if (MakesObject(record.Type))
            player.Objects[record.Word(8)] = record;
        else if (record.Type == SelectType)
            SelectObject(player, record.Word(8));
        else if (record.Type == TextColorType)
            player.Now.TextColor = ColorAt(record, 8);
        else if (record.Type == DrawModeType)
            player.Now.DrawMode = record.Word(8);
        else if (record.Type == ClipType)
            NarrowClip(player, record);
        else if (record.Type == SaveType)
            player.Saved.push_back(player.Now);
        else if (record.Type == RestoreType && !player.Saved.empty()) {
            player.Now = player.Saved.back();
            player.Saved.pop_back();
        } else
            PlayShape(player, record);
    }
    return player.Items;
}

} // namespace Quillon
