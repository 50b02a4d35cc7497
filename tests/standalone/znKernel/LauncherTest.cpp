#include "standalone/znKernel/Launcher.h"

#include "host/znKernel/znPtxHelper.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

#include <QProcess>

namespace
{

constexpr qint64 megabyte = 1024 * 1024;

TEST(NeedsOf, AnEmptyFileTakesWhatAnyConversionTakes)
{
    EXPECT_EQ(zn::kernel::needsOf(0, {4, 0, 700, 11, 120, 7}), (zn::kernel::ProcessNeeds{1, 700, 120}));
}

TEST(NeedsOf, MemoryAndTimeGrowWithEachMegabyteAndArePartsRoundedUp)
{
    EXPECT_EQ(zn::kernel::needsOf(10 * megabyte, {4, 0, 700, 11, 120, 7}), (zn::kernel::ProcessNeeds{1, 810, 190}));
    EXPECT_EQ(zn::kernel::needsOf(1, {4, 0, 700, 11, 120, 7}), (zn::kernel::ProcessNeeds{1, 701, 121}));
}

TEST(NeedsOf, EachThirtyTwoMegabytesTakeAnotherCoreUpToTheMost)
{
    EXPECT_EQ(zn::kernel::needsOf(32 * megabyte - 1, {3, 0, 1, 0, 1, 0}).cores, 1);
    EXPECT_EQ(zn::kernel::needsOf(32 * megabyte, {3, 0, 1, 0, 1, 0}).cores, 2);
    EXPECT_EQ(zn::kernel::needsOf(500 * megabyte, {3, 0, 1, 0, 1, 0}).cores, 3);
}

TEST(NeedsOf, MemoryStaysWithinItsBound)
{
    EXPECT_EQ(zn::kernel::needsOf(10 * megabyte, {4, 800, 700, 11, 120, 7}).megabytes, 800);
    EXPECT_EQ(zn::kernel::needsOf(9 * megabyte, {4, 800, 700, 11, 120, 7}).megabytes, 799);
}

TEST(NeedsOf, AnEnormousFileStaysANumber)
{
    EXPECT_EQ(zn::kernel::needsOf(std::numeric_limits<qint64>::max(), {3, 0, 1, 60, 1, 60}),
              (zn::kernel::ProcessNeeds{3, 1000000000, 1000000000}));
}

class LauncherTest : public SessionTest
{
protected:
    void set(const char* name, const QString& value)
    {
        ASSERT_FALSE(m_session.settings().set(QString::fromUtf8(name), value)) << name;
    }

    static QStringList commandFor(const QString& input)
    {
        return QProcess::splitCommand(
            QString::fromStdString(znPtxHelper::createProcessCommand(input.toStdString(), true, "/aus Ü").first));
    }
};

TEST_F(LauncherTest, AnEmptySettingLeavesTheCommandLineAsItIs)
{
    set("converter.program", QStringLiteral("/opt/conv"));
    set("launcher.memory", QStringLiteral("77"));
    const QStringList words = commandFor(path(QStringLiteral("a.stp")));
    ASSERT_EQ(words.size(), 4) << words.join(QLatin1Char('|')).toStdString();
    EXPECT_EQ(words.mid(0, 3), QStringList({QStringLiteral("/opt/conv"), QStringLiteral("--external-parts"),
                                            path(QStringLiteral("a.stp"))}));
}

TEST_F(LauncherTest, FieldsFollowFromTheSizeOfTheInput)
{
    set("converter.program", QStringLiteral("/opt/conv"));
    set("converter.launcher",
        QStringLiteral("run -c {cores} --mem={memory}M -s {seconds} -t {minutes} {other} \"a b\""));
    set("launcher.memory", QStringLiteral("300"));
    set("launcher.memoryPerMegabyte", QStringLiteral("20"));
    set("launcher.time", QStringLiteral("90"));
    set("launcher.timePerMegabyte", QStringLiteral("15"));
    const QString file = write(QStringLiteral("größe {memory}.stp"), QByteArray(2 * int(megabyte), 'x'));
    const QStringList words = commandFor(file);
    EXPECT_EQ(words.mid(0, 10), QStringList({QStringLiteral("run"), QStringLiteral("-c"), QStringLiteral("1"),
                                             QStringLiteral("--mem=340M"), QStringLiteral("-s"), QStringLiteral("120"),
                                             QStringLiteral("-t"), QStringLiteral("2"), QStringLiteral("{other}"),
                                             QStringLiteral("a b")}));
    EXPECT_EQ(words.mid(10, 2), QStringList({QStringLiteral("/opt/conv"), QStringLiteral("--external-parts")}));
    EXPECT_EQ(words.at(words.size() - 2), file);
}

/// So that the converter's log tells what the launcher would end without a word.
TEST_F(LauncherTest, TheConverterKeepsWithinItsNeedsAndOptionsOfTheUserComeLater)
{
    set("converter.program", QStringLiteral("/opt/conv"));
    set("converter.launcher", QStringLiteral("run"));
    set("converter.options", QStringLiteral("limit.memory=9"));
    set("launcher.memory", QStringLiteral("1600"));
    set("launcher.time", QStringLiteral("400"));
    QStringList options;
    const QStringList words = commandFor(path(QStringLiteral("missing.stp")));
    for (int i = 0; i < words.size(); ++i)
        if (words[i] == QLatin1String("--set"))
            options << words.at(i + 1);
    EXPECT_EQ(options, QStringList({QStringLiteral("threads=1"), QStringLiteral("limit.memory=1500"),
                                    QStringLiteral("limit.memory-per-mb=0"), QStringLiteral("limit.time=340"),
                                    QStringLiteral("limit.time-per-mb=0"), QStringLiteral("limit.memory=9")}));
}

TEST_F(LauncherTest, ItStandsBeforeAConverterOfOneFormatAndBeforeTheUpdateTool)
{
    set("converter.launcher", QStringLiteral("run {output}"));
    set("converter.Step.program", QStringLiteral("/opt/stp"));
    set("converter.Step.arguments", QStringLiteral("{input}"));
    set("converter.updateProgram", QStringLiteral("/opt/update"));
    const QStringList words = commandFor(path(QStringLiteral("a.stp")));
    ASSERT_EQ(words.size(), 4);
    EXPECT_TRUE(words[1].startsWith(QStringLiteral("/aus Ü/a-")));
    EXPECT_EQ(words[2], QStringLiteral("/opt/stp"));
    std::string converted;
    const std::string update = znPtxHelper::createStylarConvertCommand("/a/old.styl", converted, "/aus");
    const QStringList updateWords = QProcess::splitCommand(QString::fromStdString(update));
    ASSERT_GE(updateWords.size(), 3);
    EXPECT_EQ(updateWords[0], QStringLiteral("run"));
    EXPECT_EQ(updateWords[1].toStdString(), converted);
    EXPECT_EQ(updateWords[2], QStringLiteral("/opt/update"));
}

} // namespace
