#pragma once
// The two streams that walk the table of fields of a graph file: one appends to its bytes, one takes them
// from there. Reading trusts nothing: before anything is made as large as a file says, the bytes for it must
// be there, and whatever is wrong is a RuntimeError.

#include "chart/records/Records.h"
#include "chart/records/SetTable.h"
#include "platform/Arrays.h"
#include "platform/LittleEndian.h"
#include "platform/Narrow.h"
#include "platform/RuntimeError.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace Quillon {

// Both have the same operations under the same names, so that one walk over the fields serves both
// (chart/files/GraphFields.cpp). The name that each takes first is what a failure of the reader tells; the
// writer has no use for it. Counts and bounds are 16-bit words.

// Appends to Bytes. What does not fit into a 16-bit count is the run-time error "Overflow".
class GraphWriter {
public:
    std::string Bytes;
    static constexpr bool Reads = false;
    static constexpr double Version = 1.5; // the layout of today

    // A number in its own width, little-endian.
    template <class T>
    requires std::is_arithmetic_v<T>
    void Value(const char*, const T& value) { AppendNumber(Bytes, value); }
    // A text behind the count of its characters, and one of fixed length with blanks behind it.
    void Value(const char* name, const std::string& text) {
        Value(name, ToInt16(text.size()));
        Bytes += text;
    }
    template <std::size_t N> void Value(const char*, const FixedText<N>& text) { Bytes += text.Padded(); }

    // The upper index of a list that counts from 0; and what the list holds.
    template <class T> void UpperIndex(const char* name, const std::vector<T>& list) {
        Value(name, ToInt16(static_cast<long>(list.size()) - 1));
    }
    template <class T> void Standing(const std::vector<T>&, std::size_t) {}
    template <class T> void Items(const char* name, const std::vector<T>& list) {
        for (const T& item : list)
            Value(name, item);
    }
    // The count of the records of a list.
    template <class T> void Count(const char* name, const std::vector<T>& list, std::size_t) {
        Value(name, ToInt16(list.size()));
    }
    // An array that counts from 1, its upper bound before it.
    template <class T> void Bounded(const char* name, const OneBased<T>& array) {
        Value(name, ToInt16(array.Hi()));
        for (const T& item : array)
            Value(name, item);
    }
    // A table as wide as it is high, row by row, its upper bound before it.
    void Square(const char* name, const OneBasedMatrix<float>& table) {
        Value(name, ToInt16(table.RowHi()));
        for (long i = 1; i <= table.RowHi(); ++i)
            for (long j = 1; j <= table.RowHi(); ++j)
                Value(name, table(i, j));
    }
    // Points by sets, set after set, both from 1: as many as are asked for, whatever the table has. What it
    // lacks is written as MissingValue.
    void Table(const char* name, const SetTable& table, long points, long sets) {
        for (long set = 1; set <= sets; ++set)
            for (long point = 1; point <= points; ++point)
                Value(name,
                      point <= table.Points() && set <= table.Sets() ? table(point, set) : MissingValue);
    }
};

// Takes from bytes that outlive it. Too few of them are the run-time error "Input past end of file", a length
// below 0 is "the file is damaged at NAME".
class GraphReader {
public:
    explicit GraphReader(std::string_view bytes) : Bytes(bytes) {}
    static constexpr bool Reads = true;
    double Version = 0.0; // of the file's layout, set by whoever has read it: 1.0 to 1.5
    std::size_t At = 0;   // bytes taken so far

    // Bytes not yet taken.
    std::size_t Left() const { return Bytes.size() - At; }
    // Looks ahead and takes nothing.
    bool Follows(std::string_view what) const { return Bytes.substr(At, what.size()) == what; }

    template <class T>
    requires std::is_arithmetic_v<T>
    void Value(const char*, T& value) {
        Need(sizeof(T));
        value = NumberAt<T>(Bytes, At);
        At += sizeof(T);
    }
    void Value(const char* name, std::string& text) {
        std::int16_t length = 0;
        Value(name, length);
        if (length < 0) Damaged(name);
        text = Take(static_cast<std::size_t>(length));
    }
    template <std::size_t N> void Value(const char*, FixedText<N>& text) {
        const std::string_view taken = Take(N);
        text = taken.substr(0, taken.find('\0')); // other writers fill up with zeros
    }
    // Makes the list as long as its upper index says; its items come by Items.
    template <class T> void UpperIndex(const char* name, std::vector<T>& list) {
        std::int16_t upper = 0;
        Value(name, upper);
        if (upper < 0) Damaged(name);
        Standing(list, static_cast<std::size_t>(upper) + 1);
    }
    // Makes a list as long as is known before it comes, in items.
    template <class T> void Standing(std::vector<T>& list, std::size_t count) {
        Need(count * sizeof(T));
        list.assign(count, T{});
    }
    template <class T> void Items(const char* name, std::vector<T>& list) {
        for (T& item : list)
            Value(name, item);
    }
    // Makes a list of as many records as are counted, each of at least bytesEach bytes; no count makes the
    // list larger than the file could fill.
    template <class T> void Count(const char* name, std::vector<T>& list, std::size_t bytesEach) {
        const std::size_t count = Bound(name);
        Need(count * bytesEach);
        list.assign(count, T{});
    }
    template <class T> void Bounded(const char* name, OneBased<T>& array) {
        const std::size_t count = Bound(name);
        Need(count * 2); // a text takes two bytes at least
        array.Recreate(static_cast<long>(count));
        for (T& item : array)
            Value(name, item);
    }
    void Square(const char* name, OneBasedMatrix<float>& table) {
        const std::size_t n = Bound(name);
        Need(n * n * sizeof(float));
        table.Recreate(static_cast<long>(n), static_cast<long>(n));
        for (std::size_t i = 0; i < n * n; ++i)
            Value(name, table.Data()[i]);
    }
    void Table(const char* name, SetTable& table, long points, long sets) {
        if (points < 0 || sets < 0) Damaged(name);
        Need(static_cast<std::size_t>(points) * static_cast<std::size_t>(sets) * sizeof(float));
        table.Recreate(points, sets);
        for (long set = 1; set <= sets; ++set)
            for (long point = 1; point <= points; ++point) {
                float& value = table(point, set);
                Value(name, value);
                if (!std::isfinite(value)) value = MissingValue; // as where data are handed over
            }
    }

    // The failures of both kinds; Need asks for so many bytes and takes none.
    [[noreturn]] static void Damaged(const std::string& name) {
        RaiseError("the file is damaged at " + name);
    }
    void Need(std::size_t size) const {
        if (size > Left()) RaiseError(ErrorText::PastEndOfFile);
    }

private:
    // An upper bound of an array that counts from 1: as many items.
    std::size_t Bound(const char* name) {
        std::int16_t upper = 0;
        Value(name, upper);
        if (upper < 0) Damaged(name);
        return static_cast<std::size_t>(upper);
    }
    std::string_view Take(std::size_t size) {
        Need(size);
        At += size;
        return Bytes.substr(At - size, size);
    }
    std::string_view Bytes;
};

} // namespace Quillon
