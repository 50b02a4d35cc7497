// The bytes of the file: where what stands, and a file of version 1 that every later reader must understand.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGExt/FileInfo.h"
#include "scene/Tags.h"
#include "tests/files/scenefile/FileBuilder.h"
#include "tests/files/scenefile/SceneFileTest.h"

namespace
{

using namespace filebuilder;
using LayoutTest = SceneFileTest;

std::uint32_t letters(const char* text)
{
    std::uint32_t value;
    std::memcpy(&value, text, sizeof value);
    return value;
}

TEST_F(LayoutTest, TheHeaderTellsMagicVersionSizeAndTable)
{
    const Bytes bytes = written(NodeRef(osg::makeNodeFor(geometryOf(fullMesh()))));
    EXPECT_EQ(std::memcmp(bytes.data(), "\x89ZNSC\r\n\x1A", 8), 0);
    EXPECT_EQ(at<std::uint32_t>(bytes, 8), 1u);
    EXPECT_EQ(at<std::uint32_t>(bytes, 12), 3u);
    EXPECT_EQ(at<std::uint64_t>(bytes, 16), bytes.size());
    EXPECT_EQ(at<std::uint64_t>(bytes, 24), bytes.size() - 3 * 32);
    for (std::size_t i = 36; i < 60; ++i)
        EXPECT_EQ(bytes[i], std::byte{0}) << i;
}

TEST_F(LayoutTest, ChunksAreAlignedAndFollowEachOther)
{
    const Bytes bytes = written(NodeRef(osg::makeNodeFor(geometryOf(fullMesh()))));
    const std::uint64_t table = at<std::uint64_t>(bytes, 24);
    const std::vector<const char*> types = {"GRPH", "MESH", "BREP"};
    std::uint64_t end = 64;
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t entry = table + 32 * i;
        EXPECT_EQ(at<std::uint32_t>(bytes, entry), letters(types[i]));
        const auto offset = at<std::uint64_t>(bytes, entry + 8);
        EXPECT_EQ(offset % 64, 0u);
        EXPECT_GE(offset, end);
        EXPECT_LT(offset, end + 64);
        end = offset + at<std::uint64_t>(bytes, entry + 16);
    }
    EXPECT_EQ(table % 64, 0u);
    EXPECT_GE(table, end);
    EXPECT_EQ(at<std::uint64_t>(bytes, table + 2 * 32 + 16), 5u);
}

TEST_F(LayoutTest, ArraysOfMeshesAreRawAndAligned)
{
    const Bytes bytes = written(NodeRef(osg::makeNodeFor(geometryOf(fullMesh()))));
    const std::uint64_t mesh = chunkOf(bytes, 1).offset;
    EXPECT_EQ(at<float>(bytes, mesh), 1.0f);
    EXPECT_EQ(at<float>(bytes, mesh + 4 * 11), 1e9f);
    EXPECT_EQ(at<float>(bytes, mesh + 48 + 4 * 2), 1.0f);
    EXPECT_EQ(at<float>(bytes, mesh + 48 + 4 * 9), 0.6f);
    EXPECT_EQ(at<std::uint8_t>(bytes, chunkOf(bytes, 2).offset), 0xDEu);
}

TEST_F(LayoutTest, ChecksumsAreThoseOfZlib)
{
    EXPECT_EQ(osg::scenefile::checksum("123456789", 9), 0xCBF43926u);
    EXPECT_EQ(osg::scenefile::checksum("6789", 4, osg::scenefile::checksum("12345", 5)), 0xCBF43926u);
    EXPECT_EQ(osg::scenefile::checksum("", 0), 0u);
}

TEST_F(LayoutTest, TheSameTreeGivesTheSameBytes)
{
    const NodeRef root(osg::makeNodeFor(geometryOf(fullMesh())));
    osg::setTags(root.get(), {"b", "a"});
    EXPECT_EQ(written(root), written(root));
}

class VersionOneTest : public SceneFileTest
{
protected:
    void SetUp() override
    {
        osg::scenefile::SceneFileReadOptions options;
        options.verifyChecksums = true;
        const files::Result<osg::NodePtr> result =
            osg::scenefile::readSceneFile(QStringLiteral(ZN_GOLDEN_FOLDER "/version-1.osb"), options);
        ASSERT_TRUE(result) << result.error().toString().toStdString();
        EXPECT_TRUE(result.warnings.empty());
        m_root = result.value();
    }
    void TearDown() override
    {
        m_root = osg::NodePtr();
        SceneFileTest::TearDown();
    }

    template <class T>
    typename T::Ptr coreAt(const osg::NodePtr& node) const
    {
        return osg::fcCast<T>(node->getCore());
    }

    NodeRef m_root;
};

TEST_F(VersionOneTest, TheRootIsAReferenceWithNameTagsAndFileInfo)
{
    EXPECT_STREQ(osg::getName(m_root.get()), "Rad 7");
    EXPECT_EQ(osg::tagsOf(m_root.get()), (std::vector<std::string>{"first", "second"}));
    const auto info = osg::fcCast<osg::FileInfo>(m_root->findAttachment(osg::FileInfoBase::_type.getGroupId(), 3));
    ASSERT_TRUE(info);
    EXPECT_EQ(info->getFileName(), "/cad/Rad 7.stp");
    EXPECT_EQ(info->getFormat(), "STEP");
    EXPECT_EQ(info->getImportAppliedMaterialAssetsUrl(), "asset://a");
    const auto reference = coreAt<osg::ExtReference>(m_root);
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->getState(), 2u);
    EXPECT_EQ(reference->getSourceFile()->getPath(), "/cad/Rad 7.stp");
    EXPECT_EQ(reference->getSourceFile()->getRelativePath(), "Rad 7.stp");
    EXPECT_FALSE(reference->getSmartFile());
    EXPECT_TRUE(reference->isIdentity());
}

TEST_F(VersionOneTest, TransformsHaveMatrixComponentsAndFlags)
{
    ASSERT_EQ(m_root->getNChildren(), 2u);
    const auto turned = coreAt<osg::Transform3D>(m_root->getChild(0));
    ASSERT_TRUE(turned);
    EXPECT_EQ(turned->getMatrix(), (osg::Matrix{{0, 2, 0, 0, -2, 0, 0, 0, 0, 0, 2, 0, 11, 12, 13, 1}}));
    EXPECT_EQ(turned->getFlags(), 4u);
    const osg::NodePtr group = m_root->getChild(1);
    ASSERT_EQ(group->getNChildren(), 2u);
    const auto byHand = coreAt<osg::Transform3D>(group->getChild(0));
    ASSERT_TRUE(byHand);
    EXPECT_TRUE(group->getChild(1)->getCore() == byHand);
    EXPECT_EQ(byHand->getTranslation(), (osg::Vec3f{7, -8, 9}));
    EXPECT_EQ(byHand->getRotation(), (osg::Quaternion{0, 0, -0.6f, -0.8f}));
    EXPECT_EQ(byHand->getScale(), (osg::Vec3f{-2, 3, 0.5f}));
}

TEST_F(VersionOneTest, TheMeshHasItsMaterialAndItsBRep)
{
    const osg::NodePtr node = m_root->getChild(0)->getChild(0);
    EXPECT_FALSE(node->isActive());
    const auto geometry = coreAt<osg::Geometry>(node);
    ASSERT_TRUE(geometry);
    const auto material = osg::fcCast<osg::SimpleMaterial>(geometry->getMaterial());
    ASSERT_TRUE(material);
    EXPECT_STREQ(osg::getName(material), "brass");
    EXPECT_EQ(material->getDiffuse(), (osg::Color3f{0.25f, 0.5f, 0.75f}));
    EXPECT_EQ(material->getTransparency(), 0.125f);
    EXPECT_TRUE(coreAt<osg::MaterialGroup>(m_root->getChild(1))->getMaterial() == material);
    const osg::Mesh& mesh = osg::GeometryAccess::mesh(*geometry);
    ASSERT_EQ(mesh.positions.size(), 3u);
    EXPECT_EQ(mesh.positions[2], (osg::Vec3f{7, 8, 10}));
    ASSERT_EQ(mesh.normals.size(), 3u);
    EXPECT_EQ(mesh.normals[1], (osg::Vec3f{0, 1, 0}));
    ASSERT_EQ(mesh.triangles.size(), 3u);
    EXPECT_EQ(mesh.triangles[1], 1u);
    ASSERT_EQ(mesh.faces.size(), 1u);
    EXPECT_EQ(mesh.faces[0], (osg::FaceRange{0, 1}));
    ASSERT_EQ(mesh.brep.size(), 2u);
    EXPECT_EQ(mesh.brep[1], std::byte{0xE9});
}

} // namespace
