#pragma once
// The seam: everything that the program needs from the outside, as one plain record of functions.
//
// Logic calls `Host.Entry(...)` and never the system itself. Four fillings exist: the desktop's, the batch
// front end's, the scripted one of the tests and a failing one made from any other by replacing an entry
// or two. InstallPlatform checks that the required entries are there and fills the optional ones with
// harmless ones, so that no call site tests for an empty function.
//
// Texts are 8-bit and are passed on as they are. Paths use the platform's own separator; both "/" and "\"
// are understood when a path is taken apart (platform/Paths.h).

#include "platform/Printer.h"
#include "platform/RuntimeError.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Quillon {

// What a message box shows beside its text, which buttons it has, and which of them was pressed.
enum class BoxIcon { Plain, Stop, Question, Warning, Information };
enum class BoxButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class BoxAnswer { Ok, Cancel, Yes, No, WayOut };

// A message box. Default names the button that Enter presses. A box of a chain of questions has one more
// button, with the caption WayOut: Esc and closing the box press it, and it leaves this question and those
// behind it unasked.
struct BoxRequest {
    std::string Text;  // paragraphs are parted by "\n\n"
    std::string Title; // of the window
    BoxIcon Icon = BoxIcon::Plain;
    BoxButtons Buttons = BoxButtons::Ok;
    BoxAnswer Default = BoxAnswer::Ok; // with YesNo and YesNoCancel: Yes unless named otherwise
    std::string WayOut = {};           // "" for a box without that button, which never answers WayOut
    std::string YesCaption = {};       // what the buttons of Yes and No say in place of that, "&" before
    std::string NoCaption = {};        // the access key
};

// An input box: one line of text with OK and Cancel.
struct InputRequest {
    std::string Prompt;  // what is asked, above the line
    std::string Title;   // of the window
    std::string Default; // what the line holds at first, chosen as a whole
};
struct InputAnswer {
    bool Cancelled = true;
    std::string Text; // as typed; empty when cancelled
};

// The common file dialog. Filter holds "description|patterns" pairs joined by "|", patterns by ";".
struct FileRequest {
    std::string Title;       // of the window
    std::string Filter;      // "Scans|*.ra1;*.ri1|All files|*.*"
    std::string Directory;   // where the dialog starts; empty: where it was left
    std::string Name;        // the name offered
    std::string DefaultType; // extension given to a name typed without one
    bool Save = false;       // asks before an existing file is overwritten
    bool Several = false;    // several existing files may be chosen at once
};
struct FileAnswer {
    bool Cancelled = true;
    std::string Path;               // full path of the (first) file
    std::string Title;              // its bare name
    std::vector<std::string> Paths; // all chosen ones; at least Path when not cancelled
};

enum class Pointer { Standard, Hourglass };

// One thing in several forms, of which the program that pastes it takes the best that it knows. A form that
// is empty is not offered.
struct ClipboardOffer {
    std::string Text;          // 8-bit, as it is
    std::string Svg, Emf, Png; // the bytes of such a file
};

// The colour dialog. Colours are 0x00BBGGRR.
struct ColorAnswer {
    bool Cancelled = true;
    std::uint32_t Color{}; // 0 when cancelled
};

// A file that a walk over a folder or an archive meets.
struct MetFile {
    std::string Name;       // its path below the folder or in the archive, with "/" between its parts
    std::string_view Start; // its first bytes: 4096, or all of a shorter file

    // All of its bytes, which may be asked for once and during the call alone. More than 64 MB are a
    // RuntimeError, and so is a file that cannot be read to its end.
    std::function<std::string()> Whole;
};

// One that the walk leaves alone, and why: "a link", "its name leads out of the folder".
struct PassedFile {
    std::string Name; // as in MetFile
    std::string Why;  // without a full stop
};

// A date and a time of day as a clock on the wall shows them: month and day from 1, hour 0..23.
struct ClockTime {
    int Year{}, Month{}, Day{}, Hour{}, Minute{}, Second{};
};

struct Platform {
    // --- required ------------------------------------------------------------------------------------

    // Shows a message and waits for the answer. Closing the box without a button counts as WayOut or Cancel
    // where the box has one, as No with YesNo, as Ok with Ok. May serve events.
    std::function<BoxAnswer(const BoxRequest&)> MessageBoxAnswer;

    // Reads a whole file. Failure is a RuntimeError: "File not found" where certainly nothing stands under
    // the name; otherwise why it cannot be read ("Permission denied", "it is a directory", "it is larger than
    // 256 MB", "Out of memory", "Path/File access error: ...").
    std::function<std::string(const std::string& path)> ReadFile;

    // Writes a whole file so that at no moment less than the former file stands under the name: beside the
    // target, flushed, renamed over it. Failure is a RuntimeError ("Disk full", "Permission denied",
    // "Path not found", "it is a directory", "Path/File access error: ..."), and the former file is then
    // unchanged.
    std::function<void(const std::string& path, const std::string& bytes)> WriteFile;

    std::function<bool(const std::string& path)> FileExists;      // a file, not a directory
    std::function<bool(const std::string& path)> DirectoryExists; // a directory
    std::function<ClockTime()> Clock;                             // local date and time

    // The next uniform random number on [0, 1).
    std::function<float()> Uniform;

    // --- optional ------------------------------------------------------------------------------------

    // Shows a message with a check box below it, which stands as checked says and leaves what it then holds
    // there. Harmless filling: MessageBoxAnswer, with the check box as it stood.
    std::function<BoxAnswer(const BoxRequest&, const std::string& caption, bool& checked)> AskChecked;

    // Asks for one line of text. Harmless filling: cancelled.
    std::function<InputAnswer(const InputRequest&)> AskText;

    // Asks for a file. Harmless filling: cancelled.
    std::function<FileAnswer(const FileRequest&)> AskFile;

    // Starts the uniform generator afresh from the clock.
    std::function<void()> SeedUniform;

    std::function<void()> Beep;              // a short sound: what was typed or clicked cannot be taken
    std::function<void(Pointer)> SetPointer; // over all windows, until it is set again

    // Serves the event queue once. Handlers that run inside only set flags.
    std::function<void()> ServeEvents;

    // Waits until an event has come, and serves the queue; used where a command can do nothing but wait.
    std::function<void()> WaitEvent;

    // Shows the form of that name; modally: returns when it has been hidden or unloaded.
    std::function<void(const std::string& form)> ShowModal;

    // Shows it beside the others, or brings it to the front, and takes it off the screen. Both return at
    // once.
    std::function<void(const std::string& form)> ShowForm;
    std::function<void(const std::string& form)> HideForm;

    // Removes a file. A file that does not exist is no failure.
    std::function<void(const std::string& path)> RemoveFile;

    // The names in a directory that match a pattern with "*" and "?", without regard to case; sorted.
    std::function<std::vector<std::string>(const std::string& directory, const std::string& pattern)>
        ListFiles;

    // Walks over the files of a folder and all below it, by name, or over those of an archive (.tar, .tar.gz,
    // .zip, told by its content) in its order; each is opened once and nothing is written. Hands back what
    // was left alone. At most 20,000 files, and of an archive 20,000 entries and 2 GB in all: beyond that,
    // and for a place that cannot be read to its end, a RuntimeError in words. What meet throws is thrown
    // here. Harmless filling: there is nothing.
    std::function<std::vector<PassedFile>(const std::string& place,
                                          const std::function<void(const MetFile& file)>& meet)>
        WalkFiles;

    // Makes a folder where nothing stands under its name and its parent is there; a RuntimeError otherwise.
    std::function<void(const std::string& path)> MakeFolder;

    std::function<std::vector<std::string>()> FileRoots;           // where a search over all drives looks
    std::function<std::string()> WorkingDirectory;                 // at the start of the program
    std::function<std::string()> ConfigDirectory;                  // where the ini files lie
    std::function<std::string()> ProgramDirectory;                 // where the program and its help lie
    std::function<bool(const std::string& text)> SetClipboardText; // false when it could not be done
    std::function<std::string()> ClipboardText;                    // "" when it holds no text

    // Puts something on the clipboard in all its forms at once; false when it could not be done.
    std::function<bool(const ClipboardOffer& offer)> SetClipboard;

    // Asks for a colour, beginning with one. Harmless filling: cancelled.
    std::function<ColorAnswer(const std::string& title, std::uint32_t color)> AskColor;

    // Starts a program with one argument and does not wait for it; false when it cannot be started.
    std::function<bool(const std::string& program, const std::string& argument)> StartProgram;

    // True when a path is that of the program that is running, by whatever name.
    std::function<bool(const std::string& path)> IsThisProgram;

    // Keeps other copies of the program from changing a file for as long as the result lives; around a read
    // and the write that depends on it. Empty when nobody could be kept out: work goes on all the same. Not
    // to be asked for again meanwhile.
    std::function<std::shared_ptr<void>(const std::string& path)> HoldFile;

    // The same without waiting, for as long as a program runs: empty when another copy holds the file, and
    // where nobody can be kept out.
    std::function<std::shared_ptr<void>(const std::string& path)> HoldFileNow;

    // Local time at which a file was last written; unset when there is none. Harmless filling: unset.
    std::function<std::optional<ClockTime>(const std::string& path)> FileTime;

    // Where a running program keeps what must outlast its own death, of this user alone; "" for nowhere.
    std::function<std::string()> StateDirectory;

    // The character that the system writes between whole part and fraction: '.' or ','.
    std::function<char()> DecimalMark;

    // Runs piece(0) .. piece(count - 1), each once, in any order and on whatever threads, and returns when
    // all have ended. A piece works on nothing that another one changes, and finds on its thread whatever
    // filling and analysis stand there: it brings its own and leaves what it found. watch(n) is called on the
    // calling thread when n pieces have ended, and several times a second meanwhile; it may serve events.
    // What a piece throws is thrown here, once all have ended. Harmless filling: a loop in rising order.
    std::function<void(long count, const std::function<void(long number)>& piece,
                       const std::function<void(long done)>& watch)>
        RunPieces;

    // The SHA-256 of bytes (FIPS 180-4) as 64 hexadecimal digits in small letters. Harmless filling: "",
    // which stands for one that is not known.
    std::function<std::string(std::string_view bytes)> Sha256;

    // The printer. Harmless filling: there is none, and its dialogs are cancelled.
    PrinterOperations Printer;
};

// The filling in use, one for each thread. Wired once at the start of the program on its only thread, and by
// each test; a piece of work on another thread brings one that asks nobody.
inline thread_local Platform Host;

// Takes a filling into use on this thread, its missing optional entries as the harmless ones: what asks is
// cancelled, what shows or serves does nothing, what looks finds nothing, what changes something says false
// where it has an answer. A missing required entry is a wiring mistake, std::logic_error, and stops the
// program.
void InstallPlatform(Platform filling);

// Tells the user something, with OK alone, and returns when it has been read.
inline void Tell(const std::string& text, const std::string& title, BoxIcon icon) {
    Host.MessageBoxAnswer({text, title, icon, BoxButtons::Ok, BoxAnswer::Ok});
}

// The caption that the questions of a chain share.
inline constexpr const char* WayOutCaption = "No &more questions";

// Asks a Yes/No question; true on Yes. standard names the button that Enter presses; closing the box is No.
inline bool AskYesNo(const std::string& text, const std::string& title, BoxAnswer standard = BoxAnswer::Yes,
                     BoxIcon icon = BoxIcon::Question) {
    return Host.MessageBoxAnswer({text, title, icon, BoxButtons::YesNo, standard}) == BoxAnswer::Yes;
}

} // namespace Quillon
