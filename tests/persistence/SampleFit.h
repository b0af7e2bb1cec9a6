#pragma once
// Analyses to save, and the bytes that a save file of one must have, written by hand.

#include "workspace/records/Workspace.h"

#include <string>

namespace Quillon {

// Two sets, from rows 1 and 3 of the table. Row 3 has a baseline and both concentration constraints, so that
// its four points are followed by two pseudo-points; row 2 holds a scan that is not in the fit; row 4 had a
// scan before the table was cleared; row 1 had a baseline that was taken off. Two parameters are fitted, and
// their confidence limits stand. Every scalar and the used part of every array differs from a fresh start.
Workspace SampleFit();

// The largest fit that the program holds: 18 sets of 1800 points.
Workspace LargestFit();

// The same with everything that can be added: a baseline in each row, every constraint, every flag, limits of
// as many fitted parameters as there are slots.
Workspace RichestFit();

// A growing file. Little-endian, whatever the machine.
struct Bytes {
    std::string All;
    Bytes& I16(long value);
    Bytes& I32(long value);
    Bytes& F32(float value);
    Bytes& F64(double value);
    Bytes& Text(const std::string& text);
};

// The save file of an analysis, field by field after the table of the layout. It shares no code with the
// program's own writer. LimitsDone decides over the limits, as in the program.
std::string BytesByHand(const Workspace& w);

// Where a field of SampleFit's file starts, by the number of the field in the layout.
std::size_t OffsetOfField(const Workspace& w, int field);

// The file with two bytes at a place replaced.
std::string WithI16(std::string bytes, std::size_t at, long value);
std::string WithF32(std::string bytes, std::size_t at, float value);

} // namespace Quillon
