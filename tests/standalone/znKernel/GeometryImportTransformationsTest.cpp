#include "standalone/znKernel/GeometryImportTransformations.h"

#include "host/znKernel/znFileIO.h"
#include "scene/Bounds.h"
#include "scene/EditAudit.h"
#include "tests/standalone/znOpenSGUtils/TreeTest.h"

namespace
{

using testing::ElementsAre;

class GeometryImportTransformationsTest : public TreeTest
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

TEST_F(GeometryImportTransformationsTest, TheMiddleComesToTheOrigin)
{
    add(add(root, transform(placed({1, 1, 1}, {100, 0, 0}))), geometry());
    add(root, geometry());
    apply(root, true, false);
    EXPECT_THAT(boxOf(root), ElementsAre(-52, -3, 0, 52, 3, 0));
    EXPECT_EQ(matrixOf(root), placed({1, 1, 1}, {-53, -5, -3}));
    EXPECT_EQ(nameOf(root), "Root");
}

TEST_F(GeometryImportTransformationsTest, TheLowestPointComesToTheGround)
{
    add(root, geometry());
    apply(root, false, true);
    EXPECT_THAT(boxOf(root), ElementsAre(1, 2, 0, 5, 8, 0));
}

TEST_F(GeometryImportTransformationsTest, TheGroundDecidesOnTheHeight)
{
    osg::Mesh mesh = triangle();
    mesh.positions = std::vector<osg::Vec3f>{{1, 2, 3}, {5, 2, 3}, {1, 8, 13}};
    add(root, geometry(mesh));
    apply(root, true, true);
    EXPECT_THAT(boxOf(root), ElementsAre(-2, -3, 0, 2, 3, 10));
}

TEST_F(GeometryImportTransformationsTest, ATransformOfTheRootAndOfItsParentsCounts)
{
    const osg::NodePtr parent = add(root, transform(turned({10, 20, 30})));
    const osg::NodePtr tree = add(parent, transform(placed({2, 2, 2}, {0, 0, 1})), "tree");
    add(tree, geometry());
    apply(tree, true, true);
    EXPECT_THAT(boxOf(tree), ElementsAre(-6, -4, 0, 6, 4, 0));
    EXPECT_EQ(matrixOf(parent), turned({10, 20, 30}));
}

TEST_F(GeometryImportTransformationsTest, AGeometryAsRootIsPutBelowATransform)
{
    const osg::NodePtr part = add(root, geometry(), "part");
    apply(part, true, false);
    EXPECT_THAT(boxOf(root), ElementsAre(-2, -3, 0, 2, 3, 0));
    EXPECT_EQ(part->getParent()->getParent(), root);
}

TEST_F(GeometryImportTransformationsTest, FieldsChangeWithinTheirBrackets)
{
    using Record = osg::EditAudit::Record;
    const osg::NodePtr moved = add(root, transform(placed({1, 1, 1}, {9, 0, 0})), "moved");
    const osg::NodePtr group = addGroup(root, "group"), part = add(root, geometry(), "part");
    const osg::NodePtr shared = add(root, transform(placed({1, 1, 1}, {4, 0, 0})), "shared");
    add(root, shared->getCore());
    for (const osg::NodePtr& node : {moved, group, shared})
        add(node, geometry());
    const osg::EditAudit audit;
    for (const osg::NodePtr& node : {moved, group, part, shared})
        apply(node, true, true);
    EXPECT_THAT(audit.unbracketed(), testing::IsEmpty());
    EXPECT_THAT(audit.idleBrackets(), testing::IsEmpty());
    EXPECT_EQ(audit.openBrackets(), 0u);
    const auto matrixOfCore = [](const osg::NodePtr& node) {
        return Record{node->getCore()->getContainerId(), node->getCore()->getType().getName(),
                      osg::TransformBase::MatrixFieldMask};
    };
    for (const osg::NodePtr& node : {moved, group, part->getParent(), shared})
        EXPECT_THAT(audit.brackets(), testing::Contains(matrixOfCore(node)));
    EXPECT_THAT(audit.brackets(),
                testing::Contains(Record{root->getContainerId(), "Node", osg::Node::ChildrenFieldMask}));
}

TEST_F(GeometryImportTransformationsTest, NothingMovesUnaskedOrWithoutVertices)
{
    add(root, geometry());
    apply(root, false, false);
    EXPECT_THAT(boxOf(root), ElementsAre(1, 2, 3, 5, 8, 3));
    const osg::NodePtr empty = addGroup(root, "empty");
    apply(empty, true, true);
    EXPECT_EQ(empty->getCore()->getType().getId(), osg::Group::_type.getId());
    apply({}, true, true);
}

} // namespace
