#pragma once

#include "files/scenefile/SceneBytes.h"
#include "files/scenefile/SceneFormat.h"

namespace osg::scenefile
{

/// A scene file whose header and table of chunks are sound: each chunk lies within the file, at a multiple of 64.
class ChunkFile
{
public:
    static files::Expected<ChunkFile> open(SceneBytes bytes);

    const SceneBytes& data() const { return m_bytes; }
    const std::vector<ChunkEntry>& chunks() const { return m_chunks; }
    std::span<const std::byte> content(const ChunkEntry& chunk) const;
    /// Reads all chunks; fails at the first whose checksum is wrong.
    files::Expected<void> verifyChecksums() const;

private:
    explicit ChunkFile(SceneBytes bytes) : m_bytes(std::move(bytes)) {}
    files::Expected<void> readHeader();
    files::Expected<void> readTable();

    SceneBytes m_bytes;
    FileHeader m_header;
    std::vector<ChunkEntry> m_chunks;
};

} // namespace osg::scenefile
