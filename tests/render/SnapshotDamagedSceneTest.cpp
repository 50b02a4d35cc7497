#include "geometry/rays/Surface.h"
#include "tests/render/RenderTest.h"

#include <cmath>
#include <cstring>
#include <limits>

#include <sys/mman.h>
#include <unistd.h>

namespace render
{

namespace
{

constexpr float huge = std::numeric_limits<float>::max();

class DamagedScene : public RenderTest
{
protected:
    /// The red cube of the framing tests, next to which `other` must neither show nor do harm.
    void expectOnlyTheCube(const osg::NodePtr& other)
    {
        const Root root = group({other, nodeOf(box({4, -30, 52}, {14, -20, 62}), material({0.8f, 0.1f, 0.1f}))});
        const QImage image = draw(root, plainOptions());
        EXPECT_EQ(drawnExtent(image), QRect(60, 10, 80, 80));
        EXPECT_EQ(count(image, [](QRgb pixel) { return !isBackdrop(pixel); }), 6400);
    }

    static std::shared_ptr<osg::Mesh> withIndices(const std::vector<std::uint32_t>& indices)
    {
        auto mesh = std::make_shared<osg::Mesh>();
        mesh->positions = std::vector<osg::Vec3f>{{5, -25, 53}, {6, -25, 53}, {6, -25, 54}};
        mesh->triangles = indices;
        mesh->lines = indices;
        mesh->points = indices;
        return mesh;
    }
};

} // namespace

TEST_F(DamagedScene, PositionsThatAreNotFiniteAreLeftOut)
{
    for (const float bad : {NAN, INFINITY, -INFINITY, huge}) {
        auto mesh = std::make_shared<osg::Mesh>();
        mesh->positions = std::vector<osg::Vec3f>{{5, -25, 53}, {bad, -25, 53}, {6, bad, 54}, {6, -25, bad}};
        mesh->triangles = std::vector<std::uint32_t>{0, 1, 2, 1, 2, 3, 0, 0, 3};
        mesh->lines = std::vector<std::uint32_t>{0, 1, 2, 3};
        mesh->points = std::vector<std::uint32_t>{1, 2, 3};
        expectOnlyTheCube(nodeOf(mesh, osg::MaterialPtr()));
    }
}

TEST_F(DamagedScene, IndicesOutOfRangeAreLeftOut)
{
    expectOnlyTheCube(nodeOf(withIndices({3, 0xFFFFFFFF, 70000, 0x80000000, 4, 5}), osg::MaterialPtr()));
}

TEST_F(DamagedScene, EmptyMeshesAndMissingMeshesAreNothing)
{
    expectOnlyTheCube(nodeOf(std::make_shared<osg::Mesh>(), osg::MaterialPtr()));
    expectOnlyTheCube(nodeOf(nullptr, osg::MaterialPtr()));
    expectOnlyTheCube(osg::Node::create());
}

TEST_F(DamagedScene, AnIncompleteTriangleIsNotDrawn)
{
    const auto mesh = box({4, -30, 52}, {14, -20, 62});
    std::vector<std::uint32_t> indices(mesh->triangles.begin(), mesh->triangles.end());
    indices.insert(indices.end(), {0, 1});
    mesh->triangles = indices;
    expectOnlyTheCube(nodeOf(mesh, material({0.8f, 0.1f, 0.1f})));
}

TEST_F(DamagedScene, DegenerateTrianglesAndLinesDoNoHarm)
{
    auto mesh = std::make_shared<osg::Mesh>();
    mesh->positions = std::vector<osg::Vec3f>{{5, -25, 53}, {5, -25, 53}, {6, -25, 53}, {7, -25, 53}};
    mesh->triangles = std::vector<std::uint32_t>{0, 0, 0, 0, 1, 2, 0, 2, 3};
    expectOnlyTheCube(nodeOf(mesh, osg::MaterialPtr()));
    mesh = std::make_shared<osg::Mesh>();
    mesh->positions = std::vector<osg::Vec3f>{{5, -25, 53}, {5, -25, 53}};
    mesh->lines = std::vector<std::uint32_t>{0, 1, 0, 0};
    expectOnlyTheCube(nodeOf(mesh, osg::MaterialPtr()));
}

TEST_F(DamagedScene, ArraysOfTheWrongLengthAreIgnored)
{
    const auto mesh = box({4, -30, 52}, {14, -20, 62});
    mesh->normals = std::vector<osg::Vec3f>{{0, 0, 1}};
    mesh->colors = std::vector<osg::Color4f>{{0, 1, 0, 1}, {0, 1, 0, 1}};
    mesh->faces = std::vector<osg::FaceRange>{{90, 4}, {7, 0xFFFFFFFF}};
    const Root root = nodeOf(mesh, material({0.8f, 0.1f, 0.4f}));
    SnapshotOptions options = plainOptions();
    options.featureLines = true;
    expectColor(draw(root, options).pixel(100, 50), 187, 34, 93, 2);
}

TEST_F(DamagedScene, UsesWithoutAFinitePlaceAreCounted)
{
    osg::Matrix nowhere;
    nowhere[12] = NAN;
    osg::Matrix away;
    away[0] = INFINITY;
    const auto cube = [] { return nodeOf(box({4, -30, 52}, {14, -20, 62}), material({0.8f, 0.1f, 0.1f})); };
    const Root root = group({placed(nowhere, cube()), placed(away, cube()),
                             placed(osg::scaleMatrix({1e30f, 1e30f, 1e30f}), cube()), cube()});
    const SnapshotResult result = renderSnapshot(root, plainOptions());
    EXPECT_EQ(result.leftOut, 3u);
    EXPECT_EQ(drawnExtent(result.image), QRect(60, 10, 80, 80));
}

TEST_F(DamagedScene, ATransformToOnePointShowsNothing)
{
    osg::Matrix point = osg::scaleMatrix({0, 0, 0});
    point[12] = 9;
    point[13] = -25;
    point[14] = 57;
    expectOnlyTheCube(placed(point, nodeOf(box({0, 0, 0}, {1, 2, 3}), osg::MaterialPtr())));
}

TEST_F(DamagedScene, MaterialsWithoutNumbersAreDrawn)
{
    const osg::SimpleMaterialPtr look = material({NAN, INFINITY, -7}, NAN);
    look->setEmission({NAN, 0, -INFINITY});
    const Root root = nodeOf(box({4, -30, 52}, {14, -20, 62}), look);
    EXPECT_EQ(drawnExtent(draw(root, plainOptions())), QRect(60, 10, 80, 80));
}

TEST_F(DamagedScene, ManyClearLayersComeToAnEnd)
{
    const osg::NodePtr sheets = group({});
    for (int i = 0; i < 300; ++i)
        sheets->addChild(nodeOf(wall(float(i) * 0.01f, 10), material({1, 0, 0}, 0.999f)));
    const Root root = sheets;
    EXPECT_EQ(drawnExtent(draw(root, plainOptions())), QRect(60, 10, 80, 80));
}

TEST_F(DamagedScene, ATreeOfGreatDepthIsDrawn)
{
    const osg::NodePtr top = group({});
    osg::NodePtr bottom = top;
    for (int i = 0; i < 100000; ++i) {
        const osg::NodePtr next = osg::makeNodeFor(osg::Group::create());
        bottom->addChild(next);
        bottom = next;
    }
    bottom->addChild(nodeOf(box({4, -30, 52}, {14, -20, 62}), material({0.8f, 0.1f, 0.1f})));
    top.addRef();
    EXPECT_EQ(drawnExtent(draw(top, plainOptions())), QRect(60, 10, 80, 80));
    // Taken down from the bottom, so that no destructor goes deep.
    while (bottom) {
        const osg::NodePtr parent = bottom->getParent();
        if (parent)
            parent->subChild(bottom);
        bottom = parent;
    }
    top.subRef();
}

TEST(ReadableMemory, EndsWithThePage)
{
    alignas(4096) static const char page[4096] = {};
    EXPECT_FALSE(geometry::rays::isReadablePast(page + 4096, 4));
    EXPECT_FALSE(geometry::rays::isReadablePast(page + 4093, 4));
    EXPECT_TRUE(geometry::rays::isReadablePast(page + 4092, 4));
    EXPECT_TRUE(geometry::rays::isReadablePast(page + 12, 4));
}

TEST_F(DamagedScene, ArraysThatEndWithTheirMemoryAreNotReadBeyond)
{
    const auto pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const auto source = box({4, -30, 52}, {14, -20, 62});
    const std::size_t bytes = source->positions.size() * sizeof(osg::Vec3f);
    const std::size_t indexBytes = source->triangles.size() * sizeof(std::uint32_t);
    auto* memory = static_cast<char*>(mmap(nullptr, 4 * pageSize, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    ASSERT_NE(memory, MAP_FAILED);
    const std::shared_ptr<const void> owner(memory, [pageSize](char* start) { munmap(start, 4 * pageSize); });
    // Two readable pages, each followed by one that must not be touched.
    char* positions = memory + pageSize - bytes;
    char* indices = memory + 3 * pageSize - indexBytes;
    ASSERT_EQ(mprotect(memory, pageSize, PROT_READ | PROT_WRITE), 0);
    ASSERT_EQ(mprotect(memory + 2 * pageSize, pageSize, PROT_READ | PROT_WRITE), 0);
    std::memcpy(positions, source->positions.data(), bytes);
    std::memcpy(indices, source->triangles.data(), indexBytes);
    auto mesh = std::make_shared<osg::Mesh>();
    mesh->positions = {owner, reinterpret_cast<const osg::Vec3f*>(positions), source->positions.size()};
    mesh->triangles = {owner, reinterpret_cast<const std::uint32_t*>(indices), source->triangles.size()};
    const Root root = nodeOf(mesh, material({0.8f, 0.1f, 0.1f}));
    EXPECT_EQ(drawnExtent(draw(root, plainOptions())), QRect(60, 10, 80, 80));
}

} // namespace render
