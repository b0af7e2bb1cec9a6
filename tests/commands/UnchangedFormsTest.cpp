// A window that is opened and left without a change, by whichever way out, leaves the analysis byte for byte
// as it was, the fit with it, and no step of the history.
#include "commands/Analmenu.h"
#include "commands/Commands.h"
#include "commands/StartUp.h"
#include "commands/history/History.h"
#include "commands/history/HistoryForm.h"
#include "fit/forms/BoundsForm.h"
#include "fit/forms/ConfidenceInput.h"
#include "fit/forms/GetGuess.h"
#include "fit/forms/NoiseForm.h"
#include "models/forms/BaseForm.h"
#include "models/forms/ConcForm.h"
#include "models/forms/ModelForm.h"
#include "models/forms/ShareForm.h"
#include "models/forms/UnitsForm.h"
#include "persistence/codec/FitCodec.h"
#include "planning/CalculatorForm.h"
#include "reporting/Results.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/FileFormEvents.h"
#include "scandata/forms/FileFormScans.h"
#include "studies/MinimaForm.h"
#include "studies/StudyForm.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace Quillon {
namespace {

struct WayOut {
    const char* Command;
    const char* Name;
    void (*Leave)();
};

const WayOut WaysOut[] = {
    {"ReadData", "Cancel", FileFormCancelButton},
    {"ReadData", "Escape", FileFormEscape},
    {"DoModelSet", "Ok", ModelFormOkButton},
    {"DoModelSet", "Cancel", ModelFormCancelButton},
    {"DefineUnits", "Ok", UnitsFormOkButton},
    {"DefineUnits", "Cancel", UnitsFormCancelButton},
    {"FitData", "Cancel", GetGuessCancelButton},
    {"ReviewFit", "Ok", ResultsOkButton},
    {"SearchMinima", "Close", MinimaFormCloseButton},
    {"SetConcConstraint", "Ok", ConcFormOkButton},
    {"SetBaseConstraint", "Ok", BaseFormOkButton},
    {"ShareConcentrations", "CloseBox", ShareFormClose},
    {"SetNoise", "Ok", NoiseFormOkButton},
    {"SetNoise", "Cancel", NoiseFormCancelButton},
    {"AlterBounds", "Ok", BoundsFormOkButton},
    {"AlterBounds", "Cancel", BoundsFormCancelButton},
    {"CompareModels", "Close", StudyFormCloseButton},
    {"ProfileParameter", "Close", StudyFormCloseButton},
    {"ResampleFit", "Close", StudyFormCloseButton},
    {"PlanExperiment", "Close", StudyFormCloseButton},
    {"mnuCalculators", "Close", CalculatorFormCloseButton},
    {"SetConfidence", "Ok", ConfidenceInputOkButton},
    {"SetConfidence", "Cancel", ConfidenceInputCancelButton},
    {"ShowHistory", "Close", HistoryFormCloseButton},
};

struct UnchangedForm : testing::TestWithParam<WayOut> {
    UnchangedForm() {
        script.AnswerAllMessages(BoxAnswer::Yes);
        StartQuillon(script.Directory());
        Work.PauseBeforeFit = 0;
        Work.MonitorMode = 0;
        Answer([this] { FileFormReadFiles({Scan(1), Scan(2)}), FileFormOkButton(); });
        RunMainCommand("ReadData");
        Answer([] { ModelFormRowDoubleClick(1); });
        RunMainCommand("DoModelSet");
        Host.ShowModal = [](const std::string& form) {
            if (form == GetGuessName) GetGuessOkButton();
        };
        RunMainCommand("FitData");
    }
    Script script;

    static void Answer(const std::function<void()>& leave) {
        Host.ShowModal = [leave](const std::string&) { leave(); };
    }
    // A scan of a single species.
    std::string Scan(int cell) const {
        std::string text = "Sample\r\nR " + std::to_string(cell) + " 20.0 13000 0079200 8.6853E10 280 32\r\n";
        char line[64];
        for (int i = 0; i < 60; ++i) {
            const double r = 6.0 + 0.01 * i, noise = 0.002 * ((i * 7919) % 13 - 6) / 6;
            std::snprintf(line, sizeof line, "%.4f %.5f\r\n", r,
                          0.1 * cell * std::exp(1.7 * (r * r - 6.3 * 6.3) / 2) + noise);
            text += line;
        }
        const std::string path = script.Directory() + "/00020.RA" + std::to_string(cell);
        WriteWholeFile(path, text);
        return path;
    }
};

TEST_P(UnchangedForm, LeavesTheAnalysisAsItWas) {
    ASSERT_EQ(Work.FitDone, FlagTrue);
    const std::string before = EncodeFit(Work);
    const std::size_t steps = History.Steps.size();
    ASSERT_TRUE(MainItem(GetParam().Command).Enabled);
    int shown = 0;
    Host.ShowModal = [&](const std::string&) {
        if (++shown == 1) GetParam().Leave();
    };
    RunMainCommand(GetParam().Command);
    EXPECT_EQ(shown, 1);
    EXPECT_TRUE(EncodeFit(Work) == before);
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_TRUE(MainItem("ReviewFit").Enabled);
    EXPECT_EQ(History.Steps.size(), steps);
}

INSTANTIATE_TEST_SUITE_P(Forms, UnchangedForm, testing::ValuesIn(WaysOut),
                         [](const auto& way) { return std::string(way.param.Command) + way.param.Name; });

TEST(PlanWithoutValues, SaysWhatToDo) {
    Script script;
    StartQuillon(script.Directory());
    script.ExpectMessage(
        "A plan takes the values of the parameters as the truth, and there are none yet.\n\nFit your data "
        "(Analysis > Fit Data...), or enter the values that you expect (Analysis > Simulate...).");
    PlanCommand();
}

} // namespace
} // namespace Quillon
