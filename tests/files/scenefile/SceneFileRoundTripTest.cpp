// Every class with every field, against values written down here.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGExt/FileInfo.h"
#include "scene/Attachments.h"
#include "scene/EditAudit.h"
#include "scene/Tags.h"
#include "tests/files/scenefile/SceneFileTest.h"

#include <cmath>
#include <limits>

namespace
{

using RoundTripTest = SceneFileTest;
using osg::NodePtr;

constexpr osg::Matrix sheared = {{2, 0.5f, 0, 0, -1, 3, 0.25f, 0, 0.125f, 0, 4, 0, 10, 20, 30, 1}};

NodePtr named(const char* name)
{
    const NodePtr node = osg::Node::create();
    osg::setName(node, name);
    return node;
}

TEST_F(RoundTripTest, NodesKeepNamesOrderAndActivity)
{
    const NodeRef root(named("root"));
    root->addChild(named("first"));
    root->addChild(osg::Node::create());
    root->addChild(named("third \xC3\xA4\xE2\x82\xAC"));
    root->getChild(0)->addChild(named("below"));
    root->getChild(2)->addChild(named("last"));
    root->getChild(1)->setActive(false);
    const NodeRef back = roundTrip(root);
    EXPECT_STREQ(osg::getName(back.get()), "root");
    ASSERT_EQ(back->getNChildren(), 3u);
    EXPECT_STREQ(osg::getName(back->getChild(0)), "first");
    EXPECT_EQ(osg::getName(back->getChild(1)), nullptr);
    EXPECT_STREQ(osg::getName(back->getChild(2)), "third \xC3\xA4\xE2\x82\xAC");
    ASSERT_EQ(back->getChild(0)->getNChildren(), 1u);
    EXPECT_STREQ(osg::getName(back->getChild(0)->getChild(0)), "below");
    ASSERT_EQ(back->getChild(2)->getNChildren(), 1u);
    EXPECT_STREQ(osg::getName(back->getChild(2)->getChild(0)), "last");
    EXPECT_TRUE(back->getChild(0)->isActive());
    EXPECT_FALSE(back->getChild(1)->isActive());
    EXPECT_FALSE(back->getCore());
}

TEST_F(RoundTripTest, TheRootComesBackAsStoredUncountedAndWithoutParent)
{
    const NodeRef parent(named("parent"));
    parent->addChild(named("stored"));
    written(parent->getChild(0));
    const files::Result<osg::NodePtr> result = osg::scenefile::readSceneFile(path());
    ASSERT_TRUE(result);
    EXPECT_EQ(result.value()->getRefCount(), 0u);
    EXPECT_FALSE(result.value()->getParent());
    EXPECT_STREQ(osg::getName(result.value()), "stored");
    discard(result.value());
}

TEST_F(RoundTripTest, NamesMayHoldAnyBytes)
{
    const NodeRef root(named("x"));
    const std::string odd("a\0b\xFF\xFE\n", 6);
    osg::setName(root.get(), odd);
    const NodeRef back = roundTrip(root);
    const auto key = osg::NameAttachment::_type.getGroupId();
    const auto attachment = osg::fcCast<osg::NameAttachment>(back->findAttachment(key));
    ASSERT_TRUE(attachment);
    EXPECT_EQ(attachment->name(), odd);
}

TEST_F(RoundTripTest, CoresAndMaterialsKeepNamesAndTags)
{
    const osg::SimpleMaterialPtr material = osg::SimpleMaterialBase::create();
    osg::setName(material, "brass");
    osg::setTags(material, {"shiny", "dense"});
    const osg::GeometryPtr geometry = geometryOf(fullMesh());
    geometry->setMaterial(material);
    osg::setName(geometry, "gear");
    osg::setTags(geometry, {"part"});
    const auto back = coreRoundTrip<osg::Geometry>(geometry);
    EXPECT_STREQ(osg::getName(back.get()), "gear");
    EXPECT_EQ(osg::tagsOf(back.get()), std::vector<std::string>{"part"});
    EXPECT_STREQ(osg::getName(back->getMaterial()), "brass");
    EXPECT_EQ(osg::tagsOf(back->getMaterial()), (std::vector<std::string>{"shiny", "dense"}));
}

TEST_F(RoundTripTest, TagsKeepOrderRepeatsAndEmptyTexts)
{
    const NodeRef root(named("x"));
    osg::setTags(root.get(), {"zebra", "", "apple", "zebra"});
    const NodeRef back = roundTrip(root);
    EXPECT_EQ(osg::tagsOf(back.get()), (std::vector<std::string>{"zebra", "", "apple", "zebra"}));
}

TEST_F(RoundTripTest, FileInfos)
{
    const NodeRef root(named("x"));
    const osg::FileInfoPtr info = osg::FileInfoBase::create();
    info->setFileName("/cad/engine.stp");
    info->setFormat("STEP");
    info->setImportAppliedMaterialAssetsUrl("asset://materials");
    root->addAttachment(info);
    const NodeRef back = roundTrip(root);
    const auto read = osg::fcCast<osg::FileInfo>(back->findAttachment(osg::FileInfoBase::_type.getGroupId()));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->getFileName(), "/cad/engine.stp");
    EXPECT_EQ(read->getFormat(), "STEP");
    EXPECT_EQ(read->getImportAppliedMaterialAssetsUrl(), "asset://materials");
}

TEST_F(RoundTripTest, AttachmentsKeepTheirBindings)
{
    const NodeRef root(named("x"));
    root->addAttachment(osg::TagAttachment::create({"seven"}), 7);
    root->addAttachment(osg::TagAttachment::create({"last"}), 65535);
    const NodeRef back = roundTrip(root);
    const auto tagsAt = [&](unsigned short binding) {
        const unsigned key = osg::TagAttachment::_type.getGroupId();
        return osg::fcCast<osg::TagAttachment>(back->findAttachment(key, binding))->tags();
    };
    EXPECT_EQ(tagsAt(7), std::vector<std::string>{"seven"});
    EXPECT_EQ(tagsAt(65535), std::vector<std::string>{"last"});
    EXPECT_TRUE(osg::tagsOf(back.get()).empty());
}

TEST_F(RoundTripTest, Groups)
{
    coreRoundTrip<osg::Group>(osg::Group::create());
}

TEST_F(RoundTripTest, MaterialGroupsKeepTheirMaterial)
{
    const osg::MaterialGroupPtr core = osg::MaterialGroupBase::create();
    core->setMaterial(osg::SimpleMaterialBase::create());
    osg::setName(core->getMaterial(), "steel");
    EXPECT_STREQ(osg::getName(coreRoundTrip<osg::MaterialGroup>(core)->getMaterial()), "steel");
    EXPECT_FALSE(coreRoundTrip<osg::MaterialGroup>(osg::MaterialGroupBase::create())->getMaterial());
}

TEST_F(RoundTripTest, TransformsKeepEveryBitOfTheirMatrix)
{
    const osg::TransformPtr core = osg::TransformBase::create();
    osg::Matrix matrix = sheared;
    matrix[3] = -0.0f;
    matrix[7] = std::numeric_limits<float>::denorm_min();
    matrix[11] = std::numeric_limits<float>::infinity();
    matrix[15] = std::nextafter(1.0f, 2.0f);
    core->setMatrix(matrix);
    const auto back = coreRoundTrip<osg::Transform>(core);
    EXPECT_EQ(std::memcmp(&back->getMatrix(), &matrix, sizeof matrix), 0);
}

TEST_F(RoundTripTest, AnIdentityWithANegativeZeroIsKept)
{
    const osg::TransformPtr core = osg::TransformBase::create();
    osg::Matrix matrix;
    matrix[1] = -0.0f;
    core->setMatrix(matrix);
    EXPECT_TRUE(std::signbit(coreRoundTrip<osg::Transform>(core)->getMatrix()[1]));
}

TEST_F(RoundTripTest, ComponentsThatFollowFromTheMatrixFollowFromItAgain)
{
    const osg::ComponentTransformPtr core = osg::ComponentTransformBase::create();
    core->setMatrix(sheared);
    const osg::RefPtr<osg::ComponentTransformPtr> kept(core);
    const auto back = coreRoundTrip<osg::ComponentTransform>(core);
    EXPECT_EQ(back->getMatrix(), sheared);
    EXPECT_EQ(back->getTranslation(), (osg::Vec3f{10, 20, 30}));
    EXPECT_EQ(back->getRotation(), core->getRotation());
    EXPECT_EQ(back->getScale(), core->getScale());
}

TEST_F(RoundTripTest, ComponentsThatWereSetComeBackAsTheyWereSet)
{
    const osg::Transform3DPtr core = osg::Transform3DBase::create();
    core->setTranslation({7, -8, 9});
    core->setRotation({0, 0, -0.6f, -0.8f});
    core->setScale({-2, 3, 0.5f});
    const osg::Matrix matrix = core->getMatrix();
    const auto back = coreRoundTrip<osg::Transform3D>(core);
    EXPECT_EQ(back->getTranslation(), (osg::Vec3f{7, -8, 9}));
    EXPECT_EQ(back->getRotation(), (osg::Quaternion{0, 0, -0.6f, -0.8f}));
    EXPECT_EQ(back->getScale(), (osg::Vec3f{-2, 3, 0.5f}));
    EXPECT_EQ(back->getMatrix(), matrix);
}

TEST_F(RoundTripTest, ComponentsSetOnAShearedMatrixComeBackWithTheExactMatrix)
{
    const osg::Transform3DPtr core = osg::Transform3DBase::create();
    core->setMatrix(sheared);
    core->setRotation({0.48f, 0.64f, 0, -0.6f});
    core->setScale({1.5f, -2.5f, 3.5f});
    const osg::Matrix matrix = core->getMatrix();
    const auto back = coreRoundTrip<osg::Transform3D>(core);
    EXPECT_EQ(back->getMatrix(), matrix);
    EXPECT_EQ(back->getRotation(), (osg::Quaternion{0.48f, 0.64f, 0, -0.6f}));
    EXPECT_EQ(back->getScale(), (osg::Vec3f{1.5f, -2.5f, 3.5f}));
}

TEST_F(RoundTripTest, FlagsOfTransforms)
{
    const osg::Transform3DPtr transform = osg::Transform3DBase::create();
    transform->addFlag(0x80000004);
    EXPECT_EQ(coreRoundTrip<osg::Transform3D>(transform)->getFlags(), 0x80000004u);
    const osg::ExtReferencePtr reference = osg::ExtReferenceBase::create();
    reference->addFlag(5);
    EXPECT_EQ(coreRoundTrip<osg::ExtReference>(reference)->getFlags(), 5u);
}

TEST_F(RoundTripTest, AMatrixWithoutMeaningIsKeptToo)
{
    const osg::Transform3DPtr core = osg::Transform3DBase::create();
    osg::Matrix matrix;
    matrix.values.fill(std::numeric_limits<float>::quiet_NaN());
    core->setMatrix(matrix);
    const auto back = coreRoundTrip<osg::Transform3D>(core);
    EXPECT_EQ(std::memcmp(&back->getMatrix(), &matrix, sizeof matrix), 0);
}

TEST_F(RoundTripTest, ReferencesKeepStateFilesAndPlacement)
{
    const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
    const osg::FileReferencePtr source = osg::FileReferenceBase::create();
    source->setPath("/parts/Geh\xC3\xA4use 1.prt");
    source->setRelativePath("./Geh\xC3\xA4use 1.prt");
    const osg::FileReferencePtr smart = osg::FileReferenceBase::create();
    smart->setPath("C:\\smart\\scene.osb");
    core->setState(2);
    core->setSourceFile(source);
    core->setSmartFile(smart);
    core->setMatrix(sheared);
    const auto back = coreRoundTrip<osg::ExtReference>(core);
    EXPECT_EQ(back->getState(), 2u);
    EXPECT_EQ(back->getSourceFile()->getPath(), "/parts/Geh\xC3\xA4use 1.prt");
    EXPECT_EQ(back->getSourceFile()->getRelativePath(), "./Geh\xC3\xA4use 1.prt");
    EXPECT_EQ(back->getSmartFile()->getPath(), "C:\\smart\\scene.osb");
    EXPECT_EQ(back->getSmartFile()->getRelativePath(), "");
    EXPECT_EQ(back->getMatrix(), sheared);
}

TEST_F(RoundTripTest, AReferenceMayNameNoFile)
{
    const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
    core->setState(4711);
    const auto back = coreRoundTrip<osg::ExtReference>(core);
    EXPECT_EQ(back->getState(), 4711u);
    EXPECT_FALSE(back->getSourceFile());
    EXPECT_FALSE(back->getSmartFile());
}

TEST_F(RoundTripTest, SimpleMaterials)
{
    const osg::SimpleMaterialPtr material = osg::SimpleMaterialBase::create();
    material->setAmbient({0.1f, 0.2f, 0.3f});
    material->setDiffuse({0.4f, 0.5f, 0.6f});
    material->setEmission({0.7f, 0.8f, 0.9f});
    material->setSpecular({1.5f, -0.5f, 0.05f});
    material->setShininess(96.5f);
    material->setTransparency(0.375f);
    const osg::GeometryPtr geometry = osg::GeometryBase::create();
    geometry->setMaterial(material);
    const auto core = coreRoundTrip<osg::Geometry>(geometry);
    const auto back = osg::fcCast<osg::SimpleMaterial>(core->getMaterial());
    ASSERT_TRUE(back);
    EXPECT_EQ(back->getAmbient(), (osg::Color3f{0.1f, 0.2f, 0.3f}));
    EXPECT_EQ(back->getDiffuse(), (osg::Color3f{0.4f, 0.5f, 0.6f}));
    EXPECT_EQ(back->getEmission(), (osg::Color3f{0.7f, 0.8f, 0.9f}));
    EXPECT_EQ(back->getSpecular(), (osg::Color3f{1.5f, -0.5f, 0.05f}));
    EXPECT_EQ(back->getShininess(), 96.5f);
    EXPECT_EQ(back->getTransparency(), 0.375f);
}

TEST_F(RoundTripTest, MeshesKeepEveryArray)
{
    const auto back = coreRoundTrip<osg::Geometry>(geometryOf(fullMesh()));
    const osg::Mesh& mesh = osg::GeometryAccess::mesh(*back.get());
    EXPECT_FALSE(back->getMaterial());
    ASSERT_EQ(mesh.positions.size(), 4u);
    EXPECT_EQ(mesh.positions[2], (osg::Vec3f{7, 8, 10}));
    EXPECT_EQ(mesh.positions[3], (osg::Vec3f{-1.5f, 0.25f, 1e9f}));
    ASSERT_EQ(mesh.normals.size(), 4u);
    EXPECT_EQ(mesh.normals[3], (osg::Vec3f{0.6f, 0.8f, 0}));
    ASSERT_EQ(mesh.texCoords.size(), 4u);
    EXPECT_EQ(mesh.texCoords[3], (osg::Vec2f{3, 0.75f}));
    ASSERT_EQ(mesh.colors.size(), 4u);
    EXPECT_EQ(mesh.colors[1], (osg::Color4f{0, 1, 0, 0.25f}));
    const std::vector<std::uint32_t> triangles = {0, 1, 2, 2, 1, 3};
    EXPECT_TRUE(std::equal(mesh.triangles.begin(), mesh.triangles.end(), triangles.begin(), triangles.end()));
    const std::vector<std::uint32_t> lines = {0, 3, 3, 1};
    EXPECT_TRUE(std::equal(mesh.lines.begin(), mesh.lines.end(), lines.begin(), lines.end()));
    ASSERT_EQ(mesh.points.size(), 1u);
    EXPECT_EQ(mesh.points[0], 3u);
    ASSERT_EQ(mesh.faces.size(), 3u);
    EXPECT_EQ(mesh.faces[2], (osg::FaceRange{1, 1}));
    ASSERT_EQ(mesh.brep.size(), 5u);
    EXPECT_EQ(mesh.brep[0], std::byte{0xDE});
    EXPECT_EQ(mesh.brep[4], std::byte{0xEF});
}

TEST_F(RoundTripTest, AGeometryMayHaveNoMeshOrAnEmptyOne)
{
    EXPECT_FALSE(osg::GeometryAccess::sharedMesh(*coreRoundTrip<osg::Geometry>(osg::GeometryBase::create()).get()));
    const auto back = coreRoundTrip<osg::Geometry>(geometryOf(std::make_shared<const osg::Mesh>()));
    EXPECT_TRUE(osg::GeometryAccess::sharedMesh(*back.get()));
    EXPECT_TRUE(osg::GeometryAccess::mesh(*back.get()).positions.empty());
}

TEST_F(RoundTripTest, TheReaderEditsWithinBrackets)
{
    const NodeRef root(named("x"));
    const osg::ExtReferencePtr reference = osg::ExtReferenceBase::create();
    const osg::FileReferencePtr file = osg::FileReferenceBase::create();
    file->setPath("a");
    reference->setSourceFile(file);
    reference->setRotation({0, 0, -0.6f, -0.8f});
    reference->addFlag(4);
    root->setCore(reference);
    root->setActive(false);
    osg::setTags(root.get(), {"tag"});
    root->addAttachment(osg::FileInfoBase::create());
    const NodePtr child = named("child");
    const osg::GeometryPtr geometry = geometryOf(fullMesh());
    geometry->setMaterial(osg::SimpleMaterialBase::create());
    child->setCore(geometry);
    root->addChild(child);
    const osg::EditAudit audit;
    const NodeRef back = roundTrip(root);
    EXPECT_TRUE(audit.unbracketed().empty());
    EXPECT_TRUE(audit.idleBrackets().empty());
    EXPECT_EQ(audit.openBrackets(), 0u);
}

} // namespace
