// What is shared in a tree is shared in its file, and what the file holds is not copied.

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/Tags.h"
#include "tests/files/scenefile/SceneFileTest.h"

namespace
{

using SharingTest = SceneFileTest;
using osg::NodePtr;

const osg::Geometry& geometryAt(const NodePtr& node)
{
    return *static_cast<const osg::Geometry*>(node->getCore().get());
}

TEST_F(SharingTest, CoresThatNodesShareStayShared)
{
    const NodeRef root(osg::Node::create());
    const osg::TransformPtr shared = osg::TransformBase::create();
    for (int i = 0; i < 3; ++i)
        root->addChild(osg::makeNodeFor(shared));
    root->addChild(osg::makeNodeFor(osg::TransformBase::create()));
    const NodeRef back = roundTrip(root);
    const osg::NodeCorePtr core = back->getChild(0)->getCore();
    EXPECT_TRUE(back->getChild(1)->getCore() == core);
    EXPECT_TRUE(back->getChild(2)->getCore() == core);
    EXPECT_FALSE(back->getChild(3)->getCore() == core);
    EXPECT_EQ(core->getRefCount(), 3u);
}

TEST_F(SharingTest, MaterialsMeshesAndFileReferencesStayShared)
{
    const NodeRef root(osg::Node::create());
    const osg::SimpleMaterialPtr material = osg::SimpleMaterialBase::create();
    const osg::FileReferencePtr file = osg::FileReferenceBase::create();
    const auto mesh = fullMesh();
    for (int i = 0; i < 2; ++i) {
        const osg::GeometryPtr geometry = geometryOf(mesh);
        geometry->setMaterial(material);
        root->addChild(osg::makeNodeFor(geometry));
        const osg::ExtReferencePtr reference = osg::ExtReferenceBase::create();
        reference->setSourceFile(file);
        reference->setSmartFile(file);
        root->addChild(osg::makeNodeFor(reference));
    }
    const NodeRef back = roundTrip(root);
    const osg::Geometry& first = geometryAt(back->getChild(0));
    const osg::Geometry& second = geometryAt(back->getChild(2));
    EXPECT_TRUE(first.getMaterial() == second.getMaterial());
    EXPECT_EQ(first.getMaterial()->getRefCount(), 2u);
    EXPECT_EQ(osg::GeometryAccess::sharedMesh(first), osg::GeometryAccess::sharedMesh(second));
    const auto* reference = static_cast<const osg::ExtReference*>(back->getChild(1)->getCore().get());
    EXPECT_TRUE(reference->getSourceFile() == reference->getSmartFile());
    EXPECT_EQ(reference->getSourceFile()->getRefCount(), 4u);
}

TEST_F(SharingTest, AnAttachmentOfTwoHoldersStaysOne)
{
    const NodeRef root(osg::Node::create());
    const osg::TagAttachment::Ptr tags = osg::TagAttachment::create({"both"});
    root->addAttachment(tags);
    root->addChild(osg::Node::create());
    root->getChild(0)->addAttachment(tags);
    const NodeRef back = roundTrip(root);
    const unsigned key = osg::TagAttachment::_type.getGroupId();
    EXPECT_TRUE(back->findAttachment(key) == back->getChild(0)->findAttachment(key));
    EXPECT_EQ(back->findAttachment(key)->getRefCount(), 2u);
}

TEST_F(SharingTest, ArraysThatMeshesShareAreWrittenOnce)
{
    osg::Mesh red;
    red.positions = std::vector<osg::Vec3f>(10'000, osg::Vec3f{1, 2, 3});
    osg::Mesh blue;
    blue.positions = red.positions;
    blue.points = std::vector<std::uint32_t>{9'999};
    const NodeRef root(osg::Node::create());
    root->addChild(osg::makeNodeFor(geometryOf(std::make_shared<const osg::Mesh>(red))));
    root->addChild(osg::makeNodeFor(geometryOf(std::make_shared<const osg::Mesh>(blue))));
    EXPECT_LT(written(root).size(), 130'000u);
    const NodeRef back = roundTrip(root);
    EXPECT_EQ(osg::GeometryAccess::mesh(geometryAt(back->getChild(0))).positions.data(),
              osg::GeometryAccess::mesh(geometryAt(back->getChild(1))).positions.data());
}

TEST_F(SharingTest, TextsAreWrittenOnce)
{
    const NodeRef root(osg::Node::create());
    const std::string name(1'000, 'n');
    for (int i = 0; i < 100; ++i) {
        root->addChild(osg::Node::create());
        osg::setName(root->getChild(static_cast<unsigned>(i)), name);
    }
    EXPECT_LT(written(root).size(), 5'000u);
    EXPECT_EQ(osg::getName(roundTrip(root)->getChild(99)), name);
}

TEST_F(SharingTest, NoVertexIsCopied)
{
    const NodeRef root(osg::makeNodeFor(geometryOf(fullMesh())));
    const auto bytes = osg::scenefile::copyBytes(written(root));
    const NodeRef back(osg::scenefile::readScene(bytes, {}).value());
    const osg::Mesh& mesh = osg::GeometryAccess::mesh(geometryAt(back));
    const auto isInside = [&](const void* data) {
        const auto* place = static_cast<const std::byte*>(data);
        return place >= bytes.bytes.data() && place < bytes.bytes.data() + bytes.bytes.size();
    };
    EXPECT_TRUE(isInside(mesh.positions.data()));
    EXPECT_TRUE(isInside(mesh.triangles.data()));
    EXPECT_TRUE(isInside(mesh.brep.data()));
}

TEST_F(SharingTest, AnArrayOutlivesTheTreeAndTheNameOfTheFile)
{
    written(NodeRef(osg::makeNodeFor(geometryOf(fullMesh()))));
    osg::Buffer<osg::Vec3f> kept;
    {
        const NodeRef back(osg::scenefile::readSceneFile(path()).value());
        kept = osg::GeometryAccess::mesh(geometryAt(back)).positions;
    }
    EXPECT_EQ(osg::livingContainerCount(), 0u);
    EXPECT_TRUE(QFile::remove(path()));
    EXPECT_EQ(kept[1], (osg::Vec3f{4, 5, 6}));
}

TEST_F(SharingTest, ReplacingAFileLeavesItsLivingSceneAlone)
{
    written(NodeRef(osg::makeNodeFor(geometryOf(fullMesh()))));
    const NodeRef back(osg::scenefile::readSceneFile(path()).value());
    written(NodeRef(osg::Node::create()));
    EXPECT_EQ(osg::GeometryAccess::mesh(geometryAt(back)).positions[1], (osg::Vec3f{4, 5, 6}));
}

TEST_F(SharingTest, ACopyInMemoryDoesNotNeedTheFile)
{
    written(NodeRef(osg::makeNodeFor(geometryOf(fullMesh()))));
    osg::scenefile::SceneFileReadOptions options;
    options.copyIntoMemory = true;
    const NodeRef back(osg::scenefile::readSceneFile(path(), options).value());
    ASSERT_TRUE(back);
    ASSERT_TRUE(QFile::resize(path(), 0));
    EXPECT_EQ(osg::GeometryAccess::mesh(geometryAt(back)).positions[1], (osg::Vec3f{4, 5, 6}));
    EXPECT_EQ(osg::GeometryAccess::mesh(geometryAt(back)).brep[4], std::byte{0xEF});
}

TEST_F(SharingTest, AFileThatWasReadIsWrittenToTheSameBytes)
{
    const NodeRef root(osg::makeNodeFor(geometryOf(fullMesh())));
    osg::setName(root.get(), "same");
    const std::vector<std::byte> first = written(root);
    const NodeRef back(osg::scenefile::readSceneFile(path()).value());
    EXPECT_EQ(written(back), first);
}

} // namespace
