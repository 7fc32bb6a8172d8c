#include "Base/Scheduler.h"

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

TEST(Scheduler, RunsByDueTimeAndRestartsAKey)
{
    Scheduler scheduler;
    QStringList ran;
    int owner = 0;
    scheduler.schedule(&owner, "late", 400, [&] { ran.append("late"); });
    scheduler.schedule(&owner, "debounce", 100, [&] { ran.append("old"); });
    scheduler.schedule(&owner, "debounce", 100, [&] { ran.append("new"); });
    scheduler.schedule(&ran, "debounce", 50, [&] { ran.append("other owner"); });

    EXPECT_TRUE(scheduler.drain());
    EXPECT_EQ(ran, QStringList({"other owner", "new", "late"}));
}

TEST(Scheduler, DrainReportsALoopInsteadOfHanging)
{
    Scheduler scheduler;
    int runs = 0;
    std::function<void()> again = [&] {
        ++runs;
        scheduler.schedule(&runs, "again", 0, again);
    };
    scheduler.schedule(&runs, "again", 0, again);

    EXPECT_FALSE(scheduler.drain(10));
    EXPECT_EQ(runs, 10);
    scheduler.cancelAll(&runs);
    EXPECT_TRUE(scheduler.isIdle());
}

TEST(Scheduler, AHoldKeepsWorkBack)
{
    Scheduler scheduler;
    bool ran = false;
    scheduler.schedule(&ran, "work", 0, [&] { ran = true; });
    {
        Scheduler::Hold hold(scheduler);
        EXPECT_FALSE(scheduler.drain());
        EXPECT_FALSE(ran);
    }
    EXPECT_TRUE(scheduler.drain());
    EXPECT_TRUE(ran);
}

} // namespace
