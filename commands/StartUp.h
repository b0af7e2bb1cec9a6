#pragma once
// The start of the program, and fits that are opened by their name.

#include <functional>
#include <string>
#include <vector>

namespace Quillon {

// What an argument of the command line is meant for.
enum class ArgumentKind { Nothing, Folder, Run, Fit, Graph, Job, Scan, Missing };

// By its name where that ends in .quil, .fit, .grf or .job, or as an archive of a run does; a file of another
// name is a fit where it begins as one, and a scan otherwise. Missing: neither a file nor a folder, under a
// name that says nothing.
ArgumentKind KindOfArgument(const std::string& argument);

// Start of the program: workspace, ini files, bounds, recent files, menu. argument is the command line's
// first argument, a data directory or a saved fit, or "". A fit that is not there is told. Of a scan the
// directory becomes that of the data; it is read by OpenArguments.
void StartQuillon(const std::string& argument);

// Once the windows stand: scans go into the table of data sets, which opens with them, a graph into its
// window, the archive of a run is sorted. A job, a name that leads nowhere, and what cannot be opened beside
// the first argument are told.
void OpenArguments(const std::vector<std::string>& arguments);

// Makes the analysis that of a job file, fitted as quillon-fit fits it; false when there is none afterwards,
// which has been told. Filled by the program that reads jobs; without it a job is told how it is run.
extern std::function<bool(const std::string& path)> ReadJob;

// What is dropped on the main window: the same, and a saved fit is restored, a folder read as a run.
void OpenDropped(const std::vector<std::string>& paths);

// Asks for files and opens them as those that are dropped.
void OpenAnything();

// What "quillon --help" and "quillon --version" print, with their line ends.
std::string DesktopHelp();
std::string DesktopVersion();

// The files of the recent list: restores item 1 to 6.
void RunRecentFile(long item);

} // namespace Quillon
