#include "chart/files/GraphTrailer.h"

#include "chart/records/ChartStyle.h"
#include "chart/scale/AxisScale.h"
#include "platform/Narrow.h"

#include <cmath>
#include <string>

namespace Quillon {

namespace {

constexpr const char* SettingsBlock = "EXTENSION";
constexpr const char* LooksBlock = "LOOKS";
constexpr const char* CyclesBlock = "CYCLES";

void WriteBlock(GraphWriter& writer, const char* name, const std::string& content) {
    if (content.empty()) return;
    writer.Value("", std::string(name));
    writer.Value("", std::int16_t{1});
    writer.Value("", ToInt32(content.size()));
    writer.Bytes += content;
}

// The end of the block of that name when it follows, with the reader at its content; else 0.
std::size_t EnterBlock(GraphReader& reader, const char* name) {
    GraphWriter head;
    head.Value("", std::string(name));
    const std::size_t left = reader.Left();
    if (left > 0 && reader.Follows(head.Bytes.substr(0, left)))
        reader.Need(head.Bytes.size()); // or it was cut
    if (!reader.Follows(head.Bytes)) return 0;
    reader.At += head.Bytes.size();
    std::int16_t version = 0;
    std::int32_t length = 0;
    reader.Value(name, version);
    reader.Value(name, length);
    if (length < 0) GraphReader::Damaged(name);
    reader.Need(static_cast<std::size_t>(length));
    return reader.At + static_cast<std::size_t>(length);
}

void LeaveBlock(const GraphReader& reader, std::size_t end, const char* name) {
    if (reader.At != end) GraphReader::Damaged(name);
}

// --- settings ----------------------------------------------------------------------------------------------

struct NamedSetting {
    const char* Name;
    float (*Standard)(const ChartModule&); // what holds where the file has nothing
    float (*Get)(const ChartModule&);
    void (*Set)(ChartModule&, float);
};

// What the data were divided by counts where it cannot be told from the axis: one that was prescaled and has
// a manual scale now.
constexpr NamedSetting Settings[] = {
    {"UseRainbowColors", [](const ChartModule&) { return 0.0F; },
     [](const ChartModule& m) { return m.Style.UseRainbowColors != 0 ? 1.0F : 0.0F; },
     [](ChartModule& m, float v) { m.Style.UseRainbowColors = Flag(v != 0.0F); }},
    {"BarWidth", [](const ChartModule&) { return ChartStyle{}.BarWidth; },
     [](const ChartModule& m) { return m.Style.BarWidth; },
     [](ChartModule& m, float v) {
         if (v >= 0.0F && v <= 1.0F) m.Style.BarWidth = v;
     }},
    {"LoadFactorX", [](const ChartModule& m) { return LoadDivisor(m.Spec.AxisX1); },
     [](const ChartModule& m) { return m.LoadFactorX; }, [](ChartModule& m, float v) { m.LoadFactorX = v; }},
    {"LoadFactorY", [](const ChartModule& m) { return LoadDivisor(m.Spec.AxisY1); },
     [](const ChartModule& m) { return m.LoadFactorY; }, [](ChartModule& m, float v) { m.LoadFactorY = v; }},
};

std::string SettingsOf(const ChartModule& m) {
    GraphWriter values;
    for (const NamedSetting& setting : Settings) {
        if (setting.Get(m) == setting.Standard(m)) continue;
        values.Value("", std::string(setting.Name));
        values.Value("", setting.Get(m));
    }
    return std::move(values.Bytes);
}

void TakeSetting(const std::string& name, float value, ChartModule& m) {
    for (const NamedSetting& setting : Settings)
        if (name == setting.Name && std::isfinite(value)) setting.Set(m, value);
}

void ReadSettings(GraphReader& reader, ChartModule& m) {
    for (const NamedSetting& setting : Settings)
        setting.Set(m, setting.Standard(m));
    const std::size_t end = EnterBlock(reader, SettingsBlock);
    while (reader.At < end) {
        std::string name;
        float value = 0.0F;
        reader.Value(SettingsBlock, name);
        reader.Value(SettingsBlock, value);
        TakeSetting(name, value, m);
    }
}

// --- looks -------------------------------------------------------------------------------------------------

constexpr std::size_t LookBytes = 4, EntryBytes = 6; // what one takes at least

template <class Stream, class Look> void LookFields(Stream& s, Look& look) {
    s.Value(LooksBlock, look.Color);
    s.Value(LooksBlock, look.Dash);
}

template <class Stream, class Looks> void LooksFields(Stream& s, Looks& looks) {
    s.Count(LooksBlock, looks.Sets, LookBytes);
    for (auto& look : looks.Sets)
        LookFields(s, look);
    s.Count(LooksBlock, looks.Legend, EntryBytes);
    for (auto& entry : looks.Legend) {
        s.Value(LooksBlock, entry.Name);
        LookFields(s, entry.Look);
    }
}

std::string LooksOf(const ChartModule& m) {
    if (m.Looks.Sets.empty()) return "";
    GraphWriter writer;
    LooksFields(writer, m.Looks);
    return std::move(writer.Bytes);
}

void CheckLook(const SetLook& look) {
    if (look.Color < -1 || look.Dash < 0) GraphReader::Damaged(LooksBlock);
}

void ReadLooks(GraphReader& reader, ChartModule& m) {
    const std::size_t end = EnterBlock(reader, LooksBlock);
    if (end == 0) return;
    LooksFields(reader, m.Looks);
    LeaveBlock(reader, end, LooksBlock);
    if (m.Looks.Sets.size() != static_cast<std::size_t>(m.State.Nsets)) GraphReader::Damaged(LooksBlock);
    for (const SetLook& look : m.Looks.Sets)
        CheckLook(look);
    for (const LookEntry& entry : m.Looks.Legend)
        CheckLook(entry.Look);
}

// --- cycles ------------------------------------------------------------------------------------------------

template <class Stream, class Cycles> void CycleBlockFields(Stream& s, Cycles& cycles) {
    for (std::size_t i = 0; i < cycles.Color.size(); ++i) {
        s.Value(CyclesBlock, cycles.Color[i]);
        for (auto* cycle : {&cycles.Line, &cycles.Line2, &cycles.Pattern, &cycles.Symbol, &cycles.Border})
            s.Value(CyclesBlock, (*cycle)[i]);
    }
}

std::string CyclesOf(const ChartModule& m) {
    if (!m.CyclesOfFile) return "";
    GraphWriter writer;
    CycleBlockFields(writer, *m.CyclesOfFile);
    return std::move(writer.Bytes);
}

void ReadCycles(GraphReader& reader, ChartModule& m) {
    const std::size_t end = EnterBlock(reader, CyclesBlock);
    if (end == 0) return;
    CycleBlockFields(reader, m.CyclesOfFile.emplace());
    LeaveBlock(reader, end, CyclesBlock);
}

} // namespace

void WriteTrailer(GraphWriter& writer, const ChartModule& module) {
    WriteBlock(writer, SettingsBlock, SettingsOf(module));
    WriteBlock(writer, LooksBlock, LooksOf(module));
    WriteBlock(writer, CyclesBlock, CyclesOf(module));
}

void ReadTrailer(GraphReader& reader, ChartModule& module) {
    ReadSettings(reader, module);
    ReadLooks(reader, module);
    ReadCycles(reader, module);
}

} // namespace Quillon
