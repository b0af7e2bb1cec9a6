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
    EXPECT_EQ(SourcesWith("AbortFit", "Work\\.AbortFit\\s*=[^=]"), Files{"workspace/records/Cancel.cpp"});
    EXPECT_EQ(SourcesWith("AbortFit", "&\\s*Work\\.AbortFit"), Files{}); // nor through a pointer
}

// What a model is stands in the table; its arithmetic in the frame of a set and the sums of a point. Files of
// before know fewer models.
TEST(Sources, NoneBranchesOnTheModelNumberButTableFrameAndSpecies) {
    const Files known{"models/function/FitFrame.cpp", "models/function/Species.h",
                      "persistence/codec/FitCodec.cpp"};
    EXPECT_EQ(SourcesWith("odel", "switch \\((\\w+\\.)?[mM]odel\\)|"
                                  "\\b[mM]odel *(==|!=|<=|>=|<|>) *([2-9]|[12]\\d)\\b"),
              known);
}

} // namespace
} // namespace Quillon
