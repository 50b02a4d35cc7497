#include "standalone/startup/StandaloneSession.h"

#include "host/znJobProcessing/znParallelJobManager.h"
#include "host/znUtils/znFile.h"
#include "host/znUtils/znLog.h"
#include "standalone/znJobProcessing/ProcessLimit.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <set>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

TEST(StandaloneSession, IsTheLivingOneUntilItEnds)
{
    EXPECT_EQ(zn::StandaloneSession::current(), nullptr);
    {
        zn::StandaloneSession session;
        EXPECT_EQ(zn::StandaloneSession::current(), &session);
        EXPECT_EQ(&zn::StandaloneSession::require(), &session);
        session.end();
        EXPECT_EQ(zn::StandaloneSession::current(), nullptr);
    }
    EXPECT_EQ(zn::StandaloneSession::current(), nullptr);
}

TEST(StandaloneSession, HasAnIdOfItsOwn)
{
    std::uint64_t first = 0;
    {
        first = zn::StandaloneSession().id();
    }
    EXPECT_NE(first, 0u);
    EXPECT_NE(zn::StandaloneSession().id(), first);
}

TEST(StandaloneSession, LeavesNothingAliveByItself)
{
    zn::StandaloneSession session;
    EXPECT_THAT(session.end(), IsEmpty());
    EXPECT_THAT(session.end(), IsEmpty());
}

TEST(StandaloneSession, NamesAndSweepsWhatIsLeftAlive)
{
    zn::StandaloneSession session;
    session.sceneRoot()->addChild(osg::Node::create());
    const osg::NodePtr forgotten = osg::Node::create();
    osg::setName(forgotten, "forgotten");
    forgotten.addRef();
    const std::uint32_t id = forgotten->getContainerId();
    const std::vector<osg::LivingContainer> left = session.end();
    ASSERT_EQ(left.size(), 2u);
    EXPECT_EQ(left[0].type, "Node");
    EXPECT_EQ(left[0].name, "forgotten");
    EXPECT_EQ(left[0].id, id);
    EXPECT_EQ(left[0].references, 1u);
    EXPECT_EQ(left[1].type, "Name");
    EXPECT_EQ(osg::livingContainerCount(), 0u);
}

TEST(StandaloneSession, ItsDestructionSweepsTheContainersAsWell)
{
    {
        const zn::StandaloneSession session;
        osg::Node::create().addRef();
    }
    EXPECT_EQ(osg::livingContainerCount(), 0u);
}

TEST(StandaloneSession, ItsTemporaryFolderIsPrivateAndGoesWithIt)
{
    const mode_t former = ::umask(0);
    QString folder;
    {
        const zn::StandaloneSession session;
        folder = session.temporaryFolder();
        EXPECT_TRUE(QFileInfo(folder).isDir());
        struct stat status {
        };
        ASSERT_EQ(::stat(folder.toLocal8Bit().constData(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, 0700U);
        EXPECT_EQ(status.st_uid, ::geteuid());
        EXPECT_EQ(znFile::getTmpDir(), folder.toStdString());
        EXPECT_TRUE(QDir(folder).mkpath(QStringLiteral("sub/deeper")));
        QFile inside(folder + QStringLiteral("/sub/deeper/part.osb"));
        EXPECT_TRUE(inside.open(QIODevice::WriteOnly));
    }
    ::umask(former);
    EXPECT_FALSE(QFileInfo::exists(folder));
    EXPECT_EQ(znFile::getTmpDir(), QDir::tempPath().toStdString());
}

/// Who could tell it beforehand would have made a folder of this name.
TEST(StandaloneSession, TheNameOfItsTemporaryFolderIsAnotherEachTime)
{
    std::set<QString> folders;
    for (int i = 0; i < 3; ++i)
        folders.insert(zn::StandaloneSession().temporaryFolder());
    EXPECT_EQ(folders.size(), 3u);
}

TEST(StandaloneSession, ItsLogCanBeHeardWhileItLives)
{
    std::vector<std::string> heard;
    testing::internal::CaptureStderr();
    {
        zn::StandaloneSession session;
        znLog::error("before");
        session.setLogSink([&](const char* text) { heard.emplace_back(text); });
        znLog::error("Couldn't open 'ä'!");
    }
    znLog::error("after");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "before\nafter\n");
    EXPECT_THAT(heard, ElementsAre("Couldn't open 'ä'!"));
}

TEST(StandaloneSession, ItsSettingBoundsTheProcessesFromTheNextQuestionOn)
{
    const unsigned byDefault = znJobs::defaultProcessLimit();
    {
        zn::StandaloneSession session;
        EXPECT_EQ(znParallelJobManager::the()->getMaxNumProcesses(), byDefault);
        EXPECT_FALSE(session.settings().set(QStringLiteral("processes.most"), QStringLiteral("17")));
        EXPECT_EQ(znParallelJobManager::the()->getMaxNumProcesses(), 17u);
        EXPECT_FALSE(session.settings().set(QStringLiteral("processes.most"), QStringLiteral("0")));
        EXPECT_EQ(znParallelJobManager::the()->getMaxNumProcesses(), byDefault);
        EXPECT_FALSE(session.settings().set(QStringLiteral("processes.most"), QStringLiteral("17")));
    }
    EXPECT_EQ(znParallelJobManager::the()->getMaxNumProcesses(), byDefault);
}

TEST(StandaloneSession, StartsWithNothingOfTheOneBefore)
{
    {
        zn::StandaloneSession first;
        first.sceneRoot()->addChild(osg::Node::create());
        first.select(first.sceneRoot());
        first.preferences().set("FileIO tmp path", boost::any(1), true);
        EXPECT_FALSE(first.settings().set(QStringLiteral("mesh.unit"), QStringLiteral("2")));
    }
    zn::StandaloneSession second;
    EXPECT_EQ(second.sceneRoot()->getNChildren(), 0u);
    EXPECT_FALSE(second.selectedNode());
    EXPECT_TRUE(second.preferences().get("FileIO tmp path").empty());
    EXPECT_EQ(second.settings().mesh.unit, 1.0);
}

TEST(StandaloneSessionDeathTest, ThereIsOneAtATime)
{
    const zn::StandaloneSession session;
    EXPECT_DEATH(zn::StandaloneSession(), "a second session was started while one is alive");
}

TEST(StandaloneSessionDeathTest, TheHostIsNotCalledWithoutOne)
{
    EXPECT_DEATH(zn::StandaloneSession::require(), "the host was called without a session");
}

} // namespace
