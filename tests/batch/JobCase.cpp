#include "tests/batch/JobCase.h"

#include "batch/outputs/Numbers.h"
#include "models/ModelFlags.h"
#include "models/table/ParmScale.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

namespace Quillon {
namespace {

template <class... Values> std::string Printed(const char* format, Values... values) {
    char text[200];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

std::string KeyLine(const std::string& key, float value) {
    return key + " = " + ShortestText(value) + "\n";
}

std::string YesNo(bool value) {
    return value ? "yes\n" : "no\n";
}

std::string FitSection(const Workspace& w) {
    const char* const units[] = {"signal", "weight", "molar"};
    return "[fit]\nmodel = " + std::to_string(w.Model) + "\nnonideal = " + YesNo(w.NonIdeal != 0) +
           "separate-k = " + YesNo(w.SeparateK != 0) + "concentration-units = " + units[w.ConcUnits % 3] +
           "\ndata = " + (w.ConcUnits < 3 ? "absorbance" : "interference") + "\n";
}

std::string ConstantsSection(const Workspace& w) {
    return "[constants]\n" + KeyLine("vbar-a", w.VbarA) + KeyLine("vbar-b", w.VbarB) +
           KeyLine("density", w.SolventDensity) + KeyLine("absorptivity-a", w.AbsorpA) +
           KeyLine("absorptivity-b", w.AbsorpB) + KeyLine("extinction-a", w.ExtA) +
           KeyLine("extinction-b", w.ExtB) + KeyLine("refractivity-a", w.FringeMassA) +
           KeyLine("refractivity-b", w.FringeMassB) + KeyLine("molar-refractivity-a", w.RefrA) +
           KeyLine("molar-refractivity-b", w.RefrB);
}

std::string ConstraintLines(const Workspace& w, long row) {
    std::string text;
    if (w.ConcConstraintA[row] > 0.0F)
        text += KeyLine("loading-a", w.ConcConstraintA[row]) +
                KeyLine("tolerance-a", 100.0F * w.ConcToleranceA[row]);
    if (w.ConcConstraintB[row] > 0.0F)
        text += KeyLine("loading-b", w.ConcConstraintB[row]) +
                KeyLine("tolerance-b", 100.0F * w.ConcToleranceB[row]);
    if (w.OffsetLink[row] > 0) text += "offset-of = " + std::to_string(w.OffsetLink[row]) + "\n";
    return text;
}

std::string SetText(const Workspace& w, long row) {
    return "[set " + std::to_string(row) + "]\nfile = set" + std::to_string(row) + ".txt\n" +
           KeyLine("inner", w.ScanRadius[row][w.FitRange[0][row]]) +
           KeyLine("outer", w.ScanRadius[row][w.FitRange[1][row]]) + KeyLine("path", w.CellPath[row]) +
           KeyLine("extinction-ratio-a", w.ExtinctionRatio[0][row]) +
           KeyLine("extinction-ratio-b", w.ExtinctionRatio[1][row]) + ConstraintLines(w, row);
}

} // namespace

std::string ScanText(const Workspace& w, long row) {
    std::string text = "simulated\r\n";
    text += Printed("R 1 %g %g %07d %.5E %g %d\r\n", static_cast<double>(w.ScanTemperature[row]),
                    static_cast<double>(w.ScanRPM[row]), static_cast<int>(w.ScanTime[row]),
                    static_cast<double>(w.ScanOmega2t[row]), static_cast<double>(w.ScanWavelength[row]),
                    static_cast<int>(w.ScansAveraged[row]));
    for (long p = 1; p <= w.ScanPoints[row]; ++p)
        text += Printed("%.9g %.9g 0\r\n", static_cast<double>(w.ScanRadius[row][p]),
                        static_cast<double>(w.ScanValue[row][p]));
    return text;
}

std::string JobTextOf(const Workspace& truth, Script& script) {
    std::string text = FitSection(truth) + ConstantsSection(truth);
    for (long set = 1; set <= truth.NumSets; ++set) {
        const long row = truth.SetRow[set];
        script.MakeFile("set" + std::to_string(row) + ".txt", ScanText(truth, row));
        text += SetText(truth, row);
    }
    return text;
}

std::string ParameterTextOf(const Workspace& truth) {
    Work = truth;
    Work.DataChosen = FlagTrue;
    for (std::int16_t& map : Work.FreeMap)
        map = 0;
    ApplyModelFlags(); // which slots the model uses; the experiment knows only those that it fits
    for (const long stoichiometry : {1, 3}) // the scale of constants reads them in any case
        if (Work.FreeMap[stoichiometry] == SlotUnused) Work.Parms[stoichiometry] = 0.0F;
    BuildParmScale();
    std::string text = "[parameters]\n";
    for (long slot = 0; slot < truth.NumParms; ++slot)
        if (Work.FreeMap[slot] != SlotUnused && Work.FreeMap[slot] != SlotTied)
            text += std::to_string(slot) + " = " +
                    ShortestText(ToUserUnits(SlotNo(slot), truth.Parms[slot])) +
                    (truth.FreeMap[slot] >= 0 ? " fit\n" : " hold\n");
    return text;
}

ModelCase SmallCase(int points) {
    ModelCase small;
    small.Name = "Small";
    small.Model = 2;
    small.LnK2 = std::log(2.0);
    small.Fitted = {0, 2};
    small.FitOffsets = false;
    small.Sets = {{.Rpm = 15000, .Inner = 6.7F, .OuterSignal = 1.2, .Points = points},
                  {.Rpm = 21000, .Inner = 6.7F, .OuterSignal = 1.3, .Points = points}};
    return small;
}

} // namespace Quillon
