// The reference of the job file in README.md against the program: every key stands in it, and what it shows
// is taken.
#include "batch/Graphs.h"
#include "batch/JobFile.h"
#include "batch/JobText.h"
#include "batch/Options.h"
#include "models/Catalogue.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Quillon {
namespace {

std::string Readme() {
    return ReadWholeFile(QUILLON_SOURCE "/README.md");
}

// The part of the text from a heading to the next one.
std::string Under(const std::string& heading) {
    const std::string text = Readme();
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
    const std::string text = Under(heading);
    for (const std::string& key : JobKeys(section))
        EXPECT_NE(text.find("`" + key + "`"), std::string::npos) << key;
}

TEST(Readme, NamesEveryKey) {
    ExpectKeys("fit", "#### [fit]");
    ExpectKeys("constants", "#### [constants]");
    ExpectKeys("set 1", "#### [set 1] to [set 18]");
}

TEST(Readme, ShowsAJobThatIsTaken) {
    const Job job = ParseJob(Block(Under("### The job file")), "README");
    EXPECT_EQ(job.Model, 2);
    EXPECT_EQ(job.Sets.size(), 2U);
    EXPECT_EQ(job.Sets[1].OffsetOf, 1);
    EXPECT_EQ(job.Parameters.size(), 4U);
}

TEST(Readme, ListsTheModels) {
    const std::string text = Under("#### Models");
    for (int model = 1; model <= LastModelNumber; ++model)
        EXPECT_NE(text.find("| " + std::to_string(model) + " | " + ModelReportName(model) + " |"),
                  std::string::npos)
            << model;
}

TEST(Readme, ShowsResultsThatAreJson) {
    const JsonValue results = ReadJson(Block(Under("### The results")));
    EXPECT_EQ(results["parameters"][0]["name"].Text, "MW A mon");
}

TEST(Readme, ShowsGraphsThatAreDrawn) {
    Script script;
    std::istringstream line(Block(Under("### Graphs")));
    ProgramStart start;
    std::vector<std::string> files;
    std::string word;
    line >> word;
    EXPECT_EQ(word, "quillon-fit");
    while (line >> word) {
        if (word.ends_with(".job")) word = QUILLON_SOURCE "/" + word;
        start.Arguments.push_back(word);
        if (word.ends_with(".svg"))
            files.push_back(script.Directory() + "/" + word.substr(word.find('=') + 1));
    }
    start.Directory = script.Directory();
    const ProgramEnd end = RunProgram(start);
    EXPECT_EQ(end.Status, 0) << end.Err;
    ASSERT_EQ(files.size(), 2U);
    for (const std::string& file : files)
        EXPECT_TRUE(ReadWholeFile(file).starts_with("<?xml")) << file;
}

TEST(Readme, NamesEveryGraphAndItsFormats) {
    const std::string text = Under("### Graphs");
    for (const std::string& kind : GraphKinds())
        EXPECT_NE(text.find("`" + kind + "`"), std::string::npos) << kind;
    for (const char* ending : {"`.svg`", "`.emf`", "`.png`", "`.pdf`", "`.dat`"})
        EXPECT_NE(text.find(ending), std::string::npos) << ending;
}

TEST(Readme, ListsTheOptionsOfTheHelp) {
    const std::string text = Under("## quillon-fit");
    for (const std::string& line : LinesOf(HelpText())) {
        if (!line.starts_with("  --")) continue;
        const std::string option = line.substr(2, line.find("  ", 2) - 2);
        EXPECT_NE(text.find("`" + option + "`"), std::string::npos) << option;
    }
}

} // namespace
} // namespace Quillon
