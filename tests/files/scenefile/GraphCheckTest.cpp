// Graphs whose FlatBuffer is sound and whose content is not.

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "scene/Tags.h"
#include "tests/files/scenefile/FileBuilder.h"
#include "tests/files/scenefile/SceneFileTest.h"

namespace
{

using namespace filebuilder;
using Builder = flatbuffers::FlatBufferBuilder;

class DamagedGraphTest : public SceneFileTest
{
protected:
    static void expectError(const Bytes& bytes, Code code, const char* message,
                            const osg::scenefile::SceneFileReadOptions& options = {})
    {
        const files::Result<osg::NodePtr> result = read(bytes, options);
        ASSERT_FALSE(result) << "expected: " << message;
        EXPECT_STREQ(files::errorName(result.error().code), files::errorName(code));
        EXPECT_EQ(result.error().message, QString::fromUtf8(message));
        const QStringList place = result.error().place.split(QLatin1Char(' '));
        ASSERT_EQ(place.size(), 2) << result.error().place.toStdString();
        EXPECT_EQ(place[0], QStringLiteral("byte"));
        EXPECT_GE(place[1].toULongLong(), 64u);
        EXPECT_LT(place[1].toULongLong(), bytes.size());
    }
    static void expectDamaged(const Graph& graph, const char* message)
    {
        expectError(graph.file(), Code::DamagedGraph, message);
    }
    static void expectNoTarget(const Graph& graph) { expectDamaged(graph, "A reference has no target"); }

    static Graph withCore(const std::function<flatbuffers::Offset<fb::Core>(Builder&)>& make)
    {
        Graph graph;
        graph.cores = [make](Builder& builder) { return std::vector{make(builder)}; };
        return graph;
    }

    static Graph withMesh(const std::function<flatbuffers::Offset<fb::Mesh>(Builder&)>& make)
    {
        Graph graph;
        graph.meshes = [make](Builder& builder) { return std::vector{make(builder)}; };
        return graph;
    }

    /// A mesh of four vertices, at the start of the chunk 1, with these indices behind them.
    static files::Result<osg::NodePtr> readTriangles(const std::vector<std::uint32_t>& indices)
    {
        const Graph graph = withMesh([&](Builder& builder) {
            const fb::Array positions(0, 4, 1);
            const fb::Array triangles(48, indices.size(), 1);
            return fb::CreateMesh(builder, &positions, nullptr, nullptr, nullptr, &triangles);
        });
        Bytes chunk(48);
        const Bytes tail = bytesOf(indices);
        chunk.insert(chunk.end(), tail.begin(), tail.end());
        return read(graph.file(chunk));
    }
};

TEST_F(DamagedGraphTest, TheGraphOfTheseTestsIsSound)
{
    const NodeRef root(read(Graph().file()).value());
    ASSERT_TRUE(root);
    EXPECT_STREQ(osg::getName(root.get()), "text");
    EXPECT_EQ(&root->getCore()->getType(), &osg::Group::_type);
}

TEST_F(DamagedGraphTest, SomethingThatIsNoGraphIsTold)
{
    const char* message = "The graph of the scene is damaged";
    for (const std::size_t size : {0u, 1u, 4u, 8u, 64u, 1000u}) {
        const Bytes bytes = fileOf({{ChunkType::Graph, Bytes(size, std::byte{0x41})}, {ChunkType::Mesh, Bytes(64)}});
        expectError(bytes, Code::DamagedGraph, message);
    }
}

TEST_F(DamagedGraphTest, AFileHasOneGraph)
{
    const Bytes graph = Graph().bytes();
    const Bytes none = fileOf({{ChunkType::Mesh, graph}});
    const Bytes two = fileOf({{ChunkType::Graph, graph}, {ChunkType::Graph, graph}});
    for (const Bytes& bytes : {none, two, fileOf({})}) {
        const files::Result<osg::NodePtr> result = read(bytes);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().code, Code::DamagedTable);
        EXPECT_EQ(result.error().message, QStringLiteral("The file does not have exactly one graph"));
    }
}

TEST_F(DamagedGraphTest, NodesFormOneTree)
{
    Graph graph;
    graph.nodes = {};
    expectDamaged(graph, "The scene has no node");
    const char* message = "The nodes do not form one tree";
    const auto nodes = [&](const std::vector<std::uint32_t>& children) {
        graph.nodes.clear();
        for (const std::uint32_t count : children)
            graph.nodes.emplace_back(0, count, 0, 0, 0);
        return graph;
    };
    expectDamaged(nodes({1}), message);
    expectDamaged(nodes({0, 0}), message);
    expectDamaged(nodes({0, 1}), message);
    expectDamaged(nodes({2, 0}), message);
    expectDamaged(nodes({1, 0, 0}), message);
    expectDamaged(nodes({1, 2, 0}), message);
    expectDamaged(nodes({1, 0, 1, 0}), message);
    expectDamaged(nodes({0xFFFFFFFF, 0, 0}), message);
    const NodeRef root(read(nodes({2, 0, 1, 0}).file()).value());
    ASSERT_TRUE(root);
    EXPECT_EQ(root->getNChildren(), 2u);
    EXPECT_EQ(root->getChild(1)->getNChildren(), 1u);
}

TEST_F(DamagedGraphTest, NodesReferToCoresAndTexts)
{
    Graph graph;
    for (const std::uint32_t number : {2u, 0xFFFFFFFFu}) {
        graph.nodes = {fb::Node(number, 0, 0, 0, 0)};
        expectNoTarget(graph);
        graph.nodes = {fb::Node(0, 0, number, 0, 0)};
        expectNoTarget(graph);
    }
}

TEST_F(DamagedGraphTest, LinksAreUsedUp)
{
    const char* message = "The attachments do not match their holders";
    Graph graph;
    graph.attachments = [](Builder& builder) { return std::vector{fb::CreateAttachment(builder, 2)}; };
    graph.links = {fb::Link(0, 0)};
    expectDamaged(graph, message);
    graph.nodes = {fb::Node(0, 0, 0, 2, 0)};
    expectDamaged(graph, message);
    graph.nodes = {fb::Node(0, 0, 0, 0xFFFFFFFF, 0)};
    expectDamaged(graph, message);
    graph.nodes = {fb::Node(0, 0, 0, 1, 0)};
    const NodeRef root(read(graph.file()).value());
    EXPECT_TRUE(root->findAttachment(osg::TagAttachment::_type.getGroupId()));
}

TEST_F(DamagedGraphTest, LinksReferToAttachments)
{
    Graph graph;
    graph.nodes = {fb::Node(0, 0, 0, 1, 0)};
    graph.links = {fb::Link(0, 0)};
    expectNoTarget(graph);
    graph.attachments = [](Builder& builder) { return std::vector{fb::CreateAttachment(builder, 2)}; };
    graph.links = {fb::Link(1, 0)};
    expectNoTarget(graph);
    graph.links = {fb::Link(0, 65536)};
    expectNoTarget(graph);
}

TEST_F(DamagedGraphTest, AttachmentsReferToClassesAndTexts)
{
    Graph graph;
    graph.attachments = [](Builder& builder) { return std::vector{fb::CreateAttachment(builder, 4)}; };
    expectNoTarget(graph);
    graph.attachments = [](Builder& builder) {
        const std::vector<std::uint32_t> tags = {0, 1};
        return std::vector{fb::CreateAttachment(builder, 2, builder.CreateVector(tags))};
    };
    expectNoTarget(graph);
    for (const fb::FileInfo& info : {fb::FileInfo(1, 0, 0), fb::FileInfo(0, 1, 0), fb::FileInfo(0, 0, 1)}) {
        graph.attachments = [&](Builder& builder) { return std::vector{fb::CreateAttachment(builder, 2, 0, &info)}; };
        expectNoTarget(graph);
    }
}

TEST_F(DamagedGraphTest, CoresReferToWhatIsThere)
{
    expectNoTarget(withCore([](Builder& b) { return fb::CreateCore(b, 4); }));
    expectNoTarget(withCore([](Builder& b) { return fb::CreateCore(b, 0, 2); }));
    expectNoTarget(withCore([](Builder& b) { return fb::CreateCore(b, 3, 0, 0, nullptr, nullptr, 0, nullptr, 1, 0); }));
    expectNoTarget(withCore([](Builder& b) { return fb::CreateCore(b, 3, 0, 0, nullptr, nullptr, 0, nullptr, 0, 1); }));
    const fb::Reference source(2, 1, 0);
    expectNoTarget(withCore([&](Builder& b) { return fb::CreateCore(b, 0, 0, 0, nullptr, nullptr, 0, &source); }));
    const fb::Reference smart(2, 0, 1);
    expectNoTarget(withCore([&](Builder& b) { return fb::CreateCore(b, 0, 0, 0, nullptr, nullptr, 0, &smart); }));
}

TEST_F(DamagedGraphTest, MaterialsReferToClassesAndTexts)
{
    Graph graph;
    graph.materials = [](Builder& builder) { return std::vector{fb::CreateMaterial(builder, 4)}; };
    expectNoTarget(graph);
    graph.materials = [](Builder& builder) { return std::vector{fb::CreateMaterial(builder, 1, 2)}; };
    expectNoTarget(graph);
}

TEST_F(DamagedGraphTest, FileReferencesReferToTexts)
{
    Graph graph;
    graph.files = {fb::FileReference(1, 0)};
    expectNoTarget(graph);
    graph.files = {fb::FileReference(0, 1)};
    expectNoTarget(graph);
}

TEST_F(DamagedGraphTest, ClassesHaveNames)
{
    Graph graph;
    graph.classes.push_back({});
    expectDamaged(graph, "A class has no name");
}

TEST_F(DamagedGraphTest, ArraysLieWithinAChunkOfTheirKind)
{
    const char* message = "An array of a mesh lies outside its chunk";
    const auto positions = [](std::uint64_t offset, std::uint64_t count, std::uint32_t chunk) {
        return withMesh([=](Builder& builder) {
                   const fb::Array array(offset, count, chunk);
                   return fb::CreateMesh(builder, &array);
               })
            .file(Bytes(120), Bytes(120));
    };
    const NodeRef sound(read(positions(0, 10, 1)).value());
    EXPECT_TRUE(sound);
    expectError(positions(0, 11, 1), Code::DamagedMesh, message);
    expectError(positions(4, 10, 1), Code::DamagedMesh, message);
    expectError(positions(2, 1, 1), Code::DamagedMesh, message);
    expectError(positions(124, 0, 1), Code::DamagedMesh, message);
    expectError(positions(~0ull - 3, 1, 1), Code::DamagedMesh, message);
    expectError(positions(0, 0x1555555555555556, 1), Code::DamagedMesh, message);
    expectError(positions(0, ~0ull, 1), Code::DamagedMesh, message);
    expectError(positions(0, 1, 0), Code::DamagedMesh, message);
    expectError(positions(0, 1, 2), Code::DamagedMesh, message);
    expectError(positions(0, 1, 3), Code::DamagedMesh, message);
    expectError(positions(0, 1, 0xFFFFFFFF), Code::DamagedMesh, message);
}

TEST_F(DamagedGraphTest, BRepDataLiesInAChunkOfItsOwnKind)
{
    const auto brep = [](std::uint64_t offset, std::uint64_t count, std::uint32_t chunk) {
        return withMesh([=](Builder& builder) {
                   const fb::Array array(offset, count, chunk);
                   return fb::CreateMesh(builder, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                         nullptr, &array);
               })
            .file(Bytes(120), Bytes(33));
    };
    const NodeRef sound(read(brep(1, 32, 2)).value());
    EXPECT_TRUE(sound);
    expectError(brep(2, 32, 2), Code::DamagedMesh, "An array of a mesh lies outside its chunk");
    expectError(brep(0, 1, 1), Code::DamagedMesh, "An array of a mesh lies outside its chunk");
}

TEST_F(DamagedGraphTest, IndicesHaveTheirVertices)
{
    const NodeRef sound(readTriangles({0, 1, 3, 3, 2, 1}).value());
    EXPECT_TRUE(sound);
    const auto message = [](const std::vector<std::uint32_t>& indices) {
        const files::Result<osg::NodePtr> result = readTriangles(indices);
        EXPECT_EQ(result.error().code, Code::DamagedMesh);
        return result.error().message;
    };
    EXPECT_EQ(message({0, 1, 2, 0, 1, 4}), QStringLiteral("A mesh has the index 4 and only 4 vertices"));
    EXPECT_EQ(message({0xFFFFFFFF, 0, 1}), QStringLiteral("A mesh has the index 4294967295 and only 4 vertices"));
    EXPECT_EQ(message({0, 1, 2, 3}), QStringLiteral("A mesh has an incomplete triangle or line"));
}

TEST_F(DamagedGraphTest, EachIndexOfALongArrayIsLookedAt)
{
    for (std::size_t place = 0; place < 99; ++place) {
        std::vector<std::uint32_t> indices(99, 3);
        indices[place] = 0x80000000;
        EXPECT_FALSE(readTriangles(indices)) << place;
    }
}

/// The same bytes as indices and as faces: each use is held against its own rule.
TEST_F(DamagedGraphTest, FacesCoverTheTriangles)
{
    const auto graph = [](std::uint64_t faces) {
        return withMesh([=](Builder& builder) {
            const fb::Array positions(0, 4, 1);
            const fb::Array triangles(48, 6, 1);
            const fb::Array ranges(72, faces, 1);
            return fb::CreateMesh(builder, &positions, nullptr, nullptr, nullptr, &triangles, nullptr, nullptr,
                                  &ranges);
        });
    };
    const auto chunk = [](const std::vector<std::uint32_t>& ranges) {
        Bytes bytes(72);
        const Bytes tail = bytesOf(ranges);
        bytes.insert(bytes.end(), tail.begin(), tail.end());
        return bytes;
    };
    const NodeRef sound(read(graph(2).file(chunk({0, 1, 1, 1}))).value());
    EXPECT_TRUE(sound);
    const char* message = "The faces of a mesh do not cover its triangles in order";
    for (const auto& ranges : std::vector<std::vector<std::uint32_t>>{
             {0, 1, 1, 2}, {0, 1, 0, 1}, {1, 1, 0, 1}, {0, 1, 2, 0}, {0, 0xFFFFFFFF, 0xFFFFFFFF, 3}, {0, 0, 0, 0}})
        expectError(graph(2).file(chunk(ranges)), Code::DamagedMesh, message);
    expectError(graph(1).file(chunk({0, 1})), Code::DamagedMesh, message);
}

TEST_F(DamagedGraphTest, FacesAreNotTakenForIndicesThatWereLookedAt)
{
    const Graph graph = withMesh([](Builder& builder) {
        const fb::Array positions(0, 1, 1);
        const fb::Array same(16, 3, 1);
        return fb::CreateMesh(builder, &positions, nullptr, nullptr, nullptr, &same, nullptr, nullptr, &same);
    });
    expectError(graph.file(Bytes(64)), Code::DamagedMesh, "The faces of a mesh do not cover its triangles in order");
}

TEST_F(DamagedGraphTest, ArraysOfOneMeshHaveOneLength)
{
    const fb::Array positions(0, 4, 1);
    const fb::Array shorter(0, 3, 1);
    const char* message = "The arrays of a mesh have different lengths";
    const auto broken = [&](const fb::Array* normals, const fb::Array* texCoords, const fb::Array* colors) {
        return withMesh([=](Builder& b) { return fb::CreateMesh(b, &positions, normals, texCoords, colors); })
            .file(Bytes(64));
    };
    expectError(broken(&shorter, nullptr, nullptr), Code::DamagedMesh, message);
    expectError(broken(nullptr, &shorter, nullptr), Code::DamagedMesh, message);
    expectError(broken(nullptr, nullptr, &shorter), Code::DamagedMesh, message);
}

/// A small file must not make the reader look at the same bytes for hours.
TEST_F(DamagedGraphTest, ArraysThatOverlapEachOtherAreRefused)
{
    Graph graph;
    graph.meshes = [](Builder& builder) {
        std::vector<flatbuffers::Offset<fb::Mesh>> meshes;
        for (std::uint64_t i = 0; i < 1'000; ++i) {
            const fb::Array positions(0, 1, 1);
            const fb::Array points(4 * i, 100'000 - i, 1);
            meshes.push_back(fb::CreateMesh(builder, &positions, nullptr, nullptr, nullptr, nullptr, nullptr, &points));
        }
        return meshes;
    };
    expectError(graph.file(Bytes(400'000)), Code::DamagedMesh, "Arrays of meshes overlap");
}

TEST_F(DamagedGraphTest, LimitsHold)
{
    Graph graph;
    graph.nodes = {fb::Node(1, 2, 1, 0, 0), fb::Node(0, 0, 1, 0, 0), fb::Node(0, 0, 0, 0, 0)};
    osg::scenefile::SceneFileReadOptions options;
    options.maxContainers = 6; // three nodes, two names, one core
    const NodeRef root(read(graph.file(), options).value());
    EXPECT_TRUE(root);
    options.maxContainers = 5;
    expectError(graph.file(), Code::LimitExceeded, "The scene has more objects than the limit allows", options);
    options = {};
    options.maxTextBytes = 2 * (32 + 4) + 4 * 32 + 5 + 14 + 4 + 8; // two names and four classes
    const NodeRef again(read(graph.file(), options).value());
    EXPECT_TRUE(again);
    options.maxTextBytes -= 1;
    expectError(graph.file(), Code::LimitExceeded, "The texts of the scene exceed the limit", options);
}

} // namespace
