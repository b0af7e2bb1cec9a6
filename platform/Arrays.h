#pragma once
// Arrays that know their own base, so that sets and points count from one and parameter slots from zero
// without a "+ 1" anywhere. An index out of range is the run-time error "Subscript out of range" in
// builds with QUILLON_CHECK_INDEX (all test and debug builds); loops over all points use Data().
//
// An array may also know what its subscript counts (platform/Ordinal.h): by an ordinal of its own kind or a
// plain whole number it is read, by an ordinal of another kind it does not compile.

#include "platform/Ordinal.h"
#include "platform/RuntimeError.h"

#include <concepts>
#include <cstddef>
#include <vector>

namespace Quillon {

// What counts the elements of an array whose subscript is any whole number.
struct PlainCount {};

// A vector of T with the subscripts Lo .. Hi(), which count what Kind says.
template <class T, long Lo, class Kind = PlainCount> class BasedArray {
public:
    BasedArray() = default;
    explicit BasedArray(long hi, const T& value = T{}) { Recreate(hi, value); }
    // The elements of an array by plain numbers become those of this one.
    template <std::same_as<PlainCount> Plain>
    requires(!std::same_as<Kind, PlainCount>) BasedArray(const BasedArray<T, Lo, Plain>& plain)
        : Items(plain.begin(), plain.end()) {}

    static constexpr long Low() { return Lo; }                           // the lowest subscript
    long Hi() const { return Lo + static_cast<long>(Items.size()) - 1; } // the highest one; Lo - 1 when empty
    std::size_t Size() const { return Items.size(); }                    // how many elements
    bool Empty() const { return Items.empty(); }

    // Replaces the array by one up to hi, all elements equal to value; the former contents are gone, and so
    // is every pointer into them. A hi below Lo leaves none.
    void Recreate(long hi, const T& value = T{}) {
        Items.assign(hi < Lo ? 0 : static_cast<std::size_t>(hi - Lo + 1), value);
    }
    // Changes the upper end and keeps the contents that fit; elements that are new are equal to value.
    void Resize(long hi, const T& value = T{}) {
        Items.resize(hi < Lo ? 0 : static_cast<std::size_t>(hi - Lo + 1), value);
    }

    // The element with subscript i, Lo .. Hi(). One outside is an error of the program, not of its data: it
    // is told by builds that check, and must not happen in others.
    template <std::integral Count> T& operator[](Count i) { return Items[Offset(static_cast<long>(i))]; }
    template <std::integral Count> const T& operator[](Count i) const {
        return Items[Offset(static_cast<long>(i))];
    }
    T& operator[](Ordinal<Kind> i) { return Items[Offset(i.Number)]; }
    const T& operator[](Ordinal<Kind> i) const { return Items[Offset(i.Number)]; }

    // The element with subscript Lo; the next ones follow without gaps.
    T* Data() { return Items.data(); }
    const T* Data() const { return Items.data(); }

    // The elements by rising subscript.
    auto begin() { return Items.begin(); }
    auto end() { return Items.end(); }
    auto begin() const { return Items.begin(); }
    auto end() const { return Items.end(); }

    // As many elements, each equal; NaN is equal to nothing.
    bool operator==(const BasedArray&) const = default;

private:
    std::size_t Offset(long i) const {
#ifdef QUILLON_CHECK_INDEX
        if (i < Lo || i > Hi()) RaiseError(ErrorText::BadSubscript);
#endif
        return static_cast<std::size_t>(i - Lo);
    }
    std::vector<T> Items;
};

// Points and models count from one, vectors of linear algebra from zero.
template <class T> using OneBased = BasedArray<T, 1>;
template <class T> using ZeroBased = BasedArray<T, 0>;

// A matrix of T with both subscripts from Lo; row by row in memory, (LastColumn - Lo + 1) elements a row.
// Only its upper ends are kept: a matrix of no rows or no columns has no elements.
template <class T, long Lo> class BasedMatrix {
public:
    BasedMatrix() = default;
    BasedMatrix(long rowHi, long columnHi, const T& value = T{}) { Recreate(rowHi, columnHi, value); }

    static constexpr long Low() { return Lo; }
    long RowHi() const { return LastRow; }       // highest row; Lo - 1 of a fresh matrix
    long ColumnHi() const { return LastColumn; } // highest column
    std::size_t Size() const { return Items.size(); }

    // Replaces the matrix by one up to those ends, all elements equal to value; the former contents are gone.
    void Recreate(long rowHi, long columnHi, const T& value = T{}) {
        LastRow = rowHi;
        LastColumn = columnHi;
        const bool none = rowHi < Lo || columnHi < Lo;
        Items.assign(none ? 0 : static_cast<std::size_t>((rowHi - Lo + 1) * (columnHi - Lo + 1)), value);
    }

    // The element of row i and column j; one outside as with an array.
    T& operator()(long i, long j) { return Items[Offset(i, j)]; }
    const T& operator()(long i, long j) const { return Items[Offset(i, j)]; }
    // Rows and columns that count the same.
    template <class Kind> T& operator()(Ordinal<Kind> i, Ordinal<Kind> j) {
        return Items[Offset(i.Number, j.Number)];
    }
    template <class Kind> const T& operator()(Ordinal<Kind> i, Ordinal<Kind> j) const {
        return Items[Offset(i.Number, j.Number)];
    }

    // The first element of row i; those of its other columns follow without gaps.
    T* Row(long i) { return Items.data() + (i - Lo) * (LastColumn - Lo + 1); }
    const T* Row(long i) const { return Items.data() + (i - Lo) * (LastColumn - Lo + 1); }

    T* Data() { return Items.data(); }
    const T* Data() const { return Items.data(); }

    bool operator==(const BasedMatrix&) const = default;

private:
    std::size_t Offset(long i, long j) const {
#ifdef QUILLON_CHECK_INDEX
        if (i < Lo || i > LastRow || j < Lo || j > LastColumn) RaiseError(ErrorText::BadSubscript);
#endif
        return static_cast<std::size_t>((i - Lo) * (LastColumn - Lo + 1) + (j - Lo));
    }
    long LastRow = Lo - 1;
    long LastColumn = Lo - 1;
    std::vector<T> Items;
};

// Matrices of linear algebra count from zero, tables by row of the data from one.
template <class T> using ZeroBasedMatrix = BasedMatrix<T, 0>;
template <class T> using OneBasedMatrix = BasedMatrix<T, 1>;

} // namespace Quillon
