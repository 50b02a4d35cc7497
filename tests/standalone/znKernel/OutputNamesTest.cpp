#include "standalone/znKernel/OutputNames.h"

#include "standalone/znKernel/ConverterCommand.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

#include <QFileInfo>
#include <QSet>

#include <cerrno>
#include <sys/wait.h>
#include <unistd.h>

using namespace zn::kernel;

namespace
{

class OutputNamesTest : public SessionTest
{
protected:
    QString take() const { return takenSceneFile(QStringLiteral("/cad/part.stp"), m_folder.path()); }
    QString named(const QString& mark) const
    {
        return path(convertedName(QStringLiteral("/cad/part.stp")) + mark + QStringLiteral(".osb"));
    }
};

TEST_F(OutputNamesTest, TheFirstHasThePlainNameAndMarksItAsTaken)
{
    EXPECT_EQ(take(), named(QString()));
    EXPECT_EQ(QFileInfo(named(QString()) + QStringLiteral(".tmp")).size(), 0);
    EXPECT_TRUE(QFileInfo::exists(named(QString()) + QStringLiteral(".tmp")));
    EXPECT_FALSE(QFileInfo::exists(named(QString())));
}

TEST_F(OutputNamesTest, VeryLongNamesLeaveRoomForMarksAndEndings)
{
    const auto nameOf = [](const QString& letter, int times) {
        return convertedName(QStringLiteral("/cad/") + letter.repeated(times) + QStringLiteral(".stp"));
    };
    EXPECT_EQ(nameOf(QStringLiteral("n"), 150).size(), 161);
    EXPECT_EQ(nameOf(QStringLiteral("n"), 251).size(), 161);
    EXPECT_NE(nameOf(QStringLiteral("n"), 250), nameOf(QStringLiteral("n"), 251)) << "the hash tells them apart";
    EXPECT_EQ(nameOf(QString::fromUtf8("壳"), 83).toUtf8().size(), 161);
    EXPECT_EQ(nameOf(QString::fromUtf8("𝄞"), 62).toUtf8().size(), 148 + 11) << "no letter is cut in two";
    const QString input = QStringLiteral("/cad/") + QStringLiteral("n").repeated(251) + QStringLiteral(".stp");
    EXPECT_TRUE(QFileInfo::exists(takenSceneFile(input, m_folder.path()) + QStringLiteral(".tmp")));
}

TEST_F(OutputNamesTest, FurtherOnesAreCountedAndEachIsDifferent)
{
    QSet<QString> names;
    for (int count = 0; count < 30; ++count)
        names.insert(take());
    EXPECT_EQ(names.size(), 30);
    EXPECT_TRUE(names.contains(named(QStringLiteral("-2"))));
    EXPECT_TRUE(names.contains(named(QStringLiteral("-9"))));
    EXPECT_FALSE(names.contains(named(QStringLiteral("-10"))));
}

TEST_F(OutputNamesTest, ANameThatIsGivenBackIsTakenAgain)
{
    take();
    take();
    QFile::remove(named(QString()) + QStringLiteral(".tmp"));
    EXPECT_EQ(take(), named(QString()));
    EXPECT_EQ(take(), named(QStringLiteral("-3")));
}

TEST_F(OutputNamesTest, ProcessesThatAskAtOnceGetNamesOfTheirOwn)
{
    constexpr int processes = 8;
    constexpr int each = 25;
    std::vector<pid_t> children;
    for (int process = 0; process < processes; ++process) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (int count = 0; count < each; ++count)
                take();
            ::_exit(0);
        }
        children.push_back(child);
    }
    for (const pid_t child : children)
        while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
        }
    const QStringList marks = QDir(m_folder.path()).entryList({QStringLiteral("*.osb.tmp")}, QDir::Files);
    EXPECT_EQ(marks.size(), processes * each);
}

TEST_F(OutputNamesTest, AFolderThatTakesNoFilesGetsThePlainName)
{
    const QString folder = path(QStringLiteral("missing"));
    EXPECT_EQ(QFileInfo(takenSceneFile(QStringLiteral("/cad/part.stp"), folder)).path(), folder);
    EXPECT_EQ(takenSceneFile(QStringLiteral("/cad/part.stp"), folder),
              takenSceneFile(QStringLiteral("/cad/part.stp"), folder));
}

TEST_F(OutputNamesTest, AnUpdatedFileHasANameOfItsOwn)
{
    const QString one = updatedFile(QStringLiteral("/cad/old.styl"), m_folder.path());
    EXPECT_TRUE(one.startsWith(path(convertedName(QStringLiteral("/cad/old.styl")) + QLatin1Char('-'))));
    EXPECT_TRUE(one.endsWith(QStringLiteral("-updated.styl")));
    EXPECT_NE(one, updatedFile(QStringLiteral("/cad/old.styl"), m_folder.path()));
}

} // namespace
