#pragma once

#include "standalone/scenefile/SceneBytes.h"
#include "standalone/scenefile/SceneFormat.h"

namespace osg::scenefile
{

/// A scene file whose header and table of chunks are sound: each chunk lies within the file, at a multiple of 64.
class ChunkFile
{
public:
    static Result<ChunkFile> open(SceneBytes bytes);

    const SceneBytes& data() const { return m_bytes; }
    const std::vector<ChunkEntry>& chunks() const { return m_chunks; }
    std::span<const std::byte> content(const ChunkEntry& chunk) const;
    /// Reads all chunks.
    std::optional<SceneFileError> wrongChecksum() const;

private:
    explicit ChunkFile(SceneBytes bytes) : m_bytes(std::move(bytes)) {}
    std::optional<SceneFileError> readHeader();
    std::optional<SceneFileError> readTable();

    SceneBytes m_bytes;
    FileHeader m_header;
    std::vector<ChunkEntry> m_chunks;
};

} // namespace osg::scenefile
