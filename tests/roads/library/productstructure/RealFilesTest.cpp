// Files of other programs as the content of records, from the folder that the environment variable ZN_CORPUS names.

#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Mesh.h"
#include "tests/cad/visualization/PLMXMLStructureTest.h"

#include <QFileInfo>
#include <QUrl>

#include <set>

namespace HB::Visualization
{

namespace
{

class RealFilesTest : public PLMXMLStructureTest
{
protected:
    void SetUp() override
    {
        m_corpus = QString::fromLocal8Bit(qgetenv("ZN_CORPUS"));
        if (m_corpus.isEmpty() || !QFileInfo(m_corpus).isDir())
            GTEST_SKIP() << "ZN_CORPUS names no folder";
        m_loadFiles = true;
    }

    /// Realises two records of one file; gives the node that hangs below the first.
    osg::NodePtr realize(const QString& file, const char* format)
    {
        const std::string location = QUrl::toPercentEncoding(file, "/").toStdString();
        const std::string representation =
            std::string("format='") + format + "' location='" + location + "' transformRef='t'/>";
        build("<InstanceGraph rootRefs='p'><Transform id='t' type='translate'>1 0 0</Transform></InstanceGraph>"
              "<Part id='p' name='P'><Representation id='r1' " +
              representation + "<Representation id='r2' " + representation + "</Part>");
        m_structure->realizeNode(2);
        m_structure->realizeNode(3);
        EXPECT_EQ(record(2).getState(), CADLoadState::FileLoaded);
        EXPECT_EQ(record(3).getState(), CADLoadState::FileLoaded);
        return record(2).getNode()->getChild(0);
    }
    static std::size_t trianglesBelow(const osg::NodePtr& root)
    {
        std::size_t triangles = 0;
        osg::traverse(root, [&](const osg::NodePtr& node) {
            if (const auto geometry = osg::fcCast<osg::Geometry>(node->getCore()))
                triangles += osg::GeometryAccess::mesh(*geometry).triangles.size() / 3;
            return osg::Action::Continue;
        });
        return triangles;
    }
    static std::multiset<const osg::NodeCore*> coresBelow(const osg::NodePtr& root)
    {
        std::multiset<const osg::NodeCore*> cores;
        osg::traverse(root, [&](const osg::NodePtr& node) {
            cores.insert(node->getCore().get());
            return osg::Action::Continue;
        });
        return cores;
    }
    void expectSecondUseToShare()
    {
        EXPECT_EQ(coresBelow(record(2).getNode()->getChild(0)), coresBelow(record(3).getNode()->getChild(0)));
    }

    QString m_corpus;
};

TEST_F(RealFilesTest, ObjFilesBecomeContentThatIsReadOnce)
{
    const osg::NodePtr content = realize(m_corpus + QStringLiteral("/obj/hundred_cubes.obj"), "OSB");
    EXPECT_EQ(nameOf(content), "hundred_cubes");
    EXPECT_EQ(trianglesBelow(content), 1200U);
    EXPECT_EQ(trianglesBelow(m_tree), 2400U);
    expectSecondUseToShare();
}

TEST_F(RealFilesTest, WrlFilesBecomeContentOrALineInTheLog)
{
    const QString file = m_corpus + QStringLiteral("/wrl/res_0603.wrl");
    const osg::NodePtr content = realize(file, "WRL");
    EXPECT_EQ(nameOf(content), "res_0603");
    if (trianglesBelow(content) == 0) {
        EXPECT_THAT(m_log, testing::ElementsAre(testing::HasSubstr("res_0603.wrl")));
    }
    expectSecondUseToShare();
}

TEST_F(RealFilesTest, SceneFilesBecomeContentWithoutTheirRoot)
{
    // The scene file is made here, of a real mesh, below a root as the converter writes it.
    const osg::NodePtr read = realize(m_corpus + QStringLiteral("/obj/spider.obj"), "OSB");
    const std::size_t triangles = trianglesBelow(read);
    ASSERT_GT(triangles, 1000U);
    const QString scene = path(QString::fromUtf8("Spinne ä 1.osb"));
    ASSERT_TRUE(osg::scenefile::writeSceneFile(read, scene));
    const osg::NodePtr content = realize(scene, "OSB");
    EXPECT_EQ(nameOf(content), "Spinne ä 1");
    EXPECT_EQ(trianglesBelow(content), triangles);
    EXPECT_STRNE(content->getChild(0)->getCore()->getType().getName(), "ExtReference");
    expectSecondUseToShare();
}

} // namespace

} // namespace HB::Visualization
