#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace Quillon {

namespace fs = std::filesystem;

std::string ReadWholeFile(const std::string& path) {
    std::error_code ignored;
    if (!fs::exists(path, ignored)) RaiseError(ErrorText::FileNotFound);
    if (fs::is_directory(path, ignored)) RaiseError(ErrorText::FileAccess);
    std::ifstream in(path, std::ios::binary);
    if (!in) RaiseError(ErrorText::FileAccess);
    std::ostringstream all;
    all << in.rdbuf();
    return all.str();
}

void WriteWholeFile(const std::string& path, const std::string& bytes) {
    const std::string beside = path + ".new";
    {
        std::ofstream out(beside, std::ios::binary | std::ios::trunc);
        if (!out) RaiseError(ErrorText::PathNotFound);
        out << bytes;
        if (!out.flush()) RaiseError(ErrorText::DiskFull);
    }
    std::error_code failed;
    fs::rename(beside, path, failed);
    if (failed) RaiseError(ErrorText::FileAccess);
}

Script::Script() {
    static std::atomic<int> count{0};
    Folder = (fs::temp_directory_path() /
              ("quillon-test-" + std::to_string(::getpid()) + "-" + std::to_string(++count)))
                 .string();
    fs::create_directories(Folder);
    Former = Host;

    Platform p;
    p.MessageBoxAnswer = [this](const BoxRequest& request) {
        Asked.push_back("message: " + request.Text);
        if (Steps.empty() && TakeAll) return TakeAllAnswer;
        const Step step = Next("message", request.Text);
        if (step.HasWhole) {
            EXPECT_EQ(request.Title, step.Whole.Title);
            EXPECT_EQ(static_cast<int>(request.Icon), static_cast<int>(step.Whole.Icon));
            EXPECT_EQ(static_cast<int>(request.Buttons), static_cast<int>(step.Whole.Buttons));
            EXPECT_EQ(static_cast<int>(request.Default), static_cast<int>(step.Whole.Default));
            EXPECT_EQ(request.WayOut, step.Whole.WayOut);
            EXPECT_EQ(request.YesCaption, step.Whole.YesCaption);
            EXPECT_EQ(request.NoCaption, step.Whole.NoCaption);
        }
        return step.Box;
    };
    p.AskChecked = [](const BoxRequest& request, const std::string&, bool&) {
        return Host.MessageBoxAnswer(request); // whatever a test has put there by then
    };
    p.AskText = [this](const InputRequest& request) {
        Asked.push_back("input: " + request.Prompt);
        return Next("input", request.Prompt).Input;
    };
    p.AskFile = [this](const FileRequest& request) {
        Asked.push_back("file: " + request.Title);
        return Next("file", request.Title).File;
    };
    p.ShowModal = [this](const std::string& form) {
        Asked.push_back("modal: " + form);
        const Step step = Next("modal", form);
        if (step.During) step.During();
    };
    p.ReadFile = ReadWholeFile;
    p.WriteFile = WriteWholeFile;
    p.FileExists = [](const std::string& path) {
        std::error_code e;
        return fs::exists(path, e) && !fs::is_directory(path, e);
    };
    p.DirectoryExists = [](const std::string& path) {
        std::error_code e;
        return fs::is_directory(path, e);
    };
    p.RemoveFile = [](const std::string& path) {
        std::error_code e;
        fs::remove(path, e);
    };
    p.ListFiles = [](const std::string& directory, const std::string&) {
        std::vector<std::string> names;
        std::error_code e;
        for (const auto& entry : fs::directory_iterator(directory, e))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    };
    p.Clock = [] { return ClockTime{2020, 4, 21, 12, 0, 0}; };
    p.Uniform = [this] { return UniformNumbers[NextUniform++ % UniformNumbers.size()]; };
    p.Beep = [this] { ++Beeps; };
    p.ServeEvents = [this] {
        if (DuringEvents) DuringEvents();
    };
    p.ShowForm = [this](const std::string& form) { Forms.push_back("show " + form); };
    p.HideForm = [this](const std::string& form) { Forms.push_back("hide " + form); };
    p.WorkingDirectory = [this] { return Folder; };
    p.ConfigDirectory = [this] { return Folder; };
    p.ProgramDirectory = [this] { return Folder; };
    p.SetClipboardText = [this](const std::string& text) {
        ClipboardHolds = text;
        return true;
    };
    p.ClipboardText = [this] { return ClipboardHolds; };
    p.SetClipboard = [this](const ClipboardOffer& offer) {
        ClipboardKinds = offer;
        ClipboardHolds = offer.Text;
        return true;
    };
    p.AskColor = [this](const std::string& title, std::uint32_t) {
        Asked.push_back("color: " + title);
        return Next("color", title).Color;
    };
    p.DecimalMark = [this] { return Mark; };
    InstallPlatform(p);
}

Script::~Script() {
    for (const Step& step : Steps)
        ADD_FAILURE() << "expected " << step.Kind << " was never asked: " << step.Text;
    std::error_code e;
    fs::remove_all(Folder, e);
    Host = Former;
}

Script::Step Script::Next(const std::string& kind, const std::string& text) {
    if (Steps.empty()) {
        ADD_FAILURE() << "unexpected " << kind << ": " << text;
        return {};
    }
    Step step = std::move(Steps.front());
    Steps.pop_front();
    EXPECT_EQ(kind, step.Kind) << "asked: " << text << "\nexpected: " << step.Text;
    EXPECT_EQ(text, step.Text);
    return step;
}

void Script::ExpectMessage(const std::string& text, BoxAnswer answer) {
    Step step;
    step.Kind = "message";
    step.Text = text;
    step.Box = answer;
    Steps.push_back(step);
}

void Script::ExpectMessage(const BoxRequest& whole, BoxAnswer answer) {
    ExpectMessage(whole.Text, answer);
    Steps.back().Whole = whole;
    Steps.back().HasWhole = true;
}

void Script::ExpectInput(const std::string& prompt, const std::string& answer) {
    Step step;
    step.Kind = "input";
    step.Text = prompt;
    step.Input = {false, answer};
    Steps.push_back(step);
}

void Script::ExpectInputCancelled(const std::string& prompt) {
    Step step;
    step.Kind = "input";
    step.Text = prompt;
    Steps.push_back(step);
}

void Script::ExpectFiles(const std::string& title, const std::vector<std::string>& paths) {
    Step step;
    step.Kind = "file";
    step.Text = title;
    if (!paths.empty()) step.File = {false, paths[0], fs::path(paths[0]).filename().string(), paths};
    Steps.push_back(step);
}

void Script::ExpectFile(const std::string& title, const std::string& path) {
    ExpectFiles(title, path.empty() ? std::vector<std::string>{} : std::vector<std::string>{path});
}

void Script::ExpectColor(const std::string& title, std::uint32_t color) {
    Step step;
    step.Kind = "color";
    step.Text = title;
    step.Color = {false, color};
    Steps.push_back(step);
}

void Script::ExpectModal(const std::string& form, std::function<void()> during) {
    Step step;
    step.Kind = "modal";
    step.Text = form;
    step.During = std::move(during);
    Steps.push_back(step);
}

void Script::AnswerAllMessages(BoxAnswer answer) {
    TakeAll = true;
    TakeAllAnswer = answer;
}

std::string Script::MakeFile(const std::string& name, const std::string& bytes) {
    const std::string path = (fs::path(Folder) / name).string();
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

} // namespace Quillon
