#include "runs/Approach.h"

#include "runs/Channels.h"
#include "runs/ReadRun.h"
#include "scandata/reader/ScanDifference.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr double MostSquares = 3.0; // of the noise, between scans that agree
constexpr const char* FastText = "not yet at equilibrium: its last scans differ by more than 20 times the "
                                 "noise, as those of a velocity run";

double Median(std::vector<double> numbers) {
    if (numbers.empty()) return 0.0;
    const std::size_t middle = numbers.size() / 2;
    std::nth_element(numbers.begin(), numbers.begin() + static_cast<std::ptrdiff_t>(middle), numbers.end());
    if (numbers.size() % 2 == 1) return numbers[middle];
    const double below =
        *std::max_element(numbers.begin(), numbers.begin() + static_cast<std::ptrdiff_t>(middle));
    return (below + numbers[middle]) / 2.0;
}

// A group while it is judged: by channel, noise of each scan and the typical one.
struct Judgement {
    const SortedRun& Run;
    RunGroup& Group;
    std::vector<std::vector<std::optional<double>>> Noise{}; // by channel and scan
    std::vector<double> Typical{};                           // by channel

    const RunScan& Scan(std::size_t i) const { return Run.Scans[Group.Scans[i]]; }
    std::size_t Count() const { return Group.Scans.size(); }
    const RunChannel& Column(std::size_t c) const { return Group.Channels[c]; }

    void MeasureNoise() {
        for (const RunChannel& column : Group.Channels) {
            std::vector<double> known;
            Noise.emplace_back();
            for (std::size_t i = 0; i < Count(); ++i) {
                Noise.back().push_back(NoiseBetween(ReadingsOf(Scan(i)), column.Inner, column.Outer));
                if (Noise.back().back()) known.push_back(*Noise.back().back());
            }
            Typical.push_back(Median(known));
        }
    }

    // The difference of two scans in the channel where it is largest against the noise.
    struct Difference {
        std::size_t Channel = 0;
        std::optional<double> Rms; // none: they share no readings in one of them
        bool Agrees = false;
    };
    Difference Between(std::size_t last, std::size_t i) const {
        Difference worst;
        double largest = -1.0;
        for (std::size_t c = 0; c < Typical.size(); ++c) {
            const auto rms =
                RmsFrom(ReadingsOf(Scan(last)), ReadingsOf(Scan(i)), Column(c).Inner, Column(c).Outer);
            if (!rms) return {c, {}, false};
            const double squares = *rms * *rms, limit = MostSquares * Typical[c] * Typical[c];
            const double ratio = limit > 0.0 ? squares / limit : squares > 0.0 ? HUGE_VAL : 0.0;
            if (ratio <= largest) continue;
            largest = ratio;
            worst = {c, rms, squares <= limit};
        }
        return worst;
    }

    // The last scan may be the one that is disturbed: those before it agree with each other, not with it.
    std::size_t FindLast() const {
        const std::size_t n = Count();
        if (n < 3 || Between(n - 1, n - 2).Agrees || Between(n - 1, n - 3).Agrees) return n - 1;
        return Between(n - 2, n - 3).Agrees ? n - 2 : n - 1;
    }

    void Compare() {
        Group.Judged.assign(Count(), {});
        Group.Last = FindLast();
        std::vector<bool> agrees(Count());
        for (std::size_t i = 0; i < Count(); ++i) {
            const Difference difference = Between(Group.Last, i);
            agrees[i] = difference.Agrees;
            Group.Judged[i].Rms = difference.Rms;
            Group.Judged[i].Noise = Noise[difference.Channel][i];
        }
        Answer(agrees);
    }

    void Answer(const std::vector<bool>& agrees) {
        if (Count() == 1) return;
        bool all = true;
        for (std::size_t i = Group.Last + 1; i-- > 0;) {
            all = all && agrees[i];
            const bool between = i > 0 && i < Group.Last && agrees[i - 1] && agrees[i + 1];
            Group.Judged[i].Answer = all                     ? AtEquilibrium::Yes
                                     : !agrees[i] && between ? AtEquilibrium::Outlier
                                                             : AtEquilibrium::No;
        }
        for (std::size_t i = Group.Last + 1; i < Count(); ++i)
            Group.Judged[i].Answer = AtEquilibrium::Outlier;
    }

    // The readings still move from scan to scan as no sample near its equilibrium does.
    bool IsVelocity() const {
        const std::size_t n = Count();
        if (n < FewestOfVelocity) return false;
        for (std::size_t i = n - 1 - TailOfVelocity; i < n - 1; ++i) {
            const Difference difference = Between(n - 1, i);
            if (!difference.Rms || !(*difference.Rms > VelocityStep * Typical[difference.Channel]))
                return false;
        }
        return true;
    }
};

void JudgeGroup(SortedRun& run, RunGroup& group, const ApproachRange& range) {
    group.Last = group.Scans.size() - 1;
    group.Judged.assign(group.Scans.size(), {});
    if (group.Optics == ScanOptics::Wavelength) return; // it has no radii
    group.Channels = ChannelsOf(run.Scans[group.Scans.back()], range);
    Judgement judgement{run, group};
    judgement.MeasureNoise();
    const bool velocity = IsForEquilibrium(group.Optics) && judgement.IsVelocity();
    judgement.Compare();
    if (!velocity) return;
    group.Optics = ScanOptics::Velocity;
    for (const std::size_t i : group.Scans)
        run.Scans[i].Optics = ScanOptics::Velocity;
}

// Too few scans to be taken for a velocity run, of which the last ones still move as those of one do.
bool MovesFast(const RunGroup& group) {
    const std::size_t n = group.Judged.size();
    if (n < TailOfVelocity || group.Last + 1 != n) return false;
    const double fast = VelocityStep * AgreementLimit(group) / std::sqrt(MostSquares);
    for (std::size_t i = n - 1 - std::min(TailOfVelocity, n - 1); i < n - 1; ++i)
        if (!group.Judged[i].Rms || !(*group.Judged[i].Rms > fast)) return false;
    return true;
}

std::string NameInGroup(const RunScan& scan) {
    return scan.Name.Scan ? std::to_string(*scan.Name.Scan) : ShownName(scan.File);
}

// "; scans 3, 7 stand out", "" where none does.
std::string OutliersText(const SortedRun& run, const RunGroup& group) {
    std::string names;
    long count = 0;
    for (std::size_t i = 0; i < group.Scans.size(); ++i) {
        if (group.Judged[i].Answer != AtEquilibrium::Outlier) continue;
        names += (count > 0 ? ", " : "") + NameInGroup(run.Scans[group.Scans[i]]);
        ++count;
    }
    if (count == 0) return "";
    return count > 1 ? "; scans " + names + " stand out" : "; scan " + names + " stands out";
}

} // namespace

void JudgeRun(SortedRun& run, const ApproachRange& range) {
    for (RunGroup& group : run.Groups)
        JudgeGroup(run, group, range);
}

double AgreementLimit(const RunGroup& group) {
    std::vector<double> noise;
    for (const ScanJudgement& judged : group.Judged)
        if (judged.Noise) noise.push_back(*judged.Noise);
    return std::sqrt(MostSquares) * Median(noise);
}

std::string ApproachText(const SortedRun& run, const RunGroup& group) {
    if (!HasLast(group)) return OpticsWord(group.Optics);
    if (group.Scans.size() == 1) return "one scan only";
    std::string text = MovesFast(group) ? FastText : "not yet at equilibrium";
    for (std::size_t i = group.Last; i-- > 0;)
        if (group.Judged[i].Answer == AtEquilibrium::Yes)
            text = "at equilibrium since scan " + NameInGroup(run.Scans[group.Scans[i]]);
    return text + OutliersText(run, group);
}

} // namespace Quillon
