#include "importer/EmptyImport.h"

#include "files/SceneBuilding.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/SceneEdits.h"
#include "tests/scene/SceneGraphTest.h"
#include "tests/support/QtPrinters.h"

namespace
{

using importer::Source;

class EmptyImportTest : public SceneGraphTest
{
protected:
    void TearDown() override
    {
        root = osg::NodePtr();
        scene = osg::NodePtr();
        SceneGraphTest::TearDown();
    }

    /// What becomes of a file with this name whose tree is `root` and what hangs below it.
    zn::ImportResult judged(const char* file, Source source)
    {
        zn::ImportResult result;
        result.file = QString::fromLatin1(file);
        result.state = znCADFileTypes::JobSucceeded;
        result.node = root;
        importer::judgeEmptiness(result, source);
        return result;
    }

    osg::NodePtr add(const osg::NodePtr& parent, const osg::NodeCorePtr& core = {})
    {
        const osg::NodePtr node = core ? osg::makeNodeFor(core) : osg::Node::create();
        osg::addChild(parent, node);
        return node;
    }

    osg::RefPtr<osg::NodePtr> scene{osg::Node::create()};
    osg::NodePtr root = add(scene.get());
};

TEST_F(EmptyImportTest, AMeshFileWithoutAMeshIsNamedAsEmpty)
{
    add(root, osg::Geometry::create());
    const zn::ImportResult result = judged("a.obj", Source::SceneFile);
    EXPECT_EQ(result.state, znCADFileTypes::JobSucceeded);
    EXPECT_EQ(result.messages,
              QStringList(QStringLiteral("a.obj: the file is empty: it holds no shape, mesh or curve")));
}

TEST_F(EmptyImportTest, ASingleLineIsSomething)
{
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {1, 0, 0}};
    mesh.lines = std::vector<std::uint32_t>{0, 1};
    add(add(root), files::makeGeometry("", mesh, {}));
    EXPECT_TRUE(judged("a.obj", Source::SceneFile).messages.empty());
    EXPECT_TRUE(judged("a.stp", Source::CadFile).messages.empty());
}

TEST_F(EmptyImportTest, AReferenceThatIsNotReadCanBeFollowed)
{
    add(root, osg::ExtReference::create());
    EXPECT_TRUE(judged("a.plmxml", Source::Document).messages.empty());
}

TEST_F(EmptyImportTest, AStructureWithoutShapesTellsItsNodes)
{
    add(add(add(root)));
    zn::ImportResult result = judged("a.plmxml", Source::Document);
    EXPECT_EQ(result.state, znCADFileTypes::JobSucceeded);
    EXPECT_EQ(result.messages,
              QStringList(QStringLiteral("a.plmxml: nothing of it can be drawn; nodes of its structure: 2")));
    EXPECT_EQ(judged("a.stp", Source::CadFile).messages,
              QStringList(QStringLiteral("a.stp: nothing of it can be drawn; nodes of its structure: 3")));
}

TEST_F(EmptyImportTest, ADocumentWithoutAPlaceHasFailedAndLeavesTheScene)
{
    add(root);
    const zn::ImportResult result = judged("a.plmxml", Source::Document);
    EXPECT_EQ(result.state, znCADFileTypes::JobFailed);
    EXPECT_FALSE(result.node);
    EXPECT_EQ(result.error, QStringLiteral("a.plmxml: nothing came in: there is no shape in it, and no place for one"));
    EXPECT_EQ(scene->getNChildren(), 0u);
}

} // namespace
