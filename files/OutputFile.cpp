#include "files/OutputFile.h"

#include "files/Text.h"

#include <QFileInfo>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace files
{

namespace
{

/// Also when the file that a link leads to is not there yet.
QString behindLink(const QString& path)
{
    const QFileInfo info(path);
    return info.isSymLink() ? info.symLinkTarget() : path;
}

/// The name does not grow with that of the target, which may be as long as the system allows.
QString unfinishedName(const QString& target, int attempt)
{
    const QString name = QStringLiteral("%1/.zn-%2-%3.part");
    return name.arg(QFileInfo(target).path(), QString::number(QCoreApplication::applicationPid())).arg(attempt);
}

} // namespace

QString OutputFile::unfinishedPath(const QString& target)
{
    return unfinishedName(behindLink(target), 0);
}

OutputFile::OutputFile(const QString& target) : m_wanted(target), m_target(behindLink(target))
{
    const QFileInfo info(m_target);
    if (info.exists() && !info.isFile())
        fail(ErrorCode::CannotCreate, tr("the target is no regular file"));
    else if (info.fileName().isEmpty())
        fail(ErrorCode::CannotCreate, tr("the file has no name"));
    else if (info.exists() && !info.isWritable())
        fail(ErrorCode::CannotCreate, tr("the file that is there may not be written"));
    else if (!create())
        fail(ErrorCode::CannotCreate, m_file.errorString());
    else if (info.exists())
        m_file.setPermissions(info.permissions());
}

OutputFile::~OutputFile()
{
    discard();
}

void OutputFile::discard()
{
    if (m_isUnfinished) {
        m_file.close();
        m_file.remove();
    }
    m_isUnfinished = false;
}

bool OutputFile::create()
{
    for (int attempt = 0; attempt < 100; ++attempt) {
        m_file.setFileName(unfinishedName(m_target, attempt));
        m_isUnfinished = m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly);
        if (m_isUnfinished)
            return true;
        if (!m_file.exists())
            return false;
    }
    return false;
}

void OutputFile::write(const void* data, std::uint64_t size)
{
    // What a full disk takes of a block is no error yet; what it refuses of the rest is.
    const char* bytes = static_cast<const char*>(data);
    for (std::uint64_t left = size; left > 0 && !m_error;) {
        const qint64 taken = m_file.write(bytes + (size - left), static_cast<qint64>(left));
        if (taken <= 0)
            return fail(ErrorCode::WriteFailed, m_file.errorString());
        left -= static_cast<std::uint64_t>(taken);
        m_position += static_cast<std::uint64_t>(taken);
    }
}

void OutputFile::pad(std::uint64_t alignment, char filler)
{
    std::array<char, 64> block;
    block.fill(filler);
    for (std::uint64_t left = (alignment - m_position % alignment) % alignment; left > 0 && !m_error;) {
        const std::uint64_t size = std::min<std::uint64_t>(left, block.size());
        write(block.data(), size);
        left -= size;
    }
}

void OutputFile::rewrite(const void* data, std::uint64_t size)
{
    // A seek writes what waits, and forgets why it cannot.
    if (!m_error && !m_file.flush() && !m_file.flush())
        fail(ErrorCode::WriteFailed, m_file.errorString());
    if (m_error)
        return;
    if (!m_file.seek(0))
        return fail(ErrorCode::WriteFailed, m_file.errorString());
    m_position = 0;
    write(data, size);
}

Expected<void> OutputFile::complete(Lasting lasting)
{
    if (!m_error && m_file.isOpen())
        flush(lasting);
    if (m_error)
        discard();
    return m_error ? Expected<void>(*m_error) : Expected<void>();
}

Expected<void> OutputFile::commit(Lasting lasting)
{
    if (complete(lasting))
        rename();
    return m_error ? Expected<void>(*m_error) : Expected<void>();
}

/// Closing forgets why the rest could not be written. A full disk that takes a part at first gives its reason when it
/// is asked for the rest.
void OutputFile::flush(Lasting lasting)
{
    if (!m_file.flush() && !m_file.flush())
        fail(ErrorCode::WriteFailed, m_file.errorString());
    // Files that are no files on a disk have nothing to wait for.
    else if (lasting == Lasting::Yes && ::fsync(m_file.handle()) != 0 && errno != EINVAL && errno != ENOSYS)
        fail(ErrorCode::WriteFailed, QString::fromLocal8Bit(std::strerror(errno)));
    m_file.close();
    if (m_file.error() != QFileDevice::NoError)
        fail(ErrorCode::WriteFailed, m_file.errorString());
}

void OutputFile::rename()
{
    const QByteArray from = QFile::encodeName(m_file.fileName());
    const QByteArray to = QFile::encodeName(m_target);
    m_isUnfinished = std::rename(from.constData(), to.constData()) != 0;
    if (m_isUnfinished)
        fail(ErrorCode::CannotCreate, QString::fromLocal8Bit(std::strerror(errno)));
    discard();
}

void OutputFile::fail(ErrorCode code, const QString& message)
{
    if (!m_error)
        m_error = Error{{message, m_wanted, {}}, code};
}

} // namespace files
