// Taking a filling of the seam into use: what must be there, what is filled in, what stays.
#include "platform/Platform.h"

#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace Quillon {
namespace {

// The filling in use before a test stands again after it.
class Restore {
public:
    Restore() : Former(Host) {}
    ~Restore() { Host = Former; }
    Restore(const Restore&) = delete;
    Restore& operator=(const Restore&) = delete;

private:
    Platform Former;
};

// The required entries and nothing else.
Platform Required() {
    Platform p;
    p.MessageBoxAnswer = [](const BoxRequest& request) { return request.Default; };
    p.ReadFile = [](const std::string&) -> std::string { RaiseError(ErrorText::FileNotFound); };
    p.WriteFile = [](const std::string&, const std::string&) { RaiseError(ErrorText::DiskFull); };
    p.FileExists = [](const std::string&) { return false; };
    p.DirectoryExists = [](const std::string&) { return false; };
    p.Clock = [] { return ClockTime{2020, 4, 21, 12, 0, 0}; };
    p.Uniform = [] { return 0.25F; };
    return p;
}

TEST(InstallPlatform, EachRequiredEntryIsMissed) {
    const Restore restore;
    InstallPlatform(Required());
    const std::function<void(Platform&)> removals[] = {
        [](Platform& p) { p.MessageBoxAnswer = nullptr; }, [](Platform& p) { p.ReadFile = nullptr; },
        [](Platform& p) { p.WriteFile = nullptr; },        [](Platform& p) { p.FileExists = nullptr; },
        [](Platform& p) { p.DirectoryExists = nullptr; },  [](Platform& p) { p.Clock = nullptr; },
        [](Platform& p) { p.Uniform = nullptr; },
    };
    int index = 0;
    for (const auto& remove : removals) {
        Platform p = Required();
        p.Uniform = [] { return 0.75F; };
        remove(p);
        EXPECT_THROW(InstallPlatform(p), std::logic_error) << "entry " << index;
        EXPECT_EQ(Host.Uniform(), 0.25F) << "a refused filling is not in use, entry " << index;
        ++index;
    }
    EXPECT_NO_THROW(InstallPlatform(Required()));
}

TEST(InstallPlatform, MissingOptionalEntriesAreHarmless) {
    const Restore restore;
    InstallPlatform(Required());
    EXPECT_TRUE(Host.AskText({"prompt", "title", "default"}).Cancelled);
    EXPECT_EQ(Host.AskText({"prompt", "title", "default"}).Text, "");
    EXPECT_TRUE(Host.AskFile({}).Cancelled);
    EXPECT_TRUE(Host.AskFile({}).Paths.empty());
    EXPECT_NO_THROW({
        Host.SeedUniform();
        Host.Beep();
        Host.SetPointer(Pointer::Hourglass);
        Host.ServeEvents();
        Host.WaitEvent();
        Host.ShowModal("Results");
        Host.ShowForm("Results");
        Host.HideForm("Results");
        Host.RemoveFile("nothing");
    });
    EXPECT_TRUE(Host.ListFiles("/", "*").empty());
    EXPECT_TRUE(Host.FileRoots().empty());
    EXPECT_EQ(Host.WorkingDirectory(), "");
    EXPECT_EQ(Host.ConfigDirectory(), "");
    EXPECT_EQ(Host.ProgramDirectory(), "");
    EXPECT_FALSE(Host.SetClipboardText("text"));
    EXPECT_EQ(Host.ClipboardText(), "");
    EXPECT_FALSE(Host.SetClipboard({"text", "", "", ""}));
    EXPECT_TRUE(Host.AskColor("title", 0).Cancelled);
    EXPECT_FALSE(Host.StartProgram("program", "argument"));
    EXPECT_EQ(Host.DecimalMark(), '.');
}

TEST(InstallPlatform, WithoutAPrinterThereIsA4AndNoJob) {
    const Restore restore;
    InstallPlatform(Required());
    const PrinterState printer = Host.Printer.Current();
    EXPECT_EQ(printer.Name, "");
    EXPECT_NEAR(printer.Page.Width * 25.4, 210.0, 0.2); // whole points
    EXPECT_NEAR(printer.Page.Height * 25.4, 297.0, 0.2);
    EXPECT_DOUBLE_EQ(printer.Page.Margin.Left * 25.4, 15.0);
    EXPECT_FALSE(Host.Printer.Choose());
    EXPECT_FALSE(Host.Printer.SetUpPage());
    EXPECT_FALSE(Host.Printer.Begin("title").has_value());
    EXPECT_EQ(PagePicture(printer.Page, "title").Width, 595 * 8);
    EXPECT_EQ(PagePicture(printer.Page, "title").Height, 842 * 8);
}

TEST(InstallPlatform, GivenEntriesStay) {
    const Restore restore;
    Platform p = Required();
    int beeps = 0;
    p.Beep = [&beeps] { ++beeps; };
    p.DecimalMark = [] { return ','; };
    p.ClipboardText = [] { return std::string("copied"); };
    p.AskText = [](const InputRequest& request) { return InputAnswer{false, request.Default}; };
    InstallPlatform(p);
    Host.Beep();
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(Host.DecimalMark(), ',');
    EXPECT_EQ(Host.ClipboardText(), "copied");
    EXPECT_EQ(Host.AskText({"prompt", "title", "0.005"}).Text, "0.005");
}

TEST(InstallPlatform, WaitingServesTheQueueWhereNothingElseIsGiven) {
    const Restore restore;
    Platform p = Required();
    int served = 0;
    int waited = 0;
    p.ServeEvents = [&served] { ++served; };
    InstallPlatform(p);
    Host.WaitEvent();
    EXPECT_EQ(served, 1);
    p.WaitEvent = [&waited] { ++waited; };
    InstallPlatform(p);
    Host.WaitEvent();
    EXPECT_EQ(waited, 1);
    EXPECT_EQ(served, 1);
}

TEST(InstallPlatform, AFailingFillingIsACopyWithAnEntryReplaced) {
    Script script;
    Platform full = Host;
    full.WriteFile = [](const std::string&, const std::string&) { RaiseError(ErrorText::DiskFull); };
    const Restore restore;
    InstallPlatform(full);
    try {
        Host.WriteFile("a", "b");
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, "Disk full");
    }
    EXPECT_EQ(Host.Clock().Year, 2020); // everything else is as it was
}

TEST(Platform, TellingHasOkAlone) {
    Script script;
    script.ExpectMessage(BoxRequest{"Text", "Title", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                         BoxAnswer::Ok);
    Tell("Text", "Title", BoxIcon::Warning);
}

TEST(Platform, AYesNoQuestionIsTrueOnYesAlone) {
    Script script;
    script.ExpectMessage(BoxRequest{"Go on?", "Title", BoxIcon::Question, BoxButtons::YesNo, BoxAnswer::Yes},
                         BoxAnswer::Yes);
    EXPECT_TRUE(AskYesNo("Go on?", "Title"));
    script.ExpectMessage(BoxRequest{"Go on?", "Title", BoxIcon::Warning, BoxButtons::YesNo, BoxAnswer::No},
                         BoxAnswer::No);
    EXPECT_FALSE(AskYesNo("Go on?", "Title", BoxAnswer::No, BoxIcon::Warning));
    script.ExpectMessage("Go on?", BoxAnswer::Cancel);
    EXPECT_FALSE(AskYesNo("Go on?", "Title"));
}

// --- the checker itself
// --------------------------------------------------------------------------------------

TEST(Script, FailsForAnUnexpectedQuestion) {
    EXPECT_NONFATAL_FAILURE(
        {
            Script script;
            Tell("Nobody expects this", "Title", BoxIcon::Plain);
        },
        "unexpected message: Nobody expects this");
}

TEST(Script, FailsForAnAnswerNobodyAskedFor) {
    EXPECT_NONFATAL_FAILURE(
        {
            Script script;
            script.ExpectMessage("This never comes");
        },
        "expected message was never asked: This never comes");
}

TEST(Script, FailsForAnotherWording) {
    EXPECT_NONFATAL_FAILURE(
        {
            Script script;
            script.ExpectMessage("File is missing");
            Tell("File is gone", "Title", BoxIcon::Plain);
        },
        "File is gone");
}

TEST(Script, PutsTheFormerFillingBack) {
    const Restore restore;
    InstallPlatform(Required());
    {
        Script script;
        EXPECT_EQ(Host.Uniform(), 0.5F);
    }
    EXPECT_EQ(Host.Uniform(), 0.25F);
}

} // namespace
} // namespace Quillon
