// The largest fit that the table allows keeps its window alive and ends soon after Cancel. Counted in passes
// over the points and in services of the event queue: how long those take is the machine's matter.
#include "commands/Analmenu.h"
#include "fit/GNLLSQ.h"
#include "fit/forms/FitMon.h"
#include "forms/shell/Binding.h"
#include "models/SEDEQ3.h"
#include "platform/Platform.h"
#include "tests/forms/Player.h"
#include "tests/support/Simulate.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

ModelCase LargestCase() {
    ModelCase c;
    c.Name = "Largest";
    c.Model = 2;
    c.MassA = 40.0;
    c.LnK2 = std::log(3.0);
    c.Fitted = {0, 2};
    c.Noise = 0.002;
    for (int i = 0; i < 18; ++i) {
        SimulatedSet set;
        set.Rpm = 12000.0F + 500.0F * static_cast<float>(i);
        set.Points = 1490; // two more stand on either side of the range
        c.Sets.push_back(set);
    }
    return c;
}

struct LargestFit : testing::Test {
    Player player;
    LargestFit() {
        Work = SimulatedWorkspace(LargestCase());
        Work.PauseBeforeFit = FlagFalse;
        Work.DataChosen = Work.ModelChosen = FlagTrue;
        BuildParmScale();
        SetDefaultBounds();
        Work.Parms[0] *= 0.8F; // some iterations to go
        Work.Parms[2] += 1.0F;
    }
};

TEST_F(LargestFit, IsServedAtLeastEveryYieldIntervalAndCancelledWithinAPass) {
    long served = 0;
    long sinceCancel = 0;
    bool cancelled = false;
    // Without the desktop's pause between two services, which goes by the clock.
    Host.ServeEvents = [&] {
        ++served;
        if (cancelled) ++sinceCancel;
        RefreshForms();
        QApplication::processEvents();
    };
    // A click on Cancel, sent through the event queue in the midst of the second iteration.
    QTimer click;
    click.setInterval(0);
    QObject::connect(&click, &QTimer::timeout, [&] {
        if (Work.Iteration < 2 || cancelled) return;
        cancelled = true;
        Player::Click(FitMon.CancelButton);
    });
    click.start();
    player.Expect(FitMonName, [] {});
    OpenFitMonitor();
    EXPECT_FALSE(RunFit(MonitorProgress()));
    CloseFitMonitor();
    EXPECT_EQ(Work.Outcome.End, FitEnd::Cancelled);
    EXPECT_TRUE(cancelled);
    EXPECT_EQ(Work.Iteration, 2);
    const long inAPass = Work.NumPts / Work.YieldInterval;
    EXPECT_GE(served, inAPass); // one whole pass at least has been served
    EXPECT_LE(sinceCancel, inAPass);
    EXPECT_TRUE(Player::Window(AnalmenuName)->isVisible());
    Work.AbortFit = FlagFalse;
}

} // namespace
} // namespace Quillon
