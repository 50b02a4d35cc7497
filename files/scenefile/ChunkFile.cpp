#include "files/scenefile/ChunkFile.h"

#include "files/scenefile/Checksum.h"
#include "files/scenefile/SceneErrors.h"

#include <cstring>

namespace osg::scenefile
{

files::Expected<ChunkFile> ChunkFile::open(SceneBytes bytes)
{
    ChunkFile file(std::move(bytes));
    if (const files::Expected<void> header = file.readHeader(); !header)
        return header.error();
    if (const files::Expected<void> table = file.readTable(); !table)
        return table.error();
    return file;
}

std::span<const std::byte> ChunkFile::content(const ChunkEntry& chunk) const
{
    return m_bytes.bytes.subspan(chunk.offset, chunk.size);
}

files::Expected<void> ChunkFile::readHeader()
{
    using Code = files::ErrorCode;
    const std::uint64_t size = m_bytes.bytes.size();
    if (size < sizeof m_header)
        return makeError(Code::NotASceneFile, Text::tr("The file is too short for a scene file"));
    std::memcpy(&m_header, m_bytes.bytes.data(), sizeof m_header);
    if (m_header.magic != fileMagic)
        return makeError(Code::NotASceneFile, Text::tr("The file does not start like a scene file"));
    if (m_header.headerChecksum != checksum(m_bytes.bytes.data(), offsetof(FileHeader, headerChecksum)))
        return makeError(Code::DamagedHeader, Text::tr("The header is damaged"));
    if (m_header.version == 0 || m_header.version > fileVersion)
        return makeError(Code::UnsupportedVersion,
                         Text::tr("The file has the version %1; this program reads version %2")
                             .arg(m_header.version)
                             .arg(fileVersion),
                         offsetof(FileHeader, version));
    if (m_header.fileSize != size)
        return makeError(Code::Truncated,
                         Text::tr("The file has %1 bytes; its header says %2").arg(size).arg(m_header.fileSize),
                         offsetof(FileHeader, fileSize));
    return {};
}

files::Expected<void> ChunkFile::readTable()
{
    using Code = files::ErrorCode;
    const std::uint64_t size = m_bytes.bytes.size();
    const std::uint64_t place = m_header.tableOffset;
    const std::uint64_t length = std::uint64_t(m_header.chunkCount) * sizeof(ChunkEntry);
    if (place > size || length > size - place)
        return makeError(Code::DamagedHeader, Text::tr("The table of chunks lies outside the file"),
                         offsetof(FileHeader, tableOffset));
    if (m_header.tableChecksum != checksum(m_bytes.bytes.data() + place, length))
        return makeError(Code::DamagedTable, Text::tr("The table of chunks is damaged"), place);
    m_chunks.resize(m_header.chunkCount);
    if (length > 0)
        std::memcpy(m_chunks.data(), m_bytes.bytes.data() + place, length);
    for (std::size_t i = 0; i < m_chunks.size(); ++i) {
        const ChunkEntry& chunk = m_chunks[i];
        if (chunk.offset % chunkAlignment != 0 || chunk.offset > size || chunk.size > size - chunk.offset)
            return makeError(Code::DamagedTable, Text::tr("Chunk %1 lies outside the file or is not aligned").arg(i),
                             place + i * sizeof(ChunkEntry));
    }
    return {};
}

files::Expected<void> ChunkFile::verifyChecksums() const
{
    for (const ChunkEntry& chunk : m_chunks)
        if (checksum(m_bytes.bytes.data() + chunk.offset, chunk.size) != chunk.checksum)
            return makeError(files::ErrorCode::WrongChecksum, Text::tr("The checksum of a chunk does not match"),
                             chunk.offset);
    return {};
}

} // namespace osg::scenefile
