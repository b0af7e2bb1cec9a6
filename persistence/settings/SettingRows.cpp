#include "persistence/settings/SettingRows.h"

#include "models/table/Catalogue.h"
#include "persistence/settings/DefaultKeys.h"
#include "persistence/settings/IniAccess.h"
#include "platform/Narrow.h"

#include <array>

namespace Quillon {

namespace {

constexpr double Most = 1e9, MostWhole = 32767.0; // of a 16-bit member
constexpr const char *Fit = "Fit", *Reports = "Reports and Graphs", *Solution = "Solution";
constexpr const char *Model = "Model and Units", *Cells = "Scans and Cells", *Channels = "Channels";

template <std::int16_t Workspace::*member> void TakeWord(double value) {
    Work.*member = ToInt16(value);
}
template <std::int16_t Workspace::*member> void TakeFlag(double value) {
    Work.*member = Flag(value != 0.0);
}
template <float Workspace::*member> void TakeSingle(double value) {
    Work.*member = ToSingle(value);
}
void TakeRescue(double always) {
    Work.RescueMode = always != 0.0 ? Rescue::Always : Rescue::Ask;
}

// clang-format off
std::vector<SettingRow> FitRows() {
    constexpr const char* section = IniSection::FitSettings;
    constexpr SettingKind number = SettingKind::Number, whole = SettingKind::Whole, flag = SettingKind::Flag;
    return {
        {Fit, section, IniKey::PauseBeforeFit, "Pause for manual start when fitting", flag, "True", 0, 0, {}, TakeFlag<&Workspace::PauseBeforeFit>},
        {Fit, section, IniKey::AlwaysRescue, "Always search for a minimum with damped steps", flag, "False", 0, 0, {}, TakeRescue},
        {Fit, section, IniKey::MaxIterations, "Iterations before a fit fails", whole, "40", 1, MostWhole, {}, TakeWord<&Workspace::MaxIterations>},
        {Fit, section, IniKey::ConvergenceLimit, "Convergence limit", number, "0.05", 0, Most},
        {Fit, section, IniKey::ParmsAccuracy, "Accuracy of parameters (part)", number, "0.001", 0, 1},
        {Fit, section, IniKey::YieldInterval, "Points between two looks at the buttons", whole, "200", 50, MostWhole, {}, TakeWord<&Workspace::YieldInterval>},
        {Reports, section, IniKey::ConfidenceLevel, "Probability of confidence limits", number, "0.683", 0, 1},
        {Reports, section, IniKey::HighCorrelation, "High correlation", number, "0.97", 0, 1, {}, TakeSingle<&Workspace::HighCorrelation>},
        {Reports, section, IniKey::VeryHighCorrelation, "Very high correlation", number, "0.99", 0, 1, {}, TakeSingle<&Workspace::VeryHighCorrelation>},
        {Reports, section, IniKey::OverlayPlot, "Reports show data with fit, not residuals", flag, "False", 0, 0, {}, TakeFlag<&Workspace::OverlayPlot>},
        {Reports, section, IniKey::SpreadResiduals, "Sets one above the other in residual plots", flag, "False", 0, 0, {}, TakeFlag<&Workspace::SpreadResiduals>},
    };
}

std::vector<SettingRow> ProgramRows() {
    constexpr const char* section = IniSection::Program;
    constexpr SettingKind number = SettingKind::Number, whole = SettingKind::Whole;
    constexpr SettingKind flag = SettingKind::Flag, choice = SettingKind::Choice;
    return {
        {Reports, section, IniKey::ReportFontSize, "Letters of printed reports (points)", number, "12", 4, 16, {}, TakeSingle<&Workspace::ReportFontSize>},
        {Reports, section, IniKey::FormScalingPercent, "Size of windows, from the next start on (%)", whole, "100", 75, 200},
        {Solution, section, IniKey::SolventDensity, "Density of the solvent (g/mL)", number, "1.003994", 0, Most},
        {Solution, section, IniKey::SoluteVBar, "Partial specific volume (mL/g)", number, "0.730", 0, Most},
        {Solution, section, IniKey::Absorptivity, "Absorptivity (mL/(mg cm))", number, "1.000", 0, Most},
        {Solution, section, IniKey::Extinction, "Molar extinction (L/(mol cm))", number, "10000", 0, Most},
        {Solution, section, IniKey::SoluteRefractivity, "Refractivity (fringes per mg/mL and cm)", number, "2.756", 0, Most},
        {Solution, section, IniKey::RefractometricExtinction, "Molar refractivity (fringes L/(mol cm))", number, "20000", 0, Most},
        {Solution, section, IniKey::TemperatureScale, "Sigma scales by the temperature in", choice, "Celsius", 0, 0, {{"Celsius", "degrees Celsius"}, {"Kelvin", "kelvin"}}},
        {Model, section, IniKey::FitModelNumber, "Number of the model", whole, "1", 1, LastModelNumber},
        {Model, section, IniKey::NonIdeal, "Non-ideal", flag, "False"},
        {Model, section, IniKey::SplitKs, "Constants for each set", flag, "False"},
        {Model, section, IniKey::MassUnits, "Masses", choice, "False", 0, 0, {{"False", "sigma"}, {"Buoyant", "buoyant molar mass"}, {"True", "molar mass"}}},
        {Model, section, IniKey::ConcentrationUnits, "Concentrations", choice, "0", 0, 0, {{"0", "absorbance"}, {"1", "mg/mL of absorbance"}, {"2", "mol/L of absorbance"}, {"3", "fringes"}, {"4", "mg/mL of fringes"}, {"5", "mol/L of fringes"}}},
        {Cells, section, IniKey::MaxPtsPerSet, "Points kept of a scan", whole, "2048", 2048, MostWhole, {}, TakeWord<&Workspace::MaxPtsPerSet>},
        {Cells, section, IniKey::CellPathlength, "Optical path (cm)", number, "1.200", 0, Most, {}, TakeSingle<&Workspace::CellPathlength>},
        {Cells, section, IniKey::CellType, "Cell", choice, "3", 0, 0, {{"1", "two channels: 1 sample"}, {"3", "six channels: 3 samples"}, {"4", "eight channels: 4 samples"}}, TakeWord<&Workspace::CellType>},
        {Cells, section, IniKey::RangeLogPlot, "Ranges are set on ln(c) against radius squared / 2", flag, "False", 0, 0, {}, TakeFlag<&Workspace::RangeLogPlot>},
        {Cells, section, IniKey::NameConvention, "Names of files", choice, "1", 0, 0, {{"1", "the newer ones"}, {"0", "the older ones"}}, TakeWord<&Workspace::NameConvention>},
        {Cells, section, IniKey::RotorExpansion, "Expansion of the rotor (cm per rpm squared)", number, "1E-11", 0, 1, {}, TakeSingle<&Workspace::RotorExpansion>},
    };
}
// clang-format on

template <int place> void TakeRadius(double value) {
    Work.ChannelRadii[place] = ToSingle(value);
}

struct Radius {
    const char *Caption, *Standard;
    int Channel, Cell;
    bool Outer;
    void (*Take)(double value);
};

template <int channel, bool outer, int cell> Radius RadiusOf(const char* caption, const char* standard) {
    return {caption, standard, channel, cell, outer, TakeRadius<ChannelPlace(channel, outer, cell)>};
}

std::vector<SettingRow> RadiusRows() {
    std::vector<SettingRow> rows;
    for (const Radius& radius :
         {RadiusOf<1, false, 3>("Six channels: A, inner (cm)", "5.8"),
          RadiusOf<1, true, 3>("A, outer", "6.35"), RadiusOf<2, false, 3>("B, inner", "6.4"),
          RadiusOf<2, true, 3>("B, outer", "6.8"), RadiusOf<3, false, 3>("C, inner", "6.85"),
          RadiusOf<3, true, 3>("C, outer", "7.25"),
          RadiusOf<1, false, 4>("Eight channels: A, inner (cm)", "5.8"),
          RadiusOf<1, true, 4>("A, outer", "6.35"), RadiusOf<2, false, 4>("B, inner", "6.4"),
          RadiusOf<2, true, 4>("B, outer", "6.8"), RadiusOf<3, false, 4>("C, inner", "6.85"),
          RadiusOf<3, true, 4>("C, outer", "7.25"), RadiusOf<4, false, 4>("D, inner", "6.85"),
          RadiusOf<4, true, 4>("D, outer", "7.25")})
        rows.push_back({Channels,
                        IniSection::Program,
                        ChannelKey(radius.Channel, radius.Outer, radius.Cell),
                        radius.Caption,
                        SettingKind::Number,
                        radius.Standard,
                        0,
                        100,
                        {},
                        radius.Take});
    return rows;
}

std::vector<SettingRow> AllRows() {
    std::vector<SettingRow> rows = FitRows();
    for (const std::vector<SettingRow>& more : {ProgramRows(), RadiusRows()})
        rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

} // namespace

const std::vector<SettingRow>& SettingRows() {
    static const std::vector<SettingRow> rows = AllRows();
    return rows;
}

} // namespace Quillon
