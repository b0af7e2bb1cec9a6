// The table of members against the struct: every member of the workspace stands in it once, and the table
// finds a difference in any of them.
#include "workspace/records/Fields.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace Quillon {
namespace {

struct Anything {
    template <class T> operator T() const; // stands for a member of any type in unevaluated context
};

template <std::size_t> using Any = Anything;
template <class T, std::size_t... I> constexpr bool TakesBraces(std::index_sequence<I...>) {
    return requires {
        T{Any<I>{}...};
    };
}
// The members of an aggregate: the longest list of braces that initialises it.
template <class T, std::size_t Low, std::size_t High> constexpr std::size_t CountMembers() {
    if constexpr (Low == High) {
        return Low;
    } else {
        constexpr std::size_t Mid = (Low + High + 1) / 2;
        if constexpr (TakesBraces<T>(std::make_index_sequence<Mid>{}))
            return CountMembers<T, Mid, High>();
        else
            return CountMembers<T, Low, Mid - 1>();
    }
}

TEST(WorkspaceFields, EveryMemberStandsInTheTableOnce) {
    std::set<std::string> names;
    std::size_t count = 0;
    Workspace w;
    VisitFields(w, [&](const char* name, auto&) {
        names.insert(name);
        ++count;
    });
    EXPECT_EQ(names.size(), count);
    constexpr std::size_t members = CountMembers<Workspace, 1, 400>();
    EXPECT_EQ(members, count);
}

TEST(WorkspaceFields, AssignmentOfAFreshOneResetsEverything) {
    Workspace w = FreshWorkspace();
    w.Parms[3] = 4.0F;
    w.ScanFile[18] = "x";
    w.MaxIterations = 7;
    EXPECT_FALSE(w == FreshWorkspace());
    w = FreshWorkspace();
    EXPECT_TRUE(w == FreshWorkspace());
}

TEST(WorkspaceFields, LastSlotOfTheLastSetIsTheLastParameter) {
    EXPECT_EQ(SlotOffset(StandardMaxSets), StandardMaxParms - 1);
    EXPECT_EQ(FreshWorkspace().Parms.Hi(), StandardMaxParms - 1);
}

} // namespace
} // namespace Quillon
