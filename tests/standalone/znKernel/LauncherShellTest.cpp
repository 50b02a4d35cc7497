// Launchers that start programs, and those that join their words into a line for a shell.

#include "host/znKernel/znPtxHelper.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

#include <QProcess>

namespace
{

/// A converter that tells the words that it was given, and names of files that a shell would make something else of.
class LauncherShellTest : public SessionTest
{
protected:
    LauncherShellTest()
    {
        set("converter.Rhino.program", script("converter", "printf '[%s]' \"$@\" >\"$WORDS\""));
        set("converter.Rhino.arguments", QStringLiteral("{input} {external:--apart} {output} --to={output}"));
    }

    QString script(const char* name, const QByteArray& body)
    {
        const QString file = write(QString::fromUtf8(name), "#!/usr/bin/env bash\n" + body + "\n");
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return file;
    }
    void set(const char* name, const QString& value)
    {
        ASSERT_FALSE(m_session.settings().set(QString::fromUtf8(name), value)) << name;
    }
    void setLauncher(const QString& program)
    {
        set("converter.launcher", QLatin1Char('"') + program + QLatin1Char('"'));
    }

    /// Runs the command for the input of this name as a job does, in the test's folder.
    /// @return what the converter was given, an empty text where it never ran
    QString wordsFor(const QString& name)
    {
        const auto [command, output] =
            znPtxHelper::createProcessCommand(path(name).toStdString(), true, path(QString()).toStdString());
        m_output = QString::fromStdString(output);
        QStringList words = QProcess::splitCommand(QString::fromStdString(command));
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("WORDS"), path(QStringLiteral("words")));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(path(QString()));
        const QString program = words.takeFirst();
        process.start(program, words);
        EXPECT_TRUE(process.waitForFinished(60000));
        QFile told(path(QStringLiteral("words")));
        return told.open(QIODevice::ReadOnly) ? QString::fromUtf8(told.readAll()) : QString();
    }
    QString expectedWords(const QString& name) const
    {
        return QStringLiteral("[%1][--apart][%2][--to=%2]").arg(path(name), m_output);
    }
    bool isOwned() const { return QFile::exists(path(QStringLiteral("owned"))); }

    QString m_output;
};

const char* const Names[] = {"$(touch owned).3dm", "a;touch owned;.3dm", "a' \"b\" $HOME `touch owned`.3dm",
                             "a && touch owned & *.3dm", "-rf {output} %s \\ \n.3dm"};

TEST_F(LauncherShellTest, NamesArriveAsTheyAreWithoutALauncherAndBehindOneThatStartsPrograms)
{
    const QString env = script("env", "exec \"$@\"");
    for (const QString& launcher : {QString(), env})
        for (const char* utf8 : Names) {
            const QString name = QString::fromUtf8(utf8);
            if (!launcher.isEmpty())
                setLauncher(launcher);
            const QString words = wordsFor(name);
            EXPECT_EQ(words, expectedWords(name));
            EXPECT_FALSE(isOwned()) << utf8;
            QFile::remove(path(QStringLiteral("words")));
        }
}

/// What the pages about launchers warn of.
TEST_F(LauncherShellTest, ALauncherThatJoinsItsWordsMakesCommandsOfNames)
{
    setLauncher(script("join", "exec bash -c \"$*\""));
    wordsFor(QStringLiteral("$(touch owned).3dm"));
    EXPECT_TRUE(isOwned());
}

/// And what they advise.
TEST_F(LauncherShellTest, ALauncherThatQuotesEachWordBeforeItJoinsThemHandsNamesOnAsTheyAre)
{
    setLauncher(script("quote", "exec bash -c \"$(printf '%q ' \"$@\")\""));
    for (const char* utf8 : Names) {
        const QString name = QString::fromUtf8(utf8);
        const QString words = wordsFor(name);
        EXPECT_EQ(words, expectedWords(name));
        EXPECT_FALSE(isOwned()) << utf8;
        QFile::remove(path(QStringLiteral("words")));
    }
}

} // namespace
