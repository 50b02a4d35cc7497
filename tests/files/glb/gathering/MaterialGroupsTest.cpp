#include "files/glb/gathering/MaterialGroups.h"

#include "tests/files/glb/gathering/GatheredFile.h"

#include <gtest/gtest.h>

namespace
{

using files::glb::gathering::Color;
using files::glb::gathering::MaterialGroups;
using gathered::Json;

TEST(MaterialGroups, NamesExtrasAndColoursDoNotCount)
{
    const Json materials = gathered::emptyFile().materials;
    const MaterialGroups groups(materials);
    EXPECT_EQ(groups.group(1), groups.group(0));
    EXPECT_NE(groups.group(2), groups.group(0));
    EXPECT_NE(groups.group(3), groups.group(0));
    EXPECT_EQ(groups.color(1), (Color{1, 0, 0, 1}));
    EXPECT_EQ(groups.color(3), (Color{1, 1, 1, 1}));
}

TEST(MaterialGroups, WhiteMaterialsAreAddedOnce)
{
    Json materials = gathered::emptyFile().materials;
    MaterialGroups groups(materials);
    EXPECT_EQ(groups.white(2, materials), 4u);
    EXPECT_EQ(groups.white(2, materials), 4u);
    EXPECT_EQ(groups.white(0, materials), 5u);
    EXPECT_EQ(materials[4], Json::parse(R"({"pbrMetallicRoughness": {"roughnessFactor": 0.5}})"));
    EXPECT_EQ(materials[5], Json::object());
}

} // namespace
