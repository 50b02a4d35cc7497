#include "standalone/loading/SceneFilePolicy.h"

#include "files/SceneReaders.h"
#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/znJobProcessing/znOsbLoaderJob.h"
#include "host/znKernel/znFileIO.h"
#include "scene/Mesh.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

namespace
{

using Files = zn::FileSettings::MappedFiles;

class SceneFilePolicyTest : public SessionTest
{
protected:
    /// A scene file with so many triangles of an OBJ file, read from there.
    QString writeScene(const QString& scenePath, int triangles = 1000)
    {
        QByteArray text;
        for (int i = 0; i < triangles; ++i)
            text += "v 0 0 " + QByteArray::number(i) + "\nv 2 0 " + QByteArray::number(i) + "\nv 0 3 " +
                    QByteArray::number(i) + "\nf -3 -2 -1\n";
        const osg::RefPtr<osg::NodePtr> root(
            m_session.state<files::SceneReaders>().read(write(QStringLiteral("t.obj"), text), {}).value());
        EXPECT_TRUE(osg::scenefile::writeSceneFile(root.get(), scenePath));
        return scenePath;
    }

    QString ownPath() const { return m_session.temporaryFolder() + QStringLiteral("/own.osb"); }

    static bool isInMaps(const QString& file)
    {
        QFile maps(QStringLiteral("/proc/self/maps"));
        EXPECT_TRUE(maps.open(QIODevice::ReadOnly));
        return maps.readAll().contains(QFile::encodeName(file));
    }

    static osg::Vec3f secondVertex(osg::NodePtr node)
    {
        while (node && node->getNChildren() > 0)
            node = node->getChild(0);
        const auto core = node ? osg::fcCast<osg::Geometry>(node->getCore()) : osg::GeometryPtr();
        return core ? osg::GeometryAccess::mesh(*core).positions[1] : osg::Vec3f{};
    }

    /// Whether the file of a scene that is loaded by `znFileIO` is mapped.
    bool isMappedByLoad(const QString& file)
    {
        const osg::NodePtr parent = addGroup(m_session.sceneRoot(), "parent");
        EXPECT_EQ(znFileIO::load({file}, parent, false, false, false), znFileIO::LoadedFully);
        return isInMaps(file);
    }
};

TEST_F(SceneFilePolicyTest, AFileOfStrangersThatIsCutShortWhileItIsOpenDoesNoHarm)
{
    const QString file = writeScene(path(QStringLiteral("strange.osb")));
    EXPECT_FALSE(isMappedByLoad(file));
    ASSERT_TRUE(QFile::resize(file, 0));
    EXPECT_EQ(secondVertex(m_session.sceneRoot()), (osg::Vec3f{2, 0, 0}));
}

TEST_F(SceneFilePolicyTest, AJobReadsAFileOfStrangersIntoMemoryToo)
{
    const QString file = writeScene(path(QStringLiteral("strange.osb")));
    znOsbLoaderJob job(file);
    job.run();
    ASSERT_TRUE(job.getLoadedNode());
    EXPECT_FALSE(isInMaps(file));
    ASSERT_TRUE(QFile::resize(file, 0));
    EXPECT_EQ(secondVertex(job.getLoadedNode()), (osg::Vec3f{2, 0, 0}));
}

TEST_F(SceneFilePolicyTest, FilesInTheFolderOfTheSessionAreMapped)
{
    EXPECT_TRUE(isMappedByLoad(writeScene(ownPath())));
    znOsbLoaderJob job(writeScene(m_session.temporaryFolder() + QStringLiteral("/job.osb")));
    job.run();
    EXPECT_TRUE(isInMaps(QStringLiteral("/job.osb")));
}

TEST_F(SceneFilePolicyTest, SmallFilesAreReadWhereverTheyLie)
{
    EXPECT_FALSE(isMappedByLoad(writeScene(ownPath(), 1)));
    m_session.settings().files.map.set(Files::All);
    EXPECT_FALSE(isMappedByLoad(writeScene(path(QStringLiteral("strange.osb")), 1)));
}

TEST_F(SceneFilePolicyTest, ALinkInTheFolderOfTheSessionIsTheFileThatItLeadsTo)
{
    const QString file = writeScene(path(QStringLiteral("strange.osb")));
    ASSERT_TRUE(QFile::link(file, ownPath()));
    EXPECT_FALSE(zn::loading::isMapped(&m_session, ownPath()));
}

TEST_F(SceneFilePolicyTest, TheSettingMapsAllOrNone)
{
    m_session.settings().files.map.set(Files::All);
    EXPECT_TRUE(isMappedByLoad(writeScene(path(QStringLiteral("strange.osb")))));
    m_session.settings().files.map.set(Files::None);
    EXPECT_FALSE(isMappedByLoad(writeScene(ownPath())));
    EXPECT_FALSE(zn::loading::isMapped(nullptr, ownPath()));
}

TEST_F(SceneFilePolicyTest, ACopyIsHeldAgainstMemoryAndAMapIsNot)
{
    constexpr std::uint64_t memory = 100 << 20;
    EXPECT_EQ(zn::loading::sceneFileOptions(false, memory).maxFileBytes, memory);
    EXPECT_GT(zn::loading::sceneFileOptions(true, memory).maxFileBytes, memory);
    m_session.settings().read.memory.set(64);
    EXPECT_EQ(zn::loading::sceneFileOptions(&m_session, path(QStringLiteral("a.osb"))).maxTextBytes, 64u << 20);
}

} // namespace
