#include "files/glb/levels/SurfaceLevels.h"

#include "files/glb/levels/Deviation.h"
#include "files/glb/packing/PackedFile.h"
#include "tests/files/glb/levels/LevelShapes.h"

#include <gtest/gtest.h>

namespace
{

using files::glb::levels::Detail;
using files::glb::packing::PackedFile;

class SurfaceLevelsTest : public testing::Test
{
protected:
    std::vector<Detail> details(PackedFile& file, const files::glb::levels::Wish& wish) const
    {
        return detailsOf(file, file.meshes[0]["primitives"][0], wish, device);
    }

    /// Measured again, between what stands in the file and what stood there.
    double deviation(const PackedFile& file, const Detail& detail) const
    {
        const auto primitive = file.meshes[0]["primitives"][0];
        const auto surface = files::glb::levels::surfaceOf(file, primitive);
        auto triangles = files::glb::packing::indicesOf(file, file.accessors[detail.indices]);
        EXPECT_EQ(triangles.size(), detail.triangles * 3);
        return files::glb::levels::Deviation(device, surface).of(triangles, 1e9);
    }

    std::function<void(double)> progress;
    geometry::rays::Watch watch{progress, nullptr};
    geometry::rays::RayDevice device{1, watch};
};

TEST_F(SurfaceLevelsTest, NothingChangesWhereNothingIsAskedFor)
{
    PackedFile file = levelshapes::fileOf(levelshapes::ball(8, 5));
    const std::size_t bytes = file.binary.size();
    EXPECT_EQ(details(file, {}), (std::vector<Detail>{{1, 224, 0}}));
    EXPECT_EQ(file.binary.size(), bytes);
}

TEST_F(SurfaceLevelsTest, TheMeasuredDistanceIsWithinTheError)
{
    for (const double error : {0.3, 0.05, 0.03}) {
        PackedFile file = levelshapes::fileOf(levelshapes::ball(60, 10));
        const std::vector<Detail> all = details(file, {error, {}});
        ASSERT_EQ(all.size(), 1u);
        EXPECT_NE(all[0].indices, 1u);
        EXPECT_LT(all[0].triangles, 12000u) << error;
        EXPECT_GT(all[0].error, error / 10);
        EXPECT_LE(all[0].error, error);
        EXPECT_DOUBLE_EQ(deviation(file, all[0]), all[0].error);
    }
}

TEST_F(SurfaceLevelsTest, SurfacesSmallerThanTheErrorDoNotVanish)
{
    PackedFile file = levelshapes::fileOf(levelshapes::ball(12, 0.5f));
    const std::vector<Detail> all = details(file, {20, {}});
    EXPECT_GT(all[0].triangles, 0u);
    EXPECT_LE(all[0].error, 20);
}

TEST_F(SurfaceLevelsTest, LowerLevelsHaveTheirShares)
{
    PackedFile file = levelshapes::fileOf(levelshapes::ball(40, 10));
    const std::vector<Detail> all = details(file, {0, {0.5, 0.1}});
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0], (Detail{1, 6240, 0}));
    EXPECT_NEAR(double(all[1].triangles), 3120, 60);
    EXPECT_NEAR(double(all[2].triangles), 624, 60);
    EXPECT_GT(all[2].error, all[1].error);
    for (const std::size_t level : {1, 2})
        EXPECT_DOUBLE_EQ(deviation(file, all[level]), all[level].error);
}

TEST_F(SurfaceLevelsTest, SharesAreThoseOfTheSimplifiedTriangles)
{
    PackedFile file = levelshapes::fileOf(levelshapes::ball(40, 10));
    const std::vector<Detail> all = details(file, {0.05, {0.5}});
    EXPECT_LT(all[0].triangles, 5000u);
    EXPECT_NEAR(double(all[1].triangles), double(all[0].triangles) / 2, double(all[0].triangles) / 20);
    EXPECT_DOUBLE_EQ(deviation(file, all[1]), all[1].error);
}

/// A box has no triangle to spare.
TEST_F(SurfaceLevelsTest, ALevelThatSavesNothingIsTheOneBefore)
{
    PackedFile file = levelshapes::fileOf(levelshapes::plane(1, 4));
    EXPECT_EQ(details(file, {1, {0.5, 0.1}}), (std::vector<Detail>(3, {1, 2, 0})));
}

/// A plate without its hill would be another thing.
TEST_F(SurfaceLevelsTest, LevelsStayLikeTheSurface)
{
    osg::Mesh plate = levelshapes::plane(20, 10);
    std::vector<osg::Vec3f> positions(plate.positions.begin(), plate.positions.end());
    for (osg::Vec3f& p : positions)
        p.z = 4 * std::exp(-((p.x - 5) * (p.x - 5) + (p.y - 5) * (p.y - 5)) / 4);
    plate.positions = positions;
    PackedFile file = levelshapes::fileOf(plate);
    const Detail least = details(file, {0, {0.001}})[1];
    EXPECT_LT(least.triangles, 400u);
    EXPECT_LE(least.error, 0.5);
    EXPECT_GT(least.error, 0.1);
}

} // namespace
