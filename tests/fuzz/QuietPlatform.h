#pragma once
// What the fuzzers fill the seam with: no files, nobody who looks, and a clock that stands.

#include "platform/Platform.h"
#include "platform/RuntimeError.h"

#include <string>

namespace Quillon {

// Every question is answered alike. A fuzzer that has a file replaces the entries of files.
inline Platform QuietPlatform(BoxAnswer answer) {
    Platform p;
    p.MessageBoxAnswer = [answer](const BoxRequest&) { return answer; };
    p.ReadFile = [](const std::string&) -> std::string { RaiseError(ErrorText::FileNotFound); };
    p.WriteFile = [](const std::string&, const std::string&) { RaiseError(ErrorText::PermissionDenied); };
    p.FileExists = [](const std::string&) { return false; };
    p.DirectoryExists = [](const std::string&) { return false; };
    p.Clock = [] { return ClockTime{2020, 4, 21, 12, 0, 0}; };
    p.Uniform = [] { return 0.5F; };
    return p;
}

} // namespace Quillon
