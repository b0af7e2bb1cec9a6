#include "persistence/SisterProgram.h"

#include "input/IniFile.h"
#include "persistence/IniAccess.h"

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
    } catch (const RuntimeError&) {
        return "";
    }
}

// A program other than this one: started with a file that it takes for another's, this one would look for
// that other again, and start itself without end.
bool IsOtherProgram(const std::string& place) {
    return Host.FileExists(place) && !Host.IsThisProgram(place);
}

// The stored place of a program; "" when there is none, or it is not there any more.
std::string StoredLocation(const std::string& program) {
    const std::string place =
        IniValue(IniBytes(), IniSection::ProgramLocations, program).substr(0, LongestLocation);
    return place.size() >= ShortestLocation && IsOtherProgram(place) ? place : "";
}

// A place that cannot be remembered is asked for again the next time.
void RememberLocation(const std::string& program, const std::string& place) {
    try {
        WriteIniValue(IniFilePath(), IniSection::ProgramLocations, program, place);
    } catch (const RuntimeError&) {
        TellWriteFailure();
    }
}

bool AskAndStart(const std::string& program, const std::string& path) {
    const InputAnswer answer =
        Host.AskText({BelongsTo(program) + "Please enter the full path to this program, including the "
                                           "program name and '.exe'.",
                      Work.ProgramName, ""});
    if (answer.Cancelled || !IsOtherProgram(answer.Text)) return false;
    if (!Host.StartProgram(answer.Text, path)) return false;
    RememberLocation(program, answer.Text);
    return true;
}

} // namespace

bool OpenInSisterProgram(const std::string& program, const std::string& path, bool fromCommandLine) {
    if (!fromCommandLine &&
        !AskYesNo(BelongsTo(program) + "Do you want to load it into " + program + " instead?",
                  Work.ProgramName))
        return false;
    const std::string place = StoredLocation(program);
    const bool started = place.empty() ? AskAndStart(program, path) : Host.StartProgram(place, path);
    if (!started)
        Tell("Unable to start correct program to read .FIT file.", Work.ProgramName, BoxIcon::Warning);
    return started;
}

} // namespace Quillon
