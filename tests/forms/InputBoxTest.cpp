// The box that asks for one line of text.
#include "forms/shell/DesktopPlatform.h"
#include "platform/Platform.h"

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QTimer>

#include <gtest/gtest.h>

namespace Quillon {
namespace {

const std::string LongPrompt = "New number of data points processed between system yields?  Higher numbers "
                               "make fitting slightly faster, "
                               "but reduce overall system responsiveness.  Minimum value is 50.";

// Asks while answer plays the user on the box.
InputAnswer AskWhile(const std::function<void(QInputDialog&)>& answer) {
    InstallDesktopPlatform();
    bool came = false;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
        came = box != nullptr;
        if (box) answer(*box);
    });
    const InputAnswer given = Host.AskText({LongPrompt, "Quillon", "200"});
    EXPECT_TRUE(came);
    return given;
}

TEST(InputBox, ALongPromptIsWrappedAndWholeOnTheScreen) {
    const InputAnswer given = AskWhile([](QInputDialog& box) {
        const QRect screen = box.screen()->availableGeometry();
        EXPECT_LT(box.width(), screen.width());
        EXPECT_LT(box.height(), screen.height());
        const auto* prompt = box.findChild<QLabel*>();
        ASSERT_NE(prompt, nullptr);
        EXPECT_EQ(prompt->text().toStdString(), LongPrompt);
        EXPECT_GE(prompt->height(), 2 * prompt->fontMetrics().height());
        EXPECT_EQ(box.windowTitle(), "Quillon");
        EXPECT_EQ(box.textValue(), "200");
        box.findChild<QLineEdit*>()->setText(QString::fromLatin1("50 \xE4"));
        box.accept();
    });
    EXPECT_FALSE(given.Cancelled);
    EXPECT_EQ(given.Text, "50 \xE4");
}

TEST(InputBox, AClosedBoxIsACancelledOne) {
    const InputAnswer given = AskWhile([](QInputDialog& box) { box.close(); });
    EXPECT_TRUE(given.Cancelled);
    EXPECT_EQ(given.Text, "");
}

} // namespace
} // namespace Quillon
