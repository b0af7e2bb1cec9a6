#pragma once
// What a user may hand to the program by its file dialogs, by dropping it or by the clipboard: files of its
// own kinds, the same ones damaged, and what is no file of it at all.

#include "platform/Platform.h"
#include "tests/support/Simulate.h"

#include <string>
#include <vector>

namespace Quillon {

class HostileFiles {
public:
    // Scans, a job, the archive of a run, folders and what is no scan, in a folder that is there.
    HostileFiles(std::string folder, NoiseSource& dice);

    // A fit and its graph; the program has been started. The analysis stays as it is.
    void AddFit();

    // The answer of a file dialog, cancelled one time in four.
    FileAnswer Choose(const FileRequest& request);

    // One file or several, whole and damaged ones, and sometimes one that is not there.
    std::vector<std::string> Some();

    // Something for the clipboard: a column of numbers, a table, a text without an end of line.
    std::string Pasted();

private:
    std::size_t Below(std::size_t n) { return static_cast<std::size_t>(Dice.Bits() % n); }
    bool Chance(std::size_t percent) { return Below(100) < percent; }
    void Add(const std::string& name, const std::string& bytes);
    std::string One();
    std::string Damaged(const std::string& path);
    std::string NameToWrite(const FileRequest& request);

    std::string Folder;
    NoiseSource& Dice;
    std::vector<std::string> Scans, Whole;
};

} // namespace Quillon
