#include "studies/methods/Resampling.h"

#include "fit/GNLLSQ.h"
#include "input/NUMINPUT.h"
#include "models/ModelFlags.h"
#include "models/function/FitFunction.h"
#include "models/function/Random.h"
#include "models/table/ParmScale.h"
#include "platform/Platform.h"
#include "reporting/values/DerivedConstants.h"
#include "studies/methods/BlockLength.h"
#include "studies/methods/Copies.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Quillon {

namespace {

// The true points of a set and what is drawn for them.
struct SetNoise {
    long First = 0, Count = 0;     // points of the fit, from 1
    double Size = 0.0;             // standard deviation of the parametric noise
    std::vector<double> Residuals; // centred and stretched
    long Block = 1;
};

SetNoise NoiseOf(long first, long last, double stretch) {
    SetNoise noise;
    noise.First = first;
    noise.Count = last - first + 1;
    const auto n = static_cast<double>(noise.Count);
    double sum = 0.0, squares = 0.0;
    for (long p = first; p <= last; ++p) {
        const double e = static_cast<double>(Work.PtY[p]) - static_cast<double>(Work.PtFit[p]);
        noise.Residuals.push_back(e);
        sum += e;
        squares += e * e;
    }
    noise.Size = stretch * std::sqrt(squares / n);
    noise.Block = BlockForLimits(noise.Residuals);
    for (double& e : noise.Residuals)
        e = stretch * BlockStretch(noise.Block, noise.Count) * (e - sum / n);
    return noise;
}

std::vector<SetNoise> NoiseOfSets() {
    const double stretch =
        std::sqrt(static_cast<double>(Work.NumPts) / static_cast<double>(Work.NumPts - Work.NumFree));
    std::vector<SetNoise> sets;
    long first = 1;
    for (const std::int16_t points : Work.SetPts) {
        long last = first + points - 1;
        while (last > first && Work.PtX[last] == PointMarker)
            --last;
        sets.push_back(NoiseOf(first, last, stretch));
        first += points;
    }
    return sets;
}

void SetSignal(long point, double noise) {
    Work.PtY[point] = ToSingle(static_cast<double>(Work.PtFit[point]) + noise);
}

void DrawGaussian(const SetNoise& set, std::int16_t& seed) {
    for (long i = 0; i < set.Count; ++i)
        SetSignal(set.First + i, set.Size * GaussianNoise(seed));
}

void DrawBlocks(const SetNoise& set) {
    const auto pick = [&] {
        const auto place =
            static_cast<long>(static_cast<double>(Host.Uniform()) * static_cast<double>(set.Count));
        return std::min(place, set.Count - 1);
    };
    long place = 0;
    for (long i = 0; i < set.Count; ++i) {
        place = i % set.Block == 0 ? pick() : (place + 1) % set.Count;
        SetSignal(set.First + i, set.Residuals[static_cast<std::size_t>(place)]);
    }
}

void DrawData(const std::vector<SetNoise>& sets, ResampleKind kind) {
    RestartRandom();
    std::int16_t seed = 1;
    for (const SetNoise& set : sets)
        kind == ResampleKind::Parametric ? DrawGaussian(set, seed) : DrawBlocks(set);
}

// The fitted constants of the fit in Work with a value in molar terms.
std::vector<DerivedConstant> FittedConstants() {
    std::vector<DerivedConstant> fitted;
    for (DerivedConstant& constant : DerivedConstants())
        if (constant.Value && IsFitted(SlotNo(constant.Slot))) fitted.push_back(std::move(constant));
    return fitted;
}

std::vector<DerivedQuantity> QuantitiesOf(const std::vector<DerivedConstant>& constants) {
    std::vector<DerivedQuantity> quantities;
    for (const DerivedConstant& constant : constants) {
        quantities.push_back({constant.Slot, constant.Name, "log10_k", ""});
        quantities.push_back({constant.Slot, constant.Name, "kd", constant.Unit});
        quantities.push_back({constant.Slot, constant.Name, "delta_g_kj", "kJ/mol"});
    }
    return quantities;
}

std::vector<double> DerivedValues() {
    std::vector<double> values;
    for (const DerivedConstant& constant : FittedConstants())
        values.insert(values.end(), {constant.Value->Log10K, constant.Value->Kd, constant.Value->DeltaG});
    return values;
}

// A fit to what has been drawn, from the values of the fit that stands.
Draw FitDraw() {
    Draw draw;
    const PerSlot<float> start = Work.Parms;
    if (!RunFit() || Work.Outcome.End != FitEnd::Converged) {
        if (Work.Outcome.End == FitEnd::Cancelled) return draw;
        RescueFit(start);
        if (Work.Outcome.End == FitEnd::Cancelled) return draw;
    }
    draw.Ended = true;
    draw.Converged = Work.FitDone != 0 && Work.Outcome.End == FitEnd::Converged;
    draw.SumSq = Work.SumSq;
    if (!draw.Converged) return draw;
    CopySharedConstants();
    for (const FreePos a : EachFree())
        draw.Values.push_back(static_cast<double>(ToUserUnits(SlotOf(a), Work.Parms[SlotOf(a)])));
    draw.Derived = DerivedValues();
    return draw;
}

// The values of a quantity over the draws, and how they scatter.
struct Column {
    const std::vector<double>& Values;
    const Spread& Of;
};

double Correlation(const Column& a, const Column& b) {
    double sum = 0.0;
    for (std::size_t i = 0; i < a.Values.size(); ++i)
        sum += (a.Values[i] - a.Of.Mean) * (b.Values[i] - b.Of.Mean);
    const double size = a.Of.Sd * b.Of.Sd * (static_cast<double>(a.Values.size()) - 1.0);
    return size > 0.0 ? sum / size : 0.0;
}

std::vector<std::vector<double>> CorrelationsOf(const std::vector<std::vector<double>>& columns,
                                                const std::vector<Spread>& spreads) {
    std::vector<std::vector<double>> matrix;
    for (std::size_t a = 0; a < columns.size(); ++a) {
        matrix.emplace_back();
        for (std::size_t b = 0; b < a; ++b)
            matrix.back().push_back(Correlation({columns[a], spreads[a]}, {columns[b], spreads[b]}));
        matrix.back().push_back(1.0);
    }
    return matrix;
}

// Columns of the draws that have converged, by slot or by derived quantity.
std::vector<std::vector<double>> ColumnsOf(const Resampling& result, std::vector<double> Draw::*values,
                                           std::size_t count) {
    std::vector<std::vector<double>> columns(count);
    for (const Draw& draw : result.Draws)
        if (draw.Converged && (draw.*values).size() == count)
            for (std::size_t a = 0; a < count; ++a)
                columns[a].push_back((draw.*values)[a]);
    return columns;
}

std::vector<Spread> SpreadsOf(const std::vector<std::vector<double>>& columns, double level) {
    std::vector<Spread> spreads;
    for (const std::vector<double>& column : columns)
        spreads.push_back(column.empty() ? Spread{} : SpreadOf(column, level));
    return spreads;
}

void Summarise(Resampling& result) {
    for (const Draw& draw : result.Draws) {
        result.Ended += draw.Ended;
        result.Failed += draw.Ended && !draw.Converged;
    }
    if (result.Ended == result.Failed) return;
    const auto columns = ColumnsOf(result, &Draw::Values, result.Slots.size());
    result.Spreads = SpreadsOf(columns, result.Choice.Level);
    const auto derived = ColumnsOf(result, &Draw::Derived, result.Derived.size());
    result.DerivedSpreads = SpreadsOf(derived, result.Choice.Level);
    result.Correlations = CorrelationsOf(columns, result.Spreads);
    for (std::size_t i = 0; i < derived.size(); ++i) {
        result.DerivedCorrelations.emplace_back();
        for (std::size_t b = 0; b < columns.size(); ++b)
            result.DerivedCorrelations[i].push_back(
                Correlation({derived[i], result.DerivedSpreads[i]}, {columns[b], result.Spreads[b]}));
    }
}

// The errors of the limits as shares of the standard deviation, in root mean square: one limit by itself is
// known too badly for its own error to say much.
double LimitsKnownTo(const std::vector<Spread>& spreads) {
    double squares = 0.0, limits = 0.0;
    for (const Spread& spread : spreads)
        if (spread.Sd > 0.0) {
            for (const double error : {spread.LowerError, spread.UpperError})
                squares += error * error / (spread.Sd * spread.Sd);
            limits += 2.0;
        }
    return limits > 0.0 ? std::sqrt(squares / limits) : 0.0;
}

} // namespace

bool CanResample() {
    return Work.FitDone != 0 && Work.FitValid != 0 && Work.NewData == Changed::Nothing && Work.NumFree > 0 &&
           Work.NumPts > Work.NumFree;
}

double Quantile(const std::vector<double>& rising, double p) {
    const double place = static_cast<double>(rising.size() - 1) * std::clamp(p, 0.0, 1.0);
    const auto below = static_cast<std::size_t>(place);
    if (below + 1 >= rising.size()) return rising.back();
    const double share = place - static_cast<double>(below);
    return rising[below] + share * (rising[below + 1] - rising[below]);
}

Spread SpreadOf(std::vector<double> values, double level) {
    std::sort(values.begin(), values.end());
    const auto n = static_cast<double>(values.size());
    Spread spread;
    for (const double value : values)
        spread.Mean += value / n;
    double squares = 0.0;
    for (const double value : values)
        squares += (value - spread.Mean) * (value - spread.Mean);
    if (values.size() > 1) spread.Sd = std::sqrt(squares / (n - 1.0));
    spread.Median = Quantile(values, 0.5);
    const double tail = (1.0 - level) / 2.0;
    const double deviation = std::sqrt(tail * (1.0 - tail) / n);
    const auto errorAt = [&](double p) {
        return (Quantile(values, p + deviation) - Quantile(values, p - deviation)) / 2.0;
    };
    spread.Lower = Quantile(values, tail);
    spread.Upper = Quantile(values, 1.0 - tail);
    spread.LowerError = errorAt(tail);
    spread.UpperError = errorAt(1.0 - tail);
    return spread;
}

Resampling Resample(const ResampleChoice& choice, const std::function<void(long done)>& told) {
    const std::vector<SetNoise> sets = NoiseOfSets();
    Resampling result;
    result.Choice = choice;
    result.Draws.resize(static_cast<std::size_t>(choice.Count));
    for (const FreePos a : EachFree()) {
        result.Slots.push_back(SlotOf(a).Number);
        result.Names.push_back(Work.ParmName[SlotOf(a)]);
    }
    result.Derived = QuantitiesOf(FittedConstants());
    if (choice.Kind == ResampleKind::Residuals)
        for (const SetNoise& set : sets)
            result.BlockLengths.push_back(set.Block);
    const CopiesEnd end = RunOnCopies(
        choice.Count, choice.Seed,
        [&](long number) {
            Draw& draw = result.Draws[static_cast<std::size_t>(number)];
            draw.Ended = true; // what breaks off in arithmetic has failed
            DrawData(sets, choice.Kind);
            draw = FitDraw();
        },
        told);
    result.Complete = end.Complete;
    result.Broken = BrokenText(end);
    Summarise(result);
    return result;
}

std::optional<std::size_t> PlaceOfQuantity(const Resampling& resampling, long slot,
                                           const std::string& quantity) {
    const std::vector<long>& slots = resampling.Slots;
    for (std::size_t a = 0; a < slots.size(); ++a)
        if (slots[a] == slot && quantity.empty()) return a;
    for (std::size_t i = 0; i < resampling.Derived.size(); ++i)
        if (resampling.Derived[i].Slot == slot && resampling.Derived[i].Quantity == quantity)
            return slots.size() + i;
    return std::nullopt;
}

std::string PartnerText(const Resampling& resampling, std::size_t parameter) {
    constexpr double Worth = 0.9;
    const auto& matrix = resampling.Correlations;
    if (parameter >= matrix.size()) return "";
    const auto at = [&](std::size_t other) {
        return other < parameter ? matrix[parameter][other] : matrix[other][parameter];
    };
    std::size_t partner = parameter;
    for (std::size_t other = 0; other < matrix.size(); ++other)
        if (other != parameter && std::fabs(at(other)) >= Worth &&
            (partner == parameter || std::fabs(at(other)) > std::fabs(at(partner))))
            partner = other;
    if (partner == parameter) return "";
    return resampling.Names[parameter] + " goes together with " + resampling.Names[partner] +
           ": correlation " + FormatNumber(at(partner), "0.000") + ".";
}

std::string QuantileText(const Resampling& resampling) {
    if (resampling.Spreads.empty()) return "";
    const double known = LimitsKnownTo(resampling.Spreads);
    const auto fits = static_cast<double>(resampling.Ended - resampling.Failed);
    constexpr double FewestBeyond = 5.0;
    if (fits * (1.0 - resampling.Choice.Level) / 2.0 < FewestBeyond)
        return "Fewer than five fits lie beyond each limit: the limits are no more than a hint. Run more.";
    std::string text =
        "The limits are known to " + FormatNumber(known, "#0%") + " of the standard deviation.";
    constexpr double Enough = 0.15;
    if (known > Enough) text += " Four times as many fits halve that.";
    return text;
}

} // namespace Quillon
