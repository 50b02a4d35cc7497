#include "files/glb/packing/EqualArrays.h"

#include "tests/files/glb/gathering/GatheredFile.h"

#include <gtest/gtest.h>

namespace
{

using files::glb::packing::Json;
using files::glb::packing::PackedFile;

TEST(EqualArrays, CopiesUseTheArraysOfTheFirst)
{
    PackedFile file = gathered::emptyFile();
    for (const float size : {1.0f, 1.0f, 2.0f})
        gathered::addMesh(file, "a", {gathered::triangles(file, size)});
    shareEqualArrays(file);
    const auto primitive = [&](std::size_t mesh) { return file.meshes[mesh]["primitives"][0]; };
    EXPECT_EQ(primitive(1), primitive(0));
    EXPECT_NE(primitive(2)["attributes"]["POSITION"], primitive(0)["attributes"]["POSITION"]);
    EXPECT_EQ(primitive(2)["attributes"]["NORMAL"], primitive(0)["attributes"]["NORMAL"]);
}

TEST(EqualArrays, BytesOfAnotherKindAreOthers)
{
    PackedFile file = gathered::emptyFile();
    Json primitive = gathered::triangles(file, 1);
    const std::vector<float> zeros(6);
    primitive["attributes"]["TEXCOORD_0"] = addFloats(file, zeros, "VEC2");
    primitive["attributes"]["COLOR_0"] = addFloats(file, zeros, "VEC3");
    gathered::addMesh(file, "a", {primitive});
    const Json before = file.meshes;
    shareEqualArrays(file);
    EXPECT_EQ(file.meshes, before);
}

} // namespace
