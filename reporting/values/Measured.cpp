#include "reporting/values/Measured.h"

#include "fit/equations/NoiseWeights.h"
#include "input/NUMINPUT.h"
#include "models/species/Speciation.h"
#include "models/table/ModelTable.h"
#include "platform/Paths.h"
#include "platform/Words.h"
#include "reporting/values/DerivedConstants.h"
#include "reporting/values/FitNotes.h"
#include "reporting/values/Pictured.h"
#include "reporting/values/Statistics.h"
#include "scandata/reader/IntensityScan.h"
#include "scandata/reader/MeanScan.h"
#include "scandata/reader/ScanWriter.h"
#include "scandata/table/LeftOut.h"
#include "workspace/records/ReadingRemarks.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

std::string ChannelName(RowNo row) {
    const int channel = Work.DataChannel[row];
    return channel > 0 ? std::string(1, static_cast<char>('A' + channel - 1)) : "";
}

void AddScan(MeasuredSet& m) {
    const RowNo row = m.Row;
    m.File = JoinPath(Work.ScanDirectory[row], Work.ScanFile[row]);
    m.Sha256 = Work.ScanSha256[row];
    m.Remark = RemarkOfScan(Work, row);
    m.BaselineRemark = RemarkOfBaseline(Work, row);
    if (HasBaseline(row)) {
        m.Baseline = JoinPath(Work.BaselineDirectory[row], Work.BaselineFile[row]);
        m.BaselineSha256 = Work.BaselineSha256[row];
    }
    for (const MeanPart& part : Work.MeanOf[row]) {
        m.Files.push_back(JoinPath(part.Directory, part.File));
        m.Hashes.push_back(part.Sha256);
    }
    m.RmsBetween = RmsBetweenScans(row);
    m.Cell = CellNumberOf(Work.ScanFile[row]);
    m.Channel = ChannelName(row);
    m.Optics = Work.InterferenceData ? "interference" : "absorbance";
    m.Columns = IntensityOrderWord(row);
    m.Rpm = Work.ScanRPM[row];
    m.Celsius = Work.ScanTemperature[row];
    m.Wavelength = Work.ScanWavelength[row];
    m.Omega2t = Work.ScanOmega2t[row];
    m.Seconds = Work.ScanTime[row];
    m.Averaged = Work.ScansAveraged[row];
    m.Path = Work.CellPath[row];
    if (SetsHaveNoise()) m.Noise = Work.SetNoise[row];
}

void AddLeftOut(MeasuredSet& m) {
    m.Ceiling = Work.SignalCeiling[m.Row];
    for (const LeftOutReading& out : Work.LeftOut[m.Row])
        m.LeftOut.push_back(out.Radius);
    m.LeftOutByHand = CountLeftOut(m.Row, LeftOutBy::Hand);
    m.LeftOutByCeiling = CountLeftOut(m.Row, LeftOutBy::Ceiling);
    m.LeftOutByIntensity = CountLeftOut(m.Row, LeftOutBy::Intensity);
}

void AddRange(MeasuredSet& m) {
    const long first = Work.FitRange[0][m.Row];
    const long last = Work.FitRange[1][m.Row];
    const OneBased<float>& radius = Work.ScanRadius[m.Row];
    if (first < 1 || last < first || last > radius.Hi()) return;
    m.Inner = radius[first];
    m.Outer = radius[last];
}

void AddStatistics(MeasuredSet& m, const PerSet<SetQuality>& qualities) {
    const SetQuality& quality = qualities[m.Set];
    m.Points = quality.Points;
    m.Rms = quality.Rms;
    m.MeanResidual = quality.Mean;
    m.RunsZ = quality.RunsZ;
    m.Note = SetNote(m.Set, qualities);
}

// Molar totals need coefficients that somebody has set.
bool TotalsAreKnown() {
    if (SpeciationUnit() != SpeciesUnit::Molar) return true;
    return MolarCoefficientIsGiven(false) && (!TraitsOfModel().TwoSpecies || MolarCoefficientIsGiven(true));
}

void AddPopulations(MeasuredSet& m) {
    if (!TotalsAreKnown()) return;
    try {
        const LoadedMonomers loaded = MeanMonomers(m.Set);
        m.Populations = Populations(loaded);
        m.Total = loaded.Sum();
    } catch (const RuntimeError& error) { // the set is told without them
        m.Populations.clear();
        m.NoPopulations = error.Text;
    }
}

std::string ConditionsOf(const MeasuredSet& m) {
    const std::string line = "   " + Pictured(m.Rpm, "#####0") + " rpm, " + Pictured(m.Celsius, "#0.0") +
                             " degrees C, " + m.Optics;
    return m.Wavelength > 0.0F ? line + " at " + Pictured(m.Wavelength, "##0") + " nm" : line;
}

std::string CellOf(const MeasuredSet& m) {
    std::string line = "   path " + Pictured(m.Path, "0.00##") + " cm";
    if (m.Cell > 0) line += ", cell " + std::to_string(m.Cell);
    if (!m.Channel.empty()) line += ", channel " + m.Channel;
    line += ", " + Counted(m.Averaged, "reading") + " averaged";
    return m.Noise > 0.0F ? line + ", weighted by a noise of " + SingleText(m.Noise) : line;
}

std::string HistoryOf(const MeasuredSet& m) {
    return "   after " + std::to_string(m.Seconds) + " s, omega^2*t = " + Pictured(m.Omega2t, "0.000E+00") +
           " /s";
}

std::string QualityOf(const MeasuredSet& m) {
    std::string line = "   " + std::to_string(m.Points) + " points";
    if (!m.Rms) return line;
    line += ", rms " + FormatNumber(*m.Rms, "0.000E-00") + ", mean residual " +
            FormatNumber(*m.MeanResidual, "0.00E-00");
    return m.RunsZ ? line + ", runs Z = " + SingleText(ToSingle(RoundSignificant(*m.RunsZ, 3))) : line;
}

const char* UnitOfTotals() {
    switch (SpeciationUnit()) {
    case SpeciesUnit::Weight:
        return " mg/mL";
    case SpeciesUnit::Molar:
        return " mol/L of monomers";
    default:
        return Work.InterferenceData ? " fringes" : " AU";
    }
}

// Where there are several species to be told of.
bool CalculationFailed(const MeasuredSet& m) {
    return !m.NoPopulations.empty() && SpeciesNames().size() > 1;
}

std::string PopulationsOf(const MeasuredSet& m) {
    if (!m.NoPopulations.empty()) return "   populations not known: " + m.NoPopulations;
    std::string line = "   mean " + FormatNumber(*m.Total, "0.000E-00") + UnitOfTotals() + ":";
    std::size_t k = 0;
    for (const std::string& name : SpeciesNames()) {
        line += (k > 0 ? ", " : " ") + name + " " + FormatNumber(m.Populations[k], "#0.0%");
        ++k;
    }
    return line;
}

// Radii by hand, as stretches.
std::string RadiiByHand(RowNo row) {
    constexpr std::size_t MostShown = 3;
    const std::vector<Exclusion> stretches = ExclusionsOf(row);
    std::string text;
    for (std::size_t i = 0; i < stretches.size() && i < MostShown; ++i) {
        text += (i > 0 ? ", " : "") + Pictured(stretches[i].From, "0.0000");
        if (stretches[i].To != stretches[i].From) text += " to " + Pictured(stretches[i].To, "0.0000");
    }
    return stretches.size() > MostShown ? text + ", ... cm" : text + " cm";
}

// "   left out: 2 by hand (6.9500, 7.0100 cm), 12 above 1.5"; "" where nothing is.
std::string LeftOutOf(const MeasuredSet& m) {
    std::string text;
    const auto part = [&](long count, const std::string& words) {
        if (count > 0) text += (text.empty() ? "" : ", ") + std::to_string(count) + words;
    };
    part(m.LeftOutByHand, " by hand (" + RadiiByHand(m.Row) + ")");
    part(m.LeftOutByCeiling, " above " + SingleText(m.Ceiling));
    part(m.LeftOutByIntensity, " without absorbance");
    return text.empty() ? "" : "   left out: " + text;
}

// What the scan was read from.
void AddFileLines(const MeasuredSet& m, std::vector<std::string>& lines) {
    if (!m.Files.empty())
        lines.push_back("   the mean of " + std::to_string(m.Files.size()) + " scans, rms between them " +
                        (m.RmsBetween ? FormatNumber(*m.RmsBetween, "0.000E-00") : "not known") + ":");
    for (std::size_t i = 0; i < m.Files.size(); ++i) {
        lines.push_back("   " + FileTitle(m.Files[i]));
        if (!m.Hashes[i].empty()) lines.push_back("SHA-256 " + m.Hashes[i]);
    }
    if (m.Files.empty() && !m.Sha256.empty())
        lines.push_back("SHA-256 " + m.Sha256); // as wide as a sheet with large letters
    if (m.BaselineSha256.empty()) return;
    lines.push_back("   SHA-256 of the baseline:");
    lines.push_back("   " + m.BaselineSha256);
}

} // namespace

std::vector<MeasuredSet> MeasuredSets() {
    std::vector<MeasuredSet> sets;
    const PerSet<SetQuality> qualities = QualityOfSets();
    for (const SetNo set : EachSet()) {
        MeasuredSet m;
        m.Set = set;
        m.Row = RowOf(set);
        AddScan(m);
        AddLeftOut(m);
        AddRange(m);
        AddStatistics(m, qualities);
        if (Work.FitValid) AddPopulations(m);
        sets.push_back(m);
    }
    return sets;
}

std::vector<std::string> MeasuredLines() {
    std::vector<std::string> lines;
    for (const MeasuredSet& m : MeasuredSets()) {
        lines.push_back("Set " + std::to_string(m.Set.Number) + ":");
        for (const std::string& line : {ConditionsOf(m), CellOf(m), HistoryOf(m), QualityOf(m)})
            lines.push_back(line);
        if (!m.Columns.empty()) lines.push_back("   from intensities, " + m.Columns);
        if (const std::string out = LeftOutOf(m); !out.empty()) lines.push_back(out);
        if (m.Populations.size() > 1 || CalculationFailed(m)) lines.push_back(PopulationsOf(m));
        AddFileLines(m, lines);
    }
    return lines;
}

} // namespace Quillon
