#include "batch/job/JobData.h"

#include "batch/console/BatchPlatform.h"
#include "input/NUMINPUT.h"
#include "scandata/range/BaselineShift.h"
#include "scandata/range/ProposeRange.h"
#include "scandata/range/RangeDoubts.h"
#include "scandata/range/Spikes.h"
#include "scandata/reader/AdoptScan.h"
#include "scandata/reader/IntensityScan.h"
#include "scandata/reader/MeanScan.h"
#include "scandata/table/DataSetTable.h"
#include "scandata/table/LeftOut.h"
#include "scandata/table/Temperatures.h"
#include "workspace/records/ReadingRemarks.h"

#include <cmath>

namespace Quillon {

namespace {

// A file that has not been read, told with the key of the job that named it. A file that could not be opened
// holds nothing invalid; and there is no ini file here that could raise the limit of points.
void RequireRead(const Job& job, const JobSet& set, const char* key, const std::string& path,
                 const ReadFailure& failure) {
    if (failure.Kind == ReadFailure::Kinds::None) return;
    const bool content = failure.Kind == ReadFailure::Kinds::Content;
    const bool many = failure.Kind == ReadFailure::Kinds::TooManyPoints;
    FailJob(job, SetSection(set.Number), key,
            path + ": " + (content ? failure.Sentence + ": " : "") + failure.Reason +
                (many ? "; max-points-per-set in [fit] allows more" : ""));
}

void CheckHeader(const Job& job, const JobSet& set, const std::string& path) {
    const auto fail = [&](const std::string& reason) {
        FailJob(job, SetSection(set.Number), "file", path + ": " + reason);
    };
    if (!(Work.ScanRPM[set.Number] > 0.0F)) fail("the header holds no rotor speed");
    const bool celsius = Work.TemperatureScale == TemperatureScales::Celsius;
    if (celsius && Work.ScanTemperature[set.Number] == 0.0F && job.Sets.size() > 1)
        fail("the header holds a temperature of 0, which cannot be related to other sets");
    if (!(Work.ScanTemperature[set.Number] > -273.15F)) fail("the temperature is below absolute zero");
}

std::vector<std::string> ScanPathsOf(const Job& job, const JobSet& set) {
    std::vector<std::string> paths;
    for (const std::string& name : ScanNamesOf(job, set)) {
        if (name.empty())
            FailJob(job, SetSection(set.Number), "file", "there is no name between two of its commas");
        paths.push_back(JobFilePath(job, name));
    }
    return paths;
}

void ReadSetScan(const Job& job, const JobSet& set) {
    const MeanReadResult mean = AdoptMean(ScanPathsOf(job, set), RowNo(set.Number));
    const ScanReadResult& read = mean.Read;
    RequireRead(job, set, "file", mean.Path, read.Failure);
    if (!read.Remark.empty())
        WriteConsole(JobMessage(job, SetSection(set.Number), "file", mean.Path + ": " + read.Remark));
    CheckHeader(job, set, mean.Path);
}

void TellOfSet(const Job& job, const JobSet& set, const char* key, const std::string& text) {
    WriteConsole(JobMessage(job, SetSection(set.Number), key, text));
}

// The columns of intensity scans: as the job says, the others by their scans together.
void SettleIntensities(const Job& job) {
    std::vector<RowNo> open;
    for (const JobSet& set : job.Sets) {
        const RowNo row(set.Number);
        const bool intensity = Work.IntensityOrder[row] != IntensityOrders::None;
        if (set.Intensity == IntensityOrders::None)
            open.push_back(row);
        else if (intensity)
            SetIntensityOrder(row, set.Intensity);
        else
            FailJob(job, SetSection(set.Number), "intensity", "the scan holds no intensities");
    }
    DecideIntensityOrders(open);
    for (const JobSet& set : job.Sets)
        if (const std::string remark = IntensityRemark(RowNo(set.Number)); !remark.empty())
            TellOfSet(job, set, "file", ScanPathsOf(job, set).back() + ": " + remark);
}

std::string CentimetreRange(float inner, float outer) {
    return SingleText(inner) + " to " + SingleText(outer) + " cm";
}

std::string ExclusionText(const Exclusion& exclusion) {
    return exclusion.From == exclusion.To ? SingleText(exclusion.From) + " cm"
                                          : CentimetreRange(exclusion.From, exclusion.To);
}

// Before channel and range, which count from the readings that remain.
void LeaveReadingsOut(const Job& job, const JobSet& set) {
    const RowNo row(set.Number);
    for (const Exclusion& exclusion : set.Exclude) {
        const long met = Exclude(row, exclusion);
        if (met < 0) FailJob(job, SetSection(set.Number), "exclude", "no reading of the scan is left");
        if (met == 0)
            TellOfSet(job, set, "exclude", "the scan has no reading at " + ExclusionText(exclusion));
    }
    if (set.Ceiling && !SetCeiling(row, *set.Ceiling))
        FailJob(job, SetSection(set.Number), "ceiling",
                "no reading is left: all signals lie above " + SingleText(*set.Ceiling));
}

// The optics is the same for all sets: the job's word, or the last scan's.
void SettleOptics(const Job& job) {
    if (job.Data == JobData::ByScans) return;
    Work.InterferenceData = Flag(job.Data == JobData::Interference);
    Work.DataTypeName = Work.InterferenceData ? "Fringes" : "Absorbance";
}

void ChooseChannel(const Job& job, const JobSet& set) {
    const RowNo row(set.Number);
    Work.CenterpieceType[row] = set.Samples ? set.Samples : Work.CellType;
    if (SetChannel(row, set.Channel) || set.Channel == 0) return;
    FailJob(job, SetSection(set.Number), "channel", NoPointsInChannel(row, set.Channel));
}

// The range that the desktop proposes, without anybody to look at it.
void ProposeSetRange(const Job& job, const JobSet& set) {
    const RowNo row(set.Number);
    const PointRange range = ProposeRangeOf(row);
    if (range.First == 0)
        FailJob(job, SetSection(set.Number), "range",
                "there is no stretch without a break that could be proposed");
    Work.FitRange[0][row] = ToInt16(range.First);
    Work.FitRange[1][row] = ToInt16(range.Last);
    const OneBased<float>& radii = Work.ScanRadius[row];
    WriteConsole(JobMessage(job, SetSection(set.Number), "range",
                            "proposed: " + CentimetreRange(radii[range.First], radii[range.Last])));
}

void ChooseRange(const Job& job, const JobSet& set) {
    if (set.AutoRange) return ProposeSetRange(job, set);
    if (!set.Inner && !set.Outer) return;
    const RowNo row(set.Number);
    const float inner = set.Inner.value_or(Work.ScanRadius[row][Work.FitRange[0][row]]);
    const float outer = set.Outer.value_or(Work.ScanRadius[row][Work.FitRange[1][row]]);
    if (!SetRadialRange(row, inner, outer))
        FailJob(job, SetSection(set.Number), set.Inner ? "inner" : "outer",
                "the scan has no points from " + CentimetreRange(inner, outer));
}

// "6.95, 7.01", as the key takes them.
std::string RadiiOf(RowNo row, const std::vector<long>& points) {
    std::string text;
    for (const long p : points)
        text += (text.empty() ? "" : ", ") + SingleText(Work.ScanRadius[row][p]);
    return text;
}

// What the desktop proposes, for whoever wants to know it; nothing is left out by it.
void TellProposals(const Job& job, const JobSet& set) {
    const RowNo row(set.Number);
    const long first = Work.FitRange[0][row];
    const long last = Work.FitRange[1][row];
    if (set.TellSpikes) {
        const std::vector<long> spikes = FindSpikes(Work.ScanRadius[row], Work.ScanValue[row], first, last);
        TellOfSet(job, set, "exclude",
                  spikes.empty() ? "no reading stands out from its neighbours"
                                 : "readings that stand out from their neighbours: exclude = " +
                                       RadiiOf(row, spikes) + " leaves them out");
    }
    if (!set.TellCeiling) return;
    const float ceiling = ProposeCeilingOf(row, first, last);
    TellOfSet(job, set, "ceiling",
              ceiling > 0.0F ? "the noise grows above: ceiling = " + SingleText(ceiling) + " leaves that out"
                             : "the noise does not grow with the signal");
}

// A range is chosen where the job says anything about it, even if that is the whole scan.
void WarnOfRange(const Job& job, const JobSet& set) {
    const bool chosen = set.Inner || set.Outer || set.Channel > 0 || set.AutoRange;
    const std::string doubts = RangeDoubts(RowNo(set.Number), chosen);
    if (doubts.empty()) return;
    WriteConsole(
        JobMessage(job, SetSection(set.Number), set.Outer && !set.Inner ? "outer" : "inner", doubts));
}

void ReadSetBaseline(const Job& job, const JobSet& set) {
    if (set.Baseline.empty()) return;
    const RowNo row(set.Number);
    const std::string path = JobFilePath(job, set.Baseline);
    RequireRead(job, set, "baseline", path, AdoptBaseline(path, row));
    if (const std::string remark = RemarkOfBaseline(Work, row); !remark.empty())
        WriteConsole(JobMessage(job, SetSection(set.Number), "baseline", path + ": " + remark));
    if (set.BaselineShift) SetBaselineShift(row, *set.BaselineShift);
}

// Ratios that the job does not name are 1, which is rarely true at another wavelength.
void SetRatios(const Job& job, const JobSet& set) {
    const RowNo row(set.Number);
    for (std::size_t species = 0; species < 2; ++species)
        Work.ExtinctionRatio[species][row] = set.ExtinctionRatio[species].value_or(1.0F);
    const float here = Work.ScanWavelength[row];
    const float first = Work.ScanWavelength[job.Sets.front().Number];
    if (Work.InterferenceData || std::fabs(here - first) <= 1.0F || set.ExtinctionRatio[0]) return;
    WriteConsole(JobMessage(job, SetSection(set.Number), "extinction-ratio-a",
                            "not given and taken as 1, though the scan is at " + SingleText(here) +
                                " nm and the first one at " + SingleText(first) + " nm"));
}

void SetConstraints(const JobSet& set) {
    const RowNo row(set.Number);
    Work.ConcConstraintA[row] = set.Loading[0];
    Work.ConcConstraintB[row] = set.Loading[1];
    Work.ConcToleranceA[row] = set.Tolerance[0] / 100.0F;
    Work.ConcToleranceB[row] = set.Tolerance[1] / 100.0F;
    Work.SetNoise[row] = set.Noise.value_or(0.0F);
    Work.OffsetLink[row] = ToInt16(set.OffsetOf);
    Work.ConcLink[row] = ToInt16(set.ConcentrationsOf);
    const bool loaded = set.Loading[0] > 0.0F || set.Loading[1] > 0.0F;
    const int bits = (loaded ? ConcentrationBit : 0) | (set.OffsetOf > 0 ? OffsetBit : 0);
    Work.ConstraintFlags = ToInt16(Work.ConstraintFlags | bits);
}

void WarnOfTemperatures(const Job& job) {
    for (const TemperatureDoubt& doubt : TemperatureDoubts(RowsInFit()))
        WriteConsole(JobMessage(job, SetSection(static_cast<int>(doubt.Row.Number)), "file",
                                doubt.Text + "; with temperature-scale = kelvin in [constants] sigma follows "
                                             "absolute temperatures"));
}

} // namespace

void ReadJobData(const Job& job) {
    Work.IncludeSet[1] = 0; // unless the job has a set 1
    for (const JobSet& set : job.Sets)
        ReadSetScan(job, set);
    SettleIntensities(job);
    SettleOptics(job);
    for (const JobSet& set : job.Sets) {
        if (set.Path) Work.CellPath[set.Number] = *set.Path;
        ReadSetBaseline(job, set);
        LeaveReadingsOut(job, set);
        ChooseChannel(job, set);
        ChooseRange(job, set);
        TellProposals(job, set);
        if (const std::string remark = MeanRemark(RowNo(set.Number)); !remark.empty())
            TellOfSet(job, set, "file", remark);
        SetRatios(job, set);
        SetConstraints(set);
    }
    for (const JobSet& set : job.Sets) // a job that cannot be read has its failure told alone
        WarnOfRange(job, set);
    WarnOfTemperatures(job);
}

} // namespace Quillon
