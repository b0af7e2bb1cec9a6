#include "reporting/ReportModel.h"

#include "input/NUMINPUT.h"
#include "models/table/Catalogue.h"
#include "models/table/CoefficientWavelength.h"
#include "models/table/ModelTable.h"
#include "platform/Letters.h"
#include "platform/Paths.h"
#include "reporting/values/Pictured.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

using Lines = std::vector<std::string>;

bool HasTwoSpecies() {
    return TraitsOfModel().TwoSpecies;
}

void PrintModel(Lines& lines) {
    lines.push_back(std::string("Fitting to a") + (Work.NonIdeal ? " non-ideal, " : "n ideal ") +
                    ModelReportName(Work.Model) + " model" + (Work.SeparateK ? " with separate K's" : ""));
}

// --- names of files --------------------------------------------------------------------------------------

bool BeginsWith(const std::string& path, const std::string& prefix) {
    return SameLetters(path.substr(0, prefix.size()), prefix);
}

// Files that are named from one directory; where they have none in common, Directory is empty and their
// names are whole paths.
struct NamedFiles {
    std::string Directory;
    Lines Names;
};

NamedFiles NameFiles(const Lines& paths, const std::string& commonPrefix) {
    NamedFiles files;
    if (paths.empty()) return files;
    files.Directory = DirectoryOf(paths.front());
    if (std::all_of(paths.begin(), paths.end(),
                    [&](const std::string& path) { return DirectoryOf(path) == files.Directory; })) {
        for (const std::string& path : paths)
            files.Names.push_back(FileTitle(path));
        return files;
    }
    const bool common = !commonPrefix.empty() &&
                        std::all_of(paths.begin(), paths.end(),
                                    [&](const std::string& path) { return BeginsWith(path, commonPrefix); });
    const std::string prefix = common ? commonPrefix : "";
    files.Directory =
        common && IsSeparator(prefix.back()) ? DirectoryOf(prefix) : prefix; // a drive keeps its colon
    for (const std::string& path : paths)
        files.Names.push_back(path.substr(prefix.size()));
    return files;
}

NamedFiles ScanNames() {
    Lines paths;
    for (const SetNo set : EachSet()) {
        const RowNo row = RowOf(set);
        paths.push_back(JoinPath(Work.ScanDirectory[row], Work.ScanFile[row]));
    }
    return NameFiles(paths, Work.LabelPrefix);
}

// By set, NoBaseline for a set without one.
NamedFiles BaselineNames() {
    Lines paths;
    for (const SetNo set : EachSet()) {
        const RowNo row = RowOf(set);
        if (HasBaseline(row)) paths.push_back(JoinPath(Work.BaselineDirectory[row], Work.BaselineFile[row]));
    }
    NamedFiles files = NameFiles(paths, "");
    for (const SetNo set : EachSet())
        if (!HasBaseline(RowOf(set))) files.Names.insert(files.Names.begin() + (set.Number - 1), NoBaseline);
    return files;
}

// --- data sets ---------------------------------------------------------------------------------------------

// The range in radius, its points and the place where the set's concentrations are told.
std::string RangeText(RowNo row) {
    const long first = Work.FitRange[0][row];
    const long last = Work.FitRange[1][row];
    const OneBased<float>& radius = Work.ScanRadius[row];
    if (first < 1 || last < first || last > radius.Hi()) return "";
    const double r1 = static_cast<double>(radius[first]);
    const double r2 = static_cast<double>(radius[last]);
    return " from radius = " + FormatNumber(r1, "0.0000") + "cm to " + FormatNumber(r2, "0.0000") + "cm, " +
           std::to_string(last - first + 1) + " data points; reference radius squared / 2 = " +
           FormatNumber((r1 * r1 + r2 * r2) / 4.0, "0.0000");
}

std::string ChannelText(RowNo row) {
    const int channel = Work.DataChannel[row];
    return channel > 0 ? std::string(" Channel ") + static_cast<char>('A' + channel - 1) : "";
}

void PrintBaseline(Lines& lines, RowNo row, const std::string& name, int columns) {
    lines.push_back("   Baseline subtracted from file: " + name);
    if (!HasBaseline(row) || !Work.BaselineShifted[row]) return;
    const std::string shift = Pictured(Work.BaselineShift[row], "0.000###") + " cm";
    const std::string behind = lines.back() + ", shifted " + shift;
    if (static_cast<int>(behind.size()) <= columns)
        lines.back() = behind;
    else
        lines.push_back("   baseline data shifted " + shift);
}

// What the coefficients of a set are told against: the wavelength of the first scan, or that scan where
// its file tells none.
std::string ReferenceText() {
    const std::string wavelength = Pictured(CoefficientWavelength(), "###");
    return wavelength.empty() ? "of the first scan" : "at " + wavelength + " nm";
}

// Only where there is something to tell. [decision: extinction-that-differs]
void PrintExtinction(Lines& lines, RowNo row) {
    const float a = Work.ExtinctionRatio[0][row];
    const float b = Work.ExtinctionRatio[1][row];
    const bool otherWavelength = std::abs(Work.ScanWavelength[row] - CoefficientWavelength()) > 1.0F;
    if (a == 1.0F && (b == 1.0F || !HasTwoSpecies()) && !otherWavelength) return;
    std::string line = "   Extinction is " + Pictured(a, "0.0000") + " * that " + ReferenceText();
    if (HasTwoSpecies()) line += " for A, and " + Pictured(b, "0.0000") + " for B";
    lines.push_back(line);
}

void PrintSets(Lines& lines, int columns) {
    const NamedFiles scans = ScanNames();
    const NamedFiles baselines = BaselineNames();
    for (const SetNo set : EachSet()) {
        const RowNo row = RowOf(set);
        const std::size_t i = static_cast<std::size_t>(set.Number - 1);
        lines.push_back("Set " + std::to_string(set.Number) + ", file = " + scans.Names[i] +
                        ChannelText(row) + RangeText(row));
        lines.push_back("   Comment: " + Work.ScanComment[row]);
        PrintBaseline(lines, row, baselines.Names[i], columns);
        PrintExtinction(lines, row);
    }
    if (!scans.Directory.empty())
        lines.push_back("The root directory for the above data sets is " + scans.Directory);
    if (!baselines.Directory.empty())
        lines.push_back("The directory for all baseline files is " + baselines.Directory);
}

// --- constants ---------------------------------------------------------------------------------------------

void PrintMassConstants(Lines& lines) {
    const std::string density = " and solvent density = " + Pictured(Work.SolventDensity, "0.000000");
    if (Work.MassUnits == MassUnit::Molar && HasTwoSpecies()) {
        lines.push_back("Molecular weight values assume solute A vbar = " + Pictured(Work.VbarA, "0.00000"));
        lines.push_back("   and solute B vbar = " + Pictured(Work.VbarB, "0.00000") + density);
    } else if (Work.MassUnits == MassUnit::Molar) {
        lines.push_back("Molecular weight values assume solute vbar = " + Pictured(Work.VbarA, "0.00000") +
                        density);
    } else if (Work.MassUnits == MassUnit::Sigma) {
        const RowNo row = RowOf(SetNo(1));
        lines.push_back("Sigma values are referenced to " + Pictured(Work.ScanRPM[row], "##,###") +
                        " RPM and " + Pictured(Work.ScanTemperature[row], "#0.000") + " degrees");
    }
}

// Where the sets follow another rule than the standing one.
void PrintTemperatureScale(Lines& lines) {
    if (Work.NumSets > 1 && Work.TemperatureScale == TemperatureScales::Kelvin)
        lines.push_back("Sigma of the data sets is scaled by absolute temperature");
}

struct Coefficient {
    const char* Text;
    float A, B;
    const char* Format;
};

void PrintCoefficient(Lines& lines, const Coefficient& c) {
    lines.push_back(c.Text + Pictured(c.A, c.Format));
    const std::string wavelength = Pictured(CoefficientWavelength(), "###");
    if (HasTwoSpecies())
        lines.push_back("   for species A, and " + Pictured(c.B, c.Format) + " for species B" +
                        (wavelength.empty() ? "" : ","));
    if (!wavelength.empty()) lines.push_back("   at a wavelength of " + wavelength + " nm");
}

void PrintConcentrationConstants(Lines& lines) {
    switch (Work.ConcUnits) {
    case ConcUnit::Weight:
        return PrintCoefficient(
            lines, {"Concentrations are based on an absorptivity of ", Work.AbsorpA, Work.AbsorpB, "#0.000"});
    case ConcUnit::Mole:
        return PrintCoefficient(lines, {"Concentrations are based on an extinction coefficient of ",
                                        Work.ExtA, Work.ExtB, "0.000E+00"});
    case ConcUnit::FringeWeight:
        return PrintCoefficient(lines, {"Concentrations are based on a solute dn/dc of ", Work.FringeMassA,
                                        Work.FringeMassB, "0.000"});
    case ConcUnit::FringeMole:
        return PrintCoefficient(
            lines, {"Concentrations are based on a solute dn/dc of ", Work.RefrA, Work.RefrB, "0.000E+00"});
    default:
        lines.push_back(std::string("Concentrations are in ") +
                        (Work.ConcUnits == ConcUnit::Fringes ? "fringe" : "absorbance") + " units for a " +
                        Pictured(Work.CellPath[RowOf(SetNo(1))], "0.00") + " cm pathlength");
    }
}

} // namespace

std::vector<std::string> PrintModelText(int columns) {
    Lines lines;
    PrintModel(lines);
    PrintSets(lines, columns);
    PrintMassConstants(lines);
    PrintTemperatureScale(lines);
    PrintConcentrationConstants(lines);
    return lines;
}

} // namespace Quillon
