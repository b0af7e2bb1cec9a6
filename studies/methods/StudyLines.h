#pragma once
// What studies have found, as tables for forms and documents and as lines for reports.

#include "reporting/MethodsTable.h"
#include "studies/methods/StudyResults.h"

#include <string>
#include <vector>

namespace Quillon {

// A row for each model of the list, in its order; what a model does not have is empty.
TextTable ComparisonTable(const Comparison& comparison);

// What F, AICc, BIC and weights take for granted, in words.
const char* ComparisonPremise();

// A row for each level: the limits of the parameter, or how far the region of a map goes.
TextTable LimitsTable(const ProfileStudy& study);

// "95.0%: 1.234 to 1.567"
std::string LimitsText(const Profile& profile, const ProfileLimits& limits);

// What is to be known of a profile or a map, in sentences; "" nothing.
std::string NotesOf(const ProfileStudy& study);

// The correlations of the fits to resampled data, lower triangle; without rows for fewer than two parameters.
TextTable CorrelationsTable(const Resampling& resampling);

// A part of a document.
struct StudySection {
    std::string Title;
    std::vector<TextTable> Tables;
    std::vector<std::string> Remarks;
};
std::vector<StudySection> StudySections(const StudyResults& studies);

// The same as lines of a report, each study behind an empty line; tables that would be wider than a paper of
// so many characters are broken into groups of columns.
std::vector<std::string> StudyLines(const StudyResults& studies, int columns);

// A sum of squares and a ratio of sums as tables show them; "" for one that is not finite.
std::string SumText(double sum);
std::string RatioText(double ratio);

} // namespace Quillon
