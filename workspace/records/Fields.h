#pragma once
// The table of the workspace's members, to walk over: compare, dump, check. Every member stands here once,
// in the order of the struct; a test counts the members of the struct against it. What each of them means,
// its unit and base, is told in workspace/records/Workspace.h; the groups are the same.
//
// A walk knows nothing of what a member is for. Which of them a saved fit has, and in which order, is a table
// of its own (persistence/codec/FitFields.h).

#include "workspace/records/Workspace.h"

namespace Quillon {

// Calls visit("Name", &Workspace::Name) for each member, in the order of the struct. visit takes pointers to
// members of any type: a generic function, or a set of overloads that has one for each type of member.
template <class Visitor> void VisitMembers(Visitor&& visit) {
    // Identity and limits.
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
    // The model and its options, those of the latest fit behind them.
    visit("Model", &Workspace::Model);
    visit("NonIdeal", &Workspace::NonIdeal);
    visit("SeparateK", &Workspace::SeparateK);
    visit("ModelName", &Workspace::ModelName);
    visit("LastModel", &Workspace::LastModel);
    visit("LastNonIdeal", &Workspace::LastNonIdeal);
    visit("LastSeparateK", &Workspace::LastSeparateK);
    // Parameters by slot: values, then what shows them, then which of them are fitted.
    visit("Parms", &Workspace::Parms);
    visit("ParmsSave", &Workspace::ParmsSave);
    visit("StartParms", &Workspace::StartParms);
    visit("ParmScale", &Workspace::ParmScale);
    visit("ParmName", &Workspace::ParmName);
    visit("ParmTitle", &Workspace::ParmTitle);
    visit("ParmFormat", &Workspace::ParmFormat);
    visit("FreeMap", &Workspace::FreeMap);
    visit("FreeIndex", &Workspace::FreeIndex);
    visit("Bounds", &Workspace::Bounds);
    visit("NumFree", &Workspace::NumFree);
    // Working arrays of the fit by free position. They are as long as the latest fit made them.
    visit("Increment", &Workspace::Increment);
    visit("Deriv", &Workspace::Deriv);
    visit("NormMatrix", &Workspace::NormMatrix);
    visit("NormVector", &Workspace::NormVector);
    visit("CorrMatrix", &Workspace::CorrMatrix);
    visit("AtBound", &Workspace::AtBound);
    visit("ParmLimits", &Workspace::ParmLimits);
    visit("LimitReason", &Workspace::LimitReason);
    visit("ConfTrace", &Workspace::ConfTrace);
    // Scalars of the fit.
    visit("SumSq", &Workspace::SumSq);
    visit("LastSumSq", &Workspace::LastSumSq);
    visit("RmsResidual", &Workspace::RmsResidual);
    visit("Alpha", &Workspace::Alpha);
    visit("Iteration", &Workspace::Iteration);
    visit("ConvergenceLimit", &Workspace::ConvergenceLimit);
    visit("ParmsAccuracy", &Workspace::ParmsAccuracy);
    visit("ConfidenceLevel", &Workspace::ConfidenceLevel);
    visit("LimitsLevel", &Workspace::LimitsLevel);
    visit("ConfidenceRatio", &Workspace::ConfidenceRatio);
    visit("HighCorrelation", &Workspace::HighCorrelation);
    visit("VeryHighCorrelation", &Workspace::VeryHighCorrelation);
    visit("YieldInterval", &Workspace::YieldInterval);
    visit("RunsZ", &Workspace::RunsZ);
    visit("HighCount", &Workspace::HighCount);
    visit("VeryHighCount", &Workspace::VeryHighCount);
    visit("Outcome", &Workspace::Outcome);
    // The table of data sets by row: first the scans, then the baselines, then what was chosen for each.
    visit("ScanFile", &Workspace::ScanFile);
    visit("BaselineFile", &Workspace::BaselineFile);
    visit("ScanDirectory", &Workspace::ScanDirectory);
    visit("BaselineDirectory", &Workspace::BaselineDirectory);
    visit("ScanSha256", &Workspace::ScanSha256);
    visit("BaselineSha256", &Workspace::BaselineSha256);
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
    visit("LeftOut", &Workspace::LeftOut);
    visit("SignalCeiling", &Workspace::SignalCeiling);
    visit("IntensityOrder", &Workspace::IntensityOrder);
    visit("Intensity", &Workspace::Intensity);
    visit("MeanOf", &Workspace::MeanOf);
    visit("MeanSpread", &Workspace::MeanSpread);
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
    visit("SetNoise", &Workspace::SetNoise);
    visit("SetChanged", &Workspace::SetChanged);
    visit("SetParmMemory", &Workspace::SetParmMemory);
    // Constraints by row.
    visit("ConcConstraintA", &Workspace::ConcConstraintA);
    visit("ConcConstraintB", &Workspace::ConcConstraintB);
    visit("ConcToleranceA", &Workspace::ConcToleranceA);
    visit("ConcToleranceB", &Workspace::ConcToleranceB);
    visit("ConstraintFit", &Workspace::ConstraintFit);
    visit("OffsetLink", &Workspace::OffsetLink);
    visit("ConcLink", &Workspace::ConcLink);
    visit("ConstraintFlags", &Workspace::ConstraintFlags);
    // What the form of the table works on, and where its dialogs start.
    visit("CurrentRow", &Workspace::CurrentRow);
    visit("CurrentPage", &Workspace::CurrentPage);
    visit("HighestSet", &Workspace::HighestSet);
    visit("DataDirectory", &Workspace::DataDirectory);
    visit("BaselineDirectoryLast", &Workspace::BaselineDirectoryLast);
    visit("WorkDirectory", &Workspace::WorkDirectory);
    visit("ChosenPath", &Workspace::ChosenPath);
    visit("ChosenName", &Workspace::ChosenName);
    visit("FitFile", &Workspace::FitFile);
    // The flat data of the fit: by set, then by point.
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
    // Units and what converts them, each for A and B.
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
    // State flags.
    visit("DataChosen", &Workspace::DataChosen);
    visit("ModelChosen", &Workspace::ModelChosen);
    visit("NewData", &Workspace::NewData);
    visit("FitDone", &Workspace::FitDone);
    visit("FitValid", &Workspace::FitValid);
    visit("LimitsDone", &Workspace::LimitsDone);
    visit("AbortFit", &Workspace::AbortFit);
    visit("BoundHit", &Workspace::BoundHit);
    visit("FunctionFailed", &Workspace::FunctionFailed);
    visit("Singular", &Workspace::Singular);
    // Texts on graphs, preferences.
    visit("FitTitle", &Workspace::FitTitle);
    visit("XAxisTitle", &Workspace::XAxisTitle);
    visit("DataTypeName", &Workspace::DataTypeName);
    visit("InterferenceData", &Workspace::InterferenceData);
    visit("OverlayPlot", &Workspace::OverlayPlot);
    visit("SpreadResiduals", &Workspace::SpreadResiduals);
    visit("PauseBeforeFit", &Workspace::PauseBeforeFit);
    visit("RescueMode", &Workspace::RescueMode);
    visit("TemperatureScale", &Workspace::TemperatureScale);
    // Program defaults that are no part of an analysis.
    visit("FormScalingPercent", &Workspace::FormScalingPercent);
    visit("CellPathlength", &Workspace::CellPathlength);
    visit("CellType", &Workspace::CellType);
    visit("RangeLogPlot", &Workspace::RangeLogPlot);
    visit("ChannelRadii", &Workspace::ChannelRadii);
    visit("RotorExpansion", &Workspace::RotorExpansion);
    visit("NameConvention", &Workspace::NameConvention);
    visit("ReportFontSize", &Workspace::ReportFontSize);
}

// Calls visit("Name", member) for each member of w, a Workspace or a const one: what visit is given may be
// changed where w may. Arrays are given as a whole, an array of two as a std::array.
template <class W, class Visitor> void VisitFields(W& w, Visitor&& visit) {
    VisitMembers([&](const char* name, auto member) { visit(name, w.*member); });
}

} // namespace Quillon
