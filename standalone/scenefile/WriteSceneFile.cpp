#include "standalone/scenefile/GraphWriter.h"
#include "standalone/scenefile/OutputFile.h"
#include "standalone/scenefile/SceneFormat.h"

#include <new>

namespace osg
{

namespace scenefile
{

namespace
{

/// One chunk, from where the file stands on.
class ChunkStream
{
public:
    ChunkStream(OutputFile& file, ChunkType type) : m_file(file)
    {
        m_file.pad();
        m_entry.type = type;
        m_entry.offset = m_file.position();
    }

    void append(const void* data, std::uint64_t size)
    {
        m_file.write(data, size);
        if (m_file.error())
            return;
        m_entry.checksum = checksum(data, size, m_entry.checksum);
        m_entry.size += size;
    }

    void fillUpTo(std::uint64_t offset)
    {
        static constexpr char zeros[ArrayPlan::alignment] = {};
        append(zeros, offset - m_entry.size);
    }

    const ChunkEntry& entry() const { return m_entry; }

private:
    OutputFile& m_file;
    ChunkEntry m_entry;
};

ChunkEntry writeGraph(OutputFile& file, std::span<const std::byte> graph)
{
    ChunkStream chunk(file, ChunkType::Graph);
    chunk.append(graph.data(), graph.size());
    return chunk.entry();
}

ChunkEntry writeArrays(OutputFile& file, ChunkType type, const ArrayPlan& plan)
{
    ChunkStream chunk(file, type);
    for (const ArrayPlan::Piece& piece : plan.pieces()) {
        chunk.fillUpTo(piece.offset);
        chunk.append(piece.data, piece.size);
    }
    return chunk.entry();
}

/// The header goes last, so that a file is never taken for good before it is.
void writeTableAndHeader(OutputFile& file, const std::array<ChunkEntry, ChunkTotal>& chunks)
{
    file.pad();
    FileHeader header;
    header.chunkCount = ChunkTotal;
    header.tableOffset = file.position();
    header.fileSize = header.tableOffset + sizeof chunks;
    header.tableChecksum = checksum(&chunks, sizeof chunks);
    header.headerChecksum = checksum(&header, offsetof(FileHeader, headerChecksum));
    file.write(&chunks, sizeof chunks);
    file.rewrite(&header, sizeof header);
}

SceneFileWriteResult write(const NodePtr& root, const QString& path, const SceneFileWriteOptions& options)
{
    SceneFileWriteResult result;
    if (!root) {
        result.error = makeError(SceneFileErrorCode::NothingToWrite, Text::tr("There is no scene to write"));
        return result;
    }
    GraphWriter graph(options);
    result.error = graph.collect(root);
    result.warnings = graph.warnings().all();
    if (result.error)
        return result;
    OutputFile file(path);
    const FileHeader placeholder = {};
    file.write(&placeholder, sizeof placeholder);
    std::array<ChunkEntry, ChunkTotal> chunks;
    chunks[GraphChunk] = writeGraph(file, graph.graph());
    chunks[MeshChunk] = writeArrays(file, ChunkType::Mesh, graph.meshArrays());
    chunks[BRepChunk] = writeArrays(file, ChunkType::BRep, graph.breps());
    file.pad();
    result.bytes = file.position() + sizeof chunks;
    writeTableAndHeader(file, chunks);
    file.commit();
    result.error = file.error();
    return result;
}

} // namespace

} // namespace scenefile

SceneFileWriteResult writeSceneFile(const NodePtr& root, const QString& path, const SceneFileWriteOptions& options)
{
    SceneFileWriteResult result;
    try {
        result = scenefile::write(root, path, options);
    } catch (const std::bad_alloc&) {
        result.error = scenefile::outOfMemory();
    }
    if (result.error) {
        result.error->file = path;
        result.bytes = 0;
    }
    return result;
}

} // namespace osg
