#include "scandata/table/TableChange.h"

#include "input/NUMINPUT.h"
#include "platform/Words.h"

#include <algorithm>
#include <vector>

namespace Quillon {

namespace {

// One row before and after.
struct RowPair {
    const Workspace& Before;
    const Workspace& After;
    RowNo Row;

    template <class Member> bool Differs(Member member) const {
        return (Before.*member)[Row] != (After.*member)[Row];
    }
    template <class Member> bool EitherDiffers(Member member) const {
        return (Before.*member)[0][Row] != (After.*member)[0][Row] ||
               (Before.*member)[1][Row] != (After.*member)[1][Row];
    }
    template <class Member> const auto& Now(Member member) const { return (After.*member)[Row]; }
};

std::string Centimetres(const RowPair& pair, std::size_t end) {
    const long p = pair.After.FitRange[end][pair.Row];
    const OneBased<float>& radii = pair.After.ScanRadius[pair.Row];
    return p < 1 || p > radii.Hi() ? "" : FormatNumber(static_cast<double>(radii[p]), "0.0000");
}

// What is left out of a scan, or how its intensities are taken, makes no other scan of it.
bool ReadingsDiffer(const RowPair& pair) {
    return pair.Differs(&Workspace::LeftOut) || pair.Differs(&Workspace::IntensityOrder);
}

bool ScanDiffers(const RowPair& pair) {
    if (pair.Differs(&Workspace::ScanFile) || pair.Differs(&Workspace::ScanDirectory) ||
        pair.Differs(&Workspace::ScanSha256) || pair.Differs(&Workspace::MeanOf))
        return true;
    return !ReadingsDiffer(pair) &&
           (pair.Differs(&Workspace::ScanRadius) || pair.Differs(&Workspace::ScanValue));
}

std::string LeftOutWords(const RowPair& pair) {
    const auto out = std::ssize(pair.Now(&Workspace::LeftOut));
    if (out == 0) return "no reading left out";
    return Counted(out, "reading") + " left out";
}

std::string CeilingWords(const RowPair& pair) {
    const float ceiling = pair.Now(&Workspace::SignalCeiling);
    return ceiling > 0.0F ? "ceiling " + SingleText(ceiling) : "no ceiling";
}

const char* OrderWords(const RowPair& pair) {
    return pair.Now(&Workspace::IntensityOrder) == IntensityOrders::ReferenceFirst
               ? "the second column is the sample"
               : "the first column is the sample";
}

std::string ScanWords(const RowPair& pair) {
    const std::string& file = pair.Now(&Workspace::ScanFile);
    if (file.empty()) return "no scan";
    const std::size_t scans = pair.Now(&Workspace::MeanOf).size();
    return scans < 2 ? file : "mean of " + std::to_string(scans) + " scans up to " + file;
}

const char* CenterpieceWords(int code) {
    return code == Centerpiece::EightChannel ? "centerpiece of 8 channels"
           : code == Centerpiece::SixChannel ? "centerpiece of 6 channels"
                                             : "centerpiece of 2 channels";
}

std::string ChannelWords(int channel) {
    return channel > 0 ? std::string("channel ") + static_cast<char>('A' + channel - 1) : "no channel";
}

std::string BaselineWords(const RowPair& pair) {
    const std::string& file = pair.Now(&Workspace::BaselineFile);
    return file == NoBaseline ? "no baseline" : "baseline " + file;
}

std::string ShiftWords(const RowPair& pair) {
    if (!pair.Now(&Workspace::BaselineShifted)) return "baseline not shifted";
    return "baseline shifted by " +
           FormatNumber(static_cast<double>(pair.Now(&Workspace::BaselineShift)), "0.000") + " cm";
}

std::string RatioWords(const RowPair& pair) {
    return "relative extinctions " + SingleText(pair.After.ExtinctionRatio[0][pair.Row]) + " and " +
           SingleText(pair.After.ExtinctionRatio[1][pair.Row]);
}

// What is another about a row, part by part.
std::vector<std::string> PartsOf(const RowPair& pair) {
    std::vector<std::string> parts;
    const auto part = [&](bool differs, const std::string& words) {
        if (differs) parts.push_back(words);
    };
    const bool scan = ScanDiffers(pair);
    const std::string& file = pair.Now(&Workspace::ScanFile);
    part(scan, ScanWords(pair));
    if (file.empty()) return parts;
    part(!scan && pair.Differs(&Workspace::IncludeSet),
         pair.Now(&Workspace::IncludeSet) == 1 ? "in the fit" : "left out of the fit");
    part(!scan && pair.Differs(&Workspace::CenterpieceType),
         CenterpieceWords(pair.Now(&Workspace::CenterpieceType)));
    const int channel = pair.Now(&Workspace::DataChannel);
    part(scan ? channel > 0 : pair.Differs(&Workspace::DataChannel), ChannelWords(channel));
    part(!scan && pair.EitherDiffers(&Workspace::FitRange),
         Centimetres(pair, 0) + " to " + Centimetres(pair, 1) + " cm");
    part(!scan && pair.Differs(&Workspace::LeftOut), LeftOutWords(pair));
    part(!scan && pair.Differs(&Workspace::SignalCeiling), CeilingWords(pair));
    part(!scan && pair.Differs(&Workspace::IntensityOrder), OrderWords(pair));
    part(!scan && pair.Differs(&Workspace::CellPath),
         "path " + SingleText(10.0F * pair.Now(&Workspace::CellPath)) + " mm");
    part(!scan && (pair.Differs(&Workspace::BaselineFile) || pair.Differs(&Workspace::BaselineValue)),
         BaselineWords(pair));
    part(!scan && (pair.Differs(&Workspace::BaselineShifted) || pair.Differs(&Workspace::BaselineShift)),
         ShiftWords(pair));
    part(!scan && pair.EitherDiffers(&Workspace::ExtinctionRatio), RatioWords(pair));
    return parts;
}

std::string WithCommas(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : ", ") + part;
    return text;
}

std::string OpticsWords(const Workspace& before, const Workspace& after) {
    if (before.InterferenceData == after.InterferenceData) return "";
    return after.InterferenceData ? "; interference: concentrations in fringes"
                                  : "; absorbance: concentrations in absorbance units";
}

} // namespace

std::string RowList(const std::vector<RowNo>& rows) {
    std::string text;
    for (const RowNo row : rows)
        text += (text.empty() ? "" : ", ") + std::to_string(row.Number);
    return text;
}

std::string DescribeTableChange(const Workspace& before, const Workspace& after) {
    std::vector<RowNo> rows;
    std::vector<std::string> words;
    for (RowNo row(1); row.Number <= after.MaxSets; ++row) {
        const std::string parts = WithCommas(PartsOf({before, after, row}));
        if (parts.empty()) continue;
        rows.push_back(row);
        words.push_back(parts);
    }
    if (rows.empty()) return "";
    const std::string optics = OpticsWords(before, after);
    if (rows.size() == 1) return "Set " + RowList(rows) + ": " + words[0] + optics;
    const bool alike = std::all_of(words.begin(), words.end(), [&](const auto& w) { return w == words[0]; });
    return "Sets " + RowList(rows) + (alike ? ": " + words[0] : " changed") + optics;
}

} // namespace Quillon
