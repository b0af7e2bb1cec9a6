// Rules of the sources that no compiler holds: who may write what.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

// The sources of the folders of the programs, by their path in the tree.
std::vector<std::string> ProgramSources() {
    std::vector<std::string> files;
    const fs::path root(QUILLON_SOURCE);
    for (const char* folder :
         {"batch", "chart", "commands", "files", "fit", "forms", "graphs", "models", "persistence",
          "planning", "reporting", "runs", "scandata", "studies", "workspace"})
        for (const auto& entry : fs::recursive_directory_iterator(root / folder))
            if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h")
                files.push_back(fs::relative(entry.path(), root).generic_string());
    return files;
}

// The sources with a line that matches; only lines with the word are looked at, for expressions are slow.
std::set<std::string> SourcesWith(const char* word, const char* pattern) {
    const std::regex expression(pattern);
    std::set<std::string> found;
    for (const std::string& file : ProgramSources()) {
        std::ifstream in(fs::path(QUILLON_SOURCE) / file);
        for (std::string line; std::getline(in, line);)
            if (line.find(word) != std::string::npos && std::regex_search(line, expression))
                found.insert(file);
    }
    return found;
}

using Files = std::set<std::string>;

// A cancel that is raised or cleared in many places is one that somebody forgets to hand on.
TEST(Sources, CancelFlagIsWrittenAtOneEdge) {
    EXPECT_EQ(SourcesWith("AbortFit", "[.>]AbortFit\\s*=[^=]"), Files{"workspace/records/Cancel.cpp"});
    EXPECT_EQ(SourcesWith("AbortFit", "&\\s*Work\\.AbortFit"), Files{}); // nor through a pointer
}

// What a model is stands in its table; its arithmetic in the frame of a set and the sums of a point.
const char* const BranchOnModel = "switch *\\((.*\\W)?[mM]odel\\)|"                    // by the number
                                  "\\b[mM]odel\\)? *(==|!=|<=|>=|<|>) *-?\\d|"         // Work.Model == 1
                                  "\\W\\d+ *(==|!=|<=|>=|<|>) *(\\w+\\.)*[mM]odel\\b|" // 1 < model
                                  "\\b[mM]odel *\\?[^:]*:";                            // of none and of any

TEST(Sources, NoneBranchesOnTheModelNumberButTableFrameAndSpecies) {
    Files found;
    for (const std::string& file : SourcesWith("odel", BranchOnModel))
        if (!file.starts_with("models/table/")) found.insert(file);
    EXPECT_EQ(found, (Files{"models/function/FitFrame.cpp", "models/function/Species.h"}));
}

TEST(Sources, ABranchOnTheModelNumberIsFound) {
    const std::regex expression(BranchOnModel);
    for (const char* line : {"if (Work.Model == 1) {", "switch (model) {", "switch (ToInt(w.Model)) {",
                             "return 12 <= variant.Model;", "x = Work.Model ? 1 : 2;", "while (model>7)",
                             "static_cast<int>(Model) != 21"})
        EXPECT_TRUE(std::regex_search(line, expression)) << line;
    for (const char* line : {"if (Work.Model == other.Model)", "ModelName[model]", "Work.ModelCount != 12",
                             "TakeWord<&Workspace::Model>"})
        EXPECT_FALSE(std::regex_search(line, expression)) << line;
}

} // namespace
} // namespace Quillon
