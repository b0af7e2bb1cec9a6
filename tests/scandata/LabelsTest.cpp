// The common directory of the labels.
#include "scandata/table/Labels.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

struct Shortened {
    std::vector<std::string> Labels;
    std::string Prefix;
    bool operator==(const Shortened&) const = default;
};

Shortened Shorten(const std::vector<std::string>& labels) {
    OneBased<std::string> array(static_cast<long>(labels.size()));
    std::copy(labels.begin(), labels.end(), array.begin());
    Shortened result{{}, "former"};
    ShortenLabels(array, result.Prefix, 1, array.Hi());
    result.Labels.assign(array.begin(), array.end());
    return result;
}

TEST(Labels, TheCommonDirectoryIsTakenOff) {
    EXPECT_EQ(Shorten({"/data/run7/1.RA1 Ch A", "/data/run7/12.RA1", "/data/run7/1.RA2 -BL"}),
              (Shortened{{"1.RA1 Ch A", "12.RA1", "1.RA2 -BL"}, "/data/run7/"}));
}

TEST(Labels, DirectoriesThatDifferStay) {
    EXPECT_EQ(Shorten({"/data/run7/1.RA1", "/data/run8/1.RA1"}),
              (Shortened{{"run7/1.RA1", "run8/1.RA1"}, "/data/"}));
}

TEST(Labels, BothSeparatorsAndADriveAreUnderstood) {
    EXPECT_EQ(Shorten({"C:\\xla\\a.RA1", "C:\\xla\\b.RA1"}), (Shortened{{"a.RA1", "b.RA1"}, "C:\\xla\\"}));
    EXPECT_EQ(Shorten({"C:xla\\a.RA1", "C:a.RA1"}), (Shortened{{"xla\\a.RA1", "a.RA1"}, "C:"}));
}

TEST(Labels, LettersAreComparedInCapitalsAndThePrefixIsThatOfTheFirst) {
    EXPECT_EQ(Shorten({"C:\\XLA\\a.RA1", "c:\\xla\\b.RA1"}), (Shortened{{"a.RA1", "b.RA1"}, "C:\\XLA\\"}));
}

TEST(Labels, EqualLabelsKeepTheirNames) {
    EXPECT_EQ(Shorten({"/data/1.RA1", "/data/1.RA1"}), (Shortened{{"1.RA1", "1.RA1"}, "/data/"}));
    EXPECT_EQ(Shorten({"/data/1.RA1", "/data/1.RA1 -BL"}), (Shortened{{"1.RA1", "1.RA1 -BL"}, "/data/"}));
    EXPECT_EQ(Shorten({"/data/1.RA1 -BL", "/data/1.RA1"}), (Shortened{{"1.RA1 -BL", "1.RA1"}, "/data/"}));
}

TEST(Labels, WithoutACommonDirectoryNothingHappens) {
    EXPECT_EQ(Shorten({"1.RA1", "12.RA1"}), (Shortened{{"1.RA1", "12.RA1"}, "former"}));
    EXPECT_EQ(Shorten({"/a/1.RA1", "b/1.RA1"}), (Shortened{{"/a/1.RA1", "b/1.RA1"}, "former"}));
    EXPECT_EQ(Shorten({"", "/a"}), (Shortened{{"", "/a"}, "former"}));
}

TEST(Labels, ASingleLabelStays) {
    EXPECT_EQ(Shorten({"/data/1.RA1"}), (Shortened{{"/data/1.RA1"}, "former"}));
}

TEST(Labels, OnlyThoseNamedAreTouched) {
    OneBased<std::string> labels(4);
    labels[1] = "/a/1";
    labels[2] = "/a/2";
    labels[3] = "/a/3";
    std::string prefix;
    ShortenLabels(labels, prefix, 2, 3);
    EXPECT_EQ(labels[1], "/a/1");
    EXPECT_EQ(labels[2], "2");
    EXPECT_EQ(labels[3], "3");
    EXPECT_EQ(prefix, "/a/");
}

} // namespace
} // namespace Quillon
