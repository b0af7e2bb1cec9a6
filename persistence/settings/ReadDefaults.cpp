#include "persistence/settings/ReadDefaults.h"

#include "input/IniFile.h"
#include "input/NUMINPUT.h"
#include "models/table/Catalogue.h"
#include "persistence/settings/DefaultKeys.h"
#include "persistence/settings/IniAccess.h"
#include "platform/Letters.h"

#include <algorithm>

namespace Quillon {

namespace {

constexpr std::size_t LongestValue = 20; // characters of a value that are looked at
// [decision: points-raised]
constexpr std::int16_t SmallestMaxPts = 2048;

std::string StrippedCapitals(std::string_view text) {
    return CapitalLetters(Trimmed(text));
}

// One section of the file. The second argument of each operation is what a missing key means.
class SettingsReader {
public:
    explicit SettingsReader(const char* section) : Section(section), Ini(ReadIniFile(IniFilePath())) {}

    std::string Text(const std::string& key, const char* missing) const {
        return IniValue(Ini, Section, key, missing).substr(0, LongestValue);
    }
    float Single(const std::string& key, const char* missing) const {
        return Number<float>(key, missing, [](double value) { return ToSingle(value); });
    }
    std::int16_t Integer(const std::string& key, const char* missing) const {
        return Number<std::int16_t>(key, missing, [](double value) { return ToInt16(value); });
    }
    std::int16_t Boolean(const std::string& key, const char* missing) const {
        return Flag(StrippedCapitals(Text(key, missing)) == "TRUE");
    }

private:
    template <class T, class Narrow>
    T Number(const std::string& key, const char* missing, Narrow narrow) const {
        const std::string text = Text(key, missing);
        try {
            return narrow(NumericPrefix(text));
        } catch (const RuntimeError& error) {
            RaiseError(key + "=" + text + ": " + error.Text);
        }
    }
    const char* Section;
    std::string Ini;
};

// A number of a choice; one that does not exist is as good as none.
std::int16_t Choice(std::int16_t number, std::int16_t low, std::int16_t high, std::int16_t otherwise) {
    return number < low || number > high ? otherwise : number;
}

void ReadCoefficients(const SettingsReader& ini) {
    Work.AbsorpA = Work.AbsorpB = ini.Single(IniKey::Absorptivity, "1.000");
    Work.ExtA = Work.ExtB = ini.Single(IniKey::Extinction, "10000");
    Work.RefrA = Work.RefrB = ini.Single(IniKey::RefractometricExtinction, "20000");
    Work.SolventDensity = ini.Single(IniKey::SolventDensity, "1.003994");
    Work.VbarA = Work.VbarB = ini.Single(IniKey::SoluteVBar, "0.730");
    Work.CellPathlength = ini.Single(IniKey::CellPathlength, "1.200");
    Work.FringeMassA = Work.FringeMassB = ini.Single(IniKey::SoluteRefractivity, "2.756");
    const bool kelvin = StrippedCapitals(ini.Text(IniKey::TemperatureScale, "Celsius")) == "KELVIN";
    Work.TemperatureScale = kelvin ? TemperatureScales::Kelvin : TemperatureScales::Celsius;
}

void ReadModelAndUnits(const SettingsReader& ini) {
    Work.Model = Choice(ini.Integer(IniKey::FitModelNumber, "1"), 1, LastModelNumber, 1);
    Work.NonIdeal = ini.Boolean(IniKey::NonIdeal, "False");
    Work.SeparateK = ini.Boolean(IniKey::SplitKs, "False");
    Work.ConcUnits = Choice(ini.Integer(IniKey::ConcentrationUnits, "0"), ConcUnit::Absorbance,
                            ConcUnit::FringeMole, ConcUnit::Absorbance);
    const std::string mass = StrippedCapitals(ini.Text(IniKey::MassUnits, "False"));
    Work.MassUnits = mass == "TRUE"      ? MassUnit::Molar
                     : mass == "BUOYANT" ? MassUnit::Buoyant
                                         : MassUnit::Sigma;
}

void ReadCells(const SettingsReader& ini) {
    const std::int16_t cell = ini.Integer(IniKey::CellType, "3");
    Work.CellType = cell == Centerpiece::TwoChannel || cell == Centerpiece::EightChannel
                        ? cell
                        : std::int16_t{Centerpiece::SixChannel};
    Work.RangeLogPlot = ini.Boolean(IniKey::RangeLogPlot, "False");
    constexpr const char* inner[] = {"5.8", "6.4", "6.85", "6.85"};
    constexpr const char* outer[] = {"6.35", "6.8", "7.25", "7.25"};
    for (const int cellKind : {Centerpiece::SixChannel, Centerpiece::EightChannel})
        for (int channel = 1; channel <= cellKind; ++channel) {
            Work.ChannelRadii[ChannelPlace(channel, false, cellKind)] =
                ini.Single(ChannelKey(channel, false, cellKind), inner[channel - 1]);
            Work.ChannelRadii[ChannelPlace(channel, true, cellKind)] =
                ini.Single(ChannelKey(channel, true, cellKind), outer[channel - 1]);
        }
}

template <class Reading> void ReadOrTell(const char* section, const Reading& reading) {
    try {
        reading(SettingsReader(section));
    } catch (const RuntimeError& error) {
        TellReadFailure(error.Text);
    }
}

} // namespace

void TellReadFailure(const std::string& why) {
    Tell("Error occurred while reading defaults from " + IniFileName() + "\n\n" + IniFilePath() + ": " + why,
         Work.ProgramName, BoxIcon::Warning);
}

void ReadFitDefaults() {
    ReadOrTell(IniSection::FitSettings, [](const SettingsReader& ini) {
        Work.ConfidenceLevel = ini.Single(IniKey::ConfidenceLevel, "0.683");
        Work.ConvergenceLimit = ini.Single(IniKey::ConvergenceLimit, "0.05");
        Work.ParmsAccuracy = ini.Single(IniKey::ParmsAccuracy, "0.001");
        Work.HighCorrelation = ini.Single(IniKey::HighCorrelation, "0.97");
        Work.VeryHighCorrelation = ini.Single(IniKey::VeryHighCorrelation, "0.99");
        Work.PauseBeforeFit = Flag(ini.Text(IniKey::PauseBeforeFit, "True") != "False");
        const bool always = ini.Boolean(IniKey::AlwaysRescue, "False") != 0;
        Work.RescueMode = always ? Rescue::Always : Rescue::Ask;
        Work.MaxIterations = ini.Integer(IniKey::MaxIterations, "40");
        Work.YieldInterval = ini.Integer(IniKey::YieldInterval, "200");
        Work.OverlayPlot = ini.Boolean(IniKey::OverlayPlot, "False");
        Work.SpreadResiduals = ini.Boolean(IniKey::SpreadResiduals, "False");
    });
}

void ReadProgramDefaults() {
    ReadOrTell(IniSection::Program, [](const SettingsReader& ini) {
        Work.FormScalingPercent =
            std::clamp<std::int16_t>(ini.Integer(IniKey::FormScalingPercent, "100"), 75, 200);
        ReadCoefficients(ini);
        ReadModelAndUnits(ini);
        ReadCells(ini);
        Work.MaxPtsPerSet = std::max(ini.Integer(IniKey::MaxPtsPerSet, "2048"), SmallestMaxPts);
        Work.RotorExpansion = ini.Single(IniKey::RotorExpansion, "1E-11");
        Work.NameConvention = ini.Integer(IniKey::NameConvention, "1");
        Work.ReportFontSize = ini.Single(IniKey::ReportFontSize, "12");
    });
}

} // namespace Quillon
