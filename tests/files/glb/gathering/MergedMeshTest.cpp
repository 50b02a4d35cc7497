#include "files/glb/gathering/MergedMesh.h"

#include "tests/files/glb/gathering/GatheredFile.h"

#include <gtest/gtest.h>

namespace
{

using files::glb::gathering::MaterialGroups;
using files::glb::gathering::MergedMesh;
using files::glb::gathering::mergeKey;
using files::glb::packing::Affine;
using gathered::Json;
using gathered::PackedFile;

using Floats = std::vector<float>;
using Indices = std::vector<std::uint32_t>;

constexpr Affine identity = files::glb::packing::identityAffine;

class MergedMeshTest : public testing::Test
{
protected:
    Floats floats(const Json& primitive, const char* name) const
    {
        return floatsOf(file, file.accessors[primitive["attributes"][name].get<std::size_t>()]);
    }
    Indices indices(const Json& primitive) const
    {
        return indicesOf(file, file.accessors[primitive["indices"].get<std::size_t>()]);
    }

    PackedFile file = gathered::emptyFile();
    MaterialGroups groups = MaterialGroups(file.materials);
    MergedMesh merged = MergedMesh(groups);
};

TEST_F(MergedMeshTest, KeysAreMaterialGroupModeAttributesAndExtensions)
{
    const Json first = gathered::triangles(file, 1);
    const std::string key = mergeKey(file, groups, first);
    EXPECT_EQ(mergeKey(file, groups, gathered::triangles(file, 2, 5, 1)), key);
    EXPECT_NE(mergeKey(file, groups, gathered::triangles(file, 2, 5, 2)), key);
    Json other = first;
    other["mode"] = 1;
    EXPECT_NE(mergeKey(file, groups, other), key);
    other = first;
    other["attributes"].erase("NORMAL");
    EXPECT_NE(mergeKey(file, groups, other), key);
    other = first;
    other["extensions"]["KHR_materials_variants"] = 1;
    EXPECT_NE(mergeKey(file, groups, other), key);
    Json red = other;
    red["material"] = 1;
    EXPECT_NE(mergeKey(file, groups, red), mergeKey(file, groups, other));
}

TEST_F(MergedMeshTest, VerticesAreMovedAndIndicesCountOn)
{
    gathered::addMesh(file, "a", {gathered::triangles(file, 1)});
    merged.add(file, file.meshes[0], identity, 0);
    merged.add(file, file.meshes[0], {{{0, 0, 2}, {0, 2, 0}, {-2, 0, 0}, {10, 0, 0}}}, 1);
    const Json mesh = merged.take(file);
    ASSERT_EQ(mesh["primitives"].size(), 1u);
    const Json& primitive = mesh["primitives"][0];
    EXPECT_EQ(floats(primitive, "POSITION"), (Floats{0, 0, 0, 1, 0, 0, 0, 1, 0, 10, 0, 0, 10, 0, 2, 10, 2, 0}));
    EXPECT_EQ(floats(primitive, "NORMAL"), (Floats{0, 0, 1, 0, 0, 1, 0, 0, 1, -1, 0, 0, -1, 0, 0, -1, 0, 0}));
    EXPECT_EQ(indices(primitive), (Indices{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(primitive["extras"]["parts"], Json::parse("[[0, 1], [1, 1]]"));
    EXPECT_EQ(primitive["material"], 0);
    const Json& positions = file.accessors[primitive["attributes"]["POSITION"].get<std::size_t>()];
    EXPECT_EQ(positions["min"], Json::parse("[0, 0, 0]"));
    EXPECT_EQ(positions["max"], Json::parse("[10, 2, 2]"));
}

TEST_F(MergedMeshTest, MirroredPartsKeepTheirFrontAndTheirTangents)
{
    Json primitive = gathered::triangles(file, 1);
    primitive["attributes"]["TANGENT"] = addFloats(file, Floats{1, 0, 0, 1, 1, 0, 0, 1, 1, 0, 0, 1}, "VEC4");
    gathered::addMesh(file, "a", {primitive});
    merged.add(file, file.meshes[0], {{{-3, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}}}, 0);
    const Json mesh = merged.take(file);
    EXPECT_EQ(indices(mesh["primitives"][0]), (Indices{0, 2, 1}));
    EXPECT_EQ(floats(mesh["primitives"][0], "NORMAL"), (Floats{0, 0, 1, 0, 0, 1, 0, 0, 1}));
    EXPECT_EQ(floats(mesh["primitives"][0], "TANGENT"), (Floats{-1, 0, 0, -1, -1, 0, 0, -1, -1, 0, 0, -1}));
}

TEST_F(MergedMeshTest, NormalsStayUprightWherePlacesStretch)
{
    Json primitive = gathered::triangles(file, 1);
    primitive["attributes"]["NORMAL"] = addFloats(file, Floats{0.6f, 0.8f, 0, 0.6f, 0.8f, 0, 0.6f, 0.8f, 0}, "VEC3");
    gathered::addMesh(file, "a", {primitive});
    merged.add(file, file.meshes[0], {{{2, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}}}, 0);
    const Floats normals = floats(merged.take(file)["primitives"][0], "NORMAL");
    EXPECT_NEAR(normals[0], 0.3 / std::sqrt(0.73), 1e-6);
    EXPECT_NEAR(normals[1], 0.8 / std::sqrt(0.73), 1e-6);
}

TEST_F(MergedMeshTest, SeveralMaterialsBecomeColoursOfVertices)
{
    gathered::addMesh(file, "a", {gathered::triangles(file, 1)});
    gathered::addMesh(file, "b", {gathered::triangles(file, 1, 2, 1)});
    merged.add(file, file.meshes[0], identity, 0);
    merged.add(file, file.meshes[1], identity, 1);
    const Json mesh = merged.take(file);
    ASSERT_EQ(mesh["primitives"].size(), 1u);
    const Json& primitive = mesh["primitives"][0];
    EXPECT_EQ(floats(primitive, "COLOR_0"),
              (Floats{1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0, 0, 1, 1, 0, 0, 1, 1, 0, 0, 1}));
    EXPECT_EQ(primitive["extras"]["parts"],
              Json::parse(R"([[0, 1, {"material": "white"}], [1, 2, {"material": "red"}]])"));
    EXPECT_EQ(primitive["material"], 4);
    EXPECT_EQ(file.materials[4], Json::object());
}

TEST_F(MergedMeshTest, ColoursThatVerticesHaveAreMultiplied)
{
    for (const std::size_t material : {0u, 1u}) {
        Json primitive = gathered::triangles(file, 1, 1, material);
        primitive["attributes"]["COLOR_0"] =
            addFloats(file, Floats{0.5f, 0.5f, 0.5f, 1, 0.5f, 0.5f, 0.5f, 1, 0.5f, 0.5f, 0.5f, 1}, "VEC4");
        gathered::addMesh(file, "a", {primitive});
        merged.add(file, file.meshes.back(), identity, material);
    }
    const Floats colors = floats(merged.take(file)["primitives"][0], "COLOR_0");
    EXPECT_EQ(Floats(colors.begin(), colors.begin() + 4), (Floats{0.5f, 0.5f, 0.5f, 1}));
    EXPECT_EQ(Floats(colors.end() - 4, colors.end()), (Floats{0.5f, 0, 0, 1}));
}

TEST_F(MergedMeshTest, PrimitivesThatShareVerticesStillDo)
{
    Json triangles = gathered::triangles(file, 1);
    triangles["extras"]["faces"] = {1};
    Json lines = triangles;
    lines["mode"] = 1;
    lines["material"] = 2;
    lines["indices"] = addIndices(file, Indices{0, 1, 1, 2});
    lines["extras"] = {{"edges", {1, 2}}};
    gathered::addMesh(file, "a", {triangles, lines});
    merged.add(file, file.meshes[0], identity, 0);
    merged.add(file, file.meshes[0], identity, 1);
    const Json mesh = merged.take(file);
    ASSERT_EQ(mesh["primitives"].size(), 2u);
    EXPECT_EQ(mesh["primitives"][0]["attributes"], mesh["primitives"][1]["attributes"]);
    EXPECT_EQ(indices(mesh["primitives"][1]), (Indices{0, 1, 1, 2, 3, 4, 4, 5}));
    EXPECT_EQ(mesh["primitives"][0]["extras"]["parts"][1], Json::parse(R"([1, 1, {"faces": [1]}])"));
    EXPECT_EQ(mesh["primitives"][1]["extras"]["parts"][1], Json::parse(R"([1, 2, {"edges": [1, 2]}])"));
}

} // namespace
