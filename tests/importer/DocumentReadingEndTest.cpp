// How reads of product structures in a child end.

#include "importer/Importer.h"
#include "importer/plmxml/DocumentReport.h"
#include "tests/importer/DocumentReadingFixture.h"
#include "tests/standalone/reading/ReaderChildren.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <iostream>

namespace
{

using files::ErrorCode;
using readerchildren::hasChildren;
using testing::HasSubstr;

class DocumentReadingEndTest : public DocumentReadingFixture
{
protected:
    void TearDown() override
    {
        EXPECT_FALSE(hasChildren());
        DocumentReadingFixture::TearDown();
    }

    /// Reads a document by a script in place of the program.
    Outcome readBy(const QByteArray& script)
    {
        return readByProgram(readerchildren::writeReader(path(QStringLiteral("reader")), script));
    }

    Outcome readByProgram(const QString& program)
    {
        return importer::readDocument(m_session, writeLarge(3), QStringLiteral("text.plmxml"), {}, program);
    }

    /// The same by a script that leaves this report, and a text.
    Outcome readReport(const QByteArray& report, const QByteArray& end = "exit 0")
    {
        return readBy("echo text > \"$3\"; cp '" + QFile::encodeName(write(QStringLiteral("report"), report)) +
                      "' \"$3.notes\"; " + end);
    }

    using Way = importer::plmxml::NormalisedDocument::Way;

    static void expectFailure(const Outcome& outcome, const char* reason)
    {
        ASSERT_FALSE(outcome);
        EXPECT_EQ(outcome.error().code, ErrorCode::ReaderFailed);
        EXPECT_THAT(outcome.error().toString().toStdString(), HasSubstr(reason));
        EXPECT_THAT(outcome.error().file.toStdString(), HasSubstr("large.plmxml"));
    }
};

TEST_F(DocumentReadingEndTest, ACrashCostsTheDocumentAndSaysSo)
{
    expectFailure(readBy("kill -SEGV $$"), "signal 11");
    expectFailure(readBy("kill -KILL $$"), "signal 9");
}

TEST_F(DocumentReadingEndTest, TheLastWordsOfTheLogAreTheReason)
{
    expectFailure(readBy("echo 'Error: it was too hot' > \"$3.log\"; exit 12"), "large.plmxml: it was too hot");
}

TEST_F(DocumentReadingEndTest, AReportThatIsNoneIsRefused)
{
    const auto report = [this] {
        importer::plmxml::NormalisedDocument document =
            importer::plmxml::normalise(writeLarge(3), importer::plmxml::NormaliserOptions());
        return QByteArray::fromStdString(reportOf(document));
    }();
    const char* const notWhole = "made of it is not whole";
    EXPECT_TRUE(readReport(report));
    expectFailure(readBy("exit 0"), notWhole);
    expectFailure(readReport(""), notWhole);
    expectFailure(readReport(report.left(report.size() / 2)), notWhole);
    expectFailure(readReport(report + "x"), notWhole);
    expectFailure(readReport("nonsense"), notWhole);
    const Outcome textless =
        readBy("cp '" + QFile::encodeName(write(QStringLiteral("report"), report)) + "' \"$3.notes\"");
    ASSERT_FALSE(textless) << "it tells of a text";
    EXPECT_EQ(textless.error().code, ErrorCode::WriteFailed);
}

TEST_F(DocumentReadingEndTest, AReportThatWouldTakeMoreThanTheMemoryIsRefused)
{
    importer::plmxml::NormalisedDocument document;
    document.way = Way::AsText;
    document.isRead = true;
    document.structure.parts.resize((std::size_t(70) << 20) / sizeof(importer::plmxml::StructurePart));
    const QByteArray report = QByteArray::fromStdString(reportOf(document));
    EXPECT_TRUE(readReport(report));
    m_session.settings().read.memory.set(64);
    expectFailure(readReport(report), "made of it is not whole");
}

TEST_F(DocumentReadingEndTest, AReportOfAProgramThatFailedIsNotBelieved)
{
    const QByteArray report = QByteArray::fromStdString(importer::plmxml::reportOf({}));
    EXPECT_TRUE(readReport(report));
    expectFailure(readReport(report, "kill -ABRT $$"), "signal 6");
}

TEST_F(DocumentReadingEndTest, AfterACancelNoReadBegins)
{
    zn::reading::setCancelled(m_session, true);
    const Outcome outcome = readBy("touch '" + QFile::encodeName(path(QStringLiteral("ran"))) + "'");
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().code, ErrorCode::Cancelled);
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("ran"))));
}

TEST_F(DocumentReadingEndTest, AProgramThatCannotBeStartedIsNamed)
{
    expectFailure(readByProgram(path(QStringLiteral("no program"))), "no program cannot be started");
}

TEST_F(DocumentReadingEndTest, WithoutTheProgramThisProcessReadsAndTheLogTellsOnce)
{
    EXPECT_TRUE(readByProgram({}));
    EXPECT_TRUE(readByProgram({}));
    EXPECT_THAT(m_log, testing::ElementsAre("ptxconvert is not installed: files are read by this process"));
}

TEST_F(DocumentReadingEndTest, TheSettingReadsInThisProcess)
{
    m_session.settings().files.reading.set(Reading::Process);
    EXPECT_TRUE(readBy("kill -SEGV $$"));
    EXPECT_TRUE(m_log.empty());
}

TEST_F(DocumentReadingEndTest, LimitsOfTheConverterEndARead)
{
    m_session.settings().set(QStringLiteral("converter.options"),
                             QStringLiteral("limit.memory=8 limit.memory-per-mb=0 threads=1"));
    const Outcome outcome = read(writeLarge(300'000));
    expectFailure(outcome, "more memory than its limit of 8 MB");
}

TEST_F(DocumentReadingEndTest, ACancelEndsTheReadAtOnceAndLeavesNothing)
{
    const QString file = writeLarge(500'000);
    QElapsedTimer sinceCancel;
    bool wasReading = false;
    QTimer::singleShot(150, [&] {
        wasReading = !readFolders().isEmpty() && hasChildren();
        sinceCancel.start();
        zn::reading::setCancelled(m_session, true);
    });
    const Outcome outcome = read(file);
    EXPECT_LT(sinceCancel.elapsed(), 100);
    EXPECT_TRUE(wasReading);
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().code, ErrorCode::Cancelled);
    EXPECT_EQ(readFolders(), QStringList());
    EXPECT_FALSE(hasChildren());
    zn::reading::setCancelled(m_session, false);
    EXPECT_TRUE(readByProgram(zn::reading::installedReader()));
}

TEST_F(DocumentReadingEndTest, TheImporterCancelsARead)
{
    zn::Importer importer(m_session);
    zn::ImportResult result;
    QElapsedTimer sinceCancel;
    QEventLoop loop;
    QObject::connect(&importer, &zn::Importer::finished, &loop, [&](const zn::ImportResult& end) {
        result = end;
        loop.quit();
    });
    const QString file = writeLarge(500'000);
    importer.import({file});
    EXPECT_FALSE(hasChildren()) << "the caller has not come to its loop";
    bool wasReading = false;
    QTimer::singleShot(150, [&] {
        wasReading = hasChildren();
        sinceCancel.start();
        importer.cancel();
    });
    loop.exec();
    EXPECT_LT(sinceCancel.elapsed(), 150);
    EXPECT_TRUE(wasReading);
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(result.state, znCADFileTypes::JobFailed);
    EXPECT_FALSE(result.node);
}

TEST_F(DocumentReadingEndTest, ASmallDocumentCostsLittleMore)
{
    const QString file = writeLarge(3);
    const auto least = [&](Reading reading) {
        m_session.settings().files.reading.set(reading);
        return readerchildren::leastTime([&] { EXPECT_TRUE(read(file)); });
    };
    m_session.settings().converter.server.set(false); // the price of a start
    const double here = least(Reading::Process);
    const double there = least(Reading::Child);
    std::cout << here << " ms of processor time here, " << there << " ms in a child\n";
#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_LT(there - here, 30);
#endif
}

} // namespace
