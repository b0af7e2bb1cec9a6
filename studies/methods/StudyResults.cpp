#include "studies/methods/StudyResults.h"

#include "workspace/records/Roads.h"

#include <algorithm>
#include <tuple>

namespace Quillon {

namespace {

// By what a fit is known again: model, points, values and what they are shown in. What is searched behind a
// fit, texts and settings are not among it.
auto MarkOf(const Workspace& fit) {
    return std::tie(fit.Model, fit.NonIdeal, fit.SeparateK, fit.Parms, fit.FreeMap, fit.SumSq, fit.PtX,
                    fit.PtY, fit.PtSet, fit.SetRow, fit.SetNoise, fit.ParmScale, fit.MassUnits, fit.ConcUnits,
                    fit.VbarA, fit.VbarB, fit.SolventDensity, fit.AbsorpA, fit.AbsorpB, fit.ExtA, fit.ExtB,
                    fit.FringeMassA, fit.FringeMassB, fit.RefrA, fit.RefrB, fit.CellPath, fit.ExtinctionRatio,
                    fit.ScanTemperature);
}

struct Kept {
    Workspace Of; // the fit that was studied
    StudyResults Studies;
};
Kept Last;

bool IsOfTheFit() {
    return Work.FitDone != 0 && Work.NewData == Changed::Nothing && MarkOf(Last.Of) == MarkOf(Work);
}

// The record of the fit at hand, begun anew for another fit; nullptr where nothing is kept.
StudyResults* Place(bool complete) {
    if (!complete || Work.FitDone == 0) return nullptr;
    if (!IsOfTheFit()) Last = {Work, {}};
    return &Last.Studies;
}

void KeepProfile(ProfileStudy study, bool complete) {
    StudyResults* place = Place(complete);
    if (!place) return;
    std::erase_if(place->Profiles,
                  [&](const ProfileStudy& former) { return SlotsOf(former) == SlotsOf(study); });
    place->Profiles.push_back(std::move(study));
}

} // namespace

std::vector<long> SlotsOf(const ProfileStudy& study) {
    if (const Profile* profile = std::get_if<Profile>(&study)) return {profile->Slot};
    const ProfileMap& map = std::get<ProfileMap>(study);
    return {map.Slots[0], map.Slots[1]};
}

void KeepStudy(const Comparison& study) {
    if (StudyResults* place = Place(study.Complete)) place->Compared = study;
}

void KeepStudy(const Profile& study) {
    KeepProfile(study, study.Complete);
}

void KeepStudy(const ProfileMap& study) {
    KeepProfile(study, study.Complete);
}

void KeepStudy(const Resampling& study) {
    if (StudyResults* place = Place(study.Complete)) place->Resampled = study;
}

const StudyResults& KeptStudies() {
    static const StudyResults nothing;
    return IsOfTheFit() ? Last.Studies : nothing;
}

void ForgetStudies() {
    Last = Kept{};
}

} // namespace Quillon
