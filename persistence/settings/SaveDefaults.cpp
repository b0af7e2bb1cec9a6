#include "persistence/settings/SaveDefaults.h"

#include "input/IniFile.h"
#include "input/NUMINPUT.h"
#include "persistence/settings/DefaultKeys.h"
#include "persistence/settings/IniAccess.h"

namespace Quillon {

namespace {

// --- questions and answers -------------------------------------------------------------------------------

// The user has left the questions: none is asked any more. What was answered before is written already.
bool Left = false;

BoxAnswer Asked(const std::string& question, BoxButtons buttons, BoxAnswer standard) {
    if (Left) return BoxAnswer::WayOut;
    const BoxAnswer answer = Host.MessageBoxAnswer(
        {question, Work.ProgramName, BoxIcon::Question, buttons, standard, WayOutCaption});
    Left = answer == BoxAnswer::WayOut;
    return answer;
}

bool Agreed(const std::string& question) {
    return Asked(question, BoxButtons::YesNo, BoxAnswer::No) == BoxAnswer::Yes;
}

// A question with a third answer that leaves things as they are.
BoxAnswer ChoiceOf(const std::string& question) {
    const BoxAnswer answer = Asked(question, BoxButtons::YesNoCancel, BoxAnswer::Cancel);
    return answer == BoxAnswer::WayOut ? BoxAnswer::Cancel : answer;
}

// "" when cancelled or left empty: the old value stays.
std::string Answered(const std::string& prompt) {
    const InputAnswer answer = Host.AskText({prompt, Work.ProgramName, ""});
    return answer.Cancelled ? "" : answer.Text;
}

// True when the answer is a number, which value then holds.
bool AnsweredNumber(const std::string& prompt, float& value) {
    const std::string text = Answered(prompt);
    if (!IsNumeric(text)) return false;
    value = NumValue(text);
    return true;
}

std::string TrueOrFalse(bool value) {
    return value ? "True" : "False";
}

std::string Percent(float fraction) {
    return SingleText(ToSingle(100.0 * static_cast<double>(fraction)));
}

// --- writing ---------------------------------------------------------------------------------------------

void WriteFit(const std::string& key, const std::string& value) {
    WriteIniValue(IniFilePath(), IniSection::FitSettings, key, value);
}
void WriteProgram(const std::string& key, const std::string& value) {
    WriteIniValue(IniFilePath(), IniSection::Program, key, value);
}
// The keys of one question together: a failure leaves none of them rather than some.
void WriteProgram(const std::vector<IniSetting>& settings) {
    WriteIniValues(IniFilePath(), IniSection::Program, settings);
}

// False when the user has left the questions.
template <class Questions> bool AskOrTell(const Questions& questions) {
    Left = false;
    try {
        questions();
    } catch (const RuntimeError& error) {
        TellWriteFailure(error.Text);
    }
    return !Left;
}

// --- settings of the fit -----------------------------------------------------------------------------------

void AskPlots() {
    const BoxAnswer plot = ChoiceOf(
        "Do you want the default to be to use residual plots in reports (Yes), data+fit overlay plots "
        "(No), or leave the default unchanged (Cancel)?");
    // [decision: overlay-turned]
    // The key asks for the other kind of plot than the question.
    if (plot != BoxAnswer::Cancel) WriteFit(IniKey::OverlayPlot, TrueOrFalse(plot == BoxAnswer::No));

    const BoxAnswer spread =
        ChoiceOf("Do you want the default to be to separate data sets vertically in residual plots (Yes), "
                 "overlay all data sets in residual plots (No), or leave the default unchanged (Cancel)?");
    if (spread != BoxAnswer::Cancel) WriteFit(IniKey::SpreadResiduals, TrueOrFalse(spread == BoxAnswer::Yes));
}

void AskPresentFitSettings() {
    if (Agreed("Do you want to save the present error confidence level setting (" +
               Percent(Work.ConfidenceLevel) + " percent) as the default value?"))
        WriteFit(IniKey::ConfidenceLevel, SingleText(Work.ConfidenceLevel));
    if (Agreed("Do you want to save the present convergence limit setting (" +
               SingleText(Work.ConvergenceLimit) + ") as the default value?"))
        WriteFit(IniKey::ConvergenceLimit, SingleText(Work.ConvergenceLimit));
    if (Agreed("Do you want to save the present fitting parameter accuracy setting (" +
               Percent(Work.ParmsAccuracy) + "%) as the default value?"))
        WriteFit(IniKey::ParmsAccuracy, SingleText(Work.ParmsAccuracy));
    if (Agreed(
            "Do you want to save the present 'Pause for manual start when fitting' setting as the default?"))
        WriteFit(IniKey::PauseBeforeFit, TrueOrFalse(Work.PauseBeforeFit != 0));
}

// What the user has chosen elsewhere and is not asked about.
template <class Writing> void WriteOrTell(const Writing& writing) {
    try {
        writing();
    } catch (const RuntimeError& error) {
        TellWriteFailure(error.Text);
    }
}

void AskCorrelation(const std::string& kind, float present, const char* key) {
    float value = 0.0F;
    if (AnsweredNumber("What value should be considered a '" + kind + "' (0-1 range, currently set at " +
                           SingleText(present) + ")?",
                       value) &&
        value > 0.0F && value < 1.0F)
        WriteFit(key, SingleText(value));
}

void AskCorrelations() {
    if (!Agreed(
            "Do you want to alter the levels of parameter cross-correlation that trigger alerts during fit "
            "reports?"))
        return;
    AskCorrelation("high correlation", Work.HighCorrelation, IniKey::HighCorrelation);
    AskCorrelation("very high correlation", Work.VeryHighCorrelation, IniKey::VeryHighCorrelation);
}

void AskIterations() {
    float value = 0.0F;
    if (!Agreed("Do you want to alter the maximum number of iterations before the fit fails (currently " +
                std::to_string(Work.MaxIterations) + ")? (This will take effect immediately.)") ||
        !AnsweredNumber("New maximum number of iterations before failure?", value))
        return;
    const std::int16_t iterations = ToInt16(static_cast<double>(value));
    if (iterations <= 0) return;
    Work.MaxIterations = iterations;
    WriteFit(IniKey::MaxIterations, std::to_string(iterations));
}

void AskYield() {
    float value = 0.0F;
    if (!Agreed("Do you want to alter the number of data points processed between yielding the processor to "
                "other tasks during fitting? (This affects responsiveness of other programs running "
                "concurrently.)") ||
        !AnsweredNumber(
            "New number of data points processed between system yields?  Higher numbers make "
            "fitting slightly faster, but reduce overall system responsiveness.  Minimum value is "
            "50.",
            value) ||
        value < 50.0F)
        return;
    WriteFit(IniKey::YieldInterval, std::to_string(ToInt16(static_cast<double>(value))));
}

// --- settings of the program -------------------------------------------------------------------------------

void AskFormScaling() {
    if (!Agreed("Do you want change the size (scaling) of all the forms in this program? (This will not take "
                "effect until you restart the program.)"))
        return;
    const std::string text = Answered("Input the new default form sizing (in %, valid range 75-200)");
    if (text.empty()) return;
    const float value = NumValue(text);
    if (value >= 75.0F && value <= 200.0F)
        WriteProgram(IniKey::FormScalingPercent, std::to_string(ToInt16(static_cast<double>(value))));
    else
        Tell("Invalid input! Leaving default unchanged.", Work.ProgramName, BoxIcon::Warning);
}

void AskReportFont() {
    float value = 0.0F;
    if (!Agreed("Do you want to set a new value for the font size used in printing the fit results? The "
                "current value is " +
                SingleText(Work.ReportFontSize) + " points.") ||
        !AnsweredNumber("Input font size for reports (in points, 72 points = 1 inch, valid range 4-16).  If "
                        "the printer cannot produce exactly the size you specify, the nearest available size "
                        "will be used.  The new value will take effect immediately.",
                        value) ||
        value < 4.0F || value > 16.0F)
        return;
    Work.ReportFontSize = value;
    WriteProgram(IniKey::ReportFontSize, SingleText(value));
}

void AskCoefficients() {
    if (!Agreed(
            "Do you want to save the present values for solute absorptivity, extinction coefficient, v-bar "
            "and dn/dc, the solvent density, and the cell pathlength as the default values?"))
        return;
    WriteProgram({{IniKey::Absorptivity, SingleText(Work.AbsorpA)},
                  {IniKey::Extinction, SingleText(Work.ExtA)},
                  {IniKey::RefractometricExtinction, SingleText(Work.RefrA)},
                  {IniKey::SolventDensity, SingleText(Work.SolventDensity)},
                  {IniKey::SoluteVBar, SingleText(Work.VbarA)},
                  {IniKey::CellPathlength, SingleText(Work.CellPathlength)},
                  {IniKey::SoluteRefractivity, SingleText(Work.FringeMassA)}});
}

void AskModelAndUnits() {
    if (!Agreed("Do you want to save the present fitting model and units mode (sigma vs. MW, AU vs. mg/mL, "
                "etc.) as the default values?"))
        return;
    const char* const mass = Work.MassUnits == MassUnit::Molar     ? "True"
                             : Work.MassUnits == MassUnit::Buoyant ? "Buoyant"
                                                                   : "False";
    WriteProgram({{IniKey::FitModelNumber, std::to_string(Work.Model)},
                  {IniKey::ConcentrationUnits, std::to_string(Work.ConcUnits)},
                  {IniKey::MassUnits, mass},
                  {IniKey::NonIdeal, TrueOrFalse(Work.NonIdeal != 0)},
                  {IniKey::SplitKs, TrueOrFalse(Work.SeparateK != 0)}});
}

void AskRangePlot() {
    const BoxAnswer plot =
        ChoiceOf("Do you want to set fitting ranges using ln(c) vs. radius squared / 2 plots (Yes) or linear "
                 "absorbance vs. radius plots (No) or leave the default unchanged (Cancel)?");
    if (plot != BoxAnswer::Cancel) WriteProgram(IniKey::RangeLogPlot, TrueOrFalse(plot == BoxAnswer::Yes));
}

void AskMaxPoints() {
    float value = 0.0F;
    if (!Agreed("Do you want to set a new value for the maximum data points per scan?") ||
        !AnsweredNumber(
            "New maximum data points per set (500-)? This value is usually set at 1500, which "
            "accomodates all scanner data.  High values will increase RAM memory usage but have no "
            "other drawback.",
            value) ||
        value < 500.0F)
        return;
    WriteProgram(IniKey::MaxPtsPerSet, std::to_string(ToInt16(static_cast<double>(value))));
}

void AskCellType() {
    if (!Agreed("Do you want to establish a new default type of cell (1, 3, or 4 samples per cell)?")) return;
    const std::string text = Answered("Number of samples per cell (1, 3, or 4)?");
    if (text.empty()) return;
    const bool valid = text == "1" || text == "3" || text == "4";
    WriteProgram(IniKey::CellType, valid ? text : std::to_string(Work.CellType));
}

void AskRotorExpansion() {
    float value = 0.0F;
    if (Agreed("Do you want to set a new value for the rotor expansion factor (used to help set channel "
               "radii)?") &&
        AnsweredNumber("What is the expansion in cm per RPM^2 (usually around 1E-11 for An60Ti)?", value))
        WriteProgram(IniKey::RotorExpansion, SingleText(value));
}

// A cell of kind 3 has three channels, one of kind 4 four.
void AskChannelRadii(const std::string& question, int cell) {
    if (!Agreed(question)) return;
    for (int channel = 1; channel <= cell; ++channel)
        for (const bool outer : {false, true}) {
            float value = 0.0F;
            const std::string prompt = std::string(outer ? "Outer" : "Inner") + " radius for Channel " +
                                       static_cast<char>('A' + channel - 1) + "?";
            if (AnsweredNumber(prompt, value))
                WriteProgram(ChannelKey(channel, outer, cell), SingleText(value));
        }
}

} // namespace

void SaveAlwaysRescue() {
    WriteOrTell([] { WriteFit(IniKey::AlwaysRescue, TrueOrFalse(Work.RescueMode == Rescue::Always)); });
}

void SaveTemperatureScale() {
    const bool kelvin = Work.TemperatureScale == TemperatureScales::Kelvin;
    WriteOrTell([kelvin] { WriteProgram(IniKey::TemperatureScale, kelvin ? "Kelvin" : "Celsius"); });
}

bool SaveFitDefaults() {
    return AskOrTell([] {
        AskPlots();
        AskPresentFitSettings();
        AskCorrelations();
        AskIterations();
        AskYield();
    });
}

bool SaveProgramDefaults() {
    return AskOrTell([] {
        AskFormScaling();
        AskReportFont();
        AskCoefficients();
        AskModelAndUnits();
        AskRangePlot();
        AskMaxPoints();
        AskCellType();
        AskRotorExpansion();
        AskChannelRadii(
            "Do you want to establish new values defining the radii corresponding to Channels A, B, "
            "and C for long column (6 channel) cells?",
            3);
        AskChannelRadii(
            "Do you want to establish new values defining the radii corresponding to Channels A, B, "
            "C and D for short column (8 channel) cells?",
            4);
    });
}

} // namespace Quillon
