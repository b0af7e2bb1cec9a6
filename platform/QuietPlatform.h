#pragma once
// A filling of the seam for work that nobody watches: copies of an analysis, benches, fuzzers.
//
// Nothing is shown or told, there are no files, and the clock and the uniform number stand still, so that the
// work comes to the same whenever and wherever it runs. Whoever has more, as numbers of its own or a file,
// replaces that entry before InstallPlatform.

#include "platform/Platform.h"
#include "platform/RuntimeError.h"

#include <string>

namespace Quillon {

// The answer that changes nothing: No where there is a Yes, otherwise Cancel, and Ok where that is all there
// is.
inline BoxAnswer NeutralAnswer(BoxButtons buttons) {
    switch (buttons) {
    case BoxButtons::Ok:
        return BoxAnswer::Ok;
    case BoxButtons::YesNo:
        return BoxAnswer::No;
    default:
        return BoxAnswer::Cancel;
    }
}

// Every question gets the neutral answer; a file that is asked for is not there, and one that is to be
// written is a RuntimeError.
inline Platform QuietPlatform() {
    Platform p;
    p.MessageBoxAnswer = [](const BoxRequest& request) { return NeutralAnswer(request.Buttons); };
    p.ReadFile = [](const std::string&) -> std::string { RaiseError(ErrorText::FileNotFound); };
    p.WriteFile = [](const std::string&, const std::string&) { RaiseError(ErrorText::PermissionDenied); };
    p.FileExists = [](const std::string&) { return false; };
    p.DirectoryExists = [](const std::string&) { return false; };
    p.Clock = [] { return ClockTime{2020, 4, 21, 12, 0, 0}; };
    p.Uniform = [] { return 0.5F; };
    return p;
}

// The same with one answer to every question, whatever it offers.
inline Platform QuietPlatform(BoxAnswer answer) {
    Platform p = QuietPlatform();
    p.MessageBoxAnswer = [answer](const BoxRequest&) { return answer; };
    return p;
}

} // namespace Quillon
