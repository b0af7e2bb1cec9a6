// The pages of the tree against the tree: links and headings, paths of files, names of tests, marks of
// decisions.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

const fs::path Root(QUILLON_SOURCE);

std::string TextOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

bool IsBuilt(const fs::path& folder) {
    const std::string name = folder.filename().string();
    return name == "build" || name.starts_with(".");
}

// All files of the tree that test accepts; what is built and hidden is no part of it.
template <class Test> std::vector<fs::path> FilesWhere(Test&& test) {
    std::vector<fs::path> files;
    for (auto at = fs::recursive_directory_iterator(Root); at != fs::recursive_directory_iterator(); ++at) {
        if (at->is_directory() && IsBuilt(at->path()))
            at.disable_recursion_pending();
        else if (at->is_regular_file() && test(at->path()))
            files.push_back(at->path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<fs::path> Pages() {
    return FilesWhere([](const fs::path& file) { return file.extension() == ".md"; });
}

std::vector<fs::path> Sources() {
    return FilesWhere(
        [](const fs::path& file) { return file.extension() == ".cpp" || file.extension() == ".h"; });
}

// The lines of a page outside its indented blocks.
std::vector<std::string> Prose(const fs::path& page) {
    std::istringstream text(TextOf(page));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);)
        if (!line.starts_with("    ")) lines.push_back(line);
    return lines;
}

// Calls visit with the first group of every match in the text.
template <class Visitor> void EachMatch(const std::string& text, const std::regex& what, Visitor&& visit) {
    for (auto at = std::sregex_iterator(text.begin(), text.end(), what); at != std::sregex_iterator(); ++at)
        visit((*at)[1].str());
}

// The anchor that readers of Markdown give a heading: small letters, blanks as "-", nothing but letters,
// digits,
// "-" and "_" besides; letters beyond ASCII stay.
std::string AnchorOf(const std::string& heading) {
    std::string anchor;
    for (const char c : heading) {
        const auto u = static_cast<unsigned char>(c);
        if (c == ' ')
            anchor += '-';
        else if (u >= 0x80 || std::isalnum(u) || c == '-' || c == '_')
            anchor += static_cast<char>(std::tolower(u));
    }
    return anchor;
}

std::set<std::string> AnchorsOf(const fs::path& page) {
    std::set<std::string> anchors;
    for (const std::string& line : Prose(page))
        if (line.starts_with("#")) anchors.insert(AnchorOf(line.substr(line.find_first_not_of("# "))));
    return anchors;
}

void ExpectLink(const fs::path& page, const std::string& link) {
    if (link.starts_with("http")) return;
    const std::size_t sharp = link.find('#');
    const std::string file = link.substr(0, sharp);
    const fs::path target = file.empty() ? page : page.parent_path() / file;
    ASSERT_TRUE(fs::exists(target)) << page << " links " << link;
    if (sharp == std::string::npos) return;
    EXPECT_TRUE(AnchorsOf(target).contains(link.substr(sharp + 1))) << page << " links " << link;
}

TEST(Pages, LinkToWhatIsThere) {
    static const std::regex Link(R"(\]\(([^)]+)\))");
    int links = 0;
    for (const fs::path& page : Pages())
        for (const std::string& line : Prose(page))
            EachMatch(line, Link, [&](const std::string& link) {
                ++links;
                ExpectLink(page, link);
            });
    EXPECT_GT(links, 100);
}

// A name in backticks that reads as a path of the tree: a folder of it, then files or folders.
bool ReadsAsPath(const std::string& name) {
    const std::size_t slash = name.find('/');
    return slash != std::string::npos && slash > 0 && name[0] != '.' &&
           name.find_first_of(" *<>()=,$%~") == std::string::npos &&
           fs::is_directory(Root / name.substr(0, slash)) && name.substr(0, slash) != "build";
}

TEST(Pages, NameFilesThatAreThere) {
    static const std::regex Quoted("`([^`]+)`");
    int paths = 0;
    for (const fs::path& page : Pages())
        for (const std::string& line : Prose(page))
            EachMatch(line, Quoted, [&](const std::string& name) {
                if (!ReadsAsPath(name)) return;
                ++paths;
                EXPECT_TRUE(fs::exists(Root / name)) << page << " names " << name;
            });
    EXPECT_GT(paths, 30);
}

// The kinds of the chunks of a PNG, one behind the other.
std::vector<std::string> ChunksOf(const std::string& png) {
    std::vector<std::string> kinds;
    for (std::size_t at = 8; at + 12 <= png.size();) {
        std::size_t length = 0;
        for (std::size_t i = 0; i < 4; ++i)
            length = length << 8U | static_cast<unsigned char>(png[at + i]);
        kinds.push_back(png.substr(at + 4, 4));
        at += 12 + length;
    }
    return kinds;
}

// One showed where on somebody's machine it had been drawn.
TEST(Pages, HavePicturesWithoutAPathOfAMachine) {
    const std::vector<fs::path> pictures =
        FilesWhere([](const fs::path& file) { return file.parent_path() == Root / "docs/pictures"; });
    EXPECT_GE(pictures.size(), 3U);
    for (const fs::path& picture : pictures) {
        const std::vector<std::string> kinds = ChunksOf(TextOf(picture));
        ASSERT_FALSE(kinds.empty()) << picture;
        EXPECT_EQ(kinds.back(), "IEND") << picture;
        for (const char* kind : {"tEXt", "zTXt", "iTXt", "eXIf"})
            EXPECT_EQ(std::count(kinds.begin(), kinds.end(), kind), 0) << picture << " holds text";
    }
    // A title says what folder its scans were named with: from their own, none.
    EXPECT_NE(TextOf(Root / "scripts/draw-pictures")
                  .find("cd examples/monomer-dimer\n\"$bin/quillon-fit\" monomer"),
              std::string::npos);
}

// Calls visit with what stands between each of the openings in the text and the closing character behind it.
template <class Visitor>
void EachBetween(const std::string& text, const std::string& open, char close, Visitor&& visit) {
    for (std::size_t at = text.find(open); at != std::string::npos; at = text.find(open, at + 1)) {
        const std::size_t from = at + open.size();
        visit(text.substr(from, text.find(close, from) - from));
    }
}

// "Suite, Name" as the report of a test names it.
std::string ReportedName(std::string test) {
    std::erase_if(test, [](char c) { return c == ' ' || c == '\n'; });
    std::replace(test.begin(), test.end(), ',', '.');
    return test;
}

std::set<std::string> TestNames() {
    std::set<std::string> names;
    for (const fs::path& source : Sources()) {
        const std::string text = TextOf(source);
        for (const char* head : {"TEST(", "TEST_F(", "TEST_P("})
            EachBetween(text, head, ')', [&](const std::string& test) { names.insert(ReportedName(test)); });
    }
    return names;
}

TEST(Pages, NameTestsThatAreThere) {
    static const std::regex Name(R"(`([A-Z]\w+\.[A-Z]\w+)`)");
    const std::set<std::string> tests = TestNames();
    int named = 0;
    for (const fs::path& page : Pages())
        for (const std::string& line : Prose(page))
            EachMatch(line, Name, [&](const std::string& name) {
                ++named;
                EXPECT_TRUE(tests.contains(name) || fs::exists(page.parent_path() / name))
                    << page << " names " << name;
            });
    EXPECT_GT(named, 20);
}

// The first cell of each row of the table on the page of decisions.
std::set<std::string> DecisionsTold() {
    std::set<std::string> told;
    static const std::regex Row(R"(^\| ([a-z0-9-]+) \|)");
    for (const std::string& line : Prose(Root / "docs" / "decisions.md"))
        EachMatch(line, Row, [&](const std::string& name) { told.insert(name); });
    return told;
}

std::set<std::string> DecisionsMarked() {
    std::set<std::string> marked;
    const fs::path here = Root / "tests" / "docs" / "PagesTest.cpp";
    for (const fs::path& source : Sources())
        if (source != here)
            EachBetween(TextOf(source), "[decision: ", ']',
                        [&](const std::string& name) { marked.insert(name); });
    return marked;
}

TEST(Pages, TellOfEveryDecisionThatIsMarkedAndOfNoOther) {
    EXPECT_EQ(DecisionsTold(), DecisionsMarked());
    EXPECT_GT(DecisionsTold().size(), 20U);
}

// The checker itself, on a page with something wrong.
TEST(Pages, AnchorsAreThoseThatReadersGive) {
    EXPECT_EQ(AnchorOf("16 to 20: B dimerises, with or without A"), "16-to-20-b-dimerises-with-or-without-a");
    EXPECT_EQ(AnchorOf("Section [fit]"), "section-fit");
    EXPECT_FALSE(ReadsAsPath("a/b"));
    EXPECT_TRUE(ReadsAsPath("models/NoSuchFile.h"));
}

} // namespace
} // namespace Quillon
