// The reference pages of the manual against the program: every key, option, graph and model
// stands in them, and what they show is taken.
#include "batch/graphs/Graphs.h"
#include "batch/job/JobFile.h"
#include "batch/job/JobKeys.h"
#include "batch/options/HelpText.h"
#include "batch/options/Options.h"
#include "models/table/Catalogue.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

namespace Quillon {
namespace {

const std::string JobPage = "docs/manual/job-file.md";
const std::string ModelsPage = "docs/manual/models.md";
const std::string ResultsPage = "docs/manual/results-file.md";
const std::string CommandPage = "docs/manual/command-line.md";

// The part of a page from a heading to the next one.
std::string Under(const std::string& page, const std::string& heading) {
    const std::string text = ReadWholeFile(QUILLON_SOURCE "/" + page);
    const std::size_t start = text.find("\n" + heading + "\n");
    EXPECT_NE(start, std::string::npos) << heading;
    const std::size_t body = start + heading.size() + 2;
    return text.substr(body, text.find("\n#", body) - body);
}

// The lines of the first indented block, without the indent.
std::string Block(const std::string& text) {
    std::string block;
    for (const std::string& line : LinesOf(text)) {
        if (line.starts_with("    "))
            block += line.substr(4) + "\n";
        else if (line.empty() && !block.empty())
            block += "\n";
        else if (!block.empty())
            break;
    }
    return block;
}

void ExpectKeys(const std::string& section, const std::string& heading) {
    const std::string text = Under(JobPage, heading);
    for (const std::string& key : JobKeys(section))
        EXPECT_NE(text.find("`" + key + "`"), std::string::npos) << key;
}

TEST(ReferencePages, NameEveryKey) {
    ExpectKeys("fit", "## Section [fit]");
    ExpectKeys("constants", "## Section [constants]");
    ExpectKeys("set 1", "## Sections [set 1] to [set 18]");
    ExpectKeys("simulation", "## Section [simulation]");
    ExpectKeys("compare", "## Section [compare]");
    ExpectKeys("resampling", "## Section [resampling]");
    ExpectKeys("profile", "## Section [profile]");
    ExpectKeys("approach", "## Section [approach]");
    ExpectKeys("plan", "## Section [plan]");
}

TEST(ReferencePages, ShowAJobThatIsTaken) {
    const Job job = ParseJob(Block(Under(JobPage, "## An example")), "the page");
    EXPECT_EQ(job.Model, 2);
    EXPECT_EQ(job.Sets.size(), 2U);
    EXPECT_EQ(job.Sets[1].OffsetOf, 1);
    EXPECT_EQ(job.Parameters.size(), 4U);
}

TEST(ReferencePages, ListTheModels) {
    const std::string text = Under(ModelsPage, "## The list");
    for (int model = 1; model <= LastModelNumber; ++model)
        EXPECT_NE(text.find("| " + std::to_string(model) + " | " + ModelReportName(model) + " |"),
                  std::string::npos)
            << model;
}

TEST(ReferencePages, ShowResultsThatAreJson) {
    const JsonValue results = ReadJson(Block(Under(ResultsPage, "## The results")));
    EXPECT_EQ(results["parameters"][0]["name"].Text, "MW A mon");
}

// A command line of a page, as the arguments of a run. The lines of a page name the examples as from the
// source tree.
std::vector<std::string> Arguments(const std::string& commandLine) {
    std::istringstream words(commandLine);
    std::vector<std::string> arguments;
    std::string word;
    words >> word; // the program
    while (words >> word)
        arguments.push_back(word.starts_with("examples/") ? QUILLON_SOURCE "/" + word : word);
    return arguments;
}

// The lines of a page's blocks that a reader would type.
std::vector<std::string> CommandLines(const std::filesystem::path& page) {
    std::vector<std::string> lines;
    for (const std::string& line : LinesOf(ReadWholeFile(page.string())))
        if (line.starts_with("    quillon-fit ") && line.find("JOB") == std::string::npos)
            lines.push_back(line);
    return lines;
}

// What a --graph of the line names is there.
void ExpectWritten(const std::string& directory, const std::string& before, const std::string& word) {
    const std::size_t equals = word.find('=');
    if ((before != "--graph" && before != "--profile") || equals == std::string::npos) return;
    EXPECT_FALSE(ReadWholeFile(directory + "/" + word.substr(equals + 1)).empty()) << word;
}

// One after the other in one directory, as a reader does: a line may take up what one before it has written.
void ExpectRuns(const std::filesystem::path& page) {
    Script script;
    ProgramStart start;
    start.Directory = script.Directory();
    for (const std::string& line : CommandLines(page)) {
        start.Arguments = Arguments(line);
        const ProgramEnd end = RunProgram(start);
        EXPECT_EQ(end.Status, 0) << page << line << "\n" << end.Err;
        for (std::size_t i = 1; i < start.Arguments.size(); ++i)
            ExpectWritten(script.Directory(), start.Arguments[i - 1], start.Arguments[i]);
    }
}

TEST(ReferencePages, ShowCommandLinesThatRun) {
    std::size_t lines = 0;
    std::vector<std::filesystem::path> pages{QUILLON_SOURCE "/README.md"};
    for (const auto& entry : std::filesystem::recursive_directory_iterator(QUILLON_SOURCE "/docs"))
        if (entry.path().extension() == ".md") pages.push_back(entry.path());
    for (const auto& page : pages) {
        ExpectRuns(page);
        lines += CommandLines(page).size();
    }
    EXPECT_GE(lines, 7U);
}

TEST(ReferencePages, NameEveryGraphAndItsFormats) {
    const std::string text = Under(CommandPage, "## Graphs");
    for (const std::string& kind : GraphKinds())
        EXPECT_NE(text.find("`" + kind + "`"), std::string::npos) << kind;
    for (const char* ending : {"`.svg`", "`.emf`", "`.png`", "`.pdf`", "`.dat`"})
        EXPECT_NE(text.find(ending), std::string::npos) << ending;
}

TEST(ReferencePages, ListTheOptionsOfTheHelp) {
    const std::string text = Under(CommandPage, "## Options");
    for (const std::string& line : LinesOf(HelpText())) {
        if (!line.starts_with("  --")) continue;
        const std::string option = line.substr(2, line.find("  ", 2) - 2);
        EXPECT_NE(text.find("`" + option + "`"), std::string::npos) << option;
    }
}

} // namespace
} // namespace Quillon
