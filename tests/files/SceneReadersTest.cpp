#include "files/SceneReaders.h"

#include "files/ReadTask.h"
#include "files/SceneBuilding.h"
#include "tests/files/ReaderTest.h"

#include <gmock/gmock.h>

#include <clocale>
#include <stdexcept>
#include <sys/stat.h>

namespace
{

using SceneReadersTest = ReaderTest;
using files::ReadTask;
using files::SceneReaders;

constexpr const char* triangle = "v 0 0 1\nv 1.5 0 1\nv 0 1 1\nf 1 2 3\n";

osg::NodePtr readOneGroup(ReadTask&)
{
    return files::makeGroup({});
}

TEST_F(SceneReadersTest, TheExtensionTellsTheReaderInAnyCaseOfLetters)
{
    EXPECT_EQ(errorOf(write(QStringLiteral("a.OBJ"), triangle)), QStringLiteral("none"));
    EXPECT_EQ(errorOf(write(QStringLiteral("a.xyz"), triangle)),
              QStringLiteral("UnknownFormat a.xyz: there is no reader for files of this extension"));
    EXPECT_EQ(errorOf(write(QStringLiteral("obj"), triangle)),
              QStringLiteral("UnknownFormat obj: there is no reader for files of this extension"));
}

TEST_F(SceneReadersTest, WhatIsNoReadableFileIsNamed)
{
    EXPECT_EQ(errorOf(pathOf(QString::fromUtf8("fehlt 没有.obj"))),
              QString::fromUtf8("NotFound fehlt 没有.obj: the file does not exist"));
    QDir().mkpath(pathOf(QStringLiteral("folder.obj")));
    EXPECT_EQ(errorOf(pathOf(QStringLiteral("folder.obj"))),
              QStringLiteral("NotRegular folder.obj: this is no regular file"));
    const QString pipe = pathOf(QStringLiteral("pipe.glb"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(errorOf(pipe), QStringLiteral("NotRegular pipe.glb: this is no regular file"));
}

TEST_F(SceneReadersTest, TheRootBearsTheNameOfTheFile)
{
    ASSERT_TRUE(read(write(QString::fromUtf8("Träger 支架.v2.obj"), triangle)));
    EXPECT_EQ(nameOf(root()), "Träger 支架.v2");
}

TEST_F(SceneReadersTest, AHostAddsAReaderToItsOwnTable)
{
    SceneReaders own = zn::startup::builtInReaders();
    own.add({QStringLiteral("Own"), {QStringLiteral("own")}, readOneGroup});
    const files::ReadResult result = own.read(write(QStringLiteral("a.own"), "x"));
    EXPECT_TRUE(result);
    discard(result.value());
    EXPECT_EQ(zn::startup::builtInReaders().find(QStringLiteral("own")), nullptr);
    EXPECT_NE(own.find(QStringLiteral("obj")), nullptr);
}

TEST_F(SceneReadersTest, ALaterRowWins)
{
    SceneReaders own = zn::startup::builtInReaders();
    own.add({QStringLiteral("Own OBJ"), {QStringLiteral("obj")}, readOneGroup});
    EXPECT_EQ(own.find(QStringLiteral("obj"))->name, QStringLiteral("Own OBJ"));
    EXPECT_EQ(zn::startup::builtInReaders().find(QStringLiteral("obj"))->name, QStringLiteral("Wavefront OBJ"));
}

TEST_F(SceneReadersTest, AnExceptionOfALibraryBecomesAnError)
{
    SceneReaders own;
    own.add({QStringLiteral("Throws"), {QStringLiteral("t")}, [](ReadTask&) -> osg::NodePtr {
                 throw std::runtime_error("the library gave up");
             }});
    own.add(
        {QStringLiteral("Starves"), {QStringLiteral("s")}, [](ReadTask&) -> osg::NodePtr { throw std::bad_alloc(); }});
    const files::ReadResult thrown = own.read(QStringLiteral("a.t"));
    ASSERT_FALSE(thrown);
    EXPECT_EQ(thrown.error().toString(), QStringLiteral("a.t: the library gave up"));
    EXPECT_EQ(thrown.error().code, files::ErrorCode::Damaged);
    EXPECT_EQ(own.read(QStringLiteral("a.s")).error().code, files::ErrorCode::OutOfMemory);
}

TEST_F(SceneReadersTest, AFailedReadKeepsItsWarnings)
{
    SceneReaders own;
    own.add({QStringLiteral("Warns"), {QStringLiteral("w")}, [](ReadTask& task) -> osg::NodePtr {
                 task.warn(QStringLiteral("odd"), QStringLiteral("line 3"));
                 task.fail(files::ErrorCode::Damaged, QStringLiteral("broken"), QStringLiteral("line 4"));
             }});
    const files::ReadResult result = own.read(QStringLiteral("a.w"));
    EXPECT_EQ(result.error().toString(), QStringLiteral("a.w: broken (line 4)"));
    EXPECT_THAT(texts(result.warnings), testing::ElementsAre(QStringLiteral("odd @ line 3")));
}

TEST_F(SceneReadersTest, AfterAHundredWarningsTheRestIsCounted)
{
    SceneReaders own;
    own.add({QStringLiteral("Nags"), {QStringLiteral("n")}, [](ReadTask& task) -> osg::NodePtr {
                 for (int i = 0; i < 250; ++i)
                     task.warn(QString::number(i));
                 return files::makeGroup({});
             }});
    const files::ReadResult result = own.read(QStringLiteral("a.n"));
    ASSERT_EQ(result.warnings.size(), 101u);
    EXPECT_EQ(result.warnings.back().message, QStringLiteral("150 more warnings"));
    discard(result.value());
}

/// Sets a locale with a decimal comma, where the machine has one.
class CommaLocale
{
public:
    CommaLocale() : m_isThere(std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr) {}
    ~CommaLocale() { std::setlocale(LC_ALL, "C.UTF-8"); }
    bool isThere() const { return m_isThere; }

private:
    bool m_isThere;
};

TEST_F(SceneReadersTest, NumbersAreReadWithAPointUnderACommaLocale)
{
    const CommaLocale locale;
    if (!locale.isThere())
        GTEST_SKIP() << "the locale de_DE.UTF-8 is not there";
    ASSERT_TRUE(read(write(QStringLiteral("a.obj"), triangle)));
    EXPECT_EQ(mesh(root()->getChild(0)).positions[1], (osg::Vec3f{1.5f, 0, 1}));
}

} // namespace
