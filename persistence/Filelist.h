#pragma once
// What outlives a run of the program: saved fits, settings, and the list of the fits saved or restored last.
//
// A saved fit is one binary file with the whole analysis in it. FitFile.h has the commands "save" and
// "restore" and, beneath them, pure functions between bytes and workspace; the layout of the file is written
// down once, in FitFields.h, and walked by the streams of FitStreams.h in either direction. FitCheck.h says
// what an analysis from a file must satisfy before it becomes the present one. A file of another program of
// the family is handed over to that program by SisterProgram.h. Settings are read at the start and saved on
// request, one question at a time: Defaults.h. They share one ini file with the recent files, which this
// header keeps: IniAccess.h says where it lies.
//
// This header is the face of the folder: it brings the other two that are used from outside.

#include "persistence/Defaults.h"
#include "persistence/FitFile.h"
#include "platform/Arrays.h"

#include <string>

namespace Quillon {

inline constexpr long MaxRecentFiles = 6;
inline constexpr std::size_t RecentCaptionLength = 128;

// An item of the File menu's list.
struct RecentItem {
    std::string Caption; // the path as the menu shows it, at most 128 characters
    std::string Path;    // the whole path
    bool Visible = false;
};

// The menu item array: item 0 is the separator above the list, items 1 to 6 are files, the latest first.
extern ZeroBased<RecentItem> mnuRecentFile;

// Reads the list. Without an ini file it is empty.
void LoadRecentFiles();

// Puts a file first, unless the menu has it first. A list of six that gains a new file loses its last one.
// What another running copy of the program has listed meanwhile stays in the list. When the list cannot be
// written the user is told, and the menu still shows it until the end of the run.
void AddRecentFile(const std::string& path);

// Takes item 1 to 6 off the list; the later ones move up.
void RemoveRecentFile(long item);

// Restores the fit of an item. A file that has gone is told, and its item removed.
RestoreOutcome ChooseRecentFile(long item);

} // namespace Quillon
