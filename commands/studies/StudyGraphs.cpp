#include "commands/studies/StudyGraphs.h"

#include "chart/Charts.h"
#include "graphs/kinds/StudyGraphs.h"
#include "input/NUMINPUT.h"
#include "models/table/ParmScale.h"
#include "platform/Platform.h"
#include "studies/StudyForm.h"
#include "studies/StudyKinds.h"
#include "studies/methods/ResamplingLines.h"

#include <cmath>

namespace Quillon {

namespace {

std::vector<std::string> NamesOf(const std::vector<ProfileLimits>& levels) {
    std::vector<std::string> names;
    for (const ProfileLimits& level : levels)
        names.push_back(FormatNumber(level.Level, "#0.0%"));
    return names;
}

// The values of a quantity in the fits that have converged.
std::vector<double> ValuesOf(const Resampling& resampling, std::size_t quantity) {
    std::vector<double> values;
    const std::size_t parameters = resampling.Slots.size();
    for (const Draw& draw : resampling.Draws) {
        const std::vector<double>& from = quantity < parameters ? draw.Values : draw.Derived;
        const std::size_t place = quantity < parameters ? quantity : quantity - parameters;
        if (draw.Converged && place < from.size() && std::isfinite(from[place]))
            values.push_back(from[place]);
    }
    return values;
}

bool MakeGraphOfForm() {
    switch (StudyForm.Kind) {
    case StudyKind::Profile:
        if (const ProfileMap* map = FoundMap()) return map->Complete && MakeGraphOf(*map);
        return !FoundProfile().Points.empty() && MakeGraphOf(FoundProfile());
    case StudyKind::Resample:
        return MakeGraphOf(FoundResampling(), static_cast<std::size_t>(std::max(MarkedStudyRow(), 0)));
    default:
        return false;
    }
}

} // namespace

bool MakeGraphOf(const Profile& profile) {
    ProfileCurve curve;
    curve.Parameter = ParmCaption(SlotNo(profile.Slot));
    for (const ProfilePoint& point : profile.Points) {
        curve.Values.push_back(point.Value);
        curve.Ratios.push_back(point.Ratio);
    }
    curve.Levels = RatiosOf(profile.Limits);
    curve.Names = NamesOf(profile.Limits);
    return MakeProfileGraph(curve);
}

bool MakeGraphOf(const ProfileMap& map) {
    ContourMap contours;
    for (std::size_t i = 0; i < 2; ++i)
        contours.Parameters[i] = ParmCaption(SlotNo(map.Slots[i]));
    contours.Values = map.Values;
    for (const ProfilePoint& point : map.Points)
        contours.Ratios.push_back(point.Ratio);
    contours.Levels = RatiosOf(map.Levels);
    contours.Names = NamesOf(map.Levels);
    contours.Minimum = map.Minimum;
    return MakeContourGraph(contours);
}

bool MakeGraphOf(const Resampling& resampling, std::size_t quantity) {
    const std::size_t parameters = resampling.Spreads.size();
    if (quantity >= parameters + resampling.DerivedSpreads.size()) return false;
    Histogram histogram;
    histogram.Values = ValuesOf(resampling, quantity);
    if (histogram.Values.empty()) return false;
    const bool derived = quantity >= parameters;
    const Spread& spread =
        derived ? resampling.DerivedSpreads[quantity - parameters] : resampling.Spreads[quantity];
    histogram.Quantity = derived ? QuantityCaption(resampling.Derived[quantity - parameters])
                                 : ParmCaption(SlotNo(resampling.Slots[quantity]));
    histogram.Level = FormatNumber(resampling.Choice.Level, "#0.0%");
    histogram.Lower = spread.Lower;
    histogram.Upper = spread.Upper;
    return MakeHistogramGraph(histogram);
}

void GraphStudy() {
    if (MakeGraphOfForm()) Host.ShowModal(ChartsName);
}

} // namespace Quillon
