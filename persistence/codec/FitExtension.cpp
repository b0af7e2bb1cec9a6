#include "persistence/codec/FitExtension.h"

#include "persistence/codec/FitFields.h"
#include "persistence/codec/FitStreams.h"
#include "workspace/records/ReadingRemarks.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace Quillon {

namespace {

constexpr const char* Mark = "EXTENSION";
constexpr std::int16_t ExtensionVersion = 1;

template <class Column>
bool HoldsAny(const Column& column, const typename std::decay_t<decltype(column[1])>& none) {
    return std::any_of(column.begin(), column.end(), [&](const auto& entry) { return entry != none; });
}

void CheckHash(const std::string& hash, const char* name) {
    if (!hash.empty() &&
        (hash.size() != 64 || hash.find_first_not_of("0123456789abcdef") != std::string::npos))
        FitReader::Damaged(name);
}

void CheckHashes(const PerRow<std::string>& hashes, const char* name) {
    for (const std::string& hash : hashes)
        CheckHash(hash, name);
}

// Calls visit(row) for each row with a scan.
template <class Visit> void EachScan(const Workspace& w, Visit&& visit) {
    for (const RowNo row : RowsOf(w))
        if (HasScan(w, row)) visit(row);
}

bool LeavesOut(const Workspace& w) {
    bool any = false;
    EachScan(w, [&](RowNo row) { any |= !w.LeftOut[row].empty(); });
    return any;
}

// Of each row with a scan the count, then place, reason, radius and value of each reading.
void WriteLeftOut(FitWriter& s, const Workspace& w) {
    EachScan(w, [&](RowNo row) {
        s.Value("LeftOut", ToInt16(w.LeftOut[row].size()));
        for (const LeftOutReading& out : w.LeftOut[row]) {
            s.Value("LeftOut", out.Place);
            s.Value("LeftOut", out.Why);
            s.Value("LeftOut", out.Radius);
            s.Value("LeftOut", out.Value);
        }
    });
}

void ReadLeftOut(FitReader& s, Workspace& w) {
    EachScan(w, [&](RowNo row) {
        std::int16_t count = 0;
        s.Value("LeftOut", count);
        for (std::int16_t i = 0; i < count; ++i) {
            LeftOutReading out;
            s.Value("LeftOut", out.Place);
            s.Value("LeftOut", out.Why);
            s.Value("LeftOut", out.Radius);
            s.Value("LeftOut", out.Value);
            w.LeftOut[row].push_back(out);
        }
    });
}

// The order of each row; then of each intensity scan the count of readings and both columns.
void WriteIntensities(FitWriter& s, const Workspace& w) {
    s.Array("IntensityOrder", w.IntensityOrder, 1, w.MaxSets);
    EachScan(w, [&](RowNo row) {
        if (w.IntensityOrder[row] == IntensityOrders::None) return;
        s.Value("Intensity", ToInt16(w.Intensity[0][row].Hi()));
        for (const PerRow<OneBased<float>>& column : w.Intensity)
            s.Array("Intensity", column[row], 1, w.Intensity[0][row].Hi());
    });
}

void ReadIntensities(FitReader& s, Workspace& w) {
    s.Array("IntensityOrder", w.IntensityOrder, 1, w.MaxSets);
    for (const std::int16_t order : w.IntensityOrder)
        if (order < IntensityOrders::None || order > IntensityOrders::ReferenceFirst)
            FitReader::Damaged("IntensityOrder");
    EachScan(w, [&](RowNo row) {
        if (w.IntensityOrder[row] == IntensityOrders::None) return;
        std::int16_t count = 0;
        s.Value("Intensity", count);
        for (PerRow<OneBased<float>>& column : w.Intensity)
            s.Array("Intensity", column[row], 1, count);
    });
}

bool HoldsMeans(const Workspace& w) {
    bool any = false;
    EachScan(w, [&](RowNo row) { any |= !w.MeanOf[row].empty(); });
    return any;
}

// Of each row with a scan the count of files, each with folder, name, hash and count of readings; behind
// them, where there are any, the count of readings of the mean and the deviation at each.
void WriteMeans(FitWriter& s, const Workspace& w) {
    EachScan(w, [&](RowNo row) {
        s.Value("MeanOf", ToInt16(w.MeanOf[row].size()));
        for (const MeanPart& part : w.MeanOf[row]) {
            s.Value("MeanOf", part.Directory);
            s.Value("MeanOf", part.File);
            s.Value("MeanOf", part.Sha256);
            s.Value("MeanOf", part.Readings);
        }
        if (w.MeanOf[row].empty()) return;
        s.Value("MeanSpread", ToInt16(w.MeanSpread[row].Hi()));
        s.Array("MeanSpread", w.MeanSpread[row], 1, w.MeanSpread[row].Hi());
    });
}

MeanPart MeanPartFrom(FitReader& s) {
    MeanPart part;
    s.Value("MeanOf", part.Directory);
    s.Value("MeanOf", part.File);
    s.Value("MeanOf", part.Sha256);
    s.Value("MeanOf", part.Readings);
    CheckHash(part.Sha256, "MeanOf");
    return part;
}

void ReadMeans(FitReader& s, Workspace& w) {
    EachScan(w, [&](RowNo row) {
        std::int16_t count = 0;
        s.Value("MeanOf", count);
        for (std::int16_t i = 0; i < count; ++i)
            w.MeanOf[row].push_back(MeanPartFrom(s));
        if (count <= 0) return;
        s.Value("MeanSpread", count);
        s.Array("MeanSpread", w.MeanSpread[row], 1, count);
    });
}

// Places of left-out readings are places of the scan, each once; the columns of intensities and the
// deviations of a mean are as long.
void CheckReadings(const Workspace& w) {
    EachScan(w, [&](RowNo row) {
        const long readings = w.ScanPoints[row] + static_cast<long>(w.LeftOut[row].size());
        long before = 0;
        for (const LeftOutReading& out : w.LeftOut[row]) {
            if (out.Place <= before || out.Place > readings || out.Why < LeftOutBy::Hand ||
                out.Why > LeftOutBy::Intensity)
                FitReader::Damaged("LeftOut");
            before = out.Place;
        }
        if (w.IntensityOrder[row] != IntensityOrders::None && w.Intensity[0][row].Hi() != readings)
            FitReader::Damaged("Intensity");
        if (!w.MeanOf[row].empty() && w.MeanSpread[row].Hi() != readings) FitReader::Damaged("MeanSpread");
    });
}

// --- what the files of the rows were read with, by their hashes

void AddHashesOf(const Workspace& w, RowNo row, std::vector<std::string>& hashes) {
    hashes.push_back(w.ScanSha256[row]);
    for (const MeanPart& part : w.MeanOf[row])
        hashes.push_back(part.Sha256);
    if (w.BaselineFile[row] != NoBaseline) hashes.push_back(w.BaselineSha256[row]);
}

// Those of which there is something to be said, each once.
std::vector<std::string> RemarkedFiles(const Workspace& w) {
    std::vector<std::string> hashes;
    EachScan(w, [&](RowNo row) { AddHashesOf(w, row, hashes); });
    std::erase_if(hashes, [](const std::string& hash) { return ReadingRemark(hash).empty(); });
    std::sort(hashes.begin(), hashes.end());
    hashes.erase(std::unique(hashes.begin(), hashes.end()), hashes.end());
    return hashes;
}

void WriteRemarks(FitWriter& s, const Workspace& w) {
    const std::vector<std::string> hashes = RemarkedFiles(w);
    s.Value("ReadingRemarks", ToInt16(hashes.size()));
    for (const std::string& hash : hashes) {
        s.Value("ReadingRemarks", hash);
        s.Value("ReadingRemarks", ReadingRemark(hash));
    }
}

void ReadRemarks(FitReader& s, Workspace&) {
    std::int16_t count = 0;
    s.Value("ReadingRemarks", count);
    for (std::int16_t i = 0; i < count; ++i) {
        std::string hash, remark;
        s.Value("ReadingRemarks", hash);
        s.Value("ReadingRemarks", remark);
        CheckHash(hash, "ReadingRemarks");
        KeepReadingRemark(hash, remark);
    }
}

// A member that is kept: Holds tells whether there is anything to keep.
struct ExtensionField {
    const char* Name;
    std::function<bool(const Workspace&)> Holds;
    std::function<void(FitWriter&, const Workspace&)> Write;
    std::function<void(FitReader&, Workspace&)> Read;
};

const std::vector<ExtensionField>& ExtensionFields() {
    static const std::vector<ExtensionField> fields{
        {"ConcLink",
         [](const Workspace& w) {
             for (const std::int16_t link : w.ConcLink)
                 if (link != 0) return true;
             return false;
         },
         [](FitWriter& s, const Workspace& w) { s.Array("ConcLink", w.ConcLink, 1, w.MaxSets); },
         [](FitReader& s, Workspace& w) {
             s.Array("ConcLink", w.ConcLink, 1, w.MaxSets);
             for (const std::int16_t link : w.ConcLink)
                 if (link < 0 || link > w.MaxSets) FitReader::Damaged("ConcLink");
         }},
        {"TemperatureScale",
         [](const Workspace& w) { return w.TemperatureScale != Workspace{}.TemperatureScale; },
         [](FitWriter& s, const Workspace& w) { s.Value("TemperatureScale", w.TemperatureScale); },
         [](FitReader& s, Workspace& w) {
             s.Value("TemperatureScale", w.TemperatureScale);
             if (w.TemperatureScale < TemperatureScales::Celsius ||
                 w.TemperatureScale > TemperatureScales::Kelvin)
                 FitReader::Damaged("TemperatureScale");
         }},
        {"LimitsLevel",
         [](const Workspace& w) { return w.LimitsDone != 0 && w.LimitsLevel != w.ConfidenceLevel; },
         [](FitWriter& s, const Workspace& w) { s.Value("LimitsLevel", w.LimitsLevel); },
         [](FitReader& s, Workspace& w) { s.Value("LimitsLevel", w.LimitsLevel); }},
        // A fit that is no minimum does not come back as one that has converged.
        {"StoppedShort",
         [](const Workspace& w) { return w.FitDone != 0 && w.Outcome.End == FitEnd::StoppedShort; },
         [](FitWriter& s, const Workspace& w) { s.Value("StoppedShort", w.Outcome.Sentence); },
         [](FitReader& s, Workspace& w) {
             s.Value("StoppedShort", w.Outcome.Sentence);
             w.Outcome.End = FitEnd::StoppedShort;
         }},
        {"Undetermined", [](const Workspace& w) { return w.FitDone != 0 && !w.Outcome.Reason.empty(); },
         [](FitWriter& s, const Workspace& w) { s.Value("Undetermined", w.Outcome.Reason); },
         [](FitReader& s, Workspace& w) { s.Value("Undetermined", w.Outcome.Reason); }},
        {"ScanSha256", [](const Workspace& w) { return HoldsAny(w.ScanSha256, ""); },
         [](FitWriter& s, const Workspace& w) { s.Array("ScanSha256", w.ScanSha256, 1, w.MaxSets); },
         [](FitReader& s, Workspace& w) {
             s.Array("ScanSha256", w.ScanSha256, 1, w.MaxSets);
             CheckHashes(w.ScanSha256, "ScanSha256");
         }},
        {"BaselineSha256", [](const Workspace& w) { return HoldsAny(w.BaselineSha256, ""); },
         [](FitWriter& s, const Workspace& w) { s.Array("BaselineSha256", w.BaselineSha256, 1, w.MaxSets); },
         [](FitReader& s, Workspace& w) {
             s.Array("BaselineSha256", w.BaselineSha256, 1, w.MaxSets);
             CheckHashes(w.BaselineSha256, "BaselineSha256");
         }},
        {"SetNoise", [](const Workspace& w) { return HoldsAny(w.SetNoise, 0.0F); },
         [](FitWriter& s, const Workspace& w) { s.Array("SetNoise", w.SetNoise, 1, w.MaxSets); },
         [](FitReader& s, Workspace& w) {
             s.Array("SetNoise", w.SetNoise, 1, w.MaxSets);
             for (const float noise : w.SetNoise)
                 if (noise < 0.0F) FitReader::Damaged("SetNoise");
         }},
        {"LeftOut", [](const Workspace& w) { return LeavesOut(w); }, WriteLeftOut, ReadLeftOut},
        {"SignalCeiling", [](const Workspace& w) { return HoldsAny(w.SignalCeiling, 0.0F); },
         [](FitWriter& s, const Workspace& w) { s.Array("SignalCeiling", w.SignalCeiling, 1, w.MaxSets); },
         [](FitReader& s, Workspace& w) {
             s.Array("SignalCeiling", w.SignalCeiling, 1, w.MaxSets);
             for (const float ceiling : w.SignalCeiling)
                 if (ceiling < 0.0F) FitReader::Damaged("SignalCeiling");
         }},
        {"Intensity", [](const Workspace& w) { return HoldsAny(w.IntensityOrder, IntensityOrders::None); },
         WriteIntensities, ReadIntensities},
        {"MeanOf", [](const Workspace& w) { return HoldsMeans(w); }, WriteMeans, ReadMeans},
        {"ReadingRemarks", [](const Workspace& w) { return !RemarkedFiles(w).empty(); }, WriteRemarks,
         ReadRemarks},
    };
    return fields;
}

void AppendSized(FitWriter& to, const std::string& bytes) {
    to.Value("length", static_cast<std::int32_t>(bytes.size()));
    to.Bytes += bytes;
}

// The bytes that the length before them announces.
std::string_view TakeSized(FitReader& from) {
    std::int32_t length = 0;
    from.Value("length", length);
    if (length < 0) FitReader::Damaged(Mark);
    return from.TakeBytes(static_cast<std::size_t>(length));
}

// Each field that holds something: its name, and its bytes with their length in front.
std::string FieldBytes(const Workspace& analysis) {
    FitWriter values;
    for (const ExtensionField& field : ExtensionFields()) {
        if (!field.Holds(analysis)) continue;
        FitWriter value;
        field.Write(value, analysis);
        values.Value("name", std::string(field.Name));
        AppendSized(values, value.Bytes);
    }
    return values.Bytes;
}

void ReadField(const std::string& name, std::string_view bytes, Workspace& analysis) {
    for (const ExtensionField& field : ExtensionFields())
        if (field.Name == name) {
            FitReader value(bytes);
            field.Read(value, analysis);
            if (!value.AtEnd()) FitReader::Damaged(name);
        }
}

void ReadFields(std::string_view bytes, Workspace& analysis) {
    FitReader values(bytes);
    while (!values.AtEnd()) {
        std::string name;
        values.Value("name", name);
        ReadField(name, TakeSized(values), analysis);
    }
}

std::string MarkBytes() {
    FitWriter mark;
    mark.Value("mark", std::string(Mark));
    return mark.Bytes;
}

} // namespace

std::string EncodeExtension(const Workspace& analysis) {
    const std::string values = FieldBytes(analysis);
    if (values.empty()) return "";
    FitWriter whole;
    whole.Bytes = MarkBytes();
    whole.Value("version", ExtensionVersion);
    AppendSized(whole, values);
    return whole.Bytes;
}

void DecodeExtension(std::string_view bytes, Workspace& analysis) {
    const std::string mark = MarkBytes();
    const std::size_t alike = std::min(mark.size(), bytes.size());
    if (bytes.empty() || bytes.substr(0, alike) != std::string_view(mark).substr(0, alike)) return;
    if (alike < mark.size()) RaiseError(ErrorText::PastEndOfFile);
    FitReader reader(bytes.substr(mark.size()));
    std::int16_t version = 0; // later ones add names, which are skipped
    reader.Value("version", version);
    ReadFields(TakeSized(reader), analysis);
    CheckReadings(analysis);
}

} // namespace Quillon
