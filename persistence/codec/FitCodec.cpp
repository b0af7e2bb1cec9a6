#include "persistence/codec/FitCodec.h"

#include "input/NUMINPUT.h"
#include "models/table/Catalogue.h"
#include "persistence/codec/FitCheck.h"
#include "persistence/codec/FitExtension.h"
#include "persistence/codec/FitFields.h"
#include "persistence/codec/FitStreams.h"
#include "platform/Letters.h"

#include <algorithm>
#include <array>

namespace Quillon {

namespace {

// The model list has two more rows than there are models once a fit has been restored.
constexpr std::int16_t ModelCountAfterRestore = 24;

// A name that can stand for a program in a question and as a key of the ini file.
bool IsProgramName(const std::string& name) {
    const auto allowed = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == ' ' ||
               c == '-' || c == '_' || c == '.';
    };
    return !name.empty() && name.size() <= 64 && name.front() != ' ' && name.back() != ' ' &&
           std::all_of(name.begin(), name.end(), allowed);
}

// A version is shown to the user as it stands.
bool IsVersion(const std::string& text) {
    return text.size() <= 64 &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

// What belongs to the program and its user and not to the analysis.
Workspace FreshAnalysis(const Workspace& present) {
    Workspace fresh = FreshWorkspace();
    fresh.ProgramName = present.ProgramName;
    fresh.ProgramNameUpper = present.ProgramNameUpper;
    fresh.ProgramVersion = present.ProgramVersion;
    fresh.ProgramDate = present.ProgramDate;
    fresh.FileFormatVersion = present.FileFormatVersion;
    fresh.EditBackColor = present.EditBackColor;
    fresh.LastModel = present.LastModel;
    fresh.LastNonIdeal = present.LastNonIdeal;
    fresh.LastSeparateK = present.LastSeparateK;
    fresh.YieldInterval = present.YieldInterval;
    fresh.WorkDirectory = present.WorkDirectory;
    fresh.ChosenPath = present.ChosenPath;
    fresh.ChosenName = present.ChosenName;
    fresh.FringeMassA = present.FringeMassA;
    fresh.FringeMassB = present.FringeMassB;
    fresh.PauseBeforeFit = present.PauseBeforeFit;
    fresh.RescueMode = present.RescueMode;
    fresh.FormScalingPercent = present.FormScalingPercent;
    fresh.CellType = present.CellType;
    fresh.RangeLogPlot = present.RangeLogPlot;
    fresh.ChannelRadii = present.ChannelRadii;
    fresh.RotorExpansion = present.RotorExpansion;
    fresh.ReportFontSize = present.ReportFontSize;
    return fresh;
}

// The catalogue once had 12 models in another order. True when the model of the file is the one that went.
bool TranslateModel(Workspace& w) {
    if (w.ModelCount != 12) return false;
    constexpr std::array<std::int16_t, 12> today = {1, 2, 3, 4, 5, 7, 8, 6, 0, 9, 10, 11};
    const auto place = static_cast<std::size_t>(w.Model - 1);
    if (place >= today.size()) FitReader::Damaged("Model");
    const bool gone = today[place] == 0;
    w.Model = gone ? today.front() : today[place];
    return gone;
}

void CompleteModelList(Workspace& w) {
    const long known = w.ModelCount == 12 ? 0 : w.ModelName.Hi(); // the old list had other numbers
    w.ModelName.Resize(ModelCountAfterRestore);
    for (long i = known + 1; i <= ModelCountAfterRestore; ++i)
        w.ModelName[i] = ModelDialogName(static_cast<int>(i));
    w.ModelCount = ModelCountAfterRestore;
}

// Brings what an older version meant to what is meant today.
bool Modernise(Workspace& w, double version) {
    const bool gone = TranslateModel(w);
    CompleteModelList(w);
    if (version <= 3.2 && w.MassUnits == -1) w.MassUnits = MassUnit::Molar;
    if (!(w.ParmsAccuracy >= 0.0001F && w.ParmsAccuracy < 0.1F)) w.ParmsAccuracy = 0.001F;
    return gone;
}

// A count can outlive its points: that of a scan when the table is cleared, that of a baseline when it is
// taken off. The count is kept, and points of zero stand behind it, 32767 of them at most, so that whoever
// goes by the count finds an array of that length.
void CoverCounts(Workspace& w) {
    for (long row = 1; row <= w.MaxSets; ++row) {
        w.ScanRadius[row].Resize(w.ScanPoints[row]);
        w.ScanValue[row].Resize(w.ScanPoints[row]);
        w.BaselineRadius[row].Resize(w.BaselinePoints[row]);
        w.BaselineValue[row].Resize(w.BaselinePoints[row]);
    }
}

// About what the numbers of a file take, with room for its texts: each command encodes the analysis, and
// bytes that grow are copied again and again.
std::size_t BytesOfNumbers(const Workspace& w) {
    constexpr std::size_t ofPoint = 14, ofReading = 8, ofElement = 8, others = 16384;
    std::size_t readings = 0;
    for (const auto* counts : {&w.ScanPoints, &w.BaselinePoints})
        for (const auto count : *counts)
            readings += static_cast<std::size_t>(std::max<long>(count, 0));
    const auto free = static_cast<std::size_t>(std::max<long>(w.NumFree, 0));
    return static_cast<std::size_t>(std::max<long>(w.NumPts, 0)) * ofPoint + readings * ofReading +
           free * free * ofElement + others;
}

// Arrays whose size follows from the counts of the file.
void SizeArrays(Workspace& w) {
    CoverCounts(w);
    w.SetPts.Resize(w.NumSets);
    w.NormVector.Recreate(w.NumFree - 1);
    w.AtBound.Recreate(w.NumFree - 1);
}

} // namespace

bool SameProgram(std::string_view one, std::string_view other) {
    return SameLetters(one, other);
}

FitFileHeader ReadFitHeader(const std::string& bytes) {
    FitFileHeader header;
    FitReader reader(bytes);
    const auto refuse = [] { RaiseError("this is not a fit save file"); };
    try {
        reader.Value("ProgramNameUpper", header.Program);
        if (!IsProgramName(header.Program)) refuse();
        reader.Value("ProgramVersion", header.Version);
        if (!IsVersion(header.Version)) refuse();
    } catch (const RuntimeError&) { // it ends before its first two fields: no fit of anybody's
        refuse();
    }
    header.Size = 4 + header.Program.size() + header.Version.size();
    return header;
}

namespace {

// The version of a file that this program can read.
double CheckedVersion(const FitFileHeader& header, const Workspace& present) {
    if (!SameProgram(header.Program, present.ProgramNameUpper))
        RaiseError("this is a fit from " + header.Program);
    const double version = NumericPrefix(header.Version);
    if (version < static_cast<double>(present.FileFormatVersion))
        RaiseError("this is a fit from version " + header.Version);
    return version;
}

} // namespace

std::string EncodeFit(const Workspace& analysis) {
    FitWriter writer;
    writer.Bytes.reserve(BytesOfNumbers(analysis));
    writer.Value("ProgramNameUpper", analysis.ProgramNameUpper);
    writer.Value("ProgramVersion", analysis.ProgramVersion);
    FitFields(writer, analysis);
    writer.Bytes += EncodeExtension(analysis);
    return std::move(writer.Bytes);
}

DecodedFit DecodeFit(const std::string& bytes, const Workspace& present) {
    const FitFileHeader header = ReadFitHeader(bytes);
    const double version = CheckedVersion(header, present);
    DecodedFit fit{FreshAnalysis(present)};
    FitReader reader(std::string_view(bytes).substr(header.Size));
    reader.Version = version;
    FitFields(reader, fit.Analysis);
    // Up to 3.02 there were files whose ranges and constraints took fewer bytes than today. They do not come
    // out even, and nothing of them is taken for what it is not.
    if (reader.Version <= 3.02 && !reader.AtEnd()) FitReader::Damaged("the end");
    fit.Analysis.LimitsLevel = fit.Analysis.ConfidenceLevel; // unless the extension tells another one
    DecodeExtension(reader.Rest(), fit.Analysis);
    fit.ModelGone = Modernise(fit.Analysis, reader.Version);
    CheckFit(fit.Analysis);
    SizeArrays(fit.Analysis);
    return fit;
}

} // namespace Quillon
