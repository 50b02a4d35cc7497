#include "ptx/conversion/TreeReading.h"

#include "files/ReadReport.h"
#include "files/ReadRequest.h"
#include "files/SceneBuilding.h"
#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Names.h"
#include "protocol/FileNames.h"
#include "ptx/box/Box.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <new>

using files::ErrorCode;
using files::ReadOptions;
using files::ReadResult;
using ptx::conversion::TreeReader;
using ptx::core::ExitCode;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

constexpr int NotLoaded = 200; ///< the reader was not asked for
constexpr int Killed = 250;

ReadResult aGroup(const QString&, const ReadOptions&)
{
    return {files::makeGroup("read"), {}};
}

/// Reads fail, as `code`, behind one warning.
TreeReader failing(ErrorCode code)
{
    return [code](const QString& path, const ReadOptions&) {
        return ReadResult(files::Error{{QStringLiteral("it is torn off"), path, QStringLiteral("line 4")}, code},
                          {{QStringLiteral("a face is missing"), path, {}}});
    };
}

/// Reads tell in warnings whether files can be opened: they run in a process that nothing else comes out of.
TreeReader opening(const QStringList& files)
{
    return [files](const QString&, const ReadOptions&) {
        std::vector<files::Note> told;
        for (const QString& file : files) {
            const int descriptor = ::open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC);
            told.push_back({descriptor < 0 ? QStringLiteral("shut") : QStringLiteral("open"), file, {}});
            ::close(descriptor);
        }
        return ReadResult(files::makeGroup("read"), told);
    };
}

/// What a host asks for, in a process of its own: of "top/in/a.stl", whose tree goes to the folder "out".
class TreeReading : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const char* folder : {"top/in", "top/beside", "out", "other"})
            QDir(m_folder.path()).mkpath(QString::fromLatin1(folder));
        for (const char* name : {"top/in/a.stl", "top/beside/b.mtl", "other/c.mtl"})
            write(QString::fromLatin1(name));
    }

    void write(const QString& name) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
        file.write("content");
    }

    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString output() const { return path(QStringLiteral("out/a.osb")); }
    QByteArray contentBeside(const char* suffix) const
    {
        QFile file(output() + QString::fromLatin1(suffix));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    files::ReadReport report() const
    {
        const auto report = files::ReadReport::fromBytes(contentBeside(protocol::NotesSuffix));
        EXPECT_TRUE(report) << "there is no whole report";
        return report.value_or(files::ReadReport());
    }

    std::vector<std::string> warnings() const
    {
        std::vector<std::string> texts;
        for (const files::Note& note : report().warnings)
            texts.push_back(note.message.toStdString());
        return texts;
    }

    std::string log() const { return contentBeside(protocol::LogSuffix).toStdString(); }

    /// The exit code of a process that serves a request with `words` by the reader that `load` gives.
    int loadAndRead(const std::function<ptx::core::Outcome<TreeReader>()>& load, const QStringList& words = {},
                    const QString& madeFile = {})
    {
        std::vector<std::string> arguments{"--read-mesh", path(QStringLiteral("top/in/a.stl")).toStdString(),
                                           (madeFile.isEmpty() ? output() : madeFile).toStdString()};
        for (const QString& word : words)
            arguments.push_back(word.toStdString());
        return codeOf(arguments, load);
    }

    int read(const TreeReader& reader, const QStringList& words = {QStringLiteral("--sandbox"), QStringLiteral("off")})
    {
        return loadAndRead([reader] { return reader; }, words);
    }

    static int codeOf(const std::vector<std::string>& arguments,
                      const std::function<ptx::core::Outcome<TreeReader>()>& load)
    {
        const pid_t child = ::fork();
        if (child == 0)
            ::_exit(static_cast<int>(ptx::conversion::readTree(arguments, load, {})));
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : Killed;
    }

    /// As `warnings`, in the box, for a request with the rule `policy`.
    std::vector<std::string> openedBy(const files::references::Policy& policy, const QStringList& names)
    {
        ReadOptions options;
        options.references = policy;
        QStringList files;
        for (const QString& name : names)
            files.append(path(name));
        EXPECT_EQ(read(opening(files), files::wordsOf(options)), 0) << log();
        return warnings();
    }

    QTemporaryDir m_folder{QDir::tempPath() + QString::fromUtf8("/zn read ä 壳 XXXXXX")};
};

/// No reader is loaded for a request that cannot be served.
ptx::core::Outcome<TreeReader> notToBeLoaded()
{
    ::_exit(NotLoaded);
}

} // namespace

TEST_F(TreeReading, TheTreeIsWrittenAndItsWarningsBesideIt)
{
    const TreeReader reader = [](const QString& path, const ReadOptions&) {
        return ReadResult(files::makeGroup("from " + QFileInfo(path).fileName().toStdString()),
                          {{QStringLiteral("a face is missing"), path, {}}});
    };
    ASSERT_EQ(read(reader), 0) << log();
    const auto tree = osg::scenefile::readSceneFile(output());
    ASSERT_TRUE(tree) << tree.error().toString().toStdString();
    const osg::RefPtr<osg::NodePtr> root(tree.value());
    EXPECT_STREQ(osg::getName(root.get()), "from a.stl");
    EXPECT_FALSE(report().error);
    EXPECT_THAT(warnings(), ElementsAre("a face is missing"));
    EXPECT_THAT(contentBeside(protocol::ProgressSuffix).toStdString(), HasSubstr("100"));
    EXPECT_THAT(QDir(path(QStringLiteral("out"))).entryList(QDir::Files),
                testing::UnorderedElementsAre(QStringLiteral("a.osb"), QStringLiteral("a.osb.log"),
                                              QStringLiteral("a.osb.notes"), QStringLiteral("a.osb.tmp")));
}

TEST_F(TreeReading, WordsBecomeOptions)
{
    ReadOptions asked;
    asked.upAxis = files::UpAxis::Y;
    asked.millimetresPerUnit = 25.4;
    asked.vrmlInMetres = true;
    asked.level = 3;
    asked.limits.maxNodes = 7;
    const TreeReader reader = [](const QString&, const ReadOptions& options) {
        std::vector<files::Note> told;
        for (const QString& word : files::wordsOf(options))
            told.push_back({word, {}, {}});
        return ReadResult(files::makeGroup({}), told);
    };
    ASSERT_EQ(read(reader, files::wordsOf(asked)), 0) << log();
    std::vector<std::string> words;
    for (const QString& word : files::wordsOf(asked))
        words.push_back(word.toStdString());
    EXPECT_THAT(warnings(), testing::ElementsAreArray(words));
}

TEST_F(TreeReading, AFailureIsReportedWithItsWarningsAndNoFileIsMade)
{
    EXPECT_EQ(read(failing(ErrorCode::Damaged)), int(ExitCode::Damaged));
    ASSERT_TRUE(report().error);
    EXPECT_EQ(report().error->code, ErrorCode::Damaged);
    EXPECT_EQ(report().error->message, QStringLiteral("it is torn off"));
    EXPECT_THAT(warnings(), ElementsAre("a face is missing"));
    EXPECT_FALSE(QFile::exists(output()));
    EXPECT_THAT(log(), HasSubstr("in/a.stl: it is torn off (line 4)"));
}

TEST_F(TreeReading, TheExitCodeTellsTheKindOfFailure)
{
    EXPECT_EQ(read(failing(ErrorCode::NotReadable)), int(ExitCode::InputUnreadable));
    EXPECT_EQ(read(failing(ErrorCode::Unsupported)), int(ExitCode::Unsupported));
    EXPECT_EQ(read(failing(ErrorCode::Empty)), int(ExitCode::NothingToImport));
    EXPECT_EQ(read(failing(ErrorCode::LimitExceeded)), int(ExitCode::MemoryLimit));
}

TEST_F(TreeReading, AReaderThatCannotBeLoadedIsAFailureBeforeTheFileIsRead)
{
    const auto load = []() -> ptx::core::Outcome<TreeReader> {
        return ptx::core::Failure{ExitCode::Unsupported, "the reader is of another build"};
    };
    EXPECT_EQ(loadAndRead(load), int(ExitCode::Unsupported));
    EXPECT_THAT(log(), HasSubstr("the reader is of another build"));
    EXPECT_FALSE(QFile::exists(output() + QString::fromLatin1(protocol::NotesSuffix)));
}

TEST_F(TreeReading, AnExceptionForMemoryIsTheEndByTheLimit)
{
    EXPECT_EQ(read([](const QString&, const ReadOptions&) -> ReadResult { throw std::bad_alloc(); }),
              int(ExitCode::MemoryLimit));
    EXPECT_FALSE(QFile::exists(output()));
}

TEST_F(TreeReading, ARequestThatCannotBeServedLoadsNoReader)
{
    EXPECT_EQ(codeOf({"--read-mesh", "a.stl"}, notToBeLoaded), int(ExitCode::WrongUse));
    for (const char* word : {"unit=0", "levle=1", "limit.time=x", "facts=1"})
        EXPECT_EQ(loadAndRead(notToBeLoaded, {QString::fromLatin1(word)}), int(ExitCode::WrongUse)) << word;
    EXPECT_THAT(QDir(path(QStringLiteral("out"))).entryList(QDir::Files), IsEmpty());
}

TEST_F(TreeReading, WhatCannotBeWrittenIsNotRead)
{
    const QString elsewhere = path(QStringLiteral("none/a.osb"));
    EXPECT_EQ(loadAndRead([] { return TreeReader(aGroup); }, {}, elsewhere), int(ExitCode::OutputFailed));
}

TEST_F(TreeReading, AnOutputThatIsAFolderIsAFailureOfTheOutput)
{
    QDir().mkpath(output());
    EXPECT_EQ(read(aGroup), int(ExitCode::OutputFailed));
    EXPECT_FALSE(report().error) << "the file itself was read";
    EXPECT_THAT(log(), HasSubstr("cannot write"));
}

TEST_F(TreeReading, AReportThatCannotBeWrittenIsAFailureOfTheOutput)
{
    QDir().mkpath(output() + QString::fromLatin1(protocol::NotesSuffix));
    EXPECT_EQ(read(aGroup), int(ExitCode::OutputFailed));
    EXPECT_FALSE(QFile::exists(output()));
}

TEST_F(TreeReading, TheRuleForNamesTellsWhatElseCanBeOpened)
{
    using files::references::Rule;
    const std::string abilities = ptx::box::abilities();
    if (!abilities.starts_with("files"))
        GTEST_SKIP() << abilities;
    const QStringList names{QStringLiteral("top/beside/b.mtl"), QStringLiteral("other/c.mtl")};
    const std::string top = path(QStringLiteral("top")).toStdString();
    EXPECT_THAT(openedBy({Rule::None, {}, {}}, names), ElementsAre("shut", "shut"));
    EXPECT_THAT(openedBy({Rule::Below, top, {}}, names), ElementsAre("open", "shut"));
    EXPECT_THAT(openedBy({Rule::Below, {}, {path(QStringLiteral("other")).toStdString()}}, names),
                ElementsAre("shut", "open"));
    EXPECT_THAT(openedBy({Rule::Parts, {}, {}}, names), ElementsAre("open", "open"));
}
