#include "chart/targets/Metafile.h"

#include "chart/pens/BaseFonts.h"
#include "chart/pens/HatchLines.h"
#include "chart/targets/KeptPicture.h"
#include "chart/targets/MetafileObjects.h"
#include "chart/targets/MetafileRecords.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <numbers>

namespace Quillon {

namespace {

// Values of the format.
constexpr std::uint32_t MapAnisotropic = 8, BackgroundTransparent = 1, FillAlternate = 1,
                        AlignBaselineLeft = 24;
constexpr std::uint32_t CompatibleMode = 1;

struct Extent {
    int Left = std::numeric_limits<int>::max(), Top = Left;
    int Right = std::numeric_limits<int>::min(), Bottom = Right;
};

struct Drawing {
    PictureRequest Request;
    DeviceRect Window;
    EmfRecords Records;
    EmfObjects Objects;
    Extent Drawn;

    SurfacePen Pen;
    SurfaceBrush Brush;
    EmfFont Font;
    Rgb TextColor = 0;

    bool Clipped = false;
    DeviceRect Clip;
    EmfSelection BeforeClip; // comes back into force with the wide clip
};

// The pen asked for, no thinner than what is seen.
SurfacePen PenOf(const Drawing& drawing) {
    SurfacePen pen = drawing.Pen;
    pen.Width = std::max(pen.Width, static_cast<int>(std::lround(ThinnestPen(drawing.Request))));
    return pen;
}

// --- bounds --------------------------------------------------------------------------------------------

// Takes what is drawn into the bounds of the picture, as far as it is seen, and gives its own bounds.
DeviceRect NoteDrawn(Drawing& drawing, const DeviceRect& shape, int margin) {
    const DeviceRect whole = {shape.Left - margin, shape.Top - margin, shape.Right + margin,
                              shape.Bottom + margin};
    const DeviceRect& clip = drawing.Clipped ? drawing.Clip : drawing.Window;
    const DeviceRect seen = {std::max({whole.Left, clip.Left, drawing.Window.Left}),
                             std::max({whole.Top, clip.Top, drawing.Window.Top}),
                             std::min({whole.Right, clip.Right, drawing.Window.Right}),
                             std::min({whole.Bottom, clip.Bottom, drawing.Window.Bottom})};
    if (seen.Left > seen.Right || seen.Top > seen.Bottom) return whole;
    Extent& drawn = drawing.Drawn;
    drawn = {std::min(drawn.Left, seen.Left), std::min(drawn.Top, seen.Top),
             std::max(drawn.Right, seen.Right), std::max(drawn.Bottom, seen.Bottom)};
    return whole;
}

int PenMargin(const Drawing& drawing) {
    return drawing.Pen.Visible ? PenOf(drawing).Width / 2 : 0;
}

DeviceRect NotePoints(Drawing& drawing, const std::vector<DevicePoint>& points) {
    DeviceRect around = {points[0].X, points[0].Y, points[0].X, points[0].Y};
    for (const DevicePoint point : points)
        around = {std::min(around.Left, point.X), std::min(around.Top, point.Y),
                  std::max(around.Right, point.X), std::max(around.Bottom, point.Y)};
    return NoteDrawn(drawing, around, PenMargin(drawing));
}

// --- drawing -------------------------------------------------------------------------------------------

// A line without length has no direction to be drawn in: it becomes a dot as wide as the pen.
std::vector<DevicePoint> DotAt(DevicePoint place, int width) {
    const int left = width > 1 ? place.X - width / 2 : place.X;
    return {{left, place.Y}, {left + width, place.Y}};
}

void DrawPolyline(Drawing& drawing, std::vector<DevicePoint> points) {
    if (points.empty() || !drawing.Pen.Visible) return;
    const DevicePoint first = points[0];
    const auto isFirst = [first](DevicePoint point) { return point.X == first.X && point.Y == first.Y; };
    const SurfacePen pen = PenOf(drawing);
    if (std::all_of(points.begin(), points.end(), isFirst)) points = DotAt(first, pen.Width);
    UsePen(drawing.Records, drawing.Objects, pen);
    AppendPoints(drawing.Records, false, NotePoints(drawing, points), points);
}

// The lines of a hatch, before the outline that is drawn over them.
void DrawHatch(Drawing& drawing, const std::vector<PlanePoint>& outline) {
    const double dots = drawing.Request.DotsPerInchY;
    const auto rounded = [](PlanePoint point) {
        return DevicePoint{static_cast<int>(std::lround(point.X)), static_cast<int>(std::lround(point.Y))};
    };
    std::vector<DevicePoint> ends;
    for (const PlaneSegment& line :
         HatchLines(drawing.Brush.Kind, outline, HatchSpacing(dots), drawing.Window)) {
        ends.push_back(rounded(line.From));
        ends.push_back(rounded(line.To));
    }
    if (ends.empty()) return;
    const int width = static_cast<int>(std::lround(HatchWidth(dots)));
    UsePen(drawing.Records, drawing.Objects, {true, drawing.Brush.Color, width, drawing.Pen.Exclusive});
    AppendSegments(drawing.Records, NotePoints(drawing, ends), ends);
}

// Readies pen and brush for an area with that outline.
void BeginArea(Drawing& drawing, const std::vector<PlanePoint>& outline) {
    if (IsHatch(drawing.Brush.Kind)) DrawHatch(drawing, outline);
    UsePen(drawing.Records, drawing.Objects, PenOf(drawing));
    if (drawing.Brush.Kind == BrushKind::Solid)
        UseSolidBrush(drawing.Records, drawing.Objects, drawing.Brush.Color);
    else
        UseHollowBrush(drawing.Records, drawing.Objects);
}

void DrawPolygon(Drawing& drawing, const std::vector<DevicePoint>& points) {
    if (points.size() < 2) return DrawPolyline(drawing, points);
    BeginArea(drawing, OutlineOf(points));
    AppendPoints(drawing.Records, true, NotePoints(drawing, points), points);
}

// Without an outline a shape ends one unit short of its right and bottom edges, so it is given one more.
DeviceRect BoxOf(const Drawing& drawing, const DeviceRect& rect) {
    const int more = drawing.Pen.Visible ? 0 : 1;
    return {rect.Left, rect.Top, rect.Right + more, rect.Bottom + more};
}

void DrawBox(Drawing& drawing, EmfType type, const DeviceRect& rect) {
    NoteDrawn(drawing, rect, PenMargin(drawing));
    AppendRecord(drawing.Records, type, EmfFields().Rect(BoxOf(drawing, rect)));
}

void DrawRectangle(Drawing& drawing, const DeviceRect& rect) {
    BeginArea(drawing, OutlineOf(rect));
    DrawBox(drawing, EmfType::Rectangle, rect);
}

void DrawEllipse(Drawing& drawing, const DeviceRect& rect) {
    const PlanePoint centre = {(rect.Left + rect.Right) / 2.0, (rect.Top + rect.Bottom) / 2.0};
    BeginArea(drawing,
              ArcOutline(centre, (rect.Right - rect.Left) / 2.0, (rect.Bottom - rect.Top) / 2.0, 0.0, 360.0));
    DrawBox(drawing, EmfType::Ellipse, rect);
}

// The two ends of a slice are given by rays from the centre; long ones keep a narrow slice from closing.
DevicePoint RayEnd(DevicePoint centre, int radiusX, int radiusY, double degrees) {
    constexpr double rayLength = 100000.0;
    const double angle = degrees * std::numbers::pi / 180.0;
    const double stretch = std::max(rayLength / std::max({radiusX, radiusY, 1}), 1.0);
    return {centre.X + static_cast<int>(std::lround(stretch * radiusX * std::cos(angle))),
            centre.Y - static_cast<int>(std::lround(stretch * radiusY * std::sin(angle)))};
}

void DrawPie(Drawing& drawing, DevicePoint centre, int radiusX, int radiusY, double start, double sweep) {
    const DeviceRect around = {centre.X - radiusX, centre.Y - radiusY, centre.X + radiusX,
                               centre.Y + radiusY};
    if (std::fabs(sweep) >= 360.0) return DrawEllipse(drawing, around);
    const DevicePoint one = RayEnd(centre, radiusX, radiusY, std::min(start, start + sweep));
    const DevicePoint other = RayEnd(centre, radiusX, radiusY, std::max(start, start + sweep));
    if (one.X == other.X && one.Y == other.Y) return; // too narrow to be told from the whole
    BeginArea(drawing, ArcOutline({static_cast<double>(centre.X), static_cast<double>(centre.Y)}, radiusX,
                                  radiusY, start, sweep));
    NoteDrawn(drawing, around, PenMargin(drawing));
    AppendRecord(drawing.Records, EmfType::Pie,
                 EmfFields().Rect(BoxOf(drawing, around)).Point(one).Point(other));
}

// --- text ----------------------------------------------------------------------------------------------

void SetFont(Drawing& drawing, const SurfaceFont& font) {
    const BaseFont& base = BaseFontFor(font.Face, font.Bold);
    drawing.Font = {&base, EmOfHeight(base, font.Height), font.Height, (font.Angle % 360 + 360) % 360};
}

TextSize MeasureText(const Drawing& drawing, const std::string& text) {
    return MeasureBaseText(*drawing.Font.Base, drawing.Font.Em, drawing.Font.Height, text);
}

DeviceRect TextBounds(const Drawing& drawing, int x, int y, const std::string& text) {
    const TextSize size = MeasureText(drawing, text);
    const int up = size.Height - size.Descent;
    switch (drawing.Font.Angle) {
    case 90:
        return {x - up, y - size.Width, x + size.Descent, y};
    case 180:
        return {x - size.Width, y - size.Descent, x, y + up};
    case 270:
        return {x - size.Descent, y, x + up, y + size.Width};
    default:
        return {x, y - up, x + size.Width, y + size.Descent};
    }
}

// Where each letter of a text begins and the last one ends, device units from the begin of the text.
std::vector<int> RoundedPlaces(const EmfFont& font, const std::string& text) {
    std::vector<int> places;
    for (const double ems : LetterPlaces(*font.Base, text))
        places.push_back(static_cast<int>(std::lround(ems * font.Em)));
    places.push_back(static_cast<int>(std::lround(TextEms(*font.Base, text) * font.Em)));
    return places;
}

// Letters of a text that stand in one record, from First up to the one before End.
struct TextPiece {
    std::size_t First = 0, End = 1;
};

// How far each letter moves on: the differences of places that were rounded from the begin of the text, so
// that neither letters nor pieces add their roundings up.
void AppendAdvances(EmfFields& fields, const std::vector<int>& places, TextPiece piece) {
    for (std::size_t i = piece.First; i < piece.End; ++i)
        fields.Signed(places[i + 1] - places[i]);
}

std::string WithoutControlCodes(std::string text) {
    const auto control = [](char code) {
        const auto byte = static_cast<unsigned char>(code);
        return byte < 0x20 || (byte >= 0x7F && byte < 0xA0);
    };
    std::replace_if(text.begin(), text.end(), control, ' ');
    return text;
}

// The place that far along the line.
DevicePoint Along(const Drawing& drawing, DevicePoint begin, int length) {
    const double angle = drawing.Font.Angle * std::numbers::pi / 180.0;
    return {begin.X + static_cast<int>(std::lround(length * std::cos(angle))),
            begin.Y - static_cast<int>(std::lround(length * std::sin(angle)))};
}

// What stands in one record: all of it is set by its own advances, or by those of a reader.
void WritePiece(Drawing& drawing, DevicePoint begin, const std::string& all, const std::vector<int>& places,
                TextPiece piece) {
    constexpr std::uint32_t stringOffset = 76; // from the start of the record
    const std::string text = all.substr(piece.First, piece.End - piece.First);
    const DevicePoint place = Along(drawing, begin, places[piece.First]);
    EmfFields letters;
    letters.Wide(WithoutControlCodes(text), text.size()).Pad();
    const auto scale = [](double dotsPerInch) { return static_cast<float>(2540.0 / dotsPerInch); };
    EmfFields fields;
    fields.Rect(NoteDrawn(drawing, TextBounds(drawing, place.X, place.Y, text), 0)).Word(CompatibleMode);
    fields.Single(scale(drawing.Request.DotsPerInchX)).Single(scale(drawing.Request.DotsPerInchY));
    fields.Point(place).Word(static_cast<std::uint32_t>(text.size())).Word(stringOffset).Word(0);
    fields.Rect({0, 0, -1, -1}).Word(static_cast<std::uint32_t>(stringOffset + letters.Bytes.size()));
    fields.Bytes += letters.Bytes;
    AppendAdvances(fields, places, piece);
    AppendRecord(drawing.Records, EmfType::WriteText, fields);
    // Readers exist that take texts which follow each other for a paragraph and set it by rules of their own;
    // a record between them, of what is in force anyway, keeps each at its place.
    AppendRecord(drawing.Records, EmfType::SetPolygonFillMode, FillAlternate);
}

// Readers exist that leave the advances aside and pull pairs together: each pair stands in two records. A
// blank belongs to what is before it.
bool BeginsPiece(const BaseFont& font, const std::string& text, std::size_t i) {
    if (text[i] == ' ') return false;
    if (IsKernedPair(font, text[i - 1], text[i])) return true;
    return i >= 2 && text[i - 1] == ' ' && IsKernedPair(font, text[i - 2], ' ');
}

// Readers round the advances of a record to units of their own, which adds up along a line: a word after so
// many letters begins one of its own, at its place.
bool BeginsWordFarOn(const std::string& text, TextPiece piece) {
    constexpr std::size_t farOn = 8;
    return piece.End - piece.First >= farOn && text[piece.End - 1] == ' ' && text[piece.End] != ' ';
}

void WriteText(Drawing& drawing, int x, int y, const std::string& text) {
    if (text.empty()) return;
    UseFont(drawing.Records, drawing.Objects, drawing.Font, drawing.TextColor);
    const BaseFont& font = *drawing.Font.Base;
    const std::vector<int> places = RoundedPlaces(drawing.Font, text);
    for (TextPiece piece; piece.First < text.size(); piece = {piece.End, piece.End + 1}) {
        while (piece.End < text.size() && !BeginsPiece(font, text, piece.End) &&
               !BeginsWordFarOn(text, piece))
            ++piece.End;
        WritePiece(drawing, {x, y}, text, places, piece);
    }
}

// --- clipping ------------------------------------------------------------------------------------------

void AppendClip(EmfRecords& records, const DeviceRect& rect) { // right and bottom are the first units outside
    AppendRecord(records, EmfType::IntersectClipRectangle,
                 EmfFields().Rect({rect.Left, rect.Top, rect.Right + 1, rect.Bottom + 1}));
}

void ClearClip(Drawing& drawing) {
    if (!drawing.Clipped) return;
    AppendRecord(drawing.Records, EmfType::RestoreContext, EmfFields().Signed(-1));
    EmfSelection& now = drawing.Objects.Now;
    now = drawing.BeforeClip;
    now.Pen = now.Brush = now.Font = 0; // selected anew: not all readers bring objects back with the context
    drawing.Clipped = false;
}

// A clip can only be narrowed; so the wide one is kept aside.
void SetClip(Drawing& drawing, const DeviceRect& rect) {
    ClearClip(drawing);
    const DeviceRect& all =
        drawing.Window; // a clip to all of it hides nothing, but in some readers everything
    if (rect.Left <= all.Left && rect.Top <= all.Top && rect.Right >= all.Right && rect.Bottom >= all.Bottom)
        return;
    AppendRecord(drawing.Records, EmfType::SaveContext);
    AppendClip(drawing.Records, rect);
    drawing.BeforeClip = drawing.Objects.Now;
    drawing.Clipped = true;
    drawing.Clip = rect;
}

// --- the file ------------------------------------------------------------------------------------------

EmfRecords OpeningRecords(const DeviceRect& window) {
    const DevicePoint extent = {window.Right - window.Left + 1, window.Bottom - window.Top + 1};
    EmfRecords records;
    AppendRecord(records, EmfType::SetMapMode, MapAnisotropic);
    AppendRecord(records, EmfType::SetWindowOrigin, EmfFields().Point({window.Left, window.Top}));
    AppendRecord(records, EmfType::SetWindowExtent, EmfFields().Point(extent));
    AppendRecord(records, EmfType::SetViewportOrigin, EmfFields().Point({0, 0}));
    AppendRecord(records, EmfType::SetViewportExtent, EmfFields().Point(extent));
    AppendRecord(records, EmfType::SetBackgroundMode, BackgroundTransparent);
    AppendRecord(records, EmfType::SetTextAlign, AlignBaselineLeft);
    AppendRecord(records, EmfType::SetPolygonFillMode, FillAlternate);
    AppendClip(records, window);
    return records;
}

EmfSummary Summarise(const Drawing& drawing) {
    const DeviceRect& window = drawing.Window;
    const Extent& drawn = drawing.Drawn;
    EmfSummary summary;
    summary.Description = drawing.Request.Description;
    if (drawn.Left > drawn.Right)
        summary.Bounds = {0, 0, -1, -1}; // the format's way to say that nothing is drawn
    else
        summary.Bounds = {drawn.Left - window.Left, drawn.Top - window.Top, drawn.Right - window.Left,
                          drawn.Bottom - window.Top};
    summary.Width = window.Right - window.Left + 1;
    summary.Height = window.Bottom - window.Top + 1;
    summary.PageWidth = drawing.Request.Width;
    summary.PageHeight = drawing.Request.Height;
    summary.DotsPerInchX = drawing.Request.DotsPerInchX;
    summary.DotsPerInchY = drawing.Request.DotsPerInchY;
    summary.Objects = drawing.Objects.Count;
    return summary;
}

std::string Finish(Drawing& drawing) {
    ClearClip(drawing);
    EmfRecords all = OpeningRecords(drawing.Window);
    all.Bytes += drawing.Records.Bytes;
    all.Count += drawing.Records.Count;
    drawing.Records = {};
    AppendEndOfFile(all);
    return MetafileHeader(Summarise(drawing), all) + all.Bytes;
}

} // namespace

PictureFile OpenMetafile(const PictureRequest& request) {
    return OpenKept<Drawing>(request);
}

} // namespace Quillon
