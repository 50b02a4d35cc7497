#include "files/ReadTask.h"

#include "files/Failure.h"

#include <QFileInfo>

#include <algorithm>
#include <limits>

namespace files
{

namespace
{

constexpr std::size_t maxWarnings = 100;

// What a small file may take beside what its bytes may. The shortest text that means much is a sphere in VRML: a few
// hundred bytes that stand for 50 KB.
constexpr std::uint64_t memoryOfAnyFile = std::uint64_t(256) << 20;
constexpr std::uint64_t memoryOfByte = 1024;

/// A node with core, name and its place in the lists.
constexpr std::uint64_t memoryOfNode = 1024;

std::uint64_t megabytes(std::uint64_t bytes)
{
    return bytes >> 20;
}

/// The product, or the largest number.
std::uint64_t times(std::uint64_t count, std::uint64_t bytes)
{
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    return count > most / bytes ? most : count * bytes;
}

} // namespace

QString linePlace(std::uint64_t line)
{
    return tr("line %1").arg(line);
}

ReadTask::ReadTask(const QString& path, const ReadOptions& options) : m_path(path), m_options(options)
{
    if (m_options.references.top.empty())
        m_options.references.top = QFileInfo(path).absolutePath().toStdString();
}

void ReadTask::fail(ErrorCode code, const QString& message, const QString& place) const
{
    failIn(m_path, code, message, place);
}

void ReadTask::fail(const Error& error) const
{
    throw files::Failure(error);
}

void ReadTask::failIn(const QString& file, ErrorCode code, const QString& message, const QString& place) const
{
    fail({{message, file, place}, code});
}

void ReadTask::warnIn(const QString& file, const QString& message, const QString& place)
{
    if (m_warnings.size() < maxWarnings)
        m_warnings.push_back({message, file, place});
    else
        ++m_moreWarnings;
}

std::vector<Note> ReadTask::warnings() const
{
    std::vector<Note> all = m_warnings;
    if (m_moreWarnings > 0)
        all.push_back({tr("%1 more warnings").arg(m_moreWarnings), m_path, {}});
    return all;
}

void ReadTask::countNodes(std::uint64_t count)
{
    m_nodes += count;
    if (m_nodes > m_options.limits.maxNodes)
        fail(ErrorCode::LimitExceeded, tr("more than %1 nodes").arg(m_options.limits.maxNodes));
    takeMemory(times(count, memoryOfNode));
}

void ReadTask::countVertices(std::uint64_t count, const QString& place)
{
    const std::uint64_t limit = m_options.limits.maxVertices;
    if (count > limit || m_vertices > limit - count)
        fail(ErrorCode::LimitExceeded, tr("more than %1 vertices").arg(limit), place);
    m_vertices += count;
}

void ReadTask::countFileBytes(const QString& file, std::uint64_t count)
{
    m_packedBytes += count;
    countUnpackedBytes(file, count);
}

void ReadTask::countUnpackedBytes(const QString& file, std::uint64_t count)
{
    const std::uint64_t limit = m_options.limits.maxFileBytes;
    if (count > limit || m_fileBytes > limit - count)
        failIn(file, ErrorCode::LimitExceeded, tr("more than %1 bytes to read").arg(limit));
    m_fileBytes += count;
    takeMemory(count);
}

void ReadTask::takeMemory(std::uint64_t bytes, const QString& place)
{
    const std::uint64_t most = m_options.limits.maxMemory;
    const std::uint64_t limit = std::min(most, memoryOfAnyFile + times(m_packedBytes, memoryOfByte));
    if (bytes <= limit && m_memory <= limit - bytes) {
        m_memory += bytes;
        return;
    }
    const bool isSmall = limit < most;
    fail(ErrorCode::LimitExceeded,
         isSmall ? tr("it would take more than %1 MB of memory, too much for a file of %2 bytes")
                       .arg(megabytes(limit))
                       .arg(m_packedBytes)
                 : tr("it would take more memory than the %1 MB that it may (read.memory)").arg(megabytes(limit)),
         place);
}

} // namespace files
