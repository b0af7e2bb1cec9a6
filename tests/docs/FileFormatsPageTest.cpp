// The page of file formats against the code: fields of a saved fit in their order, and every key of the ini
// files, in both directions.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace Quillon {
namespace {

std::string TextOf(const std::string& file) {
    std::ifstream in(QUILLON_SOURCE "/" + file, std::ios::binary);
    EXPECT_TRUE(in) << file;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// What the first group of a pattern finds in a text, from first to last.
std::vector<std::string> Found(const std::string& text, const std::string& pattern) {
    const std::regex expression(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at)
        found.push_back((*at)[1]);
    return found;
}

// The part of the page from one heading to another.
std::string Part(const std::string& from, const std::string& to) {
    const std::string page = TextOf("docs/file-formats.md");
    const std::size_t start = page.find("\n" + from + "\n");
    EXPECT_NE(start, std::string::npos) << from;
    const std::size_t stop = to.empty() ? page.size() : page.find("\n" + to + "\n", start + 1);
    EXPECT_NE(stop, std::string::npos) << to;
    return page.substr(start, stop - start);
}

// The names in the first column of the tables of a part.
std::vector<std::string> FirstColumn(const std::string& part) {
    std::vector<std::string> names;
    std::istringstream lines(part);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("| `")) continue;
        for (const std::string& name : Found(line.substr(0, line.find(" |")), "`(\\w+)`"))
            names.push_back(name);
    }
    return names;
}

std::set<std::string> SetOf(const std::vector<std::string>& names) {
    return {names.begin(), names.end()};
}

// A field of two rows, or one that stands in the file in two forms, is named once.
void Name(std::vector<std::string>& names, const std::string& field) {
    const auto recent = names.end() - std::min<std::ptrdiff_t>(2, std::ssize(names));
    if (std::find(recent, names.end(), field) == names.end()) names.push_back(field);
}

TEST(FileFormatsPage, HasTheFieldsOfASavedFitInTheirOrder) {
    std::vector<std::string> walk;
    for (const std::string& name :
         Found(TextOf("persistence/codec/FitFields.h"), "s\\.(?!Sizes)\\w+\\(\"?(\\w+)"))
        Name(walk, name == "w" ? "ModelName" : name);
    std::vector<std::string> page;
    for (const std::string& name : FirstColumn(Part("## Saved fits", "### Behind the last field")))
        Name(page, name);
    EXPECT_GT(walk.size(), 90U);
    EXPECT_EQ(page, walk);
}

TEST(FileFormatsPage, HasTheValuesBehindTheLastField) {
    const std::vector<std::string> names =
        Found(TextOf("persistence/codec/FitExtension.cpp"), "\\{\"(\\w+)\",\\s*\\[");
    EXPECT_GE(names.size(), 1U);
    EXPECT_EQ(FirstColumn(Part("### Behind the last field", "## Settings")), names);
}

TEST(FileFormatsPage, HasTheKeysOfTheSettings) {
    std::set<std::string> code;
    for (const std::string& key :
         Found(TextOf("persistence/settings/DefaultKeys.h"), "char\\* \\w+ = \"(\\w+)\""))
        code.insert(key);
    for (const char cell : {'3', '4'})
        for (const char channel : {'A', 'B', 'C', 'D'})
            for (const char* end : {"Inner", "Outer"})
                if (channel != 'D' || cell == '4') code.insert(std::string("Ch") + channel + end + cell);
    EXPECT_GT(code.size(), 40U);
    EXPECT_EQ(
        SetOf(FirstColumn(Part("### QUILLON.ini, section [gnllsq]", "### QUILLON.ini, the other sections"))),
        code);
}

TEST(FileFormatsPage, HasTheKeysOfGraphs) {
    const std::string reader = TextOf("chart/records/ChartDefaults.cpp");
    std::set<std::string> code = SetOf(Found(reader, "\\{\"(\\w+)\", &ChartStyle"));
    for (const std::string& key : Found(reader, "ini\\.(?:Number|Text)\\(\"(\\w+)\""))
        code.insert(key);
    for (const std::string& key : Found(reader, "ReadColors\\(ini, \"(\\w+)\""))
        code.insert(key);
    EXPECT_GT(code.size(), 45U);
    EXPECT_EQ(SetOf(FirstColumn(Part("### chart.ini", "## Graph file (`.grf`)"))), code);
    const std::string writer = TextOf("chart/dialogs/SaveChartDefaults.cpp");
    for (const std::string& key : Found(writer, "(?:Write\\(|\\{)\"([A-Z]\\w+)\", "))
        EXPECT_EQ(code.count(key), 1U) << key; // what is written is read
}

TEST(FileFormatsPage, HasTheBlocksBehindTheFieldsOfGraphFiles) {
    const std::string trailer = TextOf("chart/files/GraphTrailer.cpp");
    EXPECT_EQ(FirstColumn(Part("## Graph file (`.grf`)", "### The state")),
              Found(trailer, "Block = \"(\\w+)\";"));
    for (const std::string& name : Found(trailer, "\\{\"(\\w+)\", \\["))
        EXPECT_NE(TextOf("docs/file-formats.md").find("`" + name + "`"), std::string::npos) << name;
}

} // namespace
} // namespace Quillon
