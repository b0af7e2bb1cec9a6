#include "commands/history/KeptAnalysis.h"

#include "workspace/records/Fields.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <type_traits>

namespace Quillon {

namespace {

template <class T>
constexpr bool IsLarge =
    std::is_same_v<T, OneBased<float>> || std::is_same_v<T, OneBased<std::int16_t>> ||
    std::is_same_v<T, PerRow<OneBased<float>>> || std::is_same_v<T, std::array<PerRow<OneBased<float>>, 2>> ||
    std::is_same_v<T, ZeroBasedMatrix<double>> || std::is_same_v<T, ZeroBasedMatrix<float>>;

// By bits, since 0 equals -0 and what is no number equals nothing.
template <class Numbers> bool SameNumbers(const Numbers& one, const Numbers& other) {
    return one.Size() == other.Size() &&
           (one.Size() == 0 || std::memcmp(one.Data(), other.Data(), one.Size() * sizeof(*one.Data())) == 0);
}
template <class T, long Lo, class Kind>
bool SameBits(const BasedArray<T, Lo, Kind>& one, const BasedArray<T, Lo, Kind>& other) {
    if constexpr (std::is_arithmetic_v<T>)
        return SameNumbers(one, other);
    else
        return std::equal(one.begin(), one.end(), other.begin(), other.end(), SameNumbers<T>);
}
template <class T, long Lo> bool SameBits(const BasedMatrix<T, Lo>& one, const BasedMatrix<T, Lo>& other) {
    return one.RowHi() == other.RowHi() && one.ColumnHi() == other.ColumnHi() && SameNumbers(one, other);
}

template <class T, std::size_t N> bool SameBits(const std::array<T, N>& one, const std::array<T, N>& other) {
    return std::equal(one.begin(), one.end(), other.begin(),
                      [](const T& a, const T& b) { return SameBits(a, b); });
}

template <class T> const T& LargeMember(const KeptAnalysis& kept, std::size_t place) {
    return *static_cast<const T*>(kept.Large[place].get());
}

} // namespace

KeptAnalysis KeepAnalysis(const Workspace& analysis, const KeptAnalysis* like) {
    KeptAnalysis kept;
    VisitMembers([&](const char*, auto member) {
        using T = std::decay_t<decltype(analysis.*member)>;
        if constexpr (IsLarge<T>) {
            const std::size_t place = kept.Large.size();
            if (like && SameBits(LargeMember<T>(*like, place), analysis.*member))
                kept.Large.push_back(like->Large[place]);
            else
                kept.Large.push_back(std::make_shared<const T>(analysis.*member));
            kept.Small.*member = T{};
        } else {
            kept.Small.*member = analysis.*member;
        }
    });
    return kept;
}

Workspace WholeAnalysis(const KeptAnalysis& kept) {
    Workspace analysis = kept.Small;
    std::size_t place = 0;
    VisitMembers([&](const char*, auto member) {
        using T = std::decay_t<decltype(analysis.*member)>;
        if constexpr (IsLarge<T>) analysis.*member = LargeMember<T>(kept, place++);
    });
    return analysis;
}

} // namespace Quillon
