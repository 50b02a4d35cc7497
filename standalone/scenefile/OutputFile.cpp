#include "standalone/scenefile/OutputFile.h"

#include "standalone/scenefile/SceneFormat.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace osg::scenefile
{

OutputFile::OutputFile(const QString& target) : m_target(target)
{
    const QFileInfo info(target);
    if (info.exists() && !info.isFile())
        fail(SceneFileErrorCode::CannotCreate, Text::tr("The target is not a regular file"));
    else if (info.fileName().isEmpty())
        fail(SceneFileErrorCode::CannotCreate, Text::tr("The file has no name"));
    else if (!create(info.path()))
        fail(SceneFileErrorCode::CannotCreate, m_file.errorString());
}

OutputFile::~OutputFile()
{
    if (m_file.isOpen()) {
        m_file.close();
        m_file.remove();
    }
}

/// The name does not grow with that of the target, which may be as long as the system allows.
bool OutputFile::create(const QString& folder)
{
    for (int attempt = 0; attempt < 100; ++attempt) {
        const QString name = QStringLiteral("%1/.osb-%2-%3.part");
        m_file.setFileName(name.arg(folder, QString::number(QCoreApplication::applicationPid())).arg(attempt));
        if (m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
            return true;
        if (!m_file.exists())
            return false;
    }
    return false;
}

void OutputFile::write(const void* data, std::uint64_t size)
{
    if (m_error)
        return;
    const auto length = static_cast<qint64>(size);
    if (m_file.write(static_cast<const char*>(data), length) != length)
        fail(SceneFileErrorCode::WriteFailed, m_file.errorString());
    m_position += size;
}

void OutputFile::pad()
{
    static constexpr char zeros[chunkAlignment] = {};
    write(zeros, alignedUp(m_position, chunkAlignment) - m_position);
}

void OutputFile::rewrite(const void* data, std::uint64_t size)
{
    if (!m_error && !m_file.seek(0))
        fail(SceneFileErrorCode::WriteFailed, m_file.errorString());
    m_position = 0;
    write(data, size);
}

void OutputFile::commit()
{
    if (m_error)
        return;
    const bool flushed = m_file.flush();
    const QString flushError = m_file.errorString();
    m_file.close();
    if (!flushed || m_file.error() != QFileDevice::NoError)
        fail(SceneFileErrorCode::WriteFailed, flushed ? m_file.errorString() : flushError);
    else if (std::rename(QFile::encodeName(m_file.fileName()).constData(), QFile::encodeName(m_target).constData()) !=
             0)
        fail(SceneFileErrorCode::CannotCreate, QString::fromLocal8Bit(std::strerror(errno)));
    if (m_error)
        m_file.remove();
}

void OutputFile::fail(SceneFileErrorCode code, const QString& message)
{
    if (!m_error)
        m_error = makeError(code, message, m_position);
}

} // namespace osg::scenefile
