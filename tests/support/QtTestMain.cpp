#include <QCoreApplication>

#include <gmock/gmock.h>

/// Jobs, timers and file watchers need an application object; it needs no display.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
