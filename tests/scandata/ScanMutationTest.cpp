// Thousands of damaged scans: the reader's invariants hold for each of them (tests/fuzz/ScanReaderFuzz.cpp
// checks them and stops the program where one does not).
#include "../fuzz/ScanReaderFuzz.cpp" // NOLINT(bugprone-suspicious-include): the entry that a fuzzer uses
#include "ScanFixture.h"

#include <random>

namespace Quillon {
namespace {

using Bytes = std::string;

void Check(const Bytes& bytes) {
    // A copy without slack, so that an address sanitizer sees a read behind the end.
    std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
    data.shrink_to_fit();
    LLVMFuzzerTestOneInput(data.data(), data.size());
}

std::vector<Bytes> Seeds() {
    std::vector<std::string> excluded = ManyPoints(12);
    for (std::string& point : excluded)
        point += point.back() == '0' ? " -0.01" : " 0.01";
    excluded.push_back("0 0 -1");
    return {
        ScanText({"   5.7030  -1.19000E-001    4.90900E-001", "   5.7070   2.55300E-001    3.90800E-001",
                  "   7.3010   9.25000E-0002    3.17600E-001"}),
        ScanText(ManyPoints(8), "P 4 20.0 50000 0003685 9.7819E10 675 50", "cm/pixel: 0.00071, Sample"),
        ScanText(ManyPoints(8), "R 1 20.0 3000 3300 9.047e+10 100 1", "", "\n"),
        ScanText(excluded),
        ScanText({"6.0\t0.1\t0.01", "\"6.1 0.2\"", "6.2,0.3", "6.3 0.4,6.4 0.5"}, "\"R 2 20 1 1 1 1 1\""),
        ScanText(ManyPoints(2047)),
    };
}

// What breaks parsers: separators, quotes, ends, signs, extremes.
const std::vector<Bytes> Pieces = {",",
                                   "\"",
                                   "\r\n",
                                   "\n",
                                   "\r",
                                   "\t",
                                   " ",
                                   "  ",
                                   "0 0\r\n",
                                   "-",
                                   "+",
                                   ".",
                                   "E",
                                   "e+",
                                   "D-3",
                                   "1E38",
                                   "1E39",
                                   "1E999",
                                   "-1E-999",
                                   "0",
                                   "nan",
                                   "inf",
                                   "P",
                                   "R 1 ",
                                   "0 0 -1",
                                   "2147483648",
                                   "-32769",
                                   "CM/PIXEL:",
                                   "\xff",
                                   "\x1a",
                                   "1e-46",
                                   "6 6 -6\r\n",
                                   "\"\"",
                                   ",,,",
                                   Bytes(1, '\0'),
                                   "999999999999999999999",
                                   "6.0 0.1\r\n"};

class Mutator {
public:
    explicit Mutator(std::uint32_t seed) : Random(seed) {}

    Bytes Mutate(Bytes bytes, const std::vector<Bytes>& seeds) {
        for (std::size_t n = Below(4) + 1; n > 0; --n)
            Step(bytes, seeds);
        return bytes;
    }
    std::size_t Below(std::size_t count) { return count == 0 ? 0 : Random() % count; }

private:
    std::mt19937 Random;

    void Step(Bytes& bytes, const std::vector<Bytes>& seeds) {
        const std::size_t at = Below(bytes.size() + 1);
        const std::size_t length = Below(std::min<std::size_t>(bytes.size() - at, 40) + 1);
        switch (Below(8)) {
        case 0:
            bytes.erase(at, length);
            break;
        case 1:
            bytes.insert(at, Pieces[Below(Pieces.size())]);
            break;
        case 2:
            bytes.replace(at, length, Pieces[Below(Pieces.size())]);
            break;
        case 3:
            bytes.resize(at);
            break;
        case 4:
            bytes.insert(at, bytes.substr(at, length));
            break;
        case 5:
            if (at < bytes.size()) bytes[at] = static_cast<char>(Below(256));
            break;
        case 6:
            if (at < bytes.size()) bytes[at] = static_cast<char>(bytes[at] ^ (1 << Below(8)));
            break;
        default: {
            const Bytes& other = seeds[Below(seeds.size())];
            const std::size_t from = Below(other.size());
            bytes.insert(at, other.substr(from, Below(200)));
        }
        }
    }
};

TEST(ScanMutations, TheSeedsThemselves) {
    for (const Bytes& seed : Seeds())
        Check(seed);
}

TEST(ScanMutations, EveryTruncationOfTheShortSeeds) {
    for (const Bytes& seed : Seeds())
        for (std::size_t n = 0; n <= std::min<std::size_t>(seed.size(), 500); ++n)
            Check(seed.substr(0, n));
}

TEST(ScanMutations, EveryByteReplacedByEveryTroublemaker) {
    const Bytes seed = Seeds().front();
    for (std::size_t at = 0; at < seed.size(); ++at)
        for (const char c : {',', '"', '\r', '\n', '\t', ' ', '-', 'E', '9', '\0', '\xff'}) {
            Bytes bytes = seed;
            bytes[at] = c;
            Check(bytes);
        }
}

TEST(ScanMutations, ThousandsOfRandomOnes) {
    const std::vector<Bytes> seeds = Seeds();
    Mutator mutator(20200421);
    for (int i = 0; i < 6000; ++i) {
        // The long seed is worth a visit at its limit, but not every time.
        const std::size_t pick = i % 40 == 0 ? seeds.size() - 1 : mutator.Below(seeds.size() - 1);
        Check(mutator.Mutate(seeds[pick], seeds));
    }
}

TEST(ScanMutations, ScansAroundThePointLimit) {
    for (long count : {2046L, 2047L, 2048L, 2049L})
        for (const char* end : {"", "0 0\r\n", "0 0 -1\r\n", "6 6 -6\r\n", "\r\n", "6"})
            Check(ScanText(ManyPoints(count)) + end);
}

} // namespace
} // namespace Quillon
