// Lines of points by the fast road and by the exact one: the same points, or the exact one alone.
#include "platform/RuntimeError.h"
#include "scandata/reader/ScanLines.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace Quillon {
namespace {

struct Reading {
    std::vector<std::uint32_t> Bits; // radius and value of each point
    long Points = 0, Excluded = 0;
    std::string Error;
    bool operator==(const Reading&) const = default;
};

Reading Read(const std::string& text) {
    Reading reading;
    TextItems file{text};
    try {
        const PointList list = ReadPoints(file, [&](long, const PointLine& point) {
            reading.Bits.push_back(std::bit_cast<std::uint32_t>(point.Radius));
            reading.Bits.push_back(std::bit_cast<std::uint32_t>(point.Value));
            return true;
        });
        reading.Points = list.Points;
        reading.Excluded = list.Excluded;
    } catch (const RuntimeError& error) {
        reading.Error = error.Text;
    }
    return reading;
}

bool IsPlain(const std::string& line) {
    TextItems file{line};
    PointLine point;
    const bool taken = TakePlainPoint(file, point);
    EXPECT_EQ(file.Place > 0, taken) << line;
    return taken;
}

TEST(PlainPoints, AreTheLinesThatInstrumentsWrite) {
    for (const char* line :
         {"  6.8500  3.10000E-01  2.00000E-03\r\n", "6.85 0.31\n", "6.85 0.31", "6.85 0.31 \r",
          "6.85 0.31 -1", "0 0 0\n", "6.85 -0.31 0.1 anything\n", "6.85  .31 -2E-3 x\n"})
        EXPECT_TRUE(IsPlain(line)) << line;
}

TEST(PlainPoints, AreNoneWhereTheStatedGrammarHasToDecide) {
    for (const char* line : {"",
                             "\n",
                             " \n",
                             "6.85\n",
                             "6.85 \n",
                             "6.85,0.31\n",
                             "6.85 0.31,\n",
                             "6.85 0.31 1,\n",
                             "6.85\t0.31\n",
                             "6.85 \t0.31\n",
                             "6.85 0.31\t1\n",
                             "\"6.85 0.31\"\n",
                             "6.85 x\n",
                             "x 0.31\n",
                             "6.85 0.31x\n",
                             "6.85D0 0.31\n",
                             "6.85 0.31D0\n",
                             "6.85 0.31 -x\n",
                             "6.85 0.31 -1x\n",
                             "6.85 1E39\n",
                             "1E39 0.31\n",
                             "6.85 1E400\n",
                             "6.85 0.31 -\n",
                             "6.85 - 1\n"})
        EXPECT_FALSE(IsPlain(line)) << line;
}

// One blank or one tab between numbers mean the same; a tab is never plain.
TEST(PlainPoints, AreReadAsByTheExactRoad) {
    std::mt19937 random(5);
    const char* const formats[] = {"%.4f", "%.5E", "%.9g", "%g", "%.17g", "%+.3f"};
    for (int file = 0; file < 300; ++file) {
        std::string blanks, tabs;
        for (int line = 0; line < 40; ++line) {
            std::string text;
            const int numbers = 2 + static_cast<int>(random() % 2);
            for (int n = 0; n < numbers; ++n) {
                char number[60];
                const double value = (static_cast<double>(random()) - 5e8) * (random() % 4 ? 1e-9 : 1e-30);
                std::snprintf(number, sizeof number, formats[random() % 6], value);
                text += std::string(n > 0 ? " " : "") + number;
            }
            const char* const ends[] = {"\r\n", "\n", "\r"};
            text += ends[random() % 3];
            blanks += text;
            for (char& c : text)
                if (c == ' ') c = '\t';
            tabs += text;
        }
        EXPECT_TRUE(Read(blanks) == Read(tabs)) << blanks;
    }
}

// Any bytes: what the fast road takes of a line, the exact road finds there too. A comment behind a tab in
// the third column changes nothing for it, and keeps the fast road away.
TEST(PlainPoints, OfAnyBytesAreThoseOfTheExactRoad) {
    std::mt19937 random(6);
    const std::string letters = "0123456789.-+eED ,\t\"x";
    long plain = 0;
    for (int i = 0; i < 300000; ++i) {
        std::string line = random() % 2 ? "6." : "";
        for (auto n = random() % 14; n-- > 0;)
            line += letters[random() % (random() % 3 ? 17 : letters.size())];
        TextItems fast{line};
        PointLine point;
        if (!TakePlainPoint(fast, point)) continue;
        ++plain;
        const Reading exact = Read(line + "\t");
        ASSERT_EQ(exact.Error, "") << line;
        EXPECT_EQ(exact.Excluded, point.Excluded ? 1 : 0) << line;
        if (point.Excluded) continue;
        ASSERT_EQ(exact.Bits.size(), 2U) << line;
        EXPECT_EQ(exact.Bits[0], std::bit_cast<std::uint32_t>(point.Radius)) << line;
        EXPECT_EQ(exact.Bits[1], std::bit_cast<std::uint32_t>(point.Value)) << line;
    }
    EXPECT_GT(plain, 3000);
}

} // namespace
} // namespace Quillon
