#include "geometry/GeometryGathering.h"

#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/EditAudit.h"
#include "scene/NodeWalk.h"
#include "scene/Tags.h"
#include "tests/geometry/MeshMeasures.h"
#include "tests/standalone/znOpenSGUtils/TreeTest.h"

#include <ctime>
#include <limits>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class GatheringTest : public TreeTest
{
protected:
    static osg::Mesh plain()
    {
        osg::Mesh mesh = triangle();
        mesh.brep = {};
        return mesh;
    }
    static osg::GeometryPtr part() { return geometry(plain()); }

    void TearDown() override
    {
        m_red = osg::SimpleMaterialPtr();
        m_blue = osg::SimpleMaterialPtr();
        TreeTest::TearDown();
    }

    osg::NodePtr addPart(const osg::NodePtr& parent, const osg::GeometryPtr& core, const char* name = nullptr)
    {
        if (!core->getMaterial())
            core->setMaterial(m_red);
        return add(parent, core, name);
    }
    osg::NodePtr addPlace(const osg::NodePtr& parent, const osg::Matrix& matrix, const char* name = nullptr)
    {
        return add(parent, transform(matrix), name);
    }
    void gather() const { geometry::gatherGeometry(file, choice); }
    std::size_t nodesBelow() const { return osg::parentsFirst(file).size() - 1; }

    const osg::NodePtr file = addGroup(m_session.sceneRoot(), "file");
    geometry::GatheringChoice choice;
    osg::RefPtr<osg::SimpleMaterialPtr> m_red{osg::SimpleMaterial::create()};
    osg::RefPtr<osg::SimpleMaterialPtr> m_blue{osg::SimpleMaterial::create()};
};

TEST_F(GatheringTest, PlacesWithoutANameDoNotPartGeometries)
{
    addPart(addPlace(addPlace(file, placed({2, 2, 2}, {10, 0, 0})), turned({0, 7, 0})), part(), "first");
    addPart(add(file, osg::Group::create()), part(), "second");
    const osg::EditAudit audit;
    gather();
    EXPECT_TRUE(audit.unbracketed().empty());
    ASSERT_EQ(nodesBelow(), 1u);
    EXPECT_THAT(childNames(file), ElementsAre("second")) << "the shallower comes first";
    const osg::Mesh& mesh = meshOf(file->getChild(0));
    EXPECT_EQ(listed(mesh.positions), (Rows{{1, 2, 3}, {5, 2, 3}, {1, 8, 3}, {6, 16, 6}, {6, 24, 6}, {-6, 16, 6}}));
    EXPECT_THAT(mesh.triangles.span(), ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_DOUBLE_EQ(measuresOf(mesh).area, 12 + 48);
}

TEST_F(GatheringTest, AMirroredPlaceKeepsFrontsOutside)
{
    addPart(file, part());
    addPart(addPlace(file, placed({1, 1, -1}, {})), part());
    gather();
    const osg::Mesh& mesh = meshOf(file->getChild(0));
    EXPECT_THAT(mesh.triangles.span(), ElementsAre(0, 1, 2, 3, 5, 4));
    EXPECT_EQ(listed(mesh.normals), (Rows{{0, 0, 1}, {0, 0, 1}, {0, 0, 1}, {0, 0, -1}, {0, 0, -1}, {0, 0, -1}}));
}

TEST_F(GatheringTest, WhatHasANameKeepsItsPartsToItself)
{
    const osg::NodePtr wheel = addPlace(file, placed({2, 2, 2}, {}), "wheel");
    addPart(addPlace(wheel, placed({1, 1, 1}, {9, 0, 0})), part());
    addPart(wheel, part());
    addPart(file, part());
    gather();
    EXPECT_EQ(nodesBelow(), 3u);
    EXPECT_EQ(wheel->getNChildren(), 1u);
    EXPECT_EQ(listed(meshOf(wheel->getChild(0)).positions),
              (Rows{{1, 2, 3}, {5, 2, 3}, {1, 8, 3}, {10, 2, 3}, {14, 2, 3}, {10, 8, 3}}));
    EXPECT_EQ(matrixOf(wheel), placed({2, 2, 2}, {}));
}

TEST_F(GatheringTest, NamesThatSayNothingDoNotCount)
{
    const osg::NodePtr numbered = addPlace(file, placed({2, 2, 2}, {}), "o7");
    addPart(numbered, part(), "o8");
    addPart(file, part());
    choice.nameless = {numbered.get()};
    gather();
    EXPECT_EQ(nodesBelow(), 1u);
}

TEST_F(GatheringTest, WhatIsKeptOrHeldOrSaysSomethingElseStays)
{
    const osg::NodePtr kept = add(file, osg::Group::create()), tagged = add(file, osg::Group::create()),
                       hidden = add(file, osg::Group::create()), flat = addPlace(file, placed({1, 1, 0}, {})),
                       endless = addPlace(file, placed({1, 1, 1}, {std::numeric_limits<float>::infinity(), 0, 0})),
                       named = add(file, osg::Group::create());
    const osg::RefPtr<osg::NodePtr> held(add(file, osg::Group::create()));
    osg::setTags(tagged, {"colour"});
    osg::setTags(named->getCore(), {"of the core"});
    hidden->setActive(false);
    choice.kept = {kept.get()};
    for (const osg::NodePtr& node : {kept, tagged, hidden, flat, endless, named, held.get()})
        addPart(node, part());
    const osg::NodePtr keptPart = addPart(file, part(), "kept");
    choice.kept.insert(keptPart.get());
    addPart(file, part(), "a");
    const osg::RefPtr<osg::NodePtr> heldPart(addPart(file, part(), "held"));
    gather();
    EXPECT_EQ(nodesBelow(), 17u);
    addPart(file, part(), "b");
    gather();
    EXPECT_EQ(nodesBelow(), 17u) << "b went into a";
}

TEST_F(GatheringTest, AGeometryOfSeveralPlacesStaysOneAndWhereItIs)
{
    const osg::GeometryPtr wheel = part();
    const osg::NodePtr left = addPlace(file, placed({1, 1, 1}, {5, 0, 0}));
    addPart(left, wheel);
    addPart(addPlace(file, placed({1, 1, 1}, {-5, 0, 0})), wheel);
    addPart(left, part());
    addPart(file, part());
    gather();
    EXPECT_EQ(nodesBelow(), 5u);
    EXPECT_EQ(left->getNChildren(), 1u);
    EXPECT_EQ(wheel->getRefCount(), 2u);
    EXPECT_EQ(listed(meshOf(left->getChild(0)).positions), (Rows{{1, 2, 3}, {5, 2, 3}, {1, 8, 3}}));
}

TEST_F(GatheringTest, GeometriesThatShareArraysStay)
{
    const osg::Mesh mesh = plain();
    addPart(file, geometry(mesh));
    addPart(file, geometry(mesh));
    addPart(file, part());
    gather();
    EXPECT_EQ(nodesBelow(), 3u);
}

TEST_F(GatheringTest, ExactSurfacesStayWhereTheyAre)
{
    const osg::NodePtr place = addPlace(file, placed({1, 1, 1}, {5, 0, 0}));
    addPart(place, geometry());
    addPart(file, geometry());
    gather();
    EXPECT_EQ(nodesBelow(), 3u);
    EXPECT_EQ(meshOf(place->getChild(0)).brep.size(), 7u);
}

TEST_F(GatheringTest, OneWithoutCompanyStaysInItsPlace)
{
    const osg::NodePtr place = addPlace(file, placed({1, 1, 1}, {5, 0, 0}));
    const osg::GeometryPtr other = part();
    other->setMaterial(m_blue);
    addPart(place, other);
    addPart(file, part());
    gather();
    EXPECT_EQ(nodesBelow(), 3u);
    EXPECT_EQ(matrixOf(place), placed({1, 1, 1}, {5, 0, 0}));
    EXPECT_EQ(listed(meshOf(place->getChild(0)).positions), (Rows{{1, 2, 3}, {5, 2, 3}, {1, 8, 3}}));
}

TEST_F(GatheringTest, PlacesThatHoldNothingGo)
{
    add(add(add(file, osg::Group::create()), transform(placed({1, 1, 1}, {5, 0, 0}))), osg::Group::create());
    add(file, osg::Group::create(), "box");
    gather();
    EXPECT_THAT(childNames(file), ElementsAre("box"));
}

TEST_F(GatheringTest, OnesThatArePutTogetherHaveNoMoreVerticesThanWanted)
{
    for (int i = 0; i < 5; ++i)
        addPart(add(file, osg::Group::create()), part());
    choice.mostVertices = 7;
    gather();
    ASSERT_EQ(nodesBelow(), 3u);
    std::vector<std::size_t> sizes;
    for (unsigned i = 0; i < 3; ++i)
        sizes.push_back(meshOf(file->getChild(i)).positions.size());
    EXPECT_THAT(sizes, ElementsAre(6, 6, 3));
}

TEST_F(GatheringTest, LinesPointsAndColoursComeAlong)
{
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{1, 2, 3}, {4, 5, 6}};
    mesh.colors = std::vector<osg::Color4f>{{1, 0, 0, 1}, {0, 0.5f, 0, 1}};
    mesh.lines = std::vector<std::uint32_t>{1, 0};
    mesh.points = std::vector<std::uint32_t>{1};
    osg::Mesh second = mesh;
    second.positions = std::vector<osg::Vec3f>{{7, 8, 9}, {10, 11, 12}};
    addPart(addPlace(file, placed({1, 1, 1}, {100, 0, 0})), geometry(mesh));
    addPart(file, geometry(second));
    gather();
    ASSERT_EQ(nodesBelow(), 1u);
    const osg::Mesh& all = meshOf(file->getChild(0));
    EXPECT_EQ(listed(all.positions), (Rows{{7, 8, 9}, {10, 11, 12}, {101, 2, 3}, {104, 5, 6}}));
    EXPECT_THAT(all.lines.span(), ElementsAre(1, 0, 3, 2));
    EXPECT_THAT(all.points.span(), ElementsAre(1, 3));
    EXPECT_FLOAT_EQ(all.colors[3].green, 0.5f);
}

TEST_F(GatheringTest, DoubledTreesTakeTwiceTheTime)
{
    const auto secondsFor = [this](unsigned count) {
        const osg::RefPtr<osg::NodePtr> tree(osg::makeNodeFor(osg::Group::create()));
        for (unsigned i = 0; i < count; ++i) {
            addPart(tree.get(), part(), nullptr)->setActive(i % 2 == 0);
            addPart(addPlace(tree.get(), placed({1, 1, 1}, {float(i), 0, 0})), part());
        }
        choice.mostVertices = 300;
        const std::clock_t begin = std::clock();
        geometry::gatherGeometry(tree.get(), choice);
        return double(std::clock() - begin) / CLOCKS_PER_SEC;
    };
    secondsFor(2000);
    const double once = secondsFor(20000);
    EXPECT_LT(secondsFor(40000), 2.3 * once + 0.1);
}

} // namespace
