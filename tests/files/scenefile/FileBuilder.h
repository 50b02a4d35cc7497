#pragma once

#include "files/scenefile/Checksum.h"
#include "files/scenefile/GraphWriter.h"
#include "files/scenefile/SceneFormat.h"

#include <cstring>
#include <functional>

/// Builds scene files by hand, sound but for what a test breaks.
namespace filebuilder
{

using osg::scenefile::ChunkEntry;
using osg::scenefile::ChunkType;
using osg::scenefile::FileHeader;
namespace fb = osg::sceneformat;
using Bytes = std::vector<std::byte>;

template <class T>
T at(const Bytes& bytes, std::size_t offset)
{
    T value;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

template <class T>
void put(Bytes& bytes, std::size_t offset, const T& value)
{
    std::memcpy(bytes.data() + offset, &value, sizeof value);
}

inline FileHeader headerOf(const Bytes& bytes)
{
    return at<FileHeader>(bytes, 0);
}

inline ChunkEntry chunkOf(const Bytes& bytes, std::size_t index)
{
    return at<ChunkEntry>(bytes, headerOf(bytes).tableOffset + index * sizeof(ChunkEntry));
}

/// Makes the checksums of header and table right again, as far as the table can be found.
inline void seal(Bytes& bytes)
{
    FileHeader header = headerOf(bytes);
    const std::uint64_t length = header.chunkCount * sizeof(ChunkEntry);
    if (header.tableOffset <= bytes.size() && length <= bytes.size() - header.tableOffset)
        header.tableChecksum = osg::scenefile::checksum(bytes.data() + header.tableOffset, length);
    header.headerChecksum = osg::scenefile::checksum(&header, offsetof(FileHeader, headerChecksum));
    put(bytes, 0, header);
}

inline Bytes sealed(Bytes bytes)
{
    seal(bytes);
    return bytes;
}

/// `bytes` with the chunk at `index` changed by `change`, and sound checksums.
template <class Change>
Bytes withChunk(Bytes bytes, std::size_t index, const Change& change)
{
    ChunkEntry chunk = chunkOf(bytes, index);
    change(chunk);
    put(bytes, headerOf(bytes).tableOffset + index * sizeof(ChunkEntry), chunk);
    return sealed(std::move(bytes));
}

template <class Change>
Bytes withHeader(Bytes bytes, const Change& change)
{
    FileHeader header = headerOf(bytes);
    change(header);
    put(bytes, 0, header);
    return sealed(std::move(bytes));
}

struct Chunk {
    ChunkType type;
    Bytes content;
};

inline Bytes fileOf(const std::vector<Chunk>& chunks)
{
    Bytes bytes(sizeof(FileHeader));
    std::vector<ChunkEntry> table;
    for (const Chunk& chunk : chunks) {
        bytes.resize(osg::scenefile::alignedUp(bytes.size(), 64));
        table.push_back({chunk.type, osg::scenefile::checksum(chunk.content.data(), chunk.content.size()), bytes.size(),
                         chunk.content.size(), 0});
        bytes.insert(bytes.end(), chunk.content.begin(), chunk.content.end());
    }
    FileHeader header;
    header.tableOffset = bytes.size();
    header.chunkCount = static_cast<std::uint32_t>(chunks.size());
    bytes.resize(bytes.size() + table.size() * sizeof(ChunkEntry));
    header.fileSize = bytes.size();
    if (!table.empty())
        std::memcpy(bytes.data() + header.tableOffset, table.data(), table.size() * sizeof(ChunkEntry));
    put(bytes, 0, header);
    return sealed(std::move(bytes));
}

/// A graph in the making: one node with a group, and what a test adds or breaks.
struct Graph {
    std::vector<std::string> texts = {"text"};
    std::vector<std::vector<std::string>> classes = {{"Group"}, {"SimpleMaterial"}, {"Tags"}, {"Geometry"}};
    std::vector<fb::Node> nodes = {fb::Node(1, 0, 1, 0, 0)};
    std::vector<fb::Link> links;
    std::vector<fb::FileReference> files;
    std::function<std::vector<flatbuffers::Offset<fb::Core>>(flatbuffers::FlatBufferBuilder&)> cores =
        [](flatbuffers::FlatBufferBuilder& builder) { return std::vector{fb::CreateCore(builder, 0)}; };
    std::function<std::vector<flatbuffers::Offset<fb::Material>>(flatbuffers::FlatBufferBuilder&)> materials;
    std::function<std::vector<flatbuffers::Offset<fb::Attachment>>(flatbuffers::FlatBufferBuilder&)> attachments;
    std::function<std::vector<flatbuffers::Offset<fb::Mesh>>(flatbuffers::FlatBufferBuilder&)> meshes;
    std::function<flatbuffers::Offset<fb::AttributeTable>(flatbuffers::FlatBufferBuilder&)> attributes;
    std::vector<fb::Image> images;

    Bytes bytes() const
    {
        flatbuffers::FlatBufferBuilder builder;
        std::vector<flatbuffers::Offset<fb::ClassName>> classRecords;
        for (const auto& names : classes)
            classRecords.push_back(fb::CreateClassName(builder, builder.CreateVectorOfStrings(names)));
        const auto made = [&](const auto& make) {
            using Records = decltype(make(builder));
            return builder.CreateVector(make ? make(builder) : Records());
        };
        const auto textVector = builder.CreateVectorOfStrings(texts);
        const auto classVector = builder.CreateVector(classRecords);
        const auto nodeVector = builder.CreateVectorOfStructs(nodes);
        const auto linkVector = builder.CreateVectorOfStructs(links);
        const auto coreVector = made(cores);
        const auto materialVector = made(materials);
        const auto attachmentVector = made(attachments);
        const auto fileVector = builder.CreateVectorOfStructs(files);
        const auto meshVector = made(meshes);
        const auto attributeTable = attributes ? attributes(builder) : 0;
        const auto imageVector = builder.CreateVectorOfStructs(images);
        fb::FinishSceneBuffer(builder, fb::CreateScene(builder, textVector, classVector, nodeVector, linkVector,
                                                       coreVector, materialVector, attachmentVector, fileVector,
                                                       meshVector, attributeTable, imageVector));
        const auto* start = reinterpret_cast<const std::byte*>(builder.GetBufferPointer());
        return {start, start + builder.GetSize()};
    }

    /// The file with this graph and the given content of its mesh chunk and of its B-rep chunk.
    Bytes file(const Bytes& meshChunk = {}, const Bytes& brepChunk = {}) const
    {
        return fileOf({{ChunkType::Graph, bytes()}, {ChunkType::Mesh, meshChunk}, {ChunkType::BRep, brepChunk}});
    }
};

template <class T>
Bytes bytesOf(const std::vector<T>& values)
{
    const auto* start = reinterpret_cast<const std::byte*>(values.data());
    return {start, start + values.size() * sizeof(T)};
}

} // namespace filebuilder
