#include "import/Rest.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>

#include <gtest/gtest.h>

#include <thread>

using std::chrono::milliseconds;

namespace
{

class Receiver : public QObject
{
public:
    int events = 0;

protected:
    bool event(QEvent* event) override
    {
        events += event->type() == QEvent::User ? 1 : 0;
        return QObject::event(event);
    }
};

qint64 timeOf(milliseconds rest)
{
    QElapsedTimer timer;
    timer.start();
    frame::restUntilEvents(rest);
    return timer.elapsed();
}

// What other tests left behind would end a rest.
class Rest : public testing::Test
{
protected:
    void SetUp() override
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        frame::restUntilEvents(milliseconds(0));
    }
};

} // namespace

TEST_F(Rest, LastsAsLongAsNothingHappens)
{
    EXPECT_GE(timeOf(milliseconds(50)), 50);
}

TEST_F(Rest, EndsWithAnEventThatIsPostedAndLeavesItToTheLoop)
{
    Receiver receiver;
    std::thread other([&] {
        std::this_thread::sleep_for(milliseconds(20));
        QCoreApplication::postEvent(&receiver, new QEvent(QEvent::User));
    });
    EXPECT_LT(timeOf(milliseconds(20000)), 10000);
    other.join();
    EXPECT_EQ(receiver.events, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(receiver.events, 1);
}

TEST_F(Rest, EndsWithAChildProcessAndLeavesItToTheLoop)
{
    QProcess child;
    child.start(QStringLiteral("sleep"), {QStringLiteral("0.05")});
    ASSERT_TRUE(child.waitForStarted());
    QCoreApplication::processEvents();
    EXPECT_LT(timeOf(milliseconds(20000)), 10000);
    EXPECT_EQ(child.state(), QProcess::Running);
    EXPECT_TRUE(child.waitForFinished());
}

TEST_F(Rest, EndsWithAChildProcessThoughSomethingIsNeverDelivered)
{
    QTimer always;
    always.start(0);
    timeOf(milliseconds(50));
    QProcess child;
    child.start(QStringLiteral("sleep"), {QStringLiteral("0.05")});
    ASSERT_TRUE(child.waitForStarted());
    // The extra pass for what waits already, and then the child's.
    EXPECT_LT(timeOf(milliseconds(20000)) + timeOf(milliseconds(20000)), 10000);
    EXPECT_EQ(child.state(), QProcess::Running);
    EXPECT_GE(timeOf(milliseconds(40)) + timeOf(milliseconds(40)) + timeOf(milliseconds(40)), 40);
    EXPECT_TRUE(child.waitForFinished());
}

TEST_F(Rest, EndsWithAChildProcessThatEndedBeforeIt)
{
    QTimer always;
    always.start(0);
    QProcess child;
    child.start(QStringLiteral("true"), QStringList());
    ASSERT_TRUE(child.waitForStarted());
    std::this_thread::sleep_for(milliseconds(100));
    // The child's, and the extra pass for what waits already.
    EXPECT_LT(timeOf(milliseconds(20000)) + timeOf(milliseconds(20000)), 10000);
    EXPECT_EQ(child.state(), QProcess::Running);
    EXPECT_TRUE(child.waitForFinished());
}

TEST_F(Rest, GivesWayToOnePassBehindThatOfAChildsEnd)
{
    QTimer always;
    always.start(0);
    QProcess child;
    child.start(QStringLiteral("sleep"), {QStringLiteral("0.05")});
    ASSERT_TRUE(child.waitForStarted());
    timeOf(milliseconds(20000));
    timeOf(milliseconds(20000));
    EXPECT_LT(timeOf(milliseconds(20000)), 10000);
    EXPECT_TRUE(child.waitForFinished());
}

TEST_F(Rest, WhatIsNeverDeliveredCostsTwentyPassesASecondAtMost)
{
    QTimer always;
    always.start(0);
    QElapsedTimer timer;
    timer.start();
    int passes = 0;
    for (; timer.elapsed() < 1000; ++passes)
        frame::restUntilEvents(milliseconds(50));
    EXPECT_LE(passes, 42);
    EXPECT_GE(passes, 10);
}
