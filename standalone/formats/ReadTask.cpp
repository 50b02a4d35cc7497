#include "standalone/formats/ReadTask.h"

namespace formats
{

namespace
{

constexpr std::size_t maxWarnings = 100;

} // namespace

const char* readErrorName(ReadErrorCode code)
{
    switch (code) {
    case ReadErrorCode::NotFound:
        return "NotFound";
    case ReadErrorCode::NotReadable:
        return "NotReadable";
    case ReadErrorCode::UnknownFormat:
        return "UnknownFormat";
    case ReadErrorCode::Empty:
        return "Empty";
    case ReadErrorCode::Damaged:
        return "Damaged";
    case ReadErrorCode::Unsupported:
        return "Unsupported";
    case ReadErrorCode::LimitExceeded:
        return "LimitExceeded";
    case ReadErrorCode::OutOfMemory:
        return "OutOfMemory";
    }
    return "Unknown";
}

QString ReadNote::toString() const
{
    return place.isEmpty() ? tr("%1: %2").arg(file, message) : tr("%1: %2 (%3)").arg(file, message, place);
}

QString linePlace(std::uint64_t line)
{
    return tr("line %1").arg(line);
}

void ReadTask::fail(ReadErrorCode code, const QString& message, const QString& place) const
{
    failIn(m_path, code, message, place);
}

void ReadTask::failIn(const QString& file, ReadErrorCode code, const QString& message, const QString& place) const
{
    throw ReadFailure({{message, file, place}, code});
}

void ReadTask::warnIn(const QString& file, const QString& message, const QString& place)
{
    if (m_warnings.size() < maxWarnings)
        m_warnings.push_back({message, file, place});
    else
        ++m_moreWarnings;
}

std::vector<ReadNote> ReadTask::warnings() const
{
    std::vector<ReadNote> all = m_warnings;
    if (m_moreWarnings > 0)
        all.push_back({tr("%1 more warnings").arg(m_moreWarnings), m_path, {}});
    return all;
}

void ReadTask::countNodes(std::uint64_t count)
{
    m_nodes += count;
    if (m_nodes > m_options.limits.maxNodes)
        fail(ReadErrorCode::LimitExceeded, tr("more than %1 nodes").arg(m_options.limits.maxNodes));
}

void ReadTask::countVertices(std::uint64_t count, const QString& place)
{
    const std::uint64_t limit = m_options.limits.maxVertices;
    if (count > limit || m_vertices > limit - count)
        fail(ReadErrorCode::LimitExceeded, tr("more than %1 vertices").arg(limit), place);
    m_vertices += count;
}

void ReadTask::countFileBytes(const QString& file, std::uint64_t count)
{
    const std::uint64_t limit = m_options.limits.maxFileBytes;
    if (count > limit || m_fileBytes > limit - count)
        failIn(file, ReadErrorCode::LimitExceeded, tr("more than %1 bytes to read").arg(limit));
    m_fileBytes += count;
}

} // namespace formats
