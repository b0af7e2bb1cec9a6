#pragma once
// Numbers that count different things, kept apart by the compiler.
//
// An ordinal is a whole number that knows what it counts: RowNo{3} and SetNo{3} are two types, so that an
// array by set cannot be asked with a row (platform/Arrays.h). Nothing is stored but the number. A plain
// whole number becomes an ordinal only where that is written, and an ordinal a plain number only by Number.

#include <compare>

namespace Quillon {

// Kind is any type's name; it need never be defined. A fresh ordinal is 0, which of things that count from
// one stands for none.
template <class Kind> struct Ordinal {
    long Number = 0;

    constexpr Ordinal() = default;
    constexpr explicit Ordinal(long number) : Number(number) {}

    // Ordinals of one kind are compared by their numbers; of two kinds they cannot be.
    constexpr auto operator<=>(const Ordinal&) const = default;
    constexpr Ordinal& operator++() {
        ++Number;
        return *this;
    }
    // The place so many further on, or so many back.
    constexpr Ordinal operator+(long by) const { return Ordinal(Number + by); }
    constexpr Ordinal operator-(long by) const { return Ordinal(Number - by); }
};

// The places First .. Last, both included, to walk over: for (const SetNo set : EachSet()) ...
template <class Kind> struct OrdinalRange {
    Ordinal<Kind> First;
    Ordinal<Kind> Last; // below First: none

    // What a loop counts with. Its end is asked for by <, so that a Last below First walks over nothing.
    struct Step {
        Ordinal<Kind> At;
        constexpr Ordinal<Kind> operator*() const { return At; }
        constexpr Step& operator++() {
            ++At;
            return *this;
        }
        constexpr bool operator!=(const Step& end) const { return At < end.At; }
    };
    constexpr Step begin() const { return {First}; }
    constexpr Step end() const { return {Last + 1}; }
};

} // namespace Quillon
