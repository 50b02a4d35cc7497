#include "host/znInterfaces/znInterfaceFactory.h"
#include "host/znInterfaces/znReferenceInterface.h"
#include "host/znKernel/znFileIO.h"
#include "host/znKernel/znFileIOHelper.h"
#include "host/znKernel/znPtxHelper.h"
#include "host/znOpenSGExt/FileInfo.h"
#include "standalone/OSGSystem/Bounds.h"
#include "standalone/OSGSystem/Tags.h"
#include "standalone/znKernel/KernelState.h"
#include "tests/standalone/znOpenSGUtils/TreeTest.h"
#include "tests/support/QtPrinters.h"

namespace
{

using testing::ElementsAre;

class ImportTransformationsTest : public TreeTest
{
protected:
    static void apply(const osg::NodePtr& node, bool center, bool ground)
    {
        znFileIO::applyGeometryImportTransformations(node, QStringLiteral("a.stp"), false, center, ground);
    }
    static std::vector<double> boxOf(const osg::NodePtr& node)
    {
        const osg::Box box = osg::worldBounds(node);
        return {box.low[0], box.low[1], box.low[2], box.high[0], box.high[1], box.high[2]};
    }
};

// The triangle's box is (1, 2, 3) to (5, 8, 3).

TEST_F(ImportTransformationsTest, TheMiddleComesToTheOrigin)
{
    add(add(root, transform(placed({1, 1, 1}, {100, 0, 0}))), geometry());
    add(root, geometry());
    apply(root, true, false);
    EXPECT_THAT(boxOf(root), ElementsAre(-52, -3, 0, 52, 3, 0));
    EXPECT_EQ(matrixOf(root), placed({1, 1, 1}, {-53, -5, -3}));
    EXPECT_EQ(nameOf(root), "Root");
}

TEST_F(ImportTransformationsTest, TheLowestPointComesToTheGround)
{
    add(root, geometry());
    apply(root, false, true);
    EXPECT_THAT(boxOf(root), ElementsAre(1, 2, 0, 5, 8, 0));
}

TEST_F(ImportTransformationsTest, TheGroundDecidesOnTheHeight)
{
    osg::Mesh mesh = triangle();
    mesh.positions = std::vector<osg::Vec3f>{{1, 2, 3}, {5, 2, 3}, {1, 8, 13}};
    add(root, geometry(mesh));
    apply(root, true, true);
    EXPECT_THAT(boxOf(root), ElementsAre(-2, -3, 0, 2, 3, 10));
}

TEST_F(ImportTransformationsTest, ATransformOfTheRootAndOfItsParentsCounts)
{
    const osg::NodePtr parent = add(root, transform(turned({10, 20, 30})));
    const osg::NodePtr tree = add(parent, transform(placed({2, 2, 2}, {0, 0, 1})), "tree");
    add(tree, geometry());
    apply(tree, true, true);
    EXPECT_THAT(boxOf(tree), ElementsAre(-6, -4, 0, 6, 4, 0));
    EXPECT_EQ(matrixOf(parent), turned({10, 20, 30}));
}

TEST_F(ImportTransformationsTest, AGeometryAsRootIsPutBelowATransform)
{
    const osg::NodePtr part = add(root, geometry(), "part");
    apply(part, true, false);
    EXPECT_THAT(boxOf(root), ElementsAre(-2, -3, 0, 2, 3, 0));
    EXPECT_EQ(part->getParent()->getParent(), root);
}

TEST_F(ImportTransformationsTest, NothingMovesUnaskedOrWithoutVertices)
{
    add(root, geometry());
    apply(root, false, false);
    EXPECT_THAT(boxOf(root), ElementsAre(1, 2, 3, 5, 8, 3));
    const osg::NodePtr empty = addGroup(root, "empty");
    apply(empty, true, true);
    EXPECT_EQ(empty->getCore()->getType().getId(), osg::Group::_type.getId());
    apply({}, true, true);
}

TEST_F(ImportTransformationsTest, ATreeIsConvertedUntilTheMarkIsTakenAway)
{
    const osg::NodePtr tree = addGroup(root, "tree");
    EXPECT_FALSE(znPtxHelper::isConvertedPtxTree(tree));
    EXPECT_FALSE(znPtxHelper::isConvertedPtxTree({}));
    osg::setTags(tree, {"ptx::format=STEP", "ptx::converted", "mine"});
    EXPECT_TRUE(znPtxHelper::isConvertedPtxTree(tree));
    znPtxHelper::removePtxTag(tree);
    EXPECT_FALSE(znPtxHelper::isConvertedPtxTree(tree));
    EXPECT_THAT(osg::tagsOf(tree), ElementsAre("ptx::format=STEP", "mine"));
    znPtxHelper::removePtxTag(tree);
    znPtxHelper::removePtxTag({});
    EXPECT_EQ(osg::tagsOf(tree).size(), 2u);
}

TEST_F(ImportTransformationsTest, TheFileInfoNamesTheFile)
{
    EXPECT_EQ(znFileIOHelper::getFileNameFromFileInfo(root), QString());
    EXPECT_EQ(znFileIOHelper::getFileNameFromFileInfo({}), QString());
    const osg::FileInfoPtr info = osg::FileInfoBase::create();
    info->setFileName("/cars/größe 轴.stp");
    root->addAttachment(info);
    EXPECT_EQ(znFileIOHelper::getFileNameFromFileInfo(root), QString::fromUtf8("/cars/größe 轴.stp"));
}

TEST_F(ImportTransformationsTest, TheReferenceInterfaceForwardsToTheLivingSession)
{
    auto* references =
        dynamic_cast<znReferenceInterface*>(znInterfaceFactory::the()->get(typeid(znReferenceInterface)));
    ASSERT_NE(references, nullptr);
    references->notifyReferences(root, 18, 0);
    references->notifyReferences({}, 7, 5);
    const auto& notices = m_session.kernel().referenceNotices;
    ASSERT_EQ(notices.size(), 2u);
    EXPECT_EQ(notices[0].rootId, root->getContainerId());
    EXPECT_EQ(notices[0].code, 18);
    EXPECT_EQ(notices[0].argument, 0);
    EXPECT_EQ(notices[1].rootId, 0u);
    EXPECT_EQ(notices[1].code, 7);
    EXPECT_EQ(notices[1].argument, 5);
    EXPECT_EQ(znInterfaceFactory::the()->get(typeid(int)), nullptr);
    EXPECT_EQ(znInterfaceFactory::the()->get(typeid(znReferenceInterface)), references);
}

TEST(ReferenceInterfaceTest, OutlivesSessions)
{
    auto* references =
        dynamic_cast<znReferenceInterface*>(znInterfaceFactory::the()->get(typeid(znReferenceInterface)));
    ASSERT_NE(references, nullptr);
    references->notifyReferences({}, 18, 0);
    znStandaloneSession session;
    EXPECT_TRUE(session.kernel().referenceNotices.empty());
    references->notifyReferences({}, 18, 0);
    EXPECT_EQ(session.kernel().referenceNotices.size(), 1u);
}

} // namespace
