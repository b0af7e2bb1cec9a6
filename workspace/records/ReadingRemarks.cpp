#include "workspace/records/ReadingRemarks.h"

#include "workspace/records/Roads.h"

#include <map>

namespace Quillon {

namespace {

std::map<std::string, std::string>& Kept() {
    static std::map<std::string, std::string> kept;
    return kept;
}

} // namespace

void KeepReadingRemark(const std::string& sha256, const std::string& remark) {
    if (!sha256.empty() && !remark.empty()) Kept()[sha256] = remark;
}

std::string ReadingRemark(const std::string& sha256) {
    const auto found = Kept().find(sha256);
    return found == Kept().end() ? "" : found->second;
}

std::string RemarkOfScan(const Workspace& analysis, RowNo row) {
    if (analysis.MeanOf[row].empty()) return ReadingRemark(analysis.ScanSha256[row]);
    std::string all;
    for (const MeanPart& part : analysis.MeanOf[row])
        if (const std::string remark = ReadingRemark(part.Sha256); !remark.empty())
            all += (all.empty() ? "" : "; ") + part.File + ": " + remark;
    return all;
}

std::string RemarkOfBaseline(const Workspace& analysis, RowNo row) {
    return analysis.BaselineFile[row] == NoBaseline ? "" : ReadingRemark(analysis.BaselineSha256[row]);
}

} // namespace Quillon
