#pragma once
// What an analysis keeps beyond the stated fields of a fit save file. It stands behind the last of them, and
// only when there is something in it, so that a file without additions is byte for byte what it always was:
//
//     text "EXTENSION", i16 version (1), i32 bytes that follow
//     then for each value: text name, i32 bytes of its value, the value
//
// in the encodings of persistence/codec/FitFields.h. A reader skips names that it does not know. To keep
// another member, add a row to the table in FitExtension.cpp: its name, when it is written, and how.

#include "workspace/records/Workspace.h"

#include <string>
#include <string_view>

namespace Quillon {

// The bytes behind the last stated field; none when every member of the table has its initial value.
std::string EncodeExtension(const Workspace& analysis);

// Reads what stands behind the last stated field into analysis, whose members of the table have their initial
// values. Bytes that do not begin as an extension were written by nobody that this program knows and are
// passed over. A RuntimeError for an extension that is cut off or that holds a value of another size.
void DecodeExtension(std::string_view bytes, Workspace& analysis);

} // namespace Quillon
