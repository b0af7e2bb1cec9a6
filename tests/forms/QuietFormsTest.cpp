// Windows that alter nothing, closed in each of the ways that a user has; what a handler of a form does to
// the program: failures, and what may run within another one.
#include "chart/Charts.h"
#include "forms/shell/Binding.h"
#include "graphs/kinds/PickSet.h"
#include "models/forms/ModelForm.h"
#include "models/forms/ShowConstraintForm.h"
#include "models/forms/SigmaCalcForm.h"
#include "models/forms/UnitsForm.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "reporting/Results.h"
#include "reporting/values/Correlation.h"
#include "tests/forms/FormWays.h"

#include <QAction>
#include <QDialog>

#include <gtest/gtest.h>

#include <cmath>
#include <new>
#include <stdexcept>

namespace Quillon {
namespace {

// --- windows that alter nothing ---

TEST_F(FormsAtTheWindows, TheCalculatorCountsWhileOneTypesAndAltersNothing) {
    const float before = Work.Parms[0];
    for (const Way way : {Way::Ok, Way::Esc, Way::CloseButton}) {
        player.Expect(SigmaCalcFormName, [way] {
            Enter(SigmaCalcForm.MWInput, "50");
            Enter(SigmaCalcForm.VBarInput, "0.73");
            Enter(SigmaCalcForm.DensityInput, "1");
            Enter(SigmaCalcForm.TempInput, "20");
            Enter(SigmaCalcForm.RPMInput, "10000");
            // M (1 - v rho) omega^2 / (R T) with omega = 1000 pi / 3
            const double omega = 1000 * M_PI / 3;
            const double sigma = 50e3 * 0.27 * omega * omega / (83144710.0 * 293.15);
            EXPECT_NEAR(std::stod(SigmaCalcForm.SigmaInput.Text), sigma, 0.0006);
            Leave(SigmaCalcFormName, way, SigmaCalcForm.ExitButton, SigmaCalcForm.ExitButton);
        });
        player.ClickMenu("mnuSigmaCalculator");
    }
    EXPECT_EQ(Work.Parms[0], before);
    EXPECT_EQ(Work.AbortFit, FlagFalse);
}

TEST_F(FormsAtTheWindows, TheSetOfAGraphIsPickedByOkAlone) {
    UseFinishedFit();
    ASSERT_TRUE(MainItem("GraphOverlaySet").Enabled);
    for (const Way way : AllWays) {
        Player::Window(ChartsName)->hide();
        player.Expect(PickSetName, [way] {
            Player::Widget(PickSetWindow.SetList)->setFocus();
            Player::Press(Qt::Key_Down);
            EXPECT_EQ(PickSetWindow.SetList.Value, 2);
            Leave(PickSetName, way, PickSetWindow.OkButton, PickSetWindow.CancelButton);
        });
        player.ClickMenu("GraphOverlaySet");
        EXPECT_EQ(Player::Window(ChartsName)->isVisible(), way == Way::Ok);
    }
}

TEST_F(FormsAtTheWindows, ResultsAndCorrelationsCloseInAnyWay) {
    UseFinishedFit();
    ASSERT_EQ(Work.FitDone, FlagTrue);
    for (const Way way : {Way::Ok, Way::Esc, Way::CloseButton}) {
        player.Expect(ResultsName, [&] {
            player.Expect(CorrelationName,
                          [way] { Leave(CorrelationName, way, Correlation.OkButton, Correlation.OkButton); });
            Player::Click(Results.ViewCorr);
            Leave(ResultsName, way, Results.OkButton, Results.OkButton);
        });
        player.ClickMenu("ReviewFit");
        player.Expect(CorrelationName,
                      [way] { Leave(CorrelationName, way, Correlation.OkButton, Correlation.OkButton); });
        player.ClickMenu("Covariance");
    }
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_EQ(Work.AbortFit, FlagFalse);
}

TEST_F(FormsAtTheWindows, TheMatchOfConstraintsClosesInAnyWay) {
    UseSimulatedData();
    Work.ConcConstraintA[1] = 0.4F;
    Work.ConstraintFlags = ConcentrationBit;
    Work.FitDone = FlagTrue;
    SetMenuStatus();
    RefreshForms();
    for (const Way way : {Way::Ok, Way::Esc, Way::CloseButton}) {
        player.Expect(ShowConstraintFormName, [way] {
            Leave(ShowConstraintFormName, way, ShowConstraintForm.OkButton, ShowConstraintForm.OkButton);
        });
        player.ClickMenu("DoShowConstraint");
    }
}

TEST_F(FormsAtTheWindows, TextOnAColourStandsOutFromIt) {
    UseFinishedFit();
    player.Expect(CorrelationName, [] {
        for (const Control* legend : {&Correlation.HighLegend, &Correlation.VeryHighLegend}) {
            const QPalette palette = Player::Widget(*legend)->palette();
            const auto luminance = [](const QColor& c) {
                const auto part = [](double v) {
                    return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
                };
                return 0.2126 * part(c.redF()) + 0.7152 * part(c.greenF()) + 0.0722 * part(c.blueF());
            };
            const double back = luminance(palette.color(QPalette::Window));
            const double text = luminance(palette.color(QPalette::WindowText));
            const double contrast = (std::max(back, text) + 0.05) / (std::min(back, text) + 0.05);
            EXPECT_GT(contrast, 4.5); // what the guidelines for legible text ask
        }
        Player::Click(Correlation.OkButton);
    });
    player.ClickMenu("Covariance");
}

// --- failures ---

TEST_F(FormsAtTheWindows, AFailureOfAHandlerIsToldAndTheProgramGoesOn) {
    player.ExpectMessage("Division by zero");
    RunHandler([] { RaiseError(ErrorText::DivisionByZero); });
    player.ExpectMessage("There is not enough memory for this command.");
    RunHandler([] { throw std::bad_alloc(); });
    player.ExpectMessage("This command failed: in an unforeseen way");
    RunHandler([] { throw std::runtime_error("in an unforeseen way"); });
    EXPECT_FALSE(HandlerAtWork());
    player.Expect(ModelFormName, [] { Player::Press(Qt::Key_Escape); });
    player.ClickMenu("DoModelSet");
}

TEST_F(FormsAtTheWindows, NoSecondCommandStartsWithinOneThatIsAtWork) {
    player.Expect(ModelFormName, [&] {
        Player::Window(AnalmenuName)->findChild<QAction*>("DefineUnits")->trigger(); // opens nothing
        Player::Press(Qt::Key_Escape);
    });
    player.ClickMenu("DoModelSet");
    EXPECT_FALSE(UnitsForm.State.Shown);
}

TEST_F(FormsAtTheWindows, NoHandlerRunsBetweenAnAnswerAndWhatWaitedForIt) {
    bool ran = false;
    bool timed = false;
    QObject window;
    player.Expect("message: A question", [&] {
        qobject_cast<QDialog*>(QApplication::activeModalWidget())->accept();
        RunHandler([&] { ran = true; }); // a click that had waited in the event queue
        RunSoon(&window, [&] { timed = true; });
        EXPECT_FALSE(timed);
    });
    RunHandler([&] {
        Tell("A question", "Title", BoxIcon::Plain);
        EXPECT_FALSE(ran);
        Player::Serve();
        EXPECT_TRUE(timed); // only put off
    });
    EXPECT_FALSE(ran);
    RunHandler([&] { ran = true; });
    EXPECT_TRUE(ran);
}

} // namespace
} // namespace Quillon
