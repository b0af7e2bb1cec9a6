#include "batch/outputs/MeasuredJson.h"

#include "batch/outputs/JsonParts.h"
#include "batch/outputs/SetPoints.h"
#include "models/table/SpeciesList.h"
#include "reporting/values/DerivedConstants.h"
#include "reporting/values/Measured.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

std::string TextOrNull(const std::string& text) {
    return text.empty() ? JsonNull : JsonString(text);
}

SetFiles FilesOf(const MeasuredSet& m, const FilesAsWritten& files) {
    if (const auto written = files.find(m.Row.Number); written != files.end()) return written->second;
    if (m.Files.empty()) return {m.File, {m.File}};
    SetFiles all{"", m.Files};
    for (const std::string& file : m.Files)
        all.Value += (all.Value.empty() ? "" : ", ") + file;
    return all;
}

std::string TextList(const std::vector<std::string>& texts) {
    std::string list;
    for (const std::string& text : texts)
        list += (list.empty() ? "" : ", ") + TextOrNull(text);
    return "[" + list + "]";
}

// A mean has a hash for each of its files.
std::vector<std::string> FileMembers(const MeasuredSet& m, const FilesAsWritten& written) {
    const SetFiles files = FilesOf(m, written);
    return {JsonMember("file", JsonString(files.Value)),
            JsonMember("files", TextList(files.Files)),
            JsonMember("scans_averaged", std::to_string(files.Files.size())),
            JsonMember("rms_between", JsonNumber(m.RmsBetween)),
            JsonMember("sha256", m.Hashes.empty() ? TextOrNull(m.Sha256) : TextList(m.Hashes)),
            JsonMember("baseline_sha256", TextOrNull(m.BaselineSha256)),
            JsonMember("remark", TextOrNull(m.Remark)),
            JsonMember("baseline_remark", TextOrNull(m.BaselineRemark)),
            JsonMember("cell", m.Cell > 0 ? std::to_string(m.Cell) : JsonNull),
            JsonMember("channel", TextOrNull(m.Channel))};
}

std::string PopulationsObject(const MeasuredSet& m) {
    if (!m.Total) return JsonNull;
    std::vector<std::string> members;
    for (const std::string& name : SpeciesNames())
        members.push_back(JsonMember(name, JsonNumber(m.Populations[members.size()])));
    return InlineObject(members);
}

std::vector<std::string> ScanMembers(const MeasuredSet& m) {
    return {JsonMember("speed_rpm", JsonNumber(m.Rpm)),
            JsonMember("temperature_c", JsonNumber(m.Celsius)),
            JsonMember("wavelength_nm", JsonNumber(m.Wavelength)),
            JsonMember("omega2t", JsonNumber(m.Omega2t)),
            JsonMember("time_s", std::to_string(m.Seconds)),
            JsonMember("averaged", std::to_string(m.Averaged)),
            JsonMember("inner_cm", JsonNumber(m.Inner)),
            JsonMember("outer_cm", JsonNumber(m.Outer)),
            JsonMember("path_cm", JsonNumber(m.Path)),
            JsonMember("optics", JsonString(m.Optics)),
            JsonMember("mean_residual", JsonNumber(m.MeanResidual)),
            JsonMember("runs_z", JsonNumber(m.RunsZ)),
            JsonMember("noise", m.Noise > 0.0F ? JsonNumber(m.Noise) : JsonNull),
            JsonMember("mean_total", JsonNumber(m.Total)),
            JsonMember("populations", PopulationsObject(m)),
            JsonMember("note", TextOrNull(m.Note))};
}

// Radii of the readings that are left out, and how many for which reason.
std::vector<std::string> LeftOutMembers(const MeasuredSet& m) {
    std::string radii;
    for (const float radius : m.LeftOut)
        radii += (radii.empty() ? "" : ", ") + JsonNumber(radius);
    return {JsonMember("left_out", "[" + radii + "]"),
            JsonMember("left_out_by",
                       InlineObject({JsonMember("exclude", std::to_string(m.LeftOutByHand)),
                                     JsonMember("ceiling", std::to_string(m.LeftOutByCeiling)),
                                     JsonMember("intensity", std::to_string(m.LeftOutByIntensity))})),
            JsonMember("intensity", TextOrNull(m.Columns)),
            JsonMember("ceiling", m.Ceiling > 0.0F ? JsonNumber(m.Ceiling) : JsonNull)};
}

std::string SetObject(const MeasuredSet& m, const FilesAsWritten& files) {
    std::vector<std::string> members{
        JsonMember("set", std::to_string(m.Set.Number)), JsonMember("row", std::to_string(m.Row.Number)),
        JsonMember("label", JsonString(SetName(m.Set))), JsonMember("points", std::to_string(m.Points)),
        JsonMember("rms", JsonNumber(m.Rms))};
    for (const std::string& member : FileMembers(m, files))
        members.push_back(member);
    for (const std::string& member : ScanMembers(m))
        members.push_back(member);
    for (const std::string& member : LeftOutMembers(m))
        members.push_back(member);
    return InlineObject(members);
}

std::vector<std::string> TermMembers(const ConstantTerms& terms) {
    return {JsonMember("ln_k", JsonNumber(terms.LnK)), JsonMember("log10_k", JsonNumber(terms.Log10K)),
            JsonMember("kd", JsonNumber(terms.Kd)), JsonMember("kd_root", JsonNumber(terms.KdRoot)),
            JsonMember("delta_g_kj", JsonNumber(terms.DeltaG))};
}

std::vector<std::string> ValueMembers(const DerivedConstant& k) {
    if (k.Value) return TermMembers(*k.Value);
    std::vector<std::string> members;
    for (const char* name : {"ln_k", "log10_k", "kd", "kd_root", "delta_g_kj"})
        members.push_back(JsonMember(name, JsonNull));
    return members;
}

std::string LimitObject(const std::optional<ConstantTerms>& terms) {
    return terms ? InlineObject(TermMembers(*terms)) : JsonNull;
}

std::string ConstantObject(const DerivedConstant& k) {
    std::vector<std::string> members = ValueMembers(k);
    members.insert(members.begin(),
                   {JsonMember("slot", std::to_string(k.Slot)), JsonMember("name", JsonString(k.Name))});
    members.insert(members.end() - 1, JsonMember("unit", JsonString(k.Unit)));
    for (const std::string& member :
         {JsonMember("lower", LimitObject(k.Lower)), JsonMember("upper", LimitObject(k.Upper)),
          JsonMember("convention", JsonString(k.Convention)), JsonMember("reason", TextOrNull(k.Reason))})
        members.push_back(member);
    return InlineObject(members);
}

} // namespace

std::string SetsJson(const FilesAsWritten& files) {
    std::vector<std::string> items;
    for (const MeasuredSet& m : MeasuredSets())
        items.push_back(SetObject(m, files));
    return JsonList(items);
}

std::string DerivedJson() {
    std::vector<std::string> items;
    if (Work.FitDone)
        for (const DerivedConstant& k : DerivedConstants())
            items.push_back(ConstantObject(k));
    return JsonList(items);
}

} // namespace Quillon
