#include "scene/Bounds.h"

#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Transform.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Mesh.h"
#include "tests/scene/SceneGraphTest.h"

#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <vector>

namespace
{

using NodeRef = osg::RefPtr<osg::NodePtr>;

class BoundsTest : public SceneGraphTest
{
protected:
    void SetUp() override { m_root = NodeRef(osg::makeNodeFor(osg::Group::create())); }
    void TearDown() override
    {
        m_root = NodeRef();
        SceneGraphTest::TearDown();
    }

    float number(float least, float most) { return std::uniform_real_distribution<float>(least, most)(m_random); }

    std::shared_ptr<const osg::Mesh> mesh(int vertices)
    {
        auto made = std::make_shared<osg::Mesh>();
        std::vector<osg::Vec3f> positions;
        std::vector<std::uint32_t> points;
        for (int i = 0; i < vertices; ++i) {
            positions.push_back({number(-5, 9), number(-3, 3), number(0, 1)});
            points.push_back(std::uint32_t(i));
        }
        made->positions = std::move(positions);
        made->points = std::move(points);
        return made;
    }

    osg::Matrix matrix()
    {
        osg::Matrix m;
        for (unsigned i = 0; i < 12; ++i)
            if (i % 4 != 3)
                m[i] = number(-2, 2);
        for (unsigned i = 12; i < 15; ++i)
            m[i] = number(-100, 100);
        return m;
    }

    static void place(const osg::NodePtr& parent, const std::shared_ptr<const osg::Mesh>& mesh, const osg::Matrix& m)
    {
        const osg::TransformPtr transform = osg::TransformBase::create();
        transform->setMatrix(m);
        const osg::NodePtr node = osg::makeNodeFor(transform);
        const osg::GeometryPtr geometry = osg::GeometryBase::create();
        osg::GeometryAccess::setMesh(*geometry, mesh);
        node->addChild(osg::makeNodeFor(geometry));
        parent->addChild(node);
    }

    /// What all vertices say, each by itself.
    static void add(osg::Box& box, const osg::Mesh& mesh, const osg::Matrix& m)
    {
        for (const osg::Vec3f& p : mesh.positions) {
            double placed[3];
            for (unsigned row = 0; row < 3; ++row)
                placed[row] = double(m[row]) * double(p.x) + double(m[row + 4]) * double(p.y) +
                              double(m[row + 8]) * double(p.z) + double(m[row + 12]);
            box.add(placed[0], placed[1], placed[2]);
        }
    }

    std::mt19937 m_random{7};
    NodeRef m_root;
};

} // namespace

TEST_F(BoundsTest, ManyPlacesOfFewMeshesGiveTheBoxOfAllVertices)
{
    for (int scene = 0; scene < 20; ++scene) {
        const NodeRef root(osg::makeNodeFor(osg::Group::create()));
        const std::vector<std::shared_ptr<const osg::Mesh>> meshes = {mesh(1), mesh(2), mesh(50)};
        osg::Box expected;
        for (int i = 0; i < 200; ++i) {
            const osg::Matrix m = matrix();
            place(root.get(), meshes[std::size_t(i) % 3], m);
            add(expected, *meshes[std::size_t(i) % 3], m);
        }
        const osg::Box box = osg::worldBounds(root.get());
        for (int axis = 0; axis < 3; ++axis) {
            EXPECT_EQ(box.low[axis], expected.low[axis]);
            EXPECT_EQ(box.high[axis], expected.high[axis]);
        }
    }
}

TEST_F(BoundsTest, APlaceThatReachesALittleFurtherCounts)
{
    const auto flat = mesh(20);
    osg::Matrix m;
    place(m_root.get(), flat, m);
    const osg::Box before = osg::worldBounds(m_root.get());
    m[13] = std::ldexp(1.0f, -20);
    place(m_root.get(), flat, m);
    EXPECT_EQ(osg::worldBounds(m_root.get()).high[1], before.high[1] + double(m[13]));
}

TEST_F(BoundsTest, VerticesThatNothingUsesOrThatAreNotFiniteDoNotCount)
{
    auto odd = std::make_shared<osg::Mesh>();
    const float infinity = std::numeric_limits<float>::infinity();
    odd->positions = std::vector<osg::Vec3f>{{1, 2, 3}, {infinity, 0, 0}, {100, 100, 100}};
    odd->points = std::vector<std::uint32_t>{0, 1, 7};
    place(m_root.get(), odd, osg::Matrix());
    place(m_root.get(), odd, osg::Matrix());
    const osg::Box box = osg::worldBounds(m_root.get());
    EXPECT_EQ(box.low[0], 1);
    EXPECT_EQ(box.high[2], 3);
}

TEST_F(BoundsTest, NothingHasAnEmptyBox)
{
    EXPECT_TRUE(osg::worldBounds(m_root.get()).isEmpty());
    EXPECT_TRUE(osg::worldBounds({}).isEmpty());
}
