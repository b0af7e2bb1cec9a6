// Every example on the page about number pictures is what the program writes.
#include "input/NUMINPUT.h"

#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

namespace Quillon {
namespace {

// The cells of a table row, when all of them are given in backticks; nothing for other lines.
std::vector<std::string> ExampleCells(const std::string& line) {
    if (line.rfind("| `", 0) != 0) return {};
    std::vector<std::string> cells;
    std::size_t at = 0;
    while (line.compare(at, 3, "| `") == 0) {
        const std::size_t end = line.find("` |", at + 3);
        if (end == std::string::npos) return {};
        cells.push_back(line.substr(at + 3, end - at - 3));
        at = end + 2;
    }
    return at + 1 == line.size() ? cells : std::vector<std::string>{};
}

TEST(NumberPicturesPage, ShowsWhatIsWritten) {
    const std::filesystem::path root(QUILLON_SOURCE);
    std::istringstream page(ReadWholeFile((root / "docs" / "number-pictures.md").string()));
    std::string head;
    std::string line;
    int pictures = 0;
    int singles = 0;
    int readings = 0;
    while (std::getline(page, line)) {
        const std::vector<std::string> cells = ExampleCells(line);
        if (cells.empty()) {
            if (line.rfind("|---", 0) != 0) head = line;
        } else if (head == "| Value | Picture | Text |") {
            ASSERT_EQ(cells.size(), 3U) << line;
            EXPECT_EQ(FormatNumber(std::stod(cells[0]), cells[1]), cells[2]) << line;
            ++pictures;
        } else if (head == "| Single | Text |") {
            ASSERT_EQ(cells.size(), 2U) << line;
            EXPECT_EQ(SingleText(std::stof(cells[0])), cells[1]) << line;
            ++singles;
        } else if (head == "| Text | Value |") {
            ASSERT_EQ(cells.size(), 2U) << line;
            EXPECT_EQ(NumericPrefix(cells[0]), std::stod(cells[1])) << line;
            ++readings;
        }
    }
    // The tables were found and read as a whole.
    EXPECT_EQ(pictures, 36);
    EXPECT_EQ(singles, 8);
    EXPECT_EQ(readings, 7);
}

} // namespace
} // namespace Quillon
