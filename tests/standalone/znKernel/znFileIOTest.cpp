#include "host/znKernel/znFileIO.h"

#include "files/SceneReaders.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Transform.h"
#include "scene/EditAudit.h"
#include "scene/Mesh.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/LoadRecorder.h"

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

class FileIOTest : public SessionTest
{
protected:
    int load(const std::vector<QString>& files, const osg::NodePtr& parent)
    {
        return znFileIO::load(files, parent, false, false, false);
    }
    static osg::NodePtr latest() { return znFileIO::getLoadedGeometriesList().back().getNode(); }

    /// All corners below `node`, as they stand in the meshes.
    static std::vector<osg::Vec3f> corners(const osg::NodePtr& node)
    {
        std::vector<osg::Vec3f> result;
        osg::traverse(node, [&](const osg::NodePtr& step) {
            if (const auto geometry = osg::fcCast<osg::Geometry>(step->getCore()))
                for (const osg::Vec3f& corner : osg::GeometryAccess::mesh(*geometry).positions)
                    result.push_back(corner);
            return osg::Action::Continue;
        });
        return result;
    }
    /// The matrices below `node` that are not the identity.
    static std::vector<osg::Matrix> placements(const osg::NodePtr& node)
    {
        std::vector<osg::Matrix> result;
        osg::traverse(node, [&](const osg::NodePtr& step) {
            const auto transform = osg::fcCast<osg::Transform>(step->getCore());
            if (transform && !transform->isIdentity())
                result.push_back(transform->getMatrix());
            return osg::Action::Continue;
        });
        return result;
    }

    const osg::NodePtr m_root = m_session.sceneRoot();
};

TEST_F(FileIOTest, AFileComesInAsOneGroupBelowItsParent)
{
    const osg::NodePtr parent = addGroup(m_root, "parent");
    EXPECT_EQ(load({writeTriangle(QString::fromUtf8("Größe 1.v2.OBJ"))}, parent), 131003);
    EXPECT_THAT(childNames(parent), ElementsAre("Größe 1.v2"));
    EXPECT_STREQ(parent->getChild(0)->getCore()->getType().getName(), "Group");
    EXPECT_THAT(corners(parent), ElementsAre(osg::Vec3f{0, 0, 0}, osg::Vec3f{2, 0, 0}, osg::Vec3f{0, 3, 0}));
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(FileIOTest, TheLastEntryOfTheListIsTheLatestLoad)
{
    EXPECT_THAT(znFileIO::getLoadedGeometriesList(), IsEmpty());
    load({writeTriangle(QStringLiteral("first.obj"))}, m_root);
    EXPECT_TRUE(latest() == m_root->getChild(0));
    load({writeTriangle(QStringLiteral("second.obj"))}, m_root);
    EXPECT_TRUE(latest() == m_root->getChild(1));
    EXPECT_EQ(znFileIO::getLoadedGeometriesList().size(), 2u);
    EXPECT_TRUE(znFileIO::getLoadedGeometriesList().front().getNode() == m_root->getChild(0));
}

TEST_F(FileIOTest, AnEntryForgetsItsNodeWhenThatGoes)
{
    load({writeTriangle(QStringLiteral("first.obj"))}, m_root);
    m_root->subChild(latest());
    EXPECT_FALSE(latest());
}

TEST_F(FileIOTest, AMissingFileGivesZeroAndIsNamedInTheLog)
{
    EXPECT_EQ(load({path(QString::fromUtf8("fehlt ä.obj"))}, m_root), 0);
    EXPECT_THAT(m_log, ElementsAre(HasSubstr("fehlt ä.obj")));
    EXPECT_EQ(m_root->getNChildren(), 0u);
    EXPECT_THAT(znFileIO::getLoadedGeometriesList(), IsEmpty());
}

TEST_F(FileIOTest, AFileOfAnUnknownFormatGivesZeroAndIsNamedInTheLog)
{
    EXPECT_EQ(load({write(QStringLiteral("notes.txt"), "words")}, m_root), 0);
    EXPECT_THAT(m_log, ElementsAre(HasSubstr("notes.txt")));
}

TEST_F(FileIOTest, ADamagedFileGivesZeroAndLeavesNothingBehind)
{
    EXPECT_EQ(load({write(QStringLiteral("cut.gltf"), "{\"asset\":{\"version\":\"2.0\"")}, m_root), 0);
    EXPECT_THAT(m_log, Contains(HasSubstr("cut.gltf")));
    EXPECT_EQ(m_root->getNChildren(), 0u);
}

TEST_F(FileIOTest, NoFilesGiveZero)
{
    EXPECT_EQ(load({}, m_root), 0);
}

TEST_F(FileIOTest, SeveralFilesOfWhichSomeFailGiveAnotherNumber)
{
    const QString good = writeTriangle(QStringLiteral("good.obj")), bad = path(QStringLiteral("bad.obj"));
    EXPECT_EQ(load({good, bad, good}, m_root), 1);
    EXPECT_THAT(childNames(m_root), ElementsAre("good", "good"));
    EXPECT_EQ(load({good, good}, m_root), 131003);
    EXPECT_EQ(load({bad, bad}, m_root), 0);
}

TEST_F(FileIOTest, WhatIsLeftOutOfAFileIsToldButIsNoFailure)
{
    const QString file =
        write(QStringLiteral("no material.obj"), "mtllib gone.mtl\nv 0 0 0\nv 2 0 0\nv 0 3 0\nf 1 2 3\n");
    EXPECT_EQ(load({file}, m_root), 131003);
    EXPECT_THAT(m_log, Contains(HasSubstr("gone.mtl")));
}

TEST_F(FileIOTest, WithoutAParentTheTreeStandsAlone)
{
    EXPECT_EQ(load({writeTriangle(QStringLiteral("alone.obj"))}, osg::NodePtr()), 131003);
    EXPECT_EQ(m_root->getNChildren(), 0u);
    const osg::RefPtr<osg::NodePtr> taken(latest());
    ASSERT_TRUE(taken);
    EXPECT_EQ(nameOf(taken), "alone");
    EXPECT_EQ(taken->getRefCount(), 1u);
}

TEST_F(FileIOTest, WhatWasLoadedBecomesTheSelectionIfThatIsWanted)
{
    const QString file = writeTriangle(QStringLiteral("part.obj"));
    znFileIO::load({file}, m_root, true, false, false);
    EXPECT_FALSE(m_session.selectedNode());
    znFileIO::load({file}, m_root, false, false, true);
    EXPECT_TRUE(m_session.selectedNode() == m_root->getChild(1));
    znFileIO::load({path(QStringLiteral("missing.obj"))}, m_root, false, false, true);
    EXPECT_TRUE(m_session.selectedNode() == m_root->getChild(1));
}

TEST_F(FileIOTest, AnObserverIsToldWhatEachLoadAsksFor)
{
    const LoadRecorder recorder(m_session);
    const osg::NodePtr parent = addGroup(m_root, "parent");
    const QString file = path(QStringLiteral("missing.obj"));
    znFileIO::load({file}, parent, true, false, true);
    EXPECT_THAT(recorder.latest().files, ElementsAre(file));
    EXPECT_EQ(recorder.latest().parentId, parent->getContainerId());
    EXPECT_TRUE(recorder.latest().sceneWasEmpty);
    EXPECT_FALSE(recorder.latest().merge);
    EXPECT_TRUE(recorder.latest().select);
    znFileIO::load({}, osg::NodePtr(), false, true, false);
    EXPECT_EQ(recorder.requests().size(), 2u);
    EXPECT_EQ(recorder.latest().parentId, 0u);
    EXPECT_FALSE(recorder.latest().sceneWasEmpty);
    EXPECT_TRUE(recorder.latest().merge);
    EXPECT_FALSE(recorder.latest().select);
}

TEST_F(FileIOTest, UnitAndUpAxisOfFilesWithoutThemAreSettings)
{
    EXPECT_FALSE(m_session.settings().set(QStringLiteral("mesh.unit"), QStringLiteral("25.4")));
    EXPECT_FALSE(m_session.settings().set(QStringLiteral("mesh.up"), QStringLiteral("y")));
    ASSERT_EQ(load({writeTriangle(QStringLiteral("inch.obj"))}, m_root), 131003);
    const std::vector<osg::Matrix> found = placements(m_root);
    ASSERT_EQ(found.size(), 1u);
    // An inch along the file's y is an inch along z; along its z it is an inch along -y.
    const osg::Matrix expected = {{25.4f, 0, 0, 0, 0, 0, 25.4f, 0, 0, -25.4f, 0, 0, 0, 0, 0, 1}};
    for (unsigned i = 0; i < 16; ++i)
        EXPECT_NEAR(found[0][i], expected[i], 1e-5) << "element " << i;
}

TEST_F(FileIOTest, VrmlFilesComeAsTheyAreUnlessTheyMeanMetres)
{
    const QString file =
        write(QStringLiteral("teil.wrl"),
              "#VRML V2.0 utf8\nShape { geometry IndexedFaceSet { coord Coordinate { point [ 1 2 3, 2 2 3, "
              "1 3 3 ] } coordIndex [ 0 1 2 -1 ] } }\n");
    ASSERT_EQ(load({file}, m_root), 131003);
    EXPECT_THAT(placements(m_root), IsEmpty());
    EXPECT_FALSE(m_session.settings().set(QStringLiteral("mesh.wrlInMetres"), QStringLiteral("true")));
    ASSERT_EQ(load({file}, m_root), 131003);
    const std::vector<osg::Matrix> found = placements(m_root);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_THAT(found[0].values, ElementsAre(1000, 0, 0, 0, 0, 0, 1000, 0, 0, -1000, 0, 0, 0, 0, 0, 1));
}

TEST_F(FileIOTest, AHostCanBringReadersOfItsOwn)
{
    m_session.state<files::SceneReaders>().add({QStringLiteral("test"), {QStringLiteral("fake")}, [](files::ReadTask&) {
                                                    return osg::makeNodeFor(osg::Group::create());
                                                }});
    EXPECT_EQ(load({write(QStringLiteral("one.fake"), "x")}, m_root), 131003);
    EXPECT_THAT(childNames(m_root), ElementsAre("one"));
}

TEST_F(FileIOTest, AReaderWithoutATreeIsALoadWithoutANode)
{
    m_session.state<files::SceneReaders>().add(
        {QStringLiteral("test"), {QStringLiteral("fake")}, [](files::ReadTask&) { return osg::NodePtr(); }});
    EXPECT_EQ(load({write(QStringLiteral("none.fake"), "x")}, m_root), 131003);
    EXPECT_EQ(m_root->getNChildren(), 0u);
    EXPECT_EQ(znFileIO::getLoadedGeometriesList().size(), 1u);
    EXPECT_FALSE(latest());
}

TEST_F(FileIOTest, TheTreeIsHungWithinTheBracketOfTheChildren)
{
    const QString file = writeTriangle(QStringLiteral("part.obj"));
    const osg::EditAudit audit;
    load({file}, m_root);
    EXPECT_THAT(audit.brackets(),
                Contains(osg::EditAudit::Record{m_root->getContainerId(), "Node", osg::Node::ChildrenFieldMask}));
    EXPECT_EQ(audit.openBrackets(), 0u);
    EXPECT_THAT(audit.unmatchedEnds(), IsEmpty());
}

TEST_F(FileIOTest, TheSolidKernelIsARow)
{
    EXPECT_FALSE(znFileIO::getUseGSK());
    EXPECT_FALSE(m_session.settings().set(QStringLiteral("optimize.solidKernel"), QStringLiteral("on")));
    EXPECT_TRUE(znFileIO::getUseGSK());
}

TEST_F(FileIOTest, UberMaterialsAreASettingThatIsOffAtFirst)
{
    EXPECT_FALSE(znFileIO::getConvertToUberMaterials());
    EXPECT_FALSE(m_session.settings().set(QStringLiteral("import.uberMaterials"), QStringLiteral("on")));
    EXPECT_TRUE(znFileIO::getConvertToUberMaterials());
}

} // namespace
