#include "files/gltf/packing/Unpacking.h"

#include "tests/files/ReaderTest.h"
#include "tests/files/gltf/GltfFixture.h"

#include <draco/compression/encode.h>
#include <draco/mesh/triangle_soup_mesh_builder.h>
#include <meshoptimizer.h>

#include <nlohmann/json.hpp>

namespace
{

using Json = nlohmann::json;

template <class T>
QByteArray bytesOf(const std::vector<T>& values)
{
    return {reinterpret_cast<const char*>(values.data()), static_cast<int>(values.size() * sizeof(T))};
}

QByteArray packedVertices(const void* vertices, std::size_t count, std::size_t width)
{
    meshopt_encodeVertexVersion(0);
    std::vector<unsigned char> bytes(meshopt_encodeVertexBufferBound(count, width));
    bytes.resize(meshopt_encodeVertexBuffer(bytes.data(), bytes.size(), vertices, count, width));
    return bytesOf(bytes);
}

QByteArray packedTriangles(const std::vector<std::uint32_t>& indices)
{
    meshopt_encodeIndexVersion(1);
    std::vector<unsigned char> bytes(meshopt_encodeIndexBufferBound(indices.size(), 100));
    bytes.resize(meshopt_encodeIndexBuffer(bytes.data(), bytes.size(), indices.data(), indices.size()));
    return bytesOf(bytes);
}

/// Two triangles on a grid of 16-bit integers, with normals, packed as `EXT_meshopt_compression` has them.
class UnpackingTest : public ReaderTest
{
protected:
    UnpackingTest()
    {
        const std::vector<std::int16_t> positions = {10, 20, 30, 0, 410, 20, 30, 0, 410, -520, 30, 0, 10, -520, 35, 0};
        const QByteArray vertices = packedVertices(positions.data(), 4, 8);
        const std::vector<float> normals = {0, 0, 1, 0, 0, 0.6f, 0.8f, 0, 1, 0, 0, 0, 0, -1, 0, 0};
        std::vector<std::int8_t> filtered(16);
        meshopt_encodeFilterOct(filtered.data(), 4, 4, 8, normals.data());
        const QByteArray directions = packedVertices(filtered.data(), 4, 4);
        const QByteArray triangles = packedTriangles({0, 1, 2, 0, 2, 3});
        json["asset"]["version"] = "2.0";
        json["extensionsRequired"] = {"EXT_meshopt_compression", "KHR_mesh_quantization"};
        add(vertices, 4, 8, "ATTRIBUTES", 32, 0);
        add(directions, 4, 4, "ATTRIBUTES", 16, 32);
        extension(1)["filter"] = "OCTAHEDRAL";
        add(triangles, 6, 2, "TRIANGLES", 12, 48);
        json["buffers"] = {{{"byteLength", binary.size()}},
                           {{"byteLength", 60}, {"extensions", {{"EXT_meshopt_compression", {{"fallback", true}}}}}}};
        json["accessors"] = {
            {{"bufferView", 0}, {"componentType", 5122}, {"count", 4}, {"type", "VEC3"}},
            {{"bufferView", 1}, {"componentType", 5120}, {"count", 4}, {"type", "VEC3"}, {"normalized", true}},
            {{"bufferView", 2}, {"componentType", 5123}, {"count", 6}, {"type", "SCALAR"}}};
        json["meshes"] = {{{"primitives", {{{"attributes", {{"POSITION", 0}, {"NORMAL", 1}}}, {"indices", 2}}}}}};
        json["nodes"] = {{{"mesh", 0}, {"name", "plate"}}};
    }

    void add(const QByteArray& bytes, int count, int width, const char* mode, int plainSize, int plainOffset)
    {
        json["bufferViews"].push_back({{"buffer", 1}, {"byteOffset", plainOffset}, {"byteLength", plainSize}});
        extension(json["bufferViews"].size() - 1) = {{"buffer", 0},
                                                     {"byteOffset", binary.size()},
                                                     {"byteLength", bytes.size()},
                                                     {"byteStride", width},
                                                     {"count", count},
                                                     {"mode", mode}};
        binary += bytes;
        while (binary.size() % 4 != 0)
            binary += '\0';
    }
    Json& extension(std::size_t view) { return json["bufferViews"][view]["extensions"]["EXT_meshopt_compression"]; }

    QString file() { return write(QStringLiteral("plate.glb"), glbOf(QByteArray::fromStdString(json.dump()), binary)); }
    QString error(const files::ReadOptions& options = {}) { return errorOf(file(), options); }

    const osg::Mesh& readMesh()
    {
        EXPECT_TRUE(read(file()));
        const auto geometry = osg::fcCast<osg::Geometry>(root()->getChild(0)->getChild(0)->getCore());
        return osg::GeometryAccess::mesh(*geometry);
    }

    Json json;
    QByteArray binary;
};

TEST_F(UnpackingTest, ViewsPackedByMeshoptGiveTheirNumbers)
{
    const osg::Mesh mesh = readMesh();
    ASSERT_EQ(mesh.positions.size(), 4u);
    EXPECT_EQ(mesh.positions[1], (osg::Vec3f{410, 20, 30}));
    EXPECT_EQ(mesh.positions[3], (osg::Vec3f{10, -520, 35}));
    ASSERT_EQ(mesh.normals.size(), 4u);
    EXPECT_NEAR(mesh.normals[1].y, 0.6f, 0.01f);
    EXPECT_NEAR(mesh.normals[1].z, 0.8f, 0.01f);
    EXPECT_NEAR(mesh.normals[3].y, -1, 0.01f);
    EXPECT_EQ(std::vector<std::uint32_t>(mesh.triangles.begin(), mesh.triangles.end()),
              (std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3}));
}

TEST_F(UnpackingTest, ExponentialNumbersAreUnpacked)
{
    const std::vector<float> positions = {0.5f, 2, -3, 4.5f, 2, -3, 4.5f, 7, -3, 0.5f, 7, -3.25f};
    std::vector<std::uint32_t> filtered(12);
    meshopt_encodeFilterExp(filtered.data(), 4, 12, 15, positions.data());
    add(packedVertices(filtered.data(), 4, 12), 4, 12, "ATTRIBUTES", 48, 0);
    extension(3)["filter"] = "EXPONENTIAL";
    json["accessors"][0] = {{"bufferView", 3}, {"componentType", 5126}, {"count", 4}, {"type", "VEC3"}};
    json["buffers"][0]["byteLength"] = binary.size();
    const osg::Mesh mesh = readMesh();
    ASSERT_EQ(mesh.positions.size(), 4u);
    EXPECT_NEAR(mesh.positions[3].x, 0.5f, 0.001f);
    EXPECT_NEAR(mesh.positions[3].z, -3.25f, 0.001f);
}

TEST_F(UnpackingTest, SizesThatDoNotGoTogetherFailWithTheirView)
{
    extension(0)["count"] = 5;
    EXPECT_EQ(error(), QStringLiteral("Damaged plate.glb: 5 elements of 8 bytes do not make the 32 bytes of the buffer "
                                      "view (/bufferViews/0)"));
    extension(0)["count"] = 4;
    extension(0)["byteStride"] = 6;
    EXPECT_EQ(error(),
              QStringLiteral("Damaged plate.glb: elements of 6 bytes do not go with the mode ATTRIBUTES and the "
                             "filter NONE (/bufferViews/0)"));
    extension(0)["byteStride"] = 8;
    extension(2)["filter"] = "OCTAHEDRAL";
    EXPECT_EQ(error(),
              QStringLiteral("Damaged plate.glb: elements of 2 bytes do not go with the mode TRIANGLES and the "
                             "filter OCTAHEDRAL (/bufferViews/2)"));
    extension(2).erase("filter");
    extension(2)["byteLength"] = 4000;
    EXPECT_EQ(error(),
              QStringLiteral("Damaged plate.glb: the packed bytes reach outside their buffer (/bufferViews/2)"));
}

TEST_F(UnpackingTest, NegativeAndMissingNumbersFail)
{
    extension(1)["count"] = -4;
    EXPECT_EQ(error(), QStringLiteral("Damaged plate.glb: 'count' is no number from 0 on (/bufferViews/1)"));
    extension(1).erase("count");
    EXPECT_EQ(error(), QStringLiteral("Damaged plate.glb: 'count' is no number from 0 on (/bufferViews/1)"));
    json["bufferViews"][1]["extensions"]["EXT_meshopt_compression"] = 7;
    EXPECT_EQ(error(), QStringLiteral("Damaged plate.glb: the extension EXT_meshopt_compression is no object "
                                      "(/bufferViews/1)"));
}

TEST_F(UnpackingTest, UnknownModeIsUnsupported)
{
    extension(0)["mode"] = "POINTS";
    EXPECT_EQ(error(),
              QStringLiteral("Unsupported plate.glb: the mode 'POINTS' of EXT_meshopt_compression is not known "
                             "(/bufferViews/0)"));
}

TEST_F(UnpackingTest, DamagedBytesFail)
{
    binary[extension(0)["byteOffset"].get<int>()] = char(0x11);
    EXPECT_EQ(error(), QStringLiteral("Damaged plate.glb: the packed bytes are damaged, or of a newer form than this "
                                      "program knows (/bufferViews/0)"));
}

TEST_F(UnpackingTest, PackedBytesOfHugeSizeAreRefusedBeforeTheyAreUnpacked)
{
    const std::uint64_t count = std::uint64_t(1) << 40;
    extension(0)["count"] = count;
    json["bufferViews"][0]["byteLength"] = count * 8;
    const QString text = error();
    EXPECT_TRUE(text.startsWith(QStringLiteral("LimitExceeded plate.glb: it would take more than ")))
        << text.toStdString();
    EXPECT_TRUE(text.endsWith(QStringLiteral("(/bufferViews/0)"))) << text.toStdString();
}

TEST_F(UnpackingTest, BytesOfAPlaceholderAreNotThere)
{
    json["bufferViews"][0].erase("extensions");
    EXPECT_EQ(error(),
              QStringLiteral("Damaged plate.glb: the buffer view 0 reaches outside its buffer (/accessors/0)"));
}

TEST_F(UnpackingTest, InstancesStandAtTheirPlaces)
{
    GltfBytes places;
    places.floats({1, 2, 3, -4, 5, 6}).floats({0, 0, 0, 1, 0, 0, 0.6f, 0.8f});
    json["bufferViews"].push_back({{"buffer", 0}, {"byteOffset", binary.size()}, {"byteLength", 24}});
    json["bufferViews"].push_back({{"buffer", 0}, {"byteOffset", binary.size() + 24}, {"byteLength", 32}});
    binary += places.all();
    json["buffers"][0]["byteLength"] = binary.size();
    json["accessors"].push_back({{"bufferView", 3}, {"componentType", 5126}, {"count", 2}, {"type", "VEC3"}});
    json["accessors"].push_back({{"bufferView", 4}, {"componentType", 5126}, {"count", 2}, {"type", "VEC4"}});
    json["nodes"][0]["extensions"]["EXT_mesh_gpu_instancing"]["attributes"] = {{"TRANSLATION", 3}, {"ROTATION", 4}};
    ASSERT_TRUE(read(file()));
    const osg::NodePtr node = root()->getChild(0)->getChild(0);
    ASSERT_EQ(node->getNChildren(), 2u);
    const osg::NodePtr second = node->getChild(1);
    EXPECT_STREQ(osg::getName(second), "plate 2");
    const auto matrix = osg::fcCast<osg::Transform>(second->getCore())->getMatrix().values;
    EXPECT_FLOAT_EQ(matrix[12], -4);
    EXPECT_FLOAT_EQ(matrix[14], 6);
    EXPECT_NEAR(matrix[0], 0.28f, 1e-6f);
    EXPECT_NEAR(matrix[1], 0.96f, 1e-6f);
    EXPECT_EQ(second->getChild(0)->getCore(), node->getChild(0)->getChild(0)->getCore());

    json["accessors"][4]["count"] = 1;
    EXPECT_EQ(error(),
              QStringLiteral("Damaged plate.glb: the lists of the instances have different lengths (/nodes/0)"));
    json["nodes"][0]["extensions"]["EXT_mesh_gpu_instancing"]["attributes"] = Json::object();
    EXPECT_EQ(error(), QStringLiteral("Damaged plate.glb: the instances have no places (/nodes/0)"));
}

/// The same two triangles packed by Draco.
class DracoTest : public UnpackingTest
{
protected:
    DracoTest()
    {
        draco::TriangleSoupMeshBuilder builder;
        builder.Start(2);
        const int positions = builder.AddAttribute(draco::GeometryAttribute::POSITION, 3, draco::DT_FLOAT32);
        const float corners[][3] = {{1, 2, 3}, {41, 2, 3}, {41, 52, 3}, {1, 52, 3.5f}};
        builder.SetAttributeValuesForFace(positions, draco::FaceIndex(0), corners[0], corners[1], corners[2]);
        builder.SetAttributeValuesForFace(positions, draco::FaceIndex(1), corners[0], corners[2], corners[3]);
        const std::unique_ptr<draco::Mesh> mesh = builder.Finalize();
        draco::Encoder encoder;
        draco::EncoderBuffer buffer;
        EXPECT_TRUE(encoder.EncodeMeshToBuffer(*mesh, &buffer).ok());
        binary = QByteArray(buffer.data(), static_cast<int>(buffer.size()));
        json.erase("extensionsRequired");
        json["bufferViews"] = {{{"buffer", 0}, {"byteLength", binary.size()}}};
        json["buffers"] = {{{"byteLength", binary.size()}}};
        json["accessors"] = {{{"componentType", 5126}, {"count", 4}, {"type", "VEC3"}},
                             {{"componentType", 5123}, {"count", 6}, {"type", "SCALAR"}}};
        json["extensionsRequired"] = {"KHR_draco_mesh_compression"};
        primitive() = {{"attributes", {{"POSITION", 0}}}, {"indices", 1}};
        packed() = {{"bufferView", 0}, {"attributes", {{"POSITION", 0}}}};
    }

    Json& primitive() { return json["meshes"][0]["primitives"][0]; }
    Json& packed() { return primitive()["extensions"]["KHR_draco_mesh_compression"]; }
};

TEST_F(DracoTest, MeshesGiveTheirTriangles)
{
    const osg::Mesh mesh = readMesh();
    ASSERT_EQ(mesh.positions.size(), 4u);
    ASSERT_EQ(mesh.triangles.size(), 6u);
    float area = 0;
    for (std::size_t i = 0; i < 6; i += 3) {
        const auto at = [&](std::size_t corner) { return mesh.positions[mesh.triangles[i + corner]]; };
        area += ((at(1).x - at(0).x) * (at(2).y - at(0).y) - (at(2).x - at(0).x) * (at(1).y - at(0).y)) / 2;
    }
    EXPECT_FLOAT_EQ(area, 2000);
}

TEST_F(DracoTest, AccessorsOfOtherSizesFailBeforeAnythingIsUnpacked)
{
    json["accessors"][1]["count"] = 9;
    EXPECT_EQ(error(),
              QStringLiteral("Damaged plate.glb: the packed bytes hold 2 triangles and 4 vertices or more, the "
                             "accessors tell 3 and 4 (/meshes/0/primitives/0)"));
    json["accessors"][1]["count"] = 6;
    json["accessors"][0]["count"] = 3;
    EXPECT_EQ(error(),
              QStringLiteral("Damaged plate.glb: the packed bytes hold 2 triangles and 4 vertices or more, the "
                             "accessors tell 2 and 3 (/meshes/0/primitives/0)"));
}

TEST_F(DracoTest, AttributesThatAreNotThereFail)
{
    packed()["attributes"]["POSITION"] = 5;
    EXPECT_EQ(error(), QStringLiteral("Damaged plate.glb: the attribute 5 of the packed bytes does not go with its "
                                      "accessor (/meshes/0/primitives/0)"));
    packed()["attributes"].erase("POSITION");
    EXPECT_EQ(error(),
              QStringLiteral("Damaged plate.glb: the packed bytes have no positions (/meshes/0/primitives/0)"));
}

TEST_F(DracoTest, BytesThatAreNoDracoAreUnsupported)
{
    binary[0] = 'X';
    EXPECT_EQ(error(), QStringLiteral("Unsupported plate.glb: the packed bytes are no mesh of the Draco bitstream 2.2 "
                                      "(/meshes/0/primitives/0)"));
}

TEST_F(DracoTest, CutOffBytesFail)
{
    json["bufferViews"][0]["byteLength"] = binary.size() - 12;
    EXPECT_TRUE(error().startsWith(QStringLiteral("Damaged plate.glb: the packed bytes are damaged: ")));
}

TEST_F(DracoTest, MoreVerticesThanTheLimitAreRefused)
{
    files::ReadOptions options;
    options.limits.maxVertices = 3;
    EXPECT_EQ(error(options), QStringLiteral("LimitExceeded plate.glb: more than 3 vertices (/meshes/0/primitives/0)"));
}

TEST_F(DracoTest, PrimitivesWithTheSamePackedBytesShareThem)
{
    json["meshes"].push_back(json["meshes"][0]);
    json["nodes"].push_back({{"mesh", 1}});
    ASSERT_TRUE(read(file()));
    const auto positions = [&](unsigned node) {
        const auto geometry = osg::fcCast<osg::Geometry>(root()->getChild(0)->getChild(node)->getCore());
        return osg::GeometryAccess::mesh(*geometry).positions.data();
    };
    EXPECT_EQ(positions(0), positions(1));
}

} // namespace
