#pragma once
// The fit save file: a whole analysis, with its scans, so that a fit can be reopened with graphs and report
// when no other file is left. The layout is in FitFields.h.
//
// Writing and reading are pure functions between bytes and workspace (FitCodec.h); the commands around them
// ask for the file, talk to the user and take the result into use. A restore that fails leaves the analysis
// at hand as it was, and a save that fails leaves the former file as it was.

#include "persistence/codec/FitCodec.h"

#include <string>

namespace Quillon {

// --- without a word to the user ----------------------------------------------------------------------------

// The bytes of the present analysis. RuntimeError when they could not be restored again.
std::string FitFileBytes();

// Writes the present analysis to a file, which then is its FitFile. RuntimeError, and the former file as it
// was, when the system refuses or when the file could not be restored again.
void WriteFitFile(const std::string& path);

// Makes the analysis in bytes the present one: derives what is not in the file and clears what belonged to
// the former analysis. RuntimeError, and Work as it was, when the bytes are refused.
struct AdoptedFit {
    bool ModelGone = false;
};
AdoptedFit AdoptFit(const std::string& bytes, const std::string& path);

// --- commands ----------------------------------------------------------------------------------------------

enum class RestoreEnd {
    Restored,
    GivenUp, // no file was chosen; or the user does not want it or this version cannot use it, and the reader
             // has set Work.AbortFit
    HandedOver, // a sister program has been started with the file
    Failed      // the file could not be read; the user has been told
};
struct RestoreOutcome {
    RestoreEnd End = RestoreEnd::GivenUp;
    std::string Sentence;    // why, when Failed
    bool EndProgram = false; // handed over, and this process was started for the sake of that file
};

// The command "save": asks for a file, proposing a name, and writes it. True when the analysis stands there.
bool SaveFit();

// Writes to the file of the analysis, Work.FitFile, where that is there and named as this program names its
// files; otherwise as SaveFit.
bool SaveFitToItsFile();

// The command "restore": asks for a file and reads it. Clears AbortFit again.
RestoreOutcome RestoreFit();

// The reader. fromCommandLine: the program was started with the file as its argument.
RestoreOutcome ReadFitFile(const std::string& path, bool fromCommandLine);

} // namespace Quillon
