#pragma once
// What the tests of metafiles share: drawing one and reading it back.

#include "MetafileReader.h"
#include "chart/targets/Metafile.h"

#include <gtest/gtest.h>

#include <utility>

namespace Quillon {

// A page of A4 across at 300 dots per inch.
inline PictureRequest Page() {
    return {std::string("Quillon\0Graph\0\0", 15), 3508, 2480, 300.0, 300.0};
}

// A picture of 400 by 300 units at 96 dots per inch, on which the thinnest pen is one unit.
inline PictureRequest SmallPicture() {
    return {"", 400, 300, 96.0, 96.0};
}

struct Drawn {
    EmfFile File;
    std::vector<EmfItem> Items;
};

template <typename Draw> Drawn DrawOn(const PictureRequest& request, const Draw& draw) {
    const PictureFile picture = OpenMetafile(request);
    draw(picture.Surface);
    Drawn drawn;
    drawn.File = ReadMetafile(picture.Finish());
    EXPECT_EQ(drawn.File.Problem, "");
    drawn.Items = PlayMetafile(drawn.File);
    return drawn;
}

inline const EmfRecord* FirstOf(const EmfFile& file, std::uint32_t type) {
    for (const EmfRecord& record : file.Records)
        if (record.Type == type) return &record;
    return nullptr;
}

inline std::vector<int> RectAt(const EmfRecord& record, std::size_t offset) {
    return {record.Signed(offset), record.Signed(offset + 4), record.Signed(offset + 8),
            record.Signed(offset + 12)};
}

inline std::vector<std::pair<int, int>> Pairs(const std::vector<DevicePoint>& points) {
    std::vector<std::pair<int, int>> pairs;
    for (const DevicePoint point : points)
        pairs.emplace_back(point.X, point.Y);
    return pairs;
}

using Places = std::vector<std::pair<int, int>>;

} // namespace Quillon
