#pragma once
// The table of the workspace's members, to walk over: compare, dump, check. Every member stands here once,
// in the order of the struct; a test counts the members of the struct against it.

#include "workspace/records/Workspace.h"

namespace Quillon {

// Calls visit("Name", &Workspace::Name) for each member, in the order of the struct.
template <class Visitor> void VisitMembers(Visitor&& visit) {
    visit("ProgramName", &Workspace::ProgramName);
    visit("ProgramNameUpper", &Workspace::ProgramNameUpper);
    visit("ProgramVersion", &Workspace::ProgramVersion);
    visit("ProgramDate", &Workspace::ProgramDate);
    visit("FileFormatVersion", &Workspace::FileFormatVersion);
    visit("MaxParms", &Workspace::MaxParms);
    visit("NumParms", &Workspace::NumParms);
    visit("MaxSets", &Workspace::MaxSets);
    visit("MaxPtsPerSet", &Workspace::MaxPtsPerSet);
    visit("MaxIterations", &Workspace::MaxIterations);
    visit("MonitorMode", &Workspace::MonitorMode);
    visit("BoundsActive", &Workspace::BoundsActive);
    visit("ModelCount", &Workspace::ModelCount);
    visit("EditBackColor", &Workspace::EditBackColor);
    visit("Model", &Workspace::Model);
    visit("NonIdeal", &Workspace::NonIdeal);
    visit("SeparateK", &Workspace::SeparateK);
    visit("ModelName", &Workspace::ModelName);
    visit("LastModel", &Workspace::LastModel);
    visit("LastNonIdeal", &Workspace::LastNonIdeal);
    visit("LastSeparateK", &Workspace::LastSeparateK);
    visit("Parms", &Workspace::Parms);
    visit("ParmsSave", &Workspace::ParmsSave);
    visit("ParmScale", &Workspace::ParmScale);
    visit("ParmName", &Workspace::ParmName);
    visit("ParmTitle", &Workspace::ParmTitle);
    visit("ParmFormat", &Workspace::ParmFormat);
    visit("FreeMap", &Workspace::FreeMap);
    visit("FreeIndex", &Workspace::FreeIndex);
    visit("Bounds", &Workspace::Bounds);
    visit("NumFree", &Workspace::NumFree);
    visit("Increment", &Workspace::Increment);
    visit("Deriv", &Workspace::Deriv);
    visit("NormMatrix", &Workspace::NormMatrix);
    visit("NormVector", &Workspace::NormVector);
    visit("CorrMatrix", &Workspace::CorrMatrix);
    visit("AtBound", &Workspace::AtBound);
    visit("ParmLimits", &Workspace::ParmLimits);
    visit("ConfTrace", &Workspace::ConfTrace);
    visit("SumSq", &Workspace::SumSq);
    visit("LastSumSq", &Workspace::LastSumSq);
    visit("RmsResidual", &Workspace::RmsResidual);
    visit("Alpha", &Workspace::Alpha);
    visit("Iteration", &Workspace::Iteration);
    visit("ConvergenceLimit", &Workspace::ConvergenceLimit);
    visit("ParmsAccuracy", &Workspace::ParmsAccuracy);
    visit("ConfidenceLevel", &Workspace::ConfidenceLevel);
    visit("ConfidenceRatio", &Workspace::ConfidenceRatio);
    visit("HighCorrelation", &Workspace::HighCorrelation);
    visit("VeryHighCorrelation", &Workspace::VeryHighCorrelation);
    visit("YieldInterval", &Workspace::YieldInterval);
    visit("RunsZ", &Workspace::RunsZ);
    visit("HighCount", &Workspace::HighCount);
    visit("VeryHighCount", &Workspace::VeryHighCount);
    visit("Outcome", &Workspace::Outcome);
    visit("ScanFile", &Workspace::ScanFile);
    visit("BaselineFile", &Workspace::BaselineFile);
    visit("ScanDirectory", &Workspace::ScanDirectory);
    visit("BaselineDirectory", &Workspace::BaselineDirectory);
    visit("ScanComment", &Workspace::ScanComment);
    visit("ScanTemperature", &Workspace::ScanTemperature);
    visit("ScanRPM", &Workspace::ScanRPM);
    visit("ScanOmega2t", &Workspace::ScanOmega2t);
    visit("ScanWavelength", &Workspace::ScanWavelength);
    visit("ScanTime", &Workspace::ScanTime);
    visit("ScansAveraged", &Workspace::ScansAveraged);
    visit("ScanPoints", &Workspace::ScanPoints);
    visit("FitRange", &Workspace::FitRange);
    visit("ScanRadius", &Workspace::ScanRadius);
    visit("ScanValue", &Workspace::ScanValue);
    visit("BaselinePoints", &Workspace::BaselinePoints);
    visit("BaselineRadius", &Workspace::BaselineRadius);
    visit("BaselineValue", &Workspace::BaselineValue);
    visit("BaselineRPM", &Workspace::BaselineRPM);
    visit("BaselineShifted", &Workspace::BaselineShifted);
    visit("BaselineShift", &Workspace::BaselineShift);
    visit("CellPath", &Workspace::CellPath);
    visit("ExtinctionRatio", &Workspace::ExtinctionRatio);
    visit("CenterpieceType", &Workspace::CenterpieceType);
    visit("DataChannel", &Workspace::DataChannel);
    visit("IncludeSet", &Workspace::IncludeSet);
    visit("SetChanged", &Workspace::SetChanged);
    visit("SetParmMemory", &Workspace::SetParmMemory);
    visit("ConcConstraintA", &Workspace::ConcConstraintA);
    visit("ConcConstraintB", &Workspace::ConcConstraintB);
    visit("ConcToleranceA", &Workspace::ConcToleranceA);
    visit("ConcToleranceB", &Workspace::ConcToleranceB);
    visit("ConstraintFit", &Workspace::ConstraintFit);
    visit("OffsetLink", &Workspace::OffsetLink);
    visit("ConstraintFlags", &Workspace::ConstraintFlags);
    visit("CurrentRow", &Workspace::CurrentRow);
    visit("CurrentPage", &Workspace::CurrentPage);
    visit("HighestSet", &Workspace::HighestSet);
    visit("DataDirectory", &Workspace::DataDirectory);
    visit("BaselineDirectoryLast", &Workspace::BaselineDirectoryLast);
    visit("WorkDirectory", &Workspace::WorkDirectory);
    visit("ChosenPath", &Workspace::ChosenPath);
    visit("ChosenName", &Workspace::ChosenName);
    visit("FitFile", &Workspace::FitFile);
    visit("NumSets", &Workspace::NumSets);
    visit("NumPts", &Workspace::NumPts);
    visit("SetRow", &Workspace::SetRow);
    visit("SetOfRow", &Workspace::SetOfRow);
    visit("SetPts", &Workspace::SetPts);
    visit("SetLabel", &Workspace::SetLabel);
    visit("LabelPrefix", &Workspace::LabelPrefix);
    visit("SetSigmaScale", &Workspace::SetSigmaScale);
    visit("SetSignalScale", &Workspace::SetSignalScale);
    visit("PtX", &Workspace::PtX);
    visit("PtY", &Workspace::PtY);
    visit("PtSet", &Workspace::PtSet);
    visit("PtFit", &Workspace::PtFit);
    visit("PtResid", &Workspace::PtResid);
    visit("MassUnits", &Workspace::MassUnits);
    visit("ConcUnits", &Workspace::ConcUnits);
    visit("VbarA", &Workspace::VbarA);
    visit("VbarB", &Workspace::VbarB);
    visit("SolventDensity", &Workspace::SolventDensity);
    visit("AbsorpA", &Workspace::AbsorpA);
    visit("AbsorpB", &Workspace::AbsorpB);
    visit("ExtA", &Workspace::ExtA);
    visit("ExtB", &Workspace::ExtB);
    visit("FringeMassA", &Workspace::FringeMassA);
    visit("FringeMassB", &Workspace::FringeMassB);
    visit("RefrA", &Workspace::RefrA);
    visit("RefrB", &Workspace::RefrB);
    visit("DataChosen", &Workspace::DataChosen);
    visit("ModelChosen", &Workspace::ModelChosen);
    visit("NewData", &Workspace::NewData);
    visit("FitDone", &Workspace::FitDone);
    visit("FitValid", &Workspace::FitValid);
    visit("LimitsDone", &Workspace::LimitsDone);
    visit("AbortFit", &Workspace::AbortFit);
    visit("BoundHit", &Workspace::BoundHit);
    visit("Singular", &Workspace::Singular);
    visit("FitTitle", &Workspace::FitTitle);
    visit("XAxisTitle", &Workspace::XAxisTitle);
    visit("DataTypeName", &Workspace::DataTypeName);
    visit("InterferenceData", &Workspace::InterferenceData);
    visit("OverlayPlot", &Workspace::OverlayPlot);
    visit("SpreadResiduals", &Workspace::SpreadResiduals);
    visit("PauseBeforeFit", &Workspace::PauseBeforeFit);
    visit("FormScalingPercent", &Workspace::FormScalingPercent);
    visit("CellPathlength", &Workspace::CellPathlength);
    visit("CellType", &Workspace::CellType);
    visit("RangeLogPlot", &Workspace::RangeLogPlot);
    visit("ChannelRadii", &Workspace::ChannelRadii);
    visit("RotorExpansion", &Workspace::RotorExpansion);
    visit("NameConvention", &Workspace::NameConvention);
    visit("ReportFontSize", &Workspace::ReportFontSize);
}

// Calls visit("Name", member) for each member of w.
template <class W, class Visitor> void VisitFields(W& w, Visitor&& visit) {
    VisitMembers([&](const char* name, auto member) { visit(name, w.*member); });
}

} // namespace Quillon
