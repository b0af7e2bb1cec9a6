// The program as it is installed: into an empty root, run from there, its entries for the desktop read by the
// tools that desktops use.
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <sys/wait.h>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

// The build that is installed: programs lie in its bin/.
const fs::path Build = fs::path(QUILLON_FIT).parent_path().parent_path();
#ifdef QUILLON_DESKTOP
constexpr bool HasDesktop = true;
#else
constexpr bool HasDesktop = false;
#endif

struct Installed : testing::Test {
    Script Platform;
    fs::path Root = Platform.Directory() + "/root";
    fs::path Prefix = Root / "usr";

    // Runs a line of the shell somewhere that has nothing to do with the program; what it prints goes to
    // Said.
    std::string Said;
    int Run(const std::string& line) {
        const std::string out = Platform.Directory() + "/said";
        const int status = std::system(("cd / && { " + line + "; } >'" + out + "' 2>&1").c_str());
        Said = ReadWholeFile(out);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string At(const char* path) const { return "'" + (Prefix / path).string() + "'"; }

    void SetUp() override {
        const std::string line =
            "DESTDIR='" + Root.string() + "' cmake --install '" + Build.string() + "' --prefix /usr";
        ASSERT_EQ(Run(line), 0) << Said;
    }

    // The options that a program prints for --help.
    std::set<std::string> OptionsOf(const char* program) {
        EXPECT_EQ(Run(At(program) + " --help"), 0) << Said;
        std::set<std::string> options;
        const std::regex option("\n  (--[a-z-]+)");
        for (auto at = std::sregex_iterator(Said.begin(), Said.end(), option); at != std::sregex_iterator();
             ++at)
            options.insert((*at)[1]);
        return options;
    }

    void ExpectManPage(const char* program, const char* page) {
        const std::string text = ReadWholeFile((Prefix / page).string());
        EXPECT_EQ(text.find('@'), std::string::npos) << page; // every place is filled
        const std::set<std::string> options = OptionsOf(program);
        EXPECT_TRUE(options.contains("--help"));
        for (const std::string& option : options)
            EXPECT_NE(text.find("\n.B " + std::regex_replace(option, std::regex("-"), "\\-")),
                      std::string::npos)
                << page << " lacks " << option;
    }

    // What bash would propose for the last word.
    std::set<std::string> Completions(const std::string& words) {
        const std::string line = "PATH=" + At("bin") + ":$PATH bash -c 'source \"$1\"; COMP_WORDS=(" + words +
                                 "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _quillon_fit quillon-fit; "
                                 "printf \"%s\\n\" \"${COMPREPLY[@]}\"' - " +
                                 At("share/bash-completion/completions/quillon-fit");
        EXPECT_EQ(Run(line), 0) << Said;
        std::istringstream lines(Said);
        std::set<std::string> found;
        for (std::string each; std::getline(lines, each);)
            found.insert(each);
        return found;
    }
};

TEST_F(Installed, AnExampleIsFittedFromAnywhere) {
    const std::string fit =
        At("bin/quillon-fit") + " --quiet " + At("share/quillon/examples/monomer-dimer/monomer-dimer.job");
    ASSERT_EQ(Run(fit), 0) << Said;
    EXPECT_NE(Said.find("Ln K(1>N)"), std::string::npos) << Said;
    if (!HasDesktop) return;
    // The drawing surfaces are found below lib/, not beside the program.
    EXPECT_TRUE(fs::exists(Prefix / "lib/quillon/libquillon-surfaces.so"));
    const std::string picture = Platform.Directory() + "/fit.png";
    ASSERT_EQ(Run(fit + " --graph overlay='" + picture + "'"), 0) << Said;
    EXPECT_TRUE(ReadWholeFile(picture).starts_with("\x89PNG"));
    EXPECT_EQ(Run(At("bin/quillon") + " --version"), 0) << Said;
    EXPECT_TRUE(Said.starts_with("Quillon ")) << Said;
}

TEST_F(Installed, ExamplesAndManualAreWhole) {
    for (const char* below :
         {"examples/single-species/single-species.job", "examples/ab-complex/00010.RA1",
          "examples/interference/00020.IP1", "examples/README.md", "docs/manual/first-fit.md",
          "docs/manual/forms/Analmenu.md", "docs/pictures/graphs.png", "docs/file-formats.md"})
        EXPECT_TRUE(fs::is_regular_file(Prefix / "share/quillon" / below)) << below;
    EXPECT_FALSE(fs::exists(Prefix / "share/quillon/examples/Simulate.cpp"));
    // A link of the manual that leads to a page or picture leads to it there as well.
    const std::regex link("\\]\\(([^)#:]+)");
    for (const auto& entry : fs::recursive_directory_iterator(Prefix / "share/quillon/docs")) {
        if (entry.path().extension() != ".md") continue;
        const std::string text = ReadWholeFile(entry.path().string());
        for (auto at = std::sregex_iterator(text.begin(), text.end(), link); at != std::sregex_iterator();
             ++at)
            EXPECT_TRUE(fs::exists(entry.path().parent_path() / (*at)[1].str()))
                << entry.path() << ": " << (*at)[1];
    }
}

TEST_F(Installed, ManPagesHaveEveryOption) {
    ExpectManPage("bin/quillon-fit", "share/man/man1/quillon-fit.1");
    if (HasDesktop) ExpectManPage("bin/quillon", "share/man/man1/quillon.1");
}

TEST_F(Installed, BashCompletesOptionsKindsAndFiles) {
    EXPECT_EQ(Completions("quillon-fit --"), OptionsOf("bin/quillon-fit"));
    EXPECT_EQ(Completions("quillon-fit a.job --graph species"),
              (std::set<std::string>{"species=", "species-fraction="}));
    EXPECT_EQ(Completions("quillon-fit a.job --mass-of = f"), std::set<std::string>{"fit"});
    EXPECT_EQ(Completions("quillon-fit a.job --report-graph \"\""),
              (std::set<std::string>{"residuals", "overlay"}));
    const std::string scan = (Prefix / "share/quillon/examples/single-species/0001").string();
    EXPECT_EQ(Completions("quillon-fit " + scan), std::set<std::string>{scan + "2.RA1"});
    EXPECT_EQ(Completions("quillon-fit a.job --graph overlay = " + scan),
              std::set<std::string>{scan + "2.RA1"});
}

// The kinds stand in the completion once more: they are those of the program. Two want to know of what they
// are.
TEST_F(Installed, BashKnowsEveryKindOfGraph) {
    EXPECT_EQ(Run(At("bin/quillon-fit") + " a.job --graph none=a.svg"), 1);
    const std::string before = "is none of the kinds ";
    const std::size_t from = Said.find(before);
    ASSERT_NE(from, std::string::npos) << Said;
    const std::string list = Said.substr(from + before.size());
    const std::set<std::string> ofOne{"histogram", "approach"}; // a slot, a group
    std::set<std::string> kinds;
    const std::regex kind("([a-z-]+)(, | \\()");
    for (auto at = std::sregex_iterator(list.begin(), list.end(), kind); at != std::sregex_iterator(); ++at)
        kinds.insert((*at)[1].str() + (ofOne.contains((*at)[1].str()) ? ":" : "="));
    EXPECT_EQ(Completions("quillon-fit a.job --graph \"\""), kinds);
}

#ifdef QUILLON_DESKTOP
// What comes with the desktop program alone.
struct InstalledDesktop : Installed {};

TEST_F(InstalledDesktop, ThePackageHoldsTheSameAndNamesWhatItNeeds) {
    const std::string folder = Platform.Directory() + "/package";
    ASSERT_EQ(Run("cd '" + Build.string() + "' && cpack -G DEB -B '" + folder + "'"), 0) << Said;
    const std::string package = "'" + folder + "'/quillon_*.deb";
    ASSERT_EQ(Run("dpkg-deb -f " + package + " Package Version Depends"), 0) << Said;
    EXPECT_NE(Said.find("Package: quillon\n"), std::string::npos) << Said;
    for (const char* needed : {"libc6", "libqt6core6", "libqt6gui6", "libqt6widgets6", "libqt6printsupport6"})
        EXPECT_NE(Said.find(needed), std::string::npos) << needed << " in " << Said;
    ASSERT_EQ(Run("dpkg-deb -x " + package + " '" + folder + "/root'"), 0) << Said;
    ASSERT_EQ(Run("cd '" + Root.string() + "' && find . -type f | sort"), 0);
    const std::string installed = Said;
    ASSERT_EQ(Run("cd '" + folder + "/root' && find . -type f | sort"), 0);
    EXPECT_EQ(Said, installed);
    EXPECT_EQ(Run("'" + folder + "/root/usr/bin/quillon-fit' --quiet '" + folder +
                  "/root/usr/share/quillon/examples/single-species/single-species.job'"),
              0)
        << Said;
}

TEST_F(InstalledDesktop, DesktopEntryIsValid) {
    EXPECT_EQ(Run("desktop-file-validate " + At("share/applications/quillon.desktop")), 0) << Said;
    EXPECT_EQ(Said, ""); // no hint either
    const std::string entry = ReadWholeFile((Prefix / "share/applications/quillon.desktop").string());
    EXPECT_NE(entry.find("\nExec=quillon %F\n"), std::string::npos);
    EXPECT_NE(entry.find("\nIcon=quillon\n"), std::string::npos);
    for (const char* icon :
         {"scalable/apps/quillon.svg", "48x48/apps/quillon.png", "128x128/apps/quillon.png"})
        EXPECT_TRUE(fs::exists(Prefix / "share/icons/hicolor" / icon)) << icon;
}

TEST_F(InstalledDesktop, MetadataAreValidAndOfThisVersion) {
    const char* path = "share/metainfo/org.quillon.Quillon.metainfo.xml";
    EXPECT_EQ(Run("appstreamcli validate --no-net " + At(path)), 0) << Said;
    const std::string version = ReadWholeFile((Prefix / path).string());
    ASSERT_EQ(Run(At("bin/quillon") + " --version"), 0);
    const std::string number = Said.substr(Said.rfind(' ') + 1, Said.size() - Said.rfind(' ') - 2);
    EXPECT_NE(version.find("<release version=\"" + number + "\""), std::string::npos) << Said;
}

TEST_F(InstalledDesktop, FilesHaveTheirTypes) {
    const fs::path types = Prefix / "share/mime";
    ASSERT_EQ(Run("XDG_DATA_DIRS=" + At("share") + " update-mime-database '" + types.string() + "'"), 0)
        << Said;
    EXPECT_EQ(Said, "");
    const std::string endings = ReadWholeFile((types / "globs2").string());
    for (const char* line :
         {"50:application/x-quillon-fit:*.quil\n", "50:application/x-quillon-graph:*.grf\n",
          "40:application/x-quillon-job:*.job\n"})
        EXPECT_NE(endings.find(line), std::string::npos) << line;
    const std::string entry = ReadWholeFile((Prefix / "share/applications/quillon.desktop").string());
    EXPECT_NE(entry.find("\nMimeType=application/x-quillon-fit;application/x-quillon-graph;\n"),
              std::string::npos);
}

#endif

} // namespace
} // namespace Quillon
