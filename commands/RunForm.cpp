#include "commands/RunForm.h"

#include "chart/Charts.h"
#include "graphs/kinds/ApproachGraph.h"
#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"
#include "platform/FormControls.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/Words.h"
#include "runs/Approach.h"
#include "runs/ReadRun.h"
#include "workspace/records/SameSettings.h"
#include "workspace/records/Workspace.h"

#include <algorithm>

namespace Quillon {

RunFormRecord RunForm;

namespace {

constexpr std::uint32_t Settled = 0x00286400;   // green
constexpr std::uint32_t Unsettled = 0x000038B0; // a red that is none of an error

const SortedRun* Run = nullptr; // that the form shows

const RunGroup& GroupOf(const RunLine& line) {
    return Run->Groups[line.Group];
}

// --- lines -----------------------------------------------------------------------------------------------

std::string Hours(std::int32_t seconds) {
    return FormatNumber(static_cast<double>(seconds) / 3600.0, "0.0") + " h";
}

std::uint32_t ColorOf(AtEquilibrium answer) {
    if (answer == AtEquilibrium::Yes) return Settled;
    return answer == AtEquilibrium::Unknown ? DefaultColor : Unsettled;
}

std::uint32_t ColorOf(const RunGroup& group) {
    if (!HasLast(group) || group.Scans.size() == 1) return DefaultColor;
    const std::string text = ApproachText(*Run, group);
    return text.starts_with("at equilibrium") ? Settled : Unsettled;
}

std::string SpanOfTimes(const RunGroup& group) {
    const std::int32_t first = Run->Scans[group.Scans.front()].Head.Time;
    const std::int32_t last = Run->Scans[group.Scans.back()].Head.Time;
    return first == last ? Hours(first) : Hours(first) + " to " + Hours(last);
}

std::string ScanText(const RunScan& scan) {
    const std::string title = ShownName(FileTitle(scan.File));
    return scan.Name.Scan ? std::to_string(*scan.Name.Scan) + "   " + title : title;
}

std::string AnswerText(const RunGroup& group, std::size_t i) {
    if (!HasLast(group)) return "";
    const ScanJudgement& judged = group.Judged[i];
    std::string text = i == group.Last ? "last" : std::string();
    if (i != group.Last)
        text = judged.Answer == AtEquilibrium::Yes       ? "agrees with the last"
               : judged.Answer == AtEquilibrium::Outlier ? "stands out"
               : judged.Answer == AtEquilibrium::No      ? "differs from the last"
                                                         : "";
    if (judged.Rms && i != group.Last) text += ", rms " + FormatNumber(*judged.Rms, "0.0E-00");
    return text;
}

RunLine GroupLine(std::size_t g) {
    const RunGroup& group = Run->Groups[g];
    RunLine line;
    line.Depth = 2;
    line.Group = g;
    line.CanTick = HasLast(group);
    const std::string optics =
        group.Optics == ScanOptics::Absorbance ? "" : std::string(", ") + OpticsWord(group.Optics);
    line.Texts = {SingleText(LastOf(*Run, group).Head.Wavelength) + " nm" + optics,
                  Counted(std::ssize(group.Scans), "scan"), SpanOfTimes(group), ApproachText(*Run, group)};
    line.Color = ColorOf(group);
    return line;
}

RunLine ScanLine(std::size_t g, std::size_t i) {
    const RunGroup& group = Run->Groups[g];
    const RunScan& scan = Run->Scans[group.Scans[i]];
    RunLine line;
    line.Depth = 3;
    line.Group = g;
    line.Scan = i;
    line.CanTick = HasLast(group);
    line.Texts = {ScanText(scan), "", Hours(scan.Head.Time), AnswerText(group, i)};
    if (line.CanTick) line.Color = ColorOf(group.Judged[i].Answer);
    return line;
}

RunLine HeadLine(int depth, const std::string& text) {
    RunLine line;
    line.Depth = depth;
    line.Texts[0] = text;
    return line;
}

void AddGroup(std::size_t g) {
    const RunGroup& group = Run->Groups[g];
    const RunGroup* before = g > 0 ? &Run->Groups[g - 1] : nullptr;
    const bool newCell = !before || before->Cell != group.Cell;
    const float rpm = LastOf(*Run, group).Head.Rpm;
    if (newCell) RunForm.Lines.push_back(HeadLine(0, "Cell " + std::to_string(group.Cell)));
    if (newCell || !IsSameSpeed(LastOf(*Run, *before).Head.Rpm, rpm))
        RunForm.Lines.push_back(HeadLine(1, SingleText(rpm) + " rpm"));
    RunForm.Lines.push_back(GroupLine(g));
    for (std::size_t i = 0; i < group.Scans.size(); ++i)
        RunForm.Lines.push_back(ScanLine(g, i));
}

// The first line behind a line and all below it.
std::size_t EndOf(std::size_t line) {
    std::size_t end = line + 1;
    while (end < RunForm.Lines.size() && RunForm.Lines[end].Depth > RunForm.Lines[line].Depth)
        ++end;
    return end;
}

// Calls visit with each scan line below a line, or the line itself.
template <class Visit> void EachScanLine(std::size_t line, Visit&& visit) {
    const std::size_t end = EndOf(line);
    for (std::size_t i = line; i < end; ++i)
        if (RunForm.Lines[i].Depth == 3) visit(RunForm.Lines[i]);
}

// Counts of scans at the heads of cells and speeds, and whether anything below them can be ticked.
void CompleteHeads() {
    for (std::size_t i = 0; i < RunForm.Lines.size(); ++i) {
        RunLine& line = RunForm.Lines[i];
        if (line.Depth > 1) continue;
        std::size_t scans = 0;
        line.CanTick = false;
        EachScanLine(i, [&](const RunLine& scan) {
            ++scans;
            line.CanTick |= scan.CanTick;
        });
        line.Texts[1] = Counted(static_cast<long>(scans), "scan");
    }
}

// --- ticks -----------------------------------------------------------------------------------------------

bool IsStanding(const RunLine& scan) {
    const RunGroup& group = GroupOf(scan);
    if (!HasLast(group)) return false;
    if (RunForm.Average.Value == 0) return scan.Scan == group.Last;
    const std::vector<std::size_t> equal = EqualScans(group);
    return std::find(equal.begin(), equal.end(), scan.Scan) != equal.end();
}

void TickStanding(std::size_t line) {
    EachScanLine(line, [](RunLine& scan) { scan.Ticked = IsStanding(scan) ? RunLine::All : RunLine::None; });
}

bool HasTicks(std::size_t line) {
    bool any = false;
    EachScanLine(line, [&](const RunLine& scan) { any |= scan.Ticked == RunLine::All; });
    return any;
}

// A line above is ticked where every group below it has a scan in the choice.
void ShowTicks() {
    for (std::size_t i = 0; i < RunForm.Lines.size(); ++i) {
        RunLine& line = RunForm.Lines[i];
        if (line.Depth == 3) continue;
        bool any = false, all = true;
        const std::size_t end = EndOf(i);
        for (std::size_t g = i; g < end; ++g) {
            if (RunForm.Lines[g].Depth != 2 || !RunForm.Lines[g].CanTick) continue;
            const bool has = HasTicks(g);
            any = any || has;
            all = all && has;
        }
        line.Ticked = !any ? RunLine::None : all ? RunLine::All : RunLine::Some;
    }
}

// --- sets ------------------------------------------------------------------------------------------------

std::vector<WavelengthRatio> GivenRatios() {
    std::vector<WavelengthRatio> ratios;
    for (const RunRatio& ratio : RunForm.Ratios) {
        if (ratio.A.Text.empty()) continue;
        const float a = NumValue(ratio.A.Text);
        ratios.push_back({ratio.Wavelength, a, ratio.B.Text.empty() ? a : NumValue(ratio.B.Text)});
    }
    return ratios;
}

// A set for each column of each scan that is ticked, or of the mean of those of a group.
std::vector<RunSet> TickedSets() {
    std::vector<RunSet> sets;
    for (std::size_t i = 0; i < RunForm.Lines.size(); ++i) {
        if (RunForm.Lines[i].Depth != 2) continue;
        std::vector<std::vector<std::size_t>> choices;
        EachScanLine(i, [&](const RunLine& scan) {
            if (scan.Ticked != RunLine::All) return;
            if (choices.empty() || RunForm.Average.Value == 0) choices.emplace_back();
            choices.back().push_back(scan.Scan);
        });
        for (const std::vector<std::size_t>& scans : choices)
            for (const RunChannel& column : GroupOf(RunForm.Lines[i]).Channels)
                sets.push_back({RunForm.Lines[i].Group, scans, column, {}, false, 0});
    }
    RelateSets(*Run, sets, GivenRatios());
    return sets;
}

void ShowCount() {
    const std::vector<RunSet> sets = TickedSets();
    const std::string why = WhyNoAnalysis(*Run, sets);
    RunForm.OkButton.Enabled = why.empty();
    RunForm.Count.ForeColor = why.empty() ? DefaultColor : RedColor;
    const auto shared =
        std::count_if(sets.begin(), sets.end(), [](const RunSet& set) { return set.ConcentrationsOf > 0; });
    RunForm.Count.Text = sets.empty() ? "Nothing is ticked."
                         : !why.empty()
                             ? why + "."
                             : std::to_string(sets.size()) + (sets.size() == 1 ? " data set" : " data sets") +
                                   " of at most " + std::to_string(StandardMaxSets) +
                                   (shared > 0 ? "; " + std::to_string(shared) +
                                                     " take their concentrations from another wavelength"
                                               : "") +
                                   ".";
}

void Ticked() {
    ShowTicks();
    ShowCount();
}

// --- ratios ----------------------------------------------------------------------------------------------

Control& RatioBox(std::size_t ratio, std::size_t species) {
    return species == 0 ? RunForm.Ratios[ratio].A : RunForm.Ratios[ratio].B;
}

std::vector<float> WavelengthsOfRun() {
    std::vector<float> wavelengths;
    for (const RunGroup& group : Run->Groups)
        if (HasLast(group) && group.Optics != ScanOptics::Interference)
            wavelengths.push_back(LastOf(*Run, group).Head.Wavelength);
    std::sort(wavelengths.begin(), wavelengths.end());
    std::vector<float> apart;
    for (const float wavelength : wavelengths)
        if (apart.empty() || !IsSameWavelength(apart.back(), wavelength)) apart.push_back(wavelength);
    return apart;
}

void LoadRatios() {
    const std::vector<float> wavelengths = WavelengthsOfRun();
    RunForm.RatioHead = Captioned("Extinction at each wavelength, A and B (1 for the wavelength in whose "
                                  "signal concentrations are counted; without B as for A):");
    RunForm.RatioHead.Visible = wavelengths.size() > 1;
    if (wavelengths.size() < 2) return;
    for (const float wavelength : wavelengths)
        RunForm.Ratios.push_back(
            {wavelength, Captioned(SingleText(wavelength) + " nm"),
             Captioned("", "Extinction of species A at this wavelength over that in which concentrations are "
                           "counted"),
             Captioned("", "The same of species B; empty: that of A")});
}

// What has to be told before sets are read; "" where all ratios are known.
std::string MissingRatios(const std::vector<RunSet>& sets) {
    std::vector<float> told;
    std::string list;
    for (const RunSet& set : sets) {
        const float wavelength = LastOf(*Run, Run->Groups[set.Group]).Head.Wavelength;
        const bool known = std::any_of(told.begin(), told.end(),
                                       [&](float other) { return IsSameWavelength(other, wavelength); });
        if (!set.LacksRatio || known) continue;
        told.push_back(wavelength);
        list += (list.empty() ? "" : ", ") + SingleText(wavelength) + " nm";
    }
    return list;
}

// --- captions --------------------------------------------------------------------------------------------

void NameControls() {
    RunForm.State.Caption = "Read a Run";
    RunForm.Head = Captioned(FileTitle(Run->Place) + ": " + Counted(std::ssize(Run->Scans), "scan") + ", " +
                             Counted(std::ssize(Run->Groups), "group") +
                             " of one cell, speed and wavelength. What is ticked goes into the table of "
                             "data sets.");
    RunForm.Columns = {"Cell, Speed, Wavelength, Scan", "Scans", "Time", "At Equilibrium?"};
    RunForm.AllButton = Captioned("Tick &All", "The last scan of each group");
    RunForm.NoneButton = Captioned("Tick &None", "Then tick cells, speeds or wavelengths one by one");
    RunForm.GraphButton =
        Captioned("&Graph...", "How the scans of the marked wavelength came to the last one");
    RunForm.Average = Captioned("A&verage the last equal scans",
                                "Of each group the scans that agree with the last one become one data set, "
                                "their mean by radius, with less noise");
    RunForm.OkButton = Captioned("OK", "Read what is ticked into the table of data sets");
    RunForm.CancelButton = Captioned("Cancel");
    for (const std::string& remark : Run->Remarks)
        RunForm.Remarks.Text += (RunForm.Remarks.Text.empty() ? "" : "\n") + remark;
    RunForm.Remarks.Visible = !Run->Remarks.empty();
}

void Close(DialogAnswer answer) {
    RunForm.Answer = answer;
    RunForm.State.Shown = false;
}

} // namespace

void LoadRunForm(const SortedRun& run) {
    RunForm = RunFormRecord{};
    Run = &run;
    NameControls();
    for (std::size_t g = 0; g < run.Groups.size(); ++g)
        AddGroup(g);
    CompleteHeads();
    LoadRatios();
    RunFormMark(0);
    RunFormAllButton();
    RunForm.State.FocusOn = RunForm.OkButton.Enabled ? &RunForm.OkButton : &RunForm.NoneButton;
    RunForm.State.Shown = true;
}

std::vector<RunSet> ShowRunForm(const SortedRun& run) {
    LoadRunForm(run);
    Host.ShowModal(RunFormName);
    std::vector<RunSet> sets;
    if (RunForm.Answer == DialogAnswer::Ok) sets = TickedSets();
    Run = nullptr;
    return sets;
}

void RunFormTick(std::size_t line) {
    RunLine& ticked = RunForm.Lines[line];
    if (!ticked.CanTick) return Host.Beep();
    if (ticked.Depth == 3)
        ticked.Ticked = ticked.Ticked == RunLine::All ? RunLine::None : RunLine::All;
    else if (ticked.Ticked == RunLine::All)
        EachScanLine(line, [](RunLine& scan) { scan.Ticked = RunLine::None; });
    else
        TickStanding(line);
    Ticked();
}

void RunFormMark(std::size_t line) {
    RunForm.Marked = line;
    const RunLine& marked = RunForm.Lines[line];
    RunForm.GraphButton.Enabled = marked.Depth >= 2 && marked.CanTick && GroupOf(marked).Scans.size() > 1;
}

void RunFormGraphButton() {
    if (!RunForm.GraphButton.Enabled) return;
    try {
        if (MakeApproachGraph(*Run, RunForm.Lines[RunForm.Marked].Group)) Host.ShowModal(ChartsName);
    } catch (const RuntimeError& error) {
        Tell(error.Text, Work.ProgramName, BoxIcon::Information);
    }
}

void RunFormAllButton() {
    for (std::size_t i = 0; i < RunForm.Lines.size(); ++i)
        if (RunForm.Lines[i].Depth == 2) TickStanding(i);
    Ticked();
}

void RunFormNoneButton() {
    for (RunLine& line : RunForm.Lines)
        line.Ticked = RunLine::None;
    Ticked();
}

void RunFormAverage() {
    for (std::size_t i = 0; i < RunForm.Lines.size(); ++i)
        if (RunForm.Lines[i].Depth == 2 && HasTicks(i)) TickStanding(i);
    Ticked();
}

void RunFormRatioGotFocus(std::size_t ratio, std::size_t species) {
    NumGotFocus(RatioBox(ratio, species));
}

int RunFormRatioKeyPress(std::size_t ratio, std::size_t species, int key) {
    return NumKeyPress(RatioBox(ratio, species), key);
}

void RunFormRatioLostFocus(std::size_t ratio, std::size_t species) {
    Control& box = RatioBox(ratio, species);
    NumLostFocus(box);
    if (!RunForm.State.Shown) return;
    if (!box.Text.empty() && !(NumValue(box.Text) > 0.0F)) {
        box.Text.clear();
        Host.Beep();
        Tell("You must enter a positive, non-zero value for the extinction ratio", Work.ProgramName,
             BoxIcon::Warning);
        RunForm.State.FocusOn = &box;
    }
    ShowCount();
}

void RunFormOkButton() {
    for (std::size_t i = 0; i < RunForm.Ratios.size(); ++i)
        for (const std::size_t species : {std::size_t{0}, std::size_t{1}})
            if (const std::string& text = RatioBox(i, species).Text;
                !text.empty() && !(NumValue(text) > 0.0F))
                return RunFormRatioLostFocus(i, species);
    const std::string missing = MissingRatios(TickedSets());
    if (!missing.empty() &&
        !AskYesNo(
            "There is no extinction for " + missing +
                ".\n\nIt is taken as 1 then, and its sets share no concentrations. Do you want to go on "
                "without it?",
            Work.ProgramName, BoxAnswer::No, BoxIcon::Warning)) {
        RunForm.State.FocusOn = &RunForm.Ratios.front().A;
        return;
    }
    Close(DialogAnswer::Ok);
}

void RunFormCancelButton() {
    Close(DialogAnswer::Cancel);
}

} // namespace Quillon
