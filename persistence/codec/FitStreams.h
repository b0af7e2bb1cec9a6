#pragma once
// The two streams that walk the table of fields: one appends to the bytes of a save file, one takes them
// from there. Reading trusts nothing: before anything is made as large as a file says, the bytes for it must
// be there, and whatever is wrong is a RuntimeError.

#include "models/table/Catalogue.h"
#include "persistence/codec/FitCheck.h"
#include "platform/LittleEndian.h"
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

// Appends fields to the bytes of a save file. What it is given is written as it stands; a text of more than
// 32767 bytes is the run-time error "Overflow". Names are for the reader alone, finite too.
class FitWriter {
public:
    std::string Bytes;
    static constexpr double Version = std::numeric_limits<double>::infinity(); // the layout of today

    template <class T>
    requires std::is_arithmetic_v<T>
    void Value(const char*, const T& value, bool = true) { AppendNumber(Bytes, value); }
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

    // Row by row; a matrix that is smaller, as without a fit, as zeros.
    void Square(const char* name, const ZeroBasedMatrix<double>& m, long n, bool = true) {
        const bool whole = m.RowHi() >= n - 1 && m.ColumnHi() >= n - 1;
        for (long i = 0; i < n; ++i)
            for (long j = 0; j < n; ++j)
                Value(name, whole ? m(i, j) : 0.0);
    }

    // For each row whether it holds something, which the fields before say as well.
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

    // An analysis at hand has its sizes.
    void Sizes(const Workspace&) {}
};

// Takes fields from the bytes of a save file, which have to live as long as the reader. Each of its functions
// is a RuntimeError where the bytes end too early or what they hold cannot be: the text names the field.
class FitReader {
public:
    explicit FitReader(std::string_view bytes) : Bytes(bytes) {}
    double Version = 0.0; // of the program that wrote the file; some fields came with later ones

    // Whether all bytes have been taken.
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

    // A file in which they say something else than its fields is damaged.
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

    // All that arrays are made by is known: refused where a program of the kind could not have written it.
    void Sizes(const Workspace& w) { CheckFitSizes(w); }

    // Bytes that mean something to somebody else, and all that are left.
    std::string_view TakeBytes(std::size_t count) {
        Need(count);
        const std::string_view taken = Bytes.substr(At, count);
        At += count;
        return taken;
    }
    std::string_view Rest() { return TakeBytes(Bytes.size() - At); }

    // The failure of a field whose value cannot be.
    [[noreturn]] static void Damaged(const std::string& name) {
        RaiseError("the file is damaged at " + name);
    }

private:
    void Need(std::size_t size) const {
        if (size > Bytes.size() - At) RaiseError(ErrorText::PastEndOfFile);
    }
    template <class T> T Take(const char* name, bool finite) {
        const T value = NumberAt<T>(Bytes, At);
        At += sizeof(T);
        if constexpr (std::floating_point<T>)
            if (finite && !std::isfinite(value)) Damaged(name);
        return value;
    }
    std::string_view Bytes;
    std::size_t At = 0;
};

} // namespace Quillon
