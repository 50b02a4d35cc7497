#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGUtils/znOptimize.h"
#include "tests/standalone/znOpenSGUtils/TreeTest.h"

#include <limits>

namespace
{

using testing::ElementsAre;

class TransformFlushingTest : public TreeTest
{
};

TEST_F(TransformFlushingTest, VerticesAndNormalsTakeTheTransformsIn)
{
    const osg::NodePtr outer = add(root, transform(turned({10, 20, 30})));
    const osg::NodePtr inner = add(outer, transform(placed({2, 1, 4}, {1, 0, 0})));
    const osg::NodePtr part = add(inner, geometry());
    znOptimize::flushTransformationsKeepFaceNormals(root);
    EXPECT_TRUE(matrixOf(outer).isIdentity());
    EXPECT_TRUE(matrixOf(inner).isIdentity());
    EXPECT_EQ(listed(meshOf(part).positions), (Rows{{8, 23, 42}, {8, 31, 42}, {2, 23, 42}}));
    EXPECT_EQ(listed(meshOf(part).normals), (Rows{{0, 0, 1}, {0, 0, 1}, {0, 0, 1}}));
    EXPECT_THAT(meshOf(part).triangles.span(), ElementsAre(0, 1, 2));
    EXPECT_TRUE(meshOf(part).brep.empty());
}

TEST_F(TransformFlushingTest, NormalsStayUprightOnFacesThatAreStretched)
{
    osg::Mesh mesh = triangle();
    mesh.normals = std::vector<osg::Vec3f>(3, {0.6f, 0.8f, 0});
    const osg::NodePtr part = add(add(root, transform(placed({3, 1, 1}, {}))), geometry(mesh));
    znOptimize::flushTransformationsKeepFaceNormals(root);
    // (0.6 / 3, 0.8) as a unit vector.
    EXPECT_NEAR(meshOf(part).normals[0].x, 0.242535625, 1e-6);
    EXPECT_NEAR(meshOf(part).normals[0].y, 0.970142500, 1e-6);
}

TEST_F(TransformFlushingTest, AMirrorKeepsFacesOutward)
{
    const osg::NodePtr part = add(add(root, transform(placed({-1, 1, 1}, {}))), geometry());
    znOptimize::flushTransformationsKeepFaceNormals(root);
    EXPECT_EQ(listed(meshOf(part).positions), (Rows{{-1, 2, 3}, {-5, 2, 3}, {-1, 8, 3}}));
    EXPECT_THAT(meshOf(part).triangles.span(), ElementsAre(0, 2, 1));
    EXPECT_EQ(listed(meshOf(part).normals)[0], (std::vector<float>{0, 0, 1}));
}

TEST_F(TransformFlushingTest, UsesOfOneGeometryStaySharedUnderOnePlacement)
{
    const osg::GeometryPtr shared = geometry();
    const osg::NodePtr a = add(add(root, transform(placed({1, 1, 1}, {100, 0, 0}))), shared);
    const osg::NodePtr b = add(add(root, transform(placed({1, 1, 1}, {100, 0, 0}))), shared);
    const osg::NodePtr c = add(add(root, transform(placed({1, 1, 1}, {0, 50, 0}))), shared);
    znOptimize::flushTransformationsKeepFaceNormals(root);
    EXPECT_EQ(a->getCore(), b->getCore());
    EXPECT_NE(a->getCore(), c->getCore());
    EXPECT_EQ(listed(meshOf(a).positions)[0], (std::vector<float>{101, 2, 3}));
    EXPECT_EQ(listed(meshOf(c).positions)[0], (std::vector<float>{1, 52, 3}));
}

TEST_F(TransformFlushingTest, ATransformCoreThatTwoNodesShareCountsForBoth)
{
    const osg::TransformPtr shared = transform(placed({1, 1, 1}, {100, 0, 0}));
    const osg::NodePtr a = add(add(root, shared), geometry());
    const osg::NodePtr b = add(add(root, shared), geometry());
    znOptimize::flushTransformationsKeepFaceNormals(root);
    EXPECT_EQ(listed(meshOf(a).positions)[0], (std::vector<float>{101, 2, 3}));
    EXPECT_EQ(listed(meshOf(b).positions)[0], (std::vector<float>{101, 2, 3}));
}

TEST_F(TransformFlushingTest, AReferenceKeepsItsPlaceAndItsContentItsCoordinates)
{
    const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
    core->setMatrix(placed({1, 1, 1}, {0, 0, 5}));
    const osg::NodePtr reference = add(add(root, transform(placed({1, 1, 1}, {100, 0, 0}))), core);
    const osg::NodePtr part = add(add(reference, transform(placed({1, 1, 1}, {0, 7, 0}))), geometry());
    znOptimize::flushTransformationsKeepFaceNormals(root);
    EXPECT_EQ(matrixOf(reference), placed({1, 1, 1}, {100, 0, 5}));
    EXPECT_EQ(listed(meshOf(part).positions)[0], (std::vector<float>{1, 9, 3}));
}

TEST_F(TransformFlushingTest, AScaleGoesIntoTheVerticesAndTheRestStays)
{
    osg::Matrix matrix = turned({10, 20, 30});
    for (unsigned i : {0u, 1u, 4u, 5u, 10u})
        matrix[i] *= 2;
    const osg::NodePtr above = add(root, transform(matrix));
    const osg::NodePtr part = add(add(above, osg::Group::create()), geometry());
    znOptimize::flushSelectedTransformationScales(part);
    for (unsigned i = 0; i < 16; ++i)
        EXPECT_NEAR(matrixOf(above)[i], turned({10, 20, 30})[i], 1e-6) << i;
    const Rows positions = listed(meshOf(part).positions);
    EXPECT_NEAR(positions[1][0], 10, 1e-5);
    EXPECT_NEAR(positions[1][1], 4, 1e-5);
    EXPECT_NEAR(positions[1][2], 6, 1e-5);
}

TEST_F(TransformFlushingTest, AMirroringScaleKeepsFacesOutward)
{
    const osg::NodePtr above = add(root, transform(placed({1, 1, -2}, {0, 0, 9})));
    const osg::NodePtr part = add(above, geometry());
    znOptimize::flushSelectedTransformationScales(part);
    const osg::Matrix left = matrixOf(above);
    const osg::Mesh& mesh = meshOf(part);
    // In the whole tree the corner lies where it lay, and the winding follows the mirror.
    EXPECT_NEAR(left[2] * mesh.positions[0].x + left[6] * mesh.positions[0].y + left[10] * mesh.positions[0].z +
                    left[14],
                9 - 2 * 3, 1e-5);
    EXPECT_THAT(mesh.triangles.span(), ElementsAre(0, 2, 1));
    EXPECT_GT(left[0] * (left[5] * left[10] - left[6] * left[9]), 0);
}

TEST_F(TransformFlushingTest, PartsThatAreScaledAlikeStayOneGeometry)
{
    const osg::GeometryPtr shared = geometry();
    std::vector<osg::NodePtr> parts;
    for (int i = 0; i < 5; ++i)
        parts.push_back(add(add(root, transform(placed({2, 2, 2}, {float(i), 0, 0}))), shared));
    const osg::NodePtr other = add(add(root, transform(placed({3, 3, 3}, {}))), shared);
    for (const osg::NodePtr& part : parts)
        znOptimize::flushSelectedTransformationScales(part);
    znOptimize::flushSelectedTransformationScales(other);
    for (const osg::NodePtr& part : parts) {
        EXPECT_EQ(part->getCore(), parts[0]->getCore());
        EXPECT_EQ(listed(meshOf(part).positions)[1], (std::vector<float>{10, 4, 6}));
    }
    EXPECT_NE(other->getCore(), parts[0]->getCore());
    EXPECT_EQ(listed(meshOf(other).positions)[1], (std::vector<float>{15, 6, 9}));
}

TEST_F(TransformFlushingTest, OneCallServesAllGeometriesBelowTheTransform)
{
    const osg::NodePtr above = add(root, transform(placed({2, 2, 2}, {})));
    const osg::NodePtr a = add(above, geometry());
    const osg::NodePtr b = add(above, geometry());
    znOptimize::flushSelectedTransformationScales(a);
    znOptimize::flushSelectedTransformationScales(b);
    EXPECT_EQ(listed(meshOf(b).positions)[1], (std::vector<float>{10, 4, 6}));
    EXPECT_TRUE(matrixOf(above).isIdentity());
}

TEST_F(TransformFlushingTest, TransformsAndReferencesBelowTakeTheScaleInTheirTurn)
{
    const osg::NodePtr above = add(root, transform(placed({2, 2, 2}, {})));
    const osg::NodePtr below = add(above, transform(placed({1, 1, 1}, {5, 0, 0})));
    const osg::NodePtr part = add(below, geometry());
    const osg::NodePtr reference = add(above, osg::ExtReferenceBase::create());
    znOptimize::flushSelectedTransformationScales(part);
    EXPECT_TRUE(matrixOf(above).isIdentity());
    EXPECT_EQ(matrixOf(below), placed({1, 1, 1}, {10, 0, 0}));
    EXPECT_EQ(listed(meshOf(part).positions)[1], (std::vector<float>{10, 4, 6}));
    EXPECT_EQ(matrixOf(reference), placed({2, 2, 2}, {}));
}

TEST_F(TransformFlushingTest, RigidAndBrokenTransformsAreLeftAlone)
{
    const osg::NodePtr rigid = add(add(root, transform(turned({1, 2, 3}))), geometry());
    const float none = std::numeric_limits<float>::quiet_NaN();
    const osg::NodePtr broken = add(add(root, transform(placed({none, 1, 1}, {}))), geometry());
    const auto before = osg::GeometryAccess::sharedMesh(*osg::fcCast<osg::Geometry>(rigid->getCore()));
    znOptimize::flushSelectedTransformationScales(rigid);
    znOptimize::flushSelectedTransformationScales(broken);
    znOptimize::flushSelectedTransformationScales({});
    EXPECT_EQ(osg::GeometryAccess::sharedMesh(*osg::fcCast<osg::Geometry>(rigid->getCore())), before);
    EXPECT_EQ(listed(meshOf(broken).positions)[1], (std::vector<float>{5, 2, 3}));
}

} // namespace
