// Damaged archives of a run: what tests/fuzz/ArchiveFuzz.cpp requires holds for each of them.
#include "../fuzz/ArchiveFuzz.cpp" // NOLINT(bugprone-suspicious-include): the entry that a fuzzer uses
#include "tests/support/MadeRun.h"

#include <gtest/gtest.h>

#include <random>

namespace Quillon {
namespace {

void Check(const std::string& bytes) {
    // A copy without slack, so that an address sanitizer sees a read behind the end.
    std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
    data.shrink_to_fit();
    LLVMFuzzerTestOneInput(data.data(), data.size());
}

// Three scans, a link, a folder and a name that leads out.
std::vector<std::string> Seeds() {
    RunPlan plan;
    plan.Cells = {1};
    plan.Speeds = {10000};
    plan.ScansPerStage = 3;
    plan.Points = 12;
    std::vector<ArchiveEntry> entries = EntriesOf(MakeRun(plan));
    entries.push_back({"run", "", 'd'});
    entries.push_back({"../00009.RA1", entries[0].Bytes});
    entries.push_back({"link.RA1", "", 'l', "/etc/passwd"});
    return {ArchiveOf(entries, "tar"), ArchiveOf(entries, "tar.gz"), ArchiveOf(entries, "zip")};
}

// A damage or a few: bytes lost, doubled, turned, numbers of a header made large.
std::string Mutated(std::string bytes, std::mt19937& random) {
    for (std::size_t n = random() % 3 + 1; n > 0; --n) {
        const std::size_t at = random() % (bytes.size() + 1), length = random() % 300;
        switch (random() % 5) {
        case 0:
            bytes.erase(at, length);
            break;
        case 1:
            bytes.insert(at, bytes.substr(at, length));
            break;
        case 2:
            bytes.replace(at, std::min<std::size_t>(11, bytes.size() - at), "77777777777");
            break;
        default:
            if (at < bytes.size()) bytes[at] = static_cast<char>(random() % 256);
        }
    }
    return bytes;
}

TEST(ArchiveMutations, TheSeedsAndTheirTruncations) {
    for (const std::string& seed : Seeds())
        for (std::size_t length = 0; length <= seed.size(); length += 1 + seed.size() / 60)
            Check(seed.substr(0, length));
}

// QUILLON_MUTATIONS asks for another number of them.
TEST(ArchiveMutations, HundredsOfRandomOnes) {
    const char* asked = std::getenv("QUILLON_MUTATIONS");
    const int count = asked ? std::atoi(asked) : 400;
    const std::vector<std::string> seeds = Seeds();
    std::mt19937 random(20261122);
    for (int i = 0; i < count; ++i)
        Check(Mutated(seeds[random() % seeds.size()], random));
}

} // namespace
} // namespace Quillon
