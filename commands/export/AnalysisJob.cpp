#include "commands/export/AnalysisJob.h"

#include "fit/equations/NoiseWeights.h"
#include "input/ShortestText.h"
#include "models/table/Catalogue.h"
#include "models/table/ModelTable.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "scandata/reader/IntensityScan.h"
#include "scandata/table/LeftOut.h"
#include "workspace/records/Roads.h"

#include <cmath>

namespace Quillon {

namespace {

std::string KeyLine(const char* key, const std::string& value) {
    return std::string(key) + " = " + value + "\n";
}
std::string KeyLine(const char* key, float value) {
    return KeyLine(key, ShortestText(value));
}
std::string YesNo(bool value) {
    return value ? "yes" : "no";
}

// --- [fit] and [constants] -------------------------------------------------------------------------------

// A fit that ended short of a minimum with nobody asking for more ends there again.
bool SearchesOn() {
    const FitEnd end = Work.Outcome.End;
    return Work.Outcome.Rescued || Work.RescueMode == Rescue::Always || end == FitEnd::Converged ||
           end == FitEnd::NotRun;
}

std::string FitSection(const JobSettings& settings) {
    const char* const masses[] = {"sigma", "buoyant", "molar"};
    const char* const units[] = {"signal", "weight", "molar"};
    std::string text =
        "[fit]\n" + KeyLine("model", std::to_string(Work.Model)) +
        KeyLine("nonideal", YesNo(Work.NonIdeal != 0)) + KeyLine("separate-k", YesNo(Work.SeparateK != 0)) +
        KeyLine("mass-units", masses[Work.MassUnits]) +
        KeyLine("concentration-units", units[Work.ConcUnits % ConcUnit::Fringes]) +
        KeyLine("data", Work.InterferenceData ? "interference" : "absorbance") + KeyLine("guesses", "no") +
        KeyLine("max-iterations", std::to_string(Work.MaxIterations)) +
        KeyLine("convergence-limit", Work.ConvergenceLimit) +
        KeyLine("confidence-level", Work.ConfidenceLevel) +
        KeyLine("confidence-limits", YesNo(Work.LimitsDone != 0)) + KeyLine("rescue", YesNo(SearchesOn()));
    if (Work.MaxPtsPerSet > Workspace{}.MaxPtsPerSet)
        text += KeyLine("max-points-per-set", std::to_string(Work.MaxPtsPerSet));
    if (settings.Restarts > 0)
        text += KeyLine("restarts", std::to_string(settings.Restarts)) +
                KeyLine("seed", std::to_string(settings.Seed));
    return text;
}

std::string ConstantsSection() {
    const std::pair<const char*, float> constants[] = {{"vbar-a", Work.VbarA},
                                                       {"vbar-b", Work.VbarB},
                                                       {"density", Work.SolventDensity},
                                                       {"absorptivity-a", Work.AbsorpA},
                                                       {"absorptivity-b", Work.AbsorpB},
                                                       {"extinction-a", Work.ExtA},
                                                       {"extinction-b", Work.ExtB},
                                                       {"refractivity-a", Work.FringeMassA},
                                                       {"refractivity-b", Work.FringeMassB},
                                                       {"molar-refractivity-a", Work.RefrA},
                                                       {"molar-refractivity-b", Work.RefrB},
                                                       {"rotor-expansion", Work.RotorExpansion}};
    std::string text = "\n[constants]\n";
    for (const auto& [key, value] : constants)
        text += KeyLine(key, value);
    const bool kelvin = Work.TemperatureScale == TemperatureScales::Kelvin;
    return text + KeyLine("temperature-scale", kelvin ? "kelvin" : "celsius");
}

// --- [set N] ---------------------------------------------------------------------------------------------

// In quotes, which a name with a quote in it cannot have around it.
std::string FileText(const std::string& directory, const std::string& name, const JobSettings& settings) {
    std::string path = JoinPath(directory, name);
    if (settings.FileName) path = settings.FileName(path);
    return path.find('"') == std::string::npos ? "\"" + path + "\"" : path;
}

// The scan of a row, or those whose mean it is.
std::string ScanLine(RowNo row, const JobSettings& settings) {
    if (Work.MeanOf[row].empty())
        return KeyLine("file", FileText(Work.ScanDirectory[row], Work.ScanFile[row], settings));
    std::string files;
    for (const MeanPart& part : Work.MeanOf[row])
        files += (files.empty() ? "" : ", ") + FileText(part.Directory, part.File, settings);
    return KeyLine("file", files);
}

// The percentage that is read as this fraction, bit for bit where there is one.
float PercentOf(float fraction) {
    const float percent = fraction * 100.0F;
    for (const float tried : {percent, std::nextafter(percent, 0.0F), std::nextafter(percent, 1e9F)})
        if (tried / 100.0F == fraction) return tried;
    return percent;
}

std::string RangeLines(RowNo row) {
    const OneBased<float>& radius = Work.ScanRadius[row];
    std::string text =
        KeyLine("inner", radius[Work.FitRange[0][row]]) + KeyLine("outer", radius[Work.FitRange[1][row]]);
    const int samples = Work.CenterpieceType[row];
    const char* const channels = samples == Centerpiece::TwoChannel     ? "2"
                                 : samples == Centerpiece::EightChannel ? "8"
                                                                        : "6";
    text += KeyLine("centerpiece", channels);
    if (Work.DataChannel[row] != Channel::None)
        text += KeyLine("channel", std::string(1, static_cast<char>('A' + Work.DataChannel[row] - 1)));
    return text + KeyLine("path", Work.CellPath[row]);
}

std::string ExclusionText(const Exclusion& exclusion) {
    const std::string from = ShortestText(exclusion.From);
    return exclusion.From == exclusion.To ? from : from + "-" + ShortestText(exclusion.To);
}

// What is left out of a scan, and how its columns are taken.
std::string ReadingLines(RowNo row) {
    std::string text, radii;
    if (const std::string order = IntensityOrderWord(row); !order.empty())
        text += KeyLine("intensity", order);
    for (const Exclusion& exclusion : ExclusionsOf(row))
        radii += (radii.empty() ? "" : ", ") + ExclusionText(exclusion);
    if (!radii.empty()) text += KeyLine("exclude", radii);
    return Work.SignalCeiling[row] > 0.0F ? text + KeyLine("ceiling", Work.SignalCeiling[row]) : text;
}

std::string BaselineLines(RowNo row, const JobSettings& settings) {
    if (!HasBaseline(row)) return "";
    std::string text =
        KeyLine("baseline", FileText(Work.BaselineDirectory[row], Work.BaselineFile[row], settings));
    if (Work.BaselineShifted[row]) text += KeyLine("baseline-shift", Work.BaselineShift[row]);
    return text;
}

std::string ConstraintLines(RowNo row) {
    std::string text;
    if (Work.ConstraintFlags & ConcentrationBit) {
        if (Work.ConcConstraintA[row] > 0.0F)
            text += KeyLine("loading-a", Work.ConcConstraintA[row]) +
                    KeyLine("tolerance-a", PercentOf(Work.ConcToleranceA[row]));
        if (Work.ConcConstraintB[row] > 0.0F && TraitsOfModel().TwoSpecies)
            text += KeyLine("loading-b", Work.ConcConstraintB[row]) +
                    KeyLine("tolerance-b", PercentOf(Work.ConcToleranceB[row]));
    }
    if ((Work.ConstraintFlags & OffsetBit) && Work.OffsetLink[row] > 0)
        text += KeyLine("offset-of", std::to_string(Work.OffsetLink[row]));
    if (Work.ConcLink[row] > 0) text += KeyLine("concentrations-of", std::to_string(Work.ConcLink[row]));
    return text;
}

std::string SetText(SetNo set, const JobSettings& settings) {
    const RowNo row = RowOf(set);
    std::string text = "\n[set " + std::to_string(row.Number) + "]\n" + ScanLine(row, settings) +
                       ReadingLines(row) + RangeLines(row) + BaselineLines(row, settings) +
                       KeyLine("extinction-ratio-a", Work.ExtinctionRatio[0][row]) +
                       KeyLine("extinction-ratio-b", Work.ExtinctionRatio[1][row]) + ConstraintLines(row);
    return SetsHaveNoise() ? text + KeyLine("noise", Work.SetNoise[row]) : text;
}

// --- [parameters] ----------------------------------------------------------------------------------------

const PerSlot<float>& StartOf(const JobSettings& settings) {
    if (settings.Start.Size() == Work.Parms.Size()) return settings.Start;
    const bool fitted = Work.FitDone != 0 && Work.StartParms.Size() == Work.Parms.Size();
    return fitted ? Work.StartParms : Work.Parms;
}

// Bounds that are not in force are so wide that nothing meets them.
float BoundOf(std::size_t side, SlotNo slot) {
    if (Work.BoundsActive) return Work.Bounds[side][slot];
    constexpr float Far = 1e30F;
    return side == 0 ? -Far : Far;
}

std::string ParameterLines(const JobSettings& settings) {
    const PerSlot<float>& start = StartOf(settings);
    std::string text = "\n[parameters]\n";
    for (const SlotNo slot : EachSlot()) {
        if (Work.FreeMap[slot] == SlotUnused || Work.FreeMap[slot] == SlotTied) continue;
        text += std::to_string(slot.Number) + " = internal " + ShortestText(start[slot]) +
                (IsFitted(slot) ? " fit" : " hold") + " lower " + ShortestText(BoundOf(0, slot)) + " upper " +
                ShortestText(BoundOf(1, slot)) + "   ; " + Work.ParmName[slot] + "\n";
    }
    return text;
}

} // namespace

std::string AnalysisAsJob(const JobSettings& settings) {
    std::string text = "; " + ModelReportName(Work.Model) + ", written by " + Work.ProgramName + " " +
                       Work.ProgramVersion + "\n" + FitSection(settings) + ConstantsSection();
    for (const SetNo set : EachSet())
        text += SetText(set, settings);
    return text + ParameterLines(settings);
}

std::string NameFrom(const std::string& directory, const std::string& path) {
    const std::string front = JoinPath(directory, "");
    if (directory.empty() || front.empty() || !path.starts_with(front) || path.size() == front.size())
        return path;
    return path.substr(front.size());
}

void SaveAsJob() {
    FileRequest request;
    request.Title = Work.ProgramName + " - Save as Job";
    request.Filter = "jobs (*.job)|*.job|all files (*.*)|*.*";
    request.DefaultType = "job";
    request.Name = "analysis.job";
    request.Save = true;
    const FileAnswer answer = Host.AskFile(request);
    if (answer.Cancelled) return;
    JobSettings settings;
    settings.FileName = [directory = DirectoryOf(answer.Path)](const std::string& path) {
        return NameFrom(directory, path);
    };
    try {
        Host.WriteFile(answer.Path, AnalysisAsJob(settings));
    } catch (const RuntimeError& error) {
        Tell(answer.Path + "\n\n" + error.Text, Work.ProgramName, BoxIcon::Stop);
    }
}

} // namespace Quillon
