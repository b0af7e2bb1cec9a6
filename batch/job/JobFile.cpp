// The lines of a job file: comments, sections, keys and what stands twice. Values are read in JobKeys.cpp.
#include "batch/job/JobFile.h"

#include "batch/console/OneLine.h"
#include "batch/job/JobChecks.h"
#include "batch/job/JobKeys.h"
#include "batch/job/JobText.h"
#include "platform/Letters.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"

#include <algorithm>

namespace Quillon {

namespace {

bool StartsComment(std::string_view line) {
    return line.empty() || line[0] == ';' || line[0] == '#';
}

// text up to a ";" that stands at its start or behind a blank.
std::string_view WithoutComment(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == ';' && (i == 0 || text[i - 1] == ' ' || text[i - 1] == '\t')) return text.substr(0, i);
    return text;
}

// The value behind the "=": without blanks around it and comment, or what stands in double quotes.
std::string ValueText(const JobReader& reader, std::string_view text) {
    text = Trimmed(text);
    if (text.empty() || text[0] != '"') return std::string(Trimmed(WithoutComment(text)));
    const std::size_t end = text.find('"', 1);
    if (end == std::string_view::npos) reader.Fail("the closing quote is missing");
    if (!StartsComment(Trimmed(text.substr(end + 1)))) reader.Fail("there is text behind the closing quote");
    return std::string(text.substr(1, end - 1));
}

std::string FilledValue(const JobReader& reader, const std::string& value) {
    if (!reader.Row) return value;
    std::string filled;
    try {
        filled = Filled(value, *reader.Row);
    } catch (const RuntimeError& error) {
        reader.Fail(error.Text);
    }
    if (filled.find_first_of("\r\n") != std::string::npos) reader.Fail("the cell holds an end of line");
    return filled;
}

// Takes the name in quotes at the front off rest, and the comma behind it. True where another one follows.
bool TakeQuotedFile(const JobReader& reader, std::string_view& rest, JobSet& set) {
    const std::size_t end = rest.find('"', 1);
    if (end == std::string_view::npos) reader.Fail("the closing quote is missing");
    set.Files.push_back(FilledValue(reader, std::string(rest.substr(1, end - 1))));
    set.File += '"' + set.Files.back() + '"';
    rest = Trimmed(rest.substr(end + 1));
    const bool more = rest.starts_with(',');
    if (!more && !StartsComment(rest)) reader.Fail("there is text behind the closing quote");
    if (more) rest.remove_prefix(1);
    return more;
}

// The same without quotes. A cell of a table may hold several names.
bool TakePlainFile(const JobReader& reader, std::string_view& rest, JobSet& set) {
    const std::string_view text = WithoutComment(rest);
    const std::size_t comma = text.find(',');
    const std::string value = FilledValue(reader, std::string(Trimmed(text.substr(0, comma))));
    set.File += value;
    for (const std::string_view name : PartsBetween(value, ','))
        set.Files.emplace_back(Trimmed(name));
    if (comma == std::string_view::npos) return false;
    rest.remove_prefix(comma + 1);
    return true;
}

// The scans of a set: names between commas. A single name stands without its quotes.
void ReadFiles(const JobReader& reader, std::string_view rest, JobSet& set) {
    while (true) {
        rest = Trimmed(rest);
        const bool more =
            rest.starts_with('"') ? TakeQuotedFile(reader, rest, set) : TakePlainFile(reader, rest, set);
        if (!more) break;
        set.File += ',';
        // The blanks behind the comma as they stand: a file may be named so.
        set.File += rest.substr(0, rest.size() - Trimmed(rest).size());
    }
    if (set.Files.size() == 1) set.File = set.Files.front();
    if (set.File.empty()) reader.Fail("has no value");
}

const JobPlace* FindPlace(const Job& job, std::string_view section, std::string_view key) {
    const auto place = std::find_if(job.Places.begin(), job.Places.end(),
                                    [&](const JobPlace& p) { return p.Section == section && p.Key == key; });
    return place == job.Places.end() ? nullptr : &*place;
}

// Notes that the present section or key stands here; a second time is an error.
void NotePlace(JobReader& reader) {
    if (const JobPlace* first = FindPlace(reader.Result, reader.Section, reader.Key))
        reader.Fail("stands twice, first in line " + std::to_string(first->Line));
    reader.Result.Places.push_back({reader.Section, reader.Key, reader.Line});
}

// The name in the brackets: small letters, one blank between its words.
std::string SectionName(const JobReader& reader, std::string_view line) {
    const std::size_t end = line.find(']');
    if (end == std::string_view::npos) reader.Fail(Quoted(line) + " has no closing bracket");
    if (!StartsComment(Trimmed(line.substr(end + 1))))
        reader.Fail(Quoted(line) + " has text behind the closing bracket");
    std::string_view rest = line.substr(1, end - 1);
    std::string name;
    for (std::string_view word = NextWord(rest); !word.empty(); word = NextWord(rest))
        name += (name.empty() ? "" : " ") + SmallLetters(word);
    return name;
}

void ReadSection(JobReader& reader, std::string_view line) {
    reader.Section.clear();
    reader.Key.clear();
    const std::string name = SectionName(reader, line);
    const bool isSet = name.starts_with("set ");
    if (!isSet && name != "fit" && name != "constants" && name != "parameters" && !IsStudySection(name))
        reader.Fail(Quoted(line) + " is an unknown section");
    reader.Section = name;
    if (isSet) {
        JobSet set;
        set.Number = ReadWhole(reader, std::string_view(name).substr(4), 1, StandardMaxSets);
        reader.Section = SetSection(set.Number); // "set 01" is set 1
        reader.Result.Sets.push_back(set);
    }
    NotePlace(reader);
}

void ReadKeyLine(JobReader& reader, std::string_view line) {
    reader.Key.clear();
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) reader.Fail(Quoted(line) + " is no line of the form key = value");
    const std::string written(Trimmed(line.substr(0, equals)));
    if (reader.Section.empty()) reader.Fail(Quoted(written) + " stands before the first section");
    if (written.empty()) reader.Fail("there is no key before the =");
    reader.Key = written.size() > 60 ? Quoted(written) : written;
    const bool isFile = reader.Section.starts_with("set ") && SmallLetters(written) == FileKey;
    const std::string value = isFile ? "" : FilledValue(reader, ValueText(reader, line.substr(equals + 1)));
    if (value.empty() && !isFile) reader.Fail("has no value");
    if (reader.Section == "parameters") {
        ReadParameterLine(reader, written, value);
        return;
    }
    reader.Key = SmallLetters(reader.Key);
    NotePlace(reader);
    if (isFile) return ReadFiles(reader, line.substr(equals + 1), reader.Result.Sets.back());
    if (reader.Section == "fit")
        ReadFitKey(reader, value);
    else if (reader.Section == "constants")
        ReadConstantsKey(reader, value);
    else if (IsStudySection(reader.Section))
        ReadStudyKey(reader, value);
    else
        ReadSetKey(reader, reader.Result.Sets.back(), value);
}

void ReadLine(JobReader& reader, std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    line = Trimmed(line);
    if (line.find('\0') != std::string_view::npos) {
        reader.Section.clear();
        reader.Key.clear();
        reader.Fail("this is no text file");
    }
    if (StartsComment(line)) return;
    if (line[0] == '[')
        ReadSection(reader, line);
    else
        ReadKeyLine(reader, line);
}

} // namespace

const JobSet* Job::FindSet(int number) const {
    for (const JobSet& set : Sets)
        if (set.Number == number) return &set;
    return nullptr;
}

int Job::LineOf(std::string_view section, std::string_view key) const {
    const JobPlace* place = FindPlace(*this, section, key);
    if (!place) place = FindPlace(*this, section, "");
    return place ? place->Line : 0;
}

namespace {

// The lines of a job, each read by itself.
Job ReadLines(std::string_view text, const std::string& path, const JobRow* row) {
    JobReader reader;
    reader.Row = row;
    reader.Result.Path = path;
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3); // the mark that some editors put in front
    while (!text.empty()) {
        ++reader.Line;
        const std::size_t end = std::min(text.find('\n'), text.size());
        ReadLine(reader, text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    auto& sets = reader.Result.Sets;
    std::sort(sets.begin(), sets.end(), [](const JobSet& a, const JobSet& b) { return a.Number < b.Number; });
    return std::move(reader.Result);
}

} // namespace

Job ParseJob(std::string_view text, const std::string& path, const JobRow* row) {
    Job job = ReadLines(text, path, row);
    CheckJob(job);
    return job;
}

ApproachRange ParseApproachJob(std::string_view text, const std::string& path) {
    const Job job = ReadLines(text, path, nullptr);
    for (const JobPlace& place : job.Places)
        if (place.Section != ApproachSection)
            FailJob(job, place.Section, place.Key, "a job beside --sort has the section [approach] alone");
    const ApproachRange& range = job.Approach;
    if (range.Inner && range.Outer && !(*range.Inner < *range.Outer))
        FailJob(job, ApproachSection, "outer", "does not lie beyond inner");
    return range;
}

std::string JobMessage(const Job& job, std::string_view section, std::string_view key,
                       const std::string& reason) {
    return JobErrorLine(job.Path, job.LineOf(section, key), section, key, reason);
}

void FailJob(const Job& job, std::string_view section, std::string_view key, const std::string& reason) {
    RaiseError(JobMessage(job, section, key, reason));
}

void FailParameter(const Job& job, const JobParameter& parameter, const std::string& reason) {
    RaiseError(JobErrorLine(job.Path, parameter.Line, "parameters", parameter.Name, reason));
}

std::string SetSection(int number) {
    return "set " + std::to_string(number);
}

std::vector<std::string> ScanNamesOf(const Job& job, const JobSet& set) {
    if (set.Files.size() > 1 && Host.FileExists(JobFilePath(job, set.File))) return {set.File};
    return set.Files;
}

std::string JobFilePath(const Job& job, const std::string& path) {
    return IsAbsolutePath(path) ? path : JoinPath(DirectoryOf(job.Path), path);
}

} // namespace Quillon
