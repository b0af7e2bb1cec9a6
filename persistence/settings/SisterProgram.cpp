#include "persistence/settings/SisterProgram.h"

#include "input/IniFile.h"
#include "persistence/settings/IniAccess.h"

namespace Quillon {

namespace {

constexpr std::size_t LongestLocation = 255;
constexpr std::size_t ShortestLocation = 6; // a drive, a separator and four characters, in the least case

std::string BelongsTo(const std::string& program) {
    return "This file is a fit from " + program + " not " + Work.ProgramNameUpper + ". ";
}

// An ini file that cannot be read knows no places.
std::string IniBytes() {
    try {
        return ReadIniFile(IniFilePath());
    } catch (const RuntimeError&) { // the reading of the settings has told it
        return "";
    }
}

// Why a path is no program other than this one; "" for one that is. Started with a file that it takes for
// another's, this one would look for that other again, and start itself without end.
std::string WhyNoOtherProgram(const std::string& place) {
    if (!Host.FileExists(place)) return place + ": " + ErrorText::FileNotFound;
    return Host.IsThisProgram(place) ? place + " is this program itself" : "";
}

// The stored place of a program; "" when there is none, or it is not there any more.
std::string StoredLocation(const std::string& program) {
    const std::string place =
        IniValue(IniBytes(), IniSection::ProgramLocations, program).substr(0, LongestLocation);
    return place.size() >= ShortestLocation && WhyNoOtherProgram(place).empty() ? place : "";
}

// A place that cannot be remembered is asked for again the next time.
void RememberLocation(const std::string& program, const std::string& place) {
    try {
        WriteIniValue(IniFilePath(), IniSection::ProgramLocations, program, place);
    } catch (const RuntimeError& error) {
        TellWriteFailure(error.Text);
    }
}

// Starts a program with the file; "" or why it did not start.
std::string Start(const std::string& place, const std::string& path) {
    return Host.StartProgram(place, path) ? "" : place + " could not be started";
}

std::string AskAndStart(const std::string& program, const std::string& path) {
    const InputAnswer answer =
        Host.AskText({BelongsTo(program) + "Please enter the full path to this program, including the "
                                           "program name and '.exe'.",
                      Work.ProgramName, ""});
    if (answer.Cancelled) return "No program was named.";
    std::string reason = WhyNoOtherProgram(answer.Text);
    if (reason.empty()) reason = Start(answer.Text, path);
    if (reason.empty()) RememberLocation(program, answer.Text);
    return reason;
}

} // namespace

bool OpenInSisterProgram(const std::string& program, const std::string& path, bool fromCommandLine) {
    if (!fromCommandLine &&
        !AskYesNo(BelongsTo(program) + "Do you want to load it into " + program + " instead?",
                  Work.ProgramName))
        return false;
    const std::string place = StoredLocation(program);
    const std::string reason = place.empty() ? AskAndStart(program, path) : Start(place, path);
    if (!reason.empty())
        Tell("Unable to start correct program to read .FIT file.\n\n" + reason, Work.ProgramName,
             BoxIcon::Warning);
    return reason.empty();
}

} // namespace Quillon
