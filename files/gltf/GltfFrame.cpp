#include "files/gltf/GltfFrame.h"

#include "files/GlbLayout.h"

#include <QtEndian>

namespace files::gltf
{

namespace
{

using namespace glblayout;

/// The magic number as it stands in the file.
constexpr std::string_view beginning = "glTF";

/// A walk over the chunks of a binary file.
class ChunkWalk
{
public:
    ChunkWalk(std::string_view file, const ReadTask& task) : m_file(file), m_task(task) {}

    void readHeader();
    bool atEnd() const { return m_position == m_file.size(); }
    /// The type of the next chunk; `content` becomes what is in it.
    std::uint32_t takeChunk(std::string_view& content);

private:
    std::uint32_t numberAt(std::size_t position) const
    {
        return qFromLittleEndian<std::uint32_t>(m_file.data() + position);
    }
    [[noreturn]] void fail(const QString& message) const
    {
        m_task.fail(ErrorCode::Damaged, message, tr("byte %1").arg(static_cast<qulonglong>(m_position)));
    }

    std::string_view m_file;
    const ReadTask& m_task;
    std::size_t m_position = 0;
};

void ChunkWalk::readHeader()
{
    if (m_file.size() < headerSize + chunkHeaderSize)
        fail(tr("the file is too short for its header"));
    if (const std::uint32_t given = numberAt(4); given != version)
        m_task.fail(ErrorCode::Unsupported, tr("this is glTF %1; only glTF 2 is read").arg(given));
    const std::uint32_t length = numberAt(8);
    if (length > m_file.size())
        fail(tr("the file ends after %1 of %2 bytes").arg(static_cast<qulonglong>(m_file.size())).arg(length));
    if (length < headerSize + chunkHeaderSize)
        fail(tr("the length in the header is too small"));
    m_file = m_file.substr(0, length);
    m_position = headerSize;
}

std::uint32_t ChunkWalk::takeChunk(std::string_view& content)
{
    if (m_file.size() - m_position < chunkHeaderSize)
        fail(tr("the header of a chunk is cut off"));
    const std::uint32_t size = numberAt(m_position);
    const std::uint32_t type = numberAt(m_position + 4);
    if (size > m_file.size() - m_position - chunkHeaderSize)
        fail(tr("a chunk is longer than the file"));
    content = m_file.substr(m_position + chunkHeaderSize, size);
    m_position += chunkHeaderSize + size;
    return type;
}

} // namespace

GltfFrame splitGltf(const FileBytes& file, const ReadTask& task)
{
    const std::string_view text = file.text();
    if (!text.starts_with(beginning))
        return {text, {}};
    ChunkWalk walk(text, task);
    walk.readHeader();
    GltfFrame frame;
    if (walk.takeChunk(frame.json) != jsonChunk)
        task.fail(ErrorCode::Damaged, tr("the first chunk is not JSON text"), tr("byte %1").arg(headerSize));
    std::string_view content;
    while (!walk.atEnd() && frame.binary.empty())
        if (walk.takeChunk(content) == binaryChunk)
            frame.binary = content;
    return frame;
}

} // namespace files::gltf
