#include "platform/QuietPlatform.h"

#include "platform/RuntimeError.h"

#include <string>

namespace Quillon {

BoxAnswer NeutralAnswer(BoxButtons buttons) {
    switch (buttons) {
    case BoxButtons::Ok:
        return BoxAnswer::Ok;
    case BoxButtons::YesNo:
        return BoxAnswer::No;
    default:
        return BoxAnswer::Cancel;
    }
}

Platform QuietPlatform() {
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

Platform QuietPlatform(BoxAnswer answer) {
    Platform p = QuietPlatform();
    p.MessageBoxAnswer = [answer](const BoxRequest&) { return answer; };
    return p;
}

} // namespace Quillon
