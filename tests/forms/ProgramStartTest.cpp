// The program as it is started from a terminal.

#include <QImage>

#include <sys/wait.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace Quillon {
namespace {

struct Ended {
    int Status = -1;
    std::string Out; // both streams
};

// The built program without any display, run by the shell.
Ended Start(const std::string& arguments, const std::string& environment = "") {
    const std::string command = "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM " + environment +
                                " timeout 60 \"" QUILLON_PROGRAM "\" " + arguments + " 2>&1";
    Ended end;
    std::FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) return end;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe))
        end.Out += static_cast<char>(c);
    const int status = ::pclose(pipe);
    if (WIFEXITED(status)) end.Status = WEXITSTATUS(status);
    return end;
}

TEST(ProgramStart, HelpAndVersionWereTakenForFolders) {
    const Ended help = Start("--help");
    EXPECT_EQ(help.Status, 0);
    EXPECT_TRUE(
        help.Out.starts_with("usage: quillon [FOLDER | FIT | JOB.job | GRAPH.grf | RUN.tar.gz | SCAN...]\n"))
        << help.Out;
    EXPECT_EQ(Start("-h").Out, help.Out);
    const Ended version = Start("--version");
    EXPECT_EQ(version.Status, 0);
    EXPECT_EQ(version.Out, "Quillon 4.0.0\n");
}

TEST(ProgramStart, WithoutADisplayItAborted) {
    const Ended end = Start("");
    EXPECT_EQ(end.Status, 1);
    EXPECT_TRUE(end.Out.starts_with("quillon: there is no display to open a window on (")) << end.Out;
    EXPECT_TRUE(end.Out.ends_with("). quillon-fit runs fits without one.\n")) << end.Out;
    EXPECT_EQ(end.Out.find('\n'), end.Out.size() - 1) << end.Out;
}

TEST(ProgramStart, WindowsHaveTheProgramsIcon) {
    const QImage icon(":/quillon-128.png");
    EXPECT_EQ(icon.size(), QSize(128, 128));
    EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0); // round corners
    EXPECT_EQ(icon.pixelColor(64, 12).alpha(), 255);
}

TEST(ProgramStart, AnOptionThatNobodyKnowsIsNoFolder) {
    const Ended end = Start("--hepl", "QT_QPA_PLATFORM=offscreen");
    EXPECT_EQ(end.Status, 1);
    EXPECT_TRUE(end.Out.ends_with("quillon: unknown option '--hepl', see quillon --help\n")) << end.Out;
}

} // namespace
} // namespace Quillon
