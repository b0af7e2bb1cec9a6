#pragma once
// The ways in which a user leaves a form, and forms over simulated data.

#include "commands/Analmenu.h"
#include "tests/forms/Player.h"
#include "tests/forms/Scans.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <string>

namespace Quillon {

enum class Way { Ok, Cancel, Esc, CloseButton };
inline constexpr Way AllWays[] = {Way::Ok, Way::Cancel, Way::Esc, Way::CloseButton};

inline void Leave(const std::string& form, Way way, const Control& ok, const Control& cancel) {
    SCOPED_TRACE(static_cast<int>(way));
    switch (way) {
    case Way::Ok:
        return Player::Click(ok);
    case Way::Cancel:
        return Player::Click(cancel);
    case Way::Esc:
        Player::Widget(ok)->setFocus(); // in a field Esc takes the entry back
        return Player::Press(Qt::Key_Escape);
    default:
        Player::Window(form)->close();
        Player::Serve();
    }
}

// A click into a field, and a number in place of what stands there.
inline void Enter(const Control& field, const char* text) {
    Player::Click(field);
    Player::Press(Qt::Key_A, Qt::ControlModifier);
    Player::Type(text);
    EXPECT_EQ(field.Text, text);
}

struct FormsAtTheWindows : testing::Test {
    Player player;
    FormsAtTheWindows() { UseSimulatedData(); }
    static bool HasFocus(const Control& control) {
        return QApplication::focusWidget() == Player::Widget(control);
    }
};

} // namespace Quillon
