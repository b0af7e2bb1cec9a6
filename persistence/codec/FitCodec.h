#pragma once
// The bytes of a fit save file from an analysis, and back. The layout is in FitFields.h.

#include "workspace/records/Workspace.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Quillon {

// The first two texts of a file.
struct FitFileHeader {
    std::string Program; // the program that the file belongs to
    std::string Version; // of the program that wrote it
    std::size_t Size{};  // bytes that the two take
};

// True when two names are those of one program: without regard to case, since a program that took a file of
// its own for another's would look for that other and find itself, again and again.
bool SameProgram(std::string_view one, std::string_view other);

// RuntimeError when the bytes do not start like a fit save file of this program or of a sister of it.
FitFileHeader ReadFitHeader(const std::string& bytes);

// The file for an analysis. A text of more than 32767 characters is the RuntimeError "Overflow".
std::string EncodeFit(const Workspace& analysis);

struct DecodedFit {
    Workspace Analysis;
    bool ModelGone = false; // the file's model no longer exists, and the single species model stands in
};

// The analysis in a file, with identity, preferences and memories of present, which are no part of it. All
// of it has been checked: see FitCheck.h. Bytes that are no valid file are a RuntimeError. SetOfRow and
// ConfidenceRatio are still to be derived.
DecodedFit DecodeFit(const std::string& bytes, const Workspace& present);

} // namespace Quillon
