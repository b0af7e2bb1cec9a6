#include "studies/methods/StudyLines.h"

#include "input/NUMINPUT.h"
#include "models/table/Catalogue.h"
#include "models/table/ParmScale.h"
#include "platform/Words.h"
#include "reporting/values/Correlation.h"
#include "studies/methods/ResamplingLines.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

namespace Quillon {

namespace {

std::string Number(const std::optional<double>& value, const char* picture) {
    return value ? FormatNumber(*value, picture) : "";
}

// A probability too small for a double is none of 0.
std::string ProbabilityText(const std::optional<double>& p) {
    return p && *p < 1e-300 ? "< 1E-300" : Number(p, "0.0E-##");
}

std::vector<std::string> ComparedCells(const ComparedModel& row) {
    const auto fit = [&](const std::string& text) { return row.HasFit ? text : std::string(); };
    return {VariantText(row.Variant) + (row.IsOwn ? " (yours)" : ""),
            ModelReportName(row.Variant.Model),
            fit(std::to_string(row.Free)),
            fit(std::to_string(row.Freedom)),
            fit(SumText(row.SumSq)),
            fit(FormatNumber(row.Rms, "0.0000E-##")),
            Number(row.RunsZ, "#0.00"),
            row.Reference,
            Number(row.F, "#0.00"),
            ProbabilityText(row.P),
            Number(row.DeltaAicc, "#0.00"),
            Number(row.DeltaBic, "#0.00"),
            Number(row.Weight, "0.0000"),
            row.Notes};
}

std::string ShownLimit(const Profile& profile, const std::optional<double>& limit) {
    return limit ? SpreadText(SlotNo(profile.Slot), *limit) : std::string("(not reached)");
}

std::string LevelText(const ProfileLimits& limits) {
    return FormatNumber(limits.Level, "#0.0%");
}

std::string TitleOf(const ProfileStudy& study) {
    const std::vector<long> slots = SlotsOf(study);
    const std::string first = ParmCaption(SlotNo(slots[0]));
    if (slots.size() == 1) return "Profile of " + first;
    return "Map of " + first + " and " + ParmCaption(SlotNo(slots[1]));
}

TextTable LimitsOf(const Profile& profile) {
    TextTable table{"Minimum at " + SpreadText(SlotNo(profile.Slot), profile.MinimumValue) +
                        ", sum of squares " + SumText(profile.MinimumSumSq),
                    {"Level", "Ratio of sums", "Lower", "Upper"},
                    {}};
    for (const ProfileLimits& limits : profile.Limits)
        table.Rows.push_back({LevelText(limits), RatioText(limits.Ratio), ShownLimit(profile, limits.Lower),
                              ShownLimit(profile, limits.Upper)});
    return table;
}

TextTable LimitsOf(const ProfileMap& map) {
    TextTable table{"Minimum at " + SpreadText(SlotNo(map.Slots[0]), map.Minimum[0]) + " and " +
                        SpreadText(SlotNo(map.Slots[1]), map.Minimum[1]) + ", sum of squares " +
                        SumText(map.MinimumSumSq),
                    {"Level", "Ratio of sums up to"},
                    {}};
    for (const ProfileLimits& level : map.Levels)
        table.Rows.push_back({LevelText(level), RatioText(level.Ratio)});
    return table;
}

// As wide as a page: what follows from other columns is left out, and notes are sentences below.
StudySection SectionOf(const Comparison& comparison) {
    constexpr std::string_view LeftOut[] = {"D.F.", "RMS Residual", "Notes"};
    const TextTable whole = ComparisonTable(comparison);
    TextTable table{whole.Caption, {}, std::vector<std::vector<std::string>>(whole.Rows.size())};
    for (std::size_t column = 0; column < whole.Heads.size(); ++column) {
        if (std::find(std::begin(LeftOut), std::end(LeftOut), whole.Heads[column]) != std::end(LeftOut))
            continue;
        table.Heads.push_back(whole.Heads[column]);
        for (std::size_t row = 0; row < whole.Rows.size(); ++row)
            table.Rows[row].push_back(whole.Rows[row][column]);
    }
    StudySection section{"Comparison of models", {table}, {ComparisonPremise()}};
    for (const ComparedModel& row : comparison.Rows)
        if (!row.Notes.empty()) section.Remarks.push_back(VariantText(row.Variant) + ": " + row.Notes);
    return section;
}

StudySection SectionOf(const ProfileStudy& study) {
    StudySection section{TitleOf(study), {LimitsTable(study)}, {}};
    if (const std::string notes = NotesOf(study); !notes.empty()) section.Remarks.push_back(notes);
    return section;
}

StudySection SectionOf(const Resampling& resampling) {
    StudySection section{"Resampling", {ResamplingTable(resampling)}, {}};
    if (TextTable table = CorrelationsTable(resampling); !table.Rows.empty())
        section.Tables.push_back(std::move(table));
    if (const std::string known = QuantileText(resampling); !known.empty()) section.Remarks.push_back(known);
    return section;
}

// --- lines of a report -----------------------------------------------------------------------------------

using Lines = std::vector<std::string>;

void Add(Lines& lines, const Lines& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

// "    2 (yours), monomer - dimer: 8 fitted, sum 1.234567E-3, ..., weight 0.9731"
std::string ComparedLine(const std::vector<std::string>& heads, const std::vector<std::string>& cells) {
    std::string line = "    " + cells[0] + ", " + cells[1] + ": ";
    std::string between;
    for (std::size_t i = 2; i < cells.size(); ++i) {
        if (cells[i].empty()) continue;
        line += between + heads[i] + " " + cells[i];
        between = ", ";
    }
    return line;
}

Lines LinesOf(const Comparison& comparison) {
    const TextTable table = ComparisonTable(comparison);
    Lines lines{"", "Comparison of models:"};
    for (const std::vector<std::string>& row : table.Rows)
        lines.push_back(ComparedLine(table.Heads, row));
    lines.push_back("  " + std::string(ComparisonPremise()));
    return lines;
}

Lines LinesOf(const ProfileStudy& study) {
    Lines lines{"", TitleOf(study) + ":", "    " + LimitsTable(study).Caption};
    if (const Profile* profile = std::get_if<Profile>(&study))
        for (const ProfileLimits& limits : profile->Limits)
            lines.push_back("    " + LimitsText(*profile, limits));
    if (const std::string notes = NotesOf(study); !notes.empty()) lines.push_back("  " + notes);
    return lines;
}

Lines LinesOf(const Resampling& resampling, int columns) {
    Lines lines{""};
    Add(lines, ResamplingLines(resampling));
    Add(lines, TriangleLines(resampling.Names, resampling.Correlations, columns));
    return lines;
}

} // namespace

TextTable ComparisonTable(const Comparison& comparison) {
    TextTable table{"Models fitted to the same points",
                    {"Model", "Name", "Fitted", "D.F.", "Sum of Squares", "RMS Residual", "Runs Z", "Against",
                     "F", "p", "Delta AICc", "Delta BIC", "Weight", "Notes"},
                    {}};
    for (const ComparedModel& row : comparison.Rows)
        table.Rows.push_back(ComparedCells(row));
    return table;
}

const char* ComparisonPremise() {
    return "F, AICc, BIC and weights take the residuals for independent. A runs Z above 2 says that they are "
           "not: then differences of a few units say nothing.";
}

TextTable LimitsTable(const ProfileStudy& study) {
    return std::visit([](const auto& found) { return LimitsOf(found); }, study);
}

std::string LimitsText(const Profile& profile, const ProfileLimits& limits) {
    return LevelText(limits) + ": " + ShownLimit(profile, limits.Lower) + " to " +
           ShownLimit(profile, limits.Upper);
}

std::string NotesOf(const ProfileStudy& study) {
    if (const Profile* profile = std::get_if<Profile>(&study)) return Joined(profile->Notes);
    const ProfileMap& map = std::get<ProfileMap>(study);
    std::vector<std::string> sentences;
    if (map.Better) sentences.push_back("A lower minimum was met on the way; the map starts from it.");
    for (const ProfileLimits& level : map.Levels)
        sentences.push_back("The region of " + LevelText(level) + " has ratios up to " +
                            RatioText(level.Ratio) + ".");
    return Joined(sentences);
}

TextTable CorrelationsTable(const Resampling& resampling) {
    TextTable table{"How they go together over these fits (correlations)", {"Quantity"}, {}};
    if (resampling.Correlations.size() < 2) return table;
    for (std::size_t a = 0; a < resampling.Correlations.size(); ++a) {
        table.Heads.push_back(std::to_string(a + 1));
        std::vector<std::string> row{std::to_string(a + 1) + " " + resampling.Names[a]};
        for (const double r : resampling.Correlations[a])
            row.push_back(CoefficientText(r));
        row.resize(resampling.Correlations.size() + 1);
        table.Rows.push_back(std::move(row));
    }
    return table;
}

std::vector<StudySection> StudySections(const StudyResults& studies) {
    std::vector<StudySection> sections;
    if (studies.Compared) sections.push_back(SectionOf(*studies.Compared));
    for (const ProfileStudy& study : studies.Profiles)
        sections.push_back(SectionOf(study));
    if (studies.Resampled && !studies.Resampled->Spreads.empty())
        sections.push_back(SectionOf(*studies.Resampled));
    return sections;
}

std::vector<std::string> StudyLines(const StudyResults& studies, int columns) {
    Lines lines;
    if (studies.Compared) Add(lines, LinesOf(*studies.Compared));
    for (const ProfileStudy& study : studies.Profiles)
        Add(lines, LinesOf(study));
    if (studies.Resampled) Add(lines, LinesOf(*studies.Resampled, columns));
    return lines;
}

std::string SumText(double sum) {
    return std::isfinite(sum) ? FormatNumber(sum, "0.000000E-##") : "";
}

std::string RatioText(double ratio) {
    return std::isfinite(ratio) ? FormatNumber(ratio, "#0.00000") : "";
}

} // namespace Quillon
