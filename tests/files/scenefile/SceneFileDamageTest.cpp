// Damage to header, table and chunks: each gives the error that names it, and nothing stays alive.

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Tags.h"
#include "tests/files/scenefile/FileBuilder.h"
#include "tests/files/scenefile/SceneFileTest.h"
#include "tests/files/scenefile/TreeWalk.h"

#include <random>

namespace
{

using namespace filebuilder;

class DamagedFileTest : public SceneFileTest
{
protected:
    /// Two nodes, tags, a name and a mesh with B-rep data.
    Bytes sample() const
    {
        const NodeRef root(osg::makeNodeFor(geometryOf(fullMesh())));
        osg::setName(root.get(), "root");
        osg::setTags(root.get(), {"tag"});
        root->addChild(osg::Node::create());
        return written(root);
    }

    static osg::scenefile::SceneFileReadOptions verified()
    {
        osg::scenefile::SceneFileReadOptions options;
        options.verifyChecksums = true;
        return options;
    }

    static void expectError(const Bytes& bytes, Code code, std::uint64_t offset,
                            const osg::scenefile::SceneFileReadOptions& options = {})
    {
        const files::Result<osg::NodePtr> result = read(bytes, options);
        ASSERT_FALSE(result) << "expected " << files::errorName(code);
        EXPECT_STREQ(files::errorName(result.error().code), files::errorName(code));
        EXPECT_EQ(result.error().place, QStringLiteral("byte %1").arg(offset));
        EXPECT_FALSE(result.error().message.isEmpty());
    }

    /// Either a sound tree, which is walked with all its arrays, or an error.
    static void expectErrorOrTree(const Bytes& bytes)
    {
        const files::Result<osg::NodePtr> result = read(bytes);
        EXPECT_TRUE(!result || result.value());
        if (result)
            touchEverything(NodeRef(result.value()));
    }
};

TEST_F(DamagedFileTest, TheSampleIsSound)
{
    const files::Result<osg::NodePtr> result = read(sample(), verified());
    ASSERT_TRUE(result);
    touchEverything(NodeRef(result.value()));
}

TEST_F(DamagedFileTest, EachByteOfTheHeaderCounts)
{
    const Bytes good = sample();
    for (std::size_t i = 0; i < sizeof(FileHeader); ++i) {
        Bytes bytes = good;
        bytes[i] ^= std::byte{0x10};
        expectError(bytes, i < 8 ? Code::NotASceneFile : Code::DamagedHeader, 0);
    }
}

TEST_F(DamagedFileTest, EachByteOfTheTableCounts)
{
    const Bytes good = sample();
    const std::uint64_t table = headerOf(good).tableOffset;
    for (std::size_t i = table; i < good.size(); ++i) {
        Bytes bytes = good;
        bytes[i] ^= std::byte{0x10};
        expectError(bytes, Code::DamagedTable, table);
    }
}

TEST_F(DamagedFileTest, EachByteOfAChunkCountsWhenChecksumsAreVerified)
{
    const Bytes good = sample();
    for (std::size_t index = 0; index < 3; ++index) {
        const ChunkEntry chunk = chunkOf(good, index);
        ASSERT_GT(chunk.size, 0u);
        for (std::uint64_t i = chunk.offset; i < chunk.offset + chunk.size; ++i) {
            Bytes bytes = good;
            bytes[i] ^= std::byte{0x10};
            expectError(bytes, Code::WrongChecksum, chunk.offset, verified());
        }
    }
}

TEST_F(DamagedFileTest, OtherVersionsAreToldApart)
{
    const Bytes good = sample();
    expectError(withHeader(good, [](FileHeader& h) { h.version = 2; }), Code::UnsupportedVersion, 8);
    expectError(withHeader(good, [](FileHeader& h) { h.version = 0; }), Code::UnsupportedVersion, 8);
    EXPECT_EQ(read(withHeader(good, [](FileHeader& h) { h.version = 7; })).error().message,
              QStringLiteral("The file has the version 7; this program reads version 1"));
}

TEST_F(DamagedFileTest, AWrongSizeIsTold)
{
    const Bytes good = sample();
    Bytes longer = good;
    longer.push_back(std::byte{0});
    expectError(longer, Code::Truncated, 16);
    expectError(withHeader(good, [](FileHeader& h) { h.fileSize += 64; }), Code::Truncated, 16);
    expectError(withHeader(good, [](FileHeader& h) { h.fileSize = 0; }), Code::Truncated, 16);
}

TEST_F(DamagedFileTest, ATableOutsideTheFileIsTold)
{
    const Bytes good = sample();
    for (const std::uint64_t offset :
         {headerOf(good).tableOffset + 1, good.size() + 1, ~std::uint64_t(0), ~std::uint64_t(0) - 63})
        expectError(withHeader(good, [&](FileHeader& h) { h.tableOffset = offset; }), Code::DamagedHeader, 24);
    for (const std::uint32_t count : {4u, 0xFFFFFFFFu, 0x08000000u})
        expectError(withHeader(good, [&](FileHeader& h) { h.chunkCount = count; }), Code::DamagedHeader, 24);
}

TEST_F(DamagedFileTest, AChunkOutsideTheFileIsTold)
{
    const Bytes good = sample();
    const std::uint64_t table = headerOf(good).tableOffset;
    for (std::size_t index = 0; index < 3; ++index) {
        const std::uint64_t entry = table + index * 32;
        expectError(withChunk(good, index, [](ChunkEntry& c) { c.offset += 4; }), Code::DamagedTable, entry);
        expectError(withChunk(good, index, [](ChunkEntry& c) { c.offset = 1ull << 40; }), Code::DamagedTable, entry);
        expectError(withChunk(good, index, [](ChunkEntry& c) { c.offset = ~63ull; }), Code::DamagedTable, entry);
        expectError(withChunk(good, index, [](ChunkEntry& c) { c.size = ~0ull; }), Code::DamagedTable, entry);
        expectError(withChunk(good, index, [](ChunkEntry& c) { c.size += 1 << 20; }), Code::DamagedTable, entry);
    }
}

TEST_F(DamagedFileTest, AChunkOfAnotherTypeOrSizeIsTold)
{
    const Bytes good = sample();
    const auto code = [](const Bytes& bytes) { return read(bytes).error().code; };
    EXPECT_EQ(code(withChunk(good, 0, [](ChunkEntry& c) { c.type = ChunkType::Mesh; })), Code::DamagedTable);
    EXPECT_EQ(code(withChunk(good, 1, [](ChunkEntry& c) { c.type = ChunkType::Graph; })), Code::DamagedTable);
    EXPECT_EQ(code(withChunk(good, 1, [](ChunkEntry& c) { c.type = ChunkType::BRep; })), Code::DamagedMesh);
    EXPECT_EQ(code(withChunk(good, 2, [](ChunkEntry& c) { c.type = ChunkType{0x12345678}; })), Code::DamagedMesh);
    EXPECT_EQ(code(withChunk(good, 0, [](ChunkEntry& c) { c.size = 3; })), Code::DamagedGraph);
    EXPECT_EQ(code(withChunk(good, 0, [](ChunkEntry& c) { c.size /= 2; })), Code::DamagedGraph);
    EXPECT_EQ(code(withChunk(good, 1, [](ChunkEntry& c) { c.size -= 1; })), Code::DamagedMesh);
    EXPECT_EQ(code(withChunk(good, 2, [](ChunkEntry& c) { c.size = 0; })), Code::DamagedMesh);
}

TEST_F(DamagedFileTest, AWrongChecksumAloneIsSeenOnlyOnDemand)
{
    const Bytes bytes = withChunk(sample(), 1, [](ChunkEntry& c) { c.checksum ^= 1; });
    expectError(bytes, Code::WrongChecksum, chunkOf(bytes, 1).offset, verified());
    const NodeRef root(read(bytes).value());
    EXPECT_TRUE(root);
}

TEST_F(DamagedFileTest, ChunksOfUnknownTypesArePassedOver)
{
    const Graph graph;
    const Bytes bytes = fileOf({{ChunkType{0x31313131}, Bytes(100)}, {ChunkType::Graph, graph.bytes()}});
    const NodeRef root(read(bytes, verified()).value());
    ASSERT_TRUE(root);
    EXPECT_STREQ(osg::getName(root.get()), "text");
}

TEST_F(DamagedFileTest, AFileCutShortAnywhereIsAnError)
{
    const Bytes good = sample();
    for (std::size_t length = 0; length < good.size(); ++length) {
        const Bytes cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length));
        expectError(cut, length < 64 ? Code::NotASceneFile : Code::Truncated, length < 64 ? 0 : 16);
    }
}

/// As a hostile writer would: the header knows the new size, and the table has moved to the new end.
TEST_F(DamagedFileTest, ChunksThatLostTheirEndsAreErrors)
{
    const Bytes good = sample();
    const std::uint64_t table = headerOf(good).tableOffset;
    const Bytes entries(good.begin() + static_cast<std::ptrdiff_t>(table), good.end());
    for (std::size_t length = 64; length < table; length += 4) {
        Bytes cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length));
        cut.insert(cut.end(), entries.begin(), entries.end());
        FileHeader header = headerOf(good);
        header.fileSize = cut.size();
        header.tableOffset = length;
        put(cut, 0, header);
        seal(cut);
        expectErrorOrTree(cut);
    }
}

TEST_F(DamagedFileTest, AFileOnDiskThatIsCutShortIsAnError)
{
    const Bytes good = sample();
    ASSERT_TRUE(QFile::resize(path(), static_cast<qint64>(chunkOf(good, 1).offset)));
    const files::Result<osg::NodePtr> result = osg::scenefile::readSceneFile(path());
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().code, Code::Truncated);
    EXPECT_EQ(result.error().file, path());
    const QString text = QStringLiteral(": The file has %1 bytes; its header says %2 (Truncated at byte 16)");
    EXPECT_EQ(result.error().toStringWithCode(), path() + text.arg(chunkOf(good, 1).offset).arg(good.size()));
}

TEST_F(DamagedFileTest, RandomBytesAreErrors)
{
    std::mt19937 random(20'240'601);
    for (int round = 0; round < 2'000; ++round) {
        Bytes bytes(random() % 600);
        for (std::byte& byte : bytes)
            byte = static_cast<std::byte>(random());
        EXPECT_FALSE(read(bytes));
        if (bytes.size() < 64)
            continue;
        put(bytes, 0, FileHeader{.chunkCount = 1, .fileSize = bytes.size(), .tableOffset = bytes.size() - 40});
        seal(bytes);
        EXPECT_FALSE(read(bytes));
    }
}

TEST_F(DamagedFileTest, RandomDamageGivesAnErrorOrASoundTree)
{
    const Bytes good = sample();
    std::mt19937 random(4'711);
    int trees = 0;
    for (int round = 0; round < 6'000; ++round) {
        Bytes bytes = good;
        const unsigned changes = 1 + random() % 4;
        for (unsigned i = 0; i < changes; ++i) {
            const std::size_t place = 64 + random() % (bytes.size() - 64);
            bytes[place] = round % 2 ? bytes[place] ^ std::byte(1u << random() % 8) : static_cast<std::byte>(random());
        }
        seal(bytes);
        const files::Result<osg::NodePtr> result = read(bytes);
        ASSERT_TRUE(!result || result.value());
        trees += result ? 1 : 0;
        if (result)
            touchEverything(NodeRef(result.value()));
    }
    EXPECT_GT(trees, 100);
    EXPECT_LT(trees, 5'900);
}

} // namespace
