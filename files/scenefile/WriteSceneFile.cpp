#include "files/scenefile/WriteSceneFile.h"

#include "files/OutputFile.h"
#include "files/scenefile/Checksum.h"
#include "files/scenefile/GraphWriter.h"
#include "files/scenefile/SceneErrors.h"
#include "files/scenefile/SceneFormat.h"

#include <new>

namespace osg::scenefile
{

namespace
{

/// One chunk, from where the file stands on.
class ChunkStream
{
public:
    ChunkStream(files::OutputFile& file, ChunkType type) : m_file(file)
    {
        m_file.pad(chunkAlignment);
        m_entry.type = type;
        m_entry.offset = m_file.position();
    }

    void append(const void* data, std::uint64_t size)
    {
        m_file.write(data, size);
        if (!m_file.isSound())
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
    files::OutputFile& m_file;
    ChunkEntry m_entry;
};

ChunkEntry writeGraph(files::OutputFile& file, std::span<const std::byte> graph)
{
    ChunkStream chunk(file, ChunkType::Graph);
    chunk.append(graph.data(), graph.size());
    return chunk.entry();
}

ChunkEntry writeArrays(files::OutputFile& file, ChunkType type, const ArrayPlan& plan)
{
    ChunkStream chunk(file, type);
    for (const ArrayPlan::Piece& piece : plan.pieces()) {
        chunk.fillUpTo(piece.offset);
        chunk.append(piece.data, piece.size);
    }
    return chunk.entry();
}

/// The header goes last, so that a file is never taken for good before it is.
void writeTableAndHeader(files::OutputFile& file, const std::vector<ChunkEntry>& chunks)
{
    file.pad(chunkAlignment);
    FileHeader header;
    const std::uint64_t tableSize = chunks.size() * sizeof(ChunkEntry);
    header.chunkCount = static_cast<std::uint32_t>(chunks.size());
    header.tableOffset = file.position();
    header.fileSize = header.tableOffset + tableSize;
    header.tableChecksum = checksum(chunks.data(), tableSize);
    header.headerChecksum = checksum(&header, offsetof(FileHeader, headerChecksum));
    file.write(chunks.data(), tableSize);
    file.rewrite(&header, sizeof header);
}

/// The size of the file.
files::Expected<std::uint64_t> writeChunks(const GraphWriter& graph, const QString& path,
                                           files::OutputFile::Lasting lasting)
{
    files::OutputFile file(path);
    const FileHeader placeholder = {};
    file.write(&placeholder, sizeof placeholder);
    std::vector<ChunkEntry> chunks(ImageChunk);
    chunks[GraphChunk] = writeGraph(file, graph.graph());
    chunks[MeshChunk] = writeArrays(file, ChunkType::Mesh, graph.meshArrays());
    chunks[BRepChunk] = writeArrays(file, ChunkType::BRep, graph.breps());
    if (!graph.images().pieces().empty())
        chunks.push_back(writeArrays(file, ChunkType::Image, graph.images()));
    file.pad(chunkAlignment);
    const std::uint64_t size = file.position() + chunks.size() * sizeof(ChunkEntry);
    writeTableAndHeader(file, chunks);
    if (const files::Expected<void> complete = file.commit(lasting); !complete)
        return makeError(complete.error().code, complete.error().message, file.position());
    return size;
}

files::Result<std::uint64_t> write(const NodePtr& root, const QString& path, const SceneFileWriteOptions& options)
{
    if (!root)
        return makeError(files::ErrorCode::NothingToWrite, Text::tr("There is no scene to write"));
    GraphWriter graph(options);
    if (const files::Expected<void> collected = graph.collect(root); !collected)
        return {collected.error(), graph.warnings().notes()};
    return {writeChunks(graph, path, options.lasting), graph.warnings().notes()};
}

files::Result<std::uint64_t> writeOrError(const NodePtr& root, const QString& path,
                                          const SceneFileWriteOptions& options)
{
    try {
        return write(root, path, options);
    } catch (const std::bad_alloc&) {
        return outOfMemory();
    }
}

} // namespace

files::Result<std::uint64_t> writeSceneFile(const NodePtr& root, const QString& path,
                                            const SceneFileWriteOptions& options)
{
    files::Result<std::uint64_t> result = writeOrError(root, path, options);
    if (!result)
        result.error().file = path;
    for (files::Note& warning : result.warnings)
        warning.file = path;
    return result;
}

} // namespace osg::scenefile
