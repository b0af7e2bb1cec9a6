#pragma once
// The two streams that walk the table of fields: one appends to the bytes of a save file, one takes them
// from there. Reading trusts nothing: before anything is made as large as a file says, the bytes for it must
// be there, and whatever is wrong is a RuntimeError.

#include "models/table/Catalogue.h"
#include "persistence/codec/FitCheck.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

namespace Quillon {

namespace Detail {
template <std::size_t Size> struct BitsOfSize;
template <> struct BitsOfSize<2> { using Type = std::uint16_t; };
template <> struct BitsOfSize<4> { using Type = std::uint32_t; };
template <> struct BitsOfSize<8> { using Type = std::uint64_t; };
template <class T> using Bits = typename BitsOfSize<sizeof(T)>::Type;
} // namespace Detail

class FitWriter {
public:
    std::string Bytes;
    static constexpr double Version = std::numeric_limits<double>::infinity(); // the layout of today

    template <class T>
    requires std::is_arithmetic_v<T>
    void Value(const char*, const T& value, bool = true) {
        auto bits = std::bit_cast<Detail::Bits<T>>(value);
        for (std::size_t i = 0; i < sizeof(T); ++i) {
            Bytes += static_cast<char>(bits & 0xFFU);
            bits = static_cast<decltype(bits)>(bits >> 8U);
        }
    }
    void Value(const char* name, const std::string& text, bool = true) {
        Value(name, ToInt16(text.size()));
        Bytes += text;
    }
    template <class T, long Lo, class Kind>
    void Array(const char* name, const BasedArray<T, Lo, Kind>& a, long low, long high, bool = true) {
        long first = low;
        if constexpr (std::is_arithmetic_v<T> && std::endian::native == std::endian::little)
            if (const long held = std::min(high, a.Hi()); held >= low) { // as it stands in memory
                Bytes.append(reinterpret_cast<const char*>(a.Data() + (low - Lo)),
                             static_cast<std::size_t>(held - low + 1) * sizeof(T));
                first = held + 1;
            }
        for (long i = first; i <= high; ++i)
            Value(name, i <= a.Hi() ? a[i] : T{});
    }
    void Square(const char* name, const ZeroBasedMatrix<double>& m, long n, bool = true) {
        const bool whole = m.RowHi() >= n - 1 && m.ColumnHi() >= n - 1;
        for (long i = 0; i < n; ++i)
            for (long j = 0; j < n; ++j)
                Value(name, whole ? m(i, j) : 0.0);
    }
    template <class Holds> void Flags(const char* name, long count, const Holds& holds) {
        for (RowNo row(1); row <= RowNo(count); ++row)
            Value(name, Flag(holds(row)));
    }
    // The model list fills itself when its dialog is first shown; a list that never was is written all the
    // same.
    void ModelNames(const Workspace& w) {
        for (int i = 1; i <= w.ModelCount; ++i)
            Value("ModelName", i <= w.ModelName.Hi() ? w.ModelName[i] : ModelDialogName(i));
    }
    void Sizes(const Workspace&) {}
};

class FitReader {
public:
    explicit FitReader(std::string_view bytes) : Bytes(bytes) {}
    double Version = 0.0;
    bool AtEnd() const { return At == Bytes.size(); }

    template <class T>
    requires std::is_arithmetic_v<T>
    void Value(const char* name, T& value, bool finite = true) {
        Need(sizeof(T));
        value = Take<T>(name, finite);
    }
    void Value(const char* name, std::string& text, bool = true) {
        std::int16_t length = 0;
        Value(name, length);
        if (length < 0) Damaged(name);
        Need(static_cast<std::size_t>(length));
        text.assign(Bytes.substr(At, static_cast<std::size_t>(length)));
        At += static_cast<std::size_t>(length);
    }
    template <class T, long Lo, class Kind>
    void Array(const char* name, BasedArray<T, Lo, Kind>& a, long low, long high, bool finite = true) {
        if (high < low) return;
        // The shortest text takes two bytes, so no array outgrows the file.
        Need(static_cast<std::size_t>(high - low + 1) * (std::is_arithmetic_v<T> ? sizeof(T) : 2));
        if (high > a.Hi()) a.Resize(high);
        for (long i = low; i <= high; ++i)
            if constexpr (std::is_arithmetic_v<T>)
                a[i] = Take<T>(name, finite);
            else
                Value(name, a[i]);
    }
    void Square(const char* name, ZeroBasedMatrix<double>& m, long n, bool finite = true) {
        Need(static_cast<std::size_t>(n * n) * sizeof(double));
        m.Recreate(n - 1, n - 1);
        for (long i = 0; i < n; ++i)
            for (long j = 0; j < n; ++j)
                m(i, j) = Take<double>(name, finite);
    }
    template <class Holds> void Flags(const char* name, long count, const Holds& holds) {
        for (RowNo row(1); row <= RowNo(count); ++row) {
            std::int16_t flag = 0;
            Value(name, flag);
            if ((flag != 0) != holds(row)) Damaged(name);
        }
    }
    void ModelNames(Workspace& w) {
        w.ModelName.Recreate(0);
        Array("ModelName", w.ModelName, 1, w.ModelCount);
    }
    void Sizes(const Workspace& w) { CheckFitSizes(w); }
    std::string_view TakeBytes(std::size_t count) {
        Need(count);
        const std::string_view taken = Bytes.substr(At, count);
        At += count;
        return taken;
    }
    std::string_view Rest() { return TakeBytes(Bytes.size() - At); }

    [[noreturn]] static void Damaged(const std::string& name) {
        RaiseError("the file is damaged at " + name);
    }

private:
    void Need(std::size_t size) const {
        if (size > Bytes.size() - At) RaiseError(ErrorText::PastEndOfFile);
    }
    template <class T> T Take(const char* name, bool finite) {
        Detail::Bits<T> bits = 0;
        for (std::size_t i = sizeof(T); i-- > 0;)
            bits = static_cast<Detail::Bits<T>>((static_cast<std::uint64_t>(bits) << 8U) |
                                                static_cast<unsigned char>(Bytes[At + i]));
        At += sizeof(T);
        const T value = std::bit_cast<T>(bits);
        if constexpr (std::floating_point<T>)
            if (finite && !std::isfinite(value)) Damaged(name);
        return value;
    }
    std::string_view Bytes;
    std::size_t At = 0;
};

} // namespace Quillon
