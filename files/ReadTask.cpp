#include "files/ReadTask.h"

#include "files/Failure.h"

namespace files
{

namespace
{

constexpr std::size_t maxWarnings = 100;

} // namespace

QString linePlace(std::uint64_t line)
{
    return tr("line %1").arg(line);
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
    const std::uint64_t limit = m_options.limits.maxFileBytes;
    if (count > limit || m_fileBytes > limit - count)
        failIn(file, ErrorCode::LimitExceeded, tr("more than %1 bytes to read").arg(limit));
    m_fileBytes += count;
}

} // namespace files
