// Saving the settings: each question in its order, and what each answer writes.
#include "input/IniFile.h"
#include "persistence/Defaults.h"
#include "platform/Paths.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <functional>

namespace Quillon {
namespace {

struct Question {
    std::string Text;
    bool ThreeAnswers = false;
};

const std::vector<Question> FitQuestions = {
    {"Do you want the default to be to use residual plots in reports (Yes), data+fit overlay plots (No), or "
     "leave "
     "the default unchanged (Cancel)?",
     true},
    {"Do you want the default to be to separate data sets vertically in residual plots (Yes), overlay all "
     "data sets "
     "in residual plots (No), or leave the default unchanged (Cancel)?",
     true},
    {"Do you want to save the present error confidence level setting (68.3 percent) as the default value?"},
    {"Do you want to save the present convergence limit setting (0.05) as the default value?"},
    {"Do you want to save the present fitting parameter accuracy setting (0.1%) as the default value?"},
    {"Do you want to save the present 'Pause for manual start when fitting' setting as the default?"},
    {"Do you want to alter the levels of parameter cross-correlation that trigger alerts during fit "
     "reports?"},
    {"Do you want to alter the maximum number of iterations before the fit fails (currently 40)? (This will "
     "take "
     "effect immediately.)"},
    {"Do you want to alter the number of data points processed between yielding the processor to other tasks "
     "during "
     "fitting? (This affects responsiveness of other programs running concurrently.)"}};

const std::vector<Question> ProgramQuestions = {
    {"Do you want change the size (scaling) of all the forms in this program? (This will not take effect "
     "until you "
     "restart the program.)"},
    {"Do you want to set a new value for the font size used in printing the fit results? The current value "
     "is 12 "
     "points."},
    {"Do you want to save the present values for solute absorptivity, extinction coefficient, v-bar and "
     "dn/dc, the "
     "solvent density, and the cell pathlength as the default values?"},
    {"Do you want to save the present fitting model and units mode (sigma vs. MW, AU vs. mg/mL, etc.) as the "
     "default "
     "values?"},
    {"Do you want to set fitting ranges using ln(c) vs. radius squared / 2 plots (Yes) or linear absorbance "
     "vs. radius "
     "plots (No) or leave the default unchanged (Cancel)?",
     true},
    {"Do you want to set a new value for the maximum data points per scan?"},
    {"Do you want to establish a new default type of cell (1, 3, or 4 samples per cell)?"},
    {"Do you want to set a new value for the rotor expansion factor (used to help set channel radii)?"},
    {"Do you want to establish new values defining the radii corresponding to Channels A, B, and C for long "
     "column (6 "
     "channel) cells?"},
    {"Do you want to establish new values defining the radii corresponding to Channels A, B, C and D for "
     "short column "
     "(8 channel) cells?"}};

class SaveDefaults : public ::testing::Test {
protected:
    SaveDefaults() { Work = FreshWorkspace(); }

    // Expects the questions; the one of that number (from 1) gets the answer and is followed by more.
    void Expect(
        const std::vector<Question>& questions, std::size_t number, BoxAnswer answer,
        const std::function<void()>& more = [] {}) {
        for (std::size_t i = 0; i < questions.size(); ++i) {
            const Question& q = questions[i];
            const bool chosen = i + 1 == number;
            const BoxAnswer standing = q.ThreeAnswers ? BoxAnswer::Cancel : BoxAnswer::No;
            Scripted.ExpectMessage(BoxRequest{q.Text, "Quillon", BoxIcon::Question,
                                              q.ThreeAnswers ? BoxButtons::YesNoCancel : BoxButtons::YesNo,
                                              standing, "No &more questions"},
                                   chosen ? answer : standing);
            if (chosen) more();
            if (chosen && answer == BoxAnswer::WayOut) return;
        }
    }
    // What the ini file holds after the fit's questions, of which one was answered.
    std::string Fit(
        std::size_t number, BoxAnswer answer, const std::function<void()>& more = [] {}) {
        Expect(FitQuestions, number, answer, more);
        SaveFitDefaults();
        return TakeIni();
    }
    std::string Program(
        std::size_t number, BoxAnswer answer, const std::function<void()>& more = [] {}) {
        Expect(ProgramQuestions, number, answer, more);
        SaveProgramDefaults();
        return TakeIni();
    }
    std::string FitInput(std::size_t number, const std::string& prompt, const std::string& answer) {
        return Fit(number, BoxAnswer::Yes, [&] { Scripted.ExpectInput(prompt, answer); });
    }
    std::string ProgramInput(std::size_t number, const std::string& prompt, const std::string& answer) {
        return Program(number, BoxAnswer::Yes, [&] { Scripted.ExpectInput(prompt, answer); });
    }
    std::string IniPath() const { return JoinPath(Scripted.Directory(), "QUILLON.ini"); }
    std::string TakeIni() {
        const std::string bytes = ReadIniFile(IniPath());
        Host.RemoveFile(IniPath());
        return bytes;
    }
    Script Scripted;
};

TEST_F(SaveDefaults, EveryQuestionHasAWayOutOfThemAll) {
    for (std::size_t number = 1; number <= FitQuestions.size(); ++number) {
        Expect(FitQuestions, number, BoxAnswer::WayOut);
        EXPECT_FALSE(SaveFitDefaults());
    }
    for (std::size_t number = 1; number <= ProgramQuestions.size(); ++number) {
        Expect(ProgramQuestions, number, BoxAnswer::WayOut);
        EXPECT_FALSE(SaveProgramDefaults());
    }
    EXPECT_EQ(TakeIni(), "");
    Expect(FitQuestions, 0, BoxAnswer::No);
    EXPECT_TRUE(SaveFitDefaults()); // those of the program follow
    EXPECT_TRUE(Work == FreshWorkspace());
}

TEST_F(SaveDefaults, NoToEverythingWritesNothing) {
    EXPECT_EQ(Fit(0, BoxAnswer::No), "");
    EXPECT_EQ(Program(0, BoxAnswer::No), "");
    EXPECT_TRUE(Work == FreshWorkspace());
}

TEST_F(SaveDefaults, ReportPlotsHaveTheirSenseTurnedRound) {
    EXPECT_EQ(Fit(1, BoxAnswer::Yes), "[gnllsq]\nOverlayPlot=False\n");
    EXPECT_EQ(Fit(1, BoxAnswer::No), "[gnllsq]\nOverlayPlot=True\n");
    EXPECT_EQ(Fit(1, BoxAnswer::Cancel), "");
}

TEST_F(SaveDefaults, SpreadResiduals) {
    EXPECT_EQ(Fit(2, BoxAnswer::Yes), "[gnllsq]\nSpreadResiduals=True\n");
    EXPECT_EQ(Fit(2, BoxAnswer::No), "[gnllsq]\nSpreadResiduals=False\n");
    EXPECT_EQ(Fit(2, BoxAnswer::Cancel), "");
}

TEST_F(SaveDefaults, PresentSettingsOfTheFit) {
    EXPECT_EQ(Fit(3, BoxAnswer::Yes), "[gnllsq]\nConfidenceLevel=0.683\n");
    EXPECT_EQ(Fit(4, BoxAnswer::Yes), "[gnllsq]\nConvergenceLimit=0.05\n");
    EXPECT_EQ(Fit(5, BoxAnswer::Yes), "[gnllsq]\nParmsAccuracy=0.001\n");
    EXPECT_EQ(Fit(6, BoxAnswer::Yes), "[gnllsq]\nPauseBeforeFit=True\n");
    Work.PauseBeforeFit = 0;
    EXPECT_EQ(Fit(6, BoxAnswer::Yes), "[gnllsq]\nPauseBeforeFit=False\n");
}

TEST_F(SaveDefaults, CorrelationsLieStrictlyBetween0And1) {
    const std::string high =
        "What value should be considered a 'high correlation' (0-1 range, currently set at 0.97)?";
    const std::string veryHigh =
        "What value should be considered a 'very high correlation' (0-1 range, currently set at 0.99)?";
    const auto ask = [&](const std::string& first, const std::string& second) {
        return Fit(7, BoxAnswer::Yes, [&] {
            Scripted.ExpectInput(high, first);
            Scripted.ExpectInput(veryHigh, second);
        });
    };
    EXPECT_EQ(ask("0.9", "0.95"), "[gnllsq]\nHighCorrelation=0.9\nVeryHighCorrelation=0.95\n");
    EXPECT_EQ(ask("", "0.95"), "[gnllsq]\nVeryHighCorrelation=0.95\n");
    EXPECT_EQ(ask("0", "1"), "");
    EXPECT_EQ(ask("-0.5", "1.5"), "");
    EXPECT_EQ(ask("high", "0.9.9"), "");
    EXPECT_EQ(Work.HighCorrelation, 0.97F); // the next start reads it
}

TEST_F(SaveDefaults, IterationsTakeEffectAtOnce) {
    const std::string prompt = "New maximum number of iterations before failure?";
    EXPECT_EQ(FitInput(8, prompt, ""), "");
    EXPECT_EQ(FitInput(8, prompt, "0"), "");
    EXPECT_EQ(FitInput(8, prompt, "-5"), "");
    EXPECT_EQ(FitInput(8, prompt, "many"), "");
    EXPECT_EQ(Work.MaxIterations, 40);
    EXPECT_EQ(FitInput(8, prompt, "55"), "[gnllsq]\nMaxIterations=55\n");
    EXPECT_EQ(Work.MaxIterations, 55);
}

TEST_F(SaveDefaults, YieldsComeAtMostEvery50Points) {
    const std::string prompt = "New number of data points processed between system yields?  Higher numbers "
                               "make fitting slightly faster, but "
                               "reduce overall system responsiveness.  Minimum value is 50.";
    EXPECT_EQ(FitInput(9, prompt, "49"), "");
    EXPECT_EQ(FitInput(9, prompt, ""), "");
    EXPECT_EQ(FitInput(9, prompt, "50"), "[gnllsq]\nYieldInterval=50\n");
    EXPECT_EQ(Work.YieldInterval, 200);
}

TEST_F(SaveDefaults, FormScaling) {
    const std::string prompt = "Input the new default form sizing (in %, valid range 75-200)";
    const BoxRequest invalid{"Invalid input! Leaving default unchanged.", "Quillon", BoxIcon::Warning,
                             BoxButtons::Ok, BoxAnswer::Ok};
    EXPECT_EQ(ProgramInput(1, prompt, "75"), "[quillon]\nformscalingpercent=75\n");
    EXPECT_EQ(ProgramInput(1, prompt, "200"), "[quillon]\nformscalingpercent=200\n");
    EXPECT_EQ(ProgramInput(1, prompt, ""), "");
    for (const char* const bad : {"74", "201", "1e30", "large", "-100"})
        EXPECT_EQ(Program(1, BoxAnswer::Yes,
                          [&] {
                              Scripted.ExpectInput(prompt, bad);
                              Scripted.ExpectMessage(invalid, BoxAnswer::Ok);
                          }),
                  "")
            << bad;
    EXPECT_EQ(Work.FormScalingPercent, 100); // until the next start
}

TEST_F(SaveDefaults, ReportFontTakesEffectAtOnce) {
    const std::string prompt = "Input font size for reports (in points, 72 points = 1 inch, valid range "
                               "4-16).  If the printer cannot produce "
                               "exactly the size you specify, the nearest available size will be used.  The "
                               "new value will take effect "
                               "immediately.";
    for (const char* const bad : {"", "3.9", "16.1", "big"})
        EXPECT_EQ(ProgramInput(2, prompt, bad), "") << bad;
    EXPECT_EQ(Work.ReportFontSize, 12.0F);
    EXPECT_EQ(ProgramInput(2, prompt, "4"), "[quillon]\nReportFontSize=4\n");
    EXPECT_EQ(Work.ReportFontSize, 4.0F);
    Work.ReportFontSize = 12.0F;
    EXPECT_EQ(ProgramInput(2, prompt, "16"), "[quillon]\nReportFontSize=16\n");
    Work.ReportFontSize = 12.0F;
    EXPECT_EQ(ProgramInput(2, prompt, "9.5"), "[quillon]\nReportFontSize=9.5\n");
}

TEST_F(SaveDefaults, PresentCoefficientsAreThoseOfSpeciesA) {
    Work.AbsorpA = 1.25F;
    Work.ExtA = 54321.0F;
    Work.RefrA = 21000.0F;
    Work.SolventDensity = 1.01F;
    Work.VbarA = 0.72F;
    Work.CellPathlength = 0.3F;
    Work.FringeMassA = 3.25F;
    EXPECT_EQ(Program(3, BoxAnswer::Yes), "[quillon]\nAbsorptivity=1.25\nExtinction="
                                          "54321\nRefractometricExtinction=21000\nSolventDensity=1.01\n"
                                          "SoluteVBar=0.72\nCellPathlength=0.3\nSoluteRefractivity=3.25\n");
}

TEST_F(SaveDefaults, PresentModelAndUnits) {
    Work.Model = 8;
    Work.ConcUnits = 2;
    Work.MassUnits = 2;
    Work.SeparateK = FlagTrue;
    EXPECT_EQ(
        Program(4, BoxAnswer::Yes),
        "[quillon]\nFitModelNumber=8\nConcentrationUnits=2\nMWunits=True\nNonIdeal=False\nSplitKs=True\n");
    Work.MassUnits = 1;
    Work.NonIdeal = FlagTrue;
    Work.SeparateK = 0;
    EXPECT_EQ(
        Program(4, BoxAnswer::Yes),
        "[quillon]\nFitModelNumber=8\nConcentrationUnits=2\nMWunits=Buoyant\nNonIdeal=True\nSplitKs=False\n");
    Work.MassUnits = 0;
    EXPECT_NE(Program(4, BoxAnswer::Yes).find("MWunits=False\n"), std::string::npos);
}

TEST_F(SaveDefaults, MassUnitsWrittenAreFoundOnReading) {
    for (const int units : {0, 1, 2}) {
        Work = FreshWorkspace();
        Work.MassUnits = static_cast<std::int16_t>(units);
        Expect(ProgramQuestions, 4, BoxAnswer::Yes);
        SaveProgramDefaults();
        Work = FreshWorkspace();
        ReadProgramDefaults();
        EXPECT_EQ(Work.MassUnits, units);
    }
}

TEST_F(SaveDefaults, RangePlot) {
    EXPECT_EQ(Program(5, BoxAnswer::Yes), "[quillon]\nRangeLogPlot=True\n");
    EXPECT_EQ(Program(5, BoxAnswer::No), "[quillon]\nRangeLogPlot=False\n");
    EXPECT_EQ(Program(5, BoxAnswer::Cancel), "");
}

TEST_F(SaveDefaults, PointsPerSetFrom500) {
    const std::string prompt = "New maximum data points per set (500-)? This value is usually set at 1500, "
                               "which accomodates all scanner data.  "
                               "High values will increase RAM memory usage but have no other drawback.";
    EXPECT_EQ(ProgramInput(6, prompt, "499"), "");
    EXPECT_EQ(ProgramInput(6, prompt, ""), "");
    EXPECT_EQ(ProgramInput(6, prompt, "500"), "[quillon]\nMaxPtsPerSet=500\n");
    EXPECT_EQ(ProgramInput(6, prompt, "32767"), "[quillon]\nMaxPtsPerSet=32767\n");
    EXPECT_EQ(Work.MaxPtsPerSet, 2048);
}

TEST_F(SaveDefaults, CellTypeIsOneOfThree) {
    const std::string prompt = "Number of samples per cell (1, 3, or 4)?";
    for (const char* const good : {"1", "3", "4"})
        EXPECT_EQ(ProgramInput(7, prompt, good), std::string("[quillon]\nCellType=") + good + "\n");
    EXPECT_EQ(ProgramInput(7, prompt, ""), "");
    Work.CellType = 4;
    for (const char* const bad : {"2", "6", "three", "1.0", " 3"})
        EXPECT_EQ(ProgramInput(7, prompt, bad), "[quillon]\nCellType=4\n") << bad; // the old value
}

TEST_F(SaveDefaults, RotorExpansion) {
    const std::string prompt = "What is the expansion in cm per RPM^2 (usually around 1E-11 for An60Ti)?";
    EXPECT_EQ(ProgramInput(8, prompt, "1.5E-11"), "[quillon]\nRotorExpansion=1.5E-11\n");
    EXPECT_EQ(ProgramInput(8, prompt, "0"), "[quillon]\nRotorExpansion=0\n");
    EXPECT_EQ(ProgramInput(8, prompt, ""), "");
    EXPECT_EQ(ProgramInput(8, prompt, "little"), "");
}

TEST_F(SaveDefaults, RadiiOfLongColumnCells) {
    const auto ask = [&](const std::vector<std::string>& answers) {
        return Program(9, BoxAnswer::Yes, [&] {
            const char* const prompts[] = {"Inner radius for Channel A?", "Outer radius for Channel A?",
                                           "Inner radius for Channel B?", "Outer radius for Channel B?",
                                           "Inner radius for Channel C?", "Outer radius for Channel C?"};
            for (std::size_t i = 0; i < 6; ++i)
                Scripted.ExpectInput(prompts[i], answers[i]);
        });
    };
    EXPECT_EQ(ask({"5.81", "6.36", "6.41", "6.81", "6.86", "7.26"}),
              "[quillon]\nChAInner3=5.81\nChAOuter3=6.36\nChBInner3=6.41\nChBOuter3=6.81\nChCInner3=6.86\n"
              "ChCOuter3=7.26\n");
    EXPECT_EQ(ask({"", "", "x", "6.81", "", ""}), "[quillon]\nChBOuter3=6.81\n");
}

TEST_F(SaveDefaults, RadiiOfShortColumnCells) {
    EXPECT_EQ(
        Program(10, BoxAnswer::Yes,
                [&] {
                    for (const char* const channel : {"A", "B", "C", "D"}) {
                        Scripted.ExpectInput(std::string("Inner radius for Channel ") + channel + "?", "6");
                        Scripted.ExpectInput(std::string("Outer radius for Channel ") + channel + "?", "7");
                    }
                }),
        "[quillon]\nChAInner4=6\nChAOuter4=7\nChBInner4=6\nChBOuter4=7\nChCInner4=6\nChCOuter4=7\n"
        "ChDInner4=6\nChDOuter4=7\n");
}

TEST_F(SaveDefaults, ACancelledInputLeavesTheOldValue) {
    EXPECT_EQ(Program(7, BoxAnswer::Yes,
                      [&] { Scripted.ExpectInputCancelled("Number of samples per cell (1, 3, or 4)?"); }),
              "");
    EXPECT_EQ(Program(1, BoxAnswer::Yes,
                      [&] {
                          Scripted.ExpectInputCancelled(
                              "Input the new default form sizing (in %, valid range 75-200)");
                      }),
              "");
    EXPECT_EQ(Fit(8, BoxAnswer::Yes,
                  [&] { Scripted.ExpectInputCancelled("New maximum number of iterations before failure?"); }),
              "");
}

TEST_F(SaveDefaults, ADecimalCommaIsUnderstoodWhereTheSystemHasOne) {
    Scripted.Mark = ',';
    EXPECT_EQ(ProgramInput(8, "What is the expansion in cm per RPM^2 (usually around 1E-11 for An60Ti)?",
                           "1,5E-11"),
              "[quillon]\nRotorExpansion=1.5E-11\n");
}

TEST_F(SaveDefaults, AnAnswerReplacesOneLineAndLeavesTheRest) {
    Scripted.MakeFile("QUILLON.ini",
                      "; mine\r\n\r\n[Other]\r\nx = 1\r\n[GNLLSQ]\r\n# limits\r\nmaxiterations = 41\r\n"
                      "Unknown=kept\r\n[Quillon]\r\nCellType=4\r\n");
    EXPECT_EQ(FitInput(8, "New maximum number of iterations before failure?", "55"),
              "; mine\r\n\r\n[Other]\r\nx = 1\r\n[GNLLSQ]\r\n# limits\r\nmaxiterations =55\r\n"
              "Unknown=kept\r\n[Quillon]\r\nCellType=4\r\n");
}

TEST_F(SaveDefaults, EachAnswerIsWrittenAtOnce) {
    // The answer to the first question is in the file when the second one is asked.
    std::vector<std::string> seen;
    const auto ask = Host.MessageBoxAnswer;
    Host.MessageBoxAnswer = [&](const BoxRequest& request) {
        seen.push_back(ReadIniFile(IniPath()));
        return ask(request);
    };
    Fit(1, BoxAnswer::Yes);
    ASSERT_EQ(seen.size(), FitQuestions.size());
    EXPECT_EQ(seen[0], "");
    EXPECT_EQ(seen[1], "[gnllsq]\nOverlayPlot=False\n");
}

BoxRequest WriteFailure(const std::string& why) {
    return {"Error occurred while writing defaults to QUILLON.ini\n\n" +
                JoinPath(Host.ConfigDirectory(), "QUILLON.ini") + ": " + why,
            "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok};
}

// Runs the questions with Yes everywhere and a number wherever one is asked for, and lets write number n
// fail.
void AnswerYes(Script& script, int n, int& writes) {
    script.AnswerAllMessages(BoxAnswer::Yes);
    Host.AskText = [](const InputRequest&) { return InputAnswer{false, "4"}; };
    const auto write = Host.WriteFile;
    Host.WriteFile = [&writes, n, write](const std::string& path, const std::string& bytes) {
        if (++writes == n) RaiseError("Disk full");
        write(path, bytes);
    };
}

TEST_F(SaveDefaults, AWriteThatFailsIsToldAndEndsTheQuestions) {
    int total = 0;
    {
        Script counting;
        AnswerYes(counting, 0, total);
        SaveProgramDefaults();
    }
    // The font, the coefficients and then model and units at one time each, range plot, cell, rotor, six and
    // eight radii; 4 is out of range for scaling and points.
    ASSERT_EQ(total, 1 + 1 + 1 + 1 + 1 + 1 + 6 + 8);
    for (int n = 1; n <= total; ++n) {
        Script script;
        int writes = 0;
        AnswerYes(script, n, writes);
        const std::string path = JoinPath(script.Directory(), "QUILLON.ini");
        std::string before;
        const auto write = Host.WriteFile;
        Host.WriteFile = [&](const std::string& p, const std::string& bytes) {
            before = ReadIniFile(path);
            write(p, bytes);
        };
        SaveProgramDefaults();
        EXPECT_EQ(writes, n);
        EXPECT_EQ(script.Asked.back(), "message: " + WriteFailure("Disk full").Text);
        EXPECT_EQ(ReadIniFile(path), before); // whole, as before the write that failed
    }
}

TEST_F(SaveDefaults, ANumberBeyondItsWidthIsAFailureToWrite) {
    for (std::size_t i = 0; i < 8; ++i) {
        const Question& q = FitQuestions[i];
        Scripted.ExpectMessage(q.Text, i == 7           ? BoxAnswer::Yes
                                       : q.ThreeAnswers ? BoxAnswer::Cancel
                                                        : BoxAnswer::No);
    }
    Scripted.ExpectInput("New maximum number of iterations before failure?", "40000");
    Scripted.ExpectMessage(WriteFailure("Overflow"), BoxAnswer::Ok);
    SaveFitDefaults();
    EXPECT_EQ(TakeIni(), "");
    EXPECT_EQ(Work.MaxIterations, 40);
}

TEST_F(SaveDefaults, WhatIsSavedIsReadAtTheNextStart) {
    Work.ConfidenceLevel = 0.95F;
    Work.ConvergenceLimit = 0.5F;
    Work.ParmsAccuracy = 0.01F;
    Work.RotorExpansion = 1e-11F;
    Work.SolventDensity = 1.003994F;
    Work.ExtA = 1234567.0F;
    Work.ExtB = 1234567.0F;
    const Workspace saved = Work;
    int writes = 0;
    AnswerYes(Scripted, 0, writes);
    Host.AskText = [](const InputRequest&) { return InputAnswer{}; };
    SaveFitDefaults();
    SaveProgramDefaults();
    Work = FreshWorkspace();
    ReadFitDefaults();
    ReadProgramDefaults();
    EXPECT_EQ(Work.SpreadResiduals, FlagTrue); // the answers Yes
    EXPECT_EQ(Work.RangeLogPlot, FlagTrue);
    Work.SpreadResiduals = Work.RangeLogPlot = 0;
    EXPECT_TRUE(Work == saved);
}

} // namespace
} // namespace Quillon
