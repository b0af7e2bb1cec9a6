#include "reporting/MethodsTable.h"

#include "fit/Confidence.h"
#include "fit/Undetermined.h"
#include "input/Csv.h"
#include "input/NUMINPUT.h"
#include "input/ShortestText.h"
#include "input/Utf8Text.h"
#include "models/table/Catalogue.h"
#include "models/table/ParmScale.h"
#include "platform/Paths.h"
#include "reporting/values/DerivedConstants.h"
#include "reporting/values/FitNotes.h"
#include "reporting/values/Measured.h"
#include "reporting/values/ParmLines.h"
#include "workspace/records/Roads.h"

#include <optional>

namespace Quillon {

namespace {

using Cells = std::vector<std::string>;

std::string Shown(double value, const char* picture) {
    return FormatNumber(value, picture);
}
std::string Shown(const std::optional<double>& value, const char* picture) {
    return value ? FormatNumber(*value, picture) : "";
}
std::string Exact(const std::optional<double>& value) {
    return value ? ShortestText(*value) : "";
}
std::string NumberOrNone(int number) {
    return number > 0 ? std::to_string(number) : "";
}

// --- sets ------------------------------------------------------------------------------------------------

constexpr const char* SetColumns[] = {"set",           "file",           "cell",    "channel",  "speed_rpm",
                                      "temperature_c", "wavelength_nm",  "optics",  "path_cm",  "inner_cm",
                                      "outer_cm",      "time_s",         "omega2t", "averaged", "points",
                                      "rms",           "mean_residual",  "runs_z",  "noise",    "sha256",
                                      "baseline",      "baseline_sha256"};

// All of a mean, between commas.
std::string AllOf(const std::string& one, const std::vector<std::string>& several) {
    std::string text;
    for (const std::string& each : several)
        text += (text.empty() ? "" : ", ") + each;
    return several.empty() ? one : text;
}

Cells ExactSet(const MeasuredSet& m) {
    return {std::to_string(m.Set.Number),
            AllOf(m.File, m.Files),
            NumberOrNone(m.Cell),
            m.Channel,
            ShortestText(m.Rpm),
            ShortestText(m.Celsius),
            ShortestText(m.Wavelength),
            m.Optics,
            ShortestText(m.Path),
            ShortestText(m.Inner),
            ShortestText(m.Outer),
            std::to_string(m.Seconds),
            ShortestText(m.Omega2t),
            std::to_string(m.Averaged),
            std::to_string(m.Points),
            Exact(m.Rms),
            Exact(m.MeanResidual),
            Exact(m.RunsZ),
            m.Noise > 0.0F ? ShortestText(m.Noise) : "",
            AllOf(m.Sha256, m.Hashes),
            m.Baseline,
            m.BaselineSha256};
}

std::string SignalOf(const MeasuredSet& m) {
    if (m.Optics != "absorbance") return m.Optics;
    return m.Wavelength > 0.0F ? "A, " + Shown(static_cast<double>(m.Wavelength), "##0") + " nm" : "A";
}

Cells ShownSet(const MeasuredSet& m) {
    return {std::to_string(m.Set.Number),
            FileTitle(m.File) +
                (m.Files.empty() ? "" : " (mean of " + std::to_string(m.Files.size()) + " scans)"),
            NumberOrNone(m.Cell) + m.Channel,
            Shown(static_cast<double>(m.Rpm), "#####0"),
            Shown(static_cast<double>(m.Celsius), "#0.0"),
            SignalOf(m),
            Shown(static_cast<double>(m.Inner), "0.000") + "-" + Shown(static_cast<double>(m.Outer), "0.000"),
            Shown(static_cast<double>(m.Path), "0.00"),
            Shown(static_cast<double>(m.Seconds) / 3600.0, "#0.0"),
            std::to_string(m.Averaged),
            std::to_string(m.Points),
            Shown(m.Rms, "0.0000"),
            Shown(m.RunsZ, "#0.00"),
            m.Sha256.substr(0, 12)};
}

// --- parameters ------------------------------------------------------------------------------------------

constexpr const char* ParameterColumns[] = {"slot",     "name",     "unit",    "state",      "value",
                                            "error",    "lower",    "upper",   "note",       "kd_root_mol_l",
                                            "kd_lower", "kd_upper", "log10_k", "delta_g_kj", "convention"};

// A slot as both kinds of tables tell it.
struct TabledParameter {
    SlotNo Slot;
    std::string State;
    std::optional<double> Value, Error, Lower, Upper; // user units
    std::optional<DerivedConstant> Derived;
};

std::optional<double> LimitOf(SlotNo slot, bool upper) {
    if (!IsFitted(slot) || !Work.LimitsDone) return std::nullopt;
    const FreePos place = FreePosOf(slot);
    if (!LimitFound(place, upper)) return std::nullopt;
    return static_cast<double>(ToUserUnits(slot, Work.ParmLimits[upper ? 1 : 0][place]));
}

std::vector<TabledParameter> TabledParameters() {
    const std::vector<DerivedConstant> derived =
        Work.FitDone ? DerivedConstants() : std::vector<DerivedConstant>{};
    std::vector<TabledParameter> rows;
    for (const SlotNo slot : EachSlot()) {
        if (Work.FreeMap[slot] == SlotUnused) continue;
        TabledParameter row{
            slot, SlotState(slot), std::nullopt, std::nullopt, LimitOf(slot, false), LimitOf(slot, true), {}};
        row.Value = static_cast<double>(ToUserUnits(slot, Work.Parms[slot]));
        if (HasError(slot)) row.Error = static_cast<double>(DisplayedError(FreePosOf(slot)));
        for (const DerivedConstant& k : derived)
            if (k.Slot == slot.Number && k.Value) row.Derived = k;
        rows.push_back(row);
    }
    return rows;
}

// Values are singles, and so are their digits.
std::string ExactSingle(const std::optional<double>& value) {
    return value ? ShortestText(static_cast<float>(*value)) : "";
}

std::optional<double> RootOf(const std::optional<ConstantTerms>& terms) {
    return terms ? terms->KdRoot : std::nullopt;
}

Cells ExactParameter(const TabledParameter& row) {
    Cells cells{std::to_string(row.Slot.Number), Work.ParmName[row.Slot],
                Work.ParmTitle[row.Slot],        row.State,
                ExactSingle(row.Value),          ExactSingle(row.Error),
                ExactSingle(row.Lower),          ExactSingle(row.Upper),
                ParameterNote(row.Slot)};
    if (!row.Derived) {
        cells.resize(std::size(ParameterColumns));
        return cells;
    }
    const DerivedConstant& k = *row.Derived;
    for (const std::string& cell :
         {Exact(RootOf(k.Value)), Exact(RootOf(k.Lower)), Exact(RootOf(k.Upper)),
          ShortestText(k.Value->Log10K), ShortestText(k.Value->DeltaG), k.Convention})
        cells.push_back(cell);
    return cells;
}

std::string InPicture(const TabledParameter& row, const std::optional<double>& value) {
    return value ? WithLeadingZero(FormatNumber(*value, Work.ParmFormat[row.Slot])) : "";
}

Cells ShownParameter(const TabledParameter& row) {
    std::string limits;
    if (row.Lower && row.Upper) limits = InPicture(row, row.Lower) + " to " + InPicture(row, row.Upper);
    Cells cells{Work.ParmName[row.Slot],   Work.ParmTitle[row.Slot],  row.State,
                InPicture(row, row.Value), InPicture(row, row.Error), limits};
    const bool derived = row.Derived.has_value();
    cells.push_back(derived ? Shown(RootOf(row.Derived->Value), "0.000E-00") : "");
    cells.push_back(derived ? Shown(row.Derived->Value->Log10K, "#0.000") : "");
    cells.push_back(derived ? Shown(row.Derived->Value->DeltaG, "#0.00") : "");
    return cells;
}

std::string FitCaption() {
    return "Fit to a " + ModelReportName(Work.Model) +
           " model: " + std::to_string(Work.NumPts - Work.NumFree) + " degrees of freedom, sum of squares " +
           FormatNumber(Work.SumSq, "0.0000E-00") + ", rms " +
           FormatNumber(static_cast<double>(Work.RmsResidual), "0.0000E-00");
}

// --- formats ---------------------------------------------------------------------------------------------

std::string CsvTables() {
    std::string text = CsvLine(Cells(std::begin(SetColumns), std::end(SetColumns)));
    for (const MeasuredSet& m : MeasuredSets())
        text += CsvLine(ExactSet(m));
    text += "\n" + CsvLine(Cells(std::begin(ParameterColumns), std::end(ParameterColumns)));
    for (const TabledParameter& row : TabledParameters())
        text += CsvLine(ExactParameter(row));
    return text;
}

// Each letter through a table of replacements.
std::string Escaped(const std::string& text, const std::string& letters, const Cells& replacements) {
    std::string escaped;
    for (const char c : text) {
        const std::size_t place = letters.find(c);
        escaped += place == std::string::npos ? std::string(1, c) : replacements[place];
    }
    return escaped;
}

std::string LatexText(const std::string& text) {
    static const Cells replacements{"\\textbackslash{}",
                                    "\\&",
                                    "\\%",
                                    "\\$",
                                    "\\#",
                                    "\\_",
                                    "\\{",
                                    "\\}",
                                    "\\textasciitilde{}",
                                    "\\textasciicircum{}",
                                    "\\textgreater{}",
                                    "\\textless{}"};
    return Escaped(Utf8Text(text), "\\&%$#_{}~^><", replacements);
}

std::string MarkdownText(const std::string& text) {
    static const Cells replacements{"\\\\", "\\|", "\\*", "\\_", "\\`", "&lt;", "\\^"};
    return Escaped(Utf8Text(text), "\\|*_`<^", replacements);
}

std::string Line(const Cells& cells, std::string (*write)(const std::string&), const char* between) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i)
        line += (i > 0 ? between : "") + write(cells[i]);
    return line;
}

std::string LatexTable(const TextTable& table) {
    std::string text = "\\begin{table}\n\\caption{" + LatexText(table.Caption) + "}\n\\begin{tabular}{" +
                       std::string(table.Heads.size(), 'l') + "}\n\\hline\n";
    text += Line(table.Heads, LatexText, " & ") + " \\\\\n\\hline\n";
    for (const Cells& row : table.Rows)
        text += Line(row, LatexText, " & ") + " \\\\\n";
    return text + "\\hline\n\\end{tabular}\n\\end{table}\n";
}

std::string MarkdownTable(const TextTable& table) {
    std::string text =
        MarkdownText(table.Caption) + "\n\n| " + Line(table.Heads, MarkdownText, " | ") + " |\n|";
    for (std::size_t i = 0; i < table.Heads.size(); ++i)
        text += "---|";
    text += "\n";
    for (const Cells& row : table.Rows)
        text += "| " + Line(row, MarkdownText, " | ") + " |\n";
    return text;
}

constexpr const char* Style =
    "body{font-family:sans-serif;max-width:60em;margin:2em auto;padding:0 1em;color:#111;background:#fff}\n"
    "table{border-collapse:collapse;margin:1em 0;font-size:90%}\n"
    "caption{text-align:left;font-weight:bold;padding:.3em 0}\n"
    "th,td{border:1px solid #999;padding:.2em .5em;text-align:left}\n"
    "td{white-space:nowrap}\n"
    "figure{margin:1em 0}figure svg{max-width:100%;height:auto}\n"
    ".tables{overflow-x:auto}.warning{border-left:4px solid #d55e00;padding-left:.7em}\n"
    "pre{font-size:80%;overflow-x:auto}\n"
    // Paper does not scroll: nothing of a wide table is cut off there.
    "@media print{body{margin:0;max-width:none}.tables,pre{overflow:visible}table{font-size:55%}"
    "th,td{padding:.1em .3em}pre{white-space:pre-wrap}}\n";

} // namespace

TextTable SetsTable() {
    TextTable table{"Data sets",
                    {"Set", "Scan", "Cell", "Speed (rpm)", "T (degrees C)", "Signal", "Radii (cm)",
                     "Path (cm)", "Time (h)", "Averaged", "Points", "rms", "Runs Z", "SHA-256"},
                    {}};
    for (const MeasuredSet& m : MeasuredSets())
        table.Rows.push_back(ShownSet(m));
    return table;
}

TextTable ParametersTable() {
    TextTable table{FitCaption(),
                    {"Parameter", "Unit", "State", "Value", "Standard error", "Confidence limits",
                     "Kd^(1/bonds) (mol/L)", "log10 K", "Delta G (kJ/mol)"},
                    {}};
    for (const TabledParameter& row : TabledParameters())
        table.Rows.push_back(ShownParameter(row));
    return table;
}

MethodsFormat MethodsFormatOf(const std::string& path) {
    if (path == "-") return MethodsFormat::Csv;
    const std::string ending = EndingOf(path);
    if (ending == "csv") return MethodsFormat::Csv;
    if (ending == "html") return MethodsFormat::Html;
    if (ending == "tex") return MethodsFormat::Latex;
    if (ending == "md") return MethodsFormat::Markdown;
    RaiseError("a table of methods ends with .csv, .html, .tex or .md");
}

std::string MethodsText(MethodsFormat format) {
    switch (format) {
    case MethodsFormat::Html:
        return HtmlHead(Work.FitTitle) + "<div class=\"tables\">\n" + HtmlTable(SetsTable()) +
               HtmlTable(ParametersTable()) + "</div>\n</body>\n</html>\n";
    case MethodsFormat::Latex:
        return LatexTable(SetsTable()) + "\n" + LatexTable(ParametersTable());
    case MethodsFormat::Markdown:
        return MarkdownTable(SetsTable()) + "\n" + MarkdownTable(ParametersTable());
    case MethodsFormat::Csv:
        break;
    }
    return CsvTables();
}

std::string HtmlHead(const std::string& title) {
    // The policy says to the browser what this file promises: nothing is run and nothing is fetched.
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
           "'unsafe-inline'\">\n<title>" +
           HtmlText(title) + "</title>\n<style>\n" + Style + "</style>\n</head>\n<body>\n";
}

std::string HtmlText(const std::string& text) {
    static const Cells replacements{"&amp;", "&lt;", "&gt;", "&quot;"};
    return Escaped(Utf8Text(text), "&<>\"", replacements);
}

std::string HtmlTable(const TextTable& table) {
    std::string text = "<table>\n<caption>" + HtmlText(table.Caption) + "</caption>\n<thead><tr><th>" +
                       Line(table.Heads, HtmlText, "</th><th>") + "</th></tr></thead>\n<tbody>\n";
    for (const Cells& row : table.Rows)
        text += "<tr><td>" + Line(row, HtmlText, "</td><td>") + "</td></tr>\n";
    return text + "</tbody>\n</table>\n";
}

} // namespace Quillon
