#include "files/glb/gathering/Instances.h"

#include "tests/files/glb/gathering/GatheredFile.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using files::glb::gathering::InstancePlace;
using files::glb::gathering::instancePlace;
using files::glb::gathering::instancesNode;
using files::glb::packing::Affine;
using gathered::Json;
using gathered::PackedFile;

const Affine turned = {{{0, 2, 0}, {-2, 0, 0}, {0, 0, 2}, {1, 2, 3}}};

TEST(Instances, PlacesAreToldBySizeTurnAndWay)
{
    const std::optional<InstancePlace> place = instancePlace(turned);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->translation, (files::glb::packing::Vector{1, 2, 3}));
    EXPECT_NEAR(place->scale[0], 2, 1e-6);
    EXPECT_NEAR(place->rotation[2], std::sqrt(0.5), 1e-6);
    const Affine told = files::glb::packing::composed(place->translation, place->rotation, place->scale);
    for (std::size_t axis = 0; axis < 4; ++axis)
        for (std::size_t row = 0; row < 3; ++row)
            EXPECT_NEAR(told[axis][row], turned[axis][row], 1e-6);
}

TEST(Instances, MirroredPlacesAreTold)
{
    const std::optional<InstancePlace> place = instancePlace({{{-1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}}});
    ASSERT_TRUE(place);
    EXPECT_LT(place->scale[0] * place->scale[1] * place->scale[2], 0);
}

TEST(Instances, PlacesThatShearOrFlattenAreNone)
{
    EXPECT_FALSE(instancePlace({{{1, 0, 0}, {0.5, 1, 0}, {0, 0, 1}, {0, 0, 0}}}));
    EXPECT_FALSE(instancePlace({{{1, 0, 0}, {0, 1, 0}, {0, 0, 0}, {0, 0, 0}}}));
}

TEST(Instances, NodesHaveTheArraysThatSaySomething)
{
    PackedFile file = gathered::emptyFile();
    const Json plain =
        instancesNode(file, 7, {{{1, 2, 3}, {0, 0, 0, 1}, {1, 1, 1}}, {{4, 5, 6}, {0, 0, 0, 1}, {1, 1, 1}}});
    EXPECT_EQ(plain["mesh"], 7);
    const Json& attributes = plain["extensions"]["EXT_mesh_gpu_instancing"]["attributes"];
    EXPECT_EQ(attributes.size(), 1u);
    EXPECT_EQ(files::glb::packing::floatsOf(file, file.accessors[attributes["TRANSLATION"].get<std::size_t>()]),
              (std::vector<float>{1, 2, 3, 4, 5, 6}));
    const Json all =
        instancesNode(file, 7, {{{0, 0, 0}, {0, 0, 1, 0}, {1, 1, 1}}, {{0, 0, 0}, {0, 0, 0, 1}, {1, 2, 1}}});
    const Json& both = all["extensions"]["EXT_mesh_gpu_instancing"]["attributes"];
    EXPECT_EQ(files::glb::packing::floatsOf(file, file.accessors[both["ROTATION"].get<std::size_t>()]),
              (std::vector<float>{0, 0, 1, 0, 0, 0, 0, 1}));
    EXPECT_EQ(files::glb::packing::floatsOf(file, file.accessors[both["SCALE"].get<std::size_t>()]),
              (std::vector<float>{1, 1, 1, 1, 2, 1}));
}

} // namespace
