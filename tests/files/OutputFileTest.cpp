#include "files/OutputFile.h"

#include "tests/support/QtPrinters.h"
#include "tests/support/SmallDisk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace
{

int syncs = 0;
int syncFailure = 0;

} // namespace

// In the place of the system's: a crash of the system is hard to test.
extern "C" int fsync(int)
{
    ++syncs;
    errno = syncFailure;
    return syncFailure == 0 ? 0 : -1;
}

namespace
{

using files::ErrorCode;
using files::Expected;
using files::OutputFile;

class OutputFileTest : public testing::Test
{
protected:
    OutputFileTest() : m_folder(QDir::tempPath() + QString::fromUtf8("/out put ä-XXXXXX")) {}

    QString path(const char* name = "out.bin") const { return m_folder.filePath(QString::fromUtf8(name)); }
    QStringList filesLeft() const
    {
        return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    void put(const char* name, const QByteArray& content) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    QByteArray contentOf(const char* name = "out.bin") const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    static void write(OutputFile& file, const QByteArray& content)
    {
        file.write(content.constData(), static_cast<std::uint64_t>(content.size()));
    }
    static QString errorOf(const QString& target)
    {
        OutputFile file(target);
        write(file, "x");
        const Expected<void> done = file.commit();
        if (done)
            return QStringLiteral("none");
        EXPECT_EQ(done.error().file, target);
        EXPECT_EQ(done.error().place, QString());
        return QString::fromLatin1(files::errorName(done.error().code)) + QLatin1Char(' ') + done.error().message;
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(OutputFileTest, TheNameAppearsWithTheWholeContent)
{
    OutputFile file(path());
    write(file, "first ");
    EXPECT_EQ(filesLeft(), QStringList(QFileInfo(OutputFile::unfinishedPath(path())).fileName()));
    write(file, "second");
    EXPECT_EQ(file.position(), 12u);
    ASSERT_TRUE(file.commit());
    EXPECT_EQ(contentOf(), "first second");
    EXPECT_EQ(filesLeft(), QStringList(QStringLiteral("out.bin")));
}

TEST_F(OutputFileTest, TheUnfinishedFileBearsTheNumberOfTheProcess)
{
    EXPECT_EQ(OutputFile::unfinishedPath(path()),
              path().remove(QStringLiteral("out.bin")) + QStringLiteral(".zn-%1-0.part").arg(::getpid()));
}

TEST_F(OutputFileTest, WithoutACommitNothingIsLeft)
{
    put("out.bin", "former");
    {
        OutputFile file(path());
        write(file, "half");
    }
    EXPECT_EQ(contentOf(), "former");
    EXPECT_EQ(filesLeft(), QStringList(QStringLiteral("out.bin")));
}

TEST_F(OutputFileTest, TwoAtATimeDoNotMeet)
{
    OutputFile one(path("one"));
    OutputFile two(path("two"));
    write(one, "1");
    write(two, "2");
    ASSERT_TRUE(one.commit());
    ASSERT_TRUE(two.commit());
    EXPECT_EQ(contentOf("one"), "1");
    EXPECT_EQ(contentOf("two"), "2");
    EXPECT_EQ(filesLeft(), QStringList({QStringLiteral("one"), QStringLiteral("two")}));
}

TEST_F(OutputFileTest, AFileOfAnotherUnderTheUnfinishedNameIsLeftAlone)
{
    const QByteArray other = QFileInfo(OutputFile::unfinishedPath(path())).fileName().toUtf8();
    put(other.constData(), "another's");
    OutputFile file(path());
    write(file, "mine");
    ASSERT_TRUE(file.commit());
    EXPECT_EQ(contentOf(), "mine");
    EXPECT_EQ(contentOf(other.constData()), "another's");
}

TEST_F(OutputFileTest, PaddingAndTheStartCanBeWrittenAfterwards)
{
    OutputFile file(path());
    write(file, "....");
    file.pad(4, '#');
    EXPECT_EQ(file.position(), 4u);
    write(file, "a");
    file.pad(4, '#');
    file.pad(256);
    EXPECT_EQ(file.position(), 256u);
    file.rewrite("head", 4);
    ASSERT_TRUE(file.commit());
    EXPECT_EQ(contentOf(), "heada###" + QByteArray(248, '\0'));
}

TEST_F(OutputFileTest, WhatCannotBeAFileIsRefused)
{
    QDir().mkpath(path("folder"));
    ASSERT_EQ(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    EXPECT_EQ(errorOf(path("folder")), QStringLiteral("CannotCreate the target is no regular file"));
    EXPECT_EQ(errorOf(path("pipe")), QStringLiteral("CannotCreate the target is no regular file"));
    EXPECT_EQ(errorOf(QString()), QStringLiteral("CannotCreate the file has no name"));
    EXPECT_EQ(errorOf(path("missing/out.bin")), QStringLiteral("CannotCreate No such file or directory"));
    EXPECT_EQ(errorOf(path(std::string(300, 'n').c_str())), QStringLiteral("CannotCreate File name too long"));
    EXPECT_EQ(filesLeft(), QStringList({QStringLiteral("folder"), QStringLiteral("pipe")}));
}

TEST_F(OutputFileTest, ALinkStaysOneAndItsFileIsReplaced)
{
    QDir().mkpath(path("far"));
    put("far/real.bin", "former");
    ASSERT_TRUE(QFile::link(path("far/real.bin"), path("link.bin")));
    EXPECT_EQ(QFileInfo(OutputFile::unfinishedPath(path("link.bin"))).path(), path("far"));
    EXPECT_EQ(errorOf(path("link.bin")), QStringLiteral("none"));
    EXPECT_TRUE(QFileInfo(path("link.bin")).isSymLink());
    EXPECT_EQ(contentOf("far/real.bin"), "x");
}

TEST_F(OutputFileTest, AReplacedFileHandsItsPermissionsOn)
{
    put("out.bin", "former");
    ASSERT_EQ(chmod(QFile::encodeName(path()).constData(), 0640), 0);
    EXPECT_EQ(errorOf(path()), QStringLiteral("none"));
    struct stat found = {};
    ASSERT_EQ(stat(QFile::encodeName(path()).constData(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0640u);
    EXPECT_EQ(contentOf(), "x");
}

/// In a child that is nobody, since root may write everywhere.
TEST_F(OutputFileTest, AFileThatMayNotBeWrittenIsNotReplaced)
{
    put("out.bin", "former");
    ASSERT_EQ(chmod(QFile::encodeName(path()).constData(), 0444), 0);
    ASSERT_EQ(chmod(QFile::encodeName(QFileInfo(path()).path()).constData(), 0777), 0);
    const auto writeAsNobody = [&] {
        if (geteuid() == 0 && setuid(65534) != 0)
            _exit(2);
        _exit(errorOf(path()) == QStringLiteral("CannotCreate the file that is there may not be written") ? 0 : 1);
    };
    EXPECT_EXIT(writeAsNobody(), testing::ExitedWithCode(0), "");
    EXPECT_EQ(contentOf(), "former");
}

TEST_F(OutputFileTest, AFullDiskIsNoticedWhileWritingAndAtTheLastByte)
{
    put("out.bin", "former");
    for (const rlim_t limit : {0u, 10u, 99'999u}) {
        const SmallDisk disk(limit);
        OutputFile file(path());
        write(file, QByteArray(100'000, 'x'));
        write(file, "more");
        const Expected<void> done = file.commit();
        ASSERT_FALSE(done) << limit;
        EXPECT_EQ(done.error().code, ErrorCode::WriteFailed);
        EXPECT_EQ(done.error().message, QStringLiteral("File too large"));
    }
    for (const rlim_t limit : {0u, 10u}) { // what fits into the buffer is refused by the flush only
        const SmallDisk disk(limit);
        OutputFile file(path());
        write(file, "more than ten bytes");
        EXPECT_TRUE(file.isSound());
        const Expected<void> done = file.commit();
        ASSERT_FALSE(done) << limit;
        EXPECT_EQ(done.error().message, QStringLiteral("File too large"));
        EXPECT_FALSE(file.isSound());
    }
    EXPECT_EQ(contentOf(), "former");
    EXPECT_EQ(filesLeft(), QStringList(QStringLiteral("out.bin")));
}

TEST_F(OutputFileTest, WhatIsToLastIsOnTheDiskBeforeItGetsItsName)
{
    put("out.bin", "former");
    syncs = 0;
    OutputFile file(path());
    write(file, "new");
    EXPECT_TRUE(file.commit());
    EXPECT_EQ(syncs, 1);
    OutputFile temporary(path());
    write(temporary, "newer");
    EXPECT_TRUE(temporary.commit(OutputFile::Lasting::No));
    EXPECT_EQ(syncs, 1);
    EXPECT_EQ(contentOf(), "newer");
}

TEST_F(OutputFileTest, ADiskThatDoesNotTakeItLeavesTheFormerFile)
{
    put("out.bin", "former");
    syncFailure = EIO;
    EXPECT_EQ(errorOf(path()), QStringLiteral("WriteFailed Input/output error"));
    syncFailure = EINVAL; // a file that is on no disk
    EXPECT_EQ(errorOf(path("other.bin")), QStringLiteral("none"));
    syncFailure = 0;
    EXPECT_EQ(contentOf(), "former");
}

TEST_F(OutputFileTest, ATargetThatBecameAFolderIsAnErrorAndNothingIsLeft)
{
    OutputFile file(path());
    write(file, "x");
    QDir().mkpath(path());
    const Expected<void> done = file.commit();
    ASSERT_FALSE(done);
    EXPECT_EQ(done.error().code, ErrorCode::CannotCreate);
    EXPECT_EQ(done.error().message, QStringLiteral("Is a directory"));
    EXPECT_EQ(filesLeft(), QStringList(QStringLiteral("out.bin")));
}

} // namespace
