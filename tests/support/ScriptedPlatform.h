#pragma once
// The seam's filling for tests: a script of expected questions and their answers.
//
// An unexpected question fails the test, and so does an answer that nobody asked for (checked when the
// script goes out of scope). Files live in the real file system below a directory of the test's own;
// clock and random numbers are fixed.

#include "platform/Platform.h"

#include <deque>
#include <string>
#include <vector>

namespace Quillon {

class Script {
public:
    Script();  // installs a filling that answers from this script
    ~Script(); // fails the test if an expected question was never asked
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    // Expectations, in the order in which the questions come. Texts are compared word for word.
    void ExpectMessage(const std::string& text, BoxAnswer answer = BoxAnswer::Ok);
    void ExpectMessage(const BoxRequest& whole, BoxAnswer answer); // title, icon, buttons and default as well
    void ExpectInput(const std::string& prompt, const std::string& answer);
    void ExpectInputCancelled(const std::string& prompt);
    void ExpectFile(const std::string& title, const std::string& path); // "" cancels
    void ExpectFiles(const std::string& title, const std::vector<std::string>& paths);
    void ExpectColor(const std::string& title, std::uint32_t color); // 0x00BBGGRR
    // Runs when the form of that name is shown modally.
    void ExpectModal(const std::string& form, std::function<void()> during);

    // Takes every message without an expectation and answers it so; for tests that are about other things.
    void AnswerAllMessages(BoxAnswer answer);

    // What has been asked so far, one line each: "message: ...", "input: ...", "file: ...", "modal: ...".
    std::vector<std::string> Asked;

    int Beeps = 0;
    std::vector<std::string> Forms; // "show X", "hide X", in order
    std::string ClipboardHolds;     // the text on it
    ClipboardOffer ClipboardKinds;  // what was put there in several forms

    // Called at each service of the event queue.
    std::function<void()> DuringEvents;

    // The numbers that Uniform hands out, round and round.
    std::vector<float> UniformNumbers = {0.5F};
    char Mark = '.';

    // A directory of this test's own, empty at first; removed with the script.
    const std::string& Directory() const { return Folder; }

    // Writes a file into that directory and gives its path.
    std::string MakeFile(const std::string& name, const std::string& bytes);

private:
    struct Step {
        std::string Kind, Text;
        BoxRequest Whole;
        bool HasWhole = false;
        BoxAnswer Box = BoxAnswer::Ok;
        InputAnswer Input;
        FileAnswer File;
        ColorAnswer Color;
        std::function<void()> During;
    };
    Step Next(const std::string& kind, const std::string& text);
    std::deque<Step> Steps;
    bool TakeAll = false;
    BoxAnswer TakeAllAnswer = BoxAnswer::Ok;
    std::size_t NextUniform = 0;
    std::string Folder;
    Platform Former;
};

// Reads and writes of the real file system, for fillings that want them.
std::string ReadWholeFile(const std::string& path);
void WriteWholeFile(const std::string& path, const std::string& bytes);

} // namespace Quillon
