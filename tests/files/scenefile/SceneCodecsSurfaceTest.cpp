// Physically based surfaces and the images on them.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/MaterialLook.h"
#include "tests/files/scenefile/FileBuilder.h"
#include "tests/files/scenefile/SceneFileTest.h"
#include "tests/support/SurfaceSamples.h"

namespace
{

using namespace filebuilder;
using namespace surfacesamples;
using Slot = osg::TextureSlot;

class SurfaceFileTest : public SceneFileTest
{
protected:
    static osg::NodePtr nodeWith(const osg::PhysicalSurface& surface)
    {
        const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
        osg::setSurface(material, surface);
        const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
        group->setMaterial(material);
        return osg::makeNodeFor(group);
    }

    static osg::PhysicalSurface surfaceAt(const osg::NodePtr& node)
    {
        return osg::surfaceOf(osg::fcCast<osg::MaterialGroup>(node->getCore())->getMaterial());
    }

    static osg::Texture red() { return {imageOf(redPng(), "red.png"), {}, 0, {}, {1, 1}, 0, 1}; }

    static const fb::Scene& sceneIn(const Bytes& bytes)
    {
        return *fb::GetScene(bytes.data() + chunkOf(bytes, osg::scenefile::GraphChunk).offset);
    }

    /// A file with two textures, changed by `damage`.
    void expectDamaged(const std::function<void(fb::Texture&)>& damage)
    {
        osg::PhysicalSurface surface = withTexture(Slot::BaseColor, red());
        surface.textures[Slot::Normal] = red();
        Bytes bytes = written(NodeRef(nodeWith(surface)));
        const fb::Texture* record = sceneIn(bytes).attachments()->Get(0)->surface()->textures()->Get(1);
        damage(const_cast<fb::Texture&>(*record));
        const files::Result<osg::NodePtr> result = read(bytes);
        ASSERT_FALSE(result);
        EXPECT_STREQ(files::errorName(result.error().code), "DamagedGraph");
        EXPECT_EQ(result.error().message, QStringLiteral("A surface has values that do not exist"));
    }

    /// `texture` with other values at the places of the record.
    static void put(fb::Texture& texture, std::size_t offset, std::uint8_t value)
    {
        reinterpret_cast<std::uint8_t*>(&texture)[offset] = value;
    }
};

TEST_F(SurfaceFileTest, EverySingleDifferenceComesBack)
{
    for (const Sample& sample : all()) {
        const NodeRef read = roundTrip(NodeRef(nodeWith(sample.surface)));
        ASSERT_TRUE(read);
        EXPECT_TRUE(surfaceAt(read) == sample.surface) << sample.name;
    }
}

TEST_F(SurfaceFileTest, AnImageStandsInItsChunkOnceAndIsTakenFromThere)
{
    const NodeRef root(osg::Node::create());
    root->addChild(nodeWith(withTexture(Slot::BaseColor, red())));
    root->addChild(nodeWith(withTexture(Slot::Emission, red())));
    const Bytes bytes = written(root);
    const ChunkEntry chunk = chunkOf(bytes, osg::scenefile::ImageChunk);
    EXPECT_EQ(chunk.type, ChunkType::Image);
    EXPECT_EQ(chunk.size, static_cast<std::uint64_t>(redPng().size()));
    EXPECT_EQ(std::memcmp(bytes.data() + chunk.offset, redPng().constData(), chunk.size), 0);
    EXPECT_EQ(sceneIn(bytes).images()->size(), 1u);
}

TEST_F(SurfaceFileTest, AnImageComesBackWithNameAndKindAndWithoutACopy)
{
    std::weak_ptr<const osg::EncodedImage> old;
    Bytes bytes;
    {
        const NodeRef root(nodeWith(withTexture(Slot::BaseColor, red())));
        old = surfaceAt(root).textures.at(Slot::BaseColor).image;
        bytes = written(root);
    }
    ASSERT_TRUE(old.expired());
    const osg::scenefile::SceneBytes memory = osg::scenefile::copyBytes(bytes);
    const files::Result<osg::NodePtr> result = osg::scenefile::readScene(memory, {});
    ASSERT_TRUE(result);
    const NodeRef root(result.value());
    const osg::EncodedImagePtr image = surfaceAt(root).textures.at(Slot::BaseColor).image;
    EXPECT_EQ(image->name(), "red.png");
    EXPECT_EQ(image->mimeType(), "image/png");
    EXPECT_GE(image->bytes().data(), memory.bytes.data());
    EXPECT_LT(image->bytes().data(), memory.bytes.data() + memory.bytes.size());
}

TEST_F(SurfaceFileTest, AFileWithoutImagesHasNoChunkForThem)
{
    const Bytes bytes = written(NodeRef(nodeWith({})));
    EXPECT_EQ(headerOf(bytes).chunkCount, 3u);
}

TEST_F(SurfaceFileTest, BothSetsOfTextureCoordinatesComeBack)
{
    osg::Mesh mesh = *fullMesh();
    mesh.texCoords1 = std::vector<osg::Vec2f>{{9, 8}, {7, 6}, {5, 4}, {3, 2}};
    const auto core = coreRoundTrip<osg::Geometry>(geometryOf(std::make_shared<const osg::Mesh>(mesh)));
    EXPECT_TRUE(osg::GeometryAccess::mesh(*core.get()) == mesh);
}

TEST_F(SurfaceFileTest, ASecondSetOfAnotherLengthIsRefused)
{
    osg::Mesh mesh = *fullMesh();
    mesh.texCoords1 = std::vector<osg::Vec2f>{{9, 8}};
    const NodeRef root(osg::makeNodeFor(geometryOf(std::make_shared<const osg::Mesh>(mesh))));
    const files::Result<std::uint64_t> result = osg::scenefile::writeSceneFile(root.get(), path());
    ASSERT_FALSE(result);
    EXPECT_STREQ(files::errorName(result.error().code), "InvalidMesh");
}

// The places of the bytes in a record are those of scene.fbs: image, slot, set, wraps, filters.
TEST_F(SurfaceFileTest, TexturesWithValuesThatDoNotExistAreRefused)
{
    expectDamaged([](fb::Texture& texture) { put(texture, 0, 0); }); // no image
    expectDamaged([](fb::Texture& texture) { put(texture, 0, 2); }); // an image too many
    expectDamaged([](fb::Texture& texture) { put(texture, 4, osg::textureSlots); });
    expectDamaged([](fb::Texture& texture) { put(texture, 4, std::uint8_t(Slot::BaseColor)); }); // twice
    expectDamaged([](fb::Texture& texture) { put(texture, 5, 2); });
    expectDamaged([](fb::Texture& texture) { put(texture, 6, 3); });
    expectDamaged([](fb::Texture& texture) { put(texture, 7, 3); });
    expectDamaged([](fb::Texture& texture) { put(texture, 8, 3); });
    expectDamaged([](fb::Texture& texture) { put(texture, 9, 7); });
}

TEST_F(SurfaceFileTest, ImagesOutsideTheirChunkAreRefused)
{
    const Bytes sound = written(NodeRef(nodeWith(withTexture(Slot::BaseColor, red()))));
    const auto expectRefused = [&](std::uint64_t offset, std::uint64_t count, std::uint32_t chunk) {
        Bytes bytes = sound;
        const fb::Image* record = sceneIn(bytes).images()->Get(0);
        const fb::Image damaged(fb::Array(offset, count, chunk), record->name(), record->mime_type());
        std::memcpy(const_cast<fb::Image*>(record), &damaged, sizeof damaged);
        const files::Result<osg::NodePtr> result = read(bytes);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().message, QStringLiteral("The bytes of a picture lie outside their chunk"));
    };
    const auto size = static_cast<std::uint64_t>(redPng().size());
    expectRefused(0, size + 1, osg::scenefile::ImageChunk);
    expectRefused(size + 1, 0, osg::scenefile::ImageChunk);
    expectRefused(0, 1, osg::scenefile::MeshChunk);
    expectRefused(0, 1, 4);
}

/// Many pictures of the same bytes would let a small file cost much time.
TEST_F(SurfaceFileTest, ImagesThatAreTogetherLongerThanTheFileAreRefused)
{
    Graph graph;
    graph.images = std::vector<fb::Image>(20, fb::Image(fb::Array(0, 1000, 1), 0, 0));
    graph.texts = {"x"};
    const Bytes bytes = fileOf({{ChunkType::Graph, graph.bytes()}, {ChunkType::Image, Bytes(1000)}});
    const files::Result<osg::NodePtr> result = read(bytes);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().message, QStringLiteral("The bytes of a picture lie outside their chunk"));
}

TEST_F(SurfaceFileTest, AnUnknownAlphaModeIsRefused)
{
    osg::PhysicalSurface surface;
    surface.metalness = 1;
    Bytes bytes = written(NodeRef(nodeWith(surface)));
    const fb::SurfaceFactors* factors = sceneIn(bytes).attachments()->Get(0)->surface()->factors();
    const std::uint8_t unknown = 3;
    auto* place = reinterpret_cast<std::uint8_t*>(const_cast<fb::SurfaceFactors*>(factors));
    place[sizeof(fb::SurfaceFactors) - 4] = unknown;
    ASSERT_EQ(factors->alpha_mode(), unknown);
    EXPECT_FALSE(read(bytes));
}

} // namespace
