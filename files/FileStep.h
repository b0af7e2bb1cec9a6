#pragma once
// The steps in which a file of the machine is read or written, each of which may fail, and the words for
// why one did.

#include "platform/RuntimeError.h"

#include <cerrno>
#include <functional>
#include <string>

namespace Quillon {

// In the order of a write, after the two of a read.
enum class FileStep { Open, Read, Make, Write, Keep, Flush, Name, Close, Replace, FlushName };

// For tests: asked before each step on the disk; any answer but 0 is the error number that the step fails
// with, and the step is not taken.
extern std::function<int(FileStep)> BeforeFileStep;

// Takes a step. call returns -1 when it has failed. 0, or the error number.
template <class Call> int Step(FileStep step, const Call& call) {
    if (const int injected = BeforeFileStep ? BeforeFileStep(step) : 0) return injected;
    return call() == -1 ? errno : 0;
}

// True when a look for a file failed because nothing stands under its name. Any other failure leaves open
// whether something does.
bool SaysAbsent(int error);

// Why a file could not be read, or written, in the words of platform/RuntimeError.h where those fit.
std::string ReadErrorText(int error);
std::string WriteErrorText(int error);

[[noreturn]] void RaiseReadError(int error);
[[noreturn]] void RaiseWriteError(int error);

} // namespace Quillon
