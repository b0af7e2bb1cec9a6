#include "commands/fitting/FitAtOnce.h"

#include "commands/fitting/FitCommand.h"
#include "fit/forms/GetGuess.h"
#include "models/ModelChoice.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <functional>
#include <string>
#include <utility>

namespace Quillon {

namespace {

// The answer of a first look, where a question has one: guesses are taken, offsets stay.
bool IsAboutGuesses(const std::string& question) {
    return question == "Do you want new guesses for the concentrations?";
}
bool IsAboutOffsets(const std::string& question) {
    return question == "Do you also want the baseline offsets reset to zero?";
}

// While it lives these questions are answered, and the fit does not wait for a button.
class Answered {
public:
    Answered()
        : Show(Host.ShowModal), Ask(Host.MessageBoxAnswer),
          Pause(std::exchange(Work.PauseBeforeFit, FlagFalse)) {
        Host.ShowModal = [show = Show](const std::string& form) {
            if (form == GetGuessName) GetGuessOkButton();
            if (form != GetGuessName || GetGuess.State.Shown) show(form);
        };
        Host.MessageBoxAnswer = [ask = Ask](const BoxRequest& request) {
            if (IsAboutGuesses(request.Text)) return BoxAnswer::Yes;
            return IsAboutOffsets(request.Text) ? BoxAnswer::No : ask(request);
        };
    }
    ~Answered() {
        Host.ShowModal = std::move(Show);
        Host.MessageBoxAnswer = std::move(Ask);
        Work.PauseBeforeFit = Pause;
    }
    Answered(const Answered&) = delete;
    Answered& operator=(const Answered&) = delete;

private:
    std::function<void(const std::string&)> Show;
    std::function<BoxAnswer(const BoxRequest&)> Ask;
    std::int16_t Pause;
};

} // namespace

void FitAtOnce() {
    if (!Work.ModelChosen) {
        CheckModelChoice();
        AdoptModel(Work.SeparateK, true);
        Work.ModelChosen = FlagTrue;
    }
    const Answered answered;
    FitDataCommand();
}

} // namespace Quillon
