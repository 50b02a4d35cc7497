#include "importer/FailureReason.h"

#include "standalone/znKernel/KeptLogs.h"
#include "tests/converter/ConverterTest.h"

#include <gmock/gmock.h>

using importer::failureReason;

namespace
{

/// Conversions in the temporary folder of the session. The logs that are kept lie in a folder of the test.
class FailureReasonTest : public ConverterTest
{
protected:
    FailureReasonTest() { qputenv("XDG_STATE_HOME", path(QStringLiteral("state")).toUtf8()); }
    ~FailureReasonTest() override
    {
        m_before.isNull() ? qunsetenv("XDG_STATE_HOME") : qputenv("XDG_STATE_HOME", m_before);
    }

    std::unique_ptr<znPtxConverterJob> ended(const QByteArray& script) const
    {
        auto job = std::make_unique<znPtxConverterJob>(write(QStringLiteral("part.stp"), script), m_outputDir, nullptr);
        ConversionLog(*job).run();
        return job;
    }

    QString m_outputDir = m_session.temporaryFolder();
    const QByteArray m_before = qgetenv("XDG_STATE_HOME");
};

TEST_F(FailureReasonTest, AConverterThatEndedWellWithoutOutputIsToldSo)
{
    EXPECT_EQ(failureReason(*ended("exit 0")), QStringLiteral("the converter ended well but wrote no scene file"));
}

TEST_F(FailureReasonTest, AFailureWithoutTextHasASentence)
{
    EXPECT_EQ(failureReason(*ended("exit 21")), QStringLiteral("the conversion failed"));
}

TEST_F(FailureReasonTest, TheLogThatGoesWithTheSessionIsKeptAndNamed)
{
    const auto job = ended("log Error: bad face\nexit 7");
    EXPECT_EQ(job->getErrorText(), QStringLiteral("The file is damaged. bad face"));
    EXPECT_FALSE(QFileInfo::exists(zn::kernel::keptLogsFolder()));
    const QString reason = failureReason(*job);
    const QStringList logs = QDir(zn::kernel::keptLogsFolder()).entryList(QDir::Files);
    ASSERT_EQ(logs.size(), 1);
    const QString kept = zn::kernel::keptLogsFolder() + QLatin1Char('/') + logs.first();
    EXPECT_EQ(reason, QStringLiteral("The file is damaged. bad face [log: %1]").arg(kept));
    QFile log(kept);
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_EQ(log.readAll(), QByteArray("Error: bad face\n"));
    EXPECT_TRUE(QFileInfo::exists(job->getOutputFile() + QStringLiteral(".log")));
}

TEST_F(FailureReasonTest, ALogThatStaysIsNotCopied)
{
    m_outputDir = outputFolder();
    const auto job = ended("log Error: bad face\nexit 7");
    EXPECT_EQ(failureReason(*job), job->getErrorText());
    EXPECT_TRUE(job->getErrorText().endsWith(job->getOutputFile() + QStringLiteral(".log]")));
    EXPECT_FALSE(QFileInfo::exists(zn::kernel::keptLogsFolder()));
}

} // namespace
