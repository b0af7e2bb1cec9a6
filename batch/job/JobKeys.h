#pragma once
// The keys of a job's sections: their names and what their values may be.

#include "batch/job/JobText.h"

#include <string>
#include <string_view>
#include <vector>

namespace Quillon {

// The key of the scans of a set, whose value is a list of names with and without quotes.
inline constexpr const char* FileKey = "file";

// Each reads one line of its section into the reader's result. The key is in small letters. What is wrong
// with the line is a RuntimeError.
void ReadFitKey(JobReader& reader, const std::string& value);
void ReadConstantsKey(JobReader& reader, const std::string& value);
void ReadStudyKey(JobReader& reader, const std::string& value);
void ReadSetKey(JobReader& reader, JobSet& set, const std::string& value);
void ReadParameterLine(JobReader& reader, const std::string& name, const std::string& value);

// True for the name of a section that is for an option of its own and that a fit passes over: [simulation],
// [compare], [resampling], [profile], [approach], [plan].
bool IsStudySection(std::string_view section);

// The keys of [fit], of [constants], of such a section, or of any set.
std::vector<std::string> JobKeys(std::string_view section);

} // namespace Quillon
